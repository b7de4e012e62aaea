#include "chrome/StileVelloro.h"

#include "chrome/Colori.h"

#include <QAction>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

using Colori::Mescola;

namespace
{

constexpr qreal Raggio = 4;

QRectF Mezzo(const QRect &r, qreal rientro = 0.5)
{
    return QRectF(r).adjusted(rientro, rientro, -rientro, -rientro);
}

bool Acceso(const QStyleOption &o)
{
    return o.state & QStyle::State_Enabled;
}
bool Sopra(const QStyleOption &o)
{
    return Acceso(o) && (o.state & QStyle::State_MouseOver);
}

void Contorno(QPainter &p, const QStyleOption &o, const QRect &r, qreal raggio)
{
    const bool fuoco = Acceso(o) && (o.state & QStyle::State_HasFocus);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(fuoco       ? Colori::Selezione
                  : Sopra(o)  ? Mescola(Colori::Bordo, Colori::Selezione, 0.5)
                  : Acceso(o) ? Colori::Bordo
                              : Colori::Linea,
                  fuoco ? 2 : 1));
    p.drawRoundedRect(Mezzo(r, fuoco ? 1 : 0.5), raggio, raggio);
}

/// The caption of a menu with its letter marked; see Comandi.
QString ConLettera(QString testo, const QStyleOption &o, const QWidget *widget)
{
    const auto *barra = qobject_cast<const QMenuBar *>(widget);
    const QAction *voce = barra ? barra->actionAt(o.rect.center()) : nullptr;
    const QString lettera = voce ? voce->property("lettera").toString() : QString();
    const qsizetype posto = lettera.isEmpty() ? -1 : testo.indexOf(lettera, 0, Qt::CaseInsensitive);
    return posto < 0 ? testo : testo.insert(posto, u'&');
}

void Pulsante(QPainter &p, const QStyleOption &o)
{
    const bool premuto = o.state & (QStyle::State_Sunken | QStyle::State_On);
    const auto *pulsante = qstyleoption_cast<const QStyleOptionButton *>(&o);
    if (pulsante && (pulsante->features & QStyleOptionButton::Flat) && !premuto && !Sopra(o))
        return;
    QColor fondo = o.palette.color(QPalette::Button);
    if (!Acceso(o))
        fondo = Mescola(fondo, Colori::Pannello, 0.5);
    else if (premuto)
        fondo = Mescola(fondo, Colori::Intestazione, 0.9);
    else
        fondo = Mescola(fondo, Colori::Bianco, Sopra(o) ? 0.6 : 0.25);
    p.setPen(Qt::NoPen);
    p.setBrush(fondo);
    p.drawRoundedRect(Mezzo(o.rect), Raggio, Raggio);
    Contorno(p, o, o.rect, Raggio);
    if (pulsante && (pulsante->features & QStyleOptionButton::DefaultButton) && Acceso(o)) {
        p.setPen(QPen(Colori::Selezione, 1.5));
        p.drawRoundedRect(Mezzo(o.rect, 0.75), Raggio, Raggio);
    }
}

void Spunta(QPainter &p, const QStyleOption &o, bool tondo)
{
    const int lato = qMin(o.rect.width(), o.rect.height());
    QRect r(0, 0, lato, lato);
    r.moveCenter(o.rect.center());
    const qreal raggio = tondo ? lato / 2.0 : 3;
    p.setPen(Qt::NoPen);
    p.setBrush(Acceso(o) ? Colori::Bianco : Colori::Pannello);
    p.drawRoundedRect(Mezzo(r), raggio, raggio);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(!Acceso(o) ? Colori::Linea
                  : Sopra(o) ? Colori::Selezione
                             : Mescola(Colori::Bordo, Colori::Testo, 0.4),
                  1.25));
    p.drawRoundedRect(Mezzo(r, 0.75), raggio, raggio);
    const QColor segno = Acceso(o) ? Colori::Progresso.darker(112) : Colori::TestoSpento;
    if (o.state & QStyle::State_NoChange) {
        p.fillRect(QRectF(r).adjusted(3.5, lato / 2.0 - 1, -3.5, 1 - lato / 2.0), segno);
    } else if (o.state & QStyle::State_On) {
        if (tondo) {
            p.setPen(Qt::NoPen);
            p.setBrush(segno);
            p.drawEllipse(QRectF(r).adjusted(lato * 0.28, lato * 0.28, -lato * 0.28, -lato * 0.28));
        } else {
            p.setPen(QPen(segno, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            const QPointF a(r.x() + lato * 0.25, r.y() + lato * 0.52);
            p.drawPolyline(QPolygonF{a, a + QPointF(lato * 0.18, lato * 0.19), a + QPointF(lato * 0.5, -lato * 0.22)});
        }
    }
}

/// Tool buttons and menu titles under the mouse.
void Rilievo(QPainter &p, const QRect &r, const QColor &fondo)
{
    p.setPen(Colori::Bordo);
    p.setBrush(fondo);
    p.drawRoundedRect(Mezzo(r), 3, 3);
}

} // namespace

