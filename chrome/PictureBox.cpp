#include "chrome/PictureBox.h"

#include <QPainter>

PictureBox::PictureBox(const QString &nome, QWidget *parent) : QFrame(parent)
{
    setObjectName(nome);
}

void PictureBox::Disegna(const std::function<void(QPainter &)> &disegno)
{
    AdattaTela();
    if (m_tela.isNull())
        return;
    QPainter pittore(&m_tela);
    pittore.setRenderHint(QPainter::Antialiasing);
    pittore.setFont(font());
    disegno(pittore);
    update();
}

void PictureBox::Cls()
{
    m_tela = {};
    update();
}

/// Gives the canvas the size and the scale of the box; what was drawn stays where it was.
void PictureBox::AdattaTela()
{
    const QSize misura = size() * devicePixelRatioF();
    if (m_tela.size() == misura && qFuzzyCompare(m_tela.devicePixelRatio(), devicePixelRatioF()))
        return;
    const QImage vecchia = std::exchange(m_tela, {});
    if (misura.isEmpty())
        return;
    m_tela = QImage(misura, QImage::Format_ARGB32_Premultiplied);
    m_tela.setDevicePixelRatio(devicePixelRatioF());
    m_tela.fill(Qt::transparent);
    if (!vecchia.isNull()) {
        QPainter pittore(&m_tela);
        pittore.drawImage(0, 0, vecchia);
    }
}

void PictureBox::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    if (m_tela.isNull())
        return;
    QPainter pittore(this);
    pittore.drawImage(0, 0, m_tela);
    if (!m_persistente)
        m_tela = {};
}

void PictureBox::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    emit Ridimensionata();
}
