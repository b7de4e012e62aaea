#include "ProgrammaDiProva.h"

#include "app/FotoFile.h"
#include "app/GuardiaFile.h"
#include "app/PaginaCorrente.h"

#include <QAction>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace Aiuti;
using namespace ProgrammaDiProva;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

// The page, its file, and what happens to that behind the program's back.
class TstPaginaCorrente : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Prepara(m_cartella); }

    void init()
    {
        Stato() = {};
        TogliRecuperi();
        m_domande.clear();
        m_risposte.clear();
        m_nome.clear();
        m_file = m_cartella.filePath(u"%1.html"_s.arg(++m_volta));
        connect(&m_attesa, &QTimer::timeout, this, &TstPaginaCorrente::Rispondi);
        m_attesa.start(0);
    }
    void cleanup() { m_attesa.disconnect(); }

    void changedOutside_data()
    {
        QTest::addColumn<QString>("fuori");
        QTest::addColumn<QList<int>>("risposte");
        QTest::addColumn<QList<int>>("domande"); ///< when the window becomes active twice, then at Save
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QByteArray>("disco"); ///< "?": no file

        const QString mio = u"mio uno\r"_s;
        const QByteArray scritto = "mio uno\r\n";
        using Numeri = QList<int>;
        QTest::newRow("nothing") << u"niente"_s << Numeri{} << Numeri{} << mio << scritto;
        QTest::newRow("same content, other time") << u"stesso"_s << Numeri{} << Numeri{} << mio << scritto;
        QTest::newRow("keep mine") << u"altro"_s << Numeri{389} << Numeri{384} << mio << scritto;
        QTest::newRow("load the other") << u"altro"_s << Numeri{390} << Numeri{384} << u"due\r"_s
                                        << QByteArray("due\r\n");
        QTest::newRow("later, then give up")
            << u"altro"_s << Numeri{278, 314} << Numeri{384, 384} << mio << QByteArray("due\n");
        QTest::newRow("later, then keep") << u"altro"_s << Numeri{278, 389} << Numeri{384, 384} << mio << scritto;
        QTest::newRow("same size, older") << u"vecchio"_s << Numeri{389} << Numeri{384} << mio << scritto;
        QTest::newRow("twice") << u"due volte"_s << Numeri{389, 314} << Numeri{384, 384} << mio
                               << QByteArray("quattro\n");
        QTest::newRow("deleted") << u"tolto"_s << Numeri{389} << Numeri{385, 316} << mio << QByteArray("?");
        QTest::newRow("read-only") << u"protetto"_s << Numeri{389, 314} << Numeri{386, 386} << mio
                                   << QByteArray("uno\r\n");
        QTest::newRow("folder") << u"cartella"_s << Numeri{389, 314} << Numeri{387, 387} << mio << QByteArray("?");
    }
    void changedOutside()
    {
        QFETCH(QString, fuori);
        QFETCH(QList<int>, risposte);
        Aiuti::Scrivi(m_file, "uno\r\n");
        FrmStart finestra(m_file);
        Avvia(finestra);
        QTest::keyClicks(finestra.PadCorrente(), u"mio "_s);
        m_risposte = risposte;
        Cambia(fuori);
        Attiva(finestra);
        if (fuori == u"due volte")
            Cambia(u"ancora"_s);
        else
            Attiva(finestra);
        finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
        QTEST(m_domande, "domande");
        QTEST(finestra.PadCorrente()->Text(), "testo");
        QTEST(Contenuto(m_file), "disco");
        QVERIFY(m_risposte.isEmpty());
        // One step back brings the own text of the same file, and that is not what the file holds.
        if (risposte == QList<int>{390}) {
            QTest::keyClick(finestra.PadCorrente(), Qt::Key_Z, Qt::ControlModifier);
            QVERIFY(finestra.findChild<QLabel *>(u"StatusBar(1)"_s)->text() != Messaggio(394));
            QCOMPARE(finestra.PadCorrente()->Text(), u"mio uno\r"_s);
            QVERIFY(finestra.findChild<PaginaCorrente *>()->Modificata());
            QCOMPARE(Stato().FileCorrente, m_file);
            finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
            QCOMPARE(Contenuto(m_file), "mio uno\r\n");
        }
        QFile::setPermissions(m_file, QFile::ReadOwner | QFile::WriteOwner);
    }

    // Who types on when the question comes up answers nothing, and finds it in the page afterwards.
    void typedIntoTheQuestion_data()
    {
        QTest::addColumn<QList<int>>("risposte");
        QTest::addColumn<QString>("testo");

        QTest::newRow("later") << QList<int>{278} << u"mio <b>x y\r\n</b>uno\r"_s;
        QTest::newRow("keep mine") << QList<int>{389} << u"mio <b>x y\r\n</b>uno\r"_s;
        QTest::newRow("load the other") << QList<int>{390} << u"due\r"_s;
        QTest::newRow("under another name, given up") << QList<int>{391, 314} << u"mio <b>x y\r\n</b>uno\r"_s;
    }
    void typedIntoTheQuestion()
    {
        QFETCH(QList<int>, risposte);
        Aiuti::Scrivi(m_file, "uno\r\n");
        FrmStart finestra(m_file);
        Avvia(finestra);
        RichTextBox *pad = finestra.PadCorrente();
        QTest::keyClicks(pad, u"mio "_s);
        m_battuti = u"<b>x y\r"_s;
        m_risposte = risposte;
        Cambia(u"altro"_s);
        Attiva(finestra);
        QTRY_VERIFY(m_risposte.isEmpty());
        QFETCH(QString, testo);
        QTRY_COMPARE(pad->Text(), testo);
        if (risposte == QList<int>{390}) {
            QTest::keyClick(pad, Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(pad->Text(), u"mio <b>x y\r\n</b>uno\r"_s);
        }
    }

    // A change so soon after the last look that it has the same time is no reason to be sure.
    void sureOnlyOfWhatIsOldEnough()
    {
        constexpr qint64 secondo = 1'000'000'000;
        FotoFile prima{FotoFile::Specie::Regolare, 5, 10 * secondo, 10 * secondo, 11 * secondo, false, "a"};
        FotoFile ora = prima;
        ora.scattata = 99 * secondo;
        QVERIFY(!prima.Certamente(ora));
        prima.scattata = 12 * secondo + 1;
        QVERIFY(prima.Certamente(ora));
        ora.cambiata += 1;
        QVERIFY(!prima.Certamente(ora));
    }

    // Text, title, file and encoding are of one page, however often it is undone.
    void undoOverOpen()
    {
        const QString altro = m_cartella.filePath(u"altro.html"_s);
        Aiuti::Scrivi(m_file, "<META charset=KOI8-R>uno\r\n");
        Aiuti::Scrivi(altro, "\xEF\xBB\xBF"
                             "due\r\n");
        FrmStart finestra(m_file);
        Avvia(finestra);
        RichTextBox *pad = finestra.PadCorrente();
        auto *pagina = finestra.findChild<PaginaCorrente *>();
        QTest::keyClicks(pad, u"mio "_s);
        QVERIFY(pagina->Apri(altro));
        const auto stato = [&] {
            return QStringList{pad->Text(), finestra.windowTitle(), Stato().FileCorrente,
                               finestra.findChild<QLabel *>(u"StatusBar(4)"_s)->text(),
                               pagina->Modificata() ? u"modificata"_s : QString()};
        };
        const QStringList aperta{u"due\r"_s, u"Velloro - [altro.html]"_s, altro, u"UTF-8"_s, QString()};
        QCOMPARE(stato(), aperta);
        QTest::keyClick(pad, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(stato(), (QStringList{u"mio <META charset=KOI8-R>uno\r"_s, u"Velloro - [%1]"_s.arg(Messaggio(344)),
                                       QString(), u"KOI8-R"_s, u"modificata"_s}));
        QCOMPARE(ModuloDichiarazioni::PostoPagina(), m_file);
        m_risposte = {314};
        finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger(); // asks for a name
        QCOMPARE(m_domande, QList<int>{316});
        QTest::keyClick(pad, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(stato(), aperta);
        QCOMPARE(Contenuto(altro), QByteArray("\xEF\xBB\xBF"
                                              "due\r\n"));
    }

    // What no question was asked about is offered at the next start.
    void neverSavedTextStays()
    {
        for (const bool aperta : {false, true}) {
            init();
            Aiuti::Scrivi(m_file, aperta ? "uno\r\n" : QByteArray());
            Aiuti::Scrivi(m_cartella.filePath(u"b.html"_s), "b\r\n");
            FrmStart finestra(m_file);
            Avvia(finestra);
            QTest::keyClicks(finestra.PadCorrente(), u"mai salvato "_s);
            // Another page in its place, or the end of the program.
            if (aperta)
                QVERIFY(finestra.findChild<PaginaCorrente *>()->Apri(m_cartella.filePath(u"b.html"_s)));
            QVERIFY(finestra.close());
            const auto voci = Recupero::DaOffrire();
            QCOMPARE(voci.size(), size_t(1));
            QVERIFY(Recupero::Leggi(voci.front())->testo.startsWith(u"mai salvato"));
            QCOMPARE(m_domande, QList<int>{});
        }
        // The same goes for a text that nobody changed, once its file holds another one or is gone.
        for (const QString &fuori : {u"altro"_s, u"tolto"_s, u"stesso"_s}) {
            init();
            Aiuti::Scrivi(m_file, "uno\r\n");
            FrmStart finestra(m_file);
            Avvia(finestra);
            m_risposte = {389};
            Cambia(fuori);
            if (fuori == u"altro")
                Attiva(finestra);
            QVERIFY(finestra.close());
            const auto voci = Recupero::DaOffrire();
            QCOMPARE(voci.size(), size_t(fuori != u"stesso"));
            for (const VoceRecupero &voce : voci)
                QCOMPARE(Recupero::Leggi(voce)->testo, u"uno\r"_s);
        }
        // A page that was begun claims no file, not even when it is recovered.
        init();
        {
            Aiuti::Scrivi(m_file, "uno\r\n");
            FrmStart finestra(m_file);
            Avvia(finestra);
            finestra.PadCorrente()->ImpostaText({});
            finestra.findChild<PaginaCorrente *>()->Iniziata();
            QTest::keyClicks(finestra.PadCorrente(), u"x"_s);
            QVERIFY(finestra.close());
            const auto voci = Recupero::DaOffrire();
            QCOMPARE(voci.size(), size_t(1));
            QCOMPARE(voci.front().FileCorrente, QString());
        }
        // Saved after all: nothing is left.
        init();
        Aiuti::Scrivi(m_file, "uno\r\n");
        {
            FrmStart finestra(m_file);
            Avvia(finestra);
            QTest::keyClicks(finestra.PadCorrente(), u"x"_s);
            QVERIFY(finestra.findChild<PaginaCorrente *>()->Apri(m_cartella.filePath(u"b.html"_s)));
            QTest::keyClick(finestra.PadCorrente(), Qt::Key_Z, Qt::ControlModifier);
            m_nome = m_cartella.filePath(u"c.html"_s);
            finestra.findChild<QAction *>(u"MenuFile(4)"_s)->trigger();
            QCOMPARE(Contenuto(m_nome), QByteArray("xuno\r\n"));
        }
        QVERIFY(Recupero::DaOffrire().empty());
    }

private:
    void Cambia(const QString &come)
    {
        const auto rimpiazza = [this](const QByteArray &byte) {
            Aiuti::Scrivi(m_file + u".nuovo"_s, byte);
            QFile::remove(m_file);
            QVERIFY(QFile::rename(m_file + u".nuovo"_s, m_file));
        };
        if (come == u"stesso")
            rimpiazza("uno\r\n");
        else if (come == u"altro" || come == u"due volte")
            rimpiazza("due\n");
        else if (come == u"ancora")
            rimpiazza("quattro\n");
        else if (come == u"protetto")
            QVERIFY(QFile::setPermissions(m_file, QFile::ReadOwner));
        if (come == u"tolto" || come == u"cartella")
            QVERIFY(QFile::remove(m_file));
        if (come == u"cartella")
            QVERIFY(QDir().mkdir(m_file));
        if (come == u"vecchio") {
            Aiuti::Scrivi(m_file, "due\r\n");
            QFile file(m_file);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000), QFileDevice::FileModificationTime));
        }
    }

    /// The window becomes the active one; what it then asks has been answered.
    static void Attiva(FrmStart &finestra)
    {
        const QSignalSpy guardato(finestra.findChild<GuardiaFile *>(), &GuardiaFile::DaGuardare);
        QEvent evento(QEvent::WindowActivate);
        QApplication::sendEvent(&finestra, &evento);
        QTRY_VERIFY(!guardato.isEmpty());
    }

    /// Notes the number of the question that is open, and chooses the next answer; file dialogs get m_nome.
    void Rispondi()
    {
        auto *dialogo = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialogo)
            return;
        if (qobject_cast<QFileDialog *>(dialogo)) {
            m_domande += 316;
            if (!m_nome.isEmpty())
                return Scegli(dialogo, m_nome);
            m_risposte.removeOne(314);
            return dialogo->reject();
        }
        auto *domanda = qobject_cast<QMessageBox *>(dialogo);
        for (int numero = 384; numero < 400; ++numero) {
            if (domanda->text() == Messaggio(qint16(numero)).arg(m_file))
                m_domande += numero;
        }
        QTest::keyClicks(domanda->focusWidget(), std::exchange(m_battuti, {}));
        const QString scelta = m_risposte.isEmpty() ? QString() : Messaggio(qint16(m_risposte.takeFirst()));
        for (QAbstractButton *bottone : domanda->buttons()) {
            if (bottone->text() == scelta)
                return bottone->click();
        }
        m_domande += -1; // no such button
        domanda->reject();
    }

    QTemporaryDir m_cartella;
    QString m_file;
    QString m_nome; ///< for file dialogs; empty: they are given up
    QTimer m_attesa;
    QString m_battuti; ///< into the next question, before it is answered
    QList<int> m_domande;
    QList<int> m_risposte;
    int m_volta = 0;
};

QTEST_MAIN(TstPaginaCorrente)
#include "tst_paginacorrente.moc"
