#include "app/ModuloDichiarazioni.h"
#include "editor/FrmPaginaHTML.h"
#include "editor/MargineRighe.h"
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
    const int codice = invio ? int(Qt::Key_Return) : esci ? int(Qt::Key_Escape) : c.toUpper().unicode();
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
        QTest::newRow("tag and its closing tag") << u"<b>ciao</b>⎋"_s << u"<b>ciao</b>|</b>"_s;
        QTest::newRow("tag from the list") << u"<td\n⎋>x"_s << u"<TD >x|</TD>"_s;
        QTest::newRow("attribute from the list") << u"<td al\n⎋"_s << u"<TD align|"_s;
        QTest::newRow("value typed, with a blank") << u"<font ⎋color=r d⎋"_s << u"<FONT color=\"r d|"_s;
        QTest::newRow("value from the list") << u"<td ⎋align=c\n"_s << u"<TD align=\"center\"| "_s;
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
};

QTEST_MAIN(TstFrmPaginaHTML)
#include "tst_frmpaginahtml.moc"
