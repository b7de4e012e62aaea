#include "chrome/ClsProgressBar.h"
#include "chrome/FrmProgressBar.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "chrome/TurnoStato.h"
#include "Colonne.h"

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace
{

/// A bar in a picture of 300 pixels, 4500 twips.
struct Prova {
    PictureBox riquadro;
    QLabel etichetta{&riquadro};
    QPointer<ClsProgressBar> barra = new ClsProgressBar;

    explicit Prova(double massimo)
    {
        QPalette bianco;
        bianco.setColor(QPalette::Window, Qt::white);
        riquadro.setPalette(bianco);
        riquadro.setAutoFillBackground(true);
        riquadro.resize(300, 10);
        barra->Picture(&riquadro);
        barra->Label(&etichetta);
        barra->Max(massimo);
    }
    ~Prova() { delete barra; }

    /// Pixels from the left that have the progress colour, in a line that the label does not cover.
    [[nodiscard]] int Riempito()
    {
        etichetta.hide();
        const QImage vista = riquadro.grab().toImage();
        int x = 0;
        while (x < vista.width() - 1 && vista.pixelColor(x + 1, 12) == QColor(240, 86, 53))
            ++x;
        return x == 0 ? 0 : x + 1;
    }
};

} // namespace

class tst_progresso : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ModuloGrafica::ApplicaStile(*qApp); }

    void passo_data()
    {
        // x: -1: nothing is drawn
        Colonne<double, double, double, float, int>({"valore", "massimo", "scala", "ultima", "x"});
        QTest::newRow("the maximum itself") << 200.0 << 200.0 << 200.0 / 4000 << 99.f << 4000;
        QTest::newRow("exactly one point more") << 52.0 << 200.0 << 0.05 << 25.f << 1040;
        QTest::newRow("less than a point more") << 51.9 << 200.0 << 0.05 << 25.f << -1;
        QTest::newRow("back to a smaller value") << 10.0 << 200.0 << 0.05 << 25.f << -1;
        QTest::newRow("over the maximum") << 200.1 << 200.0 << 0.05 << 0.f << -1;
        QTest::newRow("no maximum") << 0.0 << 0.0 << 0.0 << 0.f << -1;
        QTest::newRow("picture too narrow for a twip") << 50.0 << 200.0 << 1000.0 << 0.f << -1;
        QTest::newRow("not a number") << qQNaN() << 200.0 << 0.05 << 0.f << -1;
    }

    void passo()
    {
        QFETCH(double, valore);
        QFETCH(double, massimo);
        QFETCH(double, scala);
        QFETCH(float, ultima);
        QFETCH(int, x);
        const auto passo = ClsProgressBar::ProssimoPasso(valore, massimo, scala, ultima);
        QCOMPARE(passo ? passo->x : -1, x);
        if (passo)
            QCOMPARE(passo->percento, float(valore / massimo * 100));
    }

    void disegno()
    {
        Prova p(200);
        p.barra->Value(50);
        QCOMPARE(p.etichetta.text(), u"25%"_s);
        QCOMPARE(p.Riempito(), 75);
        p.barra->Value(201);
        QCOMPARE(p.barra->Value(), 50.0);
        QCOMPARE(p.Riempito(), 75);
        p.barra->Value(200);
        QCOMPARE(p.Riempito(), 300);
        QCOMPARE(p.etichetta.text(), u"100%"_s);
    }

    void passiPiccoli()
    {
        Prova p(1000);
        QStringList mostrati;
        QString prima;
        for (int v = 0; v <= 1000; ++v) {
            p.barra->Value(v);
            QCOMPARE(p.barra->Value(), double(v));
            if (p.etichetta.text() != std::exchange(prima, p.etichetta.text()))
                mostrati << prima;
        }
        QCOMPARE(mostrati.size(), 100);
        QCOMPARE(mostrati.first(), u"1%"_s);
        QCOMPARE(mostrati.last(), u"100%"_s);
        // A new maximum starts again.
        p.barra->Max(10);
        p.barra->Value(1);
        QCOMPARE(p.etichetta.text(), u"10%"_s);
    }

    void cancella()
    {
        Prova p(100);
        p.barra->Value(40);
        p.barra->Refresh();
        QCOMPARE(p.Riempito(), 0);
        p.barra->Value(80);
        QCOMPARE(p.Riempito(), 240);
        p.barra->Clear();
        QCOMPARE(p.Riempito(), 0);
    }

    void eventiNelMezzo()
    {
        // An event that runs during a step reports more progress: no recursion, and the next step shows it.
        Prova p(100);
        QTimer::singleShot(0, &p.riquadro, [&p] { p.barra->Value(60); });
        p.barra->Value(10);
        QCOMPARE(p.barra->Value(), 60.0);
        QCOMPARE(p.etichetta.text(), u"10%"_s);
        p.barra->Value(61);
        QCOMPARE(p.etichetta.text(), u"61%"_s);
    }

    void distruttaNelMezzo()
    {
        Prova p(100);
        QTimer::singleShot(0, &p.riquadro, [&p] { delete p.barra; });
        p.barra->Value(10);
        QVERIFY(!p.barra);
        QCOMPARE(p.etichetta.text(), QString());

        auto *riquadro = new PictureBox;
        ClsProgressBar sola;
        riquadro->resize(100, 20);
        sola.Picture(riquadro);
        sola.Max(10);
        QTimer::singleShot(0, riquadro, [riquadro] { delete riquadro; });
        sola.Value(5);
        QVERIFY(!sola.Picture());
        sola.Value(9);
        QCOMPARE(sola.Value(), 9.0);
    }

    void soloSeDura()
    {
        FrmProgressBar f;
        f.Mostra();
        QCoreApplication::processEvents();
        QVERIFY(!f.isVisible());
        f.Chiudi();
        QVERIFY(!f.findChild<QTimer *>()->isActive());
        f.Mostra(0);
        QTRY_VERIFY(f.isVisible());
        QCOMPARE(QApplication::activeModalWidget(), &f);
        QVERIFY2(!f.close(), "only its button closes it");
        QVERIFY(f.isVisible());
        f.Chiudi();
        QVERIFY(!f.isVisible());
        QVERIFY(!f.Annullato());
    }

    void annulla()
    {
        for (const bool tasto : {false, true}) {
            FrmProgressBar f;
            QSignalSpy annullato(&f, &FrmProgressBar::annullato);
            f.Mostra(0);
            QTRY_VERIFY(f.isVisible());
            if (tasto)
                QTest::keyClick(&f, Qt::Key_Escape);
            else
                QTest::mouseClick(f.findChild<QPushButton *>(u"CmdAnnulla"_s), Qt::LeftButton);
            QCOMPARE(annullato.size(), 1);
            QVERIFY(f.Annullato() && !f.isVisible());
            f.Mostra(0);
            QVERIFY2(!f.Annullato(), "a new run starts without the cancel of the last one");
        }
    }

    // A script: "f" a fact, "r" one on the reading, "p" a passing text, "a" the user does something, each at a second.
    void statusTexts_data()
    {
        Colonne<QString, QString>({"copione", "attesi"});
        QTest::newRow("a title waits for an action and five seconds") << u"0fA 0pt 9? 9a 9?"_s << u"A t"_s;
        QTest::newRow("an early action does not shorten it") << u"0fA 0pt 1a 4? 5?"_s << u"A t"_s;
        QTest::newRow("the latest passing text is shown") << u"0fA 0pt 1pu 2a 4? 6?"_s << u"A u"_s;
        QTest::newRow("no fact") << u"0pt 0? 1pu 1?"_s << u"t u"_s;
        QTest::newRow("a newer fact at once, the older one for the rest of its time")
            << u"0fA 0pt 1fB 1? 2a 5? 6? 8a 9? 10?"_s << u"B B A A t"_s;
        QTest::newRow("a fact that nobody saw has all its time") << u"0fA 0fB 0pt 1a 5? 6a 9? 10?"_s << u"A A t"_s;
        QTest::newRow("one that had its time does not come back") << u"0fA 0pt 6a 6fB 11a 11?"_s << u"t"_s;
        QTest::newRow("the same thing has one fact") << u"0rA 0pt 1rB 1? 2a 6?"_s << u"B t"_s;
        QTest::newRow("taken back") << u"0rA 0pt 1r 1?"_s << u"t"_s;
        QTest::newRow("taken back under another") << u"0rA 0pt 1fB 2r 2? 3a 6?"_s << u"B t"_s;
    }
    void statusTexts()
    {
        QFETCH(QString, copione);
        TurnoStato turno;
        QStringList visti;
        for (const QString &passo : copione.split(u' ')) {
            const qsizetype verbo = passo.indexOf(QRegularExpression(u"\\D"_s));
            const qint64 ora = passo.first(verbo).toLongLong() * 1000;
            const QString testo = passo.sliced(verbo + 1);
            switch (passo[verbo].unicode()) {
            case u'f':
                turno.Fatto(testo, TurnoStato::Argomento::Altro, ora);
                break;
            case u'r':
                turno.Fatto(testo, TurnoStato::Argomento::Lettura, ora);
                break;
            case u'p':
                turno.DiPassaggio(testo);
                break;
            case u'a':
                turno.Azione(ora);
                break;
            default:
                visti += turno.Testo(ora);
            }
        }
        QTEST(visti.join(u' '), "attesi");
    }
};

QTEST_MAIN(tst_progresso)
#include "tst_progresso.moc"
