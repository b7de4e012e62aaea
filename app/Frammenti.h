#pragma once

#include <QObject>

class Comandi;
class RichTextBox;
class QWidget;

/// Puts pieces of HTML into the page at the caret. Each is one change of the text.
class Frammenti : public QObject
{
    Q_OBJECT

public:
    /// \a finestra owns this object and the dialogs.
    Frammenti(RichTextBox *pad, QWidget *finestra);

    /// Connects the commands that insert something.
    void Collega(Comandi &comandi);

    /// Puts \a testo before the selection, which stays in the page but not selected; the caret goes after it. Positions
    /// 0 and 1 are not worth a check: the page's first tag is never looked at.
    void InserisciTesto(const QString &testo);
    /// Inserts the picture \a riferimento; nothing when that is empty.
    void InserisciImmagine(const QString &riferimento);
    /// Makes \a immagine the background of the page's body; the page stays as it is without an image or a body.
    void InserisciSfondo(const QString &immagine);
    /// Inserts \a tabella; nothing when that is empty.
    void InserisciTabella(const QString &tabella);
    /// Asks for a font and inserts it.
    void InserisciFont();

    enum Rientro : quint8 { Riduci = 1, Aumenta = 2 };
    /// Takes one indentation character from the start of the caret's line, or puts a tab there. Leaves the first line
    /// of the page alone.
    void RientroRiga(quint8 modo);

signals:
    /// The page is about to change: what was typed before is a step of its own.
    void InCambiamento();
    /// After it: what is typed next is not part of it.
    void Cambiato();
    /// The page is to be checked before the call returns, its tags from the 1-based position \a primaFine + 1 on. The
    /// receiver may move the caret.
    void VerificaRichiesta(int primaFine);
    void AnteprimaRichiesta();

private:
    /// Opens the dialog Finestra and hands what it leaves behind to \a inserisci.
    template <typename Finestra>
    void Chiedi(void (Frammenti::*inserisci)(const QString &));
    void Verifica(int posizione, int dopo);

    RichTextBox *m_pad;
    QWidget *m_finestra;
};
