#pragma once

#include <QEventLoop>
#include <QFrame>
#include <QPointer>

#include <deque>
#include <memory>

#include "html/ListaVoci.h"

class ModelloVoci;
class QInputMethodEvent;
class QKeyEvent;
class QListView;
class RichTextBox;

/// The completion list at the caret. It never takes the keyboard focus, so that caret, input methods and the window's
/// activation stay as they are: while it is open it reads the keys on their way to the editor.
///
/// Up, Down, Page Up, Page Down, Home and End move the selection. Tab and a double click accept it. Enter, Space and
/// "=" accept only what was meant: an entry whose beginning was typed, or that was chosen by moving to it or by asking
/// for the list. A name that was typed in full is that name, and the key belongs to the page, as it does when nothing
/// was typed or what was typed begins no entry. Other characters go into the page and narrow the list; Backspace takes
/// them back, and closes the list when there is none left. The release of Escape closes it, as do the signs that end
/// what the list is about, a first character that is no letter or digit and begins no entry, as in "<!--" and "</",
/// every key that neither types nor moves in a list, a click outside, the wheel outside, and whatever moves the editor,
/// its focus or its text.
///
/// A key belongs to whoever got its press: the editor sees no release and no repetition of a key pressed for the list.
/// Keys that arrive after the list has closed, and before its caller has done with its result, wait for the caller.
class FrmComplete : public QFrame
{
    Q_OBJECT

public:
    explicit FrmComplete(RichTextBox *editor);
    ~FrmComplete() override;

    /// Scrolls \a lista so that the 0-based row \a righe is the top one, as far as the list's end allows.
    static void LvwScrollRows(QListView *lista, int righe);

    /// Shows \a lista, which is not empty, with the entry selected that begins with \a prefisso: the text before the
    /// caret that accepting an entry replaces. Returns when the list has closed; the editor, and with it this object,
    /// may be gone by then. Call it once.
    [[nodiscard]] EsitoLista Init(const ListaVoci &lista, const QString &prefisso, const ModoLista &modo = {});

    /// Shows \a lista for \a editor and waits for its end. An empty list, or one while another is open, opens nothing.
    [[nodiscard]] static EsitoLista Apri(RichTextBox *editor, const ListaVoci &lista, const QString &prefisso,
                                         const ModoLista &modo = {});

    /// The list that is open, or null.
    [[nodiscard]] static FrmComplete *Corrente();

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;

private:
    enum class Azione { Conferma, Scrivi, Cancella, Naviga, Esci, Ignora, Lascia };

    // The page (FrmComplete.cpp)
    void DigitaCarattere(const QString &carattere);
    void Cancella();
    void Conferma();
    void ConfermaCon(const QString &testo);
    void SelezionaVoce();
    /// Moves the selection as \a tasto does in a list; at the end of the list it stays.
    void Naviga(int tasto);
    void Disponi();
    void Chiudi();
    [[nodiscard]] int RigaScelta() const;

    // Events (FrmCompleteEventi.cpp)
    [[nodiscard]] Azione AzioneDi(const QKeyEvent &tasto) const;
    /// \a testo, one character, ends what the list is about or can begin none of its entries.
    [[nodiscard]] bool Finisce(QStringView testo) const;
    /// The selected entry is what the user meant, and not only the one that happens to be selected.
    [[nodiscard]] bool Voluta() const;
    /// What was typed is a name as it stands.
    [[nodiscard]] bool NomeIntero() const;
    /// What was typed begins no entry and none was chosen since, as in "data-price" or "my-tag".
    [[nodiscard]] bool AltroNome() const;
    /// Closes the list on a key that belongs to the page.
    void Lascia();
    [[nodiscard]] bool EventoTastiera(QEvent *evento);
    [[nodiscard]] bool PrendeVirgoletta(const QKeyEvent &tasto) const;
    [[nodiscard]] bool TastoPremuto(QKeyEvent *tasto);
    [[nodiscard]] bool TestoComposto(QInputMethodEvent *evento);
    [[nodiscard]] bool DiQuestaLista(const QObject *oggetto) const;
    void GuardaIntorno(QObject *oggetto, QEvent *evento);

    QPointer<RichTextBox> m_editor;
    // To be compared only: while the editor is destroyed, its last events come from what is no RichTextBox any more.
    const QObject *m_oggettoEditor;
    const QObject *m_oggettoFinestra;
    QListView *m_elenco;
    ModelloVoci *m_modello = nullptr;
    QEventLoop *m_ciclo = nullptr;
    ModoLista m_modo;
    bool m_virgoletteProprie = false; ///< the user typed the quote that opens the value
    QString m_prefisso;               ///< what the entries are matched against
    int m_rigaTenuta = -1;            ///< the row that is selected since the prefix changed
    int m_inizio = 0;                 ///< caret when the list opened
    int m_digitati = 0;               ///< units typed through the list; below 0 when the opening prefix was erased
    int m_lunghezzaPrefisso = 0;      ///< units of the opening prefix that stand before m_inizio
    QRect m_riga;                     ///< from the start of the prefix to the caret at opening, global pixels
    bool m_sopra = false;             ///< the list stands above the line
    bool m_scrivo = false;            ///< a change of the text is the list's own
    bool m_chiusa = false;
    bool m_esci = false; ///< Escape is down: its release closes the list, and so does the next key
    EsitoLista m_esito;
    std::deque<std::unique_ptr<QEvent>> m_inAttesa; ///< keys for the time after the caller
};
