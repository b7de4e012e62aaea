#include "app/DisposizioneBarre.h"

#include <QWidget>

DisposizioneBarre::DisposizioneBarre(QWidget *padre) : QLayout(padre)
{
    setContentsMargins(4, 1, 4, 1);
    setSpacing(2);
}

DisposizioneBarre::~DisposizioneBarre()
{
    qDeleteAll(m_voci);
}

void DisposizioneBarre::addItem(QLayoutItem *voce)
{
    m_voci.append(voce);
}

QLayoutItem *DisposizioneBarre::takeAt(int indice)
{
    return indice >= 0 && indice < m_voci.size() ? m_voci.takeAt(indice) : nullptr;
}

int DisposizioneBarre::heightForWidth(int larghezza) const
{
    return Disponi(QRect(0, 0, larghezza, 0), true);
}

QSize DisposizioneBarre::sizeHint() const
{
    return minimumSize();
}

QSize DisposizioneBarre::minimumSize() const
{
    QSize minima;
    for (const QLayoutItem *voce : m_voci)
        minima = minima.expandedTo(voce->sizeHint());
    const QMargins margini = contentsMargins();
    return minima + QSize(margini.left() + margini.right(), margini.top() + margini.bottom());
}

void DisposizioneBarre::setGeometry(const QRect &area)
{
    QLayout::setGeometry(area);
    Disponi(area, false);
}

int DisposizioneBarre::Disponi(const QRect &area, bool prova) const
{
    const QRect dentro = area.marginsRemoved(contentsMargins());
    int x = dentro.left();
    int y = dentro.top();
    int altezzaRiga = 0;
    for (QLayoutItem *voce : m_voci) {
        const QSize misura = voce->sizeHint();
        if (x > dentro.left() && x + misura.width() > dentro.right() + 1) {
            x = dentro.left();
            y += altezzaRiga;
            altezzaRiga = 0;
        }
        if (!prova)
            voce->setGeometry(QRect(QPoint(x, y), misura));
        x += misura.width() + spacing();
        altezzaRiga = std::max(altezzaRiga, misura.height());
    }
    return y + altezzaRiga - area.top() + contentsMargins().bottom();
}
