#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "Colonne.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace ModuloPrincipale;

namespace
{

void scrivi(const QTemporaryDir &cartella, const QString &nome, const QByteArray &contenuto)
{
    QFile file(cartella.filePath(nome));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contenuto), contenuto.size());
}

} // namespace

class TstTabellaLingua : public QObject
{
    Q_OBJECT

private slots:
    void languageSetting_data()
    {
        Colonne<QString, QString>({"impostazioni", "file"});
        const QString ita = u"Editor_Ita.dat"_s, eng = u"Editor_Eng.dat"_s, chi = u"Editor_Chi.dat"_s,
                      ch2 = u"Editor_Ch2.dat"_s;
        QTest::newRow("0") << u"Language = 0"_s << ita;
        QTest::newRow("any other number") << u"Language = 3"_s << eng;
        QTest::newRow("a negative one") << u"Language = -1"_s << eng;
        QTest::newRow("no such line") << u"Lang = 5\r\n# Language = 8\r\n"_s << ita;
        QTest::newRow("name in lower case") << u"language = 5"_s << ita;
        QTest::newRow("last line wins") << u"Language = 8\nLanguage = 0\n"_s << ita;
        QTest::newRow("other lines after it") << u"Language = 8\r\nFont = 5\r\n"_s << ch2;
        QTest::newRow("CR line ends") << u"Font = 5\rLanguage = 8\rX"_s << ch2;
        QTest::newRow("nothing at the twelfth character") << u"Language=5"_s << ita;
        QTest::newRow("whatever stands before the number") << u"Languagexyz8"_s << ch2;
        QTest::newRow("blanks and tabs inside the number") << u"Language = 0 \t0 8"_s << ch2;
        QTest::newRow("stops at the first other character") << u"Language = 8;5"_s << ch2;
        QTest::newRow("fraction below a half") << u"Language = 5.49"_s << chi;
        QTest::newRow("half goes to the even number below") << u"Language = 8.5"_s << ch2;
        QTest::newRow("half goes to zero") << u"Language = .5"_s << ita;
        QTest::newRow("comma ends the number") << u"Language = 8,9"_s << ch2;
        QTest::newRow("negative exponent") << u"Language = 800 e - 2"_s << ch2;
        QTest::newRow("two signs are no number") << u"Language = +-8"_s << ita;
        QTest::newRow("256 does not wrap round to 0") << u"Language = 256"_s << eng;
        QTest::newRow("negative") << u"Language = -5"_s << eng;
        QTest::newRow("negative, rounds to zero") << u"Language = -0.5"_s << ita;
        QTest::newRow("beyond every number type") << u"Language = 5e99999999999999999999"_s << eng;
    }

    void languageSetting()
    {
        QFETCH(const QString, impostazioni);
        QTEST(FileLingua(LinguaDaImpostazioni(impostazioni)), "file");
    }

    void languageLine_data()
    {
        Colonne<QString, QString>({"riga", "testo"});
        QTest::newRow("text from the sixth character") << u"0001=Apri file"_s << u"Apri file"_s;
        QTest::newRow("first five characters are not read") << u"=%!%=Apri"_s << u"Apri"_s;
        QTest::newRow("cut at the marker") << u"0002=Salva=%!%=commento"_s << u"Salva"_s;
        QTest::newRow("begins with the marker") << u"0002==%!%=resto"_s << u"=%!%=resto"_s;
        QTest::newRow("marker across the fifth character") << u"000=%!%=x"_s << u"!%=x"_s;
        QTest::newRow("half a marker") << u"0002=a=%!%"_s << u"a=%!%"_s;
        QTest::newRow("shorter") << u"00"_s << QString();
        QTest::newRow("empty") << QString() << QString();
    }

    void languageLine()
    {
        QFETCH(const QString, riga);
        QTEST(TestoDaRiga(riga).toString(), "testo");
    }

