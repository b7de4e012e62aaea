#pragma once

#include <QString>

/// The table that the table dialog builds, without the dialog.
namespace TestoTabella
{

inline constexpr qint64 MassimoCelle = 100'000;

/// Contents of the dialog's boxes; what is not counted is copied into the tag as it stands.
struct Campi {
    QString righe;
    QString colonne;
    QString larghezza;
    QString altezza;
    QString bordo;
    QString spaziatura;
    QString margine;
};

/// The number in \a testo rounded down, 0 to 1,000,000,000; 0 for what is no number. The decimal separator is a point
/// or a comma.
[[nodiscard]] qint64 Conta(const QString &testo);

/// Cells that the table would have; rows without columns count as one cell each.
[[nodiscard]] qint64 Celle(const Campi &campi);

/// \a testo without any "%", then one.
[[nodiscard]] QString InPercento(QString testo);

/// The table, its lines ended by CR LF but the last; \a parola stands before the number of a cell. Linear in Celle(),
/// which must not exceed MassimoCelle.
[[nodiscard]] QString Html(const Campi &campi, const QString &parola);

} // namespace TestoTabella
