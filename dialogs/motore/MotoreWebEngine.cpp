#include "MotoreWebEngine.h"

#include "Intercettatore.h"
#include "PaginaWeb.h"
#include "SchemaPagina.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QNetworkProxy>
#include <QWebEngineDownloadRequest>
#include <QWebEngineNotification>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto Ferma = 100ms;

/// Takes away from pages and frames what sends datagrams.
QWebEngineScript SenzaChiamate()
{
    QWebEngineScript programma;
    programma.setName(u"senza chiamate"_s);
    programma.setInjectionPoint(QWebEngineScript::DocumentCreation);
    programma.setWorldId(QWebEngineScript::MainWorld);
    programma.setRunsOnSubFrames(true);
    programma.setSourceCode(u"delete self.RTCPeerConnection; delete self.webkitRTCPeerConnection;"_s);
    return programma;
}

} // namespace

MotoreWebEngine::MotoreWebEngine(OspiteMotore &ospite, QWidget &contenitore)
    : m_ospite(ospite), m_contenitore(contenitore), m_vista(new QWebEngineView(&contenitore))
{
    CreaProfilo();
    m_vista->setObjectName(u"VistaBrowser"_s);
    m_vista->setContextMenuPolicy(Qt::NoContextMenu);
    m_vista->setAcceptDrops(false);
    m_vista->setFocusPolicy(Qt::NoFocus);
    m_vista->installEventFilter(this);
    CreaPagina();
    m_vista->setGeometry(contenitore.rect());
    contenitore.installEventFilter(this);
    m_ferma.setSingleShot(true);
    connect(&m_ferma, &QTimer::timeout, this, [this] { m_ripresa.Ancora(*m_pagina); });
    connect(&m_guardia, &GuardiaMemoria::Superata, this, [this] { m_ospite.MemoriaSuperata(); });
    m_vista->show();
}

MotoreWebEngine::~MotoreWebEngine()
{
    // The page goes before its profile.
    delete m_vista;
    delete m_pagina;
}

void MotoreWebEngine::CreaProfilo()
{
    m_profilo = new QWebEngineProfile(this); // without a name: off the record
    m_profilo->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
    m_profilo->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    m_schema = new SchemaPagina(m_ospite, m_profilo);
    m_profilo->setUrlRequestInterceptor(new Intercettatore(m_ospite, *m_schema, m_profilo));
    m_profilo->installUrlSchemeHandler(IndirizziPagina::Schema(), m_schema);
    m_profilo->setNotificationPresenter([](auto) {});
    connect(m_profilo, &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadRequest *scaricamento) { scaricamento->cancel(); });

    QWebEngineSettings *impostazioni = m_profilo->settings();
    for (const auto acceso :
         {QWebEngineSettings::PlaybackRequiresUserGesture, QWebEngineSettings::PrintElementBackgrounds})
        impostazioni->setAttribute(acceso, true);
    for (const auto spento :
         {QWebEngineSettings::LocalContentCanAccessFileUrls, QWebEngineSettings::LocalContentCanAccessRemoteUrls,
          QWebEngineSettings::FocusOnNavigationEnabled, QWebEngineSettings::AllowWindowActivationFromJavaScript,
          QWebEngineSettings::JavascriptCanAccessClipboard, QWebEngineSettings::JavascriptCanPaste,
          QWebEngineSettings::LocalStorageEnabled, QWebEngineSettings::PluginsEnabled,
          QWebEngineSettings::PdfViewerEnabled, QWebEngineSettings::NavigateOnDropEnabled,
          QWebEngineSettings::HyperlinkAuditingEnabled, QWebEngineSettings::DnsPrefetchEnabled,
          QWebEngineSettings::ScreenCaptureEnabled, QWebEngineSettings::FullScreenSupportEnabled,
          QWebEngineSettings::AllowGeolocationOnInsecureOrigins, QWebEngineSettings::ErrorPageEnabled,
          QWebEngineSettings::AutoLoadIconsForPage})
        impostazioni->setAttribute(spento, false);
    impostazioni->setUnknownUrlSchemePolicy(QWebEngineSettings::AllowUnknownUrlSchemesFromUserInteraction);
}

void MotoreWebEngine::CreaPagina()
{
    PaginaWeb *vecchia = m_pagina;
    if (vecchia)
        m_ripresa.Annota(vecchia->scrollPosition());
    m_pagina = new PaginaWeb(m_profilo, this);
    CollegaPagina();
    m_vista->setPage(m_pagina);
    delete vecchia;
    TogliFuoco(m_vista);
}

