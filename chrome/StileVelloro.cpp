#include "chrome/StileVelloro.h"

#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOptionComplex>
#include <QToolTip>

using namespace Qt::StringLiterals;

StileVelloro::StileVelloro() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

QPalette StileVelloro::Tavolozza()
{
    QPalette t;
    const auto tutti = [&t](QPalette::ColorRole ruolo, const QColor &colore) { t.setColor(ruolo, colore); };
    tutti(QPalette::Window, Colori::Finestra);
    tutti(QPalette::WindowText, Colori::Testo);
    tutti(QPalette::Base, Colori::Bianco);
    tutti(QPalette::AlternateBase, Colori::Carta);
    tutti(QPalette::Text, Colori::Testo);
    tutti(QPalette::Button, Colori::Pannello);
    tutti(QPalette::ButtonText, Colori::Testo);
    tutti(QPalette::BrightText, Colori::Bianco);
    tutti(QPalette::Highlight, Colori::Selezione);
    tutti(QPalette::HighlightedText, Colori::Bianco);
    tutti(QPalette::ToolTipBase, Colori::Carta);
    tutti(QPalette::ToolTipText, Colori::Testo);
    tutti(QPalette::PlaceholderText, Colori::Segnaposto);
    tutti(QPalette::Link, Colori::Selezione);
    tutti(QPalette::LinkVisited, Colori::Selezione);
    tutti(QPalette::Light, Colori::Bianco);
    tutti(QPalette::Midlight, Colori::Pannello);
    tutti(QPalette::Mid, Colori::Linea);
    tutti(QPalette::Dark, Colori::Bordo);
    tutti(QPalette::Shadow, Colori::Testo);
    for (const auto ruolo : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        t.setColor(QPalette::Disabled, ruolo, Colori::TestoSpento);
    t.setColor(QPalette::Disabled, QPalette::Base, Colori::Mescola(Colori::Bianco, Colori::Pannello, 0.6));
    t.setColor(QPalette::Disabled, QPalette::Highlight, Colori::Linea);
    t.setColor(QPalette::Disabled, QPalette::HighlightedText, Colori::Testo);
    return t;
}

void StileVelloro::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton *>(widget) || qobject_cast<QComboBox *>(widget) ||
        qobject_cast<QScrollBar *>(widget) || qobject_cast<QMdiSubWindow *>(widget))
        widget->setAttribute(Qt::WA_Hover);
    if (auto *area = qobject_cast<QMdiArea *>(widget))
        area->setBackground(Colori::Scrivania);
}

void StileVelloro::drawPrimitive(PrimitiveElement elemento, const QStyleOption *opzione, QPainter *p,
                                 const QWidget *widget) const
{
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    const bool fatto = elemento == PE_IndicatorBranch
                           ? DisegnaRamo(*opzione, *p)
                           : DisegnaCampo(elemento, *opzione, *p) || DisegnaBarra(elemento, *opzione, *p);
    p->restore();
    if (!fatto)
        QProxyStyle::drawPrimitive(elemento, opzione, p, widget);
}

void StileVelloro::drawControl(ControlElement elemento, const QStyleOption *opzione, QPainter *p,
                               const QWidget *widget) const
{
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    bool fatto = true;
    if (elemento == CE_HeaderSection || elemento == CE_HeaderEmptyArea)
        DisegnaIntestazione(*opzione, *p);
    else if (elemento == CE_TabBarTabShape)
        DisegnaLinguetta(*opzione, *p);
    else
        fatto = DisegnaProgresso(elemento, *opzione, *p) || DisegnaMenu(elemento, *opzione, *p, widget);
    p->restore();
    if (!fatto)
        QProxyStyle::drawControl(elemento, opzione, p, widget);
}

