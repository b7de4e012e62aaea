#include "MotoreWebEngine.h"

#include "Intercettatore.h"
#include "PaginaWeb.h"
#include "SchemaPagina.h"

#include <QChildEvent>
#include <QWebEngineDownloadRequest>
#include <QWebEngineNotification>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

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
    m_schema = new SchemaPagina(m_profilo);
    m_profilo->setUrlRequestInterceptor(new Intercettatore(m_ospite, *m_schema, m_profilo));
    m_profilo->installUrlSchemeHandler(SchemaPagina::Nome(), m_schema);
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
    impostazioni->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

void MotoreWebEngine::CreaPagina()
{
    PaginaWeb *vecchia = m_pagina;
    m_pagina = new PaginaWeb(m_profilo, this);
    connect(m_pagina, &QWebEnginePage::loadFinished, this, [this] { m_ospite.NavigazioneFinita(); });
    connect(m_pagina, &QWebEnginePage::renderProcessTerminated, this, [this] { m_ospite.DisegnoPerduto(); });
    connect(m_pagina, &QWebEnginePage::titleChanged, this, [this](const QString &titolo) {
        // A page without a title gets its address for one.
        m_ospite.TitoloCambiato(m_pagina->url().toString().endsWith(titolo) ? QString() : titolo);
    });
    connect(m_pagina, &QWebEnginePage::linkHovered, this,
            [this](const QString &indirizzo) { m_ospite.CollegamentoIndicato(SchemaPagina::AFile(QUrl(indirizzo))); });
    connect(m_pagina, &PaginaWeb::CollegamentoScelto, this,
            [this](const QUrl &indirizzo) { m_ospite.CollegamentoScelto(SchemaPagina::AFile(indirizzo)); });
    m_vista->setPage(m_pagina);
    delete vecchia;
    TogliFuoco(m_vista);
}

void MotoreWebEngine::Naviga(const QString &percorso, const QString &posto, const QString &codifica)
{
    if (m_pagina->Irrequieta())
        CreaPagina();
    m_schema->Imposta(percorso, posto);
    m_profilo->settings()->setDefaultTextEncoding(codifica);
    m_pagina->Mostra(SchemaPagina::DaPercorso(posto));
}

void MotoreWebEngine::Ricomincia()
{
    CreaPagina();
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
    switch (evento->type()) {
    case QEvent::Resize:
        if (oggetto == &m_contenitore)
            m_vista->setGeometry(m_contenitore.rect());
        break;
    case QEvent::ChildAdded:
        // Each process that draws a page brings a widget of its own.
        if (oggetto != &m_contenitore)
            TogliFuoco(static_cast<QChildEvent *>(evento)->child());
        break;
    case QEvent::FocusIn:
        // The engine hands the focus to a new process's widget whatever that widget's policy is. Given back at once,
        // between two keys, nothing that is typed goes to the page.
        if (oggetto != &m_contenitore)
            m_ospite.PaginaToccata();
        break;
    case QEvent::MouseButtonRelease:
        m_pagina->AnnotaClic();
        m_ospite.PaginaToccata();
        break;
    default:
        break;
    }
    return QObject::eventFilter(oggetto, evento);
}
