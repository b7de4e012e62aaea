#pragma once

#include <memory>
#include <vector>

#include <QObject>
#include <QString>

#include "bench/Pagine.h"

class RichTextBox;
class Spia;
class clsUndo;

/// The editing control in a window on the screen, with one page, and what is done with it.
class BancoControllo
{
public:
    BancoControllo();
    ~BancoControllo();

    /// The page to measure with, its tags coloured.
    void Prepara(const QString &pagina);

    enum Posto { Inizio, Mezzo, Fine };
    enum Tasto { Lettera, Invio, Cancella, Freccia };

    // Milliseconds, medians.
    [[nodiscard]] double Apertura();            ///< text put in until it is painted
    [[nodiscard]] double Colori();              ///< all tags of the page given their colours, until painted
    [[nodiscard]] double Preme(Tasto, Posto);   ///< key pressed and released until painted
    [[nodiscard]] double TestoDopoUnTasto();    ///< the whole text asked for after a change
    [[nodiscard]] double Ricerca();             ///< a text that the page does not have is looked for, to its end
    [[nodiscard]] double RtfIntero();           ///< the page as RTF for the first time
    [[nodiscard]] double RtfDopoUnaRiga();      ///< the same again after one line changed
    [[nodiscard]] double ImpostaRtfDiUnaRiga(); ///< RTF put back that differs in one line, until painted

    [[nodiscard]] double Registrazione();           ///< undo record of one changed line
    [[nodiscard]] double Annullamento();            ///< that record undone, until painted
    [[nodiscard]] double Ripristino();              ///< and redone, until painted
    [[nodiscard]] double Scansione();               ///< scan and lookups of the whole page, without a widget
    [[nodiscard]] double Verifica();                ///< full check with colours
    [[nodiscard]] double VerificaTag();             ///< what a key release in a tag asks for: context, check of the tag
    [[nodiscard]] double SostituisciTutto();        ///< Replace All of every "e" and its undo record, painted
    [[nodiscard]] double AnnullaSostituisciTutto(); ///< and undone

    /// The same after a letter typed in the tag, while the results window lists 20,000 findings.
    [[nodiscard]] double VerificaTagConElenco();

    /// Resident megabytes that a shown and coloured page of the control takes. For a process of its own, which did
    /// nothing else before.
    [[nodiscard]] static double Memoria(int colonna);
    /// Megabytes that 10,000 undo records of one typed word take, all in one place or \a sparse over the page. For a
    /// process of its own, likewise.
    [[nodiscard]] static double MemoriaRegistrazioni(int colonna, bool sparse);

private:
    void Colora();
    void FinoAlDisegno();
    void CambiaUnaRiga();
    void Registra(clsUndo &undo);
    void VaiInUnTag();
    void ControllaAlCaretto();
    void ScriviParole(clsUndo &undo, bool sparse);
    template <typename Prima, typename Azione>
    double ConTrova(Prima prepara, Azione passo);

    std::unique_ptr<RichTextBox> m_controllo;
    std::unique_ptr<Spia> m_spia;
    QString m_pagina;
    std::vector<Pagine::Parte> m_parti;
    int m_passo = 0;
};

/// The pages measured, one per column of the table.
struct Colonna {
    QString nome;
    qsizetype unita = 0;
    bool rigaSola = false;
};
[[nodiscard]] const std::vector<Colonna> &Colonne();
[[nodiscard]] QString PaginaDi(const Colonna &colonna);
