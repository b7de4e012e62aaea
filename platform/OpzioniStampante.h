#pragma once

#include <QByteArray>
#include <QMap>

#include "platform/DevMode.h"

/// A printer's options as CUPS knows them (name and value), and the device settings record that says the same.
namespace OpzioniStampante
{

using Opzioni = QMap<QByteArray, QByteArray>;

/// Only the options that a record can tell of; an option may have several names.
[[nodiscard]] Opzioni Note(const Opzioni &tutte);

/// The record of a printer with these options. A field counts when there is an option for it.
[[nodiscard]] DevMode InRecord(const QByteArray &stampante, const Opzioni &opzioni);

/// The options \a attuali with the settings of \a record: a field that does not count takes its option away, one that
/// says what the option says already leaves it as it is written.
[[nodiscard]] Opzioni Unisci(const Opzioni &attuali, const DevMode &record);

/// Options as bytes that know their own length, and back; what is broken gives no options.
[[nodiscard]] QByteArray InByte(const Opzioni &opzioni);
[[nodiscard]] Opzioni DaByte(const QByteArray &byte);

} // namespace OpzioniStampante
