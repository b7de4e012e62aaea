#pragma once

#include <vector>

#include <QString>

/// The pages that are measured: made up, but shaped like pages written by hand. The same call makes the same page on
/// every machine.
namespace Pagine
{

/// A whole HTML page of about \a unita UTF-16 units (within one line), in lines of 20 to 120 characters that end with
/// CR LF, with nested tags, attributes, comments and Italian text.
[[nodiscard]] QString Html(qsizetype unita);

/// The same content as one single line of \a unita units, as a minified page has it.
[[nodiscard]] QString RigaSola(qsizetype unita);

/// A part of a tag, to be given one colour.
struct Parte {
    int da = 0; ///< 0-based
    int quanti = 0;
    enum Genere { Nome, Attributo, Valore, Commento } genere = Nome;
};

/// Every tag name, attribute, value and comment of \a pagina, in order. Linear.
[[nodiscard]] std::vector<Parte> PartiDeiTag(QStringView pagina);

} // namespace Pagine
