#pragma once

#include <QList>
#include <QString>

#include "html/DatiTag.h"

namespace ModuloTag
{

struct EsitoLettura {
    qint64 righe = 0; ///< rows of the joined tables that reached the table
    QString motivo;   ///< why the reading stopped early; empty when it did not
};

/// Reads the SQLite file \a percorso into \a tabella, which the caller passes empty.
[[nodiscard]] EsitoLettura LeggiBaseTag(const QString &percorso, QList<DatiTag> &tabella);

} // namespace ModuloTag
