#include "app/TabellaLingua.h"
#include "dialogs/ModuloStampa.h"
#include "dialogs/StampaTesto.h"
#include "dialogs/TestoStampa.h"
#include "html/SchemaColori.h"
#include "platform/RichTextBox.h"

#include <QPdfWriter>
#include <QProcess>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace ModuloStampa;

namespace
{

QString SenzaBianchi(QString testo)
{
    static const QRegularExpression bianco(u"\\s+"_s);
    return testo.remove(bianco);
}

/// A page in the editing control, printed into a PDF file.
struct Stampata {
    RichTextBox pad;
    QTemporaryDir cartella;
    OpzioniPagine opzioni{u"pagina.html"_s, {}, false, false};
    EsitoStampa esito = EsitoStampa::Fallita;

    explicit Stampata(const QString &testo)
    {
        QFont carattere(u"Courier New"_s, 10);
        carattere.setStyleHint(QFont::Monospace);
        pad.setFont(carattere);
        pad.ImpostaText(testo);
    }
    [[nodiscard]] QString File() const { return cartella.filePath(u"stampa.pdf"_s); }
    void Stampa(
        bool soloSelezione = false, const PassoStampa &passo = [](qsizetype, qsizetype) { return true; })
    {
        QPdfWriter pdf(File());
        pdf.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, {15, 15, 15, 15}, QPageLayout::Millimeter});
        esito = StampaTesto(TestoStampa::Da(pad, soloSelezione), pdf, opzioni, passo);
    }
    /// The pages as pdftotext reads them, trailing blanks cut.
    [[nodiscard]] QStringList Pagine() const
    {
        QProcess lettore;
        lettore.start(u"pdftotext"_s, {u"-layout"_s, u"-enc"_s, u"UTF-8"_s, File(), u"-"_s});
        if (!lettore.waitForFinished() || lettore.exitCode() != 0)
            return {u"pdftotext: "_s + lettore.errorString() + QString::fromUtf8(lettore.readAllStandardError())};
        QStringList pagine = QString::fromUtf8(lettore.readAllStandardOutput()).split(u'\f');
        pagine.removeLast();
        return pagine;
    }
    /// All that was printed but the footers, without any white space.
    [[nodiscard]] QString Testo() const
    {
        static const QRegularExpression piede(u"pagina\\.html\\s+Pagina \\d+ di \\d+\\s*$"_s);
        QString testo;
        for (QString pagina : Pagine())
            testo += SenzaBianchi(pagina.remove(piede));
        return testo;
    }
    /// The first page as a picture.
    [[nodiscard]] QImage Immagine() const
    {
        QProcess::execute(u"pdftoppm"_s,
                          {u"-r"_s, u"100"_s, u"-png"_s, u"-singlefile"_s, File(), cartella.filePath(u"pagina"_s)});
        return QImage(cartella.filePath(u"pagina.png"_s));
    }
};

int Pixel(const QImage &immagine, const std::function<bool(QColor)> &cerca)
{
    int quanti = 0;
    for (int punto = 0; punto < immagine.width() * immagine.height(); ++punto)
        quanti += cerca(immagine.pixelColor(punto % immagine.width(), punto / immagine.width()));
    return quanti;
}

} // namespace

