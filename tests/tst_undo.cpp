#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "app/ModuloDichiarazioni.h"
#include "editor/clsUndo.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

QString Contenuto(const RichTextBox &controllo)
{
    QString stato = controllo.Text() + u'|';
    for (int i = 0; i < controllo.Lunghezza(); ++i) {
        const Aspetto aspetto = controllo.AspettoIn(i);
        stato += u"%1%2%3%4,"_s.arg(aspetto.colore).arg(aspetto.onda).arg(aspetto.grassetto).arg(aspetto.corsivo);
    }
    return stato;
}

QString Selezione(const RichTextBox &controllo)
{
    return u"%1+%2"_s.arg(controllo.SelStart()).arg(controllo.SelLength());
}

/// A control on the screen with its undo manager. The pause never ends by itself: Pausa() ends it.
struct Banco {
    explicit Banco(const QString &testo = QString())
    {
        controllo.setObjectName(u"RichPad"_s);
        controllo.resize(400, 150);
        controllo.show();
        controllo.ImpostaText(testo);
        riuscito = undo.Attach(&contenitore, &controllo, 3'600'000);
    }
    ~Banco() { ModuloDichiarazioni::Stato() = {}; }

    [[nodiscard]] QTimer *Timer() { return contenitore.findChild<QTimer *>(u"UndoTimer_RichPad"_s); }
    void Pausa()
    {
        if (Timer()->isActive()) {
            QTimerEvent evento(Timer()->timerId());
            QCoreApplication::sendEvent(Timer(), &evento);
        }
    }
    void Scrivi(const QString &testo) { QTest::keyClicks(&controllo, testo); }
    void Tasto(Qt::Key tasto, Qt::KeyboardModifiers con = Qt::NoModifier) { QTest::keyClick(&controllo, tasto, con); }
    /// Text with the caret as "|", then how many steps can be undone and redone.
    [[nodiscard]] QString Stato() const
    {
        QString testo = controllo.Text();
        testo.insert(controllo.SelStart(), u'|');
        return u"%1 %2/%3"_s.arg(testo).arg(undo.UndoList().size() - 1).arg(undo.RedoList().size());
    }

    QObject contenitore;
    RichTextBox controllo;
    clsUndo undo;
    bool riuscito = false;
};

} // namespace

class TstUndo : public QObject
{
    Q_OBJECT

private slots:
    void eventsEndARun()
    {
        using Azione = std::function<void(Banco &)>;
        const auto tasto = [](Qt::Key quale) { return [quale](Banco &banco) { banco.Tasto(quale); }; };
        for (const auto &[azione, stato] :
             {std::pair<Azione, QString>{tasto(Qt::Key_A), u"abca| 0/0"_s},
              {tasto(Qt::Key_Backspace), u"ab| 0/0"_s},
              {tasto(Qt::Key_Return), u"abc\r\n| 1/0"_s},
              {tasto(Qt::Key_Space), u"abc | 1/0"_s},
              {tasto(Qt::Key_Left), u"ab|c 1/0"_s},
              {tasto(Qt::Key_F5), u"abc| 1/0"_s},
              {[](Banco &banco) {
                   QTest::mouseClick(banco.controllo.viewport(), Qt::LeftButton, {}, {1, 5});
               },
               u"|abc 1/0"_s},
              {[](Banco &banco) { banco.Pausa(); }, u"abc| 1/0"_s},
              {[](Banco &banco) {
                   ModuloDichiarazioni::Stato().ControlloInCorso = true;
                   banco.Pausa();
                   ModuloDichiarazioni::Stato().ControlloInCorso = false;
               },
               u"abc| 0/0"_s}}) {
            Banco banco;
            QVERIFY(banco.riuscito);
            banco.Scrivi(u"abc"_s);
            QCOMPARE(banco.Stato(), u"abc| 0/0"_s);
            azione(banco);
            QCOMPARE(banco.Stato(), stato);
            QVERIFY(banco.undo.Undo(100));
            QCOMPARE(banco.Stato().left(1), u"|"_s);
            QVERIFY(!banco.undo.CanUndo());
        }
    }

