#include "Aiuti.h"

#include "app/Frammenti.h"
#include "app/TabellaLingua.h"
#include "dialogs/ColoriHtml.h"
#include "dialogs/FrmFont.h"
#include "platform/RichTextBox.h"

#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QWindow>

using namespace Qt::StringLiterals;

// What the fragment commands put into the page, on the real control.
namespace
{

/// Page and caret of a text whose selection stands between two "|", or whose caret stands at one.
struct Pagina {
    explicit Pagina(QString conSegni) : testo(std::move(conSegni))
    {
        da = int(testo.indexOf(u'|'));
        testo.remove(da, 1);
        if (const qsizetype secondo = testo.indexOf(u'|'); secondo >= 0) {
            quanti = int(secondo) - da;
            testo.remove(secondo, 1);
        }
    }
    QString testo;
    int da = 0;
    int quanti = 0;
};

void Metti(RichTextBox &pad, const QString &conSegni)
{
    const Pagina pagina(conSegni);
    pad.ImpostaText(pagina.testo);
    pad.Seleziona(pagina.da, pagina.quanti);
}

QString ConSegno(const RichTextBox &pad)
{
    QString testo = pad.Text();
    if (pad.SelLength() > 0)
        testo.insert(pad.SelStart() + pad.SelLength(), u'|');
    return testo.insert(pad.SelStart(), u'|');
}

RisultatoFont Font(const QString &faccia, int dimensione, ColoreBgr colore)
{
    RisultatoFont font;
    font.faccia = faccia;
    font.dimensione = qint16(dimensione);
    font.colore = colore;
    return font;
}

} // namespace

class TstFrammenti : public QObject
{
    Q_OBJECT

