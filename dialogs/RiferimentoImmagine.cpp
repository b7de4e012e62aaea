#include "dialogs/RiferimentoImmagine.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;
using File_System::Stile;

namespace
{

/// One way of writing for every path: "/" between names, no "." or "..".
QString Pulito(QString percorso, Stile stile)
{
    if (stile == Stile::Windows)
        percorso.replace(u'\\', u'/');
    return QDir::cleanPath(percorso);
}

} // namespace

QString RiferimentoImmagine::Relativo(const QString &scelto, const QString &filePagina, Stile stile)
{
    const QString immagine = Pulito(scelto, stile);
    const QString pagina = Pulito(filePagina, stile);
    const qsizetype fine = pagina.lastIndexOf(u'/');
    const QString cartella = pagina.first(fine + 1);
    const Qt::CaseSensitivity lettere = stile == Stile::Windows ? Qt::CaseInsensitive : Qt::CaseSensitive;
    if (fine < 0 || immagine.size() <= cartella.size() || !immagine.startsWith(cartella, lettere))
        return {};
    return QString::fromLatin1(QUrl::toPercentEncoding(immagine.sliced(cartella.size()), "/"));
}

QString RiferimentoImmagine::Intero(const QString &scritto, const QString &filePagina)
{
    if (scritto.isEmpty() || filePagina.isEmpty() || QDir::isAbsolutePath(scritto))
        return scritto;
    return QFileInfo(filePagina).absoluteDir().filePath(scritto);
}