    // The other ways to change the text are walked at random below.
    void dropAndInputMethod()
    {
        for (const bool lascia : {true, false}) {
            Banco banco(u"uno due\r\ntre"_s);
            RichTextBox &controllo = banco.controllo;
            controllo.Colora(0, 3, 0xFF00FF);
            banco.undo.TakeUndoSnapShot();
            controllo.Seleziona(2, 4);
            const QString prima = Contenuto(controllo) + Selezione(controllo);
            if (lascia) {
                QMimeData dati;
                dati.setText(u"x\ny"_s);
                QDropEvent evento(QPointF(3, 3), Qt::CopyAction, &dati, Qt::LeftButton, Qt::NoModifier);
                QDragEnterEvent entra(QPoint(3, 3), Qt::CopyAction, &dati, Qt::LeftButton, Qt::NoModifier);
                QCoreApplication::sendEvent(controllo.viewport(), &entra);
                QCoreApplication::sendEvent(controllo.viewport(), &evento);
            } else {
                QInputMethodEvent evento;
                evento.setCommitString(u"中文"_s);
                QCoreApplication::sendEvent(&controllo, &evento);
            }
            const QString dopo = Contenuto(controllo);
            QVERIFY(dopo != prima.left(dopo.size()));
            banco.Pausa();
            QCOMPARE(banco.undo.UndoList().size(), size_t(3));
            const QString selezioneDopo = Selezione(controllo);
            banco.Tasto(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(Contenuto(controllo) + Selezione(controllo), prima);
            banco.Tasto(Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(Contenuto(controllo) + Selezione(controllo), dopo + selezioneDopo);
        }
    }

    void stepsAndLists()
    {
        Banco banco;
        for (const QString &parola : {u"a"_s, u"b"_s, u"c"_s}) {
            banco.Scrivi(parola);
            banco.Pausa();
        }
        QVERIFY(!banco.undo.TakeUndoSnapShot());
        QVERIFY(!banco.undo.Undo(0) && !banco.undo.Redo(1));
        // A change still pending is the first to go.
        banco.Scrivi(u"d"_s);
        QVERIFY(banco.undo.Undo(2));
        QCOMPARE(banco.Stato(), u"ab| 2/2"_s);
        banco.Scrivi(u"x"_s);
        banco.Pausa();
        QCOMPARE(banco.Stato(), u"abx| 3/0"_s);
        // Ctrl+Z held down ends at the first page.
        for (int i = 0; i < 20; ++i)
            banco.Tasto(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(banco.Stato(), u"| 0/3"_s);
        // Typed and taken away again leaves no record, and the caret is known all the same.
        banco.undo.Redo(3);
        banco.Scrivi(u"y"_s);
        banco.Tasto(Qt::Key_Backspace);
        banco.Pausa();
        banco.Scrivi(u"z"_s);
        banco.Tasto(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(banco.Stato(), u"abx| 3/1"_s);
    }

    void redoWithAPendingChange()
    {
        Banco banco(u"riga\r\n"_s);
        banco.Scrivi(u"abc"_s);
        banco.undo.Undo(1);
        banco.Scrivi(u"x"_s);
        QVERIFY(!banco.undo.RipristinaComando());
        QCOMPARE(banco.Stato(), u"x|riga\r\n 1/0"_s);
        // Colours set since are no change that would take the redo away.
        banco.undo.Undo(1);
        banco.controllo.Colora(0, 4, 0xFF);
        banco.undo.Redo(1);
        QCOMPARE(banco.Stato(), u"x|riga\r\n 1/0"_s);
        QCOMPARE(banco.controllo.AspettoIn(2), Aspetto());
    }

    void composingEndsFirst()
    {
        Banco banco(u"ab"_s);
        banco.controllo.ImpostaSelStart(2);
        QInputMethodEvent prova(u"かな"_s, {});
        QCoreApplication::sendEvent(&banco.controllo, &prova);
        QVERIFY(banco.undo.AnnullaComando());
        QCOMPARE(banco.controllo.Text(), u"ab"_s);
        QVERIFY(banco.undo.RipristinaComando());
        QCOMPARE(banco.controllo.Text(), u"abかな"_s);
    }

    void coloursAloneNeverLookLikeNothing()
    {
        Banco banco;
        banco.Scrivi(u"<b>"_s);
        banco.Pausa();
        const QString nero = Contenuto(banco.controllo);
        for (const ColoreBgr colore : {ColoreBgr(0xC00000), ColoreBgr(0x123456)}) {
            banco.controllo.Colora(1, 1, colore);
            QVERIFY(banco.undo.TakeUndoSnapShot());
        }
        const QString colorato = Contenuto(banco.controllo);
        // The manager takes step by step, the commands go on to the text.
        banco.undo.Undo(2);
        QCOMPARE(Contenuto(banco.controllo), nero);
        banco.undo.Redo(2);
        QCOMPARE(Contenuto(banco.controllo), colorato);
        banco.Tasto(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(banco.Stato(), u"| 0/3"_s);
        banco.Tasto(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(Contenuto(banco.controllo), colorato);
        QVERIFY(!banco.undo.CanRedo());
        // Colours set between two undos leave what can be redone.
        banco.Scrivi(u"x"_s);
        banco.undo.AnnullaComando();
        banco.controllo.Sottolinea(0, 3, true);
        banco.undo.AnnullaComando();
        QCOMPARE(banco.Stato(), u"| 0/4"_s);
        banco.undo.RipristinaComando();
        QCOMPARE(Contenuto(banco.controllo), colorato);
    }

    void recordKeepsOnlyWhatDiffers()
    {
        // Across the borders of the pieces in which a large page is kept.
        QString pagina;
        for (int i = 0; i < 4000; ++i)
            pagina += u"<p class=\"x\">riga %1 \\{è}</p>\r\n"_s.arg(i);
        Banco banco(pagina);
        QRandomGenerator caso(3);
        for (int volta = 0; volta < 40; ++volta) {
            const QString rtfPrima = banco.controllo.TextRTF();
            const int dove = caso.bounded(banco.controllo.Lunghezza());
            banco.controllo.Sostituisci(dove, caso.bounded(20) ? caso.bounded(3) : caso.bounded(60000), u"a"_s);
            banco.Pausa();
            const QString rtf = banco.controllo.TextRTF();
            const clsUndoElement &elemento = banco.undo.UndoList().back();
            const qsizetype minimo = std::min(rtfPrima.size(), rtf.size());
            const auto sinistra =
                std::mismatch(rtf.begin(), rtf.begin() + minimo, rtfPrima.begin()).first - rtf.begin();
            const auto destra =
                std::mismatch(rtf.rbegin(), rtf.rbegin() + (minimo - sinistra), rtfPrima.rbegin()).first - rtf.rbegin();
            QCOMPARE(elemento.MatchingCharsFromLeft, sinistra);
            QCOMPARE(elemento.MatchingCharsFromRight, destra);
            QCOMPARE(elemento.TextBlock_BeforeChange, rtfPrima.sliced(sinistra).chopped(destra));
            QCOMPARE(elemento.TextBlock_AfterChange, rtf.sliced(sinistra).chopped(destra));
        }
        QVERIFY(banco.undo.Undo(100));
        QVERIFY(banco.controllo.Text() == pagina);
    }

    void refusals()
    {
        clsUndo senza;
        QVERIFY(!senza.Reset() && !senza.TakeUndoSnapShot() && !senza.Undo(1) && !senza.Redo(1));
        QVERIFY(!senza.Attach(this, nullptr, 250));

        Banco banco;
        banco.Scrivi(u"a"_s);
        banco.Pausa();
        banco.Scrivi(u"b"_s);
        banco.undo.Undo(1);
        ModuloDichiarazioni::Stato().ControlloInCorso = true;
        banco.Tasto(Qt::Key_Z, Qt::ControlModifier);
        banco.Tasto(Qt::Key_Y, Qt::ControlModifier);
        QVERIFY(!banco.undo.Undo(1) && !banco.undo.Redo(1));
        QCOMPARE(banco.Stato(), u"a| 1/1"_s);
        ModuloDichiarazioni::Stato().ControlloInCorso = false;
        QVERIFY(banco.undo.Undo(1));

        {
            RichTextBox passeggero;
            QVERIFY(senza.Attach(this, &passeggero, 250));
        }
        QVERIFY(!senza.TakeUndoSnapShot() && !senza.Undo(1) && !senza.Redo(1));
    }

    void randomWalks()
    {
        for (int seme = 1; seme <= 12; ++seme) {
            Cammina(seme);
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(u"seed %1"_s.arg(seme)));
        }
    }

private:
    static void Cammina(int seme)
    {
        QRandomGenerator caso{quint32(seme)};
        QString pagina;
        for (int i = 0; i < 60; ++i)
            pagina += u"<p>riga %1</p>\r\n"_s.arg(i);
        Banco banco(seme % 2 ? pagina : QString());
        RichTextBox &controllo = banco.controllo;

        struct Passo {
            QString selezionePrima;
            QString selezioneDopo;
            int vista = 0;
            bool soloAspetti = false;
        };
        QStringList contenuti{Contenuto(controllo)}; // one more than the steps
        std::vector<Passo> passi;
        size_t qui = 0;

        const auto modifica = [&] {
            const QStringList pezzi{u"<b>"_s, u"x"_s, u"\r\n"_s,        u"è{\\}中"_s,
                                    u"\r"_s,  u"😀"_s, u"a\r\nb\r\nc"_s, u"\n"_s};
            const QString pezzo = pezzi[caso.bounded(int(pezzi.size()))];
            const int dove = caso.bounded(controllo.Lunghezza() + 1);
            const std::function<void()> modi[] = {
                [&] { banco.Scrivi(u"ciao"_s); },
                [&] { controllo.ImpostaSelText(pezzo); },
                [&] {
                    controllo.Colora(dove, caso.bounded(30),
                                     caso.bounded(2) ? 0xC00000 : ColoreBgr(caso.bounded(0x1000000)));
                },
                [&] { controllo.Sottolinea(dove, caso.bounded(30), caso.bounded(2) != 0); },
                [&] { banco.Tasto(Qt::Key_Backspace); },
                [&] {
                    QGuiApplication::clipboard()->setText(pezzo);
                    controllo.Incolla();
                },
                [&] { controllo.Taglia(); },
                [&] {
                    if (caso.bounded(6) == 0)
                        controllo.ImpostaText(pezzo.repeated(caso.bounded(40)));
                    else
                        controllo.Sostituisci(dove, caso.bounded(20), pezzo);
                }};
            modi[caso.bounded(int(std::size(modi)))]();
        };
        const auto registra = [&] {
            controllo.Seleziona(caso.bounded(controllo.Lunghezza() + 1), caso.bounded(3) ? 0 : caso.bounded(40));
            Passo passo{Selezione(controllo), {}, 0, false};
            const int revisione = controllo.Revisione();
            for (int i = caso.bounded(3); i >= 0; --i)
                modifica();
            if (!banco.undo.TakeUndoSnapShot())
                return;
            passo.selezioneDopo = Selezione(controllo);
            passo.vista = controllo.PrimaRigaVisibile();
            passo.soloAspetti = revisione == controllo.Revisione();
            passi.resize(qui);
            passi.push_back(passo);
            contenuti.resize(qsizetype(++qui));
            contenuti.append(Contenuto(controllo));
        };

        for (int volta = 0; volta < 120; ++volta) {
            const int scelta = caso.bounded(5);
            if (scelta < 2 || passi.size() < 3) {
                registra();
            } else if (scelta == 2 && qui > 0) {
                const int quanti = 1 + caso.bounded(4);
                QVERIFY(banco.undo.Undo(quanti));
                qui -= std::min(qui, size_t(quanti));
                const Passo &passo = passi[qui];
                if (!passo.soloAspetti)
                    QCOMPARE(Selezione(controllo), passo.selezionePrima);
                QVERIFY(controllo.viewport()->rect().intersects(controllo.cursorRect()));
            } else if (scelta == 3 && qui < passi.size()) {
                const int quanti = 1 + caso.bounded(4);
                QVERIFY(banco.undo.Redo(quanti));
                qui = std::min(passi.size(), qui + size_t(quanti));
                QCOMPARE(Selezione(controllo), passi[qui - 1].selezioneDopo);
                QCOMPARE(controllo.PrimaRigaVisibile(), passi[qui - 1].vista);
            }
            QCOMPARE(Contenuto(controllo), contenuti[qsizetype(qui)]);
            QCOMPARE(banco.undo.UndoList().size(), qui + 1);
            QCOMPARE(banco.undo.RedoList().size(), passi.size() - qui);
        }
        banco.undo.Undo(int(passi.size()));
        QCOMPARE(Contenuto(controllo), contenuti.first());
        banco.undo.Redo(int(passi.size()));
        QCOMPARE(Contenuto(controllo), contenuti.last());
    }
};

QTEST_MAIN(TstUndo)
#include "tst_undo.moc"
