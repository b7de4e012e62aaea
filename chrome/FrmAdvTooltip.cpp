#include "chrome/FrmAdvTooltip.h"

#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "platform/Misure.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Margine = 10; ///< around icon and text
constexpr int Raggio = 7;   ///< of the body's corners
constexpr int Ombra = 3;    ///< how far the shadow falls
constexpr int AltezzaPunta = 14;
constexpr int MezzaBase = 8; ///< of the pointer, where it meets the body
constexpr int LatoIcona = 24;
constexpr int MinimoTesto = 60;
constexpr int MassimoTesto = 380;

QPointer<FrmAdvTooltip> &Posto()
{
    static QPointer<FrmAdvTooltip> finestra;
    return finestra;
}

QRect Schermo(QPoint punto)
{
    const QScreen *schermo = QGuiApplication::screenAt(punto);
    return (schermo ? schermo : QGuiApplication::primaryScreen())->availableGeometry();
}

} // namespace

FrmAdvTooltip::FrmAdvTooltip()
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                           Qt::NoDropShadowWindowHint),
      m_titolo(new QLabel(this)), m_testo(new QLabel(this)), m_icona(new QLabel(this)), m_timer(new QTimer(this))
{
    setObjectName(u"FrmAdvTooltip"_s);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::NoFocus);
    m_titolo->setObjectName(u"LblTitolo"_s);
    m_testo->setObjectName(u"LblTesto"_s);
    m_icona->setObjectName(u"PicIcona"_s);
    QFont carattere(u"Arial"_s, 8);
    m_testo->setFont(carattere);
    carattere.setBold(true);
    m_titolo->setFont(carattere);
    for (QLabel *etichetta : {m_titolo, m_testo}) {
        etichetta->setTextFormat(Qt::PlainText); // names from the page are shown as they stand
        etichetta->setWordWrap(true);
        etichetta->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
    m_timer->setObjectName(u"Timer1"_s);
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &QWidget::close);
}

FrmAdvTooltip *FrmAdvTooltip::Corrente()
{
    return Posto();
}

void FrmAdvTooltip::MsgAuto_box(const QString &testo, int icona, const QString &titolo, int secondi, QPoint punto,
                                const QColor &colore, int larghezza)
{
    if (!Posto())
        Posto() = new FrmAdvTooltip;
    FrmAdvTooltip &f = *Posto();
    f.m_titolo->setText(titolo);
    f.m_titolo->setHidden(titolo.isEmpty());
    f.m_testo->setText(testo);
    f.setAccessibleName(titolo);
    f.setAccessibleDescription(testo);
    f.m_colore = colore.isValid() ? colore : Colori::Avviso;
    // Text on a dark background of the caller's turns white.
    QPalette tavolozza = f.palette();
    tavolozza.setColor(QPalette::WindowText, qGray(f.m_colore.rgb()) < 110 ? Colori::Bianco : Colori::Testo);
    f.setPalette(tavolozza);
    f.SetDisplayIcon(icona);
    f.DisponiTesto(larghezza > 0 ? Misure::InPixel(larghezza) : 0);
    f.DrawBalloon(punto);
    f.create();
    f.windowHandle()->setTransientParent(QGuiApplication::focusWindow());
    f.show();
    f.raise();
    const qint64 millisecondi = qint64(std::max(secondi, 0)) * 1000;
    f.m_timer->start(int(std::min<qint64>(millisecondi, std::numeric_limits<int>::max())));
}

void FrmAdvTooltip::SetDisplayIcon(int icona)
{
    const auto nome = [icona]() -> QStringView {
        switch (icona) {
        case Errore:
            return u"avviso_errore";
        case Domanda:
            return u"avviso_domanda";
        case Attenzione:
            return u"avviso_attenzione";
        case Informazione:
            return u"avviso_informazione";
        default:
            return {};
        }
    }();
    m_icona->setHidden(nome.isEmpty());
    if (!nome.isEmpty())
        m_icona->setPixmap(ModuloGrafica::Icona(nome).pixmap(QSize(LatoIcona, LatoIcona), devicePixelRatioF()));
}

