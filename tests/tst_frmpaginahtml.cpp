#include "app/Impostazioni.h"
#include "app/ModuloDichiarazioni.h"
#include "editor/FrmPaginaHTML.h"
#include "editor/MargineRighe.h"
#include "html/CodaTasti.h"
#include "html/FrmComplete.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

struct Mossa {
    QEvent::Type tipo;
    QChar carattere;
};

// One event after the other, also while a completion list waits inside one of them.
void Esegui(RichTextBox *pad, const QList<Mossa> &mosse, qsizetype prossima, bool *finito)
{
    if (prossima == mosse.size()) {
        *finito = true;
        return;
    }
    QTimer::singleShot(0, pad, [=] { Esegui(pad, mosse, prossima + 1, finito); });
    const auto [tipo, c] = mosse[prossima];
    const bool invio = c == u'\n';
    const bool esci = c == u'⎋';
    const int codice = invio        ? int(Qt::Key_Return)
                       : c == u'\t' ? int(Qt::Key_Tab)
                       : esci       ? int(Qt::Key_Escape)
                                    : c.toUpper().unicode();
    QKeyEvent tasto(tipo, codice, Qt::NoModifier, invio ? u"\r"_s : esci ? QString() : QString(c));
    QCoreApplication::sendEvent(pad, &tasto);
}

// Text, caret and colours after the keys. Each key is released after its press, or only after the next one's.
QString Battuta(const QString &tasti, bool accavallati)
{
    FrmPaginaHTML finestra;
    finestra.resize(600, 300);
    finestra.show();
    finestra.activateWindow();
    RichTextBox *pad = finestra.RichPad();
    pad->setFocus();
    QList<Mossa> mosse;
    for (qsizetype i = 0; i < tasti.size(); ++i) {
        mosse.append({QEvent::KeyPress, tasti[i]});
        if (accavallati && i > 0)
            mosse.append({QEvent::KeyRelease, tasti[i - 1]});
        if (!accavallati || i + 1 == tasti.size())
            mosse.append({QEvent::KeyRelease, tasti[i]});
    }
    bool finito = false;
    Esegui(pad, mosse, 0, &finito);
    if (!QTest::qWaitFor([&] { return finito && !FrmComplete::Corrente(); }))
        return u"a list stayed open"_s;
    QString stampa = pad->Text().insert(pad->SelStart(), u'|') + u'\n';
    for (int i = 0; i < pad->Lunghezza(); ++i)
        stampa += QString::number(pad->AspettoIn(i).colore, 16) + u' ';
    return stampa;
}

} // namespace

class TstFrmPaginaHTML : public QObject
{
    Q_OBJECT

private slots:
    void gutterShowsTheVisibleLines()
    {
        FrmPaginaHTML finestra;
        finestra.resize(600, 300);
        finestra.show();
        RichTextBox *pad = finestra.RichPad();
        QString pagina;
        for (int i = 0; i < 200; ++i)
            pagina += u"<P>\r\n"_s;
        pad->ImpostaText(pagina);
        QCOMPARE(finestra.Pad_NumeroRighe(), 201);
        QCOMPARE(finestra.Pad_Ultima_Riga_Selezionata(5 * 10 + 1), 10);
        pad->ScorriRighe(50);
        const auto righe = pad->RigheVisibili();
        QCOMPARE(righe.front().riga, 50);
        QCOMPARE(finestra.Pad_Prima_Riga_Visibile(), 50);
        QVERIFY(righe.size() > 10 && righe.size() < 40);
        QVERIFY(righe.back().cima < pad->height());
        for (size_t i = 1; i < righe.size(); ++i)
            QCOMPARE(righe[i].cima, righe[i - 1].cima + righe[i - 1].altezza);

        QCOMPARE(MargineRighe::TestoNumero(10), u"  10"_s);
        QCOMPARE(MargineRighe::TestoNumero(123456), u" 123456"_s);
    }

    void goToLine()
    {
        FrmPaginaHTML finestra;
        finestra.resize(600, 300);
        finestra.show();
        RichTextBox *pad = finestra.RichPad();
        QString pagina;
        for (int i = 0; i < 300; ++i)
            pagina += u"riga\r\n"_s;
        pad->ImpostaText(pagina);
        finestra.Pad_Vai_A_Riga(120);
        QCOMPARE(pad->SelStart(), 119 * 6);
        QCOMPARE(finestra.Pad_Prima_Riga_Visibile(), 119);
        for (const int riga : {1, 0, -5, 302, 100000}) {
            finestra.Pad_Vai_A_Riga(120);
            finestra.Pad_Vai_A_Riga(riga);
            QCOMPARE(pad->SelStart(), 0);
        }
        finestra.Pad_Vai_A_Riga(301);
        QCOMPARE(pad->SelStart(), 300 * 6);
    }

