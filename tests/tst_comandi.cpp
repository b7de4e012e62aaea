#include "ProgrammaDiProva.h"

#include "app/Comandi.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaComandi.h"
#include "app/TabellaFrammenti.h"
#include "dialogs/FrmTrova.h"
#include "dialogs/PaginaVuota.h"
#include "editor/clsUndo.h"
#include "html/FrmControlloSintassi.h"
#include "html/Risultati.h"
#include "html/VerificaDaRiga.h"

#include <QAction>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

// No dead command: every menu item, toolbar button and pop-up item is pressed in the running window and does what the
// table of commands says. What a command inserts passes the full check and is one step to undo.
namespace
{

/// Switched off for good.
const QStringList Spenti{u"MenuFile(2)"_s, u"MenuStrumenti(1)"_s, u"MenuStrumenti(3)"_s, u"MenuStrumenti(4)"_s};

/// A page in which \a comando may stand; the caret at "|".
QString PaginaPer(const QString &comando)
{
    const QString pagina = u"<HTML>\r\n<HEAD>\r\n<TITLE>x</TITLE>\r\n</HEAD>\r\n<BODY>\r\n%1\r\n</BODY>\r\n</HTML>"_s;
    if (comando == u"MenuTabella(2)"_s)
        return pagina.arg(u"<TABLE>|</TABLE>"_s);
    if (comando == u"MenuTabella(3)"_s || comando == u"MenuTabella(4)"_s)
        return pagina.arg(u"<TABLE><TR>|</TR></TABLE>"_s);
    if (comando.startsWith(u"MenuForm("_s) && comando != u"MenuForm(0)"_s)
        return pagina.arg(u"<FORM action=\"f\">|</FORM>"_s);
    return pagina.arg(u"prima|dopo"_s);
}

QString SenzaSegno(QString testo)
{
    return testo.remove(u'|');
}

} // namespace