bool StileVelloro::DisegnaCampo(PrimitiveElement elemento, const QStyleOption &o, QPainter &p) const
{
    switch (elemento) {
    case PE_PanelButtonCommand:
        Pulsante(p, o);
        return true;
    case PE_FrameDefaultButton:
        return true;
    case PE_PanelLineEdit: {
        const auto *cornice = qstyleoption_cast<const QStyleOptionFrame *>(&o);
        const bool bordo = cornice && cornice->lineWidth > 0;
        p.setPen(Qt::NoPen);
        p.setBrush(o.palette.brush(QPalette::Base));
        p.drawRoundedRect(Mezzo(o.rect, bordo ? 0.5 : 0), bordo ? 3 : 0, bordo ? 3 : 0);
        if (bordo)
            Contorno(p, o, o.rect, 3);
        return true;
    }
    case PE_FrameLineEdit:
        Contorno(p, o, o.rect, 3);
        return true;
    case PE_Frame:
        p.setPen(Acceso(o) && (o.state & State_HasFocus) ? Colori::Selezione : Colori::Bordo);
        p.setBrush(Qt::NoBrush);
        p.drawRect(Mezzo(o.rect));
        return true;
    case PE_IndicatorCheckBox:
        Spunta(p, o, false);
        return true;
    case PE_IndicatorRadioButton:
        Spunta(p, o, true);
        return true;
    case PE_FrameFocusRect:
        p.setPen(QPen(Colori::Selezione, 1.25));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(Mezzo(o.rect, 0.75), 2, 2);
        return true;
    case PE_FrameTabWidget:
        p.fillRect(o.rect, Colori::Pannello);
        p.setPen(Colori::Linea);
        p.drawRect(Mezzo(o.rect));
        return true;
    case PE_FrameGroupBox:
        p.setPen(Colori::Bordo);
        p.setBrush(Colori::Pannello);
        p.drawRoundedRect(Mezzo(o.rect), Raggio, Raggio);
        return true;
    default:
        return false;
    }
}

bool StileVelloro::DisegnaBarra(PrimitiveElement elemento, const QStyleOption &o, QPainter &p) const
{
    switch (elemento) {
    case PE_PanelButtonTool:
        if (o.state & (State_Sunken | State_On))
            Rilievo(p, o.rect, Colori::Intestazione);
        else if (Sopra(o))
            Rilievo(p, o.rect, Colori::Carta);
        if (Acceso(o) && (o.state & State_HasFocus) && (o.state & State_KeyboardFocusChange))
            Contorno(p, o, o.rect, 3);
        return true;
    case PE_IndicatorToolBarSeparator: {
        p.setRenderHint(QPainter::Antialiasing, false);
        const QPoint c = o.rect.center();
        if (o.state & State_Horizontal)
            p.fillRect(c.x(), o.rect.top() + 4, 1, o.rect.height() - 8, Colori::Linea);
        else
            p.fillRect(o.rect.left() + 4, c.y(), o.rect.width() - 8, 1, Colori::Linea);
        return true;
    }
    case PE_IndicatorToolBarHandle: {
        p.setPen(Qt::NoPen);
        p.setBrush(Colori::Bordo);
        const QPointF c = QRectF(o.rect).center();
        for (int i = -2; i <= 2; ++i)
            p.drawEllipse(o.state & State_Horizontal ? c + QPointF(0, i * 4) : c + QPointF(i * 4, 0), 1.1, 1.1);
        return true;
    }
    case PE_PanelMenu:
        p.fillRect(o.rect, Colori::Carta);
        return true;
    case PE_FrameMenu:
    case PE_FrameWindow:
        if (elemento == PE_FrameMenu) {
            p.setPen(Colori::Bordo);
            p.drawRect(Mezzo(o.rect));
            return true;
        }
        p.setPen(o.state & State_Active ? Colori::Selezione : Colori::Bordo);
        p.setBrush(o.state & State_Active ? Colori::Intestazione : Colori::TitoloSpento);
        p.drawRect(Mezzo(o.rect));
        return true;
    case PE_PanelTipLabel:
        p.fillRect(o.rect, Colori::Carta);
        p.setPen(Colori::Bordo);
        p.drawRect(Mezzo(o.rect));
        return true;
    case PE_PanelStatusBar:
        p.fillRect(o.rect, Colori::Pannello);
        p.fillRect(QRect(o.rect.left(), o.rect.top(), o.rect.width(), 1), Colori::Linea);
        return true;
    case PE_FrameStatusBarItem:
        p.fillRect(QRect(o.rect.left(), o.rect.top() + 3, 1, o.rect.height() - 6), Colori::Linea);
        return true;
    default:
        return false;
    }
}