    void userSettings_data()
    {
        Colonne<QByteArray, quint8>({"contenuto", "codice"});
        QTest::newRow("language of the user wins") << "Language = 8"_ba << LinguaCineseTrad;
        QTest::newRow("Italian is a choice too") << "Language = 0"_ba << LinguaItaliano;
        QTest::newRow("empty file") << ""_ba << LinguaCinese;
        QTest::newRow("sets no language") << "# Language = 8\nFont = 8\n"_ba << LinguaCinese;
        QTest::newRow("no text at all") << QByteArray("\xFF\0\x80", 3) << LinguaCinese;
    }

    void userSettings()
    {
        QFETCH(const QByteArray, contenuto);
        QFETCH(const quint8, codice);
        QTemporaryDir cartella;
        for (const Lingua &lingua : Lingue())
            scrivi(cartella, lingua.file.toString(), "0001=testo\n");
        scrivi(cartella, u"GlobalSetting.dat"_s, "Language = 5");
        scrivi(cartella, u"utente.dat"_s, contenuto);
        const QString utente = cartella.filePath(u"utente.dat"_s);
        QCOMPARE(CaricaImpostazioni(cartella.path(), utente).errore, QString());
        QCOMPARE(LinguaCaricata(), codice);
        // A folder, or nothing at all, in its place.
        QCOMPARE(CaricaImpostazioni(cartella.path(), cartella.path()).errore, QString());
        QCOMPARE(LinguaCaricata(), LinguaCinese);
        QCOMPARE(CaricaImpostazioni(cartella.path(), utente + u'x').errore, QString());
        QCOMPARE(LinguaCaricata(), LinguaCinese);
        // The user's file does not stand in for the program's own.
        QVERIFY(QFile::remove(cartella.filePath(u"GlobalSetting.dat"_s)));
        QCOMPARE(CaricaImpostazioni(cartella.path(), utente).errore, u"File GlobalSetting.dat missing."_s);
    }

    void fileBytes_data()
    {
        // testi: entries 1, 2, 3
        Colonne<QByteArray, QStringList>({"file", "testi"});
        QTest::newRow("entry number is the line number")
            << "9999=uno\r\n0001=due\r\n0001=tre\r\n"_ba << QStringList{u"uno"_s, u"due"_s, u"tre"_s};
        QTest::newRow("no line end at the end") << "0001=uno\n0002=due"_ba << QStringList{u"uno"_s, u"due"_s, u""_s};
        QTest::newRow("mixed line ends, empty lines count")
            << "0001=uno\r\r\n0003=tre\n"_ba << QStringList{u"uno"_s, u""_s, u"tre"_s};
        QTest::newRow("byte order mark is no character") << "\xEF\xBB\xBF"
                                                            "0001=uno"_ba
                                                         << QStringList{u"uno"_s, u""_s, u""_s};
        QTest::newRow("beyond ASCII") << "0001=è 保存 😀\n"_ba << QStringList{u"è 保存 😀"_s, u""_s, u""_s};
        QTest::newRow("NUL is a character like any other")
            << QByteArray("0001=a\0b\n0002=due", 17) << QStringList{QStringLiteral("a\0b"), u"due"_s, u""_s};
        QTest::newRow("broken UTF-8 spoils its own character only") << "0001=a\xFF"
                                                                       "b\n0002=due"_ba
                                                                    << QStringList{u"a\uFFFDb"_s, u"due"_s, u""_s};
        QTest::newRow("empty file") << QByteArray() << QStringList{u""_s, u""_s, u""_s};
    }

    void fileBytes()
    {
        QFETCH(const QByteArray, file);
        QTemporaryDir cartella;
        scrivi(cartella, u"Editor_Eng.dat"_s, file);
        QCOMPARE(CaricaLingua(cartella.path(), LinguaInglese).errore, QString());
        QTEST((QStringList{Messaggio(1), Messaggio(2), Messaggio(3)}), "testi");
        QCOMPARE(Messaggio(0), QString());
        QCOMPARE(Messaggio(4), QString());
        QCOMPARE(Messaggio(1000), QString());
    }

