#include "Intercettatore.h"

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
    case QWebEngineUrlRequestInfo::ResourceTypeStylesheet:
    case QWebEngineUrlRequestInfo::ResourceTypeScript:
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
    const DecisioneRichiesta decisione = m_ospite.Decidi({richiesta.requestUrl(), TipoDi(richiesta.resourceType())});
    if (decisione.esito == DecisioneRichiesta::Esito::Rifiutata)
        richiesta.block(true);
    else if (decisione.esito == DecisioneRichiesta::Esito::Deviata)
        richiesta.redirect(decisione.destinazione);
}
