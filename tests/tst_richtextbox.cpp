#include "platform/RichTextBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// What the control must be, kept the plain way.
struct Modello {
    QString testo;
    QList<ColoreBgr> colori;

    [[nodiscard]] int Limita(int p) const
    {
        p = std::clamp(p, 0, int(testo.size()));
        return p > 0 && p < testo.size() && testo[p] == u'\n' && testo[p - 1] == u'\r' ? p - 1 : p;
    }
    void Sostituisci(int da, int quanti, const QString &nuovo)
    {
        const int inizio = Limita(da);
        const int fine = Limita(inizio + quanti);
        const ColoreBgr colore = inizio > 0 ? colori[inizio - 1] : 0;
        // A lone CR and a lone LF that meet become one line end, in one look.
        testo.replace(inizio, fine - inizio, nuovo);
        colori.remove(inizio, fine - inizio);
        colori.insert(inizio, nuovo.size(), colore);
    }
    void Colora(int da, int quanti, ColoreBgr colore)
    {
        const int fine = Limita(Limita(da) + quanti);
        for (int i = Limita(da); i < fine; ++i)
            colori[i] = colore;
    }
    [[nodiscard]] int Riga(int p) const
    {
        int riga = 0;
        for (int i = 0; i < p; ++i) {
            if (testo[i] == u'\n' || (testo[i] == u'\r' && (i + 1 == testo.size() || testo[i + 1] != u'\n')))
                ++riga;
        }
        return riga;
    }
};

QString TestoACaso(QRandomGenerator &caso, int lunghezza, bool semplice = false)
{
    // Separated by "|": line ends, what Qt's own text turns into something else, halves of pairs, RTF's signs.
    static const QStringList Pezzi =
        u"\r\n|\r\n|a|bc|<B>| |\t|è|中|\xA0|\r|\n|\x2029|\x2028|\xFDD0|\xFDD1|\xFFFC|\0|\xD83D|\xDE00|😀|"
        "\xFEFF|\xFFFF|\f\v|\x85|\\{}"_s.split(u'|');
    QString testo;
    for (int i = 0; i < lunghezza; ++i)
        testo += Pezzi[caso.bounded(semplice ? 8 : int(Pezzi.size()))];
    return testo;
}

QString Stato(RichTextBox &controllo)
{
    QString stato = controllo.Text() + u'|';
    for (int i = 0; i < controllo.Lunghezza(); ++i) {
        const Aspetto aspetto = controllo.AspettoIn(i);
        stato += u"%1%2%3%4,"_s.arg(aspetto.colore).arg(aspetto.onda).arg(aspetto.grassetto).arg(aspetto.corsivo);
    }
    return stato;
}

QString Confronta(RichTextBox &controllo, const Modello &modello, QRandomGenerator &caso)
{
    if (controllo.Text() != modello.testo)
        return u"text %1 is not %2"_s.arg(QDebug::toString(controllo.Text()), QDebug::toString(modello.testo));
    for (int i = 0; i < modello.testo.size(); ++i) {
        if (controllo.AspettoIn(i).colore != modello.colori[i])
            return u"colour at %1"_s.arg(i);
    }
    if (controllo.NumeroRighe() != modello.Riga(int(modello.testo.size())) + 1)
        return u"%1 lines"_s.arg(controllo.NumeroRighe());
    for (int volta = 0; volta < 6; ++volta) {
        const int p = caso.bounded(int(modello.testo.size()) + 1);
        controllo.ImpostaSelStart(p);
        if (controllo.SelStart() != modello.Limita(p))
            return u"caret at %1 instead of %2"_s.arg(controllo.SelStart()).arg(modello.Limita(p));
        const int riga = modello.Riga(modello.Limita(p));
        if (controllo.GetLineFromChar(p) != riga)
            return u"line %1 of %2 is not %3"_s.arg(controllo.GetLineFromChar(p)).arg(p).arg(riga);
        const int inizio = controllo.InizioRiga(riga);
        if (modello.Riga(inizio) != riga || (inizio > 0 && modello.Riga(inizio - 1) == riga))
            return u"line %1 starts at %2"_s.arg(riga).arg(inizio);
    }
    return {};
}

} // namespace

