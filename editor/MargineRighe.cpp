#include "editor/MargineRighe.h"

#include "platform/RichTextBox.h"

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

void MargineRighe::paintEvent(QPaintEvent *)
{
    QPainter pittore(this);
    pittore.fillRect(rect(), Sfondo);
    pittore.setPen(Qt::white);
    const int rigaCaretto = m_pad->GetLineFromChar(m_pad->SelStart());
    for (const RichTextBox::RigaVisibile &riga : m_pad->RigheVisibili()) {
        QFont carattere = m_pad->font();
        carattere.setBold(riga.riga == rigaCaretto);
        const QString testo = TestoNumero(riga.riga + 1);
        const QRect posto(0, m_pad->y() + riga.cima, width() - MargineDestro, riga.altezza);
        // Numbers of many digits are drawn narrower rather than cut.
        const int largo = QFontMetrics(carattere).horizontalAdvance(testo.trimmed());
        if (largo > posto.width())
            carattere.setStretch(std::max(50, 100 * posto.width() / largo));
        pittore.setFont(carattere);
        pittore.drawText(posto, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, testo.trimmed());
    }
}
