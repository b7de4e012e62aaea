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

Intercettatore::Intercettatore(OspiteMotore &ospite, QObject *parent)
    : QWebEngineUrlRequestInterceptor(parent), m_ospite(ospite)
{
}

void Intercettatore::interceptRequest(QWebEngineUrlRequestInfo &richiesta)
{
    const QString origine = richiesta.initiator().scheme();
    if (!m_ospite.Concede({SchemaPagina::AFile(richiesta.requestUrl()), TipoDi(richiesta.resourceType()),
                           origine == u"http" || origine == u"https"}))
        richiesta.block(true);
}
