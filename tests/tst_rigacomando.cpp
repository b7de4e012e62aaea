#include "app/RigaComando.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

struct Esito {
    int stato = -1;
    QString uscita;
    QString errori;
};

/// The real program, without a display; `impostazioni` is the folder of the user's settings.
Esito Esegui(const QStringList &argomenti, const QByteArray &ingresso = {}, const QString &impostazioni = u"/nessuna"_s)
{
    QProcess programma;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    for (const QString &nome : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        ambiente.remove(nome);
    ambiente.insert(u"XDG_CONFIG_HOME"_s, impostazioni);
    programma.setProcessEnvironment(ambiente);
    programma.start(QStringLiteral(CARTELLA_PROGRAMMA "/velloro"), argomenti);
    programma.write(ingresso);
    programma.closeWriteChannel();
    if (!programma.waitForFinished(30000))
        return {};
    return {programma.exitCode(), QString::fromUtf8(programma.readAllStandardOutput()),
            QString::fromUtf8(programma.readAllStandardError())};
}

void Scrivi(const QString &percorso, const QByteArray &byte)
{
    QFile file(percorso);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(byte);
}

} // namespace

class TstRigaComando : public QObject
{
    Q_OBJECT

private slots:
    void arguments_data();
    void arguments();
    void helpAndMistakes();
    void userSettings();
    void checksFiles();
    void checksInEveryEncoding();
    void json();
};

void TstRigaComando::arguments_data()
{
    QTest::addColumn<QStringList>("argomenti");
    QTest::addColumn<QString>("letto");
    QTest::newRow("nothing") << QStringList{} << u"[] 0"_s;
    QTest::newRow("page") << QStringList{u"a.html"_s} << u"[a.html] 0"_s;
    QTest::newRow("two pages") << QStringList{u"a"_s, u"b"_s} << u"[a,b] 239"_s;
    QTest::newRow("page that looks like an option") << QStringList{u"--"_s, u"--help"_s} << u"[--help] 0"_s;
    QTest::newRow("check of several files and standard input")
        << QStringList{u"--verifica"_s, u"a"_s, u"-"_s} << u"[a,-] 0 verifica"_s;
    QTest::newRow("check of nothing") << QStringList{u"--verifica"_s} << u"[] 0 aiuto verifica"_s;
    QTest::newRow("language apart") << QStringList{u"--lingua"_s, u"eng"_s, u"a"_s} << u"[a] 0 lingua1"_s;
    QTest::newRow("language joined") << QStringList{u"--lingua=ch2"_s} << u"[] 0 lingua8"_s;
    QTest::newRow("unknown language") << QStringList{u"--lingua"_s, u"xyz"_s} << u"[] 238"_s;
    QTest::newRow("language missing") << QStringList{u"--lingua"_s} << u"[] 238"_s;
    QTest::newRow("json without check") << QStringList{u"--json"_s} << u"[] 238"_s;
    QTest::newRow("unknown option") << QStringList{u"-x"_s} << u"[] 238"_s;
}

void TstRigaComando::arguments()
{
    QFETCH(QStringList, argomenti);
    const RigaComando riga = RigaComando::Leggi(argomenti);
    QString letto = u"[%1] %2"_s.arg(riga.pagine.join(u',')).arg(riga.errore);
    letto += (riga.aiuto ? u" aiuto"_s : QString()) + (riga.verifica ? u" verifica"_s : QString()) +
             (riga.lingua ? u" lingua%1"_s.arg(*riga.lingua) : QString());
    QTEST(letto, "letto");
}

void TstRigaComando::helpAndMistakes()
{
    const Esito aiuto = Esegui({u"--lingua"_s, u"eng"_s, u"--help"_s});
    QCOMPARE(aiuto.stato, 0);
    for (const QString &opzione : {u"--help"_s, u"--version"_s, u"--verifica"_s, u"--lingua"_s, u"--json"_s})
        QVERIFY2(aiuto.uscita.contains(opzione), qPrintable(opzione));
    QVERIFY(Esegui({u"--version"_s}).uscita.startsWith(u"Velloro "_s));
    const Esito sbagliato = Esegui({u"--foo"_s});
    QCOMPARE(sbagliato.stato, 2);
    QVERIFY(sbagliato.uscita.isEmpty() && sbagliato.errori.contains(u"--foo"_s));
    // A message without a place for the mistake stands alone.
    const Esito due = Esegui({u"--lingua=eng"_s, u"a.html"_s, u"b.html"_s});
    QCOMPARE(due.stato, 2);
    QCOMPARE(due.errori, u"Only one page can be opened at a time.\n"_s);
}

