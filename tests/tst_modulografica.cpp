#include "chrome/ModuloGrafica.h"

#include "chrome/Colori.h"
#include "chrome/PictureBox.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
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
    for (int punto = 0; punto < immagine.width() * immagine.height(); ++punto)
        somma += qAlpha(immagine.pixel(punto % immagine.width(), punto / immagine.width())) / 255.0;
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

    void contrasto()
    {
        using P = QPalette;
        const P t = qApp->palette();
        QList<std::pair<QColor, QColor>> coppie{{Colori::Segnaposto, Colori::Bianco}};
        for (const QColor &sfondo : {Colori::Finestra, Colori::Pannello, Colori::Intestazione, Colori::TitoloSpento,
                                     Colori::Carta, Colori::Avviso, Colori::Bianco})
            coppie.append({Colori::Testo, sfondo});
        for (const auto &[testo, sfondo] : {std::pair{P::WindowText, P::Window},
                                            {P::Text, P::Base},
                                            {P::Text, P::AlternateBase},
                                            {P::ButtonText, P::Button},
                                            {P::HighlightedText, P::Highlight},
                                            {P::ToolTipText, P::ToolTipBase},
                                            {P::Link, P::Base}})
            coppie.append({t.color(P::Active, testo), t.color(P::Active, sfondo)});
        for (const auto &[testo, sfondo] : coppie)
            QVERIFY2(Contrasto(testo, sfondo) >= 4.5, qPrintable(testo.name() + u" on "_s + sfondo.name()));
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
                for (int punto = 0; punto < 16 * 16; ++punto)
                    diversi += Lontani(a.pixel(punto % 16, punto / 16), b.pixel(punto % 16, punto / 16));
                QVERIFY2(diversi >= 12, qPrintable(nomi[i] + u" looks like "_s + nomi[j]));
            }
        }
    }

    // What a control is drawn with, whatever it had before; once more changes nothing.
    void controlli()
    {
        QWidget form;
        auto *comando = Nuovo<QPushButton>(u"Vai"_s, form, u"Vai"_s);
        comando->setProperty("Tag", u"d"_s);
        const auto *puntini = Nuovo<QPushButton>(u"..."_s, form, u"..."_s);
        const auto *barra = Nuovo<QPushButton>(u"toolBarX"_s, form, u"T"_s);
        auto *etichetta = Nuovo<QLabel>(u"etichetta"_s, form, u"x"_s);
        etichetta->setFont(QFont(u"Courier"_s, 20));
        auto *elenco = Nuovo<QListWidget>(u"elenco"_s, form);
        QPalette rossa;
        rossa.setColor(QPalette::Base, Qt::red);
        elenco->setPalette(rossa);
        auto *pannello = Nuovo<PictureBox>(u"fra(1)"_s, form);
        pannello->setFrameShape(QFrame::Box);
        pannello->hide();
        const auto *riquadro = Nuovo<PictureBox>(u"Picture1"_s, form);
        const auto *striscia = Nuovo<PictureBox>(u"PicIntestazioneFrm2"_s, form);
        for (int volta = 0; volta < 2; ++volta) {
            ModuloGrafica::Decora(form);
            QCOMPARE(comando->size(), QSize(80, 23));
            QVERIFY(comando->font().bold() && !puntini->font().bold());
            QCOMPARE(comando->palette().color(QPalette::Button), Colori::Finestra);
            QVERIFY(barra->palette().color(QPalette::Button) != Colori::Finestra);
            QCOMPARE(etichetta->font().family(), u"Arial"_s);
            QCOMPARE(etichetta->font().pointSize(), 8);
            QCOMPARE(etichetta->palette().color(QPalette::WindowText), Colori::Testo);
            QCOMPARE(elenco->palette().color(QPalette::Base), Colori::Bianco);
            QVERIFY(!pannello->isHidden() && pannello->AutoRedraw() && pannello->autoFillBackground());
            QCOMPARE(pannello->frameShape(), QFrame::NoFrame);
            QVERIFY(!riquadro->autoFillBackground());
            QVERIFY(striscia->isHidden());
            QCOMPARE(striscia->height(), 20);
        }
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

    void intestazione()
    {
        const auto riquadro = [](const QString &nome, QWidget &form, const QRect &dove) {
            auto *quello = Nuovo<PictureBox>(nome, form);
            quello->setGeometry(dove);
            return quello;
        };
        for (const auto &[nome, etichetta, dove] :
             {std::tuple(u"PicIntestazioneFrm"_s, u"Frame1 - Dimensioni"_s, QPoint(25, 79)),
              {u"picintestazionefrm1"_s, u"frame1"_s, QPoint(25, 79)},
              {u"PicIntestazioneFrm(1)"_s, u"fra"_s, QPoint(155, 179)}, // the panel of the same index
              {u"PicIntestazioneFrm(0)"_s, u"Frame1"_s, QPoint(25, 79)},
              {u"PicIntestazioneFrm"_s, QString(), QPoint(7, 7)}}) {
            QWidget form;
            auto *striscia = riquadro(nome, form, {7, 7, 120, 50});
            striscia->setProperty("Tag", etichetta);
            riquadro(u"Frame1"_s, form, {20, 100, 100, 50});
            riquadro(u"fra(0)"_s, form, {20, 200, 100, 50});
            riquadro(u"fra(1)"_s, form, {150, 200, 100, 50});
            ModuloGrafica::Decora(form);
            QCOMPARE(striscia->geometry(), QRect(dove, QSize(120, 20)));
            QVERIFY(striscia->isHidden());
        }
    }

    void didascalia()
    {
        QWidget form;
        auto *striscia = Nuovo<PictureBox>(u"PicIntestazioneFrm"_s, form);
        striscia->setGeometry(7, 7, 120, 20);
        ModuloGrafica::Decora(form);
        ModuloGrafica::DisegnaIntestazione(*striscia, u"Dimensioni"_s);
        QVERIFY(!striscia->isHidden());
        const QImage prima = striscia->grab().toImage();
        QCOMPARE(prima.pixelColor(118, 10), Colori::Intestazione);
        ModuloGrafica::DisegnaIntestazione(*striscia, u"Margini"_s);
        QVERIFY(striscia->grab().toImage() != prima);
        ModuloGrafica::DisegnaIntestazione(*striscia, u"Dimensioni"_s); // nothing of the other one is left
        QVERIFY(striscia->grab().toImage() == prima);
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

    void senzaChiudi()
    {
        // prima: asked for before the window stands in another
        for (const auto &[interna, prima] : {std::pair(false, true), {true, false}, {true, true}}) {
            QMdiArea area;
            auto *form = new QPlainTextEdit;
            const QPointer<QWidget> viva(form);
            if (prima)
                ModuloGrafica::RimuoviChiudi(*form);
            QWidget *finestra = form;
            if (interna)
                finestra = area.addSubWindow(form);
            ModuloGrafica::RimuoviChiudi(*form); // a second time changes nothing
            interna ? area.show() : form->show();
            finestra->show();

            QVERIFY(!(finestra->windowFlags() & Qt::WindowCloseButtonHint));
            QVERIFY(!finestra->close() && finestra->isVisible());
            if (interna) {
                for (const QAction *voce : qobject_cast<QMdiSubWindow *>(finestra)->systemMenu()->actions())
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
    }
};

QTEST_MAIN(tst_modulografica)
#include "tst_modulografica.moc"
