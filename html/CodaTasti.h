#pragma once

#include <QObject>

#include <deque>
#include <memory>

class QEvent;
class RichTextBox;

/// Keys on their way to the editor that must wait: for the caller of a completion list that has just closed, or for
/// what the release of the key before them does. They come in the order in which they were pressed, whatever else
/// arrives in between: as long as one waits, every later key waits behind it.
class CodaTasti : public QObject
{
public:
    /// The queue of \a editor; watches its keys from the first call on. Later event filters of the editor see keys
    /// before it does.
    [[nodiscard]] static CodaTasti &Di(RichTextBox *editor);

    /// Puts a copy of \a evento behind the waiting keys.
    void Accoda(const QEvent &evento);
    /// Puts a copy of \a evento, which is on its way to the editor, before the waiting keys, and gives its number.
    quint64 Anteponi(const QEvent &evento);
    /// Puts \a eventi before the waiting keys, in their order.
    void Anteponi(std::deque<std::unique_ptr<QEvent>> &&eventi);
    /// Takes the copy of that number back when it is the next one; false: it has been delivered.
    [[nodiscard]] bool Riprendi(quint64 numero);
    /// Whether \a evento has to wait behind other keys; it is put there then.
    [[nodiscard]] bool Trattiene(const QEvent &evento);

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    void customEvent(QEvent *evento) override;

private:
    explicit CodaTasti(RichTextBox *editor);
    void Chiedi();

    RichTextBox *m_editor;
    struct Tasto {
        std::unique_ptr<QEvent> evento;
        quint64 numero = 0;
    };
    std::deque<Tasto> m_coda;
    quint64 m_ultimo = 0;
    const QEvent *m_inConsegna = nullptr;
};
