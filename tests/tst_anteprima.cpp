#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/Anteprima.h"
#include "dialogs/CicloAnteprima.h"
#include "dialogs/FrmAnteprima.h"
#include "dialogs/PostoAnteprima.h"
#include "dialogs/RichiesteAnteprima.h"
#include "platform/RichTextBox.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

/// Writes down what it is told to do; the test says when a navigation ends.
class MotoreFinto : public MotoreAnteprima
{
public:
    explicit MotoreFinto(QStringList &diario) : m_diario(diario) {}

    void Naviga(const QString &percorso, const QString &posto, const QString &codifica) override
    {
        QFile file(percorso);
        m_diario += posto + u' ' + (file.open(QIODevice::ReadOnly) ? QString::number(file.size()) : u"-"_s);
        if (codifica != u"UTF-8")
            m_diario.last() += u' ' + codifica;
    }
    void Ricomincia() override { m_diario += u"ricomincia"_s; }
    void Permetti(const PermessiAnteprima &p) override
    {
        if (p != PermessiAnteprima{})
            m_diario += u"script %1 rete %2"_s.arg(p.script).arg(p.rete);
    }
    void Interroga(std::function<void()>) override { m_diario += u"interroga"_s; }

private:
    QStringList &m_diario;
};

void Salva(const QString &percorso, const QByteArray &byte = "pagina")
{
    QDir().mkpath(QFileInfo(percorso).path());
    QFile file(percorso);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size());
}

QString Passi(const QString &eventi)
{
    CicloAnteprima ciclo;
    QString passi;
    for (const QChar evento : eventi) {
        const auto azione = evento == u'r'   ? ciclo.Richiesta()
                            : evento == u'f' ? ciclo.Finita()
                            : evento == u'l' ? ciclo.Lenta()
                                             : ciclo.Muta();
        passi += u".NRX"_s[int(azione)];
    }
    return passi;
}

} // namespace

class tst_Anteprima : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void Richieste_data();
    void Richieste();
    void Apribile_data();
    void Apribile();
    void Ciclo_data();
    void Ciclo();
    void PostoBrowser();
    void Regole_data();
    void Regole();
    void CartellaDellaPaginaAperta();
    void LegamiPosati();
    void ScritturaFallita();
    void TestoDiStato();
    void Interruttori_data();
    void Interruttori();
    void DisegnoPerduto();
    void SenzaMotore();
    void PostiDiPiuProgrammi();
    void RestiDiUnProgrammaUcciso();
    void CartellaNonScrivibile();

private:
    std::unique_ptr<Anteprima> Crea();

    std::unique_ptr<QTemporaryDir> m_cartella;
    std::unique_ptr<FrmAnteprima> m_finestra;
    FormatoPagina m_formato;
    QStringList m_diario;
    OspiteMotore *m_ospite = nullptr;
};

void tst_Anteprima::initTestCase()
{
    QVERIFY(ModuloPrincipale::CaricaImpostazioni(QStringLiteral(CARTELLA_PROGRAMMA)).Riuscito());
}

void tst_Anteprima::init()
{
    m_cartella = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_cartella->path().toUtf8());
    Stato() = {};
    Stato().FileAnteprima = m_cartella->filePath(u"test.html"_s);
    m_formato = {};
    m_diario.clear();
    m_finestra = std::make_unique<FrmAnteprima>();
}

std::unique_ptr<Anteprima> tst_Anteprima::Crea()
{
    auto anteprima = std::make_unique<Anteprima>(
        *m_finestra, [this] { return m_formato; },
        [this](OspiteMotore &ospite, QWidget &, QString &) {
            m_ospite = &ospite;
            return std::make_unique<MotoreFinto>(m_diario);
        });
    emit m_finestra->Pronta();
    return anteprima;
}

