#pragma once

class QFile;
class QString;

/// Files that the program writes for itself at a place where others may have been before.
namespace FileProprio
{

/// Opens \a file at \a percorso for writing over what is there; made when it is missing, and then only for the user. A
/// symbolic or hard link that somebody laid there is taken away and never followed. What is no regular file stays
/// closed. 0, or the error number; -1 for what is no file.
[[nodiscard]] int Apri(QFile &file, const QString &percorso);

} // namespace FileProprio