void MotoreWebEngine::CollegaPagina()
{
    connect(m_pagina, &QWebEnginePage::scrollPositionChanged, this, [this](const QPointF &posto) {
        m_scorsa = posto;
        m_ferma.start(Ferma);
    });
    connect(m_pagina, &QWebEnginePage::loadFinished, this, [this] {
        m_ripresa.Concludi(*m_pagina);
        m_ferma.start(Ferma);
        m_ospite.NavigazioneFinita();
    });
    connect(m_pagina, &QWebEnginePage::renderProcessTerminated, this, [this] {
        m_ripresa.Annota(m_scorsa); // the page itself does not know it any more
        m_ospite.DisegnoPerduto();
    });
    connect(m_pagina, &QWebEnginePage::titleChanged, this, [this](const QString &titolo) {
        // A page without a title gets its address for one.
        const auto pagina = [](const QUrl &indirizzo) { return indirizzo.adjusted(QUrl::RemoveFragment); };
        m_ospite.TitoloCambiato(pagina(QUrl(titolo)) == pagina(m_pagina->url()) ? QString() : titolo);
    });
    connect(m_pagina, &QWebEnginePage::linkHovered, this, [this](const QString &indirizzo) {
        m_ospite.CollegamentoIndicato(m_schema->Indirizzi().AFile(QUrl(indirizzo)));
    });
    connect(m_pagina, &PaginaWeb::CollegamentoScelto, this,
            [this](const QUrl &indirizzo) { m_ospite.CollegamentoScelto(m_schema->Indirizzi().AFile(indirizzo)); });
}

void MotoreWebEngine::Naviga(const QString &percorso, const QString &posto, const QString &codifica)
{
    m_ripresa.Annota(m_pagina->scrollPosition());
    if (std::exchange(m_posto, posto) != posto)
        m_ripresa.Dimentica();
    if (m_pagina->Irrequieta())
        CreaPagina();
    m_schema->Imposta(percorso, posto);
    m_profilo->settings()->setDefaultTextEncoding(codifica);
    m_ripresa.Prepara(*m_pagina);
    m_guardia.Riparti();
    m_pagina->Mostra(m_schema->Indirizzi().Pagina(), m_schema->Indirizzi().PaginaConNome());
}

void MotoreWebEngine::Ricomincia()
{
    CreaPagina();
}

void MotoreWebEngine::Permetti(const PermessiAnteprima &permessi)
{
    m_profilo->settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, permessi.script);
    // The requests of pages are judged one by one, but nobody asks about the datagrams of calls.
    QWebEngineScriptCollection &programmi = *m_profilo->scripts();
    programmi.clear();
    if (!permessi.rete)
        programmi.insert(SenzaChiamate());
    // This holds back what the engine does before it asks (connections
    // made ahead).
    QNetworkProxy::setApplicationProxy(permessi.rete ? QNetworkProxy(QNetworkProxy::DefaultProxy)
                                                     : QNetworkProxy(QNetworkProxy::Socks5Proxy, u"127.0.0.1"_s, 9));
}

void MotoreWebEngine::Interroga(std::function<void()> risposta)
{
    m_pagina->runJavaScript(u"0"_s, QWebEngineScript::ApplicationWorld,
                            [risposta = std::move(risposta)](const QVariant &) { risposta(); });
}

void MotoreWebEngine::TogliFuoco(QObject *oggetto)
{
    auto *elemento = qobject_cast<QWidget *>(oggetto);
    if (!elemento)
        return;
    elemento->setFocusPolicy(Qt::NoFocus);
    elemento->removeEventFilter(this);
    elemento->installEventFilter(this);
    for (QObject *figlio : elemento->children())
        TogliFuoco(figlio);
}

bool MotoreWebEngine::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == &m_contenitore) {
        if (evento->type() == QEvent::Resize)
            m_vista->setGeometry(m_contenitore.rect());
        return QObject::eventFilter(oggetto, evento);
    }
    switch (evento->type()) {
    case QEvent::ChildAdded:
        // Each process that draws a page brings a widget of its own.
        TogliFuoco(static_cast<QChildEvent *>(evento)->child());
        break;
    case QEvent::FocusIn:
        // The engine hands the focus to a new process's widget whatever that widget's policy is. Given back at once,
        // between two keys, nothing that is typed goes to the page.
        m_ospite.PaginaToccata();
        break;
    case QEvent::Wheel:
    case QEvent::MouseButtonPress:
        m_ripresa.LasciaStare();
        break;
    case QEvent::MouseButtonRelease:
        m_pagina->AnnotaClic();
        m_ospite.PaginaToccata();
        break;
    case QEvent::ContextMenu:
        m_ospite.MenuChiesto(static_cast<QContextMenuEvent *>(evento)->globalPos());
        return true;
    default:
        break;
    }
    return QObject::eventFilter(oggetto, evento);
}
