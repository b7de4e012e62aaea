#pragma once

#include <QString>
#include <QStringList>

/// A registry: keys that hold named, typed values. Hosts without one have a small tree that can only be read; it holds
/// what the host knows of itself (see RegistroOspite.h), and over that what administrators wrote into files (see
/// RegistroFile.h). The tree is read on first use. Everything here belongs to the user-interface thread.
///
/// Key and value names are compared without regard to letter case; "\" separates the names of a path. Text values are
/// UTF-8. The calls return one of the codes of Esito and change no argument when they fail, unless stated otherwise.
namespace Registro
{

using HKey = quint32; ///< a key that is open; 0 is none

inline constexpr HKey HKEY_CURRENT_USER = 0x80000001;
inline constexpr HKey HKEY_LOCAL_MACHINE = 0x80000002;

enum Tipo : quint32 { REG_SZ = 1, REG_EXPAND_SZ = 2, REG_BINARY = 3, REG_DWORD = 4 };

/// Rights that a key is opened with. Asking for the right to write is allowed, but there is no call that does.
enum Accesso : quint32 { KEY_QUERY_VALUE = 1, KEY_READ = 0x20019, KEY_ALL_ACCESS = 0x2003F };

enum Esito : qint32 {
    Successo = 0,
    NonTrovato = 2,       ///< no such key or value
    AccessoNegato = 5,    ///< the key was opened without KEY_QUERY_VALUE
    HandleNonValido = 6,  ///< the key is not open
    ParametroErrato = 87, ///< a buffer without its size
    AltriDati = 234       ///< the buffer is too small
};

/// Opens the key \a chiave below \a radice, itself an open or a root key, for reading. An empty path opens \a radice
/// once more. Logarithmic in the number of keys.
[[nodiscard]] Esito RegOpenKey(HKey radice, QStringView chiave, HKey &aperta);
/// The same with the rights \a accesso, a sum of Accesso bits.
[[nodiscard]] Esito RegOpenKeyEx(HKey radice, QStringView chiave, quint32 accesso, HKey &aperta);

/// Reads the value \a nome. \a tipo may be null. \a byte: the room in \a dati on entry, the size of the value on
/// return, both in bytes, terminators included; also set on AltriDati, which copies nothing. With \a dati null only
/// type and size are told.
[[nodiscard]] Esito RegQueryValueEx(HKey chiave, QStringView nome, quint32 *tipo, void *dati, quint32 *byte);

/// Root keys stay open.
Esito RegCloseKey(HKey chiave);

/// The number of keys that are open now, root keys not counted.
[[nodiscard]] qsizetype ChiaviAperte();

/// Where the tree comes from.
struct Sorgenti {
    QStringList file;          ///< files of administrators; a later one wins over an earlier one
    QString macchina;          ///< the host's machine information
    QString cartellaProgrammi; ///< programs are looked for here only; empty: where the host looks for them

    /// "registro.dat" beside the program, then /etc/velloro/registro.dat; /etc/machine-info.
    [[nodiscard]] static Sorgenti DelloOspite();
};

/// Reads the tree anew, and closes all keys.
void Carica(const Sorgenti &sorgenti);

} // namespace Registro