void StileVelloro::drawComplexControl(ComplexControl controllo, const QStyleOptionComplex *opzione, QPainter *p,
                                      const QWidget *widget) const
{
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    switch (controllo) {
    case CC_TitleBar:
        DisegnaTitolo(*opzione, *p, widget);
        break;
    case CC_ScrollBar:
        DisegnaScorrimento(*opzione, *p, widget);
        break;
    case CC_ComboBox:
        DisegnaCombo(*opzione, *p, widget);
        break;
    default:
        p->setRenderHint(QPainter::Antialiasing, false);
        QProxyStyle::drawComplexControl(controllo, opzione, p, widget);
    }
    p->restore();
}

QRect StileVelloro::subControlRect(ComplexControl controllo, const QStyleOptionComplex *opzione, SubControl parte,
                                   const QWidget *widget) const
{
    if (controllo == CC_ScrollBar)
        return ParteScorrimento(*opzione, parte, widget);
    const QRect posto = QProxyStyle::subControlRect(controllo, opzione, parte, widget);
    // The title of a group stands inside its frame.
    return controllo == CC_GroupBox && parte != SC_GroupBoxFrame && parte != SC_GroupBoxContents
               ? posto.translated(8, 4)
               : posto;
}

QSize StileVelloro::sizeFromContents(ContentsType tipo, const QStyleOption *opzione, const QSize &contenuto,
                                     const QWidget *widget) const
{
    QSize misura = QProxyStyle::sizeFromContents(tipo, opzione, contenuto, widget);
    if (tipo == CT_ItemViewItem)
        misura.rheight() += 4;
    else if (tipo == CT_GroupBox)
        misura.rheight() += 4;
    return misura;
}

int StileVelloro::pixelMetric(PixelMetric misura, const QStyleOption *opzione, const QWidget *widget) const
{
    switch (misura) {
    case PM_TitleBarHeight:
        return 26;
    case PM_MdiSubWindowFrameWidth:
        return 4;
    case PM_ScrollBarExtent:
        return 13;
    case PM_ScrollBarSliderMin:
        return 28;
    case PM_ToolBarIconSize:
        return 20;
    case PM_MessageBoxIconSize:
        return 32;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
        return 16;
    case PM_ToolBarItemSpacing:
    case PM_ToolBarItemMargin:
        return 1;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return 4;
    case PM_MenuBarItemSpacing:
    case PM_MenuBarHMargin:
        return 2;
    default:
        return QProxyStyle::pixelMetric(misura, opzione, widget);
    }
}

int StileVelloro::styleHint(StyleHint cosa, const QStyleOption *opzione, const QWidget *widget,
                            QStyleHintReturn *risposta) const
{
    switch (cosa) {
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_ComboBox_Popup:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_WindowFrame_Mask: // inner windows have square corners
        return 0;
    case SH_TitleBar_NoBorder:
    case SH_UnderlineShortcut:
        return 1;
    default:
        return QProxyStyle::styleHint(cosa, opzione, widget, risposta);
    }
}

QIcon StileVelloro::standardIcon(StandardPixmap quale, const QStyleOption *opzione, const QWidget *widget) const
{
    switch (quale) {
    case SP_MessageBoxInformation:
        return ModuloGrafica::Icona(u"avviso_informazione");
    case SP_MessageBoxWarning:
        return ModuloGrafica::Icona(u"avviso_attenzione");
    case SP_MessageBoxCritical:
        return ModuloGrafica::Icona(u"avviso_errore");
    case SP_MessageBoxQuestion:
        return ModuloGrafica::Icona(u"avviso_domanda");
    default:
        return QProxyStyle::standardIcon(quale, opzione, widget);
    }
}

void ModuloGrafica::ApplicaStile(QApplication &applicazione)
{
    QFont carattere(u"Arial"_s, 8);
    applicazione.setStyle(new StileVelloro);
    applicazione.setPalette(StileVelloro::Tavolozza());
    applicazione.setFont(carattere);
    for (const char *classe : {"QMenu", "QMenuBar", "QMessageBox", "QTipLabel", "QMdiSubWindowTitleBar"})
        applicazione.setFont(carattere, classe);
    QToolTip::setPalette(StileVelloro::Tavolozza());
    QToolTip::setFont(carattere);
    applicazione.setWindowIcon(Icona(u"velloro"));
}
