#pragma once

#include <QEventLoop>
#include <QFrame>
#include <QPointer>

#include <memory>
#include <vector>

#include "html/ListaVoci.h"

class ModelloVoci;
class QInputMethodEvent;
class QKeyEvent;
class QListView;
class RichTextBox;

/// The completion list at the caret. It never takes the keyboard focus, so that caret, input methods and the window's
/// activation stay as they are: while it is open it reads the keys on their way to the editor.
///
/// Up, Down, Page Up, Page Down, Home and End move the selection. Tab, "=", Space and Enter accept, as does a double
/// click. Other characters go into the page and narrow the list; Backspace takes them back, and closes the list when
/// there is none left. The release of Escape closes it, as do ">" and "\"" (which end what the list is about), a
/// first character that is no letter or digit and begins no entry, as in "<!--" and "</", every
/// key that neither types nor moves in a list, a click outside, the wheel outside, and whatever moves the editor, its
/// focus or its text.
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
    [[nodiscard]] EsitoLista Init(const ListaVoci &lista, const QString &prefisso);

    /// Shows \a lista for \a editor and waits for its end. An empty list, or one while another is open, opens nothing.
    [[nodiscard]] static EsitoLista Apri(RichTextBox *editor, const ListaVoci &lista, const QString &prefisso);

    /// The list that is open, or null.
    [[nodiscard]] static FrmComplete *Corrente();

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;

private:
    enum class Azione { Conferma, Scrivi, Finisci, Cancella, Naviga, Esci, Ignora, Lascia };

    // The page (FrmComplete.cpp)
    void DigitaCarattere(const QString &carattere);
    void Cancella();
    void Conferma();
    void ConfermaCon(QStringView testo);
    void SelezionaVoce();
    void Disponi();
    void Chiudi();
    [[nodiscard]] int RigaScelta() const;

    // Events (FrmCompleteEventi.cpp)
    [[nodiscard]] Azione AzioneDi(const QKeyEvent &tasto) const;
    /// \a testo, one character, ends what the list is about or can begin none of its entries.
    [[nodiscard]] bool Finisce(QStringView testo) const;
    /// What was typed begins no entry and none was chosen since, as in "data-price" or "my-tag": Space and "=" are then
    /// written behind it instead of putting an entry in its place.
    [[nodiscard]] bool AltroNome() const;
    void ScriviOFinisci(const QString &carattere);
    [[nodiscard]] bool EventoTastiera(QObject *oggetto, QEvent *evento);
    [[nodiscard]] bool TastoPremuto(QObject *oggetto, QKeyEvent *tasto);
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
    QString m_prefisso;          ///< what the entries are matched against
    int m_rigaTenuta = -1;       ///< the row that is selected since the prefix changed
    int m_inizio = 0;            ///< caret when the list opened
    int m_digitati = 0;          ///< units typed through the list; below 0 when the opening prefix was erased
    int m_lunghezzaPrefisso = 0; ///< units of the opening prefix that stand before m_inizio
    QRect m_riga;                ///< from the start of the prefix to the caret at opening, global pixels
    bool m_sopra = false;        ///< the list stands above the line
    bool m_scrivo = false;       ///< a change of the text is the list's own
    bool m_chiusa = false;
    bool m_esci = false; ///< Escape is down: its release closes the list, and so does the next key
    EsitoLista m_esito;
    std::vector<std::unique_ptr<QEvent>> m_inAttesa; ///< keys for the time after the caller
};
