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
    return qui ? QDir::cleanPath(indirizzo.path(QUrl::FullyDecoded)) : QString();
}

bool SottoCartella(const QString &percorso, const QString &cartella)
{
    const QString prefisso = cartella.endsWith(u'/') ? cartella : cartella + u'/';
    return percorso.startsWith(prefisso);
}

QUrl ConPercorso(QUrl indirizzo, const QString &percorso)
{
    indirizzo.setPath(percorso, QUrl::DecodedMode);
    return indirizzo;
}

} // namespace

QUrl RichiesteAnteprima::AlProprioPosto(const QUrl &indirizzo, const Luoghi &luoghi, const EsisteFile &esiste)
{
    const QString percorso = Percorso(indirizzo);
    const QString temporanea = QDir::cleanPath(QDir::fromNativeSeparators(luoghi.anteprima));
    if (percorso.isEmpty() || percorso == temporanea)
        return indirizzo;
    const QString da = temporanea.left(std::max<qsizetype>(temporanea.lastIndexOf(u'/'), 1));
    const QString a = QDir::cleanPath(QDir::fromNativeSeparators(luoghi.cartella));
    if (!luoghi.cartella.isEmpty() && SottoCartella(percorso, a))
        return indirizzo; // already there, or named with its full path
    if (SottoCartella(percorso, da))
        return luoghi.cartella.isEmpty()
                   ? QUrl()
                   : ConPercorso(indirizzo, a + percorso.mid(da.endsWith(u'/') ? da.size() - 1 : da.size()));
    if (luoghi.cartella.isEmpty())
        return indirizzo;
    // Either an absolute address, or one that went up from the page: "../figure/a.png" has left the temporary folder.
    const QString spostato = QDir::cleanPath(a + u'/' + QDir(da).relativeFilePath(percorso));
    return esiste(spostato) ? ConPercorso(indirizzo, spostato) : indirizzo;
}

DecisioneRichiesta RichiesteAnteprima::Decidi(const RichiestaMotore &richiesta, const Luoghi &luoghi,
                                              const EsisteFile &esiste)
{
    using Tipo = RichiestaMotore::Tipo;
    using Esito = DecisioneRichiesta::Esito;
    const QUrl &indirizzo = richiesta.indirizzo;
    if (!indirizzo.isLocalFile())
        return {Contiene(SchemiRemoti, indirizzo.scheme()) ? Esito::Concessa : Esito::Rifiutata, {}};
    const QString percorso = Percorso(indirizzo);
    if (richiesta.tipo == Tipo::Pagina)
        return {percorso == QDir::cleanPath(QDir::fromNativeSeparators(luoghi.anteprima)) ? Esito::Concessa
                                                                                          : Esito::Rifiutata,
                {}};
    if (percorso.isEmpty() || richiesta.tipo == Tipo::Contenuto)
        return {};
    const QUrl destinazione = AlProprioPosto(indirizzo, luoghi, esiste);
    if (destinazione.isEmpty())
        return {};
    const QString cartella = QDir::cleanPath(QDir::fromNativeSeparators(luoghi.cartella));
    if (richiesta.tipo == Tipo::Cornice &&
        (luoghi.cartella.isEmpty() || !SottoCartella(Percorso(destinazione), cartella)))
        return {};
    if (destinazione == indirizzo)
        return {Esito::Concessa, {}};
    return {Esito::Deviata, destinazione};
}

bool RichiesteAnteprima::Apribile(const QUrl &indirizzo)
{
    if (!indirizzo.isLocalFile())
        return Contiene(SchemiApribili, indirizzo.scheme());
    return Contiene(FileApribili, QFileInfo(Percorso(indirizzo)).suffix().toLower());
}
