#include "platform/File_System.h"
#include "platform/Testi.h"

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
    void init();
    void pathKind_data();
    void pathKind();
    void fileName_data();
    void fileName();
    void exists_data();
    void exists();
    void searchStepsThroughTheMatches();
    void textUpToZero();
    void firstPart_data();
    void firstPart();

private:
    QTemporaryDir m_cartella;
};

void TstFileSystem::init()
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

void TstFileSystem::pathKind_data()
{
    QTest::addColumn<QString>("percorso");
    QTest::addColumn<int>("windows");
    QTest::addColumn<int>("posix");

    QTest::newRow("empty") << QString() << -1 << -1;
    QTest::newRow("share") << u"\\\\server\\share\\a.htm"_s << 1 << 1;
    QTest::newRow("one backslash") << u"\\x"_s << 0 << 0;
    QTest::newRow("drive") << u"C:\\x.htm"_s << 0 << 0;
    QTest::newRow("relative") << u"pagina.htm"_s << 0 << 0;
    QTest::newRow("slash") << u"/pub/x"_s << 2 << 0;
    QTest::newRow("ftp, whatever follows") << u"ftpcartella\\x"_s << 2 << 2;
    QTest::newRow("ftp in any case") << u"fTp://x/y"_s << 2 << 2;
    QTest::newRow("ftp not at the start") << u"xftp"_s << 0 << 0;
}

void TstFileSystem::pathKind()
{
    QFETCH(QString, percorso);
    QFETCH(int, windows);
    QFETCH(int, posix);
    QCOMPARE(int(File_System::TipoPercorso(percorso, Stile::Windows)), windows);
    QCOMPARE(int(File_System::TipoPercorso(percorso, Stile::Posix)), posix);
}

void TstFileSystem::fileName_data()
{
    QTest::addColumn<QString>("percorso");
    QTest::addColumn<QString>("windows");
    QTest::addColumn<QString>("posix");

    QTest::newRow("drive") << u"C:\\siti\\prova.htm"_s << u"prova.htm"_s << u"C:\\siti\\prova.htm"_s;
    QTest::newRow("slash") << u"/pub/x.htm"_s << u"x.htm"_s << u"x.htm"_s;
    QTest::newRow("bare") << u"prova.htm"_s << u"prova.htm"_s << u"prova.htm"_s;
    QTest::newRow("drive with slashes") << u"C:/x/y"_s << u"C:/x/y"_s << u"y"_s;
    QTest::newRow("ends with its separator") << u"C:\\siti\\"_s << u""_s << u"C:\\siti\\"_s;
    QTest::newRow("empty") << u""_s << u""_s << u""_s;
}

void TstFileSystem::fileName()
{
    QFETCH(QString, percorso);
    QFETCH(QString, windows);
    QFETCH(QString, posix);
    QCOMPARE(File_System::NomeFile(percorso, Stile::Windows), windows);
    QCOMPARE(File_System::NomeFile(percorso, Stile::Posix), posix);
}

void TstFileSystem::exists_data()
{
    QTest::addColumn<QString>("percorso");
    QTest::addColumn<bool>("windows");
    QTest::addColumn<bool>("posix");

    const QString qui = QDir::tempPath();
    QTest::newRow("empty") << QString() << false << false;
    QTest::newRow("file") << u"a.html"_s << true << true;
    QTest::newRow("folder") << u"sotto"_s << true << true;
    QTest::newRow("absolute path is FTP on Windows") << qui << false << true;
    QTest::newRow("folder with its separator") << qui + u'/' << false << true;
    QTest::newRow("root") << u"/"_s << false << true;
    QTest::newRow("missing") << u"manca"_s << false << false;
    QTest::newRow("in a missing folder") << u"manca/*"_s << false << false;
    QTest::newRow("broken link") << u"pendente"_s << false << false;
    QTest::newRow("FTP is never found") << u"ftp.html"_s << false << false;
    QTest::newRow("pattern") << u"a.h*l"_s << true << true;
    QTest::newRow("pattern, other case") << u"A.H*"_s << true << false;
    QTest::newRow("question mark is one character") << u"?.html"_s << true << true;
    QTest::newRow("question mark is not none") << u"a.html?"_s << false << false;
    QTest::newRow("all files") << u"*.*"_s << true << true;
    QTest::newRow("all files of an empty folder") << u"sotto/*.*"_s << true << false;
    QTest::newRow("brackets are no pattern") << u"[ab].html"_s << false << false;
    QTest::newRow("brackets in a name") << u"[x].txt"_s << true << true;
    QTest::newRow("star in a name") << u"st*r.txt"_s << true << true;
    QTest::newRow("blank at the end") << u"fin? "_s << true << true;
    QTest::newRow("backslash in a name") << u"con\\barra"_s << false << true;
    QTest::newRow("many stars") << QString(2000, u'*') + u"0"_s << false << false;
}

void TstFileSystem::exists()
{
    QFETCH(QString, percorso);
    QFETCH(bool, windows);
    QFETCH(bool, posix);
    QCOMPARE(File_System::FileEsiste(percorso, Stile::Windows), windows);
    QCOMPARE(File_System::FileEsiste(percorso, Stile::Posix), posix);
}

void TstFileSystem::searchStepsThroughTheMatches()
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

void TstFileSystem::textUpToZero()
{
    QCOMPARE(ModuloPrincipale::TagliaAlNullo(QString::fromUtf16(u"ab\0c\0", 5)), u"ab"_s);
    QCOMPARE(ModuloPrincipale::TagliaAlNullo(QString::fromUtf16(u"\0c", 2)), QString());
    QCOMPARE(ModuloPrincipale::TagliaAlNullo(u"abc"_s), u"abc"_s);
}

void TstFileSystem::firstPart_data()
{
    QTest::addColumn<QString>("testo");
    QTest::addColumn<QString>("separatore");
    QTest::addColumn<QString>("primo");
    QTest::addColumn<QString>("resto");

    QTest::newRow("one of three") << u"a|b|c"_s << u"|"_s << u"a"_s << u"b|c"_s;
    QTest::newRow("no separator") << u"abc"_s << u"|"_s << QString() << u"abc"_s;
    QTest::newRow("at the start") << u"|b"_s << u"|"_s << QString() << u"b"_s;
    QTest::newRow("at the end") << u"a|"_s << u"|"_s << u"a"_s << QString();
    QTest::newRow("long separator") << u"a\r\nb"_s << u"\r\n"_s << u"a"_s << u"b"_s;
}

void TstFileSystem::firstPart()
{
    QFETCH(QString, testo);
    QFETCH(QString, separatore);
    QFETCH(QString, primo);
    QFETCH(QString, resto);
    QCOMPARE(ModuloPrincipale::EstraiPrimo(testo, separatore), primo);
    QCOMPARE(testo, resto);
}

QTEST_GUILESS_MAIN(TstFileSystem)
#include "tst_file_system.moc"
