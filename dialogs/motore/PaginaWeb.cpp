#include "PaginaWeb.h"

#include <QAuthenticator>
#include <QWebEngineCertificateError>
#include <QWebEngineClientCertificateSelection>
#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineQuotaRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineScript>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto DurataClic = 1000ms;

/// True for what the engine shows itself; everything else it would hand to the system.
bool Mostrabile(const QString &schema)
{
    static constexpr std::array schemi = {"velloro"_L1, "file"_L1, "http"_L1, "https"_L1,
                                          "data"_L1,    "blob"_L1, "about"_L1};
    return std::any_of(schemi.begin(), schemi.end(), [&](auto s) { return schema == s; });
}

} // namespace

PaginaWeb::PaginaWeb(QWebEngineProfile *profilo, QObject *parent) : QWebEnginePage(profilo, parent)
{
    Rifiuta();
    connect(this, &QWebEnginePage::newWindowRequested, this,
            [this](QWebEngineNewWindowRequest &finestra) { Segui(finestra.requestedUrl()); });
}

void PaginaWeb::Rifiuta()
{
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl &origine, Feature cosa) { setFeaturePermission(origine, cosa, PermissionDeniedByUser); });
    connect(this, &QWebEnginePage::fullScreenRequested, this,
            [](QWebEngineFullScreenRequest richiesta) { richiesta.reject(); });
    connect(this, &QWebEnginePage::quotaRequested, this, [](QWebEngineQuotaRequest richiesta) { richiesta.reject(); });
    connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
            [](QWebEngineRegisterProtocolHandlerRequest richiesta) { richiesta.reject(); });
    connect(this, &QWebEnginePage::fileSystemAccessRequested, this,
            [](QWebEngineFileSystemAccessRequest richiesta) { richiesta.reject(); });
    connect(this, &QWebEnginePage::selectClientCertificate, this,
            [](QWebEngineClientCertificateSelection scelta) { scelta.selectNone(); });
    connect(this, &QWebEnginePage::certificateError, this,
            [](QWebEngineCertificateError errore) { errore.rejectCertificate(); });
    // A view would show a dialog for these; a null authenticator is its "cancelled".
    connect(this, &QWebEnginePage::authenticationRequired, this,
            [](const QUrl &, QAuthenticator *credenziali) { *credenziali = QAuthenticator(); });
    connect(this, &QWebEnginePage::proxyAuthenticationRequired, this,
            [](const QUrl &, QAuthenticator *credenziali, const QString &) { *credenziali = QAuthenticator(); });
}

void PaginaWeb::Mostra(const QUrl &indirizzo, const QUrl &conNome)
{
    m_attesa = true;
    m_indirizzo = indirizzo;
    m_conNome = conNome;
    load(indirizzo);
}

void PaginaWeb::AnnotaClic()
{
    m_clic.setRemainingTime(DurataClic);
}

bool PaginaWeb::acceptNavigationRequest(const QUrl &indirizzo, NavigationType tipo, bool principale)
{
    // The interceptor decides on frames, but never hears of what the engine would hand to the system.
    if (!principale && Mostrabile(indirizzo.scheme()))
        return true;
    if (principale && indirizzo == m_indirizzo && std::exchange(m_attesa, false))
        return true;
    if (tipo == NavigationTypeLinkClicked)
        Segui(indirizzo);
    else if (principale)
        m_irrequieta = true;
    return false;
}

bool PaginaWeb::javaScriptConfirm(const QUrl &, const QString &)
{
    // While the next page waits this is the page's question whether it may be left.
    return m_attesa;
}

void PaginaWeb::Segui(const QUrl &indirizzo)
{
    // A script can click as well, any number of times; one click of the user opens one page.
    if (std::exchange(m_clic, QDeadlineTimer(0)).hasExpired())
        return;
    if (indirizzo.hasFragment() && indirizzo.adjusted(QUrl::RemoveFragment) == m_conNome) {
        // Encoded, it holds neither quotes nor backslashes.
        runJavaScript(u"location.hash = \"%1\""_s.arg(indirizzo.fragment(QUrl::FullyEncoded)),
                      QWebEngineScript::ApplicationWorld);
    } else {
        emit CollegamentoScelto(indirizzo);
    }
}
