#include "dialogs/RiferimentoImmagine.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

#include <algorithm>

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
    const QStringList immagine = Pulito(scelto, stile).split(u'/');
    const QStringList pagina = Pulito(filePagina, stile).split(u'/');
    const Qt::CaseSensitivity lettere = stile == Stile::Windows ? Qt::CaseInsensitive : Qt::CaseSensitive;
    // What both begin with: the root or the drive at least, or no relative way leads from one to the other.
    const qsizetype cartelle = std::min(immagine.size(), pagina.size()) - 1;
    qsizetype comuni = 0;
    while (comuni < cartelle && immagine.at(comuni).compare(pagina.at(comuni), lettere) == 0)
        ++comuni;
    if (comuni == 0 || immagine.constLast().isEmpty())
        return {};
    const QString discesa = QStringList(immagine.sliced(comuni)).join(u'/');
    return u"../"_s.repeated(pagina.size() - 1 - comuni) + QString::fromLatin1(QUrl::toPercentEncoding(discesa, "/"));
}

QString RiferimentoImmagine::Intero(const QString &scritto, const QString &filePagina)
{
    if (scritto.isEmpty() || filePagina.isEmpty() || QDir::isAbsolutePath(scritto))
        return scritto;
    return QFileInfo(filePagina).absoluteDir().filePath(scritto);
}