void tst_Anteprima::Richieste_data()
{
    // A file that a row names is there unless its name says that it is missing. "~" stands for the folder; "sito" in it
    // has the links "legame", a folder outside, "chiave.js", a hidden file, "su.png", a picture, "prova.js", a script.
    using Tipo = RichiestaMotore::Tipo;
    QTest::addColumn<QString>("indirizzo");
    QTest::addColumn<Tipo>("tipo");
    QTest::addColumn<bool>("daRemoto");
    QTest::addColumn<QString>("corrente");
    QTest::addColumn<bool>("concessa");

    const QString mia = u"~/sito/mia.html"_s;
    const auto riga = [](const char *nome, const QString &indirizzo, Tipo tipo, bool concessa, const QString &corrente,
                         bool daRemoto = false) {
        QTest::newRow(nome) << indirizzo << tipo << daRemoto << corrente << concessa;
    };
    riga("the page", u"file://~/sito/mia.html"_s, Tipo::Pagina, true, mia);
    riga("another page", u"file://~/sito/altra.html"_s, Tipo::Pagina, false, mia);
    riga("a page without a file", u"file:///test.html"_s, Tipo::Pagina, true, {});
    riga("a web page in its place", u"http://e.it/"_s, Tipo::Pagina, false, mia);
    riga("picture above", u"file://~/figure/a.png"_s, Tipo::Risorsa, true, mia);
    riga("missing picture", u"file://~/sito/manca.png"_s, Tipo::Risorsa, false, mia);
    riga("picture of any name beside", u"file://~/sito/figura.js"_s, Tipo::Risorsa, true, mia);
    riga("text above as a picture", u"file://~/nota.txt"_s, Tipo::Risorsa, false, mia);
    riga("text above as a style sheet", u"file://~/nota.txt"_s, Tipo::Stile, false, mia);
    riga("style sheet above", u"file://~/css/a.css"_s, Tipo::Stile, true, mia);
    riga("font above", u"file://~/a.ttf"_s, Tipo::Carattere, true, mia);
    riga("picture as a font", u"file://~/sito/a.png"_s, Tipo::Carattere, false, mia);
    riga("file of another machine", u"file://altro/a.png"_s, Tipo::Risorsa, false, mia);
    riga("local picture for a web frame", u"file://~/sito/a.png"_s, Tipo::Risorsa, false, mia, true);
    riga("frame beside", u"file://~/sito/menu.html"_s, Tipo::Cornice, true, mia);
    riga("frame that climbs out", u"file://~/sito/../etc/passwd"_s, Tipo::Cornice, false, mia);
    riga("folder with the same beginning", u"file://~/sito2/a.html"_s, Tipo::Cornice, false, mia);
    riga("frame of a page without a file", u"file:///etc/passwd"_s, Tipo::Cornice, false, {});
    riga("script beside", u"file://~/sito/js/a.js"_s, Tipo::Script, true, mia);
    riga("script above", u"file://~/js/a.js"_s, Tipo::Script, false, mia);
    riga("data beside as a script", u"file://~/sito/a.json"_s, Tipo::Script, false, mia);
    riga("script in a hidden folder below", u"file://~/sito/.git/hooks/a.js"_s, Tipo::Script, false, mia);
    riga("hidden file beside", u"file://~/sito/.segreto.png"_s, Tipo::Risorsa, false, mia);
    riga("hidden picture", u"file://~/.faces/a.png"_s, Tipo::Risorsa, false, mia);
    riga("page in a hidden folder", u"file://~/.sito/su.png"_s, Tipo::Risorsa, true, u"~/.sito/p/mia.html"_s);
    riga("hidden file named as a script by a link", u"file://~/sito/chiave.js"_s, Tipo::Script, false, mia);
    riga("the same as a picture", u"file://~/sito/chiave.js"_s, Tipo::Risorsa, false, mia);
    riga("script outside by a link", u"file://~/sito/prova.js"_s, Tipo::Script, false, mia);
    riga("frame in a linked folder", u"file://~/sito/legame/altra.html"_s, Tipo::Cornice, false, mia);
    riga("picture outside by a link", u"file://~/sito/su.png"_s, Tipo::Risorsa, true, mia);
    riga("the page's folder through a link", u"file://~/via/menu.html"_s, Tipo::Cornice, true, u"~/via/mia.html"_s);
    riga("picture by its full path in a page without a file", u"file://~/b.png"_s, Tipo::Risorsa, true, {});
    riga("script reads a file", u"file://~/sito/dati.json"_s, Tipo::Contenuto, false, mia);
    riga("script reads the web", u"http://e.it/dati"_s, Tipo::Contenuto, true, mia);
    riga("inner address", u"chrome://settings"_s, Tipo::Cornice, false, mia);
}

