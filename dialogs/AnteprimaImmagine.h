#pragma once

#include <QScrollArea>

#include "platform/CaricaImmagine.h"

/// Shows one picture: at its own size, fitted into the area, or at any zoom step. Besides
/// the picture it keeps at most one smaller copy, whatever the zoom.
class AnteprimaImmagine : public QScrollArea
{
    Q_OBJECT

public:
    static constexpr double Passo = 1.25;
    static constexpr double Minimo = 0.1;
    static constexpr double Massimo = 8.0;

    explicit AnteprimaImmagine(QWidget *parent = nullptr);

    /// A null picture empties the area. Until one of the two ways is chosen, a picture that is larger than the area is
    /// fitted into it and any other is shown at its own size.
    void Mostra(CaricaImmagine::Immagine immagine);
    /// Own size in pixels.
    [[nodiscard]] QSize Misura() const { return m_immagine.misura; }
    [[nodiscard]] bool Vuota() const { return m_immagine.immagine.isNull(); }
    /// Fitted: as large as the area allows, up to Massimo, and again when the area's size changes. Else: at its own
    /// size.
    void ImpostaAdattata(bool adattata);
    /// One step up or down; the middle of what is seen stays where it is. Ends at Minimo and Massimo.
    void Ingrandisci();
    void Rimpicciolisci();
    /// Shown size / own size.
    [[nodiscard]] double Zoom() const { return m_zoom; }

signals:
    void ZoomCambiato();

protected:
    void resizeEvent(QResizeEvent *evento) override;
    void wheelEvent(QWheelEvent *evento) override;

private:
    class Foglio;
    void Porta(double zoom);
    void Disponi();
    [[nodiscard]] double ZoomAdatto() const;

    Foglio *m_foglio;
    CaricaImmagine::Immagine m_immagine;
    double m_zoom = 1;
    bool m_scelta = false; ///< the user has chosen one of the two ways
    bool m_adattata = true;
};
