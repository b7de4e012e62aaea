#include "Intercettatore.h"

#include "SchemaPagina.h"

#include "dialogs/MotoreAnteprima.h"

namespace
{

RichiestaMotore::Tipo TipoDi(QWebEngineUrlRequestInfo::ResourceType tipo)
{
    switch (tipo) {
    case QWebEngineUrlRequestInfo::ResourceTypeMainFrame:
        return RichiestaMotore::Tipo::Pagina;
    case QWebEngineUrlRequestInfo::ResourceTypeSubFrame:
    case QWebEngineUrlRequestInfo::ResourceTypeObject:
        return RichiestaMotore::Tipo::Cornice;
    case QWebEngineUrlRequestInfo::ResourceTypeScript:
        return RichiestaMotore::Tipo::Script;
    case QWebEngineUrlRequestInfo::ResourceTypeStylesheet:
        return RichiestaMotore::Tipo::Stile;
    case QWebEngineUrlRequestInfo::ResourceTypeFontResource:
        return RichiestaMotore::Tipo::Carattere;
    case QWebEngineUrlRequestInfo::ResourceTypeImage:
    case QWebEngineUrlRequestInfo::ResourceTypeMedia:
    case QWebEngineUrlRequestInfo::ResourceTypeFavicon:
        return RichiestaMotore::Tipo::Risorsa;
    default:
        return RichiestaMotore::Tipo::Contenuto;
    }
}

} // namespace

Intercettatore::Intercettatore(OspiteMotore &ospite, SchemaPagina &schema, QObject *parent)
    : QWebEngineUrlRequestInterceptor(parent), m_ospite(ospite), m_schema(schema)
{
}

void Intercettatore::interceptRequest(QWebEngineUrlRequestInfo &richiesta)
{
    using Tipo = RichiestaMotore::Tipo;
    const Tipo tipo = TipoDi(richiesta.resourceType());
    const QUrl indirizzo = richiesta.requestUrl();
    const bool documento = tipo == Tipo::Cornice || tipo == Tipo::Pagina;
    const auto schema = QLatin1StringView(IndirizziPagina::Schema());
    // A frame from the web, and whatever hides its origin, has nothing to do with local files.
    const bool daRemoto = tipo != Tipo::Pagina && richiesta.initiator().scheme() != schema;
    if (!m_ospite.Concede({m_schema.Indirizzi().AFile(indirizzo), tipo, daRemoto})) {
        richiesta.block(true);
        return;
    }
    const QUrl sua = m_schema.Indirizzi().OrigineSua(indirizzo);
    const bool altrove = tipo == Tipo::Pagina ? false
                         : documento          ? !sua.isEmpty()
                                              : indirizzo.isLocalFile() && !m_schema.Lascia(indirizzo);
    if (altrove)
        richiesta.redirect(sua);
    else if (indirizzo.scheme() == schema)
        richiesta.setHttpHeader(SchemaPagina::Intestazione(), QByteArray::number(int(tipo)));
}
