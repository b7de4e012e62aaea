#include "platform/FilePagina.h"

#include "platform/CodificaPagina.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <cerrno>
#include <optional>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace ModuloPrincipale
{
namespace
{

constexpr int MassimoCollegamenti = 40;

RisultatoScrittura DaErrore(int errore, const QString &motivo)
{
    switch (errore) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
    case EFBIG:
        return {EsitoScrittura::DiscoPieno, motivo, 0, {}};
    case EACCES:
    case EPERM:
    case EROFS:
        return {EsitoScrittura::NonConsentito, motivo, 0, {}};
    default:
        return {EsitoScrittura::Fallito, motivo, 0, {}};
    }
}

/// The file that a chain of symbolic links ends at, existing or not; nothing for a circle.
std::optional<QString> Destinazione(const QString &percorso)
{
    QFileInfo info(percorso);
    for (int passi = 0; info.isSymLink(); ++passi) {
        if (passi == MassimoCollegamenti)
            return std::nullopt;
        info = QFileInfo(info.symLinkTarget());
    }
    return info.absoluteFilePath();
}

std::optional<RisultatoScrittura> Impedimento(const QFileInfo &info)
{
    if (info.isDir())
        return RisultatoScrittura{EsitoScrittura::Cartella, {}, 0, {}};
    if (info.exists() && !info.isFile())
        return RisultatoScrittura{EsitoScrittura::NonRegolare, {}, 0, {}};
    if (!QFileInfo(info.absolutePath()).isDir())
        return RisultatoScrittura{EsitoScrittura::CartellaMancante, {}, 0, {}};
    // The administrator may write everything; a file that nobody may write is meant to stay as it is all the same.
    const auto scrivibile = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    if (info.exists() && (!(info.permissions() & scrivibile) || !info.isWritable()))
        return RisultatoScrittura{EsitoScrittura::SolaLettura, {}, 0, {}};
    return std::nullopt;
}

/// Gives the new file the owner and all permission bits of the old one, as far as the system allows.
void CopiaProprieta([[maybe_unused]] const QString &vecchio, [[maybe_unused]] const QFileDevice &nuovo)
{
#ifdef Q_OS_UNIX
    struct stat dati = {};
    if (stat(QFile::encodeName(vecchio).constData(), &dati) != 0 || nuovo.handle() < 0)
        return;
    if (fchown(nuovo.handle(), dati.st_uid, dati.st_gid) != 0 && fchown(nuovo.handle(), uid_t(-1), dati.st_gid) != 0) {
        // Neither may be given away: then the group of the new file is not the one that the bits were meant for.
        dati.st_mode &= ~mode_t(S_ISUID | S_ISGID);
    }
    if (fchmod(nuovo.handle(), dati.st_mode & 07777) != 0)
        qWarning("The permissions of %s could not be kept", qUtf8Printable(vecchio));
#endif
}

/// The usual way: a new file beside the old one takes its place.
RisultatoScrittura Sostituisci(QByteArrayView byte, const QString &destinazione, bool &daSovrascrivere)
{
    QSaveFile file(destinazione);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        // Often there is no right to make files in this folder, or no room for a longer name; not always told why.
        daSovrascrivere = true;
        return DaErrore(errno, file.errorString());
    }
    CopiaProprieta(destinazione, file);
    errno = 0;
    if (file.write(byte.data(), byte.size()) != byte.size())
        return DaErrore(errno, file.errorString());
    errno = 0;
    if (!file.commit()) {
        RisultatoScrittura risultato = DaErrore(errno, file.errorString());
        // The name may leave no room for the longer one of the new file, or the old file be a mount point.
        daSovrascrivere = risultato.esito != EsitoScrittura::DiscoPieno;
        return risultato;
    }
    return {};
}

/// Makes sure that the disk has room for \a quanti bytes of \a file before one of them is changed.
bool Prenota([[maybe_unused]] const QFile &file, [[maybe_unused]] qint64 quanti)
{
#ifdef Q_OS_UNIX
    const qint64 prima = file.size();
    errno = quanti > prima ? posix_fallocate(file.handle(), prima, quanti - prima) : 0;
    if (errno != 0 && errno != EOPNOTSUPP && errno != EINVAL) {
        const int motivo = errno;
        if (ftruncate(file.handle(), prima) != 0)
            qWarning("A file kept the room that was reserved for it");
        errno = motivo;
        return false;
    }
#endif
    return true;
}

bool Riscrivi(QFile &file, QByteArrayView byte)
{
    errno = 0;
    if (!file.seek(0) || file.write(byte.data(), byte.size()) != byte.size() || !file.resize(byte.size()))
        return false;
#ifdef Q_OS_UNIX
    return fsync(file.handle()) == 0;
#else
    return true;
#endif
}

/// Where no file can be put beside the old one: overwrites it, while a copy of the old content lies in the folder for
/// temporary files. The copy is removed as soon as the new page, or again the old one, is whole.
RisultatoScrittura Sovrascrivi(QByteArrayView byte, const QString &destinazione)
{
    QFile file(destinazione);
    const bool nuovo = !file.exists();
    errno = 0;
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return DaErrore(errno, file.errorString());
    const QByteArray vecchi = file.readAll();
    QTemporaryFile copia(QDir::tempPath() + "/velloro-XXXXXX.html"_L1);
    if (!nuovo && (!copia.open() || copia.write(vecchi) != vecchi.size() || !copia.flush()))
        return DaErrore(errno, copia.errorString());
    if (Prenota(file, byte.size()) && Riscrivi(file, byte))
        return {};
    RisultatoScrittura risultato = DaErrore(errno, file.errorString());
    if (nuovo) {
        file.remove();
    } else if (!Riscrivi(file, vecchi)) {
        copia.setAutoRemove(false);
        risultato.copiaVecchia = copia.fileName();
    }
    return risultato;
}

} // namespace

RisultatoScrittura ScriviByte(QByteArrayView byte, const QString &percorso)
{
    const std::optional<QString> destinazione = Destinazione(percorso);
    if (percorso.isEmpty() || !destinazione)
        return {EsitoScrittura::Fallito, qt_error_string(percorso.isEmpty() ? ENOENT : ELOOP), 0, {}};
    if (const auto impedimento = Impedimento(QFileInfo(*destinazione)))
        return *impedimento;
    bool daSovrascrivere = false;
    RisultatoScrittura risultato = Sostituisci(byte, *destinazione, daSovrascrivere);
    return daSovrascrivere ? Sovrascrivi(byte, *destinazione) : risultato;
}

RisultatoScrittura ScriviTesto(QStringView testo, const QString &percorso, FormatoPagina &formato)
{
    if (testo.isEmpty())
        return {EsitoScrittura::NienteDaScrivere, {}, 0, {}};
    FormatoPagina nuovo = formato;
    qsizetype sostituiti = 0;
    const QByteArray byte = Codifiche::ByteDaTesto(testo, nuovo, &sostituiti);
    RisultatoScrittura risultato = ScriviByte(byte, percorso);
    if (risultato) {
        formato = nuovo;
        risultato.sostituiti = sostituiti;
    }
    return risultato;
}

} // namespace ModuloPrincipale
