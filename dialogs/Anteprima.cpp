#include "dialogs/Anteprima.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/FrmAnteprima.h"
#include "dialogs/ImpostazioniAnteprima.h"
#include "dialogs/PaginaAnteprima.h"
#include "dialogs/RichiesteAnteprima.h"
#include "html/TestoRiscontro.h"
#include "platform/RichTextBox.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QMenu>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr qint64 MinimoMostrato = 50;    // bytes
constexpr auto Ripresa = 10ms;           // until the engine's turn is looked for again
constexpr auto Limite = 1000ms;          // after that, a navigation is looked after
constexpr auto Pazienza = 2000ms;        // how long a page may keep silent,
constexpr auto PazienzaPerMega = 1500ms; // more for large ones, whose layout is one long step

constexpr qint16 TestoScript = 435;
constexpr qint16 TestoRete = 436;
constexpr qint16 TestoNonTenuto = 437;
constexpr qint16 TestoMemoria = 438;

QString Posto()
{
    return RichiesteAnteprima::Posto(ModuloDichiarazioni::PostoPagina());
}

} // namespace

Anteprima::Anteprima(FrmAnteprima &finestra, Formato formato, Caricatore caricatore, QObject *parent)
    : QObject(parent), m_finestra(finestra), m_formato(std::move(formato)), m_caricatore(std::move(caricatore))
{
    m_partenza.setSingleShot(true);
    m_limite.setSingleShot(true);
    m_silenzio.setSingleShot(true);
    // Not at once: an opened page becomes the current file right after its first refresh.
    connect(&m_partenza, &QTimer::timeout, this,
            [this] { m_motore->Naviga(Stato().FileAnteprima, Posto(), m_codifica); });
    connect(&m_limite, &QTimer::timeout, this, &Anteprima::Interroga);
    connect(&m_silenzio, &QTimer::timeout, this, [this] { Esegui(m_ciclo.Muta()); });
    connect(&m_finestra, &FrmAnteprima::Pronta, this, &Anteprima::CaricaMotore);
}

Anteprima::~Anteprima() = default;

void Anteprima::AggiornaAnteprima(const RichTextBox *controllo, bool nascondi)
{
    if (!Scrivi(*controllo))
        return;
    const QFileInfo file(Stato().FileAnteprima);
    if (!file.exists())
        return;
    if (nascondi) {
        m_finestra.Browser()->hide();
        return;
    }
    if (file.size() < MinimoMostrato)
        return;
    m_finestra.Browser()->show();
    Esegui(m_ciclo.Richiesta());
    emit FuocoAllaPagina();
}

bool Anteprima::Scrivi(const RichTextBox &controllo)
{
    const QString testo = controllo.Text();
    FormatoPagina formato = m_formato();
    const int motivo = PaginaAnteprima::Scrivi(testo, formato);
    if (motivo == 0 && !testo.isEmpty())
        m_codifica = formato.codifica;
    // Told once, not with every key, and until the page is written again.
    if (motivo != 0 && !m_scritturaFallita)
        emit Guasto(Messaggio(210).arg(Messaggio(motivo)));
    else if (motivo == 0 && m_scritturaFallita)
        emit Guasto({});
    m_scritturaFallita = motivo != 0;
    return !m_scritturaFallita;
}

// --- Engine ---------------------------------------------------------------------------------------------------------

void Anteprima::CaricaMotore()
{
    // A page that is being opened comes first: the engine takes longer to load than the page.
    if (Stato().ControlloInCorso) {
        QTimer::singleShot(Ripresa, this, &Anteprima::CaricaMotore);
        return;
    }
    QString motivo;
    m_motore = m_caricatore(*this, *m_finestra.Browser(), motivo);
    if (!m_motore) {
        m_finestra.MostraAvviso(Messaggio(350), motivo);
        return;
    }
    m_permessi = ImpostazioniAnteprima::Leggi();
    m_motore->Permetti(m_permessi);
    if (m_ciclo.InCorso())
        Esegui(CicloAnteprima::Azione::Naviga);
}

