#pragma once

#include <QImage>
#include <QString>

/// Reads pictures that somebody else made, at a bounded cost whatever is in the file.
namespace CaricaImmagine
{

inline constexpr qint64 MassimoFile = qint64(128) * 1024 * 1024;    ///< bytes; larger files are not read
inline constexpr qint64 MassimoMemoria = qint64(128) * 1024 * 1024; ///< bytes that a decoded picture may take
inline constexpr int LatoDisegno = 2048; ///< pixels of the longer side that a drawing is rendered in

struct Immagine {
    QImage immagine; ///< null: the file is no picture, is broken, or is larger than the limits
    /// Own size in pixels. A drawing (SVG) is rendered larger than that, a large JPEG is read smaller.
    QSize misura;
};

/// The picture in the file \a percorso: JPEG, GIF, bitmap, PNG, WebP, SVG and what else the host's plug-ins read. Of an
/// animation the first frame. Only regular files are opened. A drawing is rendered without anything that it refers to
/// outside itself.
[[nodiscard]] Immagine Carica(const QString &percorso);

} // namespace CaricaImmagine
