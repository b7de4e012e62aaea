#include "dialogs/RichiesteAnteprima.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array SchemiRemoti = {"http"_L1, "https"_L1, "ws"_L1, "wss"_L1};
constexpr std::array SchemiInterni = {"data"_L1, "blob"_L1, "about"_L1};
constexpr std::array SchemiApribili = {"http"_L1, "https"_L1, "ftp"_L1, "mailto"_L1, "tel"_L1};
constexpr std::array FileApribili = {"html"_L1, "htm"_L1, "xhtml"_L1, "asp"_L1, "txt"_L1,  "pdf"_L1, "gif"_L1,
                                     "png"_L1,  "jpg"_L1, "jpeg"_L1,  "svg"_L1, "webp"_L1, "css"_L1, "xml"_L1};
constexpr std::array FigureEMedia = {"png"_L1, "jpg"_L1,  "jpeg"_L1, "jpe"_L1,  "jfif"_L1, "gif"_L1, "webp"_L1,
                                     "bmp"_L1, "ico"_L1,  "svg"_L1,  "avif"_L1, "mp4"_L1,  "m4v"_L1, "webm"_L1,
                                     "ogv"_L1, "ogg"_L1,  "oga"_L1,  "mp3"_L1,  "wav"_L1,  "m4a"_L1, "flac"_L1,
                                     "aac"_L1, "opus"_L1, "mov"_L1,  "vtt"_L1,  "cur"_L1,  "apng"_L1};
constexpr std::array Caratteri = {"woff2"_L1, "woff"_L1, "ttf"_L1, "otf"_L1, "ttc"_L1};

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

/// True when the way to \a vero enters something whose name begins with a dot and in which the folder \a cartella does
/// not lie: settings, histories and keys are there.
bool Nascosto(const QString &vero, const QString &cartella)
{
    for (qsizetype i = vero.indexOf(u"/."); i >= 0; i = vero.indexOf(u"/.", i + 1)) {
        const qsizetype fine = vero.indexOf(u'/', i + 1);
        if (fine < 0 || !cartella.startsWith(QStringView(vero).left(fine + 1)))
            return true;
    }
    return false;
}

/// True when the name of \a vero says that the file is what it is asked for as. Scripts have to say so wherever they
/// are: run as a script, other files can tell what is in them. So have fonts, whose bytes the page gets.
bool DiceDiEssere(const QString &vero, RichiestaMotore::Tipo tipo)
{
    using Tipo = RichiestaMotore::Tipo;
    const QString estensione = QFileInfo(vero).suffix().toLower();
    switch (tipo) {
    case Tipo::Risorsa:
        return Contiene(FigureEMedia, estensione);
    case Tipo::Stile:
        return estensione == u"css";
    case Tipo::Carattere:
        return Contiene(Caratteri, estensione);
    case Tipo::Script:
        return estensione == u"js" || estensione == u"mjs";
    default:
        return false;
    }
}

/// The rules for a file that lies at \a vero, where no link leads anywhere else, and a page in the folder \a cartella,
/// which ends with "/".
bool Concesso(const QString &vero, RichiestaMotore::Tipo tipo, const QString &cartella)
{
    using Tipo = RichiestaMotore::Tipo;
    if (Nascosto(vero, cartella))
        return false;
    // The place of a page without a file is the root, which is nobody's own folder.
    const bool sua = cartella.size() > 1 && vero.startsWith(cartella);
    switch (tipo) {
    case Tipo::Cornice:
        return sua;
    case Tipo::Script:
        return sua && DiceDiEssere(vero, tipo);
    case Tipo::Risorsa:
    case Tipo::Stile:
        return sua || DiceDiEssere(vero, tipo);
    case Tipo::Carattere:
        return DiceDiEssere(vero, tipo);
    case Tipo::Pagina:
    case Tipo::Contenuto:
        break;
    }
    return false;
}

} // namespace

QString RichiesteAnteprima::Posto(const QString &corrente)
{
    return corrente.isEmpty() ? QDir::rootPath() + u"test.html"_s : QFileInfo(corrente).absoluteFilePath();
}

bool RichiesteAnteprima::Concede(const RichiestaMotore &richiesta, const QString &posto, bool rete)
{
    if (!richiesta.indirizzo.isLocalFile()) {
        const QString schema = richiesta.indirizzo.scheme();
        return richiesta.tipo != RichiestaMotore::Tipo::Pagina &&
               (Contiene(SchemiInterni, schema) || (rete && Contiene(SchemiRemoti, schema)));
    }
    const QString percorso = Percorso(richiesta.indirizzo);
    if (percorso.isEmpty() || richiesta.daRemoto)
        return false;
    if (richiesta.tipo == RichiestaMotore::Tipo::Pagina)
        return percorso == posto;
    // What is not there is refused like what is forbidden, so that a page cannot tell one from the other.
    const QFileInfo file(QFileInfo(percorso).canonicalFilePath());
    const QString cartella = QFileInfo(QFileInfo(posto).path()).canonicalFilePath();
    return file.isFile() && file.isReadable() &&
           Concesso(file.filePath(), richiesta.tipo, cartella.endsWith(u'/') ? cartella : cartella + u'/');
}

bool RichiesteAnteprima::Apribile(const QUrl &indirizzo)
{
    if (!indirizzo.isLocalFile())
        return Contiene(SchemiApribili, indirizzo.scheme());
    return Contiene(FileApribili, QFileInfo(Percorso(indirizzo)).suffix().toLower());
}
