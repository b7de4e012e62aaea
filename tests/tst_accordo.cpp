// What the results window lists for an opened page and what the command line prints for the same file.

#include "BaseDiProva.h"

#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaLingua.h"
#include "dialogs/Modelli.h"
#include "html/FrmControlloSintassi.h"

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
