#include "app/Comandi.h"
#include "app/DisposizioneFinestre.h"
#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaComandi.h"
#include "app/TabellaLingua.h"
#include "app/TempoCaricamento.h"
#include "dialogs/Modelli.h"
#include "dialogs/PaginaVuota.h"
#include "editor/FrmPaginaHTML.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

QByteArray Contenuto(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("?");
}

void Scrivi(const QString &percorso, const QByteArray &byte)
{
    QFile file(percorso);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(byte);
}

/// Answers the next modal window of type T once it is on the screen.
template <typename T>
void Rispondi(QObject *contesto, std::function<void(T *)> risposta)
{
    auto *attesa = new QTimer(contesto);
    QObject::connect(attesa, &QTimer::timeout, contesto, [attesa, risposta] {
        if (auto *finestra = qobject_cast<T *>(QApplication::activeModalWidget())) {
            attesa->deleteLater();
            attesa->stop();
            risposta(finestra);
        }
    });
    attesa->start(0);
}

} // namespace

class TstFrmStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void menuTree();
    void everyLanguageNamesEverything();
    void menusOpenByKey();
    void screenReadersKnowTheControls();
    void deadCommandsAreDisabled();
    void startsWithTheBlankPage();
    void opensThePageOfTheCommandLine();
    void openAndSaveKeepBytes_data();
    void openAndSaveKeepBytes();
    void unreadablePagesLeaveThePage_data();
    void unreadablePagesLeaveThePage();
    void modifiedRule();
    void closingAsks();
    void failedSaveKeepsTheWindow();
    void saveAsLeavesTheCurrentFile();
    void newPageIsSavedBesideItsPictures();
    void editCommandsFollowTheSelection();
    void windowsDoNotOverlap_data();
    void windowsDoNotOverlap();
    void speedInfo();

private:
    [[nodiscard]] QString Percorso(const QString &nome) const { return m_cartella.filePath(nome); }
    static void Avvia(FrmStart &finestra)
    {
        QSignalSpy mostrata(&finestra, &FrmStart::Mostrata);
        QTRY_COMPARE(mostrata.size(), 1);
    }
    QTemporaryDir m_cartella;
};

void TstFrmStart::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication::setQuitOnLastWindowClosed(false);
    Modelli::ImpostaMostra(false); // every new page here is the blank one
    QVERIFY(QFile::copy(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db"), Percorso(u"tag html.db"_s)));
}

void TstFrmStart::init()
{
    Stato() = {};
    ModuloDichiarazioni::ImpostaCartellaProgramma(m_cartella.path());
    QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), 0).Riuscito());
}

void TstFrmStart::menuTree()
{
    FrmStart finestra;
    QStringList albero;
    const std::function<void(QMenu *, int)> scendi = [&](QMenu *menu, int livello) {
        for (const QAction *voce : menu->actions()) {
            albero += QString(livello, u' ') + (voce->isSeparator() ? u"-"_s : voce->text()) +
                      (voce->shortcut().isEmpty() ? QString() : u" "_s + voce->shortcut().toString());
            if (voce->menu())
                scendi(voce->menu(), livello + 1);
        }
    };
    for (const QAction *voce : finestra.menuBar()->actions()) {
        albero += voce->text();
        scendi(voce->menu(), 1);
    }
    QCOMPARE(albero.mid(0, 13), (QStringList{u"File"_s, u" Nuovo Ctrl+N"_s, u" Apri Ctrl+O"_s, u" Chiudi"_s, u" -"_s,
                                             u" Salva Ctrl+S"_s, u" Salva con nome"_s, u" -"_s, u" Stampa"_s, u" -"_s,
                                             u" Anteprima Browser Ctrl+P"_s, u" -"_s, u" Esci"_s}));
    QVERIFY(albero.contains(u"  A Sinistra"_s) && albero.contains(u"  Linea Orizzontale"_s) &&
            albero.contains(u" Informazioni Su"_s) && albero.contains(u" Ripeti Trova F3"_s));
    // The four that the design switches off are not shown.
    for (const QString &nome : {u"MenuFile(2)"_s, u"MenuStrumenti(1)"_s, u"MenuStrumenti(3)"_s, u"MenuStrumenti(4)"_s})
        QVERIFY2(!finestra.findChild<QAction *>(nome)->isVisible(), qPrintable(nome));
    QCOMPARE(finestra.findChild<QMenu *>(u"MPopUp"_s)->actions().size(), 6);
}

