#include "ElencoFinestre.h"

#include "app/Comandi.h"
#include "app/Domande.h"
#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/OffertaRecupero.h"
#include "app/TabellaLingua.h"
#include "chrome/ClsProgressBar.h"
#include "chrome/FrmAdvTooltip.h"
#include "chrome/FrmProgressBar.h"
#include "chrome/frmAbout.h"
#include "dialogs/DialogoStampa.h"
#include "dialogs/FrmFont.h"
#include "dialogs/FrmImage.h"
#include "dialogs/FrmModelli.h"
#include "dialogs/FrmTabella.h"
#include "dialogs/FrmTrova.h"
#include "editor/Recupero.h"
#include "html/FrmComplete.h"
#include "html/FrmControlloSintassi.h"
#include "platform/Dialoghi.h"
#include "platform/RichTextBox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTranslator>

using namespace Qt::StringLiterals;
using ElencoFinestre::Guarda;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int Mai = 3'600'000; // ms
constexpr QSize MisuraPrincipale{1280, 720};

void Mostra(QWidget &&finestra, const Guarda &guarda)
{
    finestra.show();
    (void)QTest::qWaitForWindowExposed(&finestra);
    guarda(finestra, {});
}

/// For windows that are run: \a apri returns when its window has closed.
template <typename Apri>
void Modale(const Guarda &guarda, const Apri &apri)
{
    QTimer attesa;
    QObject::connect(&attesa, &QTimer::timeout, &attesa, [&] {
        const QPointer<QWidget> finestra = QApplication::activeModalWidget();
        if (!finestra || !finestra->isVisible())
            return;
        attesa.stop();
        guarda(*finestra, {});
        // A question that does not let itself be closed takes an answer.
        if (finestra && finestra->isVisible() && !finestra->close())
            finestra->findChildren<QPushButton *>().constLast()->click();
    });
    attesa.start(0);
    apri();
}

void Menu(FrmStart &principale, const Guarda &guarda)
{
    for (QMenu *menu : principale.findChildren<QMenu *>()) {
        // Menus of the inner windows' frames are Qt's.
        if (menu->objectName().isEmpty() || menu->actions().isEmpty())
            continue;
        menu->popup(principale.mapToGlobal(QPoint(40, 40)));
        guarda(*menu, menu->objectName());
        menu->hide();
    }
}

void Trova(FrmStart &principale, quint8 modalita, const Guarda &guarda)
{
    FrmTrova trova(&principale);
    trova.Init(principale.PadCorrente(), modalita);
    Mostra(std::move(trova), guarda);
}

void Risultati(FrmStart &principale, const Guarda &guarda)
{
    RichTextBox &pad = *principale.PadCorrente();
    const QString prima = pad.Text();
    QString conErrori = prima;
    conErrori.replace(u"<H1>"_s, u"<H1 aline=left>"_s).replace(u"<B>"_s, u"<BOLD>"_s);
    pad.ImpostaText(conErrori.replace(u"<TABLE border="_s, u"<TABLE align=middle border="_s));
    principale.ElencoComandi().Esegui(u"MenuStrumenti(0)"_s);
    guarda(*FrmControlloSintassi::Aperta(), {});
    guarda(principale, u"pagina"_s);
    pad.ImpostaText(prima);
    principale.ElencoComandi().Esegui(u"MenuStrumenti(0)"_s);
}

void Completamento(FrmStart &principale, const Guarda &guarda)
{
    const ListaVoci voci{{u"ALIGN"_s, GenereVoce::Attributo},   {u"BORDER"_s, GenereVoce::Attributo},
                         {u"CLASS"_s, GenereVoce::Attributo},   {u"ONCLICK"_s, GenereVoce::Evento},
                         {u"TABLE"_s, GenereVoce::Tag},         {u"center"_s, GenereVoce::Valore},
                         {u"#FF0000"_s, GenereVoce::Valore},    {u"CELLPADDING"_s, GenereVoce::Attributo},
                         {u"BGCOLOR"_s, GenereVoce::Attributo}, {u"WIDTH"_s, GenereVoce::Attributo}};
    QTimer::singleShot(0, &principale, [&] {
        if (FrmComplete *lista = FrmComplete::Corrente()) {
            guarda(*lista, {});
            QTest::keyClick(principale.PadCorrente(), Qt::Key_Escape);
        }
    });
    (void)FrmComplete::Apri(principale.PadCorrente(), voci, {});
}

