// Keys, input methods and drops against a plain text control of Qt, which knows neither looks nor cut lines.

#include "platform/RichTextBox.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextBoundaryFinder>

using namespace Qt::StringLiterals;

namespace
{

QString ConCrLf(QString testo)
{
    return testo.replace(u'\n', u"\r\n"_s);
}

/// Our position of one in a text whose line ends count one.
int ConCrLf(const QString &testo, int posizione)
{
    return posizione + int(QStringView(testo).first(posizione).count(u'\n'));
}

QString TestoACaso(QRandomGenerator &caso, int parole, int ogniQuanteUnaRiga)
{
    static const QStringList Parole =
        u"<P>,mondo,x,è,e\u0301te\u0301,中文字符,😀,a😀b,uno_due,&nbsp;,\t,  ,-->,\U0001F468\u200D\U0001F469"_s.split(
            u',');
    QString testo;
    for (int i = 0; i < parole; ++i)
        testo += Parole[caso.bounded(int(Parole.size()))] + (caso.bounded(ogniQuanteUnaRiga) == 0 ? u'\n' : u' ');
    return testo;
}

/// The control and Qt's own, side by side; "" while they agree.
class Coppia
{
public:
    Coppia()
    {
        for (QPlainTextEdit *uno : {static_cast<QPlainTextEdit *>(&nostro), &diQt}) {
            uno->setLineWrapMode(QPlainTextEdit::NoWrap);
            uno->setFrameShape(QFrame::NoFrame);
            uno->setFont(QFont(u"Courier New"_s, 10));
            uno->resize(600, 160);
            uno->show();
        }
        diQt.setUndoRedoEnabled(false);
    }
    void Inizia(const QString &testo, int caretto)
    {
        diQt.setPlainText(testo);
        QTextCursor cursore = diQt.textCursor();
        cursore.setPosition(caretto);
        diQt.setTextCursor(cursore);
        nostro.ImpostaText(ConCrLf(testo));
        nostro.ImpostaSelStart(ConCrLf(testo, caretto));
    }
    void Tasto(int tasto, Qt::KeyboardModifiers modificatori)
    {
        for (QPlainTextEdit *uno : {static_cast<QPlainTextEdit *>(&nostro), &diQt})
            QTest::keyClick(uno, Qt::Key(tasto), modificatori);
    }
    void Componi(const QString &prova, const QString &testo = {}, int da = 0, int quanti = 0)
    {
        for (QPlainTextEdit *uno : {static_cast<QPlainTextEdit *>(&nostro), &diQt}) {
            QInputMethodEvent evento(prova, {});
            evento.setCommitString(testo, da, quanti);
            QCoreApplication::sendEvent(uno, &evento);
        }
    }
    [[nodiscard]] QString Differenza()
    {
        const QString testo = diQt.toPlainText();
        if (nostro.Text() != ConCrLf(testo))
            return u"text %1 is not %2"_s.arg(QDebug::toString(nostro.Text()), QDebug::toString(ConCrLf(testo)));
        const QTextCursor cursore = diQt.textCursor();
        const int inizio = ConCrLf(testo, cursore.selectionStart());
        const int fine = ConCrLf(testo, cursore.selectionEnd());
        if (nostro.SelStart() != inizio || nostro.SelLength() != fine - inizio)
            return u"selection %1+%2 is not %3+%4"_s.arg(nostro.SelStart())
                .arg(nostro.SelLength())
                .arg(inizio)
                .arg(fine - inizio);
        if (nostro.NumeroRighe() != diQt.blockCount())
            return u"%1 lines are not %2"_s.arg(nostro.NumeroRighe()).arg(diQt.blockCount());
        return nostro.GetLineFromChar(inizio) == diQt.document()->findBlock(cursore.selectionStart()).blockNumber()
                   ? QString()
                   : u"line %1"_s.arg(nostro.GetLineFromChar(inizio));
    }

    RichTextBox nostro;
    QPlainTextEdit diQt;
};

} // namespace

class TstImmissione : public QObject
{
    Q_OBJECT

private slots:
    void randomKeys_data()
    {
        QTest::addColumn<int>("parole");
        QTest::addColumn<int>("riga");
        QTest::addColumn<bool>("verticali");
        QTest::newRow("short lines") << 60 << 4 << true;
        QTest::newRow("few lines") << 12 << 2 << true;
        QTest::newRow("cut lines") << 1200 << 900 << false;
        QTest::newRow("one cut line") << 700 << 1'000'000 << false;
    }

