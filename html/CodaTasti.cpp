#include "html/CodaTasti.h"

#include "platform/RichTextBox.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

CodaTasti &CodaTasti::Di(RichTextBox *editor)
{
    for (QObject *figlio : editor->children()) {
        if (auto *coda = dynamic_cast<CodaTasti *>(figlio))
            return *coda;
    }
    return *new CodaTasti(editor);
}

CodaTasti::CodaTasti(RichTextBox *editor) : QObject(editor), m_editor(editor)
{
    editor->installEventFilter(this);
}

void CodaTasti::Chiedi()
{
    QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
}

void CodaTasti::Accoda(const QEvent &evento)
{
    m_coda.push_back({std::unique_ptr<QEvent>(evento.clone()), ++m_ultimo});
    Chiedi();
}

quint64 CodaTasti::Anteponi(const QEvent &evento)
{
    m_coda.push_front({std::unique_ptr<QEvent>(evento.clone()), ++m_ultimo});
    Chiedi();
    return m_ultimo;
}

void CodaTasti::Anteponi(std::deque<std::unique_ptr<QEvent>> &&eventi)
{
    while (!eventi.empty()) {
        m_coda.push_front({std::move(eventi.back()), ++m_ultimo});
        eventi.pop_back();
        Chiedi();
    }
}

bool CodaTasti::Riprendi(quint64 numero)
{
    if (m_coda.empty() || m_coda.front().numero != numero)
        return false;
    m_coda.pop_front();
    return true;
}

bool CodaTasti::Trattiene(const QEvent &evento)
{
    if (&evento == m_inConsegna || m_coda.empty())
        return false;
    Accoda(evento);
    return true;
}

bool CodaTasti::eventFilter(QObject *oggetto, QEvent *evento)
{
    if ((evento->type() == QEvent::KeyPress || evento->type() == QEvent::KeyRelease) && Trattiene(*evento)) {
        evento->accept();
        return true;
    }
    return QObject::eventFilter(oggetto, evento);
}

// One key for each request: a list that the key opens waits inside this call, and takes the keys that follow.
void CodaTasti::customEvent(QEvent *)
{
    if (m_coda.empty())
        return;
    const std::unique_ptr<QEvent> evento = std::move(m_coda.front().evento);
    m_coda.pop_front();
    const QPointer<CodaTasti> questo(this);
    m_inConsegna = evento.get();
    QCoreApplication::sendEvent(m_editor, evento.get());
    if (questo && m_inConsegna == evento.get())
        m_inConsegna = nullptr;
}