void TstFrmStart::everyLanguageNamesEverything()
{
    for (const quint8 lingua : {0, 1, 5, 8}) {
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), lingua).Riuscito());
        FrmStart finestra;
        for (const auto &voce : TabellaComandi::Menu()) {
            if (voce.comando.isEmpty())
                continue;
            const auto *azione = finestra.findChild<QAction *>(voce.comando.toString());
            QVERIFY2(azione && !azione->text().isEmpty(), qPrintable(voce.comando.toString()));
        }
        for (const auto &voce : TabellaComandi::Bottoni()) {
            if (voce.indice == 0)
                continue;
            const QString nome = u"%1(%2)"_s.arg(voce.barra).arg(voce.indice);
            const auto *bottone = finestra.findChild<QToolButton *>(nome);
            QVERIFY2(bottone && bottone->toolTip().size() > 0 && !bottone->icon().isNull(), qPrintable(nome));
        }
        QCOMPARE(finestra.windowTitle(), u"Velloro - [%1]"_s.arg(ModuloPrincipale::Messaggio(344)));
    }
}

void TstFrmStart::menusOpenByKey()
{
    FrmStart finestra;
    Avvia(finestra);
    // "Formato" comes after "File" and has its second letter.
    for (const auto &[tasto, menu] : {std::pair('f', u"MFile"_s), std::pair('o', u"MFormato"_s)}) {
        QTest::keyClick(&finestra, tasto, Qt::AltModifier);
        auto *aperto = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(aperto);
        QCOMPARE(aperto->objectName(), menu);
        aperto->close();
        finestra.menuBar()->setActiveAction(nullptr);
    }
}

void TstFrmStart::screenReadersKnowTheControls()
{
    FrmStart finestra;
    Avvia(finestra);
    const auto descrizione = [&finestra](const QString &nome) {
        QAccessibleInterface *voce = QAccessible::queryAccessibleInterface(finestra.findChild<QWidget *>(nome));
        return u"%1 %2"_s.arg(int(voce->role())).arg(voce->text(QAccessible::Name));
    };
    const auto atteso = [](QAccessible::Role ruolo, const QString &nome) {
        return u"%1 %2"_s.arg(int(ruolo)).arg(nome);
    };
    QCOMPARE(descrizione(u"RichPad"_s), atteso(QAccessible::EditableText, ModuloPrincipale::Messaggio(229)));
    QCOMPARE(descrizione(u"ToolStandard(3)"_s), atteso(QAccessible::PushButton, u"Salva"_s));
    QCOMPARE(descrizione(u"ToolStandard"_s), atteso(QAccessible::ToolBar, ModuloPrincipale::Messaggio(220)));
    auto *pad = finestra.findChild<QWidget *>(u"RichPad"_s);
    QAccessibleTextInterface *testo = QAccessible::queryAccessibleInterface(pad)->textInterface();
    QVERIFY(testo && testo->text(0, 9) == u"<!DOCTYPE");
}