    void randomKeys()
    {
        QFETCH(int, parole);
        QFETCH(int, riga);
        QFETCH(bool, verticali);
        static constexpr int Tasti[] = {
            Qt::Key_Left, Qt::Key_Right, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Return, Qt::Key_A,       Qt::Key_Up,
            Qt::Key_Down, Qt::Key_Home,  Qt::Key_End,       Qt::Key_PageUp, Qt::Key_K,      Qt::Key_PageDown};
        static constexpr Qt::KeyboardModifiers Modificatori[] = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                                                 Qt::ControlModifier,
                                                                 Qt::ControlModifier | Qt::ShiftModifier};
        QRandomGenerator caso(7);
        Coppia coppia;
        for (int giro = 0; giro < 15; ++giro) {
            const QString testo = TestoACaso(caso, parole, riga);
            // A place that a caret can have, near a cut where there are some.
            QTextBoundaryFinder confine(QTextBoundaryFinder::Grapheme, testo);
            confine.setPosition(verticali ? caso.bounded(int(testo.size())) : 950 + caso.bounded(80));
            confine.toNextBoundary();
            coppia.Inizia(testo, int(std::max<qsizetype>(0, confine.position())));
            QString storia;
            for (int passo = 0; passo < 60; ++passo) {
                const int quale = caso.bounded(verticali ? int(std::size(Tasti)) : 6);
                // A step by words may stop at a cut.
                const Qt::KeyboardModifiers modificatori =
                    Modificatori[caso.bounded(verticali ? int(std::size(Modificatori)) : 3)];
                // Ctrl+A, Ctrl+Shift+K and the like are commands elsewhere.
                if (Tasti[quale] == Qt::Key_A && modificatori != Qt::NoModifier)
                    continue;
                if (Tasti[quale] == Qt::Key_Return && modificatori != Qt::NoModifier)
                    continue;
                storia += u" %1+%2"_s.arg(modificatori.toInt() >> 25).arg(QKeySequence(Tasti[quale]).toString());
                coppia.Tasto(Tasti[quale], modificatori);
                const QString differenza = coppia.Differenza();
                QVERIFY2(differenza.isEmpty(), qPrintable(differenza.left(800) + storia));
            }
        }
    }

    void composing()
    {
        QRandomGenerator caso(13);
        Coppia coppia;
        QSignalSpy cambi(&coppia.nostro, &RichTextBox::Change);
        for (int giro = 0; giro < 80; ++giro) {
            const bool lunga = giro % 10 == 0;
            const QString testo = TestoACaso(caso, lunga ? 700 : 20, lunga ? 1'000'000 : 4).remove(u"\u200D"_s);
            int caretto = caso.bounded(std::min(1100, int(testo.size())));
            while (testo[caretto].isLowSurrogate() || testo[caretto].isMark())
                ++caretto;
            coppia.Inizia(testo, caretto);
            for (int passo = 0; passo < 8; ++passo) {
                cambi.clear();
                const int prima = coppia.nostro.Revisione();
                switch (caso.bounded(4)) {
                case 0: // the text being composed is no text of the page
                    coppia.Componi(u"nihao"_s.first(caso.bounded(6)));
                    QCOMPARE(coppia.nostro.Revisione(), prima);
                    QCOMPARE(cambi.size(), 0);
                    break;
                case 1:
                    coppia.Componi({}, u"你好"_s);
                    break;
                case 2: // what stands before or after the caret is replaced
                    coppia.Componi(caso.bounded(2) ? u"x"_s : QString(), u"字"_s, -caso.bounded(3), caso.bounded(4));
                    break;
                default:
                    coppia.nostro.Colora(caso.bounded(20), caso.bounded(9), 0xFF);
                    coppia.nostro.grab();
                    coppia.Componi(u"k"_s, u"か"_s);
                }
                const QString differenza = coppia.Differenza();
                QVERIFY2(differenza.isEmpty(), qPrintable(differenza.left(800)));
            }
            coppia.Componi({});
        }
    }

    void composingKeepsLooks()
    {
        RichTextBox controllo;
        controllo.ImpostaText(u"<FONT color=red>\r\n<B>"_s);
        controllo.Colora(1, 4, 0xC00000);
        controllo.Colora(12, 3, 0xFF);
        controllo.ImpostaSelStart(3);
        controllo.show();
        controllo.grab();
        QInputMethodEvent prova(u"xy"_s, {});
        QCoreApplication::sendEvent(&controllo, &prova);
        controllo.grab();
        QInputMethodEvent fine;
        fine.setCommitString(u"中"_s, -1, 2);
        QCoreApplication::sendEvent(&controllo, &fine);
        QCOMPARE(controllo.Text(), u"<F中T color=red>\r\n<B>"_s);
        QString colori;
        for (int i = 0; i < controllo.Lunghezza(); ++i)
            colori += controllo.AspettoIn(i).colore == 0 ? u'.' : controllo.AspettoIn(i).colore == 0xFF ? u'v' : u't';
        QCOMPARE(colori, u".ttt.......vvv......"_s);
        QCOMPARE(controllo.inputMethodQuery(Qt::ImSurroundingText).toString(), u"<F中T color=red>"_s);
    }

    void movingTextByMouse()
    {
        // Selection, place to move to, the text afterwards with the caret behind what was moved.
        struct Riga {
            QString testo;
            int da, quanti, verso;
            QString atteso;
        };
        for (const auto &[testo, da, quanti, verso, atteso] :
             {Riga{u"abcdef"_s, 1, 2, 5, u"adebc|f"_s},
              {u"abcdef"_s, 3, 2, 1, u"ade|bcf"_s},
              {u"uno\r\ndue\r\ntre"_s, 0, 5, 10, u"due\r\nuno\r\n|tre"_s},
              {u"abcd"_s, 1, 2, 3, u"abc|d"_s},
              {u"abcd"_s, 1, 2, 2, u"abc|d"_s},
              {u"abc"_s, 0, 1, 3, u"bca|"_s}}) {
            RichTextBox controllo;
            controllo.ImpostaText(testo);
            controllo.Seleziona(da, quanti);
            controllo.SpostaSelezione(verso);
            QCOMPARE(controllo.Text().insert(controllo.SelStart() + controllo.SelLength(), u'|'), atteso);
        }
    }

    void dropFromOutside()
    {
        RichTextBox controllo;
        controllo.resize(400, 200);
        controllo.ImpostaText(u"prima\r\nseconda\r\nterza"_s);
        controllo.Seleziona(0, 5);
        controllo.show();
        QMimeData dati;
        dati.setText(u"X\nY"_s);
        const QPoint dove = controllo.PosizioneDaCarattere(9) - controllo.viewport()->pos() + QPoint(0, 3);
        const auto lascia = [&](QPoint punto) {
            QDragEnterEvent entra(punto, Qt::CopyAction, &dati, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(controllo.viewport(), &entra);
            QDropEvent evento(punto, Qt::CopyAction, &dati, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(controllo.viewport(), &evento);
            return evento.isAccepted();
        };
        QVERIFY(lascia(dove));
        QCOMPARE(controllo.Text(), u"prima\r\nseX\r\nYconda\r\nterza"_s);
        QCOMPARE(controllo.SelStart(), 13);
        QCOMPARE(controllo.SelLength(), 0);
        QTest::keyClick(&controllo, 'z');
        QCOMPARE(controllo.Text(), u"prima\r\nseX\r\nYzconda\r\nterza"_s);
        // Behind what is being composed: that becomes text first.
        controllo.ImpostaSelStart(controllo.Lunghezza());
        QInputMethodEvent prova(u"かな"_s, {});
        QCoreApplication::sendEvent(&controllo, &prova);
        QVERIFY(lascia(QPoint(390, controllo.cursorRect().center().y())));
        QCOMPARE(controllo.Text(), u"prima\r\nseX\r\nYzconda\r\nterzaかなX\r\nY"_s);
    }

    void movingEndsComposing()
    {
        for (const auto tasto : {Qt::Key_PageDown, Qt::Key_Down, Qt::Key_End, Qt::Key_Right}) {
            RichTextBox controllo;
            controllo.resize(400, 200);
            controllo.show();
            controllo.ImpostaText(u"ab"_s);
            controllo.ImpostaSelStart(2);
            QInputMethodEvent prova(u"かな"_s, {});
            QCoreApplication::sendEvent(&controllo, &prova);
            QTest::keyClick(&controllo, tasto);
            QTest::keyClick(&controllo, 'z');
            QCOMPARE(controllo.Text(), u"abかなz"_s);
            QCoreApplication::sendEvent(&controllo, &prova);
            controllo.Seleziona(0, 1);
            QCOMPARE(controllo.Text(), u"abかなzかな"_s);
        }
    }

    void altIsForMenus()
    {
        RichTextBox controllo;
        QTest::keyClick(&controllo, 'f', Qt::AltModifier);
        QTest::keyClick(&controllo, 'g', Qt::AltModifier | Qt::ShiftModifier);
        QCOMPARE(controllo.Text(), QString());
        // Ctrl+Alt is how some keyboards say AltGr.
        QKeyEvent altGr(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, u"@"_s);
        QCoreApplication::sendEvent(&controllo, &altGr);
        QCOMPARE(controllo.Text(), u"@"_s);
    }
};

QTEST_MAIN(TstImmissione)
#include "tst_immissione.moc"
