#pragma once

#include <QString>

struct RigaComando;

/// The check of page files from the command line. Needs no display and no application object.
namespace VerificaFile
{

/// Checks the files of \a riga ("-" is standard input) with the knowledge base in \a cartella and writes the findings
/// to standard output, which the caller flushes. 0 without findings, 1 with; 2 when a file could not be read, which is
/// told on standard error: the others are checked all the same.
[[nodiscard]] int Esegui(const RigaComando &riga, const QString &cartella);

} // namespace VerificaFile
