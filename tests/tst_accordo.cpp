// The check with the real knowledge base: faults judged by hand, and what the results window lists for an opened page
// beside what the command line prints for the same file.

#include "BaseDiProva.h"

#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaLingua.h"
#include "dialogs/Modelli.h"
#include "html/FrmControlloSintassi.h"
#include "html/ModuloTag.h"
#include "html/Risultati.h"
#include "html/VerificaSintassi.h"
#include "platform/RichTextBox.h"

#include <QApplication>
#include <QDirIterator>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TstAccordo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void faultsByHand_data();
    void faultsByHand();
    void windowAndCommandLineAgree();

private:
    /// Pages of the program, pages made at random, and those below the folder that VELLORO_PAGINE names.
    [[nodiscard]] QStringList Pagine() const;
    QTemporaryDir m_cartella;
};

void TstAccordo::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication::setQuitOnLastWindowClosed(false);
    Modelli::ImpostaMostra(false);
    QVERIFY(QFile::copy(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db"), m_cartella.filePath(u"tag html.db"_s)));
    ModuloDichiarazioni::ImpostaCartellaProgramma(m_cartella.path());
    QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), 0).Riuscito());
}

// What each unit of the second line looks like: t tag, a attribute, v value, c comment, C comment and underlined.
void TstAccordo::faultsByHand_data()
{
    QTest::addColumn<QString>("riga");
    QTest::addColumn<QString>("aspetto");
    QTest::addColumn<QString>("riscontri"); ///< position and message
    QTest::newRow("nothing wrong") << u"<p align=left>"_s << u".ttaaaaa.vvvv."_s << u""_s;
    QTest::newRow("unknown tag") << u"<foo x=1>"_s << u".CCCC...."_s << u"4 2: Il tag 'foo' non esiste."_s;
    QTest::newRow("unknown attribute and so its value")
        << u"<p nowhere=1>"_s << u".ttCCCCCCC.C."_s
        << u"6 2: Attributo 'nowhere' non previsto per questo tag.|14 2: Valore '1' non ammesso per questo attributo."_s;
    QTest::newRow("value that is not allowed") << u"<td align='middle'>"_s << u".tttaaaaa..CCCCCC.."_s
                                               << u"13 2: Valore 'middle' non ammesso per questo attributo."_s;
    QTest::newRow("addresses are not looked at")
        << u"<a href=nowhere title=x>"_s << u".tt.............aaaaa.v."_s << u""_s;
    QTest::newRow("closing tags") << u"</p></foo>"_s << u".tt..CCCC."_s << u"8 2: Il tag 'foo' non esiste."_s;
    QTest::newRow("comment up to its first bracket") << u"<!-- a> <!--b-->"_s << u"cccccc..ccccccc."_s << u""_s;
    QTest::newRow("declarations") << u"<!DOCTYPE html><?php x=y?><%foo%>"_s << QString(33, u'.') << u""_s;
    QTest::newRow("scripts") << u"<script>a<foo></SCRIPT><foo>"_s << u".ttttttt.......ttttttt..CCCC"_s
                             << u"27 2: Il tag 'foo' non esiste."_s;
    QTest::newRow("slash at the end, names in capitals")
        << u"<br/><IMG SRC=x ALT='a b'>"_s << u".ttt..tttt......aaa..vvv.."_s << u""_s;
    QTest::newRow("quotes never closed") << u"<p align=\"left>x</p>"_s << u".ttaaaaa.........tt."_s << u""_s;
    QTest::newRow("tag never closed") << u"a <p align=left"_s << u"...ttaaaaa.CCC."_s
                                      << u"14 2: Valore 'lef' non ammesso per questo attributo."_s;
}

void TstAccordo::faultsByHand()
{
    QFETCH(QString, riga);
    QFETCH(QString, aspetto);
    ModuloDichiarazioni::Stato() = {};
    ModuloVerificaSintassi::AzzeraRisultati();
    QVERIFY(ModuloTag::CaricaTag(m_cartella.filePath(u"tag html.db"_s)).Riuscito());
    RichTextBox editor;
    editor.ImpostaText(u"x\r\n"_s + riga);
    ModuloVerificaSintassi::VerificaSintassi(editor, 1, true);
    QString visto;
    for (int i = 3; i < editor.Lunghezza(); ++i) {
        static const QHash<ColoreBgr, QChar> lettere{
            {0, u'.'}, {0xC00000, u't'}, {0xFF00FF, u'a'}, {0xFF, u'v'}, {0x808080, u'c'}};
        const Aspetto questo = editor.AspettoIn(i);
        const QChar lettera = lettere.value(questo.colore, u'?');
        visto += questo.onda ? lettera.toUpper() : lettera;
    }
    QCOMPARE(visto, aspetto);
    QStringList riscontri;
    const auto &risultati = ModuloVerificaSintassi::ArrayRisultati();
    for (qsizetype i = 1; i < risultati.size(); ++i)
        riscontri += QString::number(risultati[i].Posizione) + u' ' + risultati[i].Testo;
    QTEST(riscontri.join(u'|'), "riscontri");
}

QStringList TstAccordo::Pagine() const
{
    QStringList pagine;
    const auto scrivi = [&](const QString &nome, const QByteArray &byte) {
        QFile file(m_cartella.filePath(nome));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(byte) == byte.size());
        pagine += file.fileName();
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

void TstAccordo::windowAndCommandLineAgree()
{
    FrmStart finestra;
    QSignalSpy mostrata(&finestra, &FrmStart::Mostrata);
    QTRY_COMPARE(mostrata.size(), 1);
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
    for (qsizetype i = 0; i < std::min(daRiga.size(), nellaFinestra.size()); ++i)
        QCOMPARE(nellaFinestra[i], daRiga[i]);
    QCOMPARE(nellaFinestra.size(), daRiga.size());
}

QTEST_MAIN(TstAccordo)
#include "tst_accordo.moc"
