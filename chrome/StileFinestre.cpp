#include "chrome/StileVelloro.h"

#include "chrome/Colori.h"

#include <QMdiSubWindow>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include <array>

namespace
{

struct PulsanteTitolo {
    QStyle::SubControl parte;
    void (*disegna)(QPainter &, QPointF centro);
};

void Riduci(QPainter &p, QPointF c)
{
    p.drawLine(c + QPointF(-4, 3.5), c + QPointF(4, 3.5));
}
void Ingrandisci(QPainter &p, QPointF c)
{
    p.drawRoundedRect(QRectF(c.x() - 4, c.y() - 4, 8, 8), 1, 1);
}
void Chiudi(QPainter &p, QPointF c)
{
    p.drawLine(c + QPointF(-3.5, -3.5), c + QPointF(3.5, 3.5));
    p.drawLine(c + QPointF(3.5, -3.5), c + QPointF(-3.5, 3.5));
}
void Normale(QPainter &p, QPointF c)
{
    p.drawRoundedRect(QRectF(c.x() - 4, c.y() - 1.5, 6, 5.5), 1, 1);
    p.drawPolyline(QPolygonF{c + QPointF(-1.5, -4), c + QPointF(4, -4), c + QPointF(4, 1.5)});
}

constexpr std::array Pulsanti{
    PulsanteTitolo{QStyle::SC_TitleBarMinButton, Riduci},
    PulsanteTitolo{QStyle::SC_TitleBarMaxButton, Ingrandisci},
    PulsanteTitolo{QStyle::SC_TitleBarNormalButton, Normale},
    PulsanteTitolo{QStyle::SC_TitleBarCloseButton, Chiudi},
};

/// Which of the buttons this title bar has: Fusion's rules, for the flags and the state of the window.
bool Presente(const QStyleOptionTitleBar &barra, QStyle::SubControl parte)
{
    if (!(barra.subControls & parte))
        return false;
    const bool ridotta = barra.titleBarState & Qt::WindowMinimized;
    const bool ingrandita = barra.titleBarState & Qt::WindowMaximized;
    switch (parte) {
    case QStyle::SC_TitleBarMinButton:
        return (barra.titleBarFlags & Qt::WindowMinimizeButtonHint) && !ridotta;
    case QStyle::SC_TitleBarMaxButton:
        return (barra.titleBarFlags & Qt::WindowMaximizeButtonHint) && !ingrandita;
    case QStyle::SC_TitleBarNormalButton:
        return ((barra.titleBarFlags & Qt::WindowMinimizeButtonHint) && ridotta) ||
               ((barra.titleBarFlags & Qt::WindowMaximizeButtonHint) && ingrandita);
    case QStyle::SC_TitleBarCloseButton:
        return (barra.titleBarFlags & Qt::WindowCloseButtonHint) || !(barra.titleBarFlags & Qt::CustomizeWindowHint);
    default:
        return false;
    }
}

} // namespace

