#pragma once

#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <utility>

class FrmStart;
class RichTextBox;

/// Says whether what the program shows, keeps and writes is right. The first fault ends the process.
class Giudice : public QObject
{
    Q_OBJECT

public:
    static constexpr int Colpevole = 3; ///< exit status

    Giudice(FrmStart &finestra, const QString &cartella);

    /// Kinds of faults that are passed over.
    static void Tralascia(const QStringList &generi);
    /// Tells a fault and ends the process.
    static void Accusa(const QString &genere, const QString &testo);

    /// After each step: what must hold at any time.
    void Esamina();
    /// Whether what was typed is on its way: nothing is to be done until it is there.
    [[nodiscard]] bool Attende();
    [[nodiscard]] bool Sospeso() const
    {
        return m_incerto || !m_intero.isEmpty() || !m_contenuto.isEmpty() || !m_davanti.isEmpty();
    }
    /// A key was sent: it may be on its way for a while.
    void Inviato() { m_inviati = true; }
    /// Keys on their way are to be waited for.
    void Quieta() { m_incerto = std::exchange(m_inviati, false) || m_incerto; }
    /// What \a batti types must stand at the caret when that is in plain text and, \a quieto, no key is on its way.
    void ProvaTesto(const QString &testo, bool quieto, const std::function<void()> &batti);
    /// The same for a "<", \a iniziali and what is accepted from a list: all around them stays as it is.
    void ProvaScelta(const QString &iniziali, bool quieto, const std::function<void()> &batti);
    /// \a testo, typed while a box closed, must be in the page then, unless another box came.
    void Aspetta(const QString &testo);
    /// The full check, its list, and a click on one of its lines.
    void ProvaControllo(int riga);
    /// Undo to the beginning and redo to the end.
    void ProvaStoria();
    /// The program is about to be ended from outside: what is not saved must be kept.
    void PrimaDellaFine();
    /// What must be offered after it.
    [[nodiscard]] QString Lasciata() const { return m_lasciata; }
    static void DopoLaFine(const QString &lasciata);

private:
    [[nodiscard]] bool Cambia();
    void EsaminaTesto();
    void EsaminaFinestre() const;
    void EsaminaSalvata() const;
    void EsaminaElenco(const QString &testo) const;
    void ScegliRiga(int riga);
    [[nodiscard]] bool Libera() const;
    [[nodiscard]] bool NelTesto() const;
    [[nodiscard]] bool Giunto() const;
    [[nodiscard]] bool InUnFile(const QString &testo) const;

    FrmStart &m_finestra;
    RichTextBox &m_pad;
    QString m_cartella;
    QString m_primoTesto;
    QString m_primaRtf;
    QString m_intero;    ///< what the page must become
    QString m_davanti;   ///< what it must begin with, whatever the case of its letters,
    QString m_dietro;    ///< and end with
    QString m_contenuto; ///< what must come to stand in it
    int m_attese = 0;
    bool m_inviati = false;
    bool m_incerto = false; ///< keys that are not judged are on their way
    int m_vista = 0;        ///< revision of the text
    int m_ferma = 0;        ///< turns since the text changed
    bool m_altrove = false; ///< something else had the keys meanwhile
    QString m_lasciata;
    int m_revisione = -1;
    bool m_cominciato = false; ///< the window stands with its first page
};