void tst_Anteprima::Richieste()
{
    QFETCH(QString, indirizzo);
    QFETCH(RichiestaMotore::Tipo, tipo);
    QFETCH(bool, daRemoto);
    QFETCH(QString, corrente);
    for (const QString &nome : {u"fuori/.env"_s, u"fuori/altra.html"_s, u"fuori/prova.js"_s, u"fuori/su.png"_s})
        Salva(m_cartella->filePath(nome));
    QDir(m_cartella->path()).mkpath(u"sito"_s);
    const auto lega = [this](const QString &da, const QString &a) {
        QVERIFY(QFile::link(m_cartella->filePath(da), m_cartella->filePath(a)));
    };
    lega(u"fuori"_s, u"sito/legame"_s);
    lega(u"fuori/.env"_s, u"sito/chiave.js"_s);
    lega(u"fuori/su.png"_s, u"sito/su.png"_s);
    lega(u"fuori/prova.js"_s, u"sito/prova.js"_s);
    lega(u"sito"_s, u"via"_s);
    const QUrl chiesto(indirizzo.replace(u'~', m_cartella->path()));
    const QString posto = RichiesteAnteprima::Posto(corrente.replace(u'~', m_cartella->path()));
    const QString file = QDir::cleanPath(chiesto.toLocalFile());
    if (!corrente.isEmpty())
        Salva(posto);
    if (file.startsWith(m_cartella->path()) && !indirizzo.contains(u"manca"_s) && !QFileInfo::exists(file))
        Salva(file);
    QTEST(RichiesteAnteprima::Concede({chiesto, tipo, daRemoto}, posto, true), "concessa");
    if (!chiesto.isLocalFile())
        QVERIFY(!RichiesteAnteprima::Concede({chiesto, tipo, daRemoto}, posto, false));
}

void tst_Anteprima::Apribile_data()
{
    QTest::addColumn<QString>("indirizzo");
    QTest::addColumn<bool>("apribile");
    QTest::newRow("web") << u"https://e.it/a.exe"_s << true;
    QTest::newRow("mail") << u"mailto:nome@example.com"_s << true;
    QTest::newRow("local page, any case") << u"file:///a/B.HTML"_s << true;
    QTest::newRow("local program") << u"file:///usr/bin/sh"_s << false;
    QTest::newRow("local launcher") << u"file:///a/x.desktop"_s << false;
    QTest::newRow("script") << u"javascript:alert(1)"_s << false;
    QTest::newRow("unknown scheme") << u"smb://a/b"_s << false;
}

void tst_Anteprima::Apribile()
{
    QFETCH(QString, indirizzo);
    QTEST(RichiesteAnteprima::Apribile(QUrl(indirizzo)), "apribile");
}

void tst_Anteprima::Ciclo_data()
{
    // Events: r request, f finished, l slow, m mute. Actions: N navigate, R anew, X give up, . nothing.
    QTest::addColumn<QString>("eventi");
    QTest::addColumn<QString>("azioni");
    QTest::newRow("one after the other") << u"rfrf"_s << u"N.N."_s;
    QTest::newRow("requests meanwhile are one more") << u"rrrrff"_s << u"N...N."_s;
    QTest::newRow("slow page does not hold up the next") << u"rlr"_s << u"N.N"_s;
    QTest::newRow("slow page gives way to a waiting one") << u"rrlf"_s << u"N.N."_s;
    QTest::newRow("mute page is tried twice") << u"rmmr"_s << u"NRXN"_s;
    QTest::newRow("mute page, another waits") << u"rrmmm"_s << u"N.RRX"_s;
    QTest::newRow("the end of nothing") << u"fml"_s << u"..."_s;
}

void tst_Anteprima::Ciclo()
{
    QFETCH(QString, eventi);
    QTEST(Passi(eventi), "azioni");
}

void tst_Anteprima::PostoBrowser()
{
    QCOMPARE(FrmAnteprima::PostoBrowser({3000, 1500}), QRect(10, 10, 2910, 1140));
    QCOMPARE(FrmAnteprima::PostoBrowser({60, 300}), QRect(10, 10, 0, 0));
    m_finestra->resize(200, 100);
    m_finestra->show();
    QTRY_COMPARE(m_finestra->Browser()->geometry(), QRect(1, 1, 194, 76));
}

