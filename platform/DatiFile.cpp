#include "platform/DatiFile.h"

#include "platform/NomiFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

qint64 Nanosecondi(const timespec &tempo)
{
    return qint64(tempo.tv_sec) * 1'000'000'000 + tempo.tv_nsec;
}

} // namespace

DatiFile DatiFile::Di(const QString &percorso)
{
    DatiFile dati;
    const QByteArray nome = NomiFile::PerOspite(percorso);
    struct stat trovati = {};
    if (percorso.isEmpty() || stat(nome.constData(), &trovati) != 0)
        return dati;
    dati.leggibile = faccessat(AT_FDCWD, nome.constData(), R_OK, AT_EACCESS) == 0;
    dati.regolare = S_ISREG(trovati.st_mode);
    dati.protetto = Protetto(nome, trovati.st_mode);
    dati.dimensione = trovati.st_size;
    dati.modificata = Nanosecondi(trovati.st_mtim);
    dati.cambiata = Nanosecondi(trovati.st_ctim);
    dati.nodo = trovati.st_ino;
    dati.dispositivo = trovati.st_dev;
    return dati;
}

bool DatiFile::Protetto(const QByteArray &percorso, quint32 modo)
{
    // The administrator may write everything; a file that nobody may write is meant to stay as it is all the same.
    return (modo & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 ||
           faccessat(AT_FDCWD, percorso.constData(), W_OK, AT_EACCESS) != 0;
}
