#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <span>

/// The settings file, the language files and the table of texts that the interface is made of.
namespace ModuloPrincipale
{

inline constexpr int UltimoMessaggio = 1000;  ///< highest number in the language table
inline constexpr quint8 LinguaItaliano = 0;   ///< also without any setting
inline constexpr quint8 LinguaCinese = 5;     ///< simplified characters
inline constexpr quint8 LinguaCineseTrad = 8; ///< traditional characters, as written in Taiwan
inline constexpr quint8 LinguaInglese = 1;    ///< stands for every code that no language has

/// A language of the interface: a row of data/lingue.tsv.
struct Lingua {
    quint8 codice = 0;
    QStringView nome;   ///< for --lingua
    QStringView file;   ///< without a folder
    QStringView locale; ///< by which the host knows it ("zh_TW")
};
[[nodiscard]] std::span<const Lingua> Lingue();

/// Text \a numero of the language table; empty when the file has no such line and for number 0. The range is 0 to
/// UltimoMessaggio; outside it a debug build asserts and a release build gives an empty text. Constant time.
[[nodiscard]] QString Messaggio(qint16 numero);

/// What became of a load.
struct EsitoCaricamento {
    QString errore; ///< empty: all well; else the text to show before the program ends
    [[nodiscard]] bool Riuscito() const { return errore.isEmpty(); }
};

/// Reads the settings and the language file that they name from the folder \a cartella into the language table. A file
/// that is missing, cannot be read or is no regular file leaves the table empty. The language that the user's own
/// settings file \a utente sets goes before theirs; a file that cannot be read or sets none is as good as no file.
/// Linear in the size of the files.
[[nodiscard]] EsitoCaricamento CaricaImpostazioni(const QString &cartella, const QString &utente = {});

/// The same for the language \a codice, whatever the settings say: they are not read.
[[nodiscard]] EsitoCaricamento CaricaLingua(const QString &cartella, quint8 codice);

/// What a run starts with: the language \a codice of its command line, else that of the settings, the user's own first.
[[nodiscard]] EsitoCaricamento CaricaPerAvvio(const QString &cartella, std::optional<quint8> codice);

/// Path of the user's own settings file: $XDG_CONFIG_HOME/velloro/GlobalSetting.dat, by default below ~/.config.
[[nodiscard]] QString ImpostazioniUtente();

/// Code of the language that the table was loaded for; 0 before the first load.
[[nodiscard]] quint8 LinguaCaricata();

/// What the settings line \a riga sets for the setting \a nome of eight letters: the decimal number from its twelfth
/// character on, rounded to the nearest whole number, a half to the even one; 1 when that is outside 0 to 255; none
/// when the line does not begin with the name. Any text; linear.
[[nodiscard]] std::optional<quint8> NumeroDaRiga(QStringView riga, QStringView nome);

/// The same for the setting "Language": a language code.
[[nodiscard]] std::optional<quint8> LinguaDaRiga(QStringView riga);

/// Language code of a whole settings file: that of the last line that sets one; none when no line does.
[[nodiscard]] std::optional<quint8> LinguaScritta(QStringView testo);

/// The same, LinguaItaliano when no line sets one.
[[nodiscard]] quint8 LinguaDaImpostazioni(QStringView testo);

/// Name of the language file for \a codice, without a folder.
[[nodiscard]] QString FileLingua(quint8 codice);

/// Name by which the host knows the language \a codice ("zh_TW"), for its own dialogs and formats.
[[nodiscard]] QString NomeLocale(quint8 codice);

/// The entry in the line \a riga of a language file: what follows its fifth character, up to the marker "=%!%=" unless
/// the entry begins with that. A view into \a riga.
[[nodiscard]] QStringView TestoDaRiga(QStringView riga);

} // namespace ModuloPrincipale
