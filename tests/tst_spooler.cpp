#include "Aiuti.h"
#include "app/TabellaLingua.h"
#include "chrome/ClsProgressBar.h"
#include "chrome/FrmProgressBar.h"
#include "dialogs/ModuloStampa.h"
#include "dialogs/StampaPagina.h"
#include "platform/RichTextBox.h"
#include "platform/SpoolerCups.h"

#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <optional>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace ModuloStampa;

namespace
{

const QByteArray Configurazione = R"(LogLevel warn
Listen %/s
Browsing Off
DefaultAuthType None
WebInterface No
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
)";

const QByteArray ConfigurazioneFile = R"(FileDevice Yes
ServerRoot %/r
RequestRoot %/q
CacheDir %/c
StateDir %/t
TempDir %/q/tmp
ErrorLog %/errori
AccessLog %/accessi
PageLog %/pagine
Printcap
User lp
Group lp
SystemGroup root
)";

/// A printing service of one's own in a temporary folder, with the home folder of its only user.
class Servizio
{
public:
    bool Avvia()
    {
        for (const QString &nome : {u"r"_s, u"q"_s, u"c"_s, u"t"_s, u"q/tmp"_s, u"casa/.cups"_s})
            QDir().mkpath(Percorso(nome));
        Scrivi(u"r/cupsd.conf"_s, Configurazione);
        Scrivi(u"r/cups-files.conf"_s, ConfigurazioneFile);
        qputenv("CUPS_SERVER", Percorso(u"s"_s).toUtf8());
        qputenv("HOME", Percorso(u"casa"_s).toUtf8());
        QStringList cartelle = qEnvironmentVariable("PATH").split(u':');
        cartelle << u"/usr/sbin"_s << u"/sbin"_s;
        m_lpadmin = QStandardPaths::findExecutable(u"lpadmin"_s, cartelle);
        m_processo.setProcessChannelMode(QProcess::ForwardedChannels);
        m_processo.start(QStandardPaths::findExecutable(u"cupsd"_s, cartelle),
                         {u"-f"_s, u"-c"_s, Percorso(u"r/cupsd.conf"_s), u"-s"_s, Percorso(u"r/cups-files.conf"_s)});
        return m_processo.waitForStarted() && QTest::qWaitFor([this] { return QFile::exists(Percorso(u"s"_s)); });
    }
    ~Servizio()
    {
        m_processo.terminate();
        m_processo.waitForFinished();
    }
    bool Aggiungi(const QString &nome, const QStringList &altro = {}) const
    {
        return QProcess::execute(m_lpadmin,
                                 QStringList{u"-p"_s, nome, u"-E"_s, u"-v"_s, u"file:/dev/null"_s} + altro) == 0;
    }
    [[nodiscard]] QString Percorso(const QString &nome) const { return m_cartella.filePath(nome); }
    /// The user's options, one printer a line, its words in order.
    [[nodiscard]] QStringList Opzioni() const
    {
        const QString file = Percorso(u"casa/.cups/lpoptions"_s);
        if (!QFile::exists(file))
            return {};
        QStringList righe;
        for (const QString &riga : QString::fromUtf8(Aiuti::Contenuto(file)).split(u'\n', Qt::SkipEmptyParts)) {
            QStringList parole = riga.split(u' ', Qt::SkipEmptyParts);
            std::sort(parole.begin() + 2, parole.end());
            righe << parole.join(u' ');
        }
        righe.sort();
        return righe;
    }
    void ImpostaOpzioni(const QByteArray &testo) const { Scrivi(u"casa/.cups/lpoptions"_s, testo); }
    /// How many jobs a printer has got so far.
    [[nodiscard]] static qsizetype Lavori(const QString &stampante)
    {
        QProcess elenco;
        elenco.start(u"lpstat"_s, {u"-W"_s, u"all"_s, u"-o"_s, stampante});
        return elenco.waitForFinished() ? elenco.readAllStandardOutput().count('\n') : -1;
    }

private:
    void Scrivi(const QString &nome, QByteArray testo) const
    {
        Aiuti::Scrivi(Percorso(nome), testo.replace('%', m_cartella.path().toUtf8()));
    }
    QTemporaryDir m_cartella{u"/tmp/vs-XXXXXX"_s}; // the name of a socket is short
    QProcess m_processo;
    QString m_lpadmin;
};

