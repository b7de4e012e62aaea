#include "Aiuti.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/AnteprimaImmagine.h"
#include "dialogs/FrmImage.h"
#include "dialogs/RiferimentoImmagine.h"
#include "platform/CaricaImmagine.h"
#include "platform/DisegnoSvg.h"
#include "Colonne.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QtEndian>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using File_System::Stile;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

const QByteArray TestaSvg = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                            "width='40' height='30'>";

quint32 Controllo(const QByteArray &byte)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char uno : byte) {
        crc ^= quint8(uno);
        for (int i = 0; i < 8; ++i)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

QByteArray Numero(quint32 numero)
{
    QByteArray byte(4, 0);
    qToBigEndian(numero, byte.data());
    return byte;
}

/// A PNG that says it is as large as this and whose points are all zero.
QByteArray BombaPng(quint32 larga, quint32 alta)
{
    const auto pezzo = [](const QByteArray &tipo, const QByteArray &dati) {
        return Numero(quint32(dati.size())) + tipo + dati + Numero(Controllo(tipo + dati));
    };
    QByteArray compresso = qCompress(QByteArray(32 * 1024 * 1024, 0), 9).sliced(4);
    return "\x89PNG\r\n\x1A\n" + pezzo("IHDR", Numero(larga) + Numero(alta) + QByteArray("\x08\x06\0\0\0", 5)) +
           pezzo("IDAT", compresso) + pezzo("IEND", {});
}

/// Two frames of 2 x 2 points, the first red, the second blue.
QByteArray GifAnimata()
{
    QByteArray gif("GIF89a\2\0\2\0\x80\0\0\xFF\0\0\0\0\xFF", 19);
    for (const char *punti : {"\x84\x51", "\x8C\x2D"}) // four times colour 0; four times colour 1
        gif += QByteArray("\x21\xF9\4\0\x0A\0\0\0\x2C\0\0\0\0\2\0\2\0\0\2\2", 20) + QByteArray(punti, 2) + '\0';
    return gif + ';';
}

/// Most memory that this process has held, in bytes.
qint64 MemoriaMassima()
{
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    return qint64(uso.ru_maxrss) * 1024;
}

int Lontananza(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue());
}

/// Answers every message box while it lives, and cancels every file chooser.
class Risposte
{
public:
    Risposte()
    {
        QObject::connect(&m_attesa, &QTimer::timeout, &m_attesa, [this] {
            QWidget *aperta = QApplication::activeModalWidget();
            if (auto *box = qobject_cast<QMessageBox *>(aperta)) {
                testi += box->text();
                box->accept();
            } else if (auto *file = qobject_cast<QFileDialog *>(aperta)) {
                ++scelte;
                titolo = file->windowTitle();
                file->reject();
            }
        });
        m_attesa.start(0);
    }
    QStringList testi;
    int scelte = 0;
    QString titolo;

private:
    QTimer m_attesa;
};

/// A dialog on the screen whose file chooser has been cancelled.
struct Aperta {
    Aperta()
    {
        dialogo.show();
        QApplication::setActiveWindow(&dialogo);
        QTRY_COMPARE(risposte.scelte, 1);
        QTRY_COMPARE(QApplication::activeModalWidget(), nullptr);
    }
    template <typename T>
    T *Trova(const QString &nome)
    {
        return dialogo.findChild<T *>(nome);
    }
    void Scrivi(const QString &percorso)
    {
        file->setFocus();
        file->setText(percorso);
        QTest::keyClick(file, Qt::Key_Return);
    }
    Risposte risposte;
    FrmImage dialogo;
    QLineEdit *file = Trova<QLineEdit>(u"TxtFile"_s);
    AnteprimaImmagine *anteprima = Trova<AnteprimaImmagine>(u"AreaAnteprima"_s);
    QCheckBox *relativo = Trova<QCheckBox>(u"ChkRelativo"_s);
};

} // namespace

