#pragma once

#include "Passo.h"

#include <functional>

/// Steps tried in a process of their own.
namespace Prova
{

struct Esito {
    QString genere;      ///< of the fault; empty: there was none
    QString testo;       ///< what was wrong
    qsizetype fatti = 0; ///< steps begun
};

/// \a tralasciati: kinds of faults that do not count.
[[nodiscard]] Esito Prova(const Passi &passi, const QStringList &tralasciati);

/// The process: tries the steps of \a file. Its exit status.
int Figlio(int argc, char **argv, const QString &file, const QStringList &tralasciati);

/// The fewest of \a passi that \a fallisce still says true of: pieces are left out as long as that holds, halves first,
/// then ever smaller ones down to single steps, but no longer than \a secondi.
[[nodiscard]] Passi Riduci(Passi passi, int secondi, const std::function<bool(const Passi &)> &fallisce);

} // namespace Prova