    void keys()
    {
        FrmPaginaHTML finestra;
        finestra.resize(1, 1);
        finestra.show();
        finestra.resize(800, 400);
        QSignalSpy anteprima(&finestra, &FrmPaginaHTML::AnteprimaRichiesta);
        RichTextBox *pad = finestra.RichPad();
        QTest::keyClick(pad, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(pad->Text(), QString());
        QTest::keyClick(pad, Qt::Key_Space);
        QCOMPARE(pad->Text(), u" "_s);
        QTest::keyClick(pad, 'a');
        QTest::keyClick(pad, Qt::Key_Return);
        // Enter and Space refresh the preview, whatever else is held.
        QCOMPARE(anteprima.size(), 3);
        QSignalSpy menu(&finestra, &FrmPaginaHTML::MenuRichiesto);
        QTest::mouseClick(pad->viewport(), Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(menu.size(), 0);
        QTest::mouseClick(pad->viewport(), Qt::RightButton, {}, QPoint(10, 10));
        QCOMPARE(menu.size(), 1);
    }

    void tabIndentsTheSelectedLines()
    {
        FrmPaginaHTML finestra;
        finestra.show();
        RichTextBox *pad = finestra.RichPad();
        pad->ImpostaText(u"<p>\r\n\r\n x\r\ny"_s);
        pad->Colora(1, 1, 0xC00000);
        pad->Seleziona(1, 8);
        QTest::keyClick(pad, Qt::Key_Tab);
        QCOMPARE(pad->Text(), u"\t<p>\r\n\r\n\t x\r\ny"_s);
        QCOMPARE(pad->AspettoIn(2).colore, ColoreBgr(0xC00000));
        QCOMPARE(pad->SelText(), u"\t<p>\r\n\r\n\t x"_s);
        QTest::keyClick(pad, Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(pad, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(pad->Text(), u"<p>\r\n\r\nx\r\ny"_s);
        pad->ImpostaSelStart(0);
        QTest::keyClick(pad, Qt::Key_Tab);
        QCOMPARE(pad->Text(), u"\t<p>\r\n\r\nx\r\ny"_s);
        Impostazioni::Leggi(u"Indentation = 0");
        pad->ImpostaSelStart(4);
        QTest::keyClick(pad, Qt::Key_Return);
        QTest::keyClick(pad, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(pad->Text(), u"\t<p>\r\n\r\n\r\nx\r\ny"_s);
        Impostazioni::Leggi(u"Indentation = 1");
    }

    void lettersOfNames_data()
    {
        QTest::addColumn<QString>("riga");
        QTest::addColumn<QString>("testo");
        QTest::newRow("default") << u"LetterCase = 0"_s << u"<p ID=\"1\"></p><TABLE bgcolor=\"\">|</TABLE>"_s;
        QTest::newRow("base") << u"LetterCase = 1"_s << u"<P id=\"1\"></P><TABLE bgcolor=\"\">|</TABLE>"_s;
        QTest::newRow("small") << u"LetterCase = 2"_s << u"<p id=\"1\"></p><table bgcolor=\"\">|</table>"_s;
        QTest::newRow("as typed") << u"LetterCase = 3"_s << u"<p ID=\"1\"></p><table bgcolor=\"\">|</table>"_s;
    }
    void lettersOfNames()
    {
        QFETCH(QString, riga);
        ModuloDichiarazioni::ImpostaCartellaProgramma(QStringLiteral(CARTELLA_PROGRAMMA));
        Impostazioni::Leggi(riga);
        const QString battuta = Battuta(u"<p ID=1></p><ta\tbgc\t>"_s, false).section(u'\n', 0, -2);
        Impostazioni::Leggi(u"LetterCase = 0");
        QTEST(battuta, "testo");
    }

    void selectionStaysVisible()
    {
        FrmPaginaHTML finestra;
        finestra.resize(600, 300);
        finestra.show();
        RichTextBox *pad = finestra.RichPad();
        pad->ImpostaText(u"testo scelto"_s);
        const auto evidenziati = [pad] {
            const QImage immagine = pad->viewport()->grab().toImage();
            int quanti = 0;
            for (int x = 0; x < immagine.width(); ++x)
                quanti += qRed(immagine.pixel(x, 8)) < 200 && qBlue(immagine.pixel(x, 8)) > 200;
            return quanti;
        };
        const int senza = evidenziati();
        pad->Seleziona(0, 12);
        const int con = evidenziati();
        QVERIFY(con > senza + 20);
        pad->NascondiSelezione(true);
        QCOMPARE(evidenziati(), senza);
        // Losing the focus shows it again, for the dialog that takes the focus.
        QFocusEvent perso(QEvent::FocusOut);
        QCoreApplication::sendEvent(pad, &perso);
        QVERIFY(evidenziati() > senza + 20);
    }

    void overlappingKeysAreLikeSlowOnes_data()
    {
        QTest::addColumn<QString>("tasti");
        QTest::addColumn<QString>("testo");
        QTest::newRow("tag and its closing tag") << u"<b>ciao</b>⎋"_s << u"<b>ciao</b>|"_s;
        QTest::newRow("tag from the list") << u"<ta\t⎋>x"_s << u"<TABLE>x|</TABLE>"_s;
        QTest::newRow("attribute from the list") << u"<td al\n⎋"_s << u"<td align=\"|\""_s;
        QTest::newRow("value typed, with a blank") << u"<font ⎋color=r d⎋"_s << u"<font color=\"r d|"_s;
        QTest::newRow("value from the list") << u"<td ⎋align=c\n"_s << u"<td align=\"center\"| "_s;
        QTest::newRow("nested end tags, unclosed ones inside")
            << u"<ul><li>a<li><b>b</b></ul>x"_s << u"<ul><li>a<li><b>b</b></ul>x|"_s;
        QTest::newRow("end tag across a line end") << u"<p>\na</p\n>x"_s << u"<p>\r\na</p\r\n>x|"_s;
        QTest::newRow("values without quotes") << u"<table width=100% border=0 class=a b>"_s
                                               << u"<table width=\"100%\" border=\"0\" class=\"a b\">|</table>"_s;
        QTest::newRow("quotes of the other kind, signs in them")
            << u"<b style='x' onclick='f(\"a>b\")'>"_s << u"<b style='x' onclick='f(\"a>b\")'>|</b>"_s;
        QTest::newRow("a value behind blanks or a line end")
            << u"<a href = \"x\" class= a title=\n\"z\">"_s << u"<a href = \"x\" class= a title=\r\n\"z\">|</a>"_s;
        QTest::newRow("names that stand without a value")
            << u"<input required type=text disabled>"_s << u"<input required type=\"text\" disabled>|"_s;
        QTest::newRow("signs in text") << u"1 < 2 while (i < n)⎋"_s << u"1 < 2 while (i < n)|"_s;
        QTest::newRow("a script") << u"<script>if (a < b) x(\"<p>\")\n</script>"_s
                                  << u"<script>if (a < b) x(\"<p>\")\r\n</script>|"_s;
        QTest::newRow("two blanks, and an Enter behind a name")
            << u"<p  class\nid\n>x"_s << u"<p  class\r\nid\r\n>x|</p>"_s;
        QTest::newRow("a full name that only others have") << u"<td border=1>"_s << u"<td border=1>|</td>"_s;
        QTest::newRow("Enter keeps the indentation") << u"  <p>a\nb"_s << u"  <p>a\r\n  b|</p>"_s;
        QTest::newRow("typed blanks are the indentation") << u"<ul>\n  <li>a</li>\n  <li>b</li>\n</ul>\nx"_s
                                                          << u"<ul>\r\n  <li>a</li>\r\n  <li>b</li>\r\n</ul>\r\nx|"_s;
        QTest::newRow("comment") << u"<⎋!--ciao"_s << u"<!--ciao|"_s;
        QTest::newRow("end of a line in a tag") << u"<td⎋\nalign⎋"_s << u"<td\r\nalign|"_s;
    }

    void overlappingKeysAreLikeSlowOnes()
    {
        QFETCH(QString, tasti);
        QFETCH(QString, testo);
        ModuloDichiarazioni::ImpostaCartellaProgramma(QStringLiteral(CARTELLA_PROGRAMMA));
        const QString lenta = Battuta(tasti, false);
        QCOMPARE(lenta.section(u'\n', 0, -2), testo);
        QCOMPARE(Battuta(tasti, true), lenta);
    }

    void waitingKeysKeepTheirOrder()
    {
        FrmPaginaHTML finestra;
        RichTextBox *pad = finestra.RichPad();
        QTest::keyPress(pad, Qt::Key_T); // and is held down
        for (const char c : {'n', 'o', 'p'})
            CodaTasti::Di(pad).Accoda(QKeyEvent(QEvent::KeyPress, c - 'a' + Qt::Key_A, {}, QChar(QLatin1Char(c))));
        QCoreApplication::processEvents();
        QCOMPARE(pad->Text(), u"tnop"_s);
    }
};

QTEST_MAIN(TstFrmPaginaHTML)
#include "tst_frmpaginahtml.moc"