void TstFrmStart::deadCommandsAreDisabled()
{
    // A command that nobody does is disabled wherever it stands, and doing it anyway does nothing.
    QMainWindow finestra;
    QWidget contenitore;
    QHBoxLayout disposizione(&contenitore);
    Comandi comandi;
    comandi.CostruisciMenu(finestra.menuBar());
    comandi.CostruisciBarre(&contenitore);
    auto *voce = finestra.findChild<QAction *>(u"MenuFormato(1)"_s);
    auto *bottone = contenitore.findChild<QToolButton *>(u"ToolFormat3(1)"_s);
    QVERIFY(!voce->isEnabled() && !bottone->isEnabled());
    comandi.Esegui(u"MenuFormato(1)"_s);
    int volte = 0;
    comandi.Collega(u"MenuFormato(1)"_s, [&volte] { ++volte; });
    QVERIFY(voce->isEnabled() && bottone->isEnabled());
    voce->trigger();
    bottone->click();
    QCOMPARE(volte, 2);
    comandi.Abilita(u"MenuFormato(1)"_s, false);
    QVERIFY(!voce->isEnabled() && !bottone->isEnabled());
    comandi.Esegui(u"MenuFormato(1)"_s);
    QCOMPARE(volte, 2);
}

void TstFrmStart::startsWithTheBlankPage()
{
    FrmStart finestra;
    QVERIFY(!finestra.isVisible());
    Avvia(finestra);
    QVERIFY(finestra.isVisible() && finestra.isMaximized());
    QCOMPARE(finestra.PadCorrente()->Text(), PaginaVuota::Testo());
    QCOMPARE(finestra.PadCorrente()->Text().size(), 231);
    // The caret stands on the line after <BODY>.
    QCOMPARE(finestra.PadCorrente()->GetLineFromChar(finestra.PadCorrente()->SelStart()), 7);
    QCOMPARE(Contenuto(Stato().FileAnteprima), PaginaVuota::Testo().toLatin1() + "\r\n");
    QCOMPARE(finestra.findChild<QLabel *>(u"StatusBar(2)"_s)->text(), TempoCaricamento::GetSpeedInfo(233));
    const QString anteprima = Stato().FileAnteprima;
    QVERIFY(finestra.close());
    QVERIFY(QFile::exists(anteprima));
}

void TstFrmStart::opensThePageOfTheCommandLine()
{
    Scrivi(Percorso(u"pagina.html"_s), "<P>uno\r\n");
    {
        FrmStart finestra(Percorso(u"pagina.html"_s));
        Avvia(finestra);
        QCOMPARE(finestra.PadCorrente()->Text(), u"<P>uno\r"_s);
        QCOMPARE(finestra.windowTitle(), u"Velloro - [pagina.html]"_s);
    }
    QVERIFY(!QFile::exists(Stato().FileAnteprima));
}

void TstFrmStart::openAndSaveKeepBytes_data()
{
    QTest::addColumn<QByteArray>("byte");
    QTest::newRow("plain") << QByteArray("<P>a\r\n<P>b\r\n");
    QTest::newRow("latin") << QByteArray("<META charset=iso-8859-1>\xE8\x80\r\n");
    QTest::newRow("utf-8 with mark") << QByteArray("\xEF\xBB\xBF<P>\xC3\xA8\r\n");
    QTest::newRow("separators and blanks") << QByteArray("a\xE2\x80\xA8"
                                                         "b\xE2\x80\xA9"
                                                         "c\xC2\xA0\r\nd\0e\r\n",
                                                         18);
    QTest::newRow("japanese") << QByteArray("<META charset=Shift_JIS>\x93\xFA\x96\x7B\r\n");
}

void TstFrmStart::openAndSaveKeepBytes()
{
    QFETCH(QByteArray, byte);
    Scrivi(Percorso(u"p.html"_s), byte);
    FrmStart finestra(Percorso(u"p.html"_s));
    Avvia(finestra);
    // Type something, take it away: what was not touched is not changed.
    QTest::keyClicks(finestra.PadCorrente(), u"xyz"_s);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(finestra.PadCorrente(), Qt::Key_Backspace);
    finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
    QCOMPARE(Contenuto(Percorso(u"p.html"_s)), byte);
}