/// Wraps the labels and finds the body's size; the body lies at (0, 0) until the balloon is placed.
void FrmAdvTooltip::DisponiTesto(int larghezza)
{
    const int rientro = Margine + (m_icona->isHidden() ? 0 : LatoIcona + 8);
    const int testo = [&] {
        if (larghezza > 0)
            return std::max(MinimoTesto, larghezza - rientro - Margine - Ombra);
        int serve = MinimoTesto;
        for (const QLabel *etichetta : {m_titolo, m_testo}) {
            const QSize misura = etichetta->fontMetrics().size(0, etichetta->text());
            serve = std::max(serve, std::min(misura.width() + 4, MassimoTesto));
        }
        return serve;
    }();
    const int titolo = m_titolo->isHidden() ? 0 : m_titolo->heightForWidth(testo) + 4;
    const int righe = m_testo->heightForWidth(testo);
    const int alto = std::max(titolo + righe, m_icona->isHidden() ? 0 : LatoIcona) + 2 * Margine;
    m_corpo = QRect(0, 0, rientro + testo + Margine, alto);
    m_icona->setGeometry(Margine, Margine, LatoIcona, LatoIcona);
    m_titolo->setGeometry(rientro, Margine, testo, titolo);
    m_testo->setGeometry(rientro, Margine + titolo, testo, righe);
}

FrmAdvTooltip::Puntatore FrmAdvTooltip::GetPointerStyle(QPoint punto, int altezza, const QRect &schermo)
{
    const int sotto = schermo.bottom() - punto.y();
    const int sopra = punto.y() - schermo.top();
    return altezza <= sotto || sotto >= sopra ? Puntatore::InAlto : Puntatore::InBasso;
}

void FrmAdvTooltip::DrawBalloon(QPoint punto)
{
    const QRect schermo = Schermo(punto);
    punto = {std::clamp(punto.x(), schermo.left(), schermo.right()),
             std::clamp(punto.y(), schermo.top(), schermo.bottom())};
    const QSize misura = m_corpo.size() + QSize(Ombra, Ombra + AltezzaPunta);
    const Puntatore stile = GetPointerStyle(punto, misura.height(), schermo);

    // The pointer sits near the left end, like a speech balloon's, unless the screen ends before the balloon does.
    int x = punto.x() - Raggio - 2 * MezzaBase;
    x = std::max(schermo.left(), std::min(x, schermo.right() + 1 - misura.width()));
    int y = stile == Puntatore::InAlto ? punto.y() : punto.y() - misura.height() + Ombra;
    y = std::max(schermo.top(), std::min(y, schermo.bottom() + 1 - misura.height()));

    const QPoint alto(0, stile == Puntatore::InAlto ? AltezzaPunta : 0);
    for (QLabel *etichetta : {m_titolo, m_testo, m_icona})
        etichetta->move(etichetta->pos() + alto - m_corpo.topLeft());
    m_corpo.moveTopLeft(alto);
    SetPointer(stile, punto.x() - x);
    setFixedSize(misura);
    move(x, y);

    // Without a compositor there is no transparency: the mask then gives the shape.
    QRegion maschera(m_forma.toFillPolygon().toPolygon());
    maschera += maschera.translated(Ombra, Ombra);
    maschera += QRegion(m_forma.translated(0.5, 0.5).toFillPolygon().toPolygon());
    setMask(maschera);
    update();
}

void FrmAdvTooltip::SetPointer(Puntatore stile, int x)
{
    m_stile = stile;
    const int base = std::clamp(x, m_corpo.left() + Raggio + MezzaBase, m_corpo.right() - Raggio - MezzaBase);
    const bool inAlto = stile == Puntatore::InAlto;
    const int orlo = inAlto ? m_corpo.top() : m_corpo.bottom() + 1;
    m_punta =
        QPoint(std::clamp(x, m_corpo.left(), m_corpo.right()), inAlto ? orlo - AltezzaPunta : orlo + AltezzaPunta);
    QPainterPath corpo;
    corpo.addRoundedRect(m_corpo, Raggio, Raggio);
    QPainterPath punta;
    const int dentro = inAlto ? orlo + 1 : orlo - 1;
    punta.addPolygon(QPolygonF{QPointF(base - MezzaBase, dentro), QPointF(m_punta), QPointF(base + MezzaBase, dentro)});
    punta.closeSubpath();
    m_forma = corpo.united(punta);
}

QRect FrmAdvTooltip::n_GetShadowRect() const
{
    return m_corpo.translated(Ombra, Ombra);
}

void FrmAdvTooltip::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    for (int i = Ombra; i > 0; --i)
        p.fillPath(m_forma.translated(i, i), QColor(3, 58, 80, 34));
    p.fillPath(m_forma, m_colore);
    p.setPen(QPen(Colori::Mescola(m_colore, Colori::Testo, 0.55), 1));
    p.drawPath(m_forma);
}

void FrmAdvTooltip::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    close();
}