bool StileVelloro::DisegnaMenu(ControlElement elemento, const QStyleOption &o, QPainter &p, const QWidget *widget) const
{
    switch (elemento) {
    case CE_MenuBarEmptyArea:
        p.fillRect(o.rect, Colori::Pannello);
        return true;
    case CE_MenuBarItem: {
        p.fillRect(o.rect, Colori::Pannello);
        const auto *voce = qstyleoption_cast<const QStyleOptionMenuItem *>(&o);
        if (!voce)
            return true;
        if ((o.state & State_Selected) && Acceso(o))
            Rilievo(p, o.rect.adjusted(0, 1, 0, -1), o.state & State_Sunken ? Colori::Intestazione : Colori::Carta);
        const int modo = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextDontClip | Qt::TextSingleLine;
        drawItemText(&p, o.rect, modo, o.palette, Acceso(o), ConLettera(voce->text, o, widget), QPalette::ButtonText);
        return true;
    }
    case CE_MenuItem: {
        const auto *voce = qstyleoption_cast<const QStyleOptionMenuItem *>(&o);
        if (!voce || !(o.state & State_Selected))
            return false;
        if (Acceso(o))
            Rilievo(p, o.rect.adjusted(3, 0, -3, 0), Mescola(Colori::Pannello, Colori::Intestazione, 0.4));
        QStyleOptionMenuItem quieta = *voce; // Fusion's own highlight is a block of the selection colour
        quieta.state &= ~State_Selected;
        p.setRenderHint(QPainter::Antialiasing, false);
        QProxyStyle::drawControl(CE_MenuItem, &quieta, &p, widget);
        return true;
    }
    case CE_ToolBar:
        p.fillRect(o.rect, Colori::Pannello);
        return true;
    default:
        return false;
    }
}

void StileVelloro::DisegnaCombo(const QStyleOptionComplex &opzione, QPainter &p, const QWidget *widget) const
{
    const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(&opzione);
    if (!combo)
        return;
    p.setPen(Qt::NoPen);
    p.setBrush(opzione.palette.brush(QPalette::Base));
    p.drawRoundedRect(Mezzo(opzione.rect), 3, 3);
    const QRect freccia = subControlRect(CC_ComboBox, &opzione, SC_ComboBoxArrow, widget);
    if (Acceso(opzione)) {
        const bool aperta = opzione.state & (State_On | State_Sunken);
        p.setBrush(aperta           ? Colori::Intestazione
                   : Sopra(opzione) ? Mescola(Colori::Pannello, Colori::Intestazione, 0.5)
                                    : Colori::Pannello);
        p.save();
        p.setClipRect(freccia.adjusted(-1, 0, 4, 0));
        p.drawRoundedRect(Mezzo(opzione.rect), 3, 3);
        p.restore();
    }
    if (combo->frame)
        Contorno(p, opzione, opzione.rect, 3);
    p.setBrush(Qt::NoBrush);
    p.setPen(
        QPen(Acceso(opzione) ? Colori::Testo : Colori::TestoSpento, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF c = QRectF(freccia).center();
    p.drawPolyline(QPolygonF{c + QPointF(-3.5, -1.5), c + QPointF(0, 2), c + QPointF(3.5, -1.5)});
}