void StileVelloro::DisegnaTitolo(const QStyleOptionComplex &opzione, QPainter &p, const QWidget *widget) const
{
    const auto *barra = qstyleoption_cast<const QStyleOptionTitleBar *>(&opzione);
    if (!barra)
        return;
    const bool attiva = barra->titleBarState & State_Active;
    p.fillRect(barra->rect, attiva ? Colori::Intestazione : Colori::TitoloSpento);
    p.setPen(attiva ? Colori::Selezione : Colori::Bordo);
    p.drawRect(QRectF(barra->rect).adjusted(0.5, 0.5, -0.5, 1));
    // The active window carries the bright line that no other has.
    const QColor filo = attiva ? Colori::Progresso : Colori::Bordo;
    p.fillRect(QRect(barra->rect.left(), barra->rect.top(), barra->rect.width(), attiva ? 2 : 1), filo);

    const QRect posto = subControlRect(CC_TitleBar, barra, SC_TitleBarLabel, widget);
    int sinistra = posto.left() + 4;
    // An inner window does not take over the icon of what it shows once the application has one.
    const auto *finestra = qobject_cast<const QMdiSubWindow *>(widget);
    const QIcon icona = finestra && finestra->widget() ? finestra->widget()->windowIcon() : barra->icon;
    if (!icona.isNull()) {
        const QRect figura(barra->rect.left() + 7, barra->rect.center().y() - 7, 16, 16);
        icona.paint(&p, figura);
        sinistra = qMax(sinistra, figura.right() + 7);
    }
    QFont carattere = widget ? widget->font() : p.font();
    carattere.setBold(attiva);
    p.setFont(carattere);
    p.setPen(Colori::Testo);
    const QRect testo(sinistra, barra->rect.top() + 1, posto.right() - sinistra, barra->rect.height() - 1);
    p.drawText(testo, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
               QFontMetrics(carattere).elidedText(barra->text, Qt::ElideRight, testo.width()));

    for (const PulsanteTitolo &pulsante : Pulsanti) {
        if (!Presente(*barra, pulsante.parte))
            continue;
        const QRect dove = subControlRect(CC_TitleBar, barra, pulsante.parte, widget);
        if (!dove.isValid())
            continue;
        const bool scelto = barra->activeSubControls & pulsante.parte;
        const bool chiude = pulsante.parte == SC_TitleBarCloseButton;
        if (scelto && (barra->state & (State_MouseOver | State_Sunken))) {
            p.setPen(Qt::NoPen);
            p.setBrush(chiude ? Colori::Progresso : Colori::Carta);
            p.drawRoundedRect(QRectF(dove), 3, 3);
        }
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(Colori::Testo, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pulsante.disegna(p, QRectF(dove).center());
    }
}

QRect StileVelloro::ParteScorrimento(const QStyleOptionComplex &opzione, SubControl parte, const QWidget *widget) const
{
    const auto *barra = qstyleoption_cast<const QStyleOptionSlider *>(&opzione);
    if (!barra)
        return {};
    const bool orizzontale = barra->orientation == Qt::Horizontal;
    const int lungo = orizzontale ? barra->rect.width() : barra->rect.height();
    int cursore = lungo;
    if (barra->maximum > barra->minimum) {
        const qint64 tutto = qint64(barra->maximum) - barra->minimum + barra->pageStep;
        const int minimo = qMin(lungo, pixelMetric(PM_ScrollBarSliderMin, barra, widget));
        cursore = qBound(minimo, int(qint64(barra->pageStep) * lungo / qMax<qint64>(1, tutto)), lungo);
    }
    const int inizio = sliderPositionFromValue(barra->minimum, barra->maximum, barra->sliderPosition, lungo - cursore,
                                               barra->upsideDown);
    const auto tratto = [&](int da, int quanto) {
        const QRect r =
            orizzontale ? QRect(da, 0, quanto, barra->rect.height()) : QRect(0, da, barra->rect.width(), quanto);
        return visualRect(barra->direction, barra->rect, r.translated(barra->rect.topLeft()));
    };
    switch (parte) {
    case SC_ScrollBarGroove:
        return barra->rect;
    case SC_ScrollBarSlider:
        return tratto(inizio, cursore);
    case SC_ScrollBarSubPage:
        return tratto(0, inizio);
    case SC_ScrollBarAddPage:
        return tratto(inizio + cursore, lungo - inizio - cursore);
    default:
        return {}; // no arrows
    }
}

void StileVelloro::DisegnaScorrimento(const QStyleOptionComplex &opzione, QPainter &p, const QWidget *widget) const
{
    p.fillRect(opzione.rect, Colori::Mescola(Colori::Pannello, Colori::Bianco, 0.5));
    const auto *barra = qstyleoption_cast<const QStyleOptionSlider *>(&opzione);
    if (!barra || barra->maximum <= barra->minimum)
        return;
    const QRectF cursore = QRectF(ParteScorrimento(opzione, SC_ScrollBarSlider, widget)).adjusted(2.5, 2.5, -2.5, -2.5);
    const bool sopra = (opzione.state & State_MouseOver) && (opzione.activeSubControls & SC_ScrollBarSlider);
    const bool preso = (opzione.state & State_Sunken) && (opzione.activeSubControls & SC_ScrollBarSlider);
    p.setPen(Qt::NoPen);
    p.setBrush(preso   ? Colori::Selezione
               : sopra ? Colori::Mescola(Colori::Bordo, Colori::Selezione, 0.45)
                       : Colori::Bordo);
    const qreal raggio = qMin(cursore.width(), cursore.height()) / 2;
    p.drawRoundedRect(cursore, raggio, raggio);
}

void StileVelloro::DisegnaIntestazione(const QStyleOption &o, QPainter &p) const
{
    const bool sopra = (o.state & State_MouseOver) && (o.state & State_Enabled);
    p.fillRect(o.rect, sopra ? Colori::Mescola(Colori::Intestazione, Colori::Bianco, 0.3) : Colori::Intestazione);
    p.fillRect(QRect(o.rect.right(), o.rect.top() + 4, 1, o.rect.height() - 8), Colori::Bordo);
    p.fillRect(QRect(o.rect.left(), o.rect.bottom(), o.rect.width(), 1), Colori::Bordo);
}

void StileVelloro::DisegnaLinguetta(const QStyleOption &o, QPainter &p) const
{
    const bool scelta = o.state & State_Selected;
    const bool sopra = o.state & State_MouseOver;
    p.fillRect(o.rect.adjusted(0, scelta ? 0 : 2, 0, 0), scelta ? Colori::Pannello
                                                         : sopra
                                                             ? Colori::Mescola(Colori::Finestra, Colori::Pannello, 0.6)
                                                             : Colori::Finestra);
    p.fillRect(QRect(o.rect.left(), o.rect.top() + (scelta ? 0 : 2), o.rect.width(), scelta ? 2 : 1),
               scelta ? Colori::Progresso : Colori::Linea);
}

bool StileVelloro::DisegnaProgresso(ControlElement elemento, const QStyleOption &o, QPainter &p) const
{
    if (elemento == CE_ProgressBarGroove) {
        p.setPen(Colori::Bordo);
        p.setBrush(o.palette.brush(QPalette::Base));
        p.drawRect(QRectF(o.rect).adjusted(0.5, 0.5, -0.5, -0.5));
        return true;
    }
    const auto *barra = qstyleoption_cast<const QStyleOptionProgressBar *>(&o);
    if (elemento != CE_ProgressBarContents || !barra || barra->maximum <= barra->minimum ||
        !(barra->state & State_Horizontal))
        return false; // a bar without an end keeps Fusion's moving stripes
    const double parte = double(barra->progress - barra->minimum) / (barra->maximum - barra->minimum);
    QRect piena = o.rect.adjusted(1, 1, -1, -1);
    piena.setWidth(int(piena.width() * qBound(0.0, parte, 1.0)));
    p.fillRect(visualRect(o.direction, o.rect, piena), o.palette.brush(QPalette::Highlight));
    return true;
}

bool StileVelloro::DisegnaRamo(const QStyleOption &o, QPainter &p) const
{
    if (!(o.state & State_Children))
        return true;
    const QColor colore = o.palette.color(o.state & State_Selected ? QPalette::HighlightedText : QPalette::Text);
    p.setPen(QPen(colore, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF c = QRectF(o.rect).center();
    if (o.state & State_Open)
        p.drawPolyline(QPolygonF{c + QPointF(-3.5, -1.5), c + QPointF(0, 2), c + QPointF(3.5, -1.5)});
    else
        p.drawPolyline(QPolygonF{c + QPointF(-1.5, -3.5), c + QPointF(2, 0), c + QPointF(-1.5, 3.5)});
    return true;
}
