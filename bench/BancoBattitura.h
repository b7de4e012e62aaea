#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QString>

class FrmControlloSintassi;
class FrmPaginaHTML;
class RichTextBox;
class Spia;
class clsUndo;

/// A key in the document window as somebody who writes a page presses it: with the window's rules, the colours, the
/// list of results and the undo records.
class BancoBattitura
{
public:
    struct Tasto {
        int codice = 0;
        QString testo;
    };
    struct Prova {
        QString nome;
        QString riga = {};    ///< what stands before the caret, on a line of its own in the middle of the page
        Tasto tasto = {};     ///< what is measured
        QString portato = {}; ///< typed after it, before the measure; what it brings follows the caret
        QString dopo = {};    ///< put in after that
        bool lista = false;   ///< \a riga ends where Space opens a list; the key is typed into its prefix
    };
    [[nodiscard]] static const std::vector<Prova> &Prove();

    explicit BancoBattitura(const QString &pagina);
    ~BancoBattitura();

    /// Milliseconds from the press until all that the key and its release brought was done and painted; a median.
    [[nodiscard]] double Misura(const Prova &prova);

private:
    void Prepara(const Prova &prova);
    void Batti(const Tasto &tasto);
    [[gnu::noinline]] void Misurato(const Tasto &tasto);
    void FinoAlDisegno();
    double InLista(const Prova &prova);

    std::unique_ptr<FrmControlloSintassi> m_risultati;
    std::unique_ptr<FrmPaginaHTML> m_finestra;
    std::unique_ptr<clsUndo> m_undo;
    std::unique_ptr<Spia> m_spia;
    RichTextBox *m_pad;
    double m_prima = 0; ///< milliseconds of the first letter typed
    int m_posto = 0;    ///< of the line that is written
    int m_resto = 0;    ///< units of the page behind it
};