class TstComandi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProgrammaDiProva::Prepara(m_cartella);
        QDesktopServices::setUrlHandler(u"file"_s, this, "ApreFile");
        RiempiAzioni();
    }

    void init()
    {
        ProgrammaDiProva::TogliRecuperi();
        m_dialoghi.clear();
        if (m_finestra)
            return;
        Stato() = {};
        m_finestra = std::make_unique<FrmStart>();
        ProgrammaDiProva::Avvia(*m_finestra);
    }

    void cleanupTestCase()
    {
        m_finestra.reset();
        QDesktopServices::unsetUrlHandler(u"file"_s);
    }

    void everyTrigger_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("comando");
        for (const TabellaComandi::Voce &voce : TabellaComandi::Menu()) {
            if (!voce.comando.isEmpty() && !voce.sottomenu)
                QTest::newRow(qPrintable(voce.comando.toString()))
                    << voce.comando.toString() << (voce.svolge.isEmpty() ? voce.comando : voce.svolge).toString();
        }
        for (const TabellaComandi::Bottone &bottone : TabellaComandi::Bottoni()) {
            if (bottone.indice == 0)
                continue;
            const QString nome = u"%1(%2)"_s.arg(bottone.barra).arg(bottone.indice);
            QTest::newRow(qPrintable(u"button "_s + nome)) << nome << bottone.comando.toString();
        }
    }

    void everyTrigger()
    {
        QFETCH(QString, nome);
        QFETCH(QString, comando);
        auto *voce = m_finestra->findChild<QAction *>(nome);
        if (Spenti.contains(comando)) {
            QVERIFY(voce && !voce->isVisible() && !voce->isEnabled());
            return;
        }
        QVERIFY2(m_prove.contains(comando), "a command of the table that this test does not know");
        m_prove.value(comando)([voce, bottone = m_finestra->findChild<QToolButton *>(nome)] {
            QVERIFY(bottone ? bottone->isVisible() && bottone->isEnabled()
                            : voce && voce->isVisible() && voce->isEnabled());
            bottone ? bottone->click() : voce->trigger();
        });
    }

    void fragmentsPassTheCheckInEveryLanguage()
    {
        for (const auto &[lingua, nome, file, locale] : ModuloPrincipale::Lingue()) {
            QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), lingua).Riuscito());
            for (const TabellaFrammenti::Frammento &frammento : TabellaFrammenti::Elenco()) {
                const QString comando = frammento.comando.toString();
                const QString pagina = PaginaPer(comando).replace(u"|"_s, TabellaFrammenti::Testo(comando));
                QCOMPARE(VerificaDaRiga::InRighe(comando, pagina), QString());
            }
        }
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), 0).Riuscito());
    }

    // Without a pause in which a record would be taken anyway.
    void quickTypingAroundACommandIsNotPartOfIt()
    {
        Metti(u"abc|"_s);
        RichTextBox *pad = m_finestra->PadCorrente();
        const QString file = m_cartella.filePath(u"altra.html"_s);
        Aiuti::Scrivi(file, "<P>altra</P>");
        QStringList passi{Testo()};
        const auto scrivi = [&] {
            QTest::keyClicks(pad, u"x"_s);
            passi += Testo();
        };
        scrivi();
        m_finestra->ElencoComandi().Esegui(u"ToolFormat2(1)"_s);
        passi += Testo();
        scrivi();
        QVERIFY(m_finestra->findChild<PaginaCorrente *>()->Apri(file));
        passi += Testo();
        scrivi();
        for (passi.removeLast(); !passi.isEmpty(); passi.removeLast()) {
            QVERIFY(m_finestra->UndoRTB()->AnnullaComando());
            QCOMPARE(Testo(), passi.last());
        }
    }

    void theListSaysWhatStandsInThePage()
    {
        const auto *elenco = m_finestra->findChild<FrmControlloSintassi *>();
        RichTextBox *pad = m_finestra->PadCorrente();
        const auto voci = [elenco] {
            QStringList testi;
            for (int riga = 0; riga < elenco->ListCount(); ++riga)
                testi += elenco->List(riga).section(u'\'', 0, 1);
            return testi.join(u'|');
        };
        const auto verifica = [this] {
            m_finestra->ElencoComandi().Esegui(u"MenuStrumenti(0)"_s);
            return m_finestra->findChild<QLabel *>(u"StatusBar(1)"_s)->text();
        };
        Metti(u"|<P>\r\n<zz><zz></zz>\r\n<yy>"_s);
        for (int volta = 0; volta < 2; ++volta) { // with nothing new to find, too
            QCOMPARE(verifica(), ModuloPrincipale::Messaggio(411).arg(2));
            QCOMPARE(voci(), u"2: Il tag 'zz|3: Il tag 'yy"_s);
        }
        QTest::keyClick(pad, Qt::Key_Return);
        QTRY_COMPARE(voci(), u"3: Il tag 'zz|4: Il tag 'yy"_s);
        pad->Seleziona(8, 2);
        pad->ImpostaSelText(u"B"_s); // the other ones stand there still
        QTRY_COMPARE(voci(), u"3: Il tag 'zz|4: Il tag 'yy"_s);
        m_finestra->UndoRTB()->TakeUndoSnapShot();
        pad->SostituisciTutte({11, 16, 22}, 2, u"B"_s);
        QTRY_COMPARE(voci(), QString());
        QCOMPARE(verifica(), ModuloPrincipale::Messaggio(410));
        for (int i = 0; i < pad->Lunghezza(); ++i)
            QVERIFY(!pad->AspettoIn(i).onda);
        QVERIFY(m_finestra->UndoRTB()->AnnullaComando());
        QTRY_COMPARE(voci(), u"3: Il tag 'zz|4: Il tag 'yy"_s);
        QVERIFY(m_finestra->UndoRTB()->RipristinaComando());
        QTRY_COMPARE(voci(), QString());
        QCOMPARE(verifica(), ModuloPrincipale::Messaggio(410));
        pad->Seleziona(8, 0);
        pad->ImpostaSelText(u"x"_s); // nobody has checked that yet
        QTRY_VERIFY(m_finestra->findChild<QLabel *>(u"StatusBar(1)"_s)->text() != ModuloPrincipale::Messaggio(410));
        QCOMPARE(voci(), QString());
        QCOMPARE(verifica(), ModuloPrincipale::Messaggio(411).arg(1));
        QVERIFY(ModuloVerificaSintassi::ArrayRisultati().size() > 3);
        Metti(u"|<P>"_s); // another page
        QTRY_COMPARE(voci(), QString());
    }