void Suggerimento(FrmStart &principale, const Guarda &guarda)
{
    FrmAdvTooltip::MsgAuto_box(Messaggio(81) + u" 'aline' "_s + Messaggio(82), FrmAdvTooltip::Attenzione, Messaggio(92),
                               60, principale.mapToGlobal(QPoint(300, 300)));
    guarda(*FrmAdvTooltip::Corrente(), {});
    FrmAdvTooltip::Corrente()->close();
}

void Avanzamento(FrmStart &principale, const Guarda &guarda)
{
    FrmProgressBar finestra(Messaggio(313), Messaggio(314), &principale);
    finestra.Barra().TextStatus(Messaggio(56));
    finestra.Barra().Max(100);
    finestra.show();
    finestra.Barra().Value(40);
    Mostra(std::move(finestra), guarda);
}

void Recuperata(FrmStart &principale, const Guarda &guarda)
{
    const QString file = std::exchange(Stato().FileCorrente, u"/home/maria/siti/giardino/indice.html"_s);
    {
        RichTextBox pad;
        Recupero lasciata(&pad, {}, Mai);
        pad.ImpostaText(u"<HTML>"_s);
        lasciata.Lascia();
    }
    Stato().FileCorrente = file;
    Modale(guarda, [&] { (void)OffertaRecupero::Chiedi(&principale, [](const PaginaRecuperata &) {}); });
    for (VoceRecupero &voce : Recupero::DaOffrire())
        Recupero::Scarta(std::move(voce));
}

RisultatoFont SceltaTipica()
{
    RisultatoFont scelta;
    scelta.faccia = u"Liberation Sans"_s;
    scelta.dimensione = 12;
    scelta.colore = 0xB5A642; // without a name: the note below the sample shows as well
    return scelta;
}

void VaiARiga(FrmStart &principale, const Guarda &guarda)
{
    Modale(guarda, [&] {
        for (QShortcut *scelta : principale.findChildren<QShortcut *>()) {
            if (scelta->key() == QKeySequence(u"Ctrl+G"_s))
                emit scelta->activated();
        }
    });
}

void ApriFile(FrmStart &principale, const Guarda &guarda)
{
    Modale(guarda, [&] {
        QStringList scelti;
        ModuloPrincipale::ApriFileDialogo(&principale, scelti, false, u"HTML\0*.html;*.htm\0"_s, {}, {},
                                          Messaggio(315));
    });
}

void DialogoDiStampa(FrmStart &principale)
{
    (void)ModuloStampa::DialogoStampa(&principale, {}, true, u"esempio.pdf"_s);
}

/// The print dialog with its lower half open.
void ConOpzioni(QWidget &dialogo, const Guarda &guarda)
{
    for (auto *pulsante : dialogo.findChildren<QPushButton *>()) {
        if (pulsante->text().endsWith(u">>"_s))
            pulsante->click();
    }
    (void)QTest::qWaitFor([&] { return dialogo.height() >= dialogo.sizeHint().height(); });
    guarda(dialogo, {});
}

