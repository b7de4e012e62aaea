#include "ProgrammaDiProva.h"

#include "app/AvanzamentoFinestra.h"
#include "app/Comandi.h"
#include "app/DisposizioneFinestre.h"
#include "app/Domande.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaComandi.h"
#include "app/TempoCaricamento.h"
#include "chrome/FrmProgressBar.h"
#include "dialogs/PaginaVuota.h"
#include "editor/Recupero.h"

#include <QAccessible>
#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace Aiuti;
using namespace ProgrammaDiProva;
using ModuloDichiarazioni::Stato;

class TstFrmStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Prepara(m_cartella); }

    void init()
    {
        Stato() = {};
        TogliRecuperi();
        ModuloDichiarazioni::ImpostaCartellaProgramma(m_cartella.path());
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), 0).Riuscito());
    }

    // Text, shortcut and picture of every command, and its place in the tree of menus.
    void everyLanguageNamesEverything()
    {
        for (const auto &[lingua, nome, file, locale] : ModuloPrincipale::Lingue()) {
            QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), lingua).Riuscito());
            FrmStart finestra;
            for (const auto &voce : TabellaComandi::Menu()) {
                const auto *azione = finestra.findChild<QAction *>(voce.comando.toString());
                QVERIFY2(voce.comando.isEmpty() || !azione->text().isEmpty(), qPrintable(voce.comando.toString()));
            }
            for (const auto &voce : TabellaComandi::Bottoni()) {
                const QString nome = u"%1(%2)"_s.arg(voce.barra).arg(voce.indice);
                const auto *bottone = finestra.findChild<QToolButton *>(nome);
                QVERIFY2(voce.indice == 0 || (!bottone->toolTip().isEmpty() && !bottone->icon().isNull()),
                         qPrintable(nome));
            }
            QCOMPARE(finestra.windowTitle(), u"Velloro - [%1]"_s.arg(ModuloPrincipale::Messaggio(344)));
            if (lingua != 0)
                continue;
            QStringList voci;
            for (const QAction *voce : finestra.menuBar()->actions().constFirst()->menu()->actions())
                voci += (voce->isSeparator() ? u"-"_s : voce->text()) + voce->shortcut().toString();
            QCOMPARE(voci.join(u','), u"NuovoCtrl+N,ApriCtrl+O,Chiudi,-,SalvaCtrl+S,Salva con nome,-,Stampa,-,"
                                      "Anteprima BrowserCtrl+P,-,Esci"_s);
        }
    }

    void menusOpenByKey()
    {
        FrmStart finestra;
        Avvia(finestra);
        for (const auto &[tasto, menu] :
             {std::pair('f', u"MFile"_s), std::pair('e', u"Medit"_s), std::pair('o', u"MFormato"_s),
              std::pair('a', u"Mtag"_s), std::pair('t', u"Mstrumenti"_s), std::pair('h', u"MHelp"_s)}) {
            QTest::keyClick(&finestra, tasto, Qt::AltModifier);
            auto *aperto = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(aperto);
            QCOMPARE(aperto->objectName(), menu);
            QVERIFY(aperto->activeAction());
            aperto->close();
            finestra.menuBar()->setActiveAction(nullptr);
        }
    }

    void screenReadersReadThePage()
    {
        FrmStart finestra;
        Avvia(finestra);
        QAccessibleInterface *pad = QAccessible::queryAccessibleInterface(finestra.PadCorrente());
        QCOMPARE(pad->role(), QAccessible::EditableText);
        QVERIFY(pad->textInterface() && pad->textInterface()->text(0, 9) == u"<!DOCTYPE");
    }

    // A command that nobody does is disabled wherever it stands, and doing it anyway does nothing.
    void deadCommandsAreDisabled()
    {
        QMainWindow finestra;
        QWidget contenitore;
        QHBoxLayout disposizione(&contenitore);
        Comandi comandi;
        comandi.CostruisciMenu(finestra.menuBar());
        comandi.CostruisciBarre(&contenitore);
        auto *voce = finestra.findChild<QAction *>(u"MenuFormato(1)"_s);
        auto *bottone = contenitore.findChild<QToolButton *>(u"ToolFormat3(1)"_s);
        int volte = 0;
        for (const bool acceso : {false, true, false}) {
            if (acceso)
                comandi.Collega(u"MenuFormato(1)"_s, [&volte] { ++volte; });
            else if (volte > 0)
                comandi.Abilita(u"MenuFormato(1)"_s, false);
            QVERIFY(voce->isEnabled() == acceso && bottone->isEnabled() == acceso);
            comandi.Esegui(u"MenuFormato(1)"_s);
            voce->trigger();
            bottone->click();
        }
        QCOMPARE(volte, 3);
    }

    void startsWithTheBlankPage()
    {
        FrmStart finestra;
        QVERIFY(!finestra.isVisible());
        Avvia(finestra);
        QVERIFY(finestra.isVisible() && finestra.isMaximized());
        QCOMPARE(finestra.PadCorrente()->Text(), PaginaVuota::Testo());
        // The caret stands on the line after <BODY>.
        QCOMPARE(finestra.PadCorrente()->GetLineFromChar(finestra.PadCorrente()->SelStart()), 7);
        QCOMPARE(Contenuto(Stato().FileAnteprima), PaginaVuota::Testo().toLatin1() + "\r\n");
        QCOMPARE(finestra.findChild<QLabel *>(u"StatusBar(2)"_s)->text(), TempoCaricamento::GetSpeedInfo(233));
    }

    void keysWhileADialogCloses_data()
    {
        QTest::addColumn<int>("chiude");
        QTest::newRow("MenuFile(0)") << int(Qt::Key_Return);    // templates
        QTest::newRow("MenuFile(1)") << int(Qt::Key_Escape);    // file dialog
        QTest::newRow("MenuHelp(0)") << int(Qt::Key_Escape);    // About
        QTest::newRow("MFont") << int(Qt::Key_Return);          //
        QTest::newRow("MenuTabella(0)") << int(Qt::Key_Return); //
        QTest::newRow("MenuEdit(10)") << int(Qt::Key_Escape);   // find, which is not modal
        QTest::newRow("") << int(Qt::Key_Return);               // message box
    }

    // What is typed while a dialog closes is the page's, behind what the dialog leaves; not so the key that closed it.
    void keysWhileADialogCloses()
    {
        QFETCH(int, chiude);
        FrmStart finestra;
        Avvia(finestra);
        RichTextBox *pad = finestra.PadCorrente();
        QStringList rilasciati;
        connect(pad, &RichTextBox::KeyUp, this,
                [&](EventoTasto *tasto) { rilasciati += QString::number(tasto->codice); });
        Modelli::ImpostaMostra(true);
        auto *attesa = new QTimer(&finestra);
        connect(attesa, &QTimer::timeout, this, [&, attesa] {
            QWindow *sua = nullptr;
            for (const QWidget *dialogo : QApplication::topLevelWidgets())
                sua = dialogo->isVisible() && dialogo->windowType() == Qt::Dialog ? dialogo->windowHandle() : sua;
            if (!sua)
                return;
            attesa->deleteLater();
            attesa->stop();
            const auto manda = [](QWindow *dove, QEvent::Type tipo, int tasto, const QString &testo, bool ancora) {
                QKeyEvent evento(tipo, tasto, Qt::NoModifier, testo, ancora);
                QCoreApplication::sendEvent(dove, &evento);
            };
            manda(sua, QEvent::KeyPress, chiude, {}, false);
            manda(sua, QEvent::KeyPress, Qt::Key_X, u"x"_s, false);
            manda(sua, QEvent::KeyRelease, Qt::Key_X, u"x"_s, false);
            // The window behind has the keyboard now, but what was typed before comes first.
            manda(finestra.windowHandle(), QEvent::KeyPress, chiude, {}, true);
            manda(finestra.windowHandle(), QEvent::KeyRelease, chiude, {}, false);
            manda(finestra.windowHandle(), QEvent::KeyPress, Qt::Key_Y, u"y"_s, false);
        });
        attesa->start(0);
        const QString comando = QString::fromLatin1(QTest::currentDataTag());
        if (comando.isEmpty())
            Domande::Informa(&finestra, u"?"_s);
        else
            finestra.findChild<QAction *>(comando)->trigger();
        QTRY_VERIFY2(pad->Text().contains(u"xy"_s), qPrintable(pad->Text()));
        QCOMPARE(pad->Text().sliced(pad->SelStart() - 2, 2), u"xy"_s);
        QCOMPARE(rilasciati, QStringList{QString::number(Qt::Key_X)});
        Modelli::ImpostaMostra(false);
    }

    void openAndSaveKeepBytes()
    {
        for (const QByteArray &byte :
             {QByteArray("<P>a\r\n<P>b\r\n"), QByteArray("<META charset=iso-8859-1>\xE8\x80\r\n"),
              QByteArray("\xEF\xBB\xBF<P>\xC3\xA8\r\n"), QByteArray("<META charset=Shift_JIS>\x93\xFA\x96\x7B\r\n"),
              QByteArray("a\xE2\x80\xA8 b\xE2\x80\xA9 c\xC2\xA0\r\nd\0e\r\n", 20),
              QByteArray("\xFF\xFEz\0\n\0\xD8\xD8\n", 9), QByteArray("\xFF\xFE\0\0<\0\0\0\n\0\0\0", 12),
              QByteArray("\0\0\xFE\xFF\0\0\0\r", 8)}) {
            init();
            Scrivi(Percorso(u"p.html"_s), byte);
            {
                FrmStart finestra(Percorso(u"p.html"_s));
                Avvia(finestra);
                QCOMPARE(finestra.windowTitle(), u"Velloro - [p.html]"_s);
                RichTextBox *pad = finestra.PadCorrente();
                // Type something, take it away: what was not touched is not changed.
                QTest::keyClicks(pad, u"xyz"_s);
                for (int i = 0; i < 3; ++i)
                    QTest::keyClick(pad, Qt::Key_Backspace);
                finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
                QCOMPARE(Contenuto(Percorso(u"p.html"_s)), byte);
                if (byte.contains('\0'))
                    continue; // no text: nothing is put at its end
                // What is typed behind the last line end is a line of its own.
                pad->ImpostaSelStart(pad->Lunghezza());
                QTest::keyClicks(pad, u"c"_s);
                finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
                QCOMPARE(Contenuto(Percorso(u"p.html"_s)), byte + "c\r\n");
                QTest::keyClick(pad, Qt::Key_Return);
                finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
                QCOMPARE(Contenuto(Percorso(u"p.html"_s)), byte + "c\r\n\r\n");
            }
            QVERIFY(!QFile::exists(Stato().FileAnteprima));
        }
    }

    void unreadablePagesLeaveThePage()
    {
        for (const auto &[percorso, messaggio] :
             {std::pair(Percorso(u"non c'è.html"_s), 323), {m_cartella.path(), 200}, {u"/dev/zero"_s, 201}}) {
            init();
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
    }

    void modifiedRule()
    {
        Scrivi(Percorso(u"m.html"_s), "<p>testo\r\n");
        FrmStart finestra(Percorso(u"m.html"_s));
        Avvia(finestra);
        QCOMPARE(Chiude(finestra, QMessageBox::No).size(), 0);
        finestra.PadCorrente()->ImpostaText(u"<P>TESTO\r"_s);
        QCOMPARE(Chiude(finestra, QMessageBox::No).size(), 0);
        finestra.PadCorrente()->ImpostaText(u"<P>TESTI\r"_s);
        QCOMPARE(Chiude(finestra, QMessageBox::No).size(), 1);
        // Saving does not change what the page is compared with.
        finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
        QCOMPARE(Chiude(finestra, QMessageBox::No).size(), 1);
    }

    void closingSavesOrKeepsTheWindow()
    {
        Scrivi(Percorso(u"f.html"_s), "uno\r\n");
        FrmStart finestra(Percorso(u"f.html"_s));
        Avvia(finestra);
        QTest::keyClicks(finestra.PadCorrente(), u"due "_s);
        QFile::setPermissions(Percorso(u"f.html"_s), QFile::ReadOwner | QFile::ReadGroup);
        const QString domanda = ModuloPrincipale::Messaggio(86);
        const QSignalSpy nascosta(finestra.findChild<PaginaCorrente *>(), &PaginaCorrente::NascondiAnteprima);
        QCOMPARE(Chiude(finestra, QMessageBox::Yes),
                 (QStringList{domanda, ModuloPrincipale::Messaggio(386).arg(Percorso(u"f.html"_s))}));
        QVERIFY(finestra.isVisible() && nascosta.isEmpty());
        QCOMPARE(Contenuto(Percorso(u"f.html"_s)), QByteArray("uno\r\n"));
        QCOMPARE(finestra.PadCorrente()->Text(), u"due uno\r"_s);
        QFile::setPermissions(Percorso(u"f.html"_s), QFile::ReadOwner | QFile::WriteOwner);
        QCOMPARE(Chiude(finestra, QMessageBox::Yes), QStringList{domanda});
        QVERIFY(!finestra.isVisible());
        QCOMPARE(Contenuto(Percorso(u"f.html"_s)), QByteArray("due uno\r\n"));
    }

    // What a program that was killed had not saved: taken back, thrown away, or left for later.
    void recoveryIsOffered()
    {
        for (const qint16 risposta : {211, 212, 278}) {
            init();
            {
                RichTextBox pad;
                Recupero lasciata(&pad, {}, 3'600'000);
                lasciata.ImpostaCodifica(u"KOI8-R"_s);
                pad.ImpostaText(u"<P>perduta"_s);
                lasciata.Lascia();
            }
            Rispondi<QMessageBox>(this, [risposta](QMessageBox *domanda) {
                for (QAbstractButton *bottone : domanda->buttons()) {
                    if (bottone->text() == ModuloPrincipale::Messaggio(risposta))
                        return bottone->click();
                }
            });
            FrmStart finestra;
            Avvia(finestra);
            QCOMPARE(finestra.PadCorrente()->Text(), risposta == 211 ? u"<P>perduta"_s : PaginaVuota::Testo());
            QCOMPARE(finestra.findChild<QLabel *>(u"StatusBar(4)"_s)->text(),
                     risposta == 211 ? u"KOI8-R"_s : QString());
            auto ancora = Recupero::DaOffrire();
            QCOMPARE(ancora.size(), size_t(risposta == 278));
            // What was taken back is not saved yet.
            QCOMPARE(Chiude(finestra, QMessageBox::No).size(), risposta == 211 ? 1 : 0);
            for (VoceRecupero &voce : ancora)
                Recupero::Scarta(std::move(voce));
        }
    }

    void newPageNeverReplacesTheOneOpenedBefore()
    {
        Scrivi(Percorso(u"aperta.html"_s), "uno\r\n");
        FrmStart finestra(Percorso(u"aperta.html"_s));
        Avvia(finestra);
        finestra.findChild<QAction *>(u"MenuFile(0)"_s)->trigger();
        QCOMPARE(finestra.PadCorrente()->Text(), PaginaVuota::Testo());
        Rispondi<QFileDialog>(this, [this](QFileDialog *dialogo) { Scegli(dialogo, Percorso(u"nuova2.html"_s)); });
        finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
        QCOMPARE(Contenuto(Percorso(u"aperta.html"_s)), QByteArray("uno\r\n"));
        QCOMPARE(Contenuto(Percorso(u"nuova2.html"_s)), PaginaVuota::Testo().toLatin1() + "\r\n");
    }

    void saveAsLeavesTheCurrentFile()
    {
        Scrivi(Percorso(u"s.html"_s), "uno\r\n");
        FrmStart finestra(Percorso(u"s.html"_s));
        Avvia(finestra);
        QTest::keyClicks(finestra.PadCorrente(), u"due "_s);
        Rispondi<QFileDialog>(this, [&](QFileDialog *dialogo) { Scegli(dialogo, Percorso(u"altra.html"_s)); });
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

    void newPageIsSavedBesideItsPictures()
    {
        FrmStart finestra;
        Avvia(finestra);
        auto *pagina = finestra.findChild<PaginaCorrente *>();
        const QSignalSpy avvisi(pagina, &PaginaCorrente::Avviso);
        QString cartella;
        const auto salva = [&](const QString &nome) {
            Rispondi<QFileDialog>(this, [&](QFileDialog *dialogo) {
                cartella = dialogo->directory().path();
                Scegli(dialogo, nome);
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

    void editCommandsFollowTheSelection()
    {
        FrmStart finestra;
        Avvia(finestra);
        RichTextBox *pad = finestra.PadCorrente();
        const auto abilitati = [&] {
            int quanti = 0;
            for (const QString &nome : {u"MenuEdit(3)"_s, u"MenuEdit(4)"_s, u"MenuEdit(6)"_s, u"MenuPopUp(0)"_s,
                                        u"MenuPopUp(1)"_s, u"MenuPopUp(3)"_s})
                quanti += finestra.findChild<QAction *>(nome)->isEnabled();
            for (const QString &nome : {u"ToolStandard(5)"_s, u"ToolStandard(6)"_s})
                quanti += finestra.findChild<QToolButton *>(nome)->isEnabled();
            return quanti;
        };
        pad->ImpostaText(u"uno due"_s);
        QCOMPARE(abilitati(), 0);
        pad->Seleziona(0, 3);
        QCOMPARE(abilitati(), 8);
        Stato().ControlloInCorso = true;
        pad->ImpostaSelStart(0);
        QCOMPARE(abilitati(), 8);
        finestra.ElencoComandi().Esegui(u"MenuEdit(6)"_s);
        QCOMPARE(pad->Text(), u"uno due"_s);
        // The check still needs the page, and its progress window has the keyboard.
        {
            AvanzamentoFinestra avanzamento(&finestra, {}, 1);
            avanzamento.Mostra();
            QCloseEvent dalSistema;
            QSpontaneKeyEvent::setSpontaneous(&dalSistema);
            qApp->notify(finestra.findChild<FrmProgressBar *>(), &dalSistema);
            QCoreApplication::processEvents();
            QVERIFY(finestra.isVisible());
        }
        Stato().ControlloInCorso = false;
        Rispondi<QMessageBox>(this, [](QMessageBox *domanda) { domanda->button(QMessageBox::No)->click(); });
        finestra.ElencoComandi().Esegui(u"MenuStrumenti(0)"_s);
        QTRY_VERIFY(!finestra.isVisible());
    }

    void windowsDoNotOverlap()
    {
        for (const auto &[schermo, area] : {std::pair(QSize(1280, 720), QSize(1280, 600)),
                                            {QSize(1920, 1080), QSize(1920, 960)},
                                            {QSize(640, 360), QSize(640, 200)},
                                            {QSize(1920, 1080), QSize(700, 300)},
                                            {QSize(1920, 1080), QSize(120, 40)}}) {
            const QRect documento = DisposizioneFinestre::Documento(schermo * 15, area * 15);
            const QRect anteprima = DisposizioneFinestre::Anteprima(schermo * 15, area * 15, documento);
            const QRect risultati = DisposizioneFinestre::Risultati(schermo * 15, area * 15, documento);
            const QRect dentro(QPoint(0, 0), area * 15);
            QVERIFY(dentro.contains(documento) && dentro.contains(anteprima) && dentro.contains(risultati));
            QVERIFY(!documento.intersects(anteprima) && !risultati.intersects(anteprima));
            // The results begin one pixel inside the document window's border.
            QCOMPARE(documento.intersected(risultati).width(), 15);
            QCOMPARE(risultati.height(), documento.height());
        }
    }

    void speedInfo()
    {
        QCOMPARE(TempoCaricamento::GetSpeedInfo(8400, QLocale::c()), u"33.6K @ 4.2 KB/s (2 sec)"_s);
        QCOMPARE(TempoCaricamento::GetSpeedInfo(10000, QLocale(QLocale::Italian)), u"33.6K @ 4,2 KB/s (2,4 sec)"_s);
    }

private:
    [[nodiscard]] QString Percorso(const QString &nome) const { return m_cartella.filePath(nome); }

    /// Closes \a finestra and answers every question with \a bottone, or "Ok"; gives the questions.
    QStringList Chiude(FrmStart &finestra, QMessageBox::StandardButton bottone)
    {
        QStringList testi;
        QTimer attesa;
        connect(&attesa, &QTimer::timeout, this, [&] {
            if (auto *domanda = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                testi += domanda->text();
                // A stray Escape is no answer to a question.
                if (domanda->button(bottone))
                    QTest::keyClick(domanda, Qt::Key_Escape);
                QVERIFY(domanda->isVisible());
                (domanda->button(bottone) ? domanda->button(bottone) : domanda->escapeButton())->click();
            }
        });
        attesa.start(0);
        finestra.show();
        finestra.close();
        return testi;
    }

    QTemporaryDir m_cartella;
};

QTEST_MAIN(TstFrmStart)
#include "tst_frmstart.moc"
