#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include "Aiuti.h"
#include "app/ModuloDichiarazioni.h"
#include "editor/Recupero.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int Mai = 3'600'000; // a pause that does not end during a test

QStringList File(const QTemporaryDir &cartella)
{
    return QDir(cartella.path()).entryList({u"*.recupero*"_s}, QDir::Files | QDir::Hidden);
}

} // namespace

namespace
{

// The program that gets killed: writes one page after the other and says which.
int Figlio(const QString &cartella)
{
    RichTextBox pad;
    Recupero recupero(&pad, cartella, Mai);
    recupero.ImpostaCodifica(u"windows-1252"_s);
    ModuloDichiarazioni::Stato().FileCorrente = u"/tmp/pagina è.html"_s;
    QTextStream uscita(stdout);
    for (int i = 0; i < 100'000; ++i) {
        pad.ImpostaText(u"%1\n%2\n%1"_s.arg(i).arg(QString(200'000, QChar(0xD83D))));
        recupero.ScriviOra();
        uscita << i << Qt::endl;
    }
    return 0;
}

} // namespace

class TstRecupero : public QObject
{
    Q_OBJECT

private slots:
    void init() { ModuloDichiarazioni::Stato() = {}; }
    void writesWhatIsNotSaved()
    {
        QTemporaryDir cartella;
        RichTextBox pad;
        pad.ImpostaText(u"come in"_s);
        Recupero recupero(&pad, cartella.path(), 0);
        pad.Sostituisci(0, 0, u"prima "_s);
        QTRY_COMPARE(File(cartella).size(), 1);
        // Undone by hand: the page is as it was saved.
        ModuloDichiarazioni::Stato().TestoSalvato = u"come in"_s;
        pad.Sostituisci(0, 6, QString());
        QTRY_COMPARE(File(cartella).size(), 0);
        // A change of letter case alone would be lost too.
        pad.Sostituisci(0, 1, u"C"_s);
        QTRY_COMPARE(File(cartella).size(), 1);
        // Saved, and then undone to the text that it was opened with: that is not what the file holds now.
        recupero.Salvata();
        QTRY_COMPARE(File(cartella).size(), 0);
        pad.Sostituisci(0, 1, u"c"_s);
        QTRY_COMPARE(File(cartella).size(), 1);
    }

    void goesWhenClosed()
    {
        QTemporaryDir cartella;
        RichTextBox pad;
        {
            Recupero recupero(&pad, cartella.path(), Mai);
            recupero.ScriviOra();
            QCOMPARE(File(cartella).size(), 0);
            pad.ImpostaText(u"a"_s);
            recupero.ScriviOra();
            QCOMPARE(File(cartella).size(), 1);
        }
        QVERIFY(QDir(cartella.path()).isEmpty());
    }

    void runningProgramsKeepTheirs()
    {
        QTemporaryDir cartella;
        RichTextBox uno;
        RichTextBox due;
        Recupero recuperoUno(&uno, cartella.path(), Mai);
        Recupero recuperoDue(&due, cartella.path(), Mai);
        uno.ImpostaText(u"1"_s);
        due.ImpostaText(u"2"_s);
        recuperoUno.ScriviOra();
        recuperoDue.ScriviOra();
        QCOMPARE(File(cartella).size(), 2);
        QVERIFY(Recupero::DaOffrire(cartella.path()).empty());
        recuperoUno.Salvata();
        QTRY_COMPARE(File(cartella).size(), 1);
    }

    void killedWhileWriting()
    {
        QTemporaryDir cartella;
        for (int volta = 0; volta < 8; ++volta) {
            QProcess figlio;
            figlio.start(QCoreApplication::applicationFilePath(), {u"--figlio"_s, cartella.path()});
            int scritta = -1;
            while (scritta < volta && figlio.waitForReadyRead()) {
                while (figlio.canReadLine())
                    scritta = figlio.readLine().trimmed().toInt();
            }
            QVERIFY(scritta >= volta);
            figlio.kill();
            QVERIFY(figlio.waitForFinished());

            auto voci = Recupero::DaOffrire(cartella.path());
            QCOMPARE(voci.size(), size_t(1));
            QCOMPARE(File(cartella).size(), 1);
            // While it is offered here, a program started beside does not offer it.
            QVERIFY(Recupero::DaOffrire(cartella.path()).empty());
            const auto pagina = Recupero::Leggi(voci.front());
            QVERIFY(pagina);
            QCOMPARE(pagina->FileCorrente, u"/tmp/pagina è.html"_s);
            QCOMPARE(pagina->codifica, u"windows-1252"_s);
            QVERIFY(pagina->quando.isValid() && pagina->quando <= QDateTime::currentDateTime());
            QCOMPARE(voci.front().FileCorrente, pagina->FileCorrente);
            // Whole, lone halves and all, and no older than what was known to be written.
            const QStringList parti = pagina->testo.split(u'\n');
            QCOMPARE(parti.size(), 3);
            QVERIFY(parti[0].toInt() >= scritta);
            QCOMPARE(parti[1], QString(200'000, QChar(0xD83D)));
            QCOMPARE(parti[2], parti[0]);
            voci.clear();
            voci = Recupero::DaOffrire(cartella.path());
            QCOMPARE(voci.size(), size_t(1));
            Recupero::Scarta(std::move(voci.front()));
            voci.clear();
            QVERIFY(QDir(cartella.path()).isEmpty());
        }
    }

    void strangeFiles()
    {
        const QByteArray inizio = "31524C56FFFFFFFFFFFFFFFF0000000000000080FFFFFFFF00"; // no name, no encoding, no time
        for (const auto &[contenuto, buchi, altrui] :
             {std::tuple(QByteArray(), 0LL, true),
              {"<HTML>\r\n<BODY></BODY>\r\n</HTML>", 0, true},
              {QByteArray::fromHex("31524C56FEFFFFFF00"), 0, false}, // a length without an end
              {QByteArray::fromHex("31524C5600000000000000000000000000000000000000"), 0, false},
              {QByteArray::fromHex(inizio + "FFFFFFFF00000000"), 0, false}, // whole but for the mark of its end
              // much seems to be there: a name or a text or the name of a time zone
              {QByteArray::fromHex("31524C56FEFFFFFF"), 6LL << 30, false},
              {QByteArray::fromHex(inizio + "FEFFFFFF"), 6LL << 30, false},
              {QByteArray::fromHex("31524C56FFFFFFFFFFFFFFFF0000000000000000FFFFFFFF03FEFFFFFF"), 6LL << 30, false}}) {
            QTemporaryDir cartella;
            Aiuti::Scrivi(cartella.filePath(u"x.recupero"_s), contenuto);
            QVERIFY(buchi == 0 || QFile::resize(cartella.filePath(u"x.recupero"_s), buchi));
            Aiuti::Scrivi(cartella.filePath(u"x.lock"_s), {});
            Aiuti::Scrivi(cartella.filePath(u"x.recupero.abcdef"_s), {});
            // The lock names nobody who is alive; a page that is not whole goes aside, what is none stays, the remains
            // of writing it go.
            QVERIFY(Recupero::DaOffrire(cartella.path()).empty());
            const QString resta = altrui ? u"x.recupero"_s : u"x.guasto"_s;
            QCOMPARE(QDir(cartella.path()).entryList(QDir::Files), QStringList{resta});
            QVERIFY(Recupero::DaOffrire(cartella.filePath(u"missing"_s)).empty());

            // A folder that cannot be made is no reason to fail.
            RichTextBox pad;
            Recupero recupero(&pad, cartella.filePath(resta + u"/sotto"_s), Mai);
            pad.ImpostaText(u"a"_s);
            recupero.ScriviOra();
            QCOMPARE(pad.Text(), u"a"_s);
        }
    }
};

int main(int argc, char *argv[])
{
    QApplication applicazione(argc, argv);
    const QStringList argomenti = QCoreApplication::arguments();
    if (argomenti.size() == 3 && argomenti[1] == u"--figlio")
        return Figlio(argomenti[2]);
    TstRecupero prova;
    return QTest::qExec(&prova, argc, argv);
}

#include "tst_recupero.moc"