void Immagine(FrmStart &principale, const Guarda &guarda)
{
    FrmImage finestra(&principale);
    bool sfogliato = false;
    QTimer attesa; // the file chooser comes by itself, once
    QObject::connect(&attesa, &QTimer::timeout, &attesa, [&] {
        if (auto *scelta = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            sfogliato = true;
            scelta->reject();
        }
    });
    attesa.start(0);
    finestra.show();
    (void)QTest::qWaitFor([&] { return sfogliato; });
    attesa.stop();
    // The dialog shows files and not what the program carries in itself.
    const QTemporaryDir cartella(QDir::tempPath() + u"/velloro"_s);
    const QString file = cartella.filePath(u"velloro.svg"_s);
    QFile::copy(u":/icone/velloro.svg"_s, file);
    auto *casella = finestra.findChild<QLineEdit *>(u"TxtFile"_s);
    casella->setText(file);
    QTest::keyClick(casella, Qt::Key_Return);
    QCoreApplication::processEvents(); // the size of the picture takes its place beside the buttons
    Mostra(std::move(finestra), guarda);
}

} // namespace

const QList<ElencoFinestre::Finestra> &ElencoFinestre::Tutte()
{
    static const QList<Finestra> tutte{
        {u"principale", [](FrmStart &p, const Guarda &g) { g(p, {}); }, false},
        {u"menu", Menu},
        {u"modelli", [](FrmStart &p, const Guarda &g) { Mostra(FrmModelli(p.PadCorrente(), &p), g); }},
        {u"font", [](FrmStart &p, const Guarda &g) { Mostra(FrmFont(SceltaTipica(), &p), g); }},
        {u"tabella", [](FrmStart &p, const Guarda &g) { Mostra(FrmTabella(&p), g); }},
        {u"immagine", Immagine},
        {u"stampa", [](FrmStart &p, const Guarda &g) { Modale(g, [&] { DialogoDiStampa(p); }); }, true, false},
        {u"stampa_opzioni",
         [](FrmStart &p, const Guarda &g) {
             Modale([&g](QWidget &f, const QString &) { ConOpzioni(f, g); }, [&] { DialogoDiStampa(p); });
         },
         true, false},
        {u"trova", [](FrmStart &p, const Guarda &g) { Trova(p, FrmTrova::Trova, g); }},
        {u"sostituisci", [](FrmStart &p, const Guarda &g) { Trova(p, FrmTrova::Sostituisci, g); }},
        {u"vai_a_riga", VaiARiga},
        {u"recupero", Recuperata},
        {u"avanzamento", Avanzamento},
        {u"risultati", Risultati, false},
        {u"informazioni_su", [](FrmStart &p, const Guarda &g) { Mostra(frmAbout(&p), g); }},
        {u"avviso", [](FrmStart &p, const Guarda &g) { Modale(g, [&] { Domande::Avverti(&p, Messaggio(91)); }); }},
        {u"conferma", [](FrmStart &p, const Guarda &g) { Modale(g, [&] { (void)Domande::ChiediConferma(&p); }); },
         false},
        {u"completamento", Completamento, false},
        {u"suggerimento", Suggerimento, false},
        {u"apri", ApriFile, true, false},
    };
    return tutte;
}

void ElencoFinestre::Isola(const QString &cartella)
{
    for (const char *variabile : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(variabile, cartella.toLocal8Bit());
}

bool ElencoFinestre::ImpostaLingua(const QString &cartella, quint8 codice)
{
    static QTranslator *traduttore = nullptr;
    delete std::exchange(traduttore, new QTranslator(qApp));
    QLocale::setDefault(QLocale(ModuloPrincipale::NomeLocale(codice)));
    if (traduttore->load(u"qtbase_"_s + ModuloPrincipale::NomeLocale(codice),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(traduttore);
    return ModuloPrincipale::CaricaLingua(cartella, codice).Riuscito();
}

ElencoFinestre::Principale::Principale(const QString &file) : m_finestra(nullptr)
{
    Stato() = {};
    m_finestra = new FrmStart(file);
    bool mostrata = false;
    QObject::connect(m_finestra, &FrmStart::Mostrata, m_finestra, [&mostrata] { mostrata = true; });
    (void)QTest::qWaitFor([&mostrata] { return mostrata; });
    m_finestra->setWindowState(Qt::WindowNoState);
    m_finestra->resize(MisuraPrincipale);
    QCoreApplication::processEvents();
}

ElencoFinestre::Principale::~Principale()
{
    delete m_finestra;
}
