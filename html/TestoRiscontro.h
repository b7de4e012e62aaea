#pragma once

#include <QString>
#include <QStringView>

#include "html/Scansione.h"

namespace ModuloVerificaSintassi
{

/// A message quotes at most so many units of a name: a tag of a megabyte is still one line of the list.
inline constexpr qsizetype MassimoNome = 500;

/// The message of a finding on the 1-based line \a riga, in the language of the interface. A name that is too long is
/// cut; what else it holds stands as it is.
[[nodiscard]] QString TestoRiscontro(qsizetype riga, TipoRisultato tipo, QStringView nome);

/// \a testo as it can be shown on one line of a list, a status bar or a terminal: its line ends are left out, and what
/// would act instead of being seen is written as NomiFile::Leggibile does.
[[nodiscard]] QString SuUnaRiga(QStringView testo);

} // namespace ModuloVerificaSintassi