void tst_Anteprima::Regole_data()
{
    QTest::addColumn<QStringList>("testi"); // "-": a refresh in hide mode
    QTest::addColumn<QStringList>("diario");
    QTest::addColumn<bool>("visibile");
    const QString p48(48, u'x');
    QTest::newRow("49 bytes with the line end") << QStringList{p48.left(47)} << QStringList{} << true;
    QTest::newRow("50 bytes") << QStringList{p48} << QStringList{u"/test.html 50"_s} << true;
    QTest::newRow("final CR does not count") << QStringList{p48 + u'\r'} << QStringList{u"/test.html 50"_s} << true;
    QTest::newRow("empty page shows the old file")
        << QStringList{p48, {}} << QStringList{u"/test.html 50"_s, u"/test.html 50"_s} << true;
    QTest::newRow("always empty") << QStringList{QString()} << QStringList{} << true;
    QTest::newRow("hidden") << QStringList{p48, u"-"_s} << QStringList{u"/test.html 50"_s} << false;
    QTest::newRow("a short page stays hidden")
        << QStringList{p48, u"-"_s, u"y"_s} << QStringList{u"/test.html 50"_s} << false;
    QTest::newRow("shown again") << QStringList{p48, u"-"_s, p48} << QStringList{u"/test.html 50"_s, u"/test.html 50"_s}
                                 << true;
}

void tst_Anteprima::Regole()
{
    QFETCH(QStringList, testi);
    QFETCH(QStringList, diario);
    const auto anteprima = Crea();
    RichTextBox pad;
    for (const QString &testo : testi) {
        if (testo != u"-")
            pad.ImpostaText(testo);
        anteprima->AggiornaAnteprima(&pad, testo == u"-");
        QCoreApplication::processEvents();
        m_ospite->NavigazioneFinita();
    }
    QCOMPARE(m_diario, diario);
    QTEST(!m_finestra->Browser()->isHidden(), "visibile");
}

void tst_Anteprima::CartellaDellaPaginaAperta()
{
    m_formato.codifica = u"windows-1252"_s;
    const auto anteprima = Crea();
    RichTextBox pad;
    pad.ImpostaText(QString(60, u'x'));
    QSignalSpy fuoco(anteprima.get(), &Anteprima::FuocoAllaPagina);
    anteprima->AggiornaAnteprima(&pad, false);
    Stato().FileCorrente = u"/sito/mia.html"_s; // becomes so after the refresh
    QTRY_COMPARE(m_diario, QStringList{u"/sito/mia.html 62 windows-1252"_s});
    QCOMPARE(fuoco.size(), 1);
    m_ospite->PaginaToccata();
    QCOMPARE(fuoco.size(), 2);
}

void tst_Anteprima::LegamiPosati()
{
    const auto anteprima = Crea();
    RichTextBox pad;
    pad.ImpostaText(QString(60, u'x'));
    const QString pagina = Stato().FileAnteprima;
    const QString altrui = m_cartella->filePath(u"altrui"_s);
    const QString manca = m_cartella->filePath(u"manca"_s);
    Salva(altrui);
    for (const QString &via : {u"simbolico"_s, u"nel vuoto"_s, u"altro nome"_s}) {
        QFile::remove(pagina);
        if (via == u"altro nome")
            QCOMPARE(::link(altrui.toUtf8().constData(), pagina.toUtf8().constData()), 0);
        else
            QVERIFY(QFile::link(via == u"simbolico" ? altrui : manca, pagina));
        anteprima->AggiornaAnteprima(&pad, false);
        QVERIFY2(!QFileInfo(pagina).isSymLink() && QFileInfo(pagina).size() == 62, qPrintable(via));
        QCOMPARE(QFileInfo(altrui).size(), 6);
        QVERIFY(!QFileInfo::exists(manca));
    }
    QFile::remove(pagina);
    QVERIFY(QFile::link(manca, pagina)); // taken away when the place is taken
    QCOMPARE(PostoAnteprima({m_cartella->path()}).Percorso(), pagina);
    QVERIFY(!QFileInfo(pagina).isSymLink());
}

