#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <deque>
#include <memory>

class QEvent;
class RichTextBox;

namespace ModuloVerificaSintassi
{

class Avanzamento;

/// Lets events run in the middle of a check and keeps them from the control that is being checked. While it lives the
/// control is not painted; once the check lasts longer than a blink the control is hidden and the progress window is
/// on the screen. In the end the control is as it was, and gets the keys that were meant for it.
class PausaControllo : public QObject
{
public:
    /// \a avanzamento may be null and must live longer.
    PausaControllo(RichTextBox &editor, Avanzamento *avanzamento);
    ~PausaControllo() override;

    /// Runs the pending events and shows \a valore; false when the check must end: cancelled, the control is gone or
    /// its text has changed. Before the progress window is there, input of the user waits.
    [[nodiscard]] bool Passa(qsizetype valore);

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void Mostra();

    QPointer<RichTextBox> m_editor;
    Avanzamento *m_avanzamento;
    int m_revisione;
    QPoint m_scorrimento;
    bool m_disegnava;
    bool m_mostrato = false;
    bool m_nascosto = false;
    QElapsedTimer m_durata;
    std::deque<std::unique_ptr<QEvent>> m_tasti;
};

} // namespace ModuloVerificaSintassi
