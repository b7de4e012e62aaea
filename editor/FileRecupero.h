#pragma once

#include <optional>

#include <QDateTime>
#include <QString>

class QIODevice;

/// A page that a program which did not end in order left behind.
struct PaginaRecuperata {
    QString FileCorrente; ///< full path of the page; empty for one without a file
    QString codifica;     ///< name of the page's encoding; empty when it had none
    QString testo;
    QDateTime quando; ///< when it was written
};

/// The bytes of a recovery file: a signature, the fields of the page in order, an end mark.
namespace FileRecupero
{

enum class Stato {
    Intero, ///< a recovery file, whole
    Guasto, ///< one that was cut, or that claims lengths that are not there
    Altrui  ///< something else
};

/// Reads what stands before the text in \a da, a file that is open, into \a pagina, and looks whether the lengths of
/// its fields end where the file ends. Cost and memory do not grow with the text.
[[nodiscard]] Stato LeggiTestata(QIODevice &da, PaginaRecuperata &pagina);

/// Writes \a pagina to \a dove, which is open; false when not all of it could be written.
[[nodiscard]] bool Scrivi(QIODevice &dove, const PaginaRecuperata &pagina);

/// The page in \a da, a file that is open; none when LeggiTestata finds it not whole. Any bytes.
[[nodiscard]] std::optional<PaginaRecuperata> Leggi(QIODevice &da);

} // namespace FileRecupero
