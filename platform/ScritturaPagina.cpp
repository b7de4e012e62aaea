#include "platform/FilePagina.h"

#include "platform/CodificaPagina.h"
#include "platform/DatiFile.h"
#include "platform/NomiFile.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryFile>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace ModuloPrincipale
{
namespace
{

constexpr int MassimoCollegamenti = 40;

RisultatoScrittura DaErrore(int errore)
{
    const QString motivo = qt_error_string(errore);
    switch (errore) {
    case ENOSPC:
    case EDQUOT:
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
std::optional<QByteArray> Destinazione(QByteArray percorso)
{
    for (int passi = 0;; ++passi) {
        std::array<char, PATH_MAX> meta{};
        const ssize_t quanti = readlink(percorso.constData(), meta.data(), meta.size());
        if (quanti < 0)
            return percorso;
        if (passi == MassimoCollegamenti)
            return std::nullopt;
        const QByteArray dove(meta.data(), quanti);
        percorso = dove.startsWith('/') ? dove : percorso.first(percorso.lastIndexOf('/') + 1) + dove;
    }
}

QByteArray Cartella(const QByteArray &percorso)
{
    const qsizetype barra = percorso.lastIndexOf('/');
    return barra < 0 ? "."_ba : percorso.first(std::max<qsizetype>(barra, 1));
}

std::optional<RisultatoScrittura> Impedimento(const QByteArray &percorso)
{
    struct stat dati = {};
    const bool esiste = stat(percorso.constData(), &dati) == 0;
    if (esiste && S_ISDIR(dati.st_mode))
        return RisultatoScrittura{EsitoScrittura::Cartella, {}, 0, {}};
    if (esiste && !S_ISREG(dati.st_mode))
        return RisultatoScrittura{EsitoScrittura::NonRegolare, {}, 0, {}};
    if (esiste && DatiFile::Protetto(percorso, dati.st_mode))
        return RisultatoScrittura{EsitoScrittura::SolaLettura, {}, 0, {}};
    if (stat(Cartella(percorso).constData(), &dati) != 0 || !S_ISDIR(dati.st_mode))
        return RisultatoScrittura{EsitoScrittura::CartellaMancante, {}, 0, {}};
    return std::nullopt;
}

/// Gives the new file the owner and all permission bits of the old one, as far as the system allows.
void CopiaProprieta(const QByteArray &vecchio, int nuovo)
{
    struct stat dati = {};
    if (stat(vecchio.constData(), &dati) != 0)
        return;
    if (fchown(nuovo, dati.st_uid, dati.st_gid) != 0 && fchown(nuovo, uid_t(-1), dati.st_gid) != 0) {
        // Neither may be given away: then the group of the new file is not the one that the bits were meant for.
        dati.st_mode &= ~mode_t(S_ISUID | S_ISGID);
    }
    if (fchmod(nuovo, dati.st_mode & 07777) != 0)
        qWarning("The permissions of a file could not be kept");
}

bool ScriviTutto(int file, QByteArrayView byte)
{
    while (!byte.isEmpty()) {
        const ssize_t scritti = write(file, byte.data(), size_t(byte.size()));
        if (scritti < 0 && errno != EINTR)
            return false;
        byte = byte.sliced(std::max<ssize_t>(scritti, 0));
    }
    return true;
}

/// A new file beside another one, whose place it can take; without that it goes.
class FileAccanto
{
public:
    explicit FileAccanto(const QByteArray &altro) : m_altro(altro)
    {
        constexpr int Tentativi = 100;
        for (int i = 0; m_file < 0 && i < Tentativi && (i == 0 || errno == EEXIST); ++i) {
            m_nome =
                altro + '.' + QByteArray::number(QRandomGenerator::global()->generate(), 36).rightJustified(7, '0');
            m_file = open(m_nome.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        }
    }
    ~FileAccanto()
    {
        if (m_file >= 0 && close(m_file) == 0 && !m_aPosto)
            unlink(m_nome.constData());
    }
    Q_DISABLE_COPY_MOVE(FileAccanto)

    [[nodiscard]] int Descrittore() const { return m_file; }
    [[nodiscard]] bool SulDisco() const { return fsync(m_file) == 0; }
    bool PrendiPosto()
    {
        m_aPosto = rename(m_nome.constData(), m_altro.constData()) == 0;
        return m_aPosto;
    }

private:
    QByteArray m_altro;
    QByteArray m_nome;
    int m_file = -1;
    bool m_aPosto = false;
};

/// The usual way: a new file beside the old one takes its place.
RisultatoScrittura Sostituisci(QByteArrayView byte, const QByteArray &destinazione, const std::function<bool()> &ancora,
                               bool &daSovrascrivere)
{
    FileAccanto file(destinazione);
    if (file.Descrittore() < 0) {
        // There is no right to make files in this folder, or no room for a longer name.
        daSovrascrivere = true;
        return DaErrore(errno);
    }
    CopiaProprieta(destinazione, file.Descrittore());
    if (!ScriviTutto(file.Descrittore(), byte))
        return DaErrore(errno);
    // That may have taken seconds.
    const bool scritto = file.SulDisco();
    if (scritto && ancora && !ancora())
        return {EsitoScrittura::Cambiato, {}, 0, {}};
    if (!scritto || !file.PrendiPosto()) {
        RisultatoScrittura risultato = DaErrore(errno);
        // The old file may be a mount point.
        daSovrascrivere = risultato.esito != EsitoScrittura::DiscoPieno;
        return risultato;
    }
    return {};
}

/// Makes sure that the disk has room for \a quanti bytes of \a file before one of them is changed.
bool Prenota(const QFile &file, qint64 quanti)
{
    const qint64 prima = file.size();
    errno = quanti > prima ? posix_fallocate(file.handle(), prima, quanti - prima) : 0;
    if (errno != 0 && errno != EOPNOTSUPP && errno != EINVAL) {
        const int motivo = errno;
        if (ftruncate(file.handle(), prima) != 0)
            qWarning("A file kept the room that was reserved for it");
        errno = motivo;
        return false;
    }
    return true;
}

bool Riscrivi(const QFile &file, QByteArrayView byte)
{
    return lseek(file.handle(), 0, SEEK_SET) == 0 && ScriviTutto(file.handle(), byte) &&
           ftruncate(file.handle(), byte.size()) == 0 && fsync(file.handle()) == 0;
}

/// Where no file can be put beside the old one: overwrites it, while a copy of the old content lies in the folder for
/// temporary files. The copy is removed as soon as the new page, or again the old one, is whole.
RisultatoScrittura Sovrascrivi(QByteArrayView byte, const QByteArray &destinazione)
{
    struct stat dati = {};
    const bool nuovo = stat(destinazione.constData(), &dati) != 0;
    const int aperto = open(destinazione.constData(), O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    QFile file;
    if (aperto < 0 || !file.open(aperto, QIODevice::ReadWrite | QIODevice::Unbuffered, QFile::AutoCloseHandle))
        return DaErrore(errno);
    if (fstat(aperto, &dati) != 0 || !S_ISREG(dati.st_mode))
        return {EsitoScrittura::NonRegolare, {}, 0, {}};
    const QByteArray vecchi = file.readAll();
    QTemporaryFile copia(QDir::tempPath() + "/velloro-XXXXXX.html"_L1);
    if (!nuovo && (!copia.open() || copia.write(vecchi) != vecchi.size() || !copia.flush()))
        return DaErrore(errno);
    if (Prenota(file, byte.size()) && Riscrivi(file, byte))
        return {};
    RisultatoScrittura risultato = DaErrore(errno);
    if (nuovo) {
        unlink(destinazione.constData());
    } else if (!Riscrivi(file, vecchi)) {
        copia.setAutoRemove(false);
        risultato.copiaVecchia = copia.fileName();
    }
    return risultato;
}

} // namespace

RisultatoScrittura ScriviByte(QByteArrayView byte, const QString &percorso, const std::function<bool()> &ancora)
{
    const bool nessuno = percorso.isEmpty() || percorso.contains(QChar(u'\0'));
    const auto destinazione = nessuno ? std::nullopt : Destinazione(NomiFile::PerOspite(percorso));
    if (!destinazione)
        return DaErrore(nessuno ? ENOENT : ELOOP);
    if (const auto impedimento = Impedimento(*destinazione))
        return *impedimento;
    bool daSovrascrivere = false;
    RisultatoScrittura risultato = Sostituisci(byte, *destinazione, ancora, daSovrascrivere);
    if (!daSovrascrivere)
        return risultato;
    return !ancora || ancora() ? Sovrascrivi(byte, *destinazione)
                               : RisultatoScrittura{EsitoScrittura::Cambiato, {}, 0, {}};
}

RisultatoScrittura ScriviTesto(QStringView testo, const QString &percorso, FormatoPagina &formato,
                               const std::function<bool()> &ancora)
{
    if (testo.isEmpty())
        return {EsitoScrittura::NienteDaScrivere, {}, 0, {}};
    FormatoPagina nuovo = formato;
    qsizetype sostituiti = 0;
    const QByteArray byte = Codifiche::ByteDaTesto(testo, nuovo, &sostituiti);
    RisultatoScrittura risultato = ScriviByte(byte, percorso, ancora);
    if (risultato) {
        formato = nuovo;
        risultato.sostituiti = sostituiti;
        risultato.impronta = Impronta(byte);
        risultato.byte = byte.size();
    }
    return risultato;
}

} // namespace ModuloPrincipale
