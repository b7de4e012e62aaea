#include "dialogs/ElencoModelli.h"

#include "dialogs/Modelli.h"
#include "platform/Misure.h"

#include <QScopedValueRollback>

ElencoModelli::ElencoModelli(QWidget *parent) : QListWidget(parent)
{
    setViewMode(QListView::IconMode);
    // Only items that could be moved by hand may be placed; nothing moves them but the arrangement.
    setMovement(QListView::Free);
    setDragDropMode(QAbstractItemView::NoDragDrop);
    setResizeMode(QListView::Adjust);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setWordWrap(true);
    setUniformItemSizes(true);
}

void ElencoModelli::doItemsLayout()
{
    QListWidget::doItemsLayout();
    if (m_inDisposizione || count() == 0)
        return;
    const QScopedValueRollback<bool> sentinella(m_inDisposizione, true);
    const double altezza = Misure::InTwip(visualItemRect(item(0)).height());
    const QList<QPoint> posti = Modelli::Disposizione(altezza, Misure::InTwip(viewport()->width()), count());
    for (int i = 0; i < count(); ++i)
        setPositionForIndex({Misure::InPixel(posti[i].x()), Misure::InPixel(posti[i].y())}, indexFromItem(item(i)));
}