class TstRichTextBox : public QObject
{
    Q_OBJECT

private slots:
    void textComesOutAsPutIn()
    {
        QRandomGenerator caso(3);
        RichTextBox controllo;
        for (int giro = 0; giro < 400; ++giro) {
            const QString testo = TestoACaso(caso, caso.bounded(60));
            controllo.ImpostaText(testo);
            QCOMPARE(controllo.Text(), testo);
            const Modello modello{testo, QList<ColoreBgr>(testo.size(), 0)};
            QCOMPARE(Confronta(controllo, modello, caso), QString());
        }
    }

    // A lone CR and a lone LF that come to stand side by side are one line end, by a key and by a replacement.
    void lineEndsThatMeetBecomeOne()
    {
        RichTextBox controllo;
        for (const bool tasto : {true, false}) {
            controllo.ImpostaText(u"a\rX\nb"_s);
            QCOMPARE(controllo.document()->blockCount(), 3);
            controllo.ImpostaSelStart(2);
            tasto ? QTest::keyClick(&controllo, Qt::Key_Delete) : controllo.Sostituisci(2, 1, {});
            QCOMPARE(controllo.Text(), u"a\r\nb"_s);
            QCOMPARE(controllo.document()->blockCount(), 2);
        }
    }

    void randomEditsFollowTheModel()
    {
        for (int seme = 1; seme <= 6; ++seme) {
            CambiaACaso(seme);
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(u"seed %1"_s.arg(seme)));
        }
    }

    void keysFollowTheModel()
    {
        QRandomGenerator caso(11);
        RichTextBox controllo;
        controllo.show();
        Modello modello;
        int caretto = 0;
        const auto indietro = [&] { return modello.Limita(caretto - 1); };
        const auto avanti = [&] {
            const bool coppia = caretto + 1 < modello.testo.size() && modello.testo[caretto] == u'\r';
            return std::min<int>(caretto + (coppia ? 2 : 1), int(modello.testo.size()));
        };
        for (int giro = 0; giro < 1500; ++giro) {
            const int modo = caso.bounded(7);
            const int prima = indietro();
            if (modo == 0) {
                QTest::keyClick(&controllo, Qt::Key_Return, caso.bounded(2) ? Qt::ShiftModifier : Qt::NoModifier);
                modello.Sostituisci(caretto, 0, u"\r\n"_s);
                caretto += 2;
            } else if (modo == 1) {
                QTest::keyClick(&controllo, Qt::Key_Backspace);
                modello.Sostituisci(prima, caretto - prima, {});
                caretto = prima;
            } else if (modo == 2) {
                QTest::keyClick(&controllo, Qt::Key_Delete);
                modello.Sostituisci(caretto, avanti() - caretto, {});
            } else if (modo < 5) {
                QTest::keyClick(&controllo, modo == 3 ? Qt::Key_Left : Qt::Key_Right);
                caretto = modo == 3 ? prima : avanti();
            } else {
                QTest::keyClick(&controllo, 'x');
                modello.Sostituisci(caretto++, 0, u"x"_s);
            }
            QCOMPARE(controllo.SelStart(), caretto);
            QCOMPARE(Confronta(controllo, modello, caso), QString());
            controllo.ImpostaSelStart(caretto);
        }
    }

    void longLinesAreCutUnseen()
    {
        RichTextBox controllo;
        QString riga;
        for (int i = 0; i < 9000; ++i)
            riga += QChar(u'a' + i % 26);
        const QString testo = u"prima\r\n"_s + riga + u"\r\nultima"_s;
        controllo.ImpostaText(testo);
        QCOMPARE(controllo.Text(), testo);
        QVERIFY(controllo.document()->blockCount() > 8);
        QCOMPARE(controllo.NumeroRighe(), 3);
        QCOMPARE(controllo.GetLineFromChar(7 + 8999), 1);
        QCOMPARE(controllo.GetLineFromChar(int(testo.size())), 2);
        QCOMPARE(controllo.InizioRiga(2), 7 + 9000 + 2);

        // Left, right, Backspace and Delete take one character each wherever a cut lies.
        QString modello = testo;
        for (int caretto = 3000; caretto > 800; --caretto) {
            controllo.ImpostaSelStart(caretto);
            QTest::keyClick(&controllo, Qt::Key_Left);
            QCOMPARE(controllo.SelStart(), caretto - 1);
            QTest::keyClick(&controllo, Qt::Key_Right);
            QCOMPARE(controllo.SelStart(), caretto);
            if (caretto % 3 == 0) {
                QTest::keyClick(&controllo, Qt::Key_Backspace);
                modello.remove(caretto - 1, 1);
            } else if (caretto % 3 == 1) {
                QTest::keyClick(&controllo, Qt::Key_Delete);
                modello.remove(caretto, 1);
            }
            QCOMPARE(controllo.SelStart(), caretto % 3 == 0 ? caretto - 1 : caretto);
        }
        QCOMPARE(controllo.Text(), modello);

        // Home and End go to the ends of the line, wherever its cuts lie.
        controllo.ImpostaText(testo);
        for (const int caretto : {7, 7 + 256, 7 + 4000, 7 + 9000}) {
            controllo.ImpostaSelStart(caretto);
            QTest::keyClick(&controllo, Qt::Key_End);
            QCOMPARE(controllo.SelStart(), 7 + 9000);
            controllo.ImpostaSelStart(caretto);
            QTest::keyClick(&controllo, Qt::Key_Home);
            QCOMPARE(controllo.SelStart(), 7);
            controllo.ImpostaSelStart(caretto);
            QTest::keyClick(&controllo, Qt::Key_End, Qt::ShiftModifier);
            QCOMPARE(std::pair(controllo.SelStart(), controllo.SelLength()), std::pair(caretto, 7 + 9000 - caretto));
        }
        // A block that grows while it is typed into is cut in its turn.
        controllo.ImpostaText(QString());
        controllo.ImpostaSelText(QString(1000, u'x'));
        for (int i = 0; i < 200; ++i)
            QTest::keyClick(&controllo, 'y');
        QCOMPARE(controllo.Text(), QString(1000, u'x') + QString(200, u'y'));
        QCOMPARE(controllo.document()->blockCount(), 2);
        QCOMPARE(controllo.SelStart(), 1200);
        QCOMPARE(controllo.NumeroRighe(), 1);
    }

    void rtfCarriesEverythingAndReplacesWhatDiffers()
    {
        QRandomGenerator caso(9);
        RichTextBox controllo;
        QString pagina;
        for (int i = 0; i < 300; ++i)
            pagina += u"<P>riga %1\r\n"_s.arg(i);
        controllo.ImpostaText(pagina);
        QList<std::pair<QString, QString>> storia;
        for (int giro = 0; giro < 120; ++giro) {
            storia.append({controllo.TextRTF(), Stato(controllo)});
            const int da = caso.bounded(controllo.Lunghezza() + 1);
            controllo.Sostituisci(da, caso.bounded(30), TestoACaso(caso, caso.bounded(5)));
            controllo.ImpostaAspetto(
                da, caso.bounded(20),
                {quint32(caso.bounded(0x1000000)), caso.bounded(2) == 1, caso.bounded(2) == 1, caso.bounded(2) == 1});
        }
        for (int giro = 0; giro < 200; ++giro) {
            const auto &[rtf, stato] = storia[caso.bounded(int(storia.size()))];
            QVERIFY(controllo.ImpostaTextRTF(rtf));
            QCOMPARE(Stato(controllo), stato);
            RichTextBox nuovo;
            QVERIFY(nuovo.ImpostaTextRTF(controllo.TextRTF()));
            QCOMPARE(Stato(nuovo), stato);
        }
        // A change of one line changes one line of RTF, and taking it back touches one block of the document.
        controllo.ImpostaTextRTF(storia.first().first);
        const QString prima = controllo.TextRTF();
        controllo.Sostituisci(controllo.InizioRiga(150) + 3, 1, u"R"_s);
        const QStringList righePrima = prima.split(u'\n');
        const QStringList righeDopo = controllo.TextRTF().split(u'\n');
        QCOMPARE(righeDopo.size(), righePrima.size());
        int diverse = 0;
        for (int i = 0; i < righePrima.size(); ++i)
            diverse += righePrima[i] != righeDopo[i];
        QCOMPARE(diverse, 1);
        QSignalSpy spia(controllo.document(), &QTextDocument::contentsChange);
        controllo.ImpostaTextRTF(prima);
        QCOMPARE(spia.size(), 1);
        QVERIFY(spia.first().at(1).toInt() <= 2);
    }

    void foreignRtf()
    {
        const QString fondo(5000, u'{');
        for (const auto &[rtf, testo] :
             {std::pair(u"{\\rtf1\\ansi a\\'e8\\'80\\{b\\}\\\\}"_s, u"aè€{b}\\"_s),
              {u"{\\rtf1\\uc2 \\u20013??x\\uc0\\u228 y}"_s, u"中xäy"_s},
              {u"{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\*\\generator Gen 1;}{\\info{\\title T}}x}"_s, u"x"_s},
              {u"{\\rtf1 a\\par\r\nb\\line c\\\n d}"_s, u"a\r\nb\r\nc\r\n d"_s},
              {u"{\\rtf1 abc{\\b d"_s, u"abcd"_s},
              {u"{\\rtf1 a\\bin3 }}}b}"_s, u"ab"_s},
              {u"{\\rtf1 "_s + fondo + u'x' + QString(fondo).replace(u'{', u'}') + u"y}"_s, u"xy"_s}, // too deep
              {u"{\\rtf1 a\\fs99999999999999999999 b}"_s, u"ab"_s}}) {
            RichTextBox controllo;
            controllo.ImpostaText(u"prima"_s);
            QVERIFY(!controllo.ImpostaTextRTF(u"no rtf"_s));
            QCOMPARE(controllo.Text(), u"prima"_s);
            QVERIFY(controllo.ImpostaTextRTF(rtf));
            QCOMPARE(controllo.Text(), testo);
        }
    }

    void typingLook()
    {
        RichTextBox controllo;
        controllo.ImpostaText(u"<B>"_s);
        controllo.Colora(1, 1, 0xC00000);
        controllo.Sottolinea(1, 1, true);
        QCOMPARE(controllo.AspettoIn(1), (Aspetto{0xC00000, false, false, true}));
        // Typed text looks like the character before it ...
        controllo.ImpostaSelStart(2);
        QTest::keyClick(&controllo, 'x');
        QCOMPARE(controllo.AspettoIn(2).colore, 0xC00000u);
        // ... unless a typing look was set at the caret ...
        controllo.ImpostaSelColor(0xFF);
        QCOMPARE(controllo.SelColor(), 0xFFu);
        QTest::keyClick(&controllo, 'y');
        QTest::keyClick(&controllo, 'z');
        QCOMPARE(controllo.AspettoIn(3).colore, 0xFFu);
        QCOMPARE(controllo.AspettoIn(4).colore, 0xFFu);
        // ... which a move of the caret takes away.
        controllo.ImpostaSelColor(0x808080);
        QTest::keyClick(&controllo, Qt::Key_Left);
        QTest::keyClick(&controllo, Qt::Key_Right);
        QTest::keyClick(&controllo, 'w');
        QCOMPARE(controllo.AspettoIn(5).colore, 0xFFu);
        controllo.Seleziona(0, 2);
        controllo.ImpostaSelBold(true);
        QVERIFY(controllo.AspettoIn(0).grassetto && controllo.AspettoIn(1).grassetto &&
                !controllo.AspettoIn(2).grassetto);
    }

    void find()
    {
        constexpr int Mai = -1;
        struct Caso {
            QString cercato;
            int inizio, fine, opzioni, trovato;
        };
        RichTextBox controllo;
        controllo.ImpostaText(u"Abc abc\r\nabcd Abc"_s);
        for (const Caso &c : {Caso{u"abc"_s, 0, -1, 0, 0},
                              {u"Abc"_s, 1, -1, RichTextBox::Maiuscole, 14},
                              {u"abc"_s, 5, -1, RichTextBox::ParolaIntera, 14},
                              {u"C\r\na"_s, 0, -1, 0, 6},
                              {u"abc"_s, 1, 6, 0, Mai}, // must end before the end
                              {u"abc"_s, 900, -1, 0, Mai}}) {
            controllo.Seleziona(3, 0);
            QCOMPARE(controllo.Find(c.cercato, c.inizio, c.fine, c.opzioni | RichTextBox::SenzaEvidenza), c.trovato);
            QCOMPARE(controllo.SelStart(), 3);
            QCOMPARE(controllo.Find(c.cercato, c.inizio, c.fine, c.opzioni), c.trovato);
            QCOMPARE(controllo.SelStart(), c.trovato < 0 ? 3 : c.trovato);
            QCOMPARE(controllo.SelLength(), c.trovato < 0 ? 0 : int(c.cercato.size()));
        }
    }

    void keyEventsCanBeChanged()
    {
        RichTextBox controllo;
        QStringList eventi;
        connect(&controllo, &RichTextBox::KeyDown, &controllo, [&](EventoTasto *tasto) {
            eventi += u"down %1 %2"_s.arg(tasto->codice).arg(tasto->shift);
            if (tasto->codice == 32 && tasto->shift == 2)
                tasto->codice = 0;
        });
        connect(&controllo, &RichTextBox::KeyPress, &controllo, [&](char16_t *carattere) {
            if (*carattere == u'>')
                controllo.ImpostaSelText(u"</B>"_s);
            *carattere = *carattere == u'q' ? u'Q' : *carattere == u'!' ? 0 : *carattere;
        });
        connect(&controllo, &RichTextBox::KeyUp, &controllo, [&](EventoTasto *tasto) {
            eventi += u"up %1 %2 %3"_s.arg(tasto->codice).arg(tasto->shift).arg(tasto->testo);
        });
        QTest::keyClick(&controllo, Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClicks(&controllo, u"aq!>"_s);
        QCOMPARE(controllo.Text(), u"aQ</B>>"_s);
        eventi.clear();
        QTest::keyClick(&controllo, Qt::Key_Right);
        QTest::keyClick(&controllo, '-');
        QTest::keyClick(&controllo, '<');
        QCOMPARE(eventi, (QStringList{u"down 39 0"_s, u"up 39 0 "_s, u"down 189 0"_s, u"up 189 0 -"_s, u"down 226 0"_s,
                                      u"up 226 0 <"_s}));
    }

    void clipboard()
    {
        RichTextBox controllo;
        const QString testo = u"uno"_s + QChar(0xA0) + u"\r\ndue"_s;
        controllo.ImpostaText(testo);
        controllo.Seleziona(0, int(testo.size()));
        controllo.Copia();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"uno"_s + QChar(0xA0) + u"\ndue"_s);
        controllo.Taglia();
        QCOMPARE(controllo.Text(), QString());
        QVERIFY(controllo.PuoIncollare());
        controllo.Incolla();
        QCOMPARE(controllo.Text(), testo);
        QGuiApplication::clipboard()->setText(u"a\rb\nc\r\nd"_s);
        controllo.Incolla();
        QCOMPARE(controllo.Text(), testo + u"a\r\nb\r\nc\r\nd"_s);
    }

    void coloursReachTheScreen()
    {
        RichTextBox controllo;
        controllo.resize(400, 200);
        QString pagina;
        for (int i = 0; i < 100; ++i)
            pagina += u"\u2588\u2588\u2588\r\n"_s; // full blocks: their colour is easy to read back
        controllo.ImpostaText(pagina);
        controllo.show();
        const auto haColore = [&](QRgb colore) {
            QImage immagine = controllo.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
            const auto *punti = reinterpret_cast<const QRgb *>(immagine.constBits());
            return std::count(punti, punti + immagine.width() * immagine.height(), colore) > 20;
        };
        QVERIFY(!haColore(qRgb(0, 0, 192)));
        controllo.Colora(0, 2, 0xC00000);
        controllo.Colora(5 * 90, 2, 0xFF);
        QVERIFY(haColore(qRgb(0, 0, 192)));
        QVERIFY(!haColore(qRgb(255, 0, 0)));
        // Out of view until it is scrolled to; colours never count as a change of the document.
        QSignalSpy spia(&controllo, &RichTextBox::Change);
        controllo.ScorriRighe(88);
        QVERIFY(haColore(qRgb(255, 0, 0)));
        QCOMPARE(spia.size(), 0);
        QCOMPARE(controllo.PrimaRigaVisibile(), controllo.RigheVisibili().front().riga);
        // The numbers beside the text stand level with their lines, the last one too.
        const std::vector<RichTextBox::RigaVisibile> righe = controllo.RigheVisibili();
        QCOMPARE(righe.back().riga, 100);
        QCOMPARE(righe.back().altezza, righe.front().altezza);
        // The edit after a repaint is reported as what it is, far from the painted blocks.
        QSignalSpy cambi(controllo.document(), &QTextDocument::contentsChange);
        controllo.Sostituisci(0, 1, u"x"_s);
        QCOMPARE(cambi.size(), 1);
        QVERIFY(cambi.first().at(2).toInt() <= 2);
    }

