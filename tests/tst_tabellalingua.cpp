#include "Aiuti.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace ModuloPrincipale;

class TstTabellaLingua : public QObject
{
    Q_OBJECT

    QTemporaryDir m_cartella;

    void Scrivi(const QString &nome, const QByteArray &byte) { Aiuti::Scrivi(m_cartella.filePath(nome), byte); }
    QString Errore(const QString &utente = {}) { return CaricaImpostazioni(m_cartella.path(), utente).errore; }

private slots:
    void init()
    {
        for (const QString &nome : QDir(m_cartella.path()).entryList(QDir::Files | QDir::System))
            QVERIFY(QFile::remove(m_cartella.filePath(nome)));
    }

    void languageSetting()
    {
        const QString ita = u"Editor_Ita.dat"_s, eng = u"Editor_Eng.dat"_s, ch2 = u"Editor_Ch2.dat"_s;
        for (const auto &[impostazioni, file] :
             {std::pair(u"Language = 3"_s, eng), // any other number
              {u"Lang = 5\r\n# Language = 8\r\nlanguage = 5"_s, ita},
              {u"Language = 0\nLanguage = 8\r\nFont = 5\r\n"_s, ch2}, // the last line wins
              {u"Font = 5\rLanguage = 8\rX"_s, ch2},
              {u"Languagexyz8"_s, ch2}, // the number begins at the twelfth character
              {u"Language = 0 \t0 8;5"_s, ch2},
              {u"Language = 8.5"_s, ch2}, // a half goes to the even number
              {u"Language = 800 e - 2"_s, ch2},
              {u"Language = +-8"_s, ita},
              {u"Language = 256"_s, eng}, // does not wrap round to 0
              {u"Language = -5"_s, eng},
              {u"Language = -0.5"_s, ita},
              {u"Language = 5e99999999999999999999"_s, eng}})
            QVERIFY2(FileLingua(LinguaDaImpostazioni(impostazioni)) == file, qPrintable(impostazioni));
    }

    void languageLine()
    {
        // The first five characters are not read; the marker ends the text, but does not begin it.
        for (const auto &[riga, testo] : {std::pair(u"0002=Salva=%!%=commento"_s, u"Salva"_s),
                                          {u"0002==%!%=resto"_s, u"=%!%=resto"_s},
                                          {u"000=%!%=x"_s, u"!%=x"_s},
                                          {u"0002=a=%!%"_s, u"a=%!%"_s},
                                          {u"00"_s, QString()}})
            QCOMPARE(TestoDaRiga(riga).toString(), testo);
    }

    void userSettings()
    {
        for (const Lingua &lingua : Lingue())
            Scrivi(lingua.file.toString(), "0001=testo\n");
        Scrivi(u"GlobalSetting.dat"_s, "Language = 5");
        const QString utente = m_cartella.filePath(u"utente.dat"_s);
        for (const auto &[contenuto, codice] : {std::pair("Language = 8"_ba, LinguaCineseTrad),
                                                {"Language = 0"_ba, LinguaItaliano},
                                                {"# Language = 8\nFont = 8\n"_ba, LinguaCinese},
                                                {QByteArray("\xFF\0\x80", 3), LinguaCinese}}) {
            Scrivi(u"utente.dat"_s, contenuto);
            QCOMPARE(Errore(utente), QString());
            QCOMPARE(LinguaCaricata(), codice);
        }
        for (const QString &altro : {m_cartella.path(), QString(utente + u'x')}) {
            QCOMPARE(Errore(altro), QString());
            QCOMPARE(LinguaCaricata(), LinguaCinese);
        }
        // The user's file does not stand in for the program's own.
        QVERIFY(QFile::remove(m_cartella.filePath(u"GlobalSetting.dat"_s)));
        QCOMPARE(Errore(utente), u"File GlobalSetting.dat missing."_s);
    }

