#include "chrome/FrmAdvTooltip.h"

#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "platform/VersionePiattaforma.h"

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

    void lato()
    {
        // With the balloon below the point, its pointer goes up. Where there is no room, the larger side is taken.
        for (const auto &[y, altezza, sotto] :
             {std::tuple(519, 80, true), {520, 80, false}, {200, 900, true}, {400, 900, false}})
            QCOMPARE(FrmAdvTooltip::GetPointerStyle(QPoint(50, y), altezza, QRect(0, 0, 800, 600)) ==
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
        // A width too small for any text.
        QVERIFY(Mostra(u"breve"_s, 60, Centro, {}, 15).findChild<QLabel *>(u"LblTesto"_s)->width() >= 40);
    }

    void tempo()
    {
        constexpr int Massimo = std::numeric_limits<int>::max();
        for (const auto &[secondi, millisecondi] : {std::pair(120, 120'000), {Massimo, Massimo}, {-1, 0}}) {
            const auto *timer = Mostra(u"x"_s, secondi).findChild<QTimer *>(u"Timer1"_s);
            QVERIFY(timer->isActive());
            QCOMPARE(timer->interval(), millisecondi);
        }
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
        QCOMPARE(VersionePiattaforma(), 2); // below 3: this host shows hints
    }

    void dentroLoSchermo()
    {
        const QRect schermo = QGuiApplication::primaryScreen()->availableGeometry();
        for (const double x : {0.0, 0.5, 1.0}) {
            for (const double y : {0.0, 0.5, 1.0}) {
                const QPoint punto(schermo.left() + int(x * (schermo.width() - 1)),
                                   schermo.top() + int(y * (schermo.height() - 1)));
                FrmAdvTooltip &f = Mostra(u"testo "_s.repeated(40), 60, punto, {}, 3500);
                QVERIFY2(schermo.contains(f.geometry()), qPrintable(QDebug::toString(f.geometry())));
                QCOMPARE(f.StilePuntatore() == FrmAdvTooltip::Puntatore::InBasso, y == 1.0);
                QVERIFY2((f.Punta() - punto).manhattanLength() <= 6, qPrintable(QDebug::toString(f.Punta())));
                QVERIFY(!f.n_GetMainRect().translated(f.pos()).contains(punto));
            }
        }
        // Far off any screen, the hint still appears where it can be read.
        QVERIFY(schermo.contains(Mostra(u"x"_s, 60, QPoint(-50000, 50000)).geometry()));
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
