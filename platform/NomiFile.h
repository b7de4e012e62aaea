#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// File names as the host has them: bytes, which need not be valid UTF-8. In a path of the program a byte that is no
/// part of a character stands as the unit U+DC00 + byte, which no text holds. Qt's file classes cannot carry such a
/// path: who opens, looks for or replaces a file of the user's goes through here or through LetturaFile and FilePagina.
namespace NomiFile
{

/// Any bytes; PerOspite gives the same ones again. Linear.
[[nodiscard]] QString DaOspite(QByteArrayView byte);
[[nodiscard]] QByteArray PerOspite(const QString &percorso);

/// True when Qt's file classes can carry \a percorso.
[[nodiscard]] bool SoloTesto(QStringView percorso);

/// The path of the address \a indirizzo ("file:///tmp/a%20b.html", also of the host "localhost"); none when it is no
/// such address. What follows "#" or "?" is no part of it.
[[nodiscard]] std::optional<QString> DaIndirizzo(const QString &indirizzo);

/// \a percorso as a full path, without "." and "..".
[[nodiscard]] QString Assoluto(const QString &percorso);

/// Whether there is a file or folder \a percorso; a link to nothing counts as none.
[[nodiscard]] bool Esiste(const QString &percorso);
/// Whether the user may read it, as far as the permissions go.
[[nodiscard]] bool Consentito(const QString &percorso);

/// The names of the regular files in \a cartella that are no text, sorted.
[[nodiscard]] QStringList NonTesto(const QString &cartella);

/// \a testo for people, on one line: control characters, marks that turn the direction of writing, line separators and
/// units that are no text stand as "\n", "\x1B", "\u202E"; a byte of a name as "\xE9". Linear.
[[nodiscard]] QString Leggibile(const QString &testo);

} // namespace NomiFile