/// A socket that takes connections and never says a word.
class Muto
{
public:
    explicit Muto(const QString &percorso) : m_presa(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un indirizzo{};
        indirizzo.sun_family = AF_UNIX;
        qstrncpy(indirizzo.sun_path, qPrintable(percorso), sizeof(indirizzo.sun_path));
        m_ascolta = bind(m_presa, reinterpret_cast<const sockaddr *>(&indirizzo), sizeof(indirizzo)) == 0 &&
                    listen(m_presa, 5) == 0;
    }
    ~Muto() { close(m_presa); }
    Q_DISABLE_COPY_MOVE(Muto)
    [[nodiscard]] bool Ascolta() const { return m_ascolta; }

private:
    int m_presa;
    bool m_ascolta = false;
};

SceltaStampa Scelta(const QString &stampante, int copie)
{
    SceltaStampa scelta;
    scelta.stampante = stampante;
    scelta.impostazioni.ImpostaNomeDispositivo(stampante.toUtf8());
    scelta.impostazioni.Imposta(DevMode::NumeroCopie, copie);
    scelta.impostazioni.Imposta(DevMode::FronteRetro, 2);
    scelta.impostazioni.ImpostaNomeCarta("A5");
    return scelta;
}

/// Prints, answers every message box, and gives the print up when asked to. Returns what the boxes say.
QStringList Stampa(const QString &pagina, const SceltaStampa &scelta, Spooler &spooler, bool rinuncia = false)
{
    RichTextBox pad;
    pad.ImpostaText(pagina);
    QStringList testi;
    QTimer attesa;
    QObject::connect(&attesa, &QTimer::timeout, &attesa, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            testi += box->text() + u'|' + box->informativeText();
            box->accept();
        }
        for (QWidget *finestra : QApplication::topLevelWidgets()) {
            auto *avanzamento = qobject_cast<FrmProgressBar *>(finestra);
            // The second half of the work paints; before it there is no job that could reach the printer.
            if (rinuncia && avanzamento && finestra->isVisible() &&
                avanzamento->Barra().Value() > avanzamento->Barra().Max() / 2)
                QTest::keyClick(finestra, Qt::Key_Escape);
        }
    });
    attesa.start(0);
    StampaScelta(pad, u"pagina.html"_s, scelta, spooler);
    return testi;
}

} // namespace

