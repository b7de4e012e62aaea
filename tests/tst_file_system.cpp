#include "platform/File_System.h"
#include "platform/Testi.h"
#include "Colonne.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using File_System::Stile;

class TstFileSystem : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(QDir::setCurrent(m_cartella.path()));
        for (const QString &nome : {u"a.html"_s, u"b.HTML"_s, u"LEGGIMI"_s, u"st*r.txt"_s, u"[x].txt"_s, u"fine "_s,
                                    u".nascosto"_s, u"ftp.html"_s, u"con\\barra"_s}) {
            QFile file(nome);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(QDir().mkpath(u"sotto"_s));
        QFile::link(u"manca"_s, u"pendente"_s);
    }

    void pathKind_data()
    {
        Colonne<QString, int, int>({"percorso", "windows", "posix"});

        QTest::newRow("empty") << QString() << -1 << -1;
        QTest::newRow("share") << u"\\\\server\\share\\a.htm"_s << 1 << 1;
        QTest::newRow("drive") << u"C:\\x.htm"_s << 0 << 0;
        QTest::newRow("slash") << u"/pub/x"_s << 2 << 0;
        QTest::newRow("ftp, whatever follows") << u"ftpcartella\\x"_s << 2 << 2;
        QTest::newRow("ftp in any case") << u"fTp://x/y"_s << 2 << 2;
    }

    void pathKind()
    {
        QFETCH(QString, percorso);
        QFETCH(int, windows);
        QFETCH(int, posix);
        QCOMPARE(int(File_System::TipoPercorso(percorso, Stile::Windows)), windows);
        QCOMPARE(int(File_System::TipoPercorso(percorso, Stile::Posix)), posix);
    }

    void fileName_data()
    {
        Colonne<QString, QString, QString>({"percorso", "windows", "posix"});

        QTest::newRow("drive") << u"C:\\siti\\prova.htm"_s << u"prova.htm"_s << u"C:\\siti\\prova.htm"_s;
        QTest::newRow("slash") << u"/pub/x.htm"_s << u"x.htm"_s << u"x.htm"_s;
        QTest::newRow("drive with slashes") << u"C:/x/y"_s << u"C:/x/y"_s << u"y"_s;
        QTest::newRow("ends with its separator") << u"C:\\siti\\"_s << u""_s << u"C:\\siti\\"_s;
        QTest::newRow("empty") << u""_s << u""_s << u""_s;
    }

    void fileName()
    {
        QFETCH(QString, percorso);
        QFETCH(QString, windows);
        QFETCH(QString, posix);
        QCOMPARE(File_System::NomeFile(percorso, Stile::Windows), windows);
        QCOMPARE(File_System::NomeFile(percorso, Stile::Posix), posix);
    }

    void exists_data()
    {
        Colonne<QString, bool, bool>({"percorso", "windows", "posix"});

        const QString qui = QDir::tempPath();
        QTest::newRow("empty") << QString() << false << false;
        QTest::newRow("file") << u"a.html"_s << true << true;
        QTest::newRow("absolute path is FTP on Windows") << qui << false << true;
        QTest::newRow("folder with its separator") << qui + u'/' << false << true;
        QTest::newRow("missing") << u"manca"_s << false << false;
        QTest::newRow("broken link") << u"pendente"_s << false << false;
        QTest::newRow("FTP is never found") << u"ftp.html"_s << false << false;
        QTest::newRow("pattern, other case") << u"A.H*"_s << true << false;
        QTest::newRow("question mark is one character") << u"?.html"_s << true << true;
        QTest::newRow("question mark is not none") << u"a.html?"_s << false << false;
        QTest::newRow("all files of an empty folder") << u"sotto/*.*"_s << true << false;
        QTest::newRow("brackets are no pattern") << u"[ab].html"_s << false << false;
        QTest::newRow("brackets in a name") << u"[x].txt"_s << true << true;
        QTest::newRow("star in a name") << u"st*r.txt"_s << true << true;
        QTest::newRow("blank at the end") << u"fin? "_s << true << true;
        QTest::newRow("backslash in a name") << u"con\\barra"_s << false << true;
        QTest::newRow("many stars") << QString(2000, u'*') + u"0"_s << false << false;
    }

    void exists()
    {
        QFETCH(QString, percorso);
        QFETCH(bool, windows);
        QFETCH(bool, posix);
        QCOMPARE(File_System::FileEsiste(percorso, Stile::Windows), windows);
        QCOMPARE(File_System::FileEsiste(percorso, Stile::Posix), posix);
    }

    void searchStepsThroughTheMatches()
    {
        QString nome;
        File_System::HandleRicerca handle;
        File_System::DatiRicerca dati;
        QStringList trovati;
        File_System::CercaFile(nome, handle, dati, m_cartella.path() + u"/*"_s, true, Stile::Posix);
        while (!nome.isEmpty()) {
            trovati << nome;
            QCOMPARE(dati.nome, nome);
            QCOMPARE(bool(dati.attributi & File_System::DatiRicerca::Cartella), nome == u"sotto");
            File_System::CercaFile(nome, handle, dati, {}, true, Stile::Posix);
        }
        QVERIFY(!handle);
        QStringList tutti =
            QDir(m_cartella.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        tutti.sort();
        trovati.sort();
        QCOMPARE(trovati, tutti);

        File_System::CercaFile(nome, handle, dati, u"fine "_s, true, Stile::Windows);
        QCOMPARE(nome, u"fine"_s);
        File_System::ChiudiRicerca(handle);
        File_System::CercaFile(nome, handle, dati, {}, true);
        QCOMPARE(nome, QString());
        // Without the wish for the first match alone the search runs to its end.
        File_System::CercaFile(nome, handle, dati, u"*.html"_s, false, Stile::Posix);
        QCOMPARE(nome, QString());
        QVERIFY(!handle && dati.nome.endsWith(u".html"));
    }

    void firstPart_data()
    {
        Colonne<QString, QString, QString, QString>({"testo", "separatore", "primo", "resto"});

        QTest::newRow("one of three") << u"a|b|c"_s << u"|"_s << u"a"_s << u"b|c"_s;
        QTest::newRow("no separator") << u"abc"_s << u"|"_s << QString() << u"abc"_s;
        QTest::newRow("long separator") << u"a\r\nb"_s << u"\r\n"_s << u"a"_s << u"b"_s;
    }

    void firstPart()
    {
        QFETCH(QString, testo);
        QFETCH(QString, separatore);
        QFETCH(QString, primo);
        QFETCH(QString, resto);
        QCOMPARE(ModuloPrincipale::EstraiPrimo(testo, separatore), primo);
        QCOMPARE(testo, resto);
    }

private:
    QTemporaryDir m_cartella;
};

QTEST_GUILESS_MAIN(TstFileSystem)
#include "tst_file_system.moc"
