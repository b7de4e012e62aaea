#pragma once

#include <QElapsedTimer>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>

/// Paints into an image as long as that takes no more than a given time: what comes later is left out, and so is a
/// single shape that would take too long all by itself.
class TelaLimitata : public QPaintDevice
{
public:
    /// Edges of one shape, the two of its outline included, may be so long together. In pixels.
    static constexpr double MassimoContorno = 1e6;

    /// \a immagine must outlive this. \a millisecondi count from here.
    TelaLimitata(QImage &immagine, int millisecondi);

    /// Nothing has been left out so far.
    [[nodiscard]] bool Intera() const { return m_motore.Intera(); }
    [[nodiscard]] QPaintEngine *paintEngine() const override { return &m_motore; }

protected:
    int metric(PaintDeviceMetric misura) const override;

private:
    class Motore : public QPaintEngine
    {
    public:
        Motore(QImage &immagine, int millisecondi);
        [[nodiscard]] bool Intera() const { return m_intera; }

        bool begin(QPaintDevice *) override;
        bool end() override;
        [[nodiscard]] Type type() const override { return User; }
        void updateState(const QPaintEngineState &stato) override;
        void drawPath(const QPainterPath &tracciato) override;
        void drawPolygon(const QPointF *punti, int quanti, PolygonDrawMode modo) override;
        void drawImage(const QRectF &dove, const QImage &immagine, const QRectF &parte,
                       Qt::ImageConversionFlags come) override;
        void drawPixmap(const QRectF &dove, const QPixmap &immagine, const QRectF &parte) override;

    private:
        [[nodiscard]] bool Avanti();
        [[nodiscard]] double Contorno(const QPainterPath &tracciato) const;

        QImage &m_immagine;
        QPainter m_pittore;
        QElapsedTimer m_orologio;
        int m_millisecondi;
        bool m_intera = true;
    };

    QImage &m_immagine;
    mutable Motore m_motore;
};
