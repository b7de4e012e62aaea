#include "platform/TelaLimitata.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

TelaLimitata::TelaLimitata(QImage &immagine, int millisecondi) : m_immagine(immagine), m_motore(immagine, millisecondi)
{
}

int TelaLimitata::metric(PaintDeviceMetric misura) const
{
    switch (misura) {
    case PdmWidth:
        return m_immagine.width();
    case PdmHeight:
        return m_immagine.height();
    case PdmWidthMM:
        return m_immagine.widthMM();
    case PdmHeightMM:
        return m_immagine.heightMM();
    case PdmDpiX:
    case PdmPhysicalDpiX:
        return m_immagine.logicalDpiX();
    case PdmDpiY:
    case PdmPhysicalDpiY:
        return m_immagine.logicalDpiY();
    case PdmDepth:
        return m_immagine.depth();
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    default:
        return 0;
    }
}

TelaLimitata::Motore::Motore(QImage &immagine, int millisecondi)
    : QPaintEngine(AllFeatures), m_immagine(immagine), m_millisecondi(millisecondi)
{
    m_orologio.start();
}

bool TelaLimitata::Motore::begin(QPaintDevice *)
{
    return m_pittore.begin(&m_immagine);
}

bool TelaLimitata::Motore::end()
{
    return m_pittore.end();
}

bool TelaLimitata::Motore::Avanti()
{
    m_intera = m_intera && m_orologio.elapsed() <= m_millisecondi;
    return m_intera;
}

void TelaLimitata::Motore::updateState(const QPaintEngineState &stato)
{
    const DirtyFlags cambiati = stato.state();
    if (cambiati & DirtyTransform)
        m_pittore.setTransform(stato.transform());
    if (cambiati & DirtyPen)
        m_pittore.setPen(stato.pen());
    if (cambiati & DirtyBrush)
        m_pittore.setBrush(stato.brush());
    if (cambiati & DirtyBrushOrigin)
        m_pittore.setBrushOrigin(stato.brushOrigin());
    if (cambiati & DirtyHints)
        m_pittore.setRenderHints(stato.renderHints());
    if (cambiati & DirtyCompositionMode)
        m_pittore.setCompositionMode(stato.compositionMode());
    if (cambiati & DirtyOpacity)
        m_pittore.setOpacity(stato.opacity());
    if (cambiati & DirtyClipRegion)
        m_pittore.setClipRegion(stato.clipRegion(), stato.clipOperation());
    if (cambiati & DirtyClipPath)
        m_pittore.setClipPath(stato.clipPath(), stato.clipOperation());
    if (cambiati & DirtyClipEnabled)
        m_pittore.setClipping(stato.isClipEnabled());
}

/// How long the edges are that filling and outlining the path leads to: what the rasterizer takes its time for.
double TelaLimitata::Motore::Contorno(const QPainterPath &tracciato) const
{
    const QTransform trasformazione = m_pittore.transform();
    // An edge that leaves the picture costs what lies inside.
    const double massimo = m_immagine.width() + m_immagine.height();
    double lunghezza = 0;
    QPointF prima;
    for (int i = 0; i < tracciato.elementCount(); ++i) {
        const QPointF punto = trasformazione.map(QPointF(tracciato.elementAt(i)));
        if (!tracciato.elementAt(i).isMoveTo())
            lunghezza += std::min(massimo, (punto - prima).manhattanLength());
        prima = punto;
    }
    const QPen penna = m_pittore.pen();
    const double scala = std::sqrt(std::abs(trasformazione.determinant()));
    double totale = m_pittore.brush().style() == Qt::NoBrush ? 0 : lunghezza;
    if (penna.style() != Qt::NoPen) {
        const double spessore = std::min(massimo, penna.widthF() * (penna.isCosmetic() ? 1 : scala));
        double pezzi = tracciato.elementCount();
        if (penna.style() != Qt::SolidLine) {
            double disegno = 0;
            for (const double tratto : penna.dashPattern())
                disegno += tratto * spessore;
            pezzi += lunghezza / std::max(disegno, 1e-3);
        }
        totale += 2 * lunghezza + pezzi * std::numbers::pi * spessore;
    }
    return totale;
}

void TelaLimitata::Motore::drawPath(const QPainterPath &tracciato)
{
    if (!Avanti())
        return;
    m_intera = Contorno(tracciato) <= MassimoContorno;
    if (m_intera)
        m_pittore.drawPath(tracciato);
}

void TelaLimitata::Motore::drawPolygon(const QPointF *punti, int quanti, PolygonDrawMode modo)
{
    if (quanti < 1)
        return;
    QPainterPath tracciato(punti[0]);
    for (int i = 1; i < quanti; ++i)
        tracciato.lineTo(punti[i]);
    if (modo != PolylineMode)
        tracciato.closeSubpath();
    tracciato.setFillRule(modo == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    const QBrush pennello = m_pittore.brush();
    if (modo == PolylineMode)
        m_pittore.setBrush(Qt::NoBrush);
    drawPath(tracciato);
    m_pittore.setBrush(pennello);
}

void TelaLimitata::Motore::drawImage(const QRectF &dove, const QImage &immagine, const QRectF &parte,
                                     Qt::ImageConversionFlags come)
{
    if (Avanti())
        m_pittore.drawImage(dove, immagine, parte, come);
}

void TelaLimitata::Motore::drawPixmap(const QRectF &dove, const QPixmap &immagine, const QRectF &parte)
{
    if (Avanti())
        m_pittore.drawPixmap(dove, immagine, parte);
}
