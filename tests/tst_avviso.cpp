#include "chrome/FrmAdvTooltip.h"

#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "platform/VersionePiattaforma.h"
#include "Colonne.h"

#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTimer>
#include <QtTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr QPoint Centro{300, 300};

FrmAdvTooltip &Mostra(const QString &testo, int secondi = 60, QPoint punto = Centro, const QColor &colore = {},
                      int larghezza = 0)
{
    FrmAdvTooltip::MsgAuto_box(testo, FrmAdvTooltip::Informazione, u"Titolo"_s, secondi, punto, colore, larghezza);
    return *FrmAdvTooltip::Corrente();
}

QString Testo(const FrmAdvTooltip &f)
{
    return f.findChild<QLabel *>(u"LblTesto"_s)->text();
}

} // namespace

class tst_avviso : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ModuloGrafica::ApplicaStile(*qApp); }
    void cleanup()
    {
        if (FrmAdvTooltip::Corrente())
            FrmAdvTooltip::Corrente()->close();
        QTRY_VERIFY(!FrmAdvTooltip::Corrente());
    }

    void lato_data()
    {
        Colonne<QPoint, int, bool>({"punto", "altezza", "sotto"});
        QTest::newRow("just fits below") << QPoint(50, 519) << 80 << true;
        QTest::newRow("a pixel short: above") << QPoint(50, 520) << 80 << false;
        QTest::newRow("room nowhere: the larger side, below") << QPoint(50, 200) << 900 << true;
        QTest::newRow("room nowhere: the larger side, above") << QPoint(50, 400) << 900 << false;
    }

    void lato()
    {
        QFETCH(QPoint, punto);
        QFETCH(int, altezza);
        QFETCH(bool, sotto);
        // With the balloon below the point, its pointer goes up.
        QCOMPARE(FrmAdvTooltip::GetPointerStyle(punto, altezza, QRect(0, 0, 800, 600)) ==
                     FrmAdvTooltip::Puntatore::InAlto,
                 sotto);
    }

    void colori()
    {
        const QColor atteso(205, 236, 236);
        FrmAdvTooltip &f = Mostra(u"testo"_s, 60, Centro, atteso);
        const QImage vista = f.grab().toImage();
        QCOMPARE(vista.pixelColor(f.n_GetMainRect().center().x(), f.n_GetMainRect().bottom() - 4), atteso);
        QCOMPARE(vista.pixelColor(f.n_GetMainRect().right() - 4, f.n_GetMainRect().center().y()), atteso);
        // The shadow falls outside the body, to the lower right.
        const QPoint ombra(f.n_GetMainRect().center().x(), f.n_GetShadowRect().bottom());
        QVERIFY(!f.n_GetMainRect().contains(ombra));
        QVERIFY(vista.pixelColor(ombra) != atteso);
        QVERIFY(vista.pixelColor(ombra).alpha() > 0);
    }

    void larghezza()
    {
        const QString lungo = u"parola "_s.repeated(60);
        QCOMPARE(Mostra(lungo, 60, Centro, {}, 6000).width(), 400);
        const int alta = FrmAdvTooltip::Corrente()->height();
        QVERIFY2(Mostra(lungo, 60, Centro, {}, 3500).height() > alta, "a narrower hint wraps into more lines");
        QVERIFY(Mostra(u"breve"_s).width() < 200);
        // A width that is no width still shows the text.
        QVERIFY(Mostra(u"breve"_s, 60, Centro, {}, 1).findChild<QLabel *>(u"LblTesto"_s)->width() >= 40);
    }

    void tempo_data()
    {
        Colonne<int, int>({"secondi", "millisecondi"});
        QTest::newRow("more than 16 bits of milliseconds") << 120 << 120000;
        QTest::newRow("more than 31 bits of milliseconds")
            << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
        QTest::newRow("negative: at once") << -1 << 0;
    }

    void tempo()
    {
        QFETCH(int, secondi);
        QFETCH(int, millisecondi);
        const auto *timer = Mostra(u"x"_s, secondi).findChild<QTimer *>(u"Timer1"_s);
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), millisecondi);
    }

    void siChiudeDaSolo()
    {
        const QPointer<FrmAdvTooltip> f(&Mostra(u"x"_s, 0));
        QTRY_VERIFY(!f);
        QVERIFY(!FrmAdvTooltip::Corrente());
        QCOMPARE(Testo(Mostra(u"un altro"_s)), u"un altro"_s);
        QVERIFY(FrmAdvTooltip::Corrente()->isVisible());
    }

    void unSoloAvviso()
    {
        Mostra(u"primo"_s, 1);
        FrmAdvTooltip &secondo = Mostra(u"<b>secondo</b> & \"altro\""_s, 60, QPoint(100, 100), Qt::white);
        int quanti = 0;
        for (const QWidget *finestra : qApp->topLevelWidgets())
            quanti += finestra->objectName() == u"FrmAdvTooltip" && finestra->isVisible();
        QCOMPARE(quanti, 1);
        QCOMPARE(Testo(secondo), u"<b>secondo</b> & \"altro\""_s);
        QCOMPARE(secondo.findChild<QLabel *>(u"LblTesto"_s)->textFormat(), Qt::PlainText);
        QCOMPARE(secondo.Punta(), QPoint(100, 100));
        QCOMPARE(secondo.findChild<QTimer *>(u"Timer1"_s)->interval(),
                 60000); // the first one's second no longer counts
    }

    void clicChiude()
    {
        const QPointer<FrmAdvTooltip> f(&Mostra(u"x"_s));
        // A click on the text reaches the hint just the same.
        QTest::mouseClick(f->findChild<QLabel *>(u"LblTesto"_s), Qt::LeftButton);
        QTRY_VERIFY(!f);
    }

    void nonPrendeIlFuoco()
    {
        QLineEdit campo;
        campo.show();
        campo.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&campo));
        campo.setFocus();
        FrmAdvTooltip &f = Mostra(u"x"_s);
        QTest::mouseMove(&f);
        QCOMPARE(QApplication::focusWidget(), &campo);
        QVERIFY(f.windowFlags() & Qt::WindowDoesNotAcceptFocus);
        QVERIFY(f.windowFlags() & Qt::WindowStaysOnTopHint);
        QTest::keyClicks(QApplication::focusWidget(), u"abc"_s);
        QCOMPARE(campo.text(), u"abc"_s);
        QCOMPARE(VersionePiattaforma(), 2); // below 3: this host shows hints
    }

    void dentroLoSchermo_data()
    {
        Colonne<double, double>({"x", "y"});
        for (const double x : {0.0, 0.5, 1.0}) {
            for (const double y : {0.0, 0.5, 1.0})
                QTest::addRow("%.1f %.1f", x, y) << x << y;
        }
    }

    void dentroLoSchermo()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        const QRect schermo = QGuiApplication::primaryScreen()->availableGeometry();
        const QPoint punto(schermo.left() + int(x * (schermo.width() - 1)),
                           schermo.top() + int(y * (schermo.height() - 1)));
        FrmAdvTooltip &f = Mostra(u"testo "_s.repeated(40), 60, punto, {}, 3500);
        QVERIFY2(schermo.contains(f.geometry()), qPrintable(QDebug::toString(f.geometry())));
        QCOMPARE(f.StilePuntatore() == FrmAdvTooltip::Puntatore::InBasso, y == 1.0);
        const QPoint lontano = f.Punta() - punto;
        QVERIFY2(qAbs(lontano.x()) <= 3 && qAbs(lontano.y()) <= 3, qPrintable(QDebug::toString(lontano)));
        QVERIFY(!f.n_GetMainRect().translated(f.pos()).contains(punto));
        // Far off any screen, the hint still appears where it can be read.
        QVERIFY(schermo.contains(Mostra(u"x"_s, 60, punto * 100 + QPoint(-50000, 50000)).geometry()));
    }

    void icona()
    {
        FrmAdvTooltip &f = Mostra(u"x"_s);
        auto *icona = f.findChild<QLabel *>(u"PicIcona"_s);
        QVERIFY(icona->isVisible());
        const QImage informazione = icona->pixmap().toImage();
        FrmAdvTooltip::MsgAuto_box(u"x"_s, FrmAdvTooltip::Errore, u"t"_s, 60, Centro);
        QVERIFY(icona->pixmap().toImage() != informazione);
        FrmAdvTooltip::MsgAuto_box(u"x"_s, 0, u"t"_s, 60, Centro);
        QVERIFY(!icona->isVisible());
        QCOMPARE(f.findChild<QLabel *>(u"LblTesto"_s)->x(), 10); // the text takes its room
    }
};

QTEST_MAIN(tst_avviso)
#include "tst_avviso.moc"