// What stands on the paper: printed into PDF files, which are read again.
class tst_stampatesto : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(ModuloPrincipale::CaricaLingua(u"" CARTELLA_SORGENTI "/data"_s, ModuloPrincipale::LinguaItaliano)
                    .Riuscito());
    }

    void testo()
    {
        QString lunga;
        for (int i = 0; i < 3000; ++i)
            lunga += u"%1,"_s.arg(i);
        for (const QString &testo : {QString(), u"a\r\nb\nc\rd\r\n\r\ne"_s, lunga,
                                     QString(1024, u'x') + u"\r\ny"_s, // a part ends at a line end
                                     u"<p>网页编辑器 網頁編輯器</p>"_s}) {
            Stampata prova(testo);
            prova.Stampa();
            QCOMPARE(prova.esito, EsitoStampa::Fatta);
            QCOMPARE(prova.Testo(), SenzaBianchi(testo));
        }
        // Which sign stands for what has no picture is the font's affair; the letters around are all there.
        Stampata prova(u"a"_s + QChar(0) + u"b\u2028c\uFFFCd"_s);
        prova.Stampa();
        QCOMPARE(prova.Testo().remove(QRegularExpression(u"[^a-d]"_s)), u"abcd"_s);
    }

    void pagine()
    {
        QString testo;
        for (int i = 1; i <= 500; ++i)
            testo += u"riga%1\r\n"_s.arg(i);
        Stampata prova(testo);
        prova.Stampa();
        const QStringList pagine = prova.Pagine();
        QVERIFY(pagine.size() > 5 && pagine.size() < 15);
        for (qsizetype i = 0; i < pagine.size(); ++i)
            QVERIFY2(pagine.at(i).contains(u"Pagina %1 di %2"_s.arg(i + 1).arg(pagine.size())),
                     qPrintable(pagine.at(i)));
        QCOMPARE(prova.Testo(), SenzaBianchi(testo));

        prova.opzioni.pagine = QPageRanges::fromString(u"2,4-5"_s);
        prova.Stampa();
        QCOMPARE(prova.Pagine(), (QStringList{pagine.at(1), pagine.at(3), pagine.at(4)}));

        prova.opzioni.inverse = true;
        prova.Stampa();
        QCOMPARE(prova.Pagine(), (QStringList{pagine.at(4), pagine.at(3), pagine.at(1)}));

        // Lines that a layout has to measure break at the same places as those that are only counted.
        prova.opzioni = {u"pagina.html"_s, {}, false, false};
        prova.pad.ImpostaText(QString(testo).replace(u"riga"_s, u"rig\u00e0"_s));
        prova.Stampa();
        QCOMPARE(prova.Pagine().size(), pagine.size());
    }

    void selezione()
    {
        Stampata prova(u"prima\r\nscelta\r\ndopo"_s);
        prova.pad.Colora(7, 6, SchemaColori::Valore);
        prova.pad.Seleziona(7, 6);
        const TestoStampa scelta = TestoStampa::Da(prova.pad, true);
        QCOMPARE(scelta.testo, u"scelta"_s);
        QCOMPARE(scelta.tratti.size(), size_t(1));
        QCOMPARE(scelta.tratti.front().aspetto.colore, SchemaColori::Valore);
        prova.Stampa(true);
        QCOMPARE(prova.Testo(), u"scelta"_s);
        prova.Stampa(false);
        QCOMPARE(prova.Testo(), u"primasceltadopo"_s);
    }

    void tabulazioni()
    {
        // Two letters behind tabs stand where blanks would have brought them.
        Stampata prova(u"\tX\tY\r\na\tX"_s);
        constexpr qsizetype colonne = 5;
        prova.pad.setTabStopDistance(colonne * QFontMetricsF(prova.pad.font()).horizontalAdvance(u' '));
        prova.Stampa();
        const QStringList tab = prova.Pagine();
        prova.pad.ImpostaText(QString(colonne, u' ') + u'X' + QString(colonne - 1, u' ') + u"Y\r\na"_s +
                              QString(colonne - 1, u' ') + u'X');
        prova.Stampa();
        QCOMPARE(tab, prova.Pagine());
    }

    void aspetto()
    {
        const auto rosso = [](QColor c) { return c.red() > 200 && c.green() < 90 && c.blue() < 40; };
        const auto arancio = [](QColor c) {
            return c.red() > 220 && c.green() > 80 && c.green() < 170 && c.blue() < 140;
        };
        const auto colorato = [](QColor c) { return c.saturation() > 60; };
        Stampata prova(QString(40, u'M') + u"\r\n"_s + QString(40, u'M'));
        prova.Stampa();
        QCOMPARE(Pixel(prova.Immagine(), colorato), 0);
        prova.pad.Colora(0, 40, SchemaColori::Valore);
        prova.Stampa();
        QVERIFY(Pixel(prova.Immagine(), rosso) > 300);
        prova.pad.Colora(0, 40, SchemaColori::Testo);
        prova.pad.Sottolinea(42, 40, true);
        prova.Stampa();
        QVERIFY(Pixel(prova.Immagine(), arancio) > 100);
        prova.opzioni.grigi = true;
        prova.Stampa();
        QCOMPARE(Pixel(prova.Immagine(), colorato), 0);
    }

    void annullata()
    {
        Stampata prova(u"riga\r\n"_s.repeated(2000));
        int passi = 0;
        prova.Stampa(false, [&passi](qsizetype, qsizetype) { return ++passi < 3; });
        QCOMPARE(prova.esito, EsitoStampa::Annullata);
        QCOMPARE(passi, 3);

        qsizetype ultimo = 0;
        bool cresce = true;
        prova.Stampa(false, [&](qsizetype fatto, qsizetype massimo) {
            cresce = cresce && fatto >= ultimo && fatto <= massimo;
            ultimo = fatto;
            return true;
        });
        QCOMPARE(prova.esito, EsitoStampa::Fatta);
        QVERIFY(cresce && ultimo > 0);
    }
};

QTEST_MAIN(tst_stampatesto)
#include "tst_stampatesto.moc"
