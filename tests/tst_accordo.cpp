// The check with the real knowledge base: faults judged by hand, and what the results window lists for an opened page
// beside what the command line prints for the same file.

#include "AspettiScritti.h"
#include "BaseDiProva.h"
#include "ProgrammaDiProva.h"

#include "app/PaginaCorrente.h"
#include "html/FrmControlloSintassi.h"
#include "html/ModuloTag.h"
#include "html/Risultati.h"
#include "html/VerificaSintassi.h"
#include "platform/NomiFile.h"

#include <QDirIterator>
#include <QProcess>

using namespace Qt::StringLiterals;

class TstAccordo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ProgrammaDiProva::Prepara(m_cartella); }

    // What each unit of the second line looks like: t tag, a attribute, v value, c comment, C comment and underlined.
    void faultsByHand_data()
    {
        QTest::addColumn<QString>("riga");
        QTest::addColumn<QString>("aspetto");
        QTest::addColumn<QString>("riscontri"); ///< position and message
        const auto riga = [](const char *nome, const QString &testo, const QString &aspetto, const QString &riscontri) {
            QTest::newRow(nome) << testo << aspetto << riscontri;
        };
        riga(
            "unknown attribute and so its value", u"<p nowhere=1>"_s, u".ttCCCCCCC.C."_s,
            u"6 2: Attributo 'nowhere' non previsto per questo tag.|14 2: Valore '1' non ammesso per questo attributo."_s);
        riga("addresses are not looked at", u"<a href=nowhere title=x>"_s, u".tt.............aaaaa.v."_s, {});
        riga("comment up to its first bracket", u"<!-- a> <!--b-->"_s, u"cccccc..ccccccc."_s, {});
        riga("scripts", u"<script>a<foo></SCRIPT><foo>"_s, u".ttttttt.......ttttttt..CCCC"_s,
             u"27 2: Il tag 'foo' non esiste."_s);
        riga("quotes never closed", u"<p align=\"left>x</p>"_s, u".ttaaaaa.........tt."_s, {});
        riga("tag never closed", u"a <p align=left"_s, u"...ttaaaaa.CCC."_s,
             u"14 2: Valore 'lef' non ammesso per questo attributo."_s);
    }

    void faultsByHand()
    {
        QFETCH(QString, riga);
        QFETCH(QString, aspetto);
        ModuloDichiarazioni::Stato() = {};
        ModuloVerificaSintassi::AzzeraRisultati();
        QVERIFY(ModuloTag::CaricaTag(m_cartella.filePath(u"tag html.db"_s)).Riuscito());
        RichTextBox editor;
        editor.ImpostaText(u"x\r\n"_s + riga);
        ModuloVerificaSintassi::VerificaSintassi(editor, 1, true);
        QCOMPARE(AspettiScritti(editor, 3), aspetto);
        QStringList riscontri;
        const auto &risultati = ModuloVerificaSintassi::ArrayRisultati();
        for (qsizetype i = 1; i < risultati.size(); ++i)
            riscontri += QString::number(risultati[i].Posizione) + u' ' + risultati[i].Testo;
        QTEST(riscontri.join(u'|'), "riscontri");
    }

    void windowAndCommandLineAgree()
    {
        FrmStart finestra;
        ProgrammaDiProva::Avvia(finestra);
        auto *pagina = finestra.findChild<PaginaCorrente *>();
        const QStringList file = Pagine();
        QVERIFY(file.size() > 60);

        QStringList nellaFinestra;
        for (const QString &percorso : file) {
            QVERIFY2(pagina->Apri(percorso), qPrintable(percorso));
            const FrmControlloSintassi *risultati = FrmControlloSintassi::Aperta();
            for (int i = 0; i < risultati->ListCount(); ++i)
                nellaFinestra += percorso + u':' + risultati->List(i);
        }

        QProcess programma;
        programma.start(QStringLiteral(CARTELLA_PROGRAMMA "/velloro"), QStringList{u"--verifica"_s} + file);
        QVERIFY(programma.waitForFinished(100'000));
        QCOMPARE(programma.exitCode(), 1);
        QStringList daRiga = QString::fromUtf8(programma.readAllStandardOutput()).split(u'\n');
        QCOMPARE(daRiga.takeLast(), QString());
        qInfo("%lld pages, %lld findings", qlonglong(file.size()), qlonglong(daRiga.size()));
        // The list leaves out the line ends of a name, which the command line writes, and tags with which a page
        // begins.
        daRiga.replaceInStrings(u"\\r"_s, QString()).replaceInStrings(u"\\n"_s, QString());
        qsizetype dove = 0;
        for (const QString &riga : nellaFinestra) {
            dove = daRiga.indexOf(NomiFile::Leggibile(riga), dove);
            QVERIFY2(dove >= 0, qPrintable(riga));
            ++dove;
        }
        QVERIFY(nellaFinestra.size() > daRiga.size() * 8 / 10);
    }

private:
    /// Pages of the program, pages made at random, and those below the folder that VELLORO_PAGINE names.
    QStringList Pagine() const
    {
        QStringList pagine;
        const auto scrivi = [&](const QString &nome, const QByteArray &byte) {
            pagine += m_cartella.filePath(nome);
            Aiuti::Scrivi(pagine.last(), byte);
        };
        QRandomGenerator caso(31);
        for (int i = 0; i < 60; ++i) {
            const QString testo = BaseDiProva::Pagina(caso, caso.bounded(400));
            scrivi(u"a caso %1.html"_s.arg(i),
                   i % 3 == 0 ? "\xFF\xFE" + QByteArray(reinterpret_cast<const char *>(testo.utf16()), testo.size() * 2)
                              : testo.toUtf8());
        }
        scrivi(u"gb2312.html"_s, "<meta charset=gb2312>\n<p \xCD\xF8=\"\xD2\xB3\">\r<\xCD\xF8>");
        scrivi(u"latino.html"_s, "x<p align=citt\xE0>\n<cit\xE0>");
        QStringList cartelle{QStringLiteral(CARTELLA_SORGENTI "/modelli"), QStringLiteral(CARTELLA_SORGENTI "/docs")};
        if (qEnvironmentVariableIsSet("VELLORO_PAGINE"))
            cartelle += qEnvironmentVariable("VELLORO_PAGINE");
        for (const QString &cartella : cartelle) {
            QDirIterator file(cartella, {u"*.htm*"_s}, QDir::Files, QDirIterator::Subdirectories);
            while (file.hasNext())
                pagine += file.next();
        }
        return pagine;
    }

    QTemporaryDir m_cartella;
};

QTEST_MAIN(TstAccordo)
#include "tst_accordo.moc"