private:
    static void CambiaACaso(int seme)
    {
        QRandomGenerator caso{quint32(seme)};
        RichTextBox controllo;
        Modello modello;
        for (int giro = 0; giro < 500; ++giro) {
            const int da = caso.bounded(int(modello.testo.size()) + 1);
            const int quanti = caso.bounded(8);
            const int modo = caso.bounded(4);
            if (modo < 2) {
                const QString nuovo = TestoACaso(caso, caso.bounded(6), seme % 3 == 0);
                controllo.Sostituisci(da, quanti, nuovo);
                modello.Sostituisci(da, quanti, nuovo);
            } else if (modo == 2) {
                controllo.Seleziona(da, quanti);
                controllo.ImpostaSelText(u"X"_s);
                modello.Sostituisci(da, quanti, u"X"_s);
            } else {
                const ColoreBgr colore = 0x10101u * caso.bounded(1, 9);
                controllo.Colora(da, quanti, colore);
                modello.Colora(da, quanti, colore);
            }
            // Where a CR met an LF the pair has one look; the model learns which.
            for (int i = 1; i < modello.testo.size() && i < controllo.Lunghezza(); ++i) {
                if (modello.testo[i] == u'\n' && modello.testo[i - 1] == u'\r')
                    modello.colori[i] = modello.colori[i - 1] = controllo.AspettoIn(i).colore;
            }
            QCOMPARE(Confronta(controllo, modello, caso), QString());
        }
    }
};

QTEST_MAIN(TstRichTextBox)
#include "tst_richtextbox.moc"