public slots:
    void ApreFile(const QUrl &url) { m_aperto = url; }

private:
    using Azione = std::function<void()>;
    void RiempiAzioni()
    {
        ProvaFile();
        ProvaModifica();
        ProvaInserimenti();
        m_prove[u"MenuStrumenti(0)"_s] = [this](const Azione &azione) {
            Metti(u"<P>|<BLINC>"_s);
            azione();
            QCOMPARE(ModuloVerificaSintassi::ArrayRisultati().size(), 2);
            Metti(u"<P>|"_s);
            azione();
        };
        m_prove[u"MenuStrumenti(2)"_s] = [this](const Azione &azione) {
            QFile::remove(Stato().FileAnteprima);
            azione();
            QVERIFY(QFile::exists(Stato().FileAnteprima));
        };
        m_prove[u"MenuStrumenti(6)"_s] = [](const Azione &azione) {
            azione();
            QVERIFY(Modelli::Mostra());
            azione();
            QVERIFY(!Modelli::Mostra());
        };
        for (const QString &comando : {u"MenuFile(7)"_s, u"MenuHelp(0)"_s}) {
            m_prove[comando] = [this](const Azione &azione) {
                Rispondi(&QDialog::reject);
                azione();
                QCOMPARE(m_dialoghi.size(), 1);
            };
        }
    }

    void ProvaModifica()
    {
        // The page before (what is selected between bars), the page after, and what the clipboard holds then.
        struct Modifica {
            QString comando, prima, dopo, appunti;
        };
        for (const Modifica &m : {Modifica{u"MenuEdit(3)"_s, u"a|bc|def"_s, u"adef"_s, u"bc"_s},
                                  {u"MenuEdit(4)"_s, u"a|bc|def"_s, u"abcdef"_s, u"bc"_s},
                                  {u"MenuEdit(5)"_s, u"a|bc|def"_s, u"aprimadef"_s, u"prima"_s},
                                  {u"MenuEdit(6)"_s, u"a|bc|def"_s, u"adef"_s, u"prima"_s},
                                  {u"ToolFormat(5)"_s, u"a\r\n | |b"_s, u"a\r\n b"_s, u"prima"_s},
                                  {u"ToolFormat(6)"_s, u"a\r\n| |b"_s, u"a\r\n\t b"_s, u"prima"_s}}) {
            m_prove[m.comando] = [this, m](const Azione &azione) {
                QApplication::clipboard()->setText(u"prima"_s);
                Metti(m.prima);
                m_finestra->PadCorrente()->Seleziona(int(m.prima.indexOf(u'|')),
                                                     int(m.prima.section(u'|', 1, 1).size()));
                m_finestra->AggiornaMenuModifica(m_finestra->HwndPad());
                azione();
                QCOMPARE(Testo(), m.dopo);
                QCOMPARE(QApplication::clipboard()->text(), m.appunti);
            };
        }
        for (const auto &[comando, dopo] : {std::pair(u"MenuEdit(0)"_s, u"abc"_s), {u"MenuEdit(1)"_s, u"abcx"_s}}) {
            m_prove[comando] = [this, comando = comando, dopo = dopo](const Azione &azione) {
                Metti(u"abc|"_s);
                QTest::keyClicks(m_finestra->PadCorrente(), u"x"_s);
                m_finestra->UndoRTB()->TakeUndoSnapShot();
                if (comando == u"MenuEdit(1)"_s)
                    m_finestra->ElencoComandi().Esegui(u"MenuEdit(0)"_s);
                azione();
                QCOMPARE(Testo(), dopo);
            };
        }
        for (const auto &[comando, scelto] : {std::pair(u"MenuEdit(8)"_s, u"abcdef"_s), {u"MenuEdit(11)"_s, u"de"_s}}) {
            m_prove[comando] = [this, scelto = scelto](const Azione &azione) {
                Metti(u"|abcdef"_s);
                FrmTrova::UltimaRicerca = u"de"_s;
                FrmTrova::PosizioneRicerca = 0;
                azione();
                QCOMPARE(m_finestra->PadCorrente()->SelText(), scelto);
            };
        }
        for (const auto &[comando, messaggio] : {std::pair(u"MenuEdit(10)"_s, 16), {u"MenuEdit(12)"_s, 18}}) {
            m_prove[comando] = [this, messaggio = qint16(messaggio)](const Azione &azione) {
                azione();
                auto *trova = m_finestra->findChild<FrmTrova *>();
                QVERIFY(trova && trova->isVisible());
                QCOMPARE(trova->windowTitle(), Messaggio(messaggio));
                trova->close();
            };
        }
    }

    void ProvaFile()
    {
        const QString file = m_cartella.filePath(u"pagina.html"_s);
        const auto scegli = [](const QString &quale) {
            return [quale](QDialog *dialogo) { ProgrammaDiProva::Scegli(dialogo, quale); };
        };
        m_prove[u"MenuFile(0)"_s] = [this](const Azione &azione) {
            Metti(u"vecchia|"_s);
            Pagina()->Iniziata(); // nothing to ask about
            azione();
            QCOMPARE(Testo(), PaginaVuota::Testo());
        };
        m_prove[u"MenuFile(1)"_s] = [this, file, scegli](const Azione &azione) {
            Aiuti::Scrivi(file, "<P>aperta\r\n");
            Rispondi(scegli(file));
            azione();
            QCOMPARE(m_dialoghi, QStringList{u"ApriFileDialogo"_s});
            QCOMPARE(Testo(), u"<P>aperta\r"_s);
        };
        m_prove[u"MenuFile(4)"_s] = [this, file](const Azione &azione) {
            Aiuti::Scrivi(file, "<P>aperta\r\n");
            QVERIFY(Pagina()->Apri(file));
            Metti(u"<P>salvata|"_s);
            azione();
            QCOMPARE(Aiuti::Contenuto(file), "<P>salvata\r\n");
        };
        m_prove[u"MenuFile(5)"_s] = [this, scegli](const Azione &azione) {
            const QString altro = m_cartella.filePath(u"altro.html"_s);
            Metti(u"<P>con nome|"_s);
            Rispondi(scegli(altro));
            azione();
            QCOMPARE(m_dialoghi, QStringList{u"SalvaFileDialogo"_s});
            QCOMPARE(Aiuti::Contenuto(altro), "<P>con nome\r\n");
        };
        m_prove[u"MenuFile(9)"_s] = [this](const Azione &azione) {
            m_aperto.clear();
            m_finestra->ElencoComandi().Esegui(u"MenuStrumenti(2)"_s);
            azione();
            QCOMPARE(m_aperto, QUrl::fromLocalFile(Stato().FileAnteprima));
        };
        m_prove[u"MenuFile(11)"_s] = [this](const Azione &azione) {
            Pagina()->Iniziata();
            azione();
            QVERIFY(!m_finestra->isVisible());
            m_finestra.reset();
        };
    }

    void ProvaInserimenti()
    {
        for (const TabellaFrammenti::Frammento &frammento : TabellaFrammenti::Elenco()) {
            m_prove[frammento.comando.toString()] = [this,
                                                     comando = frammento.comando.toString()](const Azione &azione) {
                Metti(PaginaPer(comando));
                azione();
                Inserisce(TabellaFrammenti::Testo(comando));
            };
        }
        const auto dialogo = [this](const QString &comando, const QString &nome, const QString &testo) {
            m_prove[comando] = [this, comando, nome, testo](const Azione &azione) {
                Metti(PaginaPer(comando));
                const QString prima = Testo();
                Rispondi(&QDialog::reject);
                azione();
                QCOMPARE(Testo(), prima);
                Rispondi([](QDialog *quello) {
                    for (const auto &[campo, valore] : {std::pair(u"TxtFile"_s, u"img/a \"b\".gif"_s),
                                                        {u"txtRighe"_s, u"1"_s},
                                                        {u"TxtColonne"_s, u"1"_s}}) {
                        if (auto *scritta = quello->findChild<QLineEdit *>(campo))
                            scritta->setText(valore);
                    }
                    quello->findChild<QPushButton *>(u"Cmd(0)"_s)->click();
                });
                azione();
                QCOMPARE(m_dialoghi, (QStringList{nome, nome}));
                Inserisce(testo);
            };
        };
        dialogo(u"MFont"_s, u"FrmFont"_s, u"<font size=\"2\" color=\"aqua\" face=\"Arial\"> testo di prova </font>"_s);
        dialogo(u"MenuCollegamenti(0)"_s, u"FrmImage"_s, u"<IMG src=\"img/a &quot;b&quot;.gif\">"_s);
        dialogo(u"MenuCollegamenti(1)"_s, u"FrmImage"_s, u" background=\"img/a &quot;b&quot;.gif\""_s);
        dialogo(u"MenuTabella(0)"_s, u"FrmTabella"_s,
                u"<TABLE width=\"60%\" height=\"80\" border=\"3\" cellspacing=\"2\" cellpadding=\"3\">\r\n  <TR>\r\n"
                "    <TD> Cella 1</TD>\r\n  </TR>\r\n</TABLE>"_s);
    }

    void Metti(const QString &conCaretto)
    {
        m_finestra->PadCorrente()->ImpostaText(SenzaSegno(conCaretto));
        m_finestra->PadCorrente()->ImpostaSelStart(int(conCaretto.indexOf(u'|')));
        m_finestra->UndoRTB()->TakeUndoSnapShot();
    }

    /// The text \a testo stands before the caret, passes the check and goes with one step back.
    void Inserisce(const QString &testo)
    {
        const QString prima = Testo();
        RichTextBox *pad = m_finestra->PadCorrente();
        const int caretto = pad->SelStart();
        QVERIFY(caretto >= testo.size());
        QCOMPARE(prima.sliced(caretto - testo.size(), testo.size()), testo);
        QCOMPARE(VerificaDaRiga::InRighe(u"p"_s, prima), QString());
        QCOMPARE(ModuloVerificaSintassi::ArrayRisultati().size(), 1);
        m_finestra->ElencoComandi().Esegui(u"MenuEdit(0)"_s);
        QCOMPARE(Testo(), QString(prima).remove(caretto - testo.size(), testo.size()));
    }

    /// Answers the dialogs that come up during the next action.
    void Rispondi(const std::function<void(QDialog *)> &risposta)
    {
        auto *attesa = new QTimer(m_finestra.get());
        connect(attesa, &QTimer::timeout, this, [this, attesa, risposta] {
            auto *dialogo = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialogo)
                return;
            if (qobject_cast<QFileDialog *>(dialogo) && dialogo->parentWidget() != m_finestra.get()) {
                dialogo->reject(); // the image dialog's own
                return;
            }
            m_dialoghi += dialogo->objectName();
            attesa->deleteLater();
            attesa->stop();
            risposta(dialogo);
        });
        attesa->start(0);
    }

    [[nodiscard]] PaginaCorrente *Pagina() const { return m_finestra->findChild<PaginaCorrente *>(); }
    [[nodiscard]] QString Testo() const { return m_finestra->PadCorrente()->Text(); }

    QTemporaryDir m_cartella;
    std::unique_ptr<FrmStart> m_finestra;
    QHash<QString, std::function<void(const Azione &)>> m_prove; ///< by command; runs the action and looks
    QUrl m_aperto;
    QStringList m_dialoghi; ///< names of the dialogs that came up
};

QTEST_MAIN(TstComandi)
#include "tst_comandi.moc"
