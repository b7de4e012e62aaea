#include "Aiuti.h"
#include "platform/File_System.h"
#include "platform/Testi.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using File_System::Stile;

class TstFileSystem : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(m_cartella.path()));
        for (const QString &nome :
             {u"a.html"_s, u"st*r.txt"_s, u"[x].txt"_s, u"fine "_s, u".nascosto"_s, u"ftp.html"_s, u"con\\barra"_s})
            Aiuti::Scrivi(nome, {});
        QVERIFY(QDir().mkpath(u"sotto"_s));
        QVERIFY(QFile::link(u"manca"_s, u"pendente"_s));
    }

    void pathKind()
    {
        for (const auto &[percorso, windows, posix] : {std::tuple(QString(), -1, -1),
                                                       {u"\\\\server\\share\\a.htm"_s, 1, 1},
                                                       {u"C:\\x.htm"_s, 0, 0},
                                                       {u"/pub/x"_s, 2, 0},
                                                       {u"fTpcartella\\x"_s, 2, 2}}) {
            QCOMPARE(int(File_System::TipoPercorso(percorso, Stile::Windows)), windows);
            QCOMPARE(int(File_System::TipoPercorso(percorso, Stile::Posix)), posix);
        }
    }

    void fileName()
    {
        for (const auto &[percorso, windows, posix] :
             {std::tuple(u"C:\\siti\\prova.htm"_s, u"prova.htm"_s, u"C:\\siti\\prova.htm"_s),
              {u"/pub/x.htm"_s, u"x.htm"_s, u"x.htm"_s},
              {u"C:/x/y"_s, u"C:/x/y"_s, u"y"_s},
              {u"C:\\siti\\"_s, u""_s, u"C:\\siti\\"_s}}) {
            QCOMPARE(File_System::NomeFile(percorso, Stile::Windows), windows);
            QCOMPARE(File_System::NomeFile(percorso, Stile::Posix), posix);
        }
    }

    void exists()
    {
        const QString qui = QDir::tempPath();
        for (const auto &[percorso, windows, posix] : {std::tuple(QString(), false, false),
                                                       {qui, false, true}, // an absolute path is FTP on Windows
                                                       {qui + u'/', false, true},
                                                       {u"pendente"_s, false, false}, // a broken link
                                                       {u"ftp.html"_s, false, false},
                                                       {u"A.H*"_s, true, false},
                                                       {u"*.*ml"_s, true, true},
                                                       {u"?.html"_s, true, true},
                                                       {u"a.html?"_s, false, false}, // a question mark is not none
                                                       {u"sotto/*.*"_s, true, false},
                                                       {u"[ab].html"_s, false, false},
                                                       {u"[x].txt"_s, true, true},
                                                       {u"st*r.txt"_s, true, true},
                                                       {u"fin? "_s, true, true},
                                                       {u"con\\barra"_s, false, true},
                                                       {QString(2000, u'*') + u"0"_s, false, false}}) {
            QVERIFY2(File_System::FileEsiste(percorso, Stile::Windows) == windows, qPrintable(percorso.left(30)));
            QVERIFY2(File_System::FileEsiste(percorso, Stile::Posix) == posix, qPrintable(percorso.left(30)));
        }
    }

    void searchStepsThroughTheMatches()
    {
        QString nome;
        File_System::HandleRicerca handle;
        File_System::DatiRicerca dati;
        QStringList trovati;
        File_System::CercaFile(nome, handle, dati, m_cartella.path() + u"/*.*"_s, true, Stile::Posix);
        for (; !nome.isEmpty(); File_System::CercaFile(nome, handle, dati, {}, true, Stile::Posix)) {
            trovati << nome;
            QCOMPARE(dati.nome, nome);
            QCOMPARE(bool(dati.attributi & File_System::DatiRicerca::Cartella), nome == u"sotto");
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

    void firstPart()
    {
        QString testo = u"a\r\nb\r\nc"_s;
        QCOMPARE(ModuloPrincipale::EstraiPrimo(testo, u"|"), QString());
        QCOMPARE(ModuloPrincipale::EstraiPrimo(testo, u"\r\n"), u"a"_s);
        QCOMPARE(testo, u"b\r\nc"_s);
    }

private:
    QTemporaryDir m_cartella;
};

QTEST_GUILESS_MAIN(TstFileSystem)
#include "tst_file_system.moc"