void tst_Anteprima::ScritturaFallita()
{
    const auto anteprima = Crea();
    QSignalSpy guasti(anteprima.get(), &Anteprima::Guasto);
    RichTextBox pad;
    pad.ImpostaText(QString(60, u'x'));
    const QString buono = std::exchange(Stato().FileAnteprima, m_cartella->filePath(u"manca/test.html"_s));
    for (int i = 0; i < 3; ++i)
        anteprima->AggiornaAnteprima(&pad, false);
    Stato().FileAnteprima = m_cartella->path(); // a folder
    anteprima->AggiornaAnteprima(&pad, false);
    QCOMPARE(guasti.size(), 1);
    Stato().FileAnteprima = buono;
    anteprima->AggiornaAnteprima(&pad, false);
    QCOMPARE(guasti.size(), 2);
    QCOMPARE(guasti.last(), QVariantList{QString()});
    QTRY_COMPARE(m_diario, QStringList{u"/test.html 62"_s});
}

void tst_Anteprima::TestoDiStato()
{
    const auto anteprima = Crea();
    QSignalSpy stato(anteprima.get(), &Anteprima::TestoStato);
    m_ospite->TitoloCambiato(u"a\x202E\x1b\r\nb"_s);
    QCOMPARE(stato.takeLast(), QVariantList{u"a\\u202E\\x1B b"_s});
    m_ospite->CollegamentoIndicato(QUrl(u"http://x/\x2067y"_s));
    QVERIFY(!stato.last().constFirst().toString().contains(QChar(0x2067)));
}

void tst_Anteprima::Interruttori_data()
{
    QTest::addColumn<QByteArray>("prima"); // the user's own settings
    QTest::addColumn<QString>("detto");    // to the engine at the start; empty: all is on
    QTest::addColumn<QByteArray>("dopo");  // with scripts switched the other way in the menu
    QTest::newRow("nothing written") << QByteArray("-") << QString() << QByteArray("ScriptOn = 0\nRemoteOn = 1\n");
    QTest::newRow("off, beside another line without an end")
        << QByteArray("ScriptOn = 0\nLanguage = 1") << u"script 0 rete 1"_s
        << QByteArray("ScriptOn = 1\nLanguage = 1\nRemoteOn = 1\n");
    QTest::newRow("the last line counts, no number is 0")
        << QByteArray("RemoteOn = 1\r\nRemoteOn=0\r\n") << u"script 1 rete 0"_s
        << QByteArray("RemoteOn = 1\r\nRemoteOn = 0\r\nScriptOn = 0\n");
    QTest::newRow("other letters, other place")
        << QByteArray("scripton = 0\n ScriptOn = 0\n") << QString()
        << QByteArray("scripton = 0\n ScriptOn = 0\nScriptOn = 0\nRemoteOn = 1\n");
}

void tst_Anteprima::Interruttori()
{
    QFETCH(QByteArray, prima);
    QFETCH(QString, detto);
    const QString file = m_cartella->filePath(u"velloro/GlobalSetting.dat"_s);
    if (prima != "-")
        Salva(file, prima);
    const auto anteprima = Crea();
    QCOMPARE(m_diario.join(u'|'), detto);
    m_ospite->MenuChiesto({});
    m_finestra->findChild<QMenu *>(u"MenuAnteprima"_s)->actions().constFirst()->trigger();
    QFile scritto(file);
    QVERIFY(scritto.open(QIODevice::ReadOnly));
    QTEST(scritto.readAll(), "dopo");
    const bool rete = m_ospite->Concede({QUrl(u"https://e.it/a.png"_s), RichiestaMotore::Tipo::Risorsa, false});
    QCOMPARE(rete, !detto.contains(u"rete 0"_s));
}

void tst_Anteprima::DisegnoPerduto()
{
    const auto anteprima = Crea();
    RichTextBox pad;
    pad.ImpostaText(QString(60, u'x'));
    anteprima->AggiornaAnteprima(&pad, false);
    QTRY_COMPARE(m_diario.size(), 1);
    m_ospite->DisegnoPerduto(); // while the page is loaded, which is not tried again by itself
    const auto *avviso = m_finestra->findChild<QWidget *>(u"Avviso"_s);
    QVERIFY(!avviso->isHidden());
    anteprima->AggiornaAnteprima(&pad, false);
    QTRY_COMPARE(m_diario.size(), 2);
    QVERIFY(avviso->isHidden());
}

