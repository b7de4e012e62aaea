#include "dialogs/RichiesteAnteprima.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array SchemiRemoti = {"http"_L1, "https"_L1, "ws"_L1, "wss"_L1, "data"_L1, "blob"_L1, "about"_L1};
constexpr std::array SchemiApribili = {"http"_L1, "https"_L1, "ftp"_L1, "mailto"_L1, "tel"_L1};
constexpr std::array FileApribili = {"html"_L1, "htm"_L1, "xhtml"_L1, "asp"_L1, "txt"_L1,  "pdf"_L1, "gif"_L1,
                                     "png"_L1,  "jpg"_L1, "jpeg"_L1,  "svg"_L1, "webp"_L1, "css"_L1, "xml"_L1};

template <typename Elenco>
bool Contiene(const Elenco &elenco, const QString &voce)
{
    return std::any_of(elenco.begin(), elenco.end(), [&](QLatin1StringView v) { return voce == v; });
}

/// The path of a file on this machine; empty for a file of another one.
QString Percorso(const QUrl &indirizzo)
{
    const bool qui = indirizzo.host().isEmpty() || indirizzo.host() == u"localhost";
    return qui ? QDir::cleanPath(indirizzo.toLocalFile()) : QString();
}

/// The place of a page without a file is the root, which is nobody's own folder.
bool SenzaCartella(const QString &posto)
{
    return QFileInfo(posto).path() == QDir::rootPath();
}

bool NellaCartellaDi(const QString &percorso, const QString &posto)
{
    return percorso.startsWith(posto.left(posto.lastIndexOf(u'/') + 1));
}

/// True when the way to \a percorso enters a folder whose name begins with a dot and in which the page does not lie:
/// settings, histories and keys are there.
bool Nascosto(const QString &percorso, const QString &posto)
{
    for (qsizetype i = percorso.indexOf(u"/."); i >= 0; i = percorso.indexOf(u"/.", i + 1)) {
        const qsizetype fine = percorso.indexOf(u'/', i + 1);
        if (fine < 0 || !posto.startsWith(QStringView(percorso).left(fine + 1)))
            return true;
    }
    return false;
}

/// A script is given only when it says that it is one: run as a script, other files can tell what is in them.
bool DettoScript(const QString &percorso)
{
    const QString estensione = QFileInfo(percorso).suffix().toLower();
    return estensione == u"js" || estensione == u"mjs";
}

} // namespace

QString RichiesteAnteprima::Posto(const QString &corrente)
{
    return corrente.isEmpty() ? QDir::rootPath() + u"test.html"_s : QFileInfo(corrente).absoluteFilePath();
}

bool RichiesteAnteprima::Concede(const RichiestaMotore &richiesta, const QString &posto)
{
    using Tipo = RichiestaMotore::Tipo;
    if (!richiesta.indirizzo.isLocalFile())
        return richiesta.tipo != Tipo::Pagina && Contiene(SchemiRemoti, richiesta.indirizzo.scheme());
    const QString percorso = Percorso(richiesta.indirizzo);
    if (percorso.isEmpty() || richiesta.daRemoto)
        return false;
    const bool sua = !SenzaCartella(posto) && NellaCartellaDi(percorso, posto);
    switch (richiesta.tipo) {
    case Tipo::Pagina:
        return percorso == posto;
    case Tipo::Cornice:
        return sua;
    case Tipo::Risorsa:
        return sua || !Nascosto(percorso, posto);
    case Tipo::Script:
        return DettoScript(percorso) && (sua || !Nascosto(percorso, posto));
    case Tipo::Contenuto:
        break;
    }
    return false;
}

bool RichiesteAnteprima::Apribile(const QUrl &indirizzo)
{
    if (!indirizzo.isLocalFile())
        return Contiene(SchemiApribili, indirizzo.scheme());
    return Contiene(FileApribili, QFileInfo(Percorso(indirizzo)).suffix().toLower());
}