void TstFrmStart::unreadablePagesLeaveThePage_data()
{
    QTest::addColumn<QString>("percorso");
    QTest::addColumn<int>("messaggio");
    QTest::newRow("missing") << Percorso(u"non c'è.html"_s) << 323;
    QTest::newRow("folder") << m_cartella.path() << 200;
    QTest::newRow("device") << u"/dev/zero"_s << 201;
}

void TstFrmStart::unreadablePagesLeaveThePage()
{
    QFETCH(QString, percorso);
    QFETCH(int, messaggio);
    QString testo;
    Rispondi<QMessageBox>(this, [&](QMessageBox *domanda) {
        testo = domanda->text();
        domanda->accept();
    });
    FrmStart finestra(percorso);
    Avvia(finestra);
    QTRY_COMPARE(testo, ModuloPrincipale::Messaggio(qint16(messaggio)).arg(percorso));
    QCOMPARE(finestra.PadCorrente()->Text(), PaginaVuota::Testo());
    QVERIFY(Stato().FileCorrente.isEmpty());
}

void TstFrmStart::modifiedRule()
{
    Scrivi(Percorso(u"m.html"_s), "<p>testo\r\n");
    FrmStart finestra(Percorso(u"m.html"_s));
    Avvia(finestra);
    int domande = 0;
    const auto chiude = [&] {
        domande = 0;
        finestra.show();
        QTimer attesa;
        connect(&attesa, &QTimer::timeout, this, [&] {
            if (auto *domanda = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                ++domande;
                domanda->button(QMessageBox::No)->click();
            }
        });
        attesa.start(0);
        finestra.close();
        return domande;
    };
    QCOMPARE(chiude(), 0);
    finestra.PadCorrente()->ImpostaText(u"<P>TESTO\r"_s);
    QCOMPARE(chiude(), 0);
    finestra.PadCorrente()->ImpostaText(u"<P>TESTI\r"_s);
    QCOMPARE(chiude(), 1);
    // Saving does not change what the page is compared with.
    finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
    QCOMPARE(chiude(), 1);
}

void TstFrmStart::closingAsks()
{
    Scrivi(Percorso(u"c.html"_s), "uno\r\n");
    FrmStart finestra(Percorso(u"c.html"_s));
    Avvia(finestra);
    QTest::keyClicks(finestra.PadCorrente(), u"due "_s);
    QString testo;
    bool ancora = false;
    Rispondi<QMessageBox>(this, [&](QMessageBox *domanda) {
        testo = domanda->text();
        // A stray Escape is no answer.
        QTest::keyClick(domanda, Qt::Key_Escape);
        ancora = domanda->isVisible();
        domanda->button(QMessageBox::Yes)->click();
    });
    QVERIFY(finestra.close());
    QCOMPARE(testo, ModuloPrincipale::Messaggio(86));
    QVERIFY(ancora);
    QCOMPARE(Contenuto(Percorso(u"c.html"_s)), QByteArray("due uno\r\n"));
}

void TstFrmStart::failedSaveKeepsTheWindow()
{
    Scrivi(Percorso(u"f.html"_s), "uno\r\n");
    FrmStart finestra(Percorso(u"f.html"_s));
    Avvia(finestra);
    QTest::keyClicks(finestra.PadCorrente(), u"due "_s);
    QFile::setPermissions(Percorso(u"f.html"_s), QFile::ReadOwner | QFile::ReadGroup);
    QStringList testi;
    QTimer attesa;
    connect(&attesa, &QTimer::timeout, this, [&] {
        if (auto *domanda = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            testi += domanda->text();
            (domanda->button(QMessageBox::Yes) ? domanda->button(QMessageBox::Yes) : domanda->button(QMessageBox::Ok))
                ->click();
        }
    });
    attesa.start(0);
    QVERIFY(!finestra.close());
    QVERIFY(finestra.isVisible());
    QCOMPARE(testi, (QStringList{ModuloPrincipale::Messaggio(86),
                                 ModuloPrincipale::Messaggio(205).arg(Percorso(u"f.html"_s))}));
    QCOMPARE(Contenuto(Percorso(u"f.html"_s)), QByteArray("uno\r\n"));
    QCOMPARE(finestra.PadCorrente()->Text(), u"due uno\r"_s);
}

