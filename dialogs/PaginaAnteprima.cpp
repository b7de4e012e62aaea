#include "dialogs/PaginaAnteprima.h"

#include "app/ModuloDichiarazioni.h"
#include "platform/CodificaPagina.h"
#include "platform/FileProprio.h"

#include <QFile>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

constexpr int MotivoNonFile = 337;

/// The message for the reason of a failure.
int Motivo(int errore)
{
    switch (errore) {
    case EACCES:
    case EPERM:
        return 330;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return 331;
    case ENOENT:
        return 333;
    case EROFS:
        return 334;
    case ENAMETOOLONG:
        return 335;
    default:
        return 336;
    }
}

} // namespace

int PaginaAnteprima::Scrivi(QStringView testo, FormatoPagina &formato)
{
    if (testo.isEmpty())
        return 0;
    // Written over the old one: to give its memory back and ask for it again would double the cost of a key.
    QFile file;
    if (const int errore = FileProprio::Apri(file, ModuloDichiarazioni::Stato().FileAnteprima); errore != 0)
        return errore < 0 ? MotivoNonFile : Motivo(errore);
    const QByteArray byte = Codifiche::ByteDaTesto(testo, formato);
    errno = 0;
    return file.write(byte) == byte.size() && file.resize(byte.size()) ? 0 : Motivo(errno);
}
