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
    case QWebEngineUrlRequestInfo::ResourceTypeImage:
    case QWebEngineUrlRequestInfo::ResourceTypeFontResource:
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
    const QString origine = richiesta.initiator().scheme();
    const RichiestaMotore::Tipo tipo = TipoDi(richiesta.resourceType());
    const QUrl indirizzo = richiesta.requestUrl();
    const bool pagina = tipo == RichiestaMotore::Tipo::Cornice || tipo == RichiestaMotore::Tipo::Pagina;
    const bool concessa =
        m_ospite.Concede({SchemaPagina::AFile(indirizzo), tipo, origine == u"http" || origine == u"https"});
    const QUrl sua = SchemaPagina::OrigineSua(indirizzo);
    if (!concessa)
        richiesta.block(true);
    else if ((pagina && !sua.isEmpty()) || (!pagina && indirizzo.isLocalFile() && !m_schema.Lascia(indirizzo)))
        richiesta.redirect(sua);
}
