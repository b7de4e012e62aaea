#pragma once

#include <QAbstractNativeEventFilter>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class QKeyEvent;
class QMessageBox;
class QWidget;
class QWindow;

/// Whoever types on at once while a dialog closes means what comes after it, but the display sends the keys to the
/// dialog's window as long as that is there. For every dialog of the application, message boxes and Qt's own too, for
/// menus and lists that drop down: such keys reach, in their order and after what the dialog leaves behind was put into
/// the page, the dialog that is open then, else the window behind. A key that was pressed in a dialog means nothing to
/// another window, neither its repetitions nor its release. A letter that answers a dialog does so at once.
class TastiDopoDialogo : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// From now on; calls after the first change nothing. Keys wait as long as \a occupato says that the program lets
    /// events run in the middle of something that no key may touch.
    static void Attiva(std::function<bool()> occupato = {});

    using Tasti = std::deque<std::unique_ptr<QEvent>>;
    /// \a tasti were typed into a question that came up in between, and answer nothing: they reach \a finestra when no
    /// dialog is open any more, before all that is typed there later.
    static void Restituisci(QWidget *finestra, Tasti &&tasti);
    /// Whether such keys are still on their way.
    [[nodiscard]] static bool Restituisce();
    /// Whether the last key went down so short a time ago that whoever typed it is in the middle of it.
    [[nodiscard]] static bool SiScrive();

    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    /// Under X11 also the keys that were on their way when the dialog's window was taken down.
    bool nativeEventFilter(const QByteArray &tipo, void *messaggio, qintptr *risultato) override;

private:
    /// Where a key went down.
    struct Pressione {
        const QWindow *finestra = nullptr; ///< never used but for a comparison
        bool passeggera = false;
    };
    struct Chiusa {
        quintptr id = 0;
        QPointer<QWidget> dietro;
    };

    TastiDopoDialogo(QObject *applicazione, std::function<bool()> occupato);
    void FinestraChiusa(QWindow *finestra);
    void Trattieni(QWindow *finestra);
    void Lascia();
    bool Tasto(QWindow *finestra, const QKeyEvent &tasto);
    [[nodiscard]] bool Estraneo(const QWindow *finestra, const QKeyEvent &tasto);
    [[nodiscard]] static bool Risponde(QMessageBox &messaggio, const QKeyEvent &tasto);
    [[nodiscard]] QWidget *Destinataria() const;
    void Gira(int millisecondi = 0);
    [[nodiscard]] bool Verra() const;
    void Consegna();
    void Rendi();
    [[nodiscard]] bool PrimaDi(const QWindow *finestra) const;

    std::function<bool()> m_occupato;
    QHash<quint64, Pressione> m_giu;
    std::vector<Chiusa> m_chiuse; ///< windows taken down last
    Tasti m_tasti;
    Tasti m_restituiti;            ///< in the order in which they were typed
    QPointer<QWidget> m_rendeA;    ///< whom they are for
    QElapsedTimer m_ultimoPremuto; ///< since a key last went down
    QPointer<QWindow> m_trattiene; ///< has every key of the display for a moment
    QTimer m_limite;
    bool m_gira = false;    ///< a round is to come
    int m_attese = 0;       ///< rounds that the next key has waited for its window
    bool m_passato = false; ///< the loop that the dialog ran in has ended
};