    void missingFiles()
    {
        QTemporaryDir cartella;
        scrivi(cartella, u"Editor_Eng.dat"_s, "0001=New");
        QVERIFY(CaricaLingua(cartella.path(), LinguaInglese).Riuscito());
        QCOMPARE(CaricaImpostazioni(cartella.path()).errore, u"File GlobalSetting.dat missing."_s);
        QCOMPARE(Messaggio(1), QString());

        scrivi(cartella, u"GlobalSetting.dat"_s, "Language = 5");
        const QString mancante = u"File "_s + cartella.path() + u"/Editor_Chi.dat missing."_s;
        QCOMPARE(CaricaImpostazioni(cartella.path()).errore, mancante);
        QCOMPARE(CaricaImpostazioni(cartella.path() + u'/').errore, mancante);

        QVERIFY(QDir(cartella.path()).mkdir(u"Editor_Chi.dat"_s));
        QCOMPARE(CaricaImpostazioni(cartella.path()).errore, mancante); // a folder holds no texts

        QVERIFY(QFile::remove(cartella.filePath(u"GlobalSetting.dat"_s)));
        QCOMPARE(::mkfifo(QFile::encodeName(cartella.filePath(u"GlobalSetting.dat"_s)).constData(), 0600), 0);
        QCOMPARE(CaricaImpostazioni(cartella.path()).errore, u"File GlobalSetting.dat missing."_s); // and does not wait
    }

    void linesBeyondTheTable()
    {
        QTemporaryDir cartella;
        QByteArray righe;
        for (int numero = 1; numero <= 1005; ++numero)
            righe += "0000=" + QByteArray::number(numero) + "\r\n";
        scrivi(cartella, u"Editor_Eng.dat"_s, righe);
        QCOMPARE(CaricaLingua(cartella.path(), LinguaInglese).errore, QString());
        QCOMPARE(Messaggio(0), QString());
        QCOMPARE(Messaggio(999), u"999"_s);
        QCOMPARE(Messaggio(1000), u"1000"_s);
    }

    void hugeInput_data()
    {
        constexpr int decimila = 10'000'000;
        // lunghezza: of entry 1
        Colonne<QByteArray, QByteArray, qsizetype>({"impostazioni", "lingua", "lunghezza"});
        QTest::newRow("one line") << "Language = 3"_ba << QByteArray(decimila, 'x') << qsizetype(decimila - 5);
        QTest::newRow("almost markers") << "Language = 3"_ba
                                        << "0001=" + QByteArray("=%!%").repeated(decimila / 4) << qsizetype(decimila);
        QTest::newRow("markers") << "Language = 3"_ba
                                 << "0001=x" + QByteArray("=%!%=").repeated(decimila / 5) << qsizetype(1);
        QTest::newRow("line ends") << QByteArray(decimila, '\r') + "\nLanguage = 3" << QByteArray(decimila, '\n')
                                   << qsizetype(0);
        QTest::newRow("zeros and a power of ten that takes them back")
            << "Language = ." + QByteArray(decimila, '0') + "3E10000001"
            << "0001=x"_ba << qsizetype(1);
        QTest::newRow("no UTF-8 at all") << "Language = 3"_ba << QByteArray(decimila, '\x80')
                                         << qsizetype(decimila - 5);
    }

    void hugeInput()
    {
        QFETCH(const QByteArray, impostazioni);
        QFETCH(const QByteArray, lingua);
        QTemporaryDir cartella;
        scrivi(cartella, u"GlobalSetting.dat"_s, impostazioni);
        scrivi(cartella, u"Editor_Eng.dat"_s, lingua);
        QCOMPARE(CaricaImpostazioni(cartella.path()).errore, QString());
        QTEST(Messaggio(1).size(), "lunghezza");
    }

    void programFolder()
    {
        using namespace ModuloDichiarazioni;
        QCOMPARE(PercorsoIn(u"/opt/velloro"_s, u"test.html"), u"/opt/velloro/test.html"_s);
        QCOMPARE(PercorsoIn(u"/"_s, u"test.html"), u"/test.html"_s);
        ImpostaCartellaProgramma(u"/altrove"_s);
        QCOMPARE(CartellaProgramma(), u"/altrove"_s);
        ImpostaCartellaProgramma({});
        QCOMPARE(CartellaProgramma(), QCoreApplication::applicationDirPath());
    }
};

QTEST_GUILESS_MAIN(TstTabellaLingua)
#include "tst_tabellalingua.moc"
