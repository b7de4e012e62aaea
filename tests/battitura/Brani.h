#pragma once

#include <QString>
#include <QStringList>

/// Pieces of pages to be typed, and what counts as typed right.
namespace Brani
{

/// Balanced elements of 60 to 260 units of \a pagina, at most \a quanti, spread over the page. Line ends become "\n".
[[nodiscard]] QStringList DaPagina(const QString &pagina, int quanti);

/// \a testo with the names of tags and attributes in small letters, values without quotes in double ones, and line ends
/// as "\n": two texts that read alike are the same then.
[[nodiscard]] QString Uguagliato(const QString &testo);

/// A name of a tag or attribute of a piece.
struct Nome {
    qsizetype da = 0;
    qsizetype lunghezza = 0;
    bool attributo = false;
    qsizetype valore = -1; ///< where the value of an attribute begins, behind its quote; -1: it has none
    qsizetype fineValore = -1;
    QChar virgoletta = {}; ///< null: none
};

/// The names of the start tags in \a testo, ascending.
[[nodiscard]] QList<Nome> Nomi(const QString &testo);

} // namespace Brani
