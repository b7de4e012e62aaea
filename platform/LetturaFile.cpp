#include "platform/LetturaFile.h"

#include "platform/NomiFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ModuloPrincipale
{
namespace
{

RisultatoLettura Giudica(const struct stat &dati, qint64 massimo)
{
    if (S_ISDIR(dati.st_mode))
        return {EsitoLettura::Cartella, {}};
    if (!S_ISREG(dati.st_mode))
        return {EsitoLettura::NonRegolare, {}};
    if (dati.st_size > massimo)
        return {EsitoLettura::TroppoGrande, {}};
    return {};
}

RisultatoLettura DaErrore()
{
    const int errore = errno;
    const bool manca = errore == ENOENT || errore == ENOTDIR;
    return {manca ? EsitoLettura::Inesistente : EsitoLettura::NonLeggibile,
            manca ? QString() : qt_error_string(errore)};
}

} // namespace

RisultatoLettura ApriInLettura(const QString &percorso, QFile &file, qint64 massimo)
{
    if (percorso.isEmpty() || percorso.contains(QChar(u'\0')))
        return {EsitoLettura::Inesistente, {}};
    const QByteArray nome = NomiFile::PerOspite(percorso);
    struct stat dati = {};
    if (stat(nome.constData(), &dati) != 0)
        return DaErrore();
    // Opening a device may do anything, so the look comes first; what was opened in the end is judged again.
    RisultatoLettura risultato = Giudica(dati, massimo);
    if (!risultato)
        return risultato;
    const int aperto = open(nome.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (aperto < 0)
        return DaErrore();
    risultato = fstat(aperto, &dati) == 0 ? Giudica(dati, massimo) : DaErrore();
    if (!risultato || !file.open(aperto, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        close(aperto);
    return risultato;
}

RisultatoLettura LeggiByte(const QString &percorso, QByteArray &byte, qint64 massimo)
{
    byte.clear();
    QFile file;
    RisultatoLettura risultato = ApriInLettura(percorso, file, massimo);
    return risultato ? LeggiTutto(file, byte, massimo) : risultato;
}

RisultatoLettura LeggiTutto(const QFile &file, QByteArray &byte, qint64 massimo)
{
    RisultatoLettura risultato;
    constexpr qint64 Passo = 65'536; // what is asked for of a file that says it is empty, as those of the system do
    qint64 letti = 0;
    while (true) {
        byte.resize(std::max(letti + Passo, std::min(file.size() + 1, massimo + 1)));
        const ssize_t quanti = read(file.handle(), byte.data() + letti, size_t(byte.size() - letti));
        if (quanti < 0 && errno == EINTR)
            continue;
        if (quanti < 0)
            risultato = errno == EAGAIN ? RisultatoLettura{EsitoLettura::NonRegolare, {}}
                                        : RisultatoLettura{EsitoLettura::NonLeggibile, qt_error_string(errno)};
        letti += std::max<ssize_t>(quanti, 0);
        if (letti > massimo)
            risultato = {EsitoLettura::TroppoGrande, {}};
        if (quanti <= 0 || !risultato)
            break;
    }
    byte.truncate(risultato || risultato.esito == EsitoLettura::NonLeggibile ? letti : 0);
    return risultato;
}

} // namespace ModuloPrincipale
