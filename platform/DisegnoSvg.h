#pragma once

#include <optional>

#include <QByteArray>

#include "platform/CaricaImmagine.h"

/// Drawings (SVG) of strangers.
namespace DisegnoSvg
{

/// What may safely be rendered of a drawing.
struct Ripulito {
    QByteArray svg;    ///< without document type, processing instructions, scripts and references out of the file
    qint64 lavoro = 0; ///< elements to paint, each reference counted as what it refers to
};

/// None when \a svg is no well-formed XML, or when painting it would not end in good time: too many elements, once the
/// references are followed, too deep a nesting, a reference to itself, too many points in the pictures that it holds.
/// Linear.
[[nodiscard]] std::optional<Ripulito> Ripulisci(const QByteArray &svg);

/// The drawing with its longer side \a lato pixels long, less when there is very much to paint. A null image when it
/// cannot be rendered.
[[nodiscard]] CaricaImmagine::Immagine Disegna(const QByteArray &svg, int lato);

} // namespace DisegnoSvg