// The spooler over a real CUPS, and a page printed through it.
class tst_spooler : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(ModuloPrincipale::CaricaLingua(u"" CARTELLA_SORGENTI "/data"_s, ModuloPrincipale::LinguaItaliano)
                    .Riuscito());
        QVERIFY(m_servizio.Avvia());
        QVERIFY(m_servizio.Aggiungi(u"Altra"_s));
        QVERIFY(m_servizio.Aggiungi(u"Laser"_s));
        QVERIFY(m_servizio.Aggiungi(u"Vietata"_s, {u"-u"_s, u"allow:nessuno"_s}));
    }

    void ripristino()
    {
        // durante: the printer's line while the page prints
        const QString nuove = u" copies=5 media=A5 sides=two-sided-long-edge"_s;
        for (const auto &[stampante, prima, durante] :
             {std::tuple(u"Laser"_s, ""_ba, u"Dest Laser"_s + nuove),
              // What a record cannot tell of stays.
              {u"Laser"_s, "Dest Laser copies=2 fit-to-page=true media=A4\n"_ba,
               u"Dest Laser copies=5 fit-to-page=true media=A5 sides=two-sided-long-edge"_s},
              {u"Laser"_s, "Default Laser copies=2\n"_ba, u"Default Laser"_s + nuove},
              {u"Laser/bozza"_s, "Dest Laser copies=2\nDest Laser/bozza print-quality=3\n"_ba,
               u"Dest Laser/bozza"_s + nuove},
              // A paper whose name is longer than the record's.
              {u"Laser"_s, "Dest Laser media=na_index-4x6_4x6in,photographic-glossy,tray-1\n"_ba,
               u"Dest Laser"_s + nuove}}) {
            m_servizio.ImpostaOpzioni(prima);
            const QStringList opzioni = m_servizio.Opzioni();
            QStringList messaggi;
            QStringList conStampa;
            SpoolerCups spooler;
            Esegui(spooler, {[&, quale = stampante](const ImpostazioniSalvate &salvate) {
                                 messaggi += salvate.nomi.contains(quale) ? QString() : u"not listed"_s;
                                 return Scelta(quale, 5);
                             },
                             [&](const SceltaStampa &) { conStampa = m_servizio.Opzioni(); },
                             [&](const QString &testo) { messaggi += testo; }});
            QCOMPARE(messaggi, QStringList{QString()});
            QVERIFY2(conStampa.contains(durante), qPrintable(conStampa.join(u'\n')));
            QCOMPARE(m_servizio.Opzioni(), opzioni);
        }
    }

    void predefinitaDelServizio()
    {
        // The server's default printer does not become the user's own by printing.
        QCOMPARE(QProcess::execute(u"/usr/sbin/lpadmin"_s, {u"-d"_s, u"Altra"_s}), 0);
        m_servizio.ImpostaOpzioni("Dest Laser copies=2\n");
        QCOMPARE(MessaggiDi(u"Laser"_s), QStringList());
        QCOMPARE(m_servizio.Opzioni(), QStringList{u"Dest Laser copies=4 media=A5 sides=two-sided-long-edge"_s});
    }

    void nonScritte()
    {
        // No name at all is not the default printer.
        for (const QString &stampante : {u"Nessuna"_s, QString()}) {
            SpoolerCups spooler;
            QVERIFY(LeggiImpostazioni(spooler, stampante).Vuoto());
            QCOMPARE(MessaggiDi(stampante),
                     QStringList{u"Cannot open the printer specified (make sure the printer name is correct)."_s});
        }
        const QByteArray casa = qgetenv("HOME");
        const auto torna = qScopeGuard([&] { qputenv("HOME", casa); });
        qputenv("HOME", "/proc/self"); // nothing can be written there
        QCOMPARE(MessaggiDi(u"Laser"_s), QStringList{u"Access denied -- See the article for more info."_s});
    }

    void servizioMuto()
    {
        const QByteArray vero = qgetenv("CUPS_SERVER");
        const auto torna = qScopeGuard([&] { qputenv("CUPS_SERVER", vero); });
        std::optional<Muto> muto;
        // Without a service, and with one that takes the connection and never answers.
        for (const bool risponde : {false, true}) {
            if (risponde)
                QVERIFY(muto.emplace(m_servizio.Percorso(u"muto"_s)).Ascolta());
            qputenv("CUPS_SERVER", m_servizio.Percorso(u"muto"_s).toUtf8());
            // Forgets the server that this thread knows.
            SpoolerCups().TrattieniLavori(false);
            {
                SpoolerCups spooler;
                QCOMPARE(spooler.Stampanti(), QStringList());
                QCOMPARE(spooler.ApriStampante(u"Laser"_s, Spooler::AccessoLettura), 0u);
                QCOMPARE(spooler.UltimoErrore(), Spooler::ServizioAssente);
            }
            // The next print asks anew.
            qputenv("CUPS_SERVER", vero);
            QVERIFY(SpoolerCups().Stampanti().contains(u"Laser"_s));
        }
    }

    void lavori()
    {
        // Taken, refused, and given up by the user.
        for (const auto &[stampante, righe, lavori, messaggi] :
             {std::tuple(u"Laser"_s, 1, 1, 0), {u"Vietata"_s, 1, 0, 1}, {u"Laser"_s, 100'000, 0, 0}}) {
            m_servizio.ImpostaOpzioni({});
            const qsizetype prima = Servizio::Lavori(stampante);
            SpoolerCups spooler;
            SceltaStampa scelta = Scelta(stampante, 1);
            scelta.dispositivo = std::make_shared<QPrinter>(QPrinter::HighResolution);
            scelta.dispositivo->setPrinterName(stampante);
            QCOMPARE(scelta.dispositivo->outputFormat(), QPrinter::NativeFormat);
            const QStringList testi =
                Stampa(u"<p>una riga \u00e8 qui</p>\r\n"_s.repeated(righe), scelta, spooler, righe > 1);
            QCOMPARE(Servizio::Lavori(stampante) - prima, lavori);
            QCOMPARE(testi.size(), messaggi);
            for (const QString &testo : testi) {
                QCOMPARE(testo.section(u'|', 0, 0), ModuloPrincipale::Messaggio(242).arg(stampante));
                QVERIFY(!testo.section(u'|', 1).isEmpty());
            }
            // And the printers are there again.
            QVERIFY(spooler.Stampanti().contains(u"Laser"_s));
        }
    }

    void pdf()
    {
        // Written, no such folder, the disk is full, no such page.
        for (const auto &[nome, pagina, limite, messaggio] : {std::tuple(u"s.pdf"_s, 0, RLIM_INFINITY, 0),
                                                              {u"manca/s.pdf"_s, 0, RLIM_INFINITY, 241},
                                                              {u"s.pdf"_s, 0, 2000, 241},
                                                              {u"s.pdf"_s, 9, RLIM_INFINITY, 243}})
            Pdf(nome, pagina, limite, messaggio);
    }

private:
    /// \a pagina: the only one to print, 0: all; \a limite: bytes that a file may have.
    static void Pdf(const QString &nome, int pagina, rlim_t limite, int messaggio)
    {
        QTemporaryDir cartella;
        const QString vecchio = cartella.filePath(u"s.pdf"_s), file = cartella.filePath(nome);
        Aiuti::Scrivi(vecchio, "old");
        SceltaStampa scelta;
        scelta.dispositivo = std::make_shared<QPrinter>(QPrinter::HighResolution);
        scelta.dispositivo->setOutputFormat(QPrinter::PdfFormat);
        scelta.dispositivo->setOutputFileName(file);
        if (pagina > 0) {
            scelta.dispositivo->setPrintRange(QPrinter::PageRange);
            scelta.dispositivo->setFromTo(pagina, pagina);
        }
        SpoolerCups spooler;

        rlimit prima{};
        getrlimit(RLIMIT_FSIZE, &prima);
        const rlimit stretto{std::min(limite, prima.rlim_max), prima.rlim_max};
        const auto segnale = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &stretto);
        const QString testi = Stampa(u"<p>uno</p>"_s, scelta, spooler).join(u'&');
        setrlimit(RLIMIT_FSIZE, &prima);
        std::signal(SIGXFSZ, segnale);

        const QString atteso = messaggio == 0 ? QString() : ModuloPrincipale::Messaggio(qint16(messaggio));
        QCOMPARE(testi.section(u'|', 0, 0), messaggio == 241 ? atteso.arg(file) : atteso);
        QCOMPARE(Aiuti::Contenuto(vecchio).left(4), QByteArray(messaggio == 0 ? "%PDF" : "old"));
        QCOMPARE(QDir(cartella.path()).entryList(QDir::Files), QStringList{u"s.pdf"_s});
    }

    /// What is told when the settings of \a stampante are written.
    static QStringList MessaggiDi(const QString &stampante)
    {
        QStringList messaggi;
        SpoolerCups spooler;
        ScriviImpostazioni(spooler, stampante, Scelta(stampante, 4).impostazioni,
                           [&](const QString &testo) { messaggi += testo; });
        return messaggi;
    }

    Servizio m_servizio;
};

QTEST_MAIN(tst_spooler)
#include "tst_spooler.moc"