void tst_Anteprima::SenzaMotore()
{
    Anteprima anteprima(
        *m_finestra, [] { return FormatoPagina{}; },
        [](OspiteMotore &, QWidget &, QString &motivo) -> std::unique_ptr<MotoreAnteprima> {
            motivo = u"perché"_s;
            return nullptr;
        });
    const auto *avviso = m_finestra->findChild<QWidget *>(u"Avviso"_s);
    Stato().ControlloInCorso = true; // a page that is being opened comes first
    emit m_finestra->Pronta();
    QVERIFY(avviso->isHidden());
    Stato().ControlloInCorso = false;
    QTRY_VERIFY(!avviso->isHidden());
    RichTextBox pad;
    pad.ImpostaText(QString(60, u'x'));
    anteprima.AggiornaAnteprima(&pad, false);
    QCOMPARE(QFile(Stato().FileAnteprima).size(), 62);
    QCOMPARE(avviso->toolTip(), u"perché"_s);
}

void tst_Anteprima::PostiDiPiuProgrammi()
{
    const QStringList cartelle{m_cartella->path()};
    Salva(m_cartella->filePath(u"test-3.html"_s)); // the user's own
    auto primo = std::make_unique<PostoAnteprima>(cartelle);
    auto secondo = std::make_unique<PostoAnteprima>(cartelle);
    const PostoAnteprima terzo(cartelle);
    QCOMPARE(primo->Percorso(), m_cartella->filePath(u"test.html"_s));
    QCOMPARE(secondo->Percorso(), m_cartella->filePath(u"test-2.html"_s));
    QCOMPARE(terzo.Percorso(), m_cartella->filePath(u"test-4.html"_s));
    for (const auto &percorso : {primo->Percorso(), secondo->Percorso(), terzo.Percorso()})
        Salva(percorso);
    const PostoAnteprima quarto(cartelle); // takes away nobody's page
    primo.reset();
    secondo.reset();
    QCOMPARE(QDir(m_cartella->path()).entryList({u"*.html"_s}), (QStringList{u"test-3.html"_s, u"test-4.html"_s}));
    QCOMPARE(PostoAnteprima(cartelle).Percorso(), m_cartella->filePath(u"test.html"_s));
}

void tst_Anteprima::RestiDiUnProgrammaUcciso()
{
    constexpr int NessunProcesso = 0x7ffffff0; // above the greatest number of a process
    for (const QString &nome : {u"test.html"_s, u"test-2.html"_s}) {
        const QString percorso = m_cartella->filePath(nome);
        Salva(percorso);
        Salva(percorso + u".lock"_s,
              "%1\nvelloro\n%2\n"_L1.arg(QString::number(NessunProcesso), QSysInfo::machineHostName()).toUtf8());
    }
    {
        const PostoAnteprima posto({m_cartella->path()});
        QCOMPARE(posto.Percorso(), m_cartella->filePath(u"test.html"_s));
        QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files), QStringList{u"test.html.lock"_s});
    }
    QVERIFY(QDir(m_cartella->path()).isEmpty());
}

void tst_Anteprima::CartellaNonScrivibile()
{
    const QString file = m_cartella->filePath(u"file"_s);
    Salva(file);
    QDir(m_cartella->path()).mkpath(u"a/test.html/x"_s);          // cannot be taken away
    const QString dati = m_cartella->filePath(u"dati/velloro"_s); // is made
    QCOMPARE(PostoAnteprima({file, dati}).Percorso(), dati + u"/test.html"_s);
    QCOMPARE(PostoAnteprima({m_cartella->filePath(u"a"_s), dati}).Percorso(), m_cartella->filePath(u"a/test-2.html"_s));
    QCOMPARE(PostoAnteprima({file}).Percorso(), file + u"/test.html"_s);
}

QTEST_MAIN(tst_Anteprima)
#include "tst_anteprima.moc"
