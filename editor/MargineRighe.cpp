#include "editor/MargineRighe.h"

#include "platform/RichTextBox.h"

#include <QPaintEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

constexpr QColor Sfondo{0, 0, 0xC0};
constexpr int MargineDestro = 4; // pixels between the numbers and the text

} // namespace

MargineRighe::MargineRighe(const RichTextBox *pad, QWidget *parent) : QWidget(parent), m_pad(pad)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QString MargineRighe::TestoNumero(int numero)
{
    const QString cifre = QString::number(numero);
    return QString(std::max(1, 4 - int(cifre.size())), u' ') + cifre;
}

void MargineRighe::Segui(const QRect &area, int dy)
{
    if (dy != 0)
        scroll(0, dy);
    else
        update(0, m_pad->y() + m_pad->viewport()->y() + area.y(), width(), area.height());
}

void MargineRighe::SeguiCaretto()
{
    const int prima = m_rigaCaretto;
    m_rigaCaretto = m_pad->GetLineFromChar(m_pad->SelStart());
    if (m_rigaCaretto == prima)
        return;
    for (const RichTextBox::RigaVisibile &riga : m_pad->RigheVisibili()) {
        if (riga.riga == prima || riga.riga == m_rigaCaretto)
            update(0, m_pad->y() + riga.cima, width(), riga.altezza);
    }
}

void MargineRighe::paintEvent(QPaintEvent *evento)
{
    QPainter pittore(this);
    const QRect area = evento->rect();
    pittore.fillRect(area, Sfondo);
    pittore.setPen(Qt::white);
    for (const RichTextBox::RigaVisibile &riga : m_pad->RigheVisibili()) {
        const QRect posto(0, m_pad->y() + riga.cima, width() - MargineDestro, riga.altezza);
        // Digits may reach a little over their line.
        if (posto.bottom() + 2 < area.top() || posto.top() - 2 > area.bottom())
            continue;
        QFont carattere = m_pad->font();
        carattere.setBold(riga.riga == m_rigaCaretto);
        const QString testo = TestoNumero(riga.riga + 1);
        // Numbers of many digits are drawn narrower rather than cut.
        const int largo = QFontMetrics(carattere).horizontalAdvance(testo.trimmed());
        if (largo > posto.width())
            carattere.setStretch(std::max(50, 100 * posto.width() / largo));
        pittore.setFont(carattere);
        pittore.drawText(posto, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, testo.trimmed());
    }
}
