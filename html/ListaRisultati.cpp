#include "html/ListaRisultati.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QResizeEvent>
#include <QStyledItemDelegate>
#include <QTextLayout>

#include <utility>

namespace
{

constexpr int Intorno = 3; // pixels around a text
constexpr int RigheMassime = 12;

/// Draws a text on as many rows as the width asks for.
class Delegato : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &opzione, const QModelIndex &indice) const override
    {
        const auto *lista = qobject_cast<const QAbstractItemView *>(opzione.widget);
        QTextLayout testo(indice.data().toString(), opzione.font);
        const int larghezza = lista ? lista->viewport()->width() : opzione.rect.width();
        return {larghezza, Impagina(testo, larghezza) + 2 * Intorno};
    }

    void paint(QPainter *pittore, const QStyleOptionViewItem &opzione, const QModelIndex &indice) const override
    {
        QStyleOptionViewItem voce = opzione;
        initStyleOption(&voce, indice);
        const QString mostrato = std::exchange(voce.text, {});
        const QStyle *stile = voce.widget ? voce.widget->style() : QApplication::style();
        stile->drawControl(QStyle::CE_ItemViewItem, &voce, pittore, voce.widget);
        QTextLayout testo(mostrato, voce.font);
        Impagina(testo, voce.rect.width());
        const bool scelta = voce.state & QStyle::State_Selected;
        const auto gruppo = voce.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
        pittore->save();
        pittore->setClipRect(voce.rect);
        pittore->setPen(voce.palette.color(gruppo, scelta ? QPalette::HighlightedText : QPalette::Text));
        testo.draw(pittore, voce.rect.topLeft() + QPoint(Intorno, Intorno));
        pittore->restore();
    }

private:
    /// Gives the height of the text, at most that of the most rows that it may have; the tool tip holds the rest.
    static int Impagina(QTextLayout &testo, int larghezza)
    {
        QTextOption opzione;
        opzione.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        testo.setTextOption(opzione);
        qreal altezza = 0;
        testo.beginLayout();
        for (int riga = 0; riga < RigheMassime; ++riga) {
            QTextLine linea = testo.createLine();
            if (!linea.isValid())
                break;
            linea.setLineWidth(std::max(1, larghezza - 2 * Intorno));
            linea.setPosition({0, altezza});
            altezza += linea.height();
        }
        testo.endLayout();
        return qRound(altezza);
    }
};

} // namespace

ListaRisultati::ListaRisultati(QWidget *padre) : QTreeView(padre)
{
    setItemDelegate(new Delegato(this));
    setHeaderHidden(true);
    header()->setMinimumSectionSize(0);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setIndentation(0);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem); // by pixel every row would have to be measured
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

// Qt would measure every row up to those that have changed. When the lines of the page have, for all rows at once,
// these are as high as before; a row that is not on the screen is measured when it comes there.
void ListaRisultati::dataChanged(const QModelIndex &primo, const QModelIndex &ultimo, const QList<int> &ruoli)
{
    if (primo != ultimo) {
        viewport()->update();
        return;
    }
    const int cima = indexAt({0, 0}).row();
    const int fondo = indexAt({0, viewport()->height() - 1}).row();
    if (primo.row() >= cima && (fondo < 0 || primo.row() <= fondo))
        QTreeView::dataChanged(primo, ultimo, ruoli);
    else
        m_daMisurare = true;
}

void ListaRisultati::verticalScrollbarValueChanged(int valore)
{
    QTreeView::verticalScrollbarValueChanged(valore);
    if (std::exchange(m_daMisurare, false))
        scheduleDelayedItemsLayout();
}

// Qt would choose the next row in place of a chosen one that goes.
void ListaRisultati::rowsAboutToBeRemoved(const QModelIndex &padre, int primo, int ultimo)
{
    if (currentIndex().row() >= primo && currentIndex().row() <= ultimo)
        setCurrentIndex({});
    QTreeView::rowsAboutToBeRemoved(padre, primo, ultimo);
}

void ListaRisultati::resizeEvent(QResizeEvent *evento)
{
    QTreeView::resizeEvent(evento);
    if (evento->size().width() != evento->oldSize().width())
        scheduleDelayedItemsLayout();
}