void TstRigaComando::userSettings()
{
    QTemporaryDir casa;
    QVERIFY(QDir(casa.path()).mkdir(u"velloro"_s));
    Scrivi(casa.filePath(u"velloro/GlobalSetting.dat"_s), "Language = 1\n");
    const QByteArray pagina = "<HTML><P foo=1>";
    const QString inglese = Esegui({u"--lingua=eng"_s, u"--verifica"_s, u"-"_s}, pagina).uscita;
    const QString italiano = Esegui({u"--lingua=ita"_s, u"--verifica"_s, u"-"_s}, pagina).uscita;
    QCOMPARE(Esegui({u"--verifica"_s, u"-"_s}, pagina, casa.path()).uscita, inglese);
    QCOMPARE(Esegui({u"--lingua=ita"_s, u"--verifica"_s, u"-"_s}, pagina, casa.path()).uscita, italiano);
    QCOMPARE(Esegui({u"--verifica"_s, u"-"_s}, pagina).uscita, italiano);
    QVERIFY(inglese != italiano && inglese.contains(u"'foo'"_s));
}

void TstRigaComando::checksFiles()
{
    QTemporaryDir cartella;
    const QString buona = cartella.filePath(u"buona.html"_s);
    const QString cattiva = cartella.filePath(u"cattiva.html"_s);
    Scrivi(buona, "<HTML>\r\n<BODY>\r\n<P align=\"left\">x</P>\r\n");
    Scrivi(cattiva, "<HTML>\n<BODY>\n<FOO>\n<P align=\"storto\" foo=1>\n");
    const Esito bene = Esegui({u"--verifica"_s, buona});
    QCOMPARE(bene.uscita, QString());
    QCOMPARE(bene.errori, QString());
    QCOMPARE(bene.stato, 0);

    const Esito male = Esegui({u"--lingua"_s, u"ita"_s, u"--verifica"_s, buona, cattiva});
    QCOMPARE(male.stato, 1);
    const QStringList righe = male.uscita.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(righe.size(), 4);
    QCOMPARE(righe[0], cattiva + u":3: Il tag 'FOO' non esiste."_s);
    QVERIFY(righe[1].startsWith(cattiva + u":4: "_s) && righe[1].contains(u"'storto'"_s));
    QVERIFY(righe[2].startsWith(cattiva + u":4: "_s) && righe[2].contains(u"'foo'"_s));

    // What cannot be read is told apart; the others are checked all the same.
    const Esito misto = Esegui({u"--verifica"_s, cartella.path(), cartella.filePath(u"niente"_s), cattiva});
    QCOMPARE(misto.stato, 2);
    QCOMPARE(misto.errori.count(u'\n'), 2);
    QCOMPARE(misto.uscita.count(u'\n'), 4);
    QCOMPARE(Esegui({u"--verifica"_s, u"-"_s}, "<P>\r\n<FOO>").uscita, u"-:2: Il tag 'FOO' non esiste.\n"_s);
}

void TstRigaComando::checksInEveryEncoding()
{
    const QByteArray utf16 =
        QByteArray("\xFF\xFE") + QByteArray(reinterpret_cast<const char *>(u"<P>\r\n<F\u00d2O>"), 20);
    QCOMPARE(Esegui({u"--lingua=ita"_s, u"--verifica"_s, u"-"_s}, utf16).uscita,
             u"-:2: Il tag 'F\u00d2O' non esiste.\n"_s);
}

void TstRigaComando::json()
{
    const Esito esito = Esegui({u"--json"_s, u"--verifica"_s, u"-"_s}, "<HTML>\n <FOO>\n");
    QCOMPARE(esito.stato, 1);
    const QJsonArray oggetti = QJsonDocument::fromJson(esito.uscita.toUtf8()).array();
    QCOMPARE(oggetti.size(), 1);
    const QJsonObject oggetto = oggetti[0].toObject();
    QCOMPARE(oggetto[u"file"_s].toString(), u"-"_s);
    QCOMPARE(oggetto[u"line"_s].toInt(), 2);
    QCOMPARE(oggetto[u"position"_s].toInt(), 10);
    QCOMPARE(oggetto[u"type"_s].toInt(), 1);
    QCOMPARE(oggetto[u"name"_s].toString(), u"FOO"_s);
    QCOMPARE(Esegui({u"--json"_s, u"--verifica"_s, u"-"_s}, "<P>").uscita.trimmed(), u"[\n]"_s);
}

QTEST_GUILESS_MAIN(TstRigaComando)
#include "tst_rigacomando.moc"
