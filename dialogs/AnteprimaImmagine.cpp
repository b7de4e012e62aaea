#include "dialogs/AnteprimaImmagine.h"

#include "chrome/Colori.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

/// The picture itself, as large as it is shown.
class AnteprimaImmagine::Foglio : public QWidget
{
public:
    Foglio(const CaricaImmagine::Immagine &immagine, QWidget *parent) : QWidget(parent), m_immagine(immagine) {}

    /// Call when the picture or its size changed.
    void Ridisegna()
    {
        m_ridotta = {};
        update();
    }

protected:
    void paintEvent(QPaintEvent *evento) override
    {
        if (m_immagine.immagine.isNull())
            return;
        QPainter p(this);
        Scacchi(p, evento->rect());
        const QImage &quale = Sorgente();
        const double x = double(quale.width()) / width();
        const double y = double(quale.height()) / height();
        p.setRenderHint(QPainter::SmoothPixmapTransform, x > 1 || m_immagine.immagine.size() != m_immagine.misura);
        const QRectF meta(evento->rect());
        p.drawImage(meta, quale, QRectF(meta.x() * x, meta.y() * y, meta.width() * x, meta.height() * y));
    }

private:
    /// What is drawn from: a picture that is shown much smaller than it is would flicker with left out points.
    const QImage &Sorgente()
    {
        constexpr double Molto = 0.75;
        constexpr qint64 MassimiPunti = qint64{8} << 20;
        const QSizeF meta = QSizeF(size()) * devicePixelRatioF();
        if (meta.width() >= m_immagine.immagine.width() * Molto || meta.width() * meta.height() > MassimiPunti)
            return m_immagine.immagine;
        const QSize misura = meta.toSize().expandedTo(QSize(1, 1));
        if (m_ridotta.size() != misura)
            m_ridotta = m_immagine.immagine.scaled(misura, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        return m_ridotta;
    }

    /// What shows through a transparent picture.
    void Scacchi(QPainter &p, const QRect &dove)
    {
        constexpr int Lato = 8;
        p.fillRect(dove, Colori::Bianco);
        if (!m_immagine.immagine.hasAlphaChannel())
            return;
        const QColor scuro(225, 225, 225);
        for (int y = dove.top() / Lato; y <= dove.bottom() / Lato; ++y) {
            for (int x = dove.left() / Lato; x <= dove.right() / Lato; ++x) {
                if ((x + y) % 2 == 1)
                    p.fillRect(x * Lato, y * Lato, Lato, Lato, scuro);
            }
        }
    }

    const CaricaImmagine::Immagine &m_immagine;
    QImage m_ridotta;
};

AnteprimaImmagine::AnteprimaImmagine(QWidget *parent) : QScrollArea(parent), m_foglio(new Foglio(m_immagine, this))
{
    m_foglio->setObjectName(u"ImagePreview"_s);
    m_foglio->resize(0, 0);
    setWidget(m_foglio);
    setAlignment(Qt::AlignCenter);
    setFrameShape(NoFrame);
}

void AnteprimaImmagine::Mostra(CaricaImmagine::Immagine immagine)
{
    m_immagine = std::move(immagine);
    if (Vuota()) {
        m_immagine.misura = {};
        m_foglio->resize(0, 0);
    }
    if (!m_scelta)
        m_adattata = ZoomAdatto() < 1;
    Disponi();
}

void AnteprimaImmagine::ImpostaAdattata(bool adattata)
{
    m_scelta = true;
    m_adattata = adattata;
    Disponi();
}

void AnteprimaImmagine::Disponi()
{
    Porta(m_adattata ? ZoomAdatto() : 1);
}

void AnteprimaImmagine::Ingrandisci()
{
    m_adattata = false;
    Porta(std::min(m_zoom * Passo, Massimo));
}

void AnteprimaImmagine::Rimpicciolisci()
{
    m_adattata = false;
    // A picture fitted into the area may stand below the smallest step already.
    Porta(std::max(m_zoom / Passo, std::min(m_zoom, Minimo)));
}

double AnteprimaImmagine::ZoomAdatto() const
{
    if (Vuota())
        return 1;
    const QSizeF spazio = maximumViewportSize();
    return std::min(
        {Massimo, spazio.width() / m_immagine.misura.width(), spazio.height() / m_immagine.misura.height()});
}

void AnteprimaImmagine::Porta(double zoom)
{
    // Steps up and down must meet at the own size again.
    m_zoom = std::abs(zoom - 1) < 1e-6 ? 1 : zoom;
    if (!Vuota()) {
        const QPointF mezzo = QPointF(viewport()->rect().center()) - m_foglio->pos();
        const QSizeF prima = m_foglio->size();
        m_foglio->resize((QSizeF(m_immagine.misura) * m_zoom).toSize().expandedTo(QSize(1, 1)));
        m_foglio->Ridisegna();
        const auto centra = [](QScrollBar *barra, double punto, double era, double ora, int area) {
            if (era > 0)
                barra->setValue(int(punto / era * ora - area / 2.0));
        };
        centra(horizontalScrollBar(), mezzo.x(), prima.width(), m_foglio->width(), viewport()->width());
        centra(verticalScrollBar(), mezzo.y(), prima.height(), m_foglio->height(), viewport()->height());
    }
    emit ZoomCambiato();
}

void AnteprimaImmagine::resizeEvent(QResizeEvent *evento)
{
    QScrollArea::resizeEvent(evento);
    if (m_adattata)
        Disponi();
}

void AnteprimaImmagine::wheelEvent(QWheelEvent *evento)
{
    if (!(evento->modifiers() & Qt::ControlModifier) || Vuota()) {
        QScrollArea::wheelEvent(evento);
        return;
    }
    evento->angleDelta().y() > 0 ? Ingrandisci() : Rimpicciolisci();
    evento->accept();
}
