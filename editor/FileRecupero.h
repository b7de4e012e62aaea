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

/// Writes \a pagina to \a dove, which is open; false when not all of it could be written.
[[nodiscard]] bool Scrivi(QIODevice &dove, const PaginaRecuperata &pagina);

/// The page in \a da, which is open; none when it is no recovery file or not a whole one. Any bytes; memory grows with
/// what is there, not with the lengths that it claims.
[[nodiscard]] std::optional<PaginaRecuperata> Leggi(QIODevice &da);

} // namespace FileRecupero