// The picture loader, the image dialog and the reference that comes out of it.
class TstImmagine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), 0).errore, QString());
        QVERIFY(QDir(m_cartella.path()).mkpath(u"sito/img"_s));
    }

    void init() { Stato() = {}; }

    void pictures()
    {
        for (const QString &nome : {u"a.png"_s, u"a.jpg"_s, u"a.bmp"_s, u"a.webp"_s, u"a.svg"_s, u"png.gif"_s}) {
            QImage verde(40, 30, QImage::Format_RGB32);
            verde.fill(QColor(0, 100, 0));
            if (nome.endsWith(u".svg"_s))
                Scrivi(nome, TestaSvg + "<rect width='40' height='30' fill='#006400'/></svg>");
            else // the bytes tell what it is, not the name
                QVERIFY(verde.save(Percorso(nome), nome.startsWith(u"png"_s) ? "png" : nullptr));
            const CaricaImmagine::Immagine letta = CaricaImmagine::Carica(Percorso(nome));
            QCOMPARE(letta.misura, verde.size());
            const QColor colore = letta.immagine.pixelColor(letta.immagine.width() / 2, letta.immagine.height() / 2);
            QVERIFY2(Lontananza(colore, QColor(0, 100, 0)) < 9, qPrintable(nome + colore.name()));
        }
        // Qt does not write this format. The first frame of an animation.
        const CaricaImmagine::Immagine gif = CaricaImmagine::Carica(Scrivi(u"a.gif"_s, GifAnimata()));
        QCOMPARE(gif.misura, QSize(2, 2));
        QCOMPARE(gif.immagine.pixelColor(1, 1), QColor(Qt::red));
    }

    void notPictures()
    {
        const QByteArray byte = Aiuti::Contenuto(Disegna(u"intero.png"_s, {400, 300}));
        // Nobody writes into it: opening it would wait for ever.
        QCOMPARE(mkfifo(qPrintable(Percorso(u"tubo.png"_s)), 0600), 0);
        for (const QString &percorso :
             {Scrivi(u"vuoto.png"_s, {}), Scrivi(u"testo.jpg"_s, "this is no picture\r\n"),
              Scrivi(u"testa.png"_s, byte.first(20)), Scrivi(u"rotto.svg"_s, TestaSvg + "<rect></svg>"),
              Scrivi(u"senza.svg"_s, "<svg width='0' height='0'></svg>"), m_cartella.path(), u"/dev/zero"_s,
              Percorso(u"tubo.png"_s), Percorso(u"manca.png"_s)})
            QVERIFY2(CaricaImmagine::Carica(percorso).immagine.isNull(), qPrintable(percorso));
    }

    void bombsTakeBoundedMemory()
    {
        const qint64 prima = MemoriaMassima();
        // A few kilobytes each that would be 40 GB, 14 GB and 4 GB of points.
        QByteArray gif = GifAnimata();
        gif.replace(6, 4, QByteArray("\xFF\xFF\xFF\xFF", 4));
        const QStringList bombe{Scrivi(u"bomba.png"_s, BombaPng(100'000, 100'000)),
                                Scrivi(u"bomba2.png"_s, BombaPng(30'000, 30'000)), Scrivi(u"bomba.gif"_s, gif),
                                Scrivi(u"bomba.bmp"_s, QByteArray("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\0\x7F\0\0"
                                                                  "\0\x7F\0\0\1\0\x20\0\0\0\0\0",
                                                                  34) +
                                                           QByteArray(60, 0))};
        for (const QString &bomba : bombe)
            QVERIFY2(CaricaImmagine::Carica(bomba).immagine.isNull(), qPrintable(bomba));
        // The largest that is allowed is really read.
        QImage grande(5000, 6000, QImage::Format_RGB32);
        grande.fill(Qt::red);
        QVERIFY(grande.save(Percorso(u"grande.png"_s)));
        grande = {};
        QCOMPARE(CaricaImmagine::Carica(Percorso(u"grande.png"_s)).misura, QSize(5000, 6000));
        const qint64 preso = MemoriaMassima() - prima;
        // Room for what the sanitizers hold back; the smallest of the bombs would take four times as much.
        QVERIFY2(preso < 8 * CaricaImmagine::MassimoMemoria, qPrintable(QString::number(preso)));
    }

    void hugeJpegIsReadSmaller()
    {
        QImage grande(16'000, 6'000, QImage::Format_Grayscale8);
        grande.fill(Qt::white);
        QVERIFY(grande.save(Percorso(u"grande.jpg"_s)));
        grande = {};
        const CaricaImmagine::Immagine letta = CaricaImmagine::Carica(Percorso(u"grande.jpg"_s));
        QCOMPARE(letta.misura, QSize(16'000, 6'000));
        QVERIFY(!letta.immagine.isNull() && letta.immagine.width() < 16'000);
        QVERIFY(letta.immagine.sizeInBytes() <= CaricaImmagine::MassimoMemoria);
    }

    void drawingsStayInTheirFile()
    {
        const QString fuori = Disegna(u"fuori.png"_s);
        const QByteArray dentro = "data:image/png;base64," + Aiuti::Contenuto(fuori).toBase64();
        const QByteArray annidato =
            "data:image/svg+xml;base64," +
            (TestaSvg + "<image width='9' height='9' xlink:href='" + fuori.toUtf8() + "'/></svg>").toBase64();
        const QByteArray foglio = Scrivi(u"f.css"_s, "rect{fill:red}").toUtf8();
        const auto con = [](const QByteArray &href) {
            return TestaSvg + "<image width='40' height='30' xlink:href='" + href + "'/></svg>";
        };
        const auto mezzo = [](const QByteArray &svg) {
            const QImage immagine = DisegnoSvg::Disegna(svg, 40).immagine;
            return immagine.isNull() ? QColor(Qt::magenta) : immagine.pixelColor(20, 15);
        };
        QCOMPARE(mezzo(con(dentro)), QColor(Qt::darkGreen));
        for (const QByteArray &href : {fuori.toUtf8(), "file://" + fuori.toUtf8(), annidato})
            QCOMPARE(mezzo(con(href)).alpha(), 0);
        QCOMPARE(mezzo("<?xml version='1.0'?><?xml-stylesheet type='text/css' href='" + foglio + "'?>" + TestaSvg +
                       "<rect width='40' height='30' fill='blue'/></svg>"),
                 QColor(Qt::blue));
        // What is left holds nothing that could lead out.
        const auto pulito = DisegnoSvg::Ripulisci(
            "<!DOCTYPE svg [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>" + TestaSvg +
            "<script>1</script><a href='http://h/'><g id='g'/></a><use xlink:href='#g'/><use href='o.svg#g'/></svg>");
        QVERIFY(pulito);
        QCOMPARE(QString::fromUtf8(pulito->svg.sliced(pulito->svg.indexOf("30\"") + 4)),
                 u"<a><g id=\"g\"/></a><use xlink:href=\"#g\"/><use/></svg>"_s);
    }

    void drawingsLookAsTheyShould()
    {
        // What a drawing is made of goes through a painting surface of ours: it must come out as on Qt's own.
        const QByteArray svg =
            TestaSvg +
            "<defs><linearGradient id='l'><stop offset='0' stop-color='red'/><stop offset='1' stop-color='blue'/>"
            "</linearGradient></defs><rect width='40' height='30' fill='url(#l)'/>"
            "<g transform='rotate(20) scale(0.9)' opacity='0.5'><ellipse cx='20' cy='10' rx='9' ry='5' "
            "fill='green' stroke='black' stroke-width='2' stroke-dasharray='3,1'/></g>"
            "<polyline points='1,1 9,20 20,3' stroke='white' fill='none'/><polygon points='30,1 39,1 35,9'/>"
            "<line x1='0' y1='29' x2='40' y2='20' stroke='yellow'/><text x='3' y='26' font-size='9'>Ab</text>"
            "<path d='M25 15 q9 9 12 0 t1 9z' fill='#fff' fill-opacity='.4' fill-rule='evenodd'/></svg>";
        QImage attesa(200, 150, QImage::Format_ARGB32_Premultiplied);
        attesa.fill(Qt::transparent);
        {
            QSvgRenderer qt(svg);
            QPainter p(&attesa);
            qt.render(&p);
        }
        const QImage disegnata = DisegnoSvg::Disegna(svg, 200).immagine;
        QCOMPARE(disegnata.size(), attesa.size());
        int diversi = 0;
        for (int punto = 0; punto < attesa.width() * attesa.height(); ++punto) {
            const QPoint dove(punto % attesa.width(), punto / attesa.width());
            diversi += Lontananza(attesa.pixelColor(dove), disegnata.pixelColor(dove)) > 40;
        }
        // Letters are drawn as their outlines and not from the store of glyphs: their edges may differ a little.
        QVERIFY2(diversi < 60, qPrintable(QString::number(diversi)));
    }

    void drawingsThatTakeTooLong()
    {
        QByteArray denti = "M0 0";
        for (int i = 0; i < 40'000; ++i)
            denti += 'L' + QByteArray::number(i % 2 * 40) + ' ' + QByteArray::number(i % 31);
        for (const QByteArray &svg : {"<path fill-rule='evenodd' d='" + denti + "'/>",
                                      "<path stroke='red' stroke-dasharray='0.00001' d='M0 0L40 30'/>"_ba,
                                      "<g stroke='blue' stroke-width='20' opacity='0.5'>" +
                                          "<circle cx='20' cy='15' r='9'/>"_ba.repeated(40'000) + "</g>",
                                      "<text>" + QByteArray(200'000, 'W') + "</text>"})
            QVERIFY2(DisegnoSvg::Disegna(TestaSvg + svg + "</svg>", CaricaImmagine::LatoDisegno).immagine.isNull(),
                     svg.left(30).constData());
    }

    void drawingsThatNeverEnd()
    {
        // Each uses the one before it ten times.
        QByteArray risate = TestaSvg + "<defs><g id='a0'><rect width='9' height='9'/></g>";
        QByteArray entita = "<!DOCTYPE svg [<!ENTITY a0 'xxxxxxxxxx'>";
        for (int i = 1; i <= 12; ++i) {
            const QByteArray questo = QByteArray::number(i), prima = QByteArray::number(i - 1);
            risate += "<g id='a" + questo + "'>" + ("<use xlink:href='#a" + prima + "'/>").repeated(10) + "</g>";
            entita += "<!ENTITY a" + questo + " '" + ("&a" + prima + ";").repeated(10) + "'>";
        }
        QByteArray catena = TestaSvg;
        for (int i = 0; i < 5000; ++i)
            catena += "<g id='c" + QByteArray::number(i) + "'><use href='#c" + QByteArray::number(i + 1) + "'/></g>";
        const QByteArray bomba =
            "<image width='1' height='1' href='data:image/png;base64," + BombaPng(4000, 4000).toBase64() + "'/>";
        for (const QByteArray &svg :
             {risate + "</defs><use xlink:href='#a12'/></svg>", catena + "</svg>",
              TestaSvg + "<g id='a' style='fill:url(#b)'/><g id='b'><use href='#a'/></g></svg>",
              TestaSvg + "<g>"_ba.repeated(100'000), TestaSvg + "<rect/>"_ba.repeated(200'000) + "</svg>",
              entita + "]>" + TestaSvg + "<text>&a9;</text></svg>", TestaSvg + bomba.repeated(2) + "</svg>"}) {
            QVERIFY2(!DisegnoSvg::Ripulisci(svg), svg.left(200).constData());
            QVERIFY(CaricaImmagine::Carica(Scrivi(u"infinito.svg"_s, svg)).immagine.isNull());
        }
    }

    void relativeReference_data()
    {
        Colonne<QString, QString, bool, QString>({"immagine", "pagina", "windows", "atteso"});
        const QString pagina = u"/casa/sito/p.html"_s;
        QTest::newRow("below") << u"/casa/sito/img/x/a.gif"_s << pagina << false << u"img/x/a.gif"_s;
        QTest::newRow("a neighbour whose name begins alike")
            << u"/casa/sito2/a.gif"_s << pagina << false << u"../sito2/a.gif"_s;
        QTest::newRow("only the root in common") << u"/x/a b.gif"_s << pagina << false << u"../../x/a%20b.gif"_s;
        QTest::newRow("dots lead out") << u"/casa/sito/../a.gif"_s << pagina << false << u"../a.gif"_s;
        QTest::newRow("blank, percent, hash, question mark, quote")
            << u"/casa/sito/a b%20#1?.\"gif"_s << pagina << false << u"a%20b%2520%231%3F.%22gif"_s;
        QTest::newRow("a colon is no scheme")
            << u"/casa/sito/data:x,y.gif"_s << pagina << false << u"data%3Ax%2Cy.gif"_s;
        const QString finestre = u"C:\\Sito\\p.html"_s;
        QTest::newRow("Windows: below, in another case")
            << u"c:\\sito\\Img\\a b.gif"_s << finestre << true << u"Img/a%20b.gif"_s;
        QTest::newRow("Windows: another drive") << u"D:\\Sito\\a.gif"_s << finestre << true << QString();
        QTest::newRow("no page") << u"/casa/a.gif"_s << QString() << false << QString();
    }

    void relativeReference()
    {
        QFETCH(QString, immagine);
        QFETCH(QString, pagina);
        QFETCH(bool, windows);
        QTEST(RiferimentoImmagine::Relativo(immagine, pagina, windows ? Stile::Windows : Stile::Posix), "atteso");
    }

    void enterPreviewsWithoutClosing()
    {
        Stato().TestoInserimento = u"of another dialog"_s;
        Aperta aperta;
        QCOMPARE(aperta.risposte.titolo, Messaggio(318));
        aperta.Scrivi(Disegna(u"enter.png"_s));
        QVERIFY(aperta.dialogo.isVisible());
        QCOMPARE(aperta.risposte.scelte, 1);
        QCOMPARE(aperta.anteprima->Misura(), QSize(40, 30));
        QVERIFY(aperta.risposte.testi.isEmpty());
        QTest::keyClick(&aperta.dialogo, Qt::Key_Escape);
        QVERIFY(!aperta.dialogo.isVisible());
        QCOMPARE(Stato().TestoInserimento, QString());
    }

    void missingFile()
    {
        Aperta aperta;
        aperta.Scrivi(Disegna(u"c'è.png"_s));
        aperta.Scrivi(u"/non/c'è.png"_s);
        QCOMPARE(aperta.risposte.testi, QStringList{Messaggio(91)});
        QVERIFY(aperta.dialogo.isVisible() && aperta.anteprima->Vuota());
        QCOMPARE(aperta.file->text(), u"/non/c'è.png"_s);
        // Going on to the next control says so for another name, and once only.
        QApplication::setActiveWindow(&aperta.dialogo);
        aperta.file->setText(u"/altra.png"_s);
        QTest::keyClick(aperta.file, Qt::Key_Tab);
        QTRY_COMPARE(aperta.risposte.testi.size(), 2);
        QTRY_COMPARE(QApplication::activeModalWidget(), nullptr);
        QApplication::setActiveWindow(&aperta.dialogo);
        aperta.file->setFocus();
        QTest::keyClick(aperta.file, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QCOMPARE(aperta.risposte.testi.size(), 2);
        aperta.Trova<QPushButton>(u"Cmd(0)"_s)->click();
        QCOMPARE(Stato().TestoInserimento, u"/altra.png"_s);
    }

    void brokenFile()
    {
        Aperta aperta;
        const QString rotto = Scrivi(u"rotto.gif"_s, "GIF89a and no more");
        aperta.Scrivi(rotto);
        QCOMPARE(aperta.risposte.testi, QStringList{u"Errore durante l' apertura del file '%1'."_s.arg(rotto)});
    }

    void confirming()
    {
        Disegna(u"sito/img/a b.png"_s);
        Disegna(u"sopra.png"_s);
        QVERIFY(QFile::link(Percorso(u"sito"_s), Percorso(u"legame"_s)));
        const auto intero = [this](QString percorso) { return percorso.replace(u'~', m_cartella.path()); };
        struct Caso {
            QString pagina, scritto; ///< "~" stands for the folder
            bool offerto, acceso;
            QString atteso;
        };
        const QString pagina = u"~/sito/p.html"_s, sotto = u"~/sito/img/a b.png"_s, relativo = u"img/a%20b.png"_s;
        for (const Caso &caso : {Caso{pagina, sotto, true, true, relativo},
                                 {pagina, sotto, true, false, sotto},
                                 {{}, u"~/sopra.png"_s, false, true, u"~/sopra.png"_s},
                                 {pagina, u"img/a b.png"_s, true, true, relativo}, // a name beside the page
                                 {u"~/legame/p.html"_s, sotto, true, true, relativo},
                                 {pagina, u"http://h/a b.png"_s, false, true, u"http://h/a b.png"_s},
                                 {pagina, {}, false, true, {}}}) {
            Stato().FileCorrente = intero(caso.pagina);
            Aperta aperta;
            aperta.file->setText(intero(caso.scritto));
            QCOMPARE(aperta.relativo->isEnabled(), caso.offerto);
            QCOMPARE(aperta.relativo->isChecked(), caso.offerto);
            if (!caso.acceso)
                aperta.relativo->click();
            aperta.Trova<QPushButton>(u"Cmd(0)"_s)->click();
            QVERIFY(!aperta.dialogo.isVisible());
            QCOMPARE(Stato().TestoInserimento, intero(caso.atteso));
        }
    }

    void zoomSteps()
    {
        Aperta aperta;
        auto *piu = aperta.Trova<QPushButton>(u"CmdOp(0)"_s);
        auto *meno = aperta.Trova<QPushButton>(u"CmdOp(1)"_s);
        aperta.Scrivi(Disegna(u"zoom.png"_s));
        auto *foglio = aperta.Trova<QWidget>(u"ImagePreview"_s);
        QCOMPARE(foglio->size(), QSize(40, 30)); // small enough: its own size
        piu->click();
        QCOMPARE(foglio->size(), QSize(50, 38));
        meno->click();
        QCOMPARE(aperta.anteprima->Zoom(), 1.0);
        int passi = 0;
        for (; piu->isEnabled(); ++passi)
            piu->click();
        QCOMPARE(passi, 10); // 1.25 to the tenth power is more than eight
        QCOMPARE(foglio->size(), QSize(320, 240));
        for (; meno->isEnabled(); --passi)
            meno->click();
        QCOMPARE(foglio->size(), QSize(4, 3));
    }

private:
    [[nodiscard]] QString Percorso(const QString &nome) const { return m_cartella.filePath(nome); }

    QString Scrivi(const QString &nome, const QByteArray &byte) const
    {
        Aiuti::Scrivi(Percorso(nome), byte);
        return Percorso(nome);
    }

    QString Disegna(const QString &nome, QSize misura = {40, 30}) const
    {
        QImage immagine(misura, QImage::Format_RGB32);
        immagine.fill(Qt::darkGreen);
        if (!immagine.save(Percorso(nome)))
            qFatal("cannot write %s", qPrintable(nome));
        return Percorso(nome);
    }

    QTemporaryDir m_cartella;
};

QTEST_MAIN(TstImmagine)
#include "tst_immagine.moc"