void TstFrmStart::saveAsLeavesTheCurrentFile()
{
    Scrivi(Percorso(u"s.html"_s), "uno\r\n");
    FrmStart finestra(Percorso(u"s.html"_s));
    Avvia(finestra);
    QTest::keyClicks(finestra.PadCorrente(), u"due "_s);
    Rispondi<QFileDialog>(this, [&](QFileDialog *dialogo) {
        dialogo->findChild<QLineEdit *>()->setText(Percorso(u"altra.html"_s));
        QTest::keyClick(dialogo, Qt::Key_Return);
    });
    finestra.findChild<QAction *>(u"MenuFile(5)"_s)->trigger();
    QCOMPARE(Contenuto(Percorso(u"altra.html"_s)), QByteArray("due uno\r\n"));
    QCOMPARE(finestra.windowTitle(), u"Velloro - [s.html]"_s);
    finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
    QCOMPARE(Contenuto(Percorso(u"s.html"_s)), QByteArray("due uno\r\n"));
    // An empty page touches nothing.
    finestra.PadCorrente()->ImpostaText(QString());
    finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
    QCOMPARE(Contenuto(Percorso(u"s.html"_s)), QByteArray("due uno\r\n"));
}

void TstFrmStart::newPageIsSavedBesideItsPictures()
{
    FrmStart finestra;
    Avvia(finestra);
    auto *pagina = finestra.findChild<PaginaCorrente *>();
    const QSignalSpy avvisi(pagina, &PaginaCorrente::Avviso);
    QString cartella;
    const auto salva = [&](const QString &nome) {
        Rispondi<QFileDialog>(this, [&](QFileDialog *dialogo) {
            cartella = dialogo->directory().path();
            dialogo->findChild<QLineEdit *>()->setText(nome);
            QTest::keyClick(dialogo, Qt::Key_Return);
        });
        finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
        return avvisi.constLast().constFirst().toString();
    };
    QCOMPARE(ModuloDichiarazioni::PostoPagina(), QString());
    QCOMPARE(salva(Percorso(u"nuova.html"_s)), ModuloPrincipale::Messaggio(279).arg(Percorso(u"nuova.html"_s)));
    QCOMPARE(ModuloDichiarazioni::PostoPagina(), Percorso(u"nuova.html"_s));
    // The page has no file of its own: Save asks again, beside the last answer.
    QCOMPARE(salva(u"altra"_s), ModuloPrincipale::Messaggio(280).arg(Percorso(u"altra.dat"_s)));
    QCOMPARE(cartella, QFileInfo(Percorso(u"x"_s)).path());
    QCOMPARE(finestra.windowTitle(), u"Velloro - [%1]"_s.arg(ModuloPrincipale::Messaggio(344)));
    // An opened page lies where it was opened.
    QVERIFY(pagina->Apri(Percorso(u"nuova.html"_s)));
    QCOMPARE(Stato().FileSalvato, QString());
    QCOMPARE(ModuloDichiarazioni::PostoPagina(), Percorso(u"nuova.html"_s));
}

