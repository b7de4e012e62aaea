#include "platform/FileProprio.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int Modo = O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
constexpr mode_t SoloUtente = 0600;

/// True when what is open there has another name too, which somebody may care for.
bool HaAltroNome(const struct stat &stato)
{
    return S_ISREG(stato.st_mode) && stato.st_nlink > 1;
}

} // namespace

int FileProprio::Apri(QFile &file, const QString &percorso)
{
    const QByteArray nome = QFile::encodeName(percorso);
    struct stat stato {
    };
    int descrittore = ::open(nome.constData(), Modo, SoloUtente);
    const bool legame = descrittore < 0 ? errno == ELOOP : ::fstat(descrittore, &stato) == 0 && HaAltroNome(stato);
    if (legame) {
        if (descrittore >= 0)
            ::close(descrittore);
        if (::unlink(nome.constData()) != 0)
            return errno;
        descrittore = ::open(nome.constData(), Modo | O_EXCL, SoloUtente);
    }
    if (descrittore < 0)
        return errno == EISDIR ? -1 : errno;
    if (::fstat(descrittore, &stato) != 0 || !S_ISREG(stato.st_mode)) {
        ::close(descrittore);
        return -1;
    }
    return file.open(descrittore, QIODevice::ReadWrite | QIODevice::Unbuffered, QFile::AutoCloseHandle) ? 0 : EIO;
}
