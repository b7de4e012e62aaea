#pragma once

#include <QString>
#include <QStringView>

/// What the settings files say beyond the language. Everything here belongs to the user-interface thread.
namespace Impostazioni
{

/// In which letters the names of tags and attributes are written.
enum class Lettere : quint8 {
    Predefinite = 0, ///< those of the knowledge base when a list wrote them, as typed when they were typed in full
    Base = 1,        ///< those of the knowledge base
    Minuscole = 2,
    ComeScritte = 3, ///< as the user types: in small letters what was begun in small letters
};

/// The line `LetterCase = 0`; any other number means Predefinite.
[[nodiscard]] Lettere LettereNomi();

/// The line `Indentation = 1`: Enter, Tab and Shift+Tab keep and change the indentation. 0: they do not.
[[nodiscard]] bool Rientri();

/// Takes in the lines of one settings file; a later one of the same name goes before an earlier one. Linear.
void Leggi(QStringView testo);

/// Reads the program's settings in the folder \a cartella and the user's own file \a utente, which goes first.
void Carica(const QString &cartella, const QString &utente);

/// \a voce of a completion list as it is to be written for \a scritto, what was typed of it.
[[nodiscard]] QString NomeScelto(const QString &voce, const QString &scritto);

/// The same for a name that was typed in full.
[[nodiscard]] QString NomeIntero(const QString &voce, const QString &scritto);

} // namespace Impostazioni