    QWidget finestra;
    RichTextBox pad{&finestra};
    Frammenti frammenti{&pad, &finestra};

private slots:
    void initTestCase()
    {
        QCOMPARE(
            ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), ModuloPrincipale::LinguaInglese)
                .errore,
            QString());
    }

    void insertion()
    {
        for (const auto &[prima, testo, dopo] :
             {std::tuple(u"xx|abc|yy"_s, u"<P>"_s, u"xx<P>|abcyy"_s), // the selection stays, not selected
              {u"ab|c"_s, u"<P>"_s, u"ab<P>|c"_s},                    // position 2 is checked
              {u"a\r\n|b"_s, u"x\r\ny"_s, u"a\r\nx\r\ny|b"_s},
              {u"abc\r|"_s, u"<P>"_s, u"abc\r<P>|"_s},
              {u"xx|abc|yy"_s, QString(), u"xx|abcyy"_s}}) {
            Metti(pad, prima);
            QSignalSpy cambi(&pad, &RichTextBox::Change);
            QSignalSpy verifica(&frammenti, &Frammenti::VerificaRichiesta);
            QSignalSpy anteprima(&frammenti, &Frammenti::AnteprimaRichiesta);
            frammenti.InserisciTesto(testo);
            QCOMPARE(ConSegno(pad), dopo);
            QCOMPARE(cambi.count(), testo.isEmpty() ? 0 : 1);
            QCOMPARE(verifica.count(), 1);
            QCOMPARE(anteprima.count(), 1);
        }
    }

    void checkSeesTheCaretAtTheStart()
    {
        Metti(pad, u"abcd|ef"_s);
        QStringList visto;
        connect(&frammenti, &Frammenti::InCambiamento, this, [&] { visto += ConSegno(pad); });
        connect(&frammenti, &Frammenti::VerificaRichiesta, this, [&](int primaFine) {
            visto += ConSegno(pad) + QString::number(primaFine);
            pad.ImpostaSelStart(0);
        });
        frammenti.InserisciTesto(u"<P>"_s);
        frammenti.disconnect(this);
        visto += ConSegno(pad);
        QCOMPARE(visto, (QStringList{u"abcd|ef"_s, u"abcd|<P>ef2"_s, u"abcd<P>|ef"_s}));
        QVERIFY(pad.updatesEnabled());
    }

    void indent()
    {
        for (const auto &[modo, prima, dopo] :
             {std::tuple(2, u"a\r\nb|c\r\nd|e"_s, u"a\r\n\t|bc\r\nde"_s), // the line of the selection's start
              {2, u"ab|c\r\nd"_s, u"ab|c\r\nd"_s},                        // the first line stays
              {1, u"\ta|b"_s, u"\ta|b"_s},
              {1, u"a\r\n\t\tb|"_s, u"a\r\n|\tb"_s},
              {1, u"a\r\n  b|"_s, u"a\r\n| b"_s},
              {1, u"a\r\n|"_s, u"a\r\n|"_s},
              {1, u"a\r\n|\r\nb"_s, u"a\r\n|\r\nb"_s},
              {2, u"a\rb|"_s, u"a\r\t|b"_s}}) {
            Metti(pad, prima);
            frammenti.RientroRiga(quint8(modo));
            QCOMPARE(ConSegno(pad), dopo);
        }
    }

    void background()
    {
        for (const auto &[prima, immagine, dopo] :
             {std::tuple(u"|<body bgcolor=white>"_s, u"a\".gif"_s,
                         u"<BODY background=\"a&quot;.gif\"| bgcolor=white>"_s), // upper case, the rest stays
              {u"ab<BODY>|<BODY>"_s, u"i"_s, u"ab<BODY background=\"i\"|><BODY>"_s},
              {u"<p>|x|</p>"_s, u"i"_s, u"<p>|x</p>"_s},
              {u"<body>|"_s, QString(), u"<body>|"_s}}) {
            Metti(pad, prima);
            QSignalSpy anteprima(&frammenti, &Frammenti::AnteprimaRichiesta);
            QSignalSpy cambi(&pad, &RichTextBox::Change);
            frammenti.InserisciSfondo(immagine);
            QCOMPARE(ConSegno(pad), dopo);
            QCOMPARE(anteprima.count(), 1);
            QCOMPARE(cambi.count(), Pagina(prima).testo == pad.Text() ? 0 : 1);
        }
    }

    void cancelledPictureInsertsNothing()
    {
        QSignalSpy anteprima(&frammenti, &Frammenti::AnteprimaRichiesta);
        frammenti.InserisciImmagine({});
        QCOMPARE(anteprima.count(), 0);
    }

    void colourNames()
    {
        for (const ColoriHtml::Colore &colore : ColoriHtml::Elenco())
            QCOMPARE(ColoriHtml::DaQColor(ColoreQt(colore.valore)), colore.valore);
        QCOMPARE(ColoriHtml::NomeColore(0xFFFF00), u"aqua"_s);
        for (const ColoreBgr senza : {0x008080u, 0x010000FFu})
            QCOMPARE(ColoriHtml::NomeColore(senza), QString());
    }

    void fontTag()
    {
        const QString forma = u"<font size=\"%1\" color=\"%2\" face=\"Times New Roman\"> testo di prova </font>"_s;
        const auto tag = [](int punti, ColoreBgr colore) {
            return Font(u"Times New Roman"_s, punti, colore).TestoHtml();
        };
        QCOMPARE(tag(12, 0xFF), forma.arg(u"3"_s, u"red"_s));
        QCOMPARE(tag(12, 0x8080), forma.arg(u"3"_s, QString())); // a colour without a name
        for (const auto &[punti, dimensione] : {std::pair{1, 0}, {3, 0}, {4, 1}, {7, 2}, {10, 2}, {14, 4}, {999, 285}})
            QCOMPARE(tag(punti, 0), forma.arg(QString::number(dimensione), u"black"_s));
    }

    void longFaceIsCut()
    {
        Aiuti::Rispondi<FrmFont>(this, [](FrmFont *dialogo) { QTest::keyClick(dialogo, Qt::Key_Return); });
        QCOMPARE(ModuloPrincipale::SceltaFont(nullptr, QString(40, u'x')).faccia, QString(32, u'x'));
    }

    void fontDialogGivesWhatIsChosen()
    {
        FrmFont dialogo(Font(u"Arial"_s, 10, 0));
        dialogo.findChild<QListWidget *>(u"LstStili"_s)->setCurrentRow(3);
        dialogo.findChild<QListWidget *>(u"LstDimensioni"_s)->setCurrentRow(4);
        QTest::keyClick(dialogo.findChild<QWidget *>(u"ChkSottolineato"_s), Qt::Key_Space);
        dialogo.findChild<QComboBox *>(u"CmbColore"_s)->setCurrentText(u"red"_s);
        const RisultatoFont scelta = dialogo.Scelta();
        QVERIFY(scelta.grassetto && scelta.corsivo && scelta.sottolineato && !scelta.barrato);
        QCOMPARE(scelta.dimensione, qint16(12));
        QCOMPARE(scelta.colore, ColoreBgr(0xFF));
        // The sample and the tag go along.
        const auto *esempio = dialogo.findChild<QLabel *>(u"LblEsempio"_s);
        QCOMPARE(esempio->palette().color(QPalette::WindowText), QColor(Qt::red));
        QVERIFY(esempio->font().bold() && esempio->font().italic() && esempio->font().underline());
        QCOMPARE(esempio->font().pointSize(), 12);
        QCOMPARE(dialogo.findChild<QLabel *>(u"LblTag"_s)->text(), u"<font size=\"3\" color=\"red\" face=\"Arial\">"_s);
    }

    void fontDialogTakesAnyFace()
    {
        FrmFont dialogo(Font(u"Arial"_s, 11, 0));
        auto *faccia = dialogo.findChild<QLineEdit *>(u"TxtFaccia"_s);
        auto *facce = dialogo.findChild<QListWidget *>(u"LstFacce"_s);
        const auto *ok = dialogo.findChild<QPushButton *>(u"Cmd(0)"_s);
        faccia->selectAll();
        QTest::keyClicks(faccia, u"Not \"installed\""_s);
        QCOMPARE(facce->currentRow(), -1);
        QVERIFY(dialogo.Scelta().TestoHtml().contains(u"face=\"Not &quot;installed&quot;\">"_s));
        faccia->clear();
        QVERIFY(!ok->isEnabled());
        QVERIFY(facce->count() > 0);
        // A page names a face without its foundry.
        QCOMPARE(facce->findItems(u"]"_s, Qt::MatchEndsWith).size(), 0);
        facce->setCurrentRow(facce->count() - 1);
        QCOMPARE(dialogo.Scelta().faccia, facce->item(facce->count() - 1)->text());
        QVERIFY(ok->isEnabled());
    }

    void anotherColourComesAfterTheNames()
    {
        FrmFont dialogo(Font(u"Arial"_s, 10, 0xFF));
        auto *colori = dialogo.findChild<QComboBox *>(u"CmbColore"_s);
        const int ultima = colori->count() - 1;
        QCOMPARE(colori->itemText(0), u"black"_s);
        const auto rispondi = [&](const QColor &scelto) {
            Aiuti::Rispondi<QColorDialog>(this, [scelto](QColorDialog *tavolozza) {
                tavolozza->setCurrentColor(scelto);
                scelto.isValid() ? tavolozza->accept() : tavolozza->reject();
            });
            colori->setCurrentIndex(colori->count() - 1);
            emit colori->activated(colori->count() - 1);
        };
        rispondi({});
        QCOMPARE(dialogo.Scelta().colore, ColoreBgr(0xFF));
        rispondi(QColor(1, 2, 3));
        QCOMPARE(dialogo.Scelta().colore, ColoreBgr(0x030201));
        QCOMPARE(colori->currentIndex(), ultima);
        QVERIFY(!dialogo.findChild<QLabel *>(u"LblNota"_s)->text().isEmpty());
    }

    void cancelledFontInsertsNothing()
    {
        QSignalSpy anteprima(&frammenti, &Frammenti::AnteprimaRichiesta);
        Metti(pad, u"|"_s);
        Aiuti::Rispondi<FrmFont>(this, [](FrmFont *dialogo) { QTest::keyClick(dialogo, Qt::Key_Escape); });
        frammenti.InserisciFont();
        QCOMPARE(pad.Text(), QString());
        QCOMPARE(anteprima.count(), 0);
    }
};

QTEST_MAIN(TstFrammenti)
#include "tst_frammenti.moc"
