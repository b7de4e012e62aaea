#include "app/RigaComando.h"

#include "Aiuti.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <fstream>

using namespace Qt::StringLiterals;
using Aiuti::Scrivi;

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

} // namespace

class TstRigaComando : public QObject
{
    Q_OBJECT

private slots:
    void arguments_data()
    {
        QTest::addColumn<QString>("argomenti");
        QTest::addColumn<QString>("letto");
        const auto riga = [](const char *argomenti, const QString &letto) {
            QTest::newRow(argomenti) << QString::fromLatin1(argomenti) << letto;
        };
        riga("a.html", u"[a.html] 0"_s);
        riga("a b", u"[a,b] 239"_s);
        riga("-- --help", u"[--help] 0"_s);
        riga("--verifica a -", u"[a,-] 0 verifica"_s);
        riga("--verifica", u"[] 401 verifica"_s);
        riga("--verifica --help", u"[] 0 aiuto verifica"_s);
        riga("-platform xcb --session s1 a -style=x -reverse", u"[a] 0"_s);
        riga("FILE:///t/a%20%C3%A8%e8.html#x", u"[/t/a è\xDCE8.html] 0"_s);
        riga("file://localhost/a", u"[/a] 0"_s);
        riga("file://elsewhere/a", u"[file://elsewhere/a] 0"_s);
        riga("file:///a%00b", u"[file:///a%00b] 0"_s);
        riga("--lingua eng a", u"[a] 0 lingua1"_s);
        riga("--lingua=ch2", u"[] 0 lingua8"_s);
        riga("--lingua xyz", u"[] 238"_s);
        riga("--lingua", u"[] 238"_s);
        riga("--json", u"[] 238"_s);
    }

    void arguments()
    {
        QFETCH(QString, argomenti);
        const RigaComando riga = RigaComando::Leggi(argomenti.split(u' '));
        QString letto = u'[' + riga.pagine.join(u',') + u"] "_s + QString::number(riga.errore);
        letto += (riga.aiuto ? u" aiuto"_s : QString()) + (riga.verifica ? u" verifica"_s : QString()) +
                 (riga.lingua ? u" lingua%1"_s.arg(*riga.lingua) : QString());
        QTEST(letto, "letto");
    }

    // What a page or a file name holds is printed on one line and gives the terminal no orders; JSON tells all.
    void printedTextIsHarmless()
    {
        QTemporaryDir cartella;
        const QByteArray nome = "caf\xE9\x1B[31m\n.html";
        {
            std::ofstream file(QFile::encodeName(cartella.path()).toStdString() + '/' + nome.toStdString());
            file << "<foo><p align=\"a\r\nb\"><p \x1B]52;c;aGk=\x07=1 x=\"\xE2\x80\xAE\xC2\x9B\xE2\x80\xA8\">";
        }
        const QString indirizzo = u"file://"_s + cartella.path() + u"/caf%E9%1B[31m%0A.html"_s;
        const Esito righe = Esegui({u"--lingua=eng"_s, u"--verifica"_s, indirizzo});
        QCOMPARE(righe.stato, 1);
        QStringList attese = {u"1: Il tag 'foo' non esiste."_s,
                              u"1: Value 'a\\r\\nb' is not allowed for this attribute."_s,
                              u"2: Attribute '\\x1B]52;c;aGk' does not exist for this tag."_s,
                              u"2: Value '\\x07=1' is not allowed for this attribute."_s,
                              u"2: Attribute 'x' does not exist for this tag."_s,
                              u"2: Value '\\u202E\\x9B\\u2028' is not allowed for this attribute."_s,
                              QString()};
        QStringList trovate = righe.uscita.split(u'\n');
        for (QString &riga : trovate)
            riga.remove(cartella.path() + u"/caf\\xE9\\x1B[31m\\n.html:"_s);
        QCOMPARE(trovate, attese);
        const QByteArray json = Esegui({u"--json"_s, u"--verifica"_s, indirizzo}).uscita.toUtf8();
        QJsonParseError errore;
        const QJsonArray oggetti = QJsonDocument::fromJson(json, &errore).array();
        QCOMPARE(errore.error, QJsonParseError::NoError);
        QCOMPARE(oggetti.size(), 6);
        QCOMPARE(oggetti[1].toObject()[u"name"_s].toString(), u"a\r\nb"_s);
        QVERIFY(oggetti[0].toObject()[u"file"_s].toString().endsWith(u"caf\xDCE9\x1B[31m\n.html"_s));
    }

    void helpAndMistakes()
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

    // An answer that could not be given, or a page that could not be read, is no good answer.
    void brokenPipes_data()
    {
        QTest::addColumn<QString>("comando");
        QTest::addColumn<QString>("errori");
        QTest::newRow("full disk") << u"echo '<FOO>' | %1 --verifica - >/dev/full"_s
                                   << u"Cannot write the output: the disk is full.\n"_s;
        QTest::newRow("nothing found, nothing to write") << u"echo '<P>' | %1 --verifica - >/dev/full"_s << QString();
        QTest::newRow("version on a full disk")
            << u"%1 --version >/dev/full"_s << u"Cannot write the output: the disk is full.\n"_s;
        QTest::newRow("closed output") << u"echo '<FOO>' | %1 --verifica - >&-"_s
                                       << u"Cannot write the output: read or write error.\n"_s;
        QTest::newRow("closed input") << u"%1 --verifica - <&-"_s << u"Cannot read '-': read or write error.\n"_s;
        QTest::newRow("input is a folder") << u"%1 --verifica - </"_s << u"Cannot read '-': read or write error.\n"_s;
    }

    void brokenPipes()
    {
        QFETCH(QString, comando);
        const QString programma = QStringLiteral("'" CARTELLA_PROGRAMMA "/velloro' --lingua=eng");
        QProcess guscio;
        guscio.start(u"/bin/sh"_s, {u"-c"_s, comando.arg(programma)});
        QVERIFY(guscio.waitForFinished(30000));
        QTEST(QString::fromUtf8(guscio.readAllStandardError()), "errori");
        QCOMPARE(guscio.exitCode(), QString::fromLatin1(QTest::currentDataTag()).startsWith(u"nothing") ? 0 : 2);
    }

    void windowWithoutASession()
    {
        const Esito esito = Esegui({u"--lingua=eng"_s, u"x.html"_s});
        QCOMPARE(esito.errori, u"There is no display: velloro opens its window only in a graphical session.\n"_s);
        QCOMPARE(esito.stato, 1);
    }

    void userSettings()
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

    void checksFiles()
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
        const QByteArray utf16("\xFF\xFE<\0P\0>\0\r\0\n\0<\0F\0\xd2\0O\0>\0", 22);
        QCOMPARE(Esegui({u"--lingua=ita"_s, u"--verifica"_s, u"-"_s}, utf16).uscita,
                 u"-:2: Il tag 'FÒO' non esiste.\n"_s);
    }

    void json()
    {
        const Esito esito = Esegui({u"--json"_s, u"--verifica"_s, u"-"_s}, "<HTML>\n <FOO>\n");
        QCOMPARE(esito.stato, 1);
        const QJsonArray oggetti = QJsonDocument::fromJson(esito.uscita.toUtf8()).array();
        QCOMPARE(oggetti.size(), 1);
        QCOMPARE(Esegui({u"--json"_s, u"--verifica"_s, u"-"_s}, "<P>").uscita.trimmed(), u"[\n]"_s);
    }
};

QTEST_GUILESS_MAIN(TstRigaComando)
#include "tst_rigacomando.moc"
