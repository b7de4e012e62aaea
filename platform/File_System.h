#pragma once

#include <QStringView>
#include <QString>
#include <QDateTime>

#include <memory>

/// Paths and the search for files. No routine keeps state between calls; a running search lives in its handle.
namespace File_System
{

/// How a path is written. The two differ in what "/" and "\" mean.
enum class Stile {
    Windows, ///< "\" separates names, "/" begins an FTP path
    Posix    ///< "/" separates names and begins a local path, "\" is a character like any other
};

#ifdef Q_OS_WIN
inline constexpr Stile StileOspite = Stile::Windows;
#else
inline constexpr Stile StileOspite = Stile::Posix;
#endif

inline constexpr qint16 TipoVuoto = -1;
inline constexpr qint16 TipoLocale = 0;
inline constexpr qint16 TipoRete = 1;
inline constexpr qint16 TipoFtp = 2;

/// What a search found last. The first character of nomeBreve carries the path kind of the search between calls.
struct DatiRicerca {
    enum Attributo : quint32 { SolaLettura = 1, Nascosto = 2, Cartella = 16 };

    quint32 attributi = 0;
    QDateTime creazione;
    QDateTime accesso;
    QDateTime modifica;
    qint64 dimensione = 0; ///< in bytes
    QString nome;          ///< name without its folder
    QString nomeBreve;
};

class StatoRicerca;
struct ChiudiStato {
    void operator()(StatoRicerca *stato) const;
};
/// A search under way; null when there is none. Going out of scope closes it.
using HandleRicerca = std::unique_ptr<StatoRicerca, ChiudiStato>;

/// True when a file or folder matches \a percorso, whose last name may hold the wildcards * and ?. A file that
/// literally has that name counts first, so names with * or ? in them are found as well. False for an empty or an FTP
/// path.
[[nodiscard]] bool FileEsiste(const QString &percorso, Stile stile = StileOspite);

/// TipoVuoto, TipoLocale, TipoRete (begins with two backslashes) or TipoFtp (begins with "FTP" in any case; in the
/// Windows style also with "/").
[[nodiscard]] qint16 TipoPercorso(QStringView percorso, Stile stile = StileOspite);

/// The part after the last separator; the whole path when it has none.
[[nodiscard]] QString NomeFile(QStringView percorso, Stile stile = StileOspite);

/// The first match of \a percorso, or, when that is empty, the next match of \a handle. \a risultato is the name, empty
/// when there is none (the search is then closed). Without \a soloPrimo the search runs to its end in this one call,
/// \a dati keep the last match. One search takes the same \a handle and \a dati in all its calls.
void CercaFile(QString &risultato, HandleRicerca &handle, DatiRicerca &dati, const QString &percorso, bool soloPrimo,
               Stile stile = StileOspite);

/// Closes \a handle; a null one is left as it is.
void ChiudiRicerca(HandleRicerca &handle);

} // namespace File_System
