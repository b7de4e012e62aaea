#pragma once

#include <QObject>

#include "app/FileAperto.h"
#include "app/SchedePagina.h"
#include "platform/FilePagina.h"

class RichTextBox;
class QWidget;
struct PaginaRecuperata;

/// The one page and all that belongs to it: its file, encoding and saved text, opening and saving, whether it counts as
/// modified, what became of its file on the disk. Tells the user what went wrong; the page then stays as it was.
///
/// The program-wide state shows of it what the floors below need to know; only this class changes those fields.
class PaginaCorrente : public QObject
{
    Q_OBJECT

public:
    /// \a finestra owns the dialogs.
    PaginaCorrente(RichTextBox *pad, QWidget *finestra);

    /// The open-file dialog, then Apri. True when a page was loaded.
    bool ApriConDialogo();
    /// Loads a page file. False when nothing was loaded, or not all of it.
    bool Apri(const QString &percorso);
    /// False when the page was not written: it failed, or the user gave up.
    bool Salva();
    bool SalvaConNome();
    /// Asks whether to save when the page is modified. False when the user wanted it saved and that failed: whoever
    /// asked should not go on to throw the page away.
    bool ChiediSalvataggio();
    [[nodiscard]] bool Modificata() const;
    /// Looks whether the file changed outside since it was read or written, and asks what to do, once for each change.
    /// Does nothing for a page without a file.
    void GuardaFile();
    /// A page that has no file is in the editor: \a formato of the next save is taken from the page itself.
    void Iniziata();
    /// The page that a killed program left behind: it counts as modified.
    void Recupera(const PaginaRecuperata &pagina);
    /// File name of the current file, or the name of a page without one.
    [[nodiscard]] QString Nome() const;
    /// What the main window's title bar says.
    [[nodiscard]] QString Titolo() const;
    [[nodiscard]] const FormatoPagina &Formato() const { return m_schede.Corrente().formato; }
    /// Save writes to the current file; else it asks for a name.
    [[nodiscard]] bool ConFile() const { return !m_schede.SenzaFile(); }
    /// The text as of the last open, begin or save; empty when its file was seen not to hold that any more.
    [[nodiscard]] QString TestoSuDisco() const;
    /// Undo or redo brought back the text that was recorded under the mark \a segno: the page is that one again. It
    /// has a file only if that is the file opened last.
    void Torna(int segno);

signals:
    /// The text of another page is about to replace the page's, and nobody was asked.
    void Abbandonata();
    /// The text of an opened page is about to replace the page's.
    void InApertura();
    /// What is in the editor from now on belongs to the page with this mark.
    void Segnata(int segno);
    void FormatoCambiato();
    /// Torna was called.
    void Tornata();
    /// TestoSuDisco is another one: the file was seen to hold something else, or the same as before again.
    void DiscoCambiato();
    /// The opened page stands in the editor, not on the screen yet.
    void Caricata();
    /// It is on the screen now.
    void InVista();
    /// An opened page has become the current file.
    void Aperta(const QString &percorso);
    /// The page stands in a file as it is now.
    void Salvata();
    void TitoloCambiato();
    /// GuardaFile is to be called as soon as nothing is under way.
    void DaRicaricare();
    /// For the status bar; the second one is on how the page was read, and holds as long as it is there.
    void Avviso(const QString &testo);
    void AvvisoLettura(const QString &testo);
    /// For the status bar: the page has taken the place of another text, until undo brings that back.
    void AvvisoRicarica(const QString &testo);
    /// The page is about to be asked for, and it has a file: the preview hides.
    void NascondiAnteprima();

private:
    /// What is to be done about the file before it is replaced.
    enum class Passo { Scrivi, AltroNome, Rinuncia };

    bool Carica(const QString &percorso, bool senzaDomanda);
    void CaricaAltra();
    void Ricarica();
    /// One look at the file by \a domanda.
    Mutamento Guarda(Mutamento (FileAperto::*domanda)());
    [[nodiscard]] Passo PrimaDiScrivere();
    [[nodiscard]] ModuloPrincipale::EsitoScrittura Scrivi(const QString &percorso, const FotoFile &attesa);
    void Registra(const QString &percorso, const ModuloPrincipale::RisultatoScrittura &esito);
    [[nodiscard]] QString MessaggioScritta(const QString &percorso,
                                           const ModuloPrincipale::RisultatoScrittura &esito) const;
    void Metti(const QString &testo);
    void MostraInizio(const QString &testo);
    void Pubblica();
    void AvvisaLettura(const QString &percorso, const ModuloPrincipale::RisultatoLettura &esito) const;
    void AvvisaScrittura(const QString &percorso, const ModuloPrincipale::RisultatoScrittura &esito) const;
    [[nodiscard]] static QString Filtro();
    [[nodiscard]] static QString Cartella();

    RichTextBox *m_pad;
    QWidget *m_finestra;
    SchedePagina m_schede;
    FileAperto m_file;
    bool m_daRicaricare = false; ///< the user wants the other one of the file
};
