#pragma once

#include <QObject>

#include "platform/FilePagina.h"

class RichTextBox;
class QWidget;
struct PaginaRecuperata;

/// The one page: opening, saving, and whether it counts as modified. Tells the user what went wrong; the page then
/// stays as it was.
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
    /// A page that has no file is in the editor: \a formato of the next save is taken from the page itself.
    void Iniziata();
    /// The page that a killed program left behind: it counts as modified.
    void Recupera(const PaginaRecuperata &pagina);
    /// File name of the current file, or the name of a page without one.
    [[nodiscard]] QString Nome() const;
    /// What the main window's title bar says.
    [[nodiscard]] QString Titolo() const;
    [[nodiscard]] const FormatoPagina &Formato() const { return m_formato; }

signals:
    /// The text of an opened page is about to replace the page's.
    void InApertura();
    /// The opened page stands in the editor, not on the screen yet; it is not yet the current file.
    void Caricata();
    /// It is on the screen now.
    void InVista();
    /// An opened page has become the current file.
    void Aperta(const QString &percorso);
    /// The page stands in a file as it is now.
    void Salvata();
    void TitoloCambiato();
    /// For the status bar.
    void Avviso(const QString &testo);
    /// The page is about to be asked for, and it has a file: the preview hides.
    void NascondiAnteprima();

private:
    bool Scrivi(const QString &percorso);
    [[nodiscard]] bool SenzaFile() const; ///< Save has to ask for a name
    [[nodiscard]] qint16 MessaggioSalvata(const QString &percorso) const;
    void Metti(const QString &testo, const FormatoPagina &formato);
    void MostraInizio(const QString &testo);
    void AvvisaLettura(const QString &percorso, const ModuloPrincipale::RisultatoLettura &esito) const;
    void AvvisaScrittura(const QString &percorso, const ModuloPrincipale::RisultatoScrittura &esito) const;
    [[nodiscard]] QString Filtro() const;

    RichTextBox *m_pad;
    QWidget *m_finestra;
    FormatoPagina m_formato;
    bool m_nuova = false; ///< the page was begun after the current file was opened
};