void TstFrmStart::editCommandsFollowTheSelection()
{
    FrmStart finestra;
    Avvia(finestra);
    RichTextBox *pad = finestra.PadCorrente();
    const auto abilitati = [&] {
        QStringList nomi;
        for (const QString &nome : {u"MenuEdit(3)"_s, u"MenuEdit(4)"_s, u"MenuEdit(6)"_s, u"MenuPopUp(0)"_s,
                                    u"MenuPopUp(1)"_s, u"MenuPopUp(3)"_s}) {
            if (finestra.findChild<QAction *>(nome)->isEnabled())
                nomi += nome;
        }
        for (const QString &nome : {u"ToolStandard(5)"_s, u"ToolStandard(6)"_s}) {
            if (finestra.findChild<QToolButton *>(nome)->isEnabled())
                nomi += nome;
        }
        return nomi.size();
    };
    pad->ImpostaText(u"uno due"_s);
    QCOMPARE(abilitati(), 0);
    pad->Seleziona(0, 3);
    QCOMPARE(abilitati(), 8);
    Stato().ControlloInCorso = true;
    pad->ImpostaSelStart(0);
    QCOMPARE(abilitati(), 8);
    Stato().ControlloInCorso = false;
    pad->Seleziona(0, 3);
    finestra.findChild<QToolButton *>(u"ToolStandard(5)"_s)->click();
    QCOMPARE(pad->Text(), u" due"_s);
    finestra.findChild<QAction *>(u"MenuEdit(5)"_s)->trigger();
    QCOMPARE(pad->Text(), u"uno due"_s);
    finestra.findChild<QAction *>(u"MenuEdit(8)"_s)->trigger();
    finestra.findChild<QAction *>(u"MenuPopUp(3)"_s)->trigger();
    QCOMPARE(pad->Text(), QString());
}

void TstFrmStart::windowsDoNotOverlap_data()
{
    QTest::addColumn<QSize>("schermo");
    QTest::addColumn<QSize>("area");
    QTest::newRow("1280x720") << QSize(1280, 720) << QSize(1280, 600);
    QTest::newRow("1920x1080") << QSize(1920, 1080) << QSize(1920, 960);
    QTest::newRow("1280x720 at scale 2") << QSize(640, 360) << QSize(640, 200);
    QTest::newRow("window made smaller") << QSize(1920, 1080) << QSize(700, 300);
    QTest::newRow("window made tiny") << QSize(1920, 1080) << QSize(120, 40);
}

void TstFrmStart::windowsDoNotOverlap()
{
    QFETCH(QSize, schermo);
    QFETCH(QSize, area);
    schermo *= 15;
    area *= 15;
    const QRect documento = DisposizioneFinestre::Documento(schermo, area);
    const QRect anteprima = DisposizioneFinestre::Anteprima(schermo, area, documento);
    const QRect risultati = DisposizioneFinestre::Risultati(schermo, area, documento);
    const QRect dentro(QPoint(0, 0), area);
    QVERIFY(dentro.contains(documento) && dentro.contains(anteprima) && dentro.contains(risultati));
    QVERIFY(!documento.intersects(anteprima) && !risultati.intersects(anteprima));
    // The results begin one twip pixel inside the document window's border.
    QCOMPARE(documento.intersected(risultati).width(), 15);
    QCOMPARE(risultati.height(), documento.height());
    if (area.width() == schermo.width() && area.width() > 1000 * 15) {
        QCOMPARE(documento.width(), schermo.width() - 3000);
        QCOMPARE(risultati.width(), schermo.width() - documento.width() - 100);
        QCOMPARE(anteprima.bottom() + 1, schermo.height() - 2530);
    }
}

void TstFrmStart::speedInfo()
{
    QCOMPARE(TempoCaricamento::GetSpeedInfo(8400, QLocale::c()), u"33.6K @ 4.2 KB/s (2 sec)"_s);
    QCOMPARE(TempoCaricamento::GetSpeedInfo(10000, QLocale::c()), u"33.6K @ 4.2 KB/s (2.4 sec)"_s);
    QCOMPARE(TempoCaricamento::GetSpeedInfo(10000, QLocale(QLocale::Italian)), u"33.6K @ 4,2 KB/s (2,4 sec)"_s);
    QCOMPARE(TempoCaricamento::GetSpeedInfo(0, QLocale::c()), u"33.6K @ 4.2 KB/s (0 sec)"_s);
    QCOMPARE(TempoCaricamento::GetSpeedInfo(10'000'000, QLocale::c()), u"33.6K @ 4.2 KB/s (2381 sec)"_s);
}

QTEST_MAIN(TstFrmStart)
#include "tst_frmstart.moc"
