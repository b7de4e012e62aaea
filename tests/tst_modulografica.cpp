#include "chrome/ModuloGrafica.h"

#include "chrome/Colori.h"
#include "chrome/PictureBox.h"
#include "Colonne.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

double Luminanza(const QColor &c)
{
    const auto lineare = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * lineare(c.redF()) + 0.7152 * lineare(c.greenF()) + 0.0722 * lineare(c.blueF());
}

double Contrasto(const QColor &a, const QColor &b)
{
    const double x = Luminanza(a), y = Luminanza(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

QImage Figura(const QString &nome, int lato, QIcon::Mode modo = QIcon::Normal)
{
    return ModuloGrafica::Icona(nome)
        .pixmap(QSize(lato, lato), 1, modo)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

double Inchiostro(const QImage &immagine)
{
    double somma = 0;
    for (int y = 0; y < immagine.height(); ++y) {
        for (int x = 0; x < immagine.width(); ++x)
            somma += qAlpha(immagine.pixel(x, y)) / 255.0;
    }
    return somma / (immagine.width() * immagine.height());
}

/// Two pixels that an eye tells apart on the panel colour.
bool Lontani(QRgb a, QRgb b)
{
    const auto sopra = [](QRgb c) {
        return Colori::Mescola(Colori::Pannello, QColor(qRed(c), qGreen(c), qBlue(c)), qAlpha(c) / 255.0);
    };
    const QColor x = sopra(a), y = sopra(b);
    return qAbs(x.red() - y.red()) + qAbs(x.green() - y.green()) + qAbs(x.blue() - y.blue()) > 120;
}

/// What the decoration decides about a control, in one line.
QString Stato(const QWidget &c)
{
    const QPalette &t = c.palette();
    return u"%1 %2 %3pt%4 sfondo %5%6 pulsante %7 base %8 testo %9 "_s.arg(c.objectName(), c.font().family())
               .arg(c.font().pointSize())
               .arg(c.font().bold() ? u" neretto"_s : QString())
               .arg(t.color(QPalette::Window).name(), c.autoFillBackground() ? u""_s : u" trasparente"_s,
                    t.color(QPalette::Button).name(), t.color(QPalette::Base).name(),
                    t.color(QPalette::WindowText).name()) +
           u"%1,%2 %3x%4 %5"_s.arg(c.x())
               .arg(c.y())
               .arg(c.width())
               .arg(c.height())
               .arg(c.isHidden() ? u"nascosto"_s : QString());
}

template <typename T, typename... A>
T *Nuovo(const QString &nome, QWidget &form, A... argomenti)
{
    auto *controllo = new T(argomenti..., &form);
    controllo->setObjectName(nome);
    controllo->setGeometry(10, 10, 50, 50);
    return controllo;
}

} // namespace

class tst_modulografica : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ModuloGrafica::ApplicaStile(*qApp); }

    void contrasto_data()
    {
        Colonne<QColor, QColor>({"testo", "sfondo"});
        const std::pair<const char *, QColor> sfondi[] = {
            {"window", Colori::Finestra},     {"panel", Colori::Pannello},
            {"header", Colori::Intestazione}, {"faded title", Colori::TitoloSpento},
            {"menu", Colori::Carta},          {"hint", Colori::Avviso},
            {"field", Colori::Bianco}};
        for (const auto &[nome, sfondo] : sfondi)
            QTest::addRow("text on %s", nome) << Colori::Testo << sfondo;
        QTest::newRow("prompt in an empty field") << Colori::Segnaposto << Colori::Bianco;
        const QPalette t = qApp->palette();
        using P = QPalette;
        for (const auto &[a, b] : {std::pair{P::WindowText, P::Window},
                                   {P::Text, P::Base},
                                   {P::Text, P::AlternateBase},
                                   {P::ButtonText, P::Button},
                                   {P::HighlightedText, P::Highlight},
                                   {P::ToolTipText, P::ToolTipBase},
                                   {P::Link, P::Base}})
            QTest::addRow("palette %d on %d", a, b) << t.color(P::Active, a) << t.color(P::Active, b);
    }

    void contrasto()
    {
        QFETCH(QColor, testo);
        QFETCH(QColor, sfondo);
        QVERIFY2(Contrasto(testo, sfondo) >= 4.5, qPrintable(QString::number(Contrasto(testo, sfondo))));
    }

    void icone()
    {
        const QStringList nomi = ModuloGrafica::NomiIcone();
        QVERIFY(nomi.size() > 50);
        QVERIFY(ModuloGrafica::Icona(u"manca").isNull());

        for (const QString &nome : nomi) {
            for (const int lato : {16, 24, 48}) {
                const QImage figura = Figura(nome, lato);
                QCOMPARE(figura.size(), QSize(lato, lato));
                const double pieno = Inchiostro(figura);
                QVERIFY2(pieno > 0.04, qPrintable(u"%1 at %2: %3"_s.arg(nome).arg(lato).arg(pieno)));
                QVERIFY2(Inchiostro(Figura(nome, lato, QIcon::Disabled)) < pieno * 0.6, qPrintable(nome));
            }
        }
        const QPixmap doppia = ModuloGrafica::Icona(u"nuovo").pixmap(QSize(24, 24), 2);
        QCOMPARE(doppia.size(), QSize(48, 48));
        QCOMPARE(doppia.devicePixelRatio(), 2.0);
    }

    void iconeTutteDiverse()
    {
        const QStringList nomi = ModuloGrafica::NomiIcone();
        for (qsizetype i = 0; i < nomi.size(); ++i) {
            for (qsizetype j = i + 1; j < nomi.size(); ++j) {
                const QImage a = Figura(nomi[i], 16), b = Figura(nomi[j], 16);
                int diversi = 0;
                for (int y = 0; y < 16; ++y) {
                    for (int x = 0; x < 16; ++x)
                        diversi += Lontani(a.pixel(x, y), b.pixel(x, y));
                }
                QVERIFY2(diversi >= 12, qPrintable(nomi[i] + u" looks like "_s + nomi[j]));
            }
        }
    }

    // Each kind of control once: what it is drawn with, whatever it had before.
    void controlli()
    {
        QWidget form;
        Nuovo<QPushButton>(u"Vai"_s, form, u"Vai"_s)->setProperty("Tag", u"d"_s);
        Nuovo<QPushButton>(u"..."_s, form, u"..."_s);
        Nuovo<QPushButton>(u"toolBarX"_s, form, u"T"_s);
        Nuovo<QLabel>(u"etichetta"_s, form, u"x"_s);
        Nuovo<QRadioButton>(u"opzione"_s, form, u"x"_s);
        Nuovo<QCheckBox>(u"casella"_s, form, u"x"_s);
        Nuovo<QTabWidget>(u"schede"_s, form);
        QPalette rossa;
        rossa.setColor(QPalette::Base, Qt::red);
        Nuovo<QListWidget>(u"elenco"_s, form)->setPalette(rossa);
        auto *pannello = Nuovo<PictureBox>(u"fra(1)"_s, form);
        pannello->setFrameShape(QFrame::Box);
        pannello->hide();
        Nuovo<PictureBox>(u"Picture1"_s, form);
        Nuovo<PictureBox>(u"PicIntestazioneFrm2"_s, form);
        for (QObject *controllo : form.children())
            qobject_cast<QWidget *>(controllo)->setFont(QFont(u"Courier"_s, 20));
        ModuloGrafica::Decora(form);

        const auto atteso = [](const char *resto) {
            return QString::fromUtf8(resto).replace(u"@"_s, u"base #ffffff testo #033a50 10,10"_s);
        };
        const auto stati = [&form] {
            QStringList righe;
            for (QObject *controllo : form.children())
                righe << Stato(*qobject_cast<QWidget *>(controllo));
            return righe.join(u'\n');
        };
        const QString tutti =
            atteso("Vai Arial 8pt neretto sfondo #a6dcdc trasparente pulsante #a6dcdc @ 80x23 \n"
                   "... Arial 8pt sfondo #a6dcdc trasparente pulsante #a6dcdc @ 50x50 \n"
                   "toolBarX Arial 8pt neretto sfondo #a6dcdc trasparente pulsante #cdecec @ 50x50 \n"
                   "etichetta Arial 8pt sfondo #cdecec trasparente pulsante #cdecec @ 50x50 \n"
                   "opzione Arial 8pt sfondo #cdecec trasparente pulsante #cdecec @ 50x50 \n"
                   "casella Arial 8pt sfondo #a6dcdc trasparente pulsante #cdecec @ 50x50 \n"
                   "schede Arial 8pt sfondo #a6dcdc pulsante #cdecec @ 50x50 \n"
                   "elenco Arial 8pt sfondo #a6dcdc trasparente pulsante #cdecec @ 50x50 \n"
                   "fra(1) Arial 8pt sfondo #cdecec pulsante #cdecec @ 50x50 \n"
                   "Picture1 Arial 8pt sfondo #a6dcdc trasparente pulsante #cdecec @ 50x50 \n"
                   "PicIntestazioneFrm2 Arial 8pt neretto sfondo #8ac6de pulsante #cdecec @ 50x20 nascosto");
        QCOMPARE(stati(), tutti);
        ModuloGrafica::Decora(form); // once more changes nothing
        QCOMPARE(stati(), tutti);
        QVERIFY(pannello->AutoRedraw());
        QCOMPARE(pannello->frameShape(), QFrame::NoFrame);
    }

    void didascaliaPuntini()
    {
        QWidget form;
        auto *elenco = Nuovo<QTreeWidget>(u"LstView"_s, form);
        auto *barra = Nuovo<QProgressBar>(u"p"_s, form);
        ModuloGrafica::Decora(form);
        QVERIFY(elenco->header()->font().bold());
        QCOMPARE(barra->palette().color(QPalette::Highlight), QColor(240, 86, 53));
        // Once: what the form does to its headers afterwards stays.
        elenco->header()->setFont(QFont(u"Arial"_s, 14));
        ModuloGrafica::Decora(form);
        QCOMPARE(elenco->header()->font().pointSize(), 14);
    }

    void intestazione_data()
    {
        Colonne<QString, QString, QPoint>({"nome", "etichetta", "dove"});
        // Panels: Frame1 at (20, 100), fra(0) at (20, 200), fra(1) at (150, 200).
        QTest::newRow("tag with further text") << u"PicIntestazioneFrm"_s << u"Frame1 - Dimensioni"_s << QPoint(25, 79);
        QTest::newRow("whole tag, other case") << u"picintestazionefrm1"_s << u"frame1"_s << QPoint(25, 79);
        QTest::newRow("array: panel of the same index") << u"PicIntestazioneFrm(1)"_s << u"fra"_s << QPoint(155, 179);
        QTest::newRow("array over a single panel") << u"PicIntestazioneFrm(0)"_s << u"Frame1"_s << QPoint(25, 79);
        QTest::newRow("no tag: stays") << u"PicIntestazioneFrm"_s << QString() << QPoint(7, 7);
    }

    void intestazione()
    {
        QFETCH(QString, nome);
        QFETCH(QString, etichetta);
        QFETCH(QPoint, dove);
        QWidget form;
        auto *striscia = Nuovo<PictureBox>(nome, form);
        striscia->setGeometry(7, 7, 120, 50);
        striscia->setProperty("Tag", etichetta);
        Nuovo<PictureBox>(u"Frame1"_s, form)->setGeometry(20, 100, 100, 50);
        Nuovo<PictureBox>(u"fra(0)"_s, form)->setGeometry(20, 200, 100, 50);
        Nuovo<PictureBox>(u"fra(1)"_s, form)->setGeometry(150, 200, 100, 50);
        ModuloGrafica::Decora(form);
        QCOMPARE(striscia->geometry(), QRect(dove, QSize(120, 20)));
        QVERIFY(striscia->isHidden());

        ModuloGrafica::DisegnaIntestazione(*striscia, u"Dimensioni"_s);
        QVERIFY(!striscia->isHidden());
        const QImage prima = striscia->grab().toImage();
        QCOMPARE(prima.pixelColor(118, 10), Colori::Intestazione);
        ModuloGrafica::DisegnaIntestazione(*striscia, u"Margini"_s);
        QVERIFY(striscia->grab().toImage() != prima);
        ModuloGrafica::Decora(form);
        QVERIFY2(!striscia->isHidden(), "a drawn strip stays visible when the form is decorated again");
    }

    void dentroGliAltri()
    {
        // A main window decorates its own controls, not the documents that stand in it, nor what is inside an editor.
        QWidget form;
        auto *area = Nuovo<QMdiArea>(u"mdi"_s, form);
        auto *pagina = new QPlainTextEdit;
        pagina->setFont(QFont(u"Courier"_s, 13));
        area->addSubWindow(pagina);
        auto *pannello = Nuovo<PictureBox>(u"Frame1"_s, form);
        auto *dentro = Nuovo<QLabel>(u"a"_s, *pannello, u"x"_s);
        ModuloGrafica::Decora(form);
        QCOMPARE(pagina->font().pointSize(), 13);
        QCOMPARE(dentro->palette().color(QPalette::WindowText), Colori::Testo);
        QCOMPARE(dentro->font().pointSize(), 8);
    }

    void disegnoPersistente()
    {
        for (const bool persistente : {true, false}) {
            PictureBox riquadro;
            riquadro.resize(20, 20);
            riquadro.SetAutoRedraw(persistente);
            riquadro.Disegna([](QPainter &p) { p.fillRect(5, 5, 10, 10, Qt::red); });
            QCOMPARE(riquadro.grab().toImage().pixelColor(8, 8), QColor(Qt::red));
            riquadro.resize(40, 40);
            riquadro.Disegna([](QPainter &p) { p.fillRect(30, 30, 5, 5, Qt::blue); });
            const QImage vista = riquadro.grab().toImage();
            QCOMPARE(vista.pixelColor(32, 32), QColor(Qt::blue));
            QCOMPARE(vista.pixelColor(8, 8) == QColor(Qt::red), persistente);
            riquadro.Cls();
            QVERIFY(riquadro.grab().toImage().pixelColor(32, 32) != QColor(Qt::blue));
        }
    }

    void senzaChiudi_data()
    {
        Colonne<bool, bool>({"interna", "prima"});
        QTest::newRow("top level window") << false << true;
        QTest::newRow("inner window") << true << false;
        QTest::newRow("becomes an inner window later") << true << true;
    }

    void senzaChiudi()
    {
        QFETCH(bool, interna);
        QFETCH(bool, prima);
        QMdiArea area;
        auto *form = new QPlainTextEdit;
        const QPointer<QWidget> viva(form);
        QWidget *finestra = form;
        if (prima)
            ModuloGrafica::RimuoviChiudi(*form);
        if (interna)
            finestra = area.addSubWindow(form);
        if (!prima)
            ModuloGrafica::RimuoviChiudi(*form);
        ModuloGrafica::RimuoviChiudi(*form); // a second time changes nothing
        interna ? area.show() : form->show();
        finestra->show();

        QVERIFY(!(finestra->windowFlags() & Qt::WindowCloseButtonHint));
        QVERIFY(!finestra->close());
        QVERIFY(finestra->isVisible());
        if (interna) {
            const auto *menu = qobject_cast<QMdiSubWindow *>(finestra)->systemMenu();
            QVERIFY(!menu->actions().isEmpty());
            for (const QAction *voce : menu->actions())
                QVERIFY2(!voce->shortcuts().contains(QKeySequence(QKeySequence::Close)), qPrintable(voce->text()));
            area.closeActiveSubWindow();
            area.closeAllSubWindows();
            QVERIFY(finestra->isVisible());
        }
        QVERIFY(ModuloGrafica::Chiudi(*form));
        QVERIFY(!viva || !viva->isVisible());
        if (!interna)
            delete viva.data();
    }
};

QTEST_MAIN(tst_modulografica)
#include "tst_modulografica.moc"