    void fileBytes()
    {
        // testi: entries 1, 2, 3
        for (const auto &[file, testi] :
             {std::pair("9999=uno\r\n0001=due\r\n0001=tre\r\n"_ba, QStringList{u"uno"_s, u"due"_s, u"tre"_s}),
              {"0001=uno\r\r\n0003=tre"_ba, {u"uno"_s, u""_s, u"tre"_s}}, // empty lines count
              {"\xEF\xBB\xBF"
               "0001=è 😀"_ba,
               {u"è 😀"_s, u""_s, u""_s}},
              {QByteArray("0001=a\0b\n0002=due", 17), {QStringLiteral("a\0b"), u"due"_s, u""_s}},
              {"0001=a\xFF"
               "b\n0002=due"_ba,
               {u"a\uFFFDb"_s, u"due"_s, u""_s}}}) {
            Scrivi(u"Editor_Eng.dat"_s, file);
            QCOMPARE(CaricaLingua(m_cartella.path(), LinguaInglese).errore, QString());
            QCOMPARE((QStringList{Messaggio(1), Messaggio(2), Messaggio(3)}), testi);
            QCOMPARE(Messaggio(4), QString());
        }
    }

    void missingFiles()
    {
        Scrivi(u"Editor_Eng.dat"_s, "0001=New");
        QVERIFY(CaricaLingua(m_cartella.path(), LinguaInglese).Riuscito());
        QCOMPARE(Errore(), u"File GlobalSetting.dat missing."_s);
        QCOMPARE(Messaggio(1), QString());

        Scrivi(u"GlobalSetting.dat"_s, "Language = 5");
        const QString mancante = u"File "_s + m_cartella.path() + u"/Editor_Chi.dat missing."_s;
        QCOMPARE(Errore(), mancante);
        QVERIFY(QDir(m_cartella.path()).mkdir(u"Editor_Chi.dat"_s));
        QCOMPARE(Errore(), mancante); // a folder holds no texts
        QVERIFY(QDir(m_cartella.path()).rmdir(u"Editor_Chi.dat"_s));

        QVERIFY(QFile::remove(m_cartella.filePath(u"GlobalSetting.dat"_s)));
        QCOMPARE(::mkfifo(QFile::encodeName(m_cartella.filePath(u"GlobalSetting.dat"_s)).constData(), 0600), 0);
        QCOMPARE(Errore(), u"File GlobalSetting.dat missing."_s); // and does not wait
    }

    void linesBeyondTheTable()
    {
        QByteArray righe;
        for (int numero = 1; numero <= 1005; ++numero)
            righe += "0000=" + QByteArray::number(numero) + "\r\n";
        Scrivi(u"Editor_Eng.dat"_s, righe);
        QCOMPARE(CaricaLingua(m_cartella.path(), LinguaInglese).errore, QString());
        QCOMPARE(Messaggio(0), QString());
        QCOMPARE(Messaggio(1000), u"1000"_s);
    }

    void hugeInput()
    {
        constexpr int decimila = 10'000'000;
        struct Riga {
            QByteArray impostazioni, lingua;
            qsizetype lunghezza; // of entry 1
        };
        for (const Riga &riga : {Riga{"Language = 3", QByteArray(decimila, '\x80'), decimila - 5},
                                 {"Language = 3", "0001=" + QByteArray("=%!%").repeated(decimila / 4), decimila},
                                 {QByteArray(decimila, '\r') + "\nLanguage = 3", QByteArray(decimila, '\n'), 0},
                                 // Zeros, and a power of ten that takes them back.
                                 {"Language = ." + QByteArray(decimila, '0') + "3E10000001", "0001=x", 1}}) {
            Scrivi(u"GlobalSetting.dat"_s, riga.impostazioni);
            Scrivi(u"Editor_Eng.dat"_s, riga.lingua);
            QCOMPARE(Errore(), QString());
            QCOMPARE(Messaggio(1).size(), riga.lunghezza);
        }
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