void Anteprima::Esegui(CicloAnteprima::Azione azione)
{
    using Azione = CicloAnteprima::Azione;
    if (!m_motore || azione == Azione::Niente) {
        if (!m_ciclo.InCorso()) {
            m_limite.stop();
            m_silenzio.stop();
        }
        return;
    }
    m_silenzio.stop();
    ++m_domanda;
    if (azione == Azione::Rinnova || azione == Azione::Rinuncia)
        m_motore->Ricomincia();
    if (azione == Azione::Rinuncia) {
        m_finestra.MostraAvviso(Messaggio(351));
        return;
    }
    m_finestra.MostraAvviso({});
    m_limite.start(Limite);
    m_partenza.start(0);
}

void Anteprima::Interroga()
{
    const qint64 mega = QFileInfo(Stato().FileAnteprima).size() / (qint64{1024} * 1024);
    m_silenzio.start(Pazienza + mega * PazienzaPerMega);
    m_motore->Interroga([this, domanda = m_domanda] {
        if (domanda == m_domanda && m_silenzio.isActive())
            Esegui(m_ciclo.Lenta());
    });
}

bool Anteprima::Concede(const RichiestaMotore &richiesta) const
{
    return RichiesteAnteprima::Concede(richiesta, Posto(), m_permessi.rete);
}

void Anteprima::NavigazioneFinita()
{
    Esegui(m_ciclo.Finita());
}

void Anteprima::DisegnoPerduto()
{
    m_finestra.MostraAvviso(Messaggio(352));
    Esegui(m_ciclo.Finita());
}

void Anteprima::MemoriaSuperata()
{
    m_motore->Ricomincia();
    m_finestra.MostraAvviso(Messaggio(TestoMemoria));
    Esegui(m_ciclo.Finita());
}

// --- What the user chooses ------------------------------------------------------------------------------------------

void Anteprima::MenuChiesto(QPoint dove)
{
    auto *menu = new QMenu(&m_finestra);
    menu->setObjectName(u"MenuAnteprima"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto interruttore = [&](qint16 testo, bool PermessiAnteprima::*quale) {
        QAction *voce = menu->addAction(Messaggio(testo));
        voce->setCheckable(true);
        voce->setChecked(m_permessi.*quale);
        connect(voce, &QAction::toggled, this, [this, quale](bool acceso) {
            PermessiAnteprima permessi = m_permessi;
            permessi.*quale = acceso;
            Cambia(permessi);
        });
    };
    interruttore(TestoScript, &PermessiAnteprima::script);
    interruttore(TestoRete, &PermessiAnteprima::rete);
    connect(menu, &QObject::destroyed, this, &Anteprima::FuocoAllaPagina);
    menu->popup(dove);
}

void Anteprima::Cambia(PermessiAnteprima permessi)
{
    m_permessi = permessi;
    m_motore->Permetti(permessi);
    if (!ImpostazioniAnteprima::Scrivi(permessi))
        emit Guasto(Messaggio(TestoNonTenuto).arg(ModuloPrincipale::ImpostazioniUtente()));
    if (!m_finestra.Browser()->isHidden())
        Esegui(m_ciclo.Richiesta());
}

// --- What the page tells --------------------------------------------------------------------------------------------

void Anteprima::TitoloCambiato(const QString &titolo)
{
    m_titolo = titolo;
    MostraStato();
}

void Anteprima::CollegamentoIndicato(const QUrl &indirizzo)
{
    m_collegamento = indirizzo.toDisplayString();
    MostraStato();
}

void Anteprima::CollegamentoScelto(const QUrl &indirizzo)
{
    if (RichiesteAnteprima::Apribile(indirizzo))
        QDesktopServices::openUrl(indirizzo);
}

void Anteprima::PaginaToccata()
{
    emit FuocoAllaPagina();
}

void Anteprima::MostraStato()
{
    constexpr qsizetype massimo = 500; // a page can have a title of any length
    const QString testo = (m_collegamento.isEmpty() ? m_titolo : m_collegamento).left(massimo).simplified();
    if (testo == m_stato)
        return;
    m_stato = testo;
    emit TestoStato(ModuloVerificaSintassi::SuUnaRiga(testo));
}
