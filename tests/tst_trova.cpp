#include <QCheckBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QWindow>

#include "Aiuti.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/FrmTrova.h"
#include "dialogs/FrmVaiARiga.h"
#include "editor/clsUndo.h"
#include "platform/Cercatore.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

/// Text of the message box that \a azione shows, which is closed; empty when there is none.
template <typename Azione>
QString MessaggioDi(Azione azione)
{
    QString testo;
    QObject attesa;
    Aiuti::Rispondi<QMessageBox>(&attesa, [&testo](QMessageBox *messaggio) {
        testo = messaggio->text();
        messaggio->accept();
    });
    azione();
    return testo;
}

struct Banco {
    explicit Banco(const QString &testo, quint8 modalita = FrmTrova::Sostituisci)
    {
        FrmTrova::PosizioneRicerca = 0;
        FrmTrova::UltimaRicerca.clear();
        pad.resize(400, 200);
        pad.show();
        pad.ImpostaText(testo);
        trova.Init(&pad, modalita);
    }
    ~Banco() { ModuloDichiarazioni::Stato() = {}; }

    template <typename Tipo>
    [[nodiscard]] Tipo *Controllo(const QString &nome) const
    {
        return trova.findChild<Tipo *>(nome);
    }
    void Testi(const QString &cerca, const QString &sostituto = QString(), bool maiuscole = false)
    {
        Controllo<QLineEdit>(u"TxtFind"_s)->setText(cerca);
        Controllo<QLineEdit>(u"TxtReplace"_s)->setText(sostituto);
        Controllo<QCheckBox>(u"ChkOption"_s)->setChecked(maiuscole);
    }
    QString Premi(const QString &nome)
    {
        return MessaggioDi([&] { QTest::mouseClick(Controllo<QPushButton>(nome), Qt::LeftButton); });
    }
    QString SostituisciTutto()
    {
        Controllo<QCheckBox>(u"ChkReplaceAll"_s)->setChecked(true);
        return Premi(u"CmdSostituisci"_s);
    }
    [[nodiscard]] QString Selezione() const { return u"%1+%2"_s.arg(pad.SelStart()).arg(pad.SelLength()); }

    RichTextBox pad;
    FrmTrova trova;
};

const QString NonTrovato = u"The text '%1' was not found up to the end of the page."_s;
const QString Sostituiti = u"Occurrences replaced: %1 in all."_s;

} // namespace

class TstTrova : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(
            ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), ModuloPrincipale::LinguaInglese)
                .Riuscito());
    }

    void findFollowsTheCaret()
    {
        Banco banco(u"a x a x a x a"_s);
        banco.pad.ImpostaSelStart(3);
        bool fine = false;
        for (const int atteso : {4, 8, 12, 8}) {
            banco.trova.TrovaStringa(u"a"_s, fine, true);
            QCOMPARE(banco.pad.SelStart(), atteso);
            if (atteso == 12)
                banco.pad.ImpostaSelStart(7);
        }
    }

    void goesToTheTypedLine()
    {
        for (const auto &[battuto, riga] :
             {std::pair(u"99999999999"_s, 93), {u"0"_s, 1}, {u"-4x7"_s, 47}, {u"abc"_s, 20}}) {
            FrmVaiARiga dialogo(20, 93, nullptr);
            dialogo.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialogo));
            QTest::keyClicks(dialogo.focusWidget(), battuto);
            QTest::keyClick(dialogo.focusWidget(), Qt::Key_Return);
            QCOMPARE(dialogo.result(), int(QDialog::Accepted));
            QCOMPARE(dialogo.Riga(), riga);
        }
    }

    void searchesFromThePosition()
    {
        struct Caso {
            QString pagina, cerca;
            bool maiuscole;
            QString passi; ///< selection after each find, "-" for the message
        };
        for (const auto &[pagina, cerca, maiuscole, passi] :
             {Caso{u"Abc abc"_s, u"abc"_s, false, u"0+3 4+3 - 0+3"_s},
              {u"Abc abc"_s, u"abc"_s, true, u"4+3 - 4+3"_s},
              {u"aaaa"_s, u"aa"_s, true, u"0+2 1+2 2+2 -"_s},
              {u"abc"_s, u""_s, false, u"- -"_s},
              {u"abc"_s, QString(100'000, u'a'), false, u"-"_s},
              {u"x\r\ny\r\nz"_s, u"y\nz"_s, false, u"3+4 -"_s}, // line ends, as pasted
              {u"a😀b"_s, QString(QChar(0xDE00)), false, u"2+1 -"_s},
              {u"x𐐀"_s, u"𐐨"_s, false, u"1+2 -"_s}}) { // folded beyond the first plane
            Banco banco(pagina, FrmTrova::Trova);
            banco.Testi(cerca, {}, maiuscole);
            for (const QString &passo : passi.split(u' ')) {
                const QString messaggio = banco.Premi(u"CmdTrova"_s);
                if (passo == u"-"_s) {
                    QVERIFY(cerca.isEmpty() ? messaggio == u"Please enter the text to find."_s
                                            : messaggio.startsWith(NonTrovato.first(10)) && messaggio.size() < 1000);
                    QCOMPARE(FrmTrova::PosizioneRicerca, 0);
                } else {
                    QCOMPARE(messaggio, QString());
                    QCOMPARE(banco.Selezione(), passo);
                    QCOMPARE(FrmTrova::PosizioneRicerca, banco.pad.SelStart() + 1);
                }
            }
            QCOMPARE(banco.pad.Text(), pagina);
        }
    }

    void searchAgreesWithAPlainOne()
    {
        QRandomGenerator caso(11);
        for (int volta = 0; volta < 3000; ++volta) {
            const auto testo = [&caso](int lunghezza) {
                const QString lettere = u"aAbÀàßκΣσς"_s;
                QString scritto;
                for (int i = caso.bounded(lunghezza + 1); i > 0; --i)
                    scritto += lettere[caso.bounded(caso.bounded(2) ? 3 : int(lettere.size()))];
                return scritto;
            };
            const QString pagina = testo(60);
            const QString cerca = testo(6) + u'a';
            const auto sensibile = caso.bounded(2) ? Qt::CaseSensitive : Qt::CaseInsensitive;
            const int da = caso.bounded(10);
            const auto atteso = pagina.size() <= da ? -1 : pagina.indexOf(cerca, da, sensibile);
            QCOMPARE(Cercatore(cerca, sensibile).Prossimo(pagina, da), atteso);
        }
    }

    void repeatsTheLastSearch()
    {
        Banco banco(u"uno due uno"_s, FrmTrova::Trova);
        banco.Testi(u"uno"_s);
        banco.Premi(u"CmdTrova"_s);
        QCOMPARE(MessaggioDi([&] { banco.trova.Init(&banco.pad, FrmTrova::RipetiTrova); }), QString());
        QCOMPARE(banco.Selezione(), u"8+3"_s);
        QVERIFY(!banco.trova.isVisible());
        QCOMPARE(MessaggioDi([&] { banco.trova.Init(&banco.pad, FrmTrova::RipetiTrova); }), NonTrovato.arg(u"uno"_s));
        QCOMPARE(FrmTrova::UltimaRicerca, u"uno"_s);
        FrmTrova::UltimaRicerca.clear();
        QVERIFY(!MessaggioDi([&] { banco.trova.Init(&banco.pad, FrmTrova::RipetiTrova); }).isEmpty());
        QVERIFY(!banco.trova.isVisible());
    }

    void replacesTheSelection()
    {
        Banco banco(u"uno due uno"_s);
        banco.Testi(u"UNO"_s, u"tre"_s);
        // With nothing selected the text goes in at the caret.
        banco.Premi(u"CmdSostituisci"_s);
        QCOMPARE(banco.pad.Text(), u"treuno due uno"_s);
        QCOMPARE(banco.Selezione(), u"3+3"_s);
        banco.Premi(u"CmdSostituisci"_s);
        QCOMPARE(banco.pad.Text(), u"tretre due uno"_s);
        QCOMPARE(banco.Selezione(), u"11+3"_s);
        // Whatever is selected is replaced.
        banco.pad.Seleziona(6, 5);
        QCOMPARE(banco.Premi(u"CmdSostituisci"_s), NonTrovato.arg(u"UNO"_s));
        QCOMPARE(banco.pad.Text(), u"tretretreuno"_s);
        const QString grande(1 << 20, u'x');
        banco.Testi(u"uno"_s, grande);
        banco.pad.Seleziona(0, 0);
        banco.Premi(u"CmdSostituisci"_s);
        QVERIFY(banco.pad.Text() == grande + u"tretretreuno"_s);
    }

    void replacesAll()
    {
        struct Caso {
            QString pagina;
            int posizione;
            QString cerca, sostituto, dopo;
            int quanti;
        };
        const QString tante(40'000, u'a');
        for (const Caso &caso : {Caso{u"abc"_s, 0, u"x"_s, u"y"_s, u"abc"_s, 0},
                                 {u"abc"_s, 0, u""_s, u"y"_s, u"abc"_s, 0},
                                 {u"aXbXX"_s, 0, u"x"_s, u""_s, u"ab"_s, 3},
                                 {u"x x x"_s, 1, u"x"_s, u"y"_s, u"x y y"_s, 2}, // from the position on
                                 {u"aAa"_s, 0, u"a"_s, u"ba"_s, u"bababa"_s, 3},
                                 {u"aaaaa"_s, 0, u"aa"_s, u"b"_s, u"bba"_s, 2}, // overlaps count once
                                 {u"a\r\n\r\nb"_s, 0, u"\r\n"_s, u"b\r\n"_s, u"ab\r\nb\r\nb"_s, 2},
                                 {tante, 0, u"a"_s, u"b"_s, QString(tante).replace(u'a', u'b'), 40'000}}) {
            Banco banco(caso.pagina);
            QSignalSpy cambi(&banco.pad, &RichTextBox::Change);
            FrmTrova::PosizioneRicerca = caso.posizione;
            banco.Testi(caso.cerca, caso.sostituto);
            QCOMPARE(banco.SostituisciTutto(),
                     Sostituiti.arg(caso.quanti) + (caso.posizione == 0
                                                        ? u"\nFrom the beginning to the end of the page."_s
                                                        : u"\nFrom line 1 to the end of the page."_s));
            QCOMPARE(banco.pad.Text(), caso.dopo);
            QCOMPARE(cambi.count(), caso.quanti > 0 ? 1 : 0);
            QCOMPARE(FrmTrova::PosizioneRicerca, 0);
            QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        }
    }

    void replaceAllKeepsLooksAndIsOneStep()
    {
        Banco banco(u"ab ab\r\nab x"_s);
        banco.pad.Colora(0, 2, 0xC00000);
        banco.pad.Colora(2, 1, 0xFF);
        banco.pad.Colora(5, 2, 0xFF00FF);
        banco.pad.Colora(8, 1, 0xFF);
        QObject contenitore;
        clsUndo undo;
        QVERIFY(undo.Attach(&contenitore, &banco.pad, 3'600'000));
        connect(&banco.trova, &FrmTrova::SostituzioneImminente, &undo, &clsUndo::TakeUndoSnapShot);
        connect(&banco.trova, &FrmTrova::SostituzioneFatta, &undo, &clsUndo::TakeUndoSnapShot);
        const auto colori = [&banco] {
            QStringList colori;
            for (int i = 0; i < banco.pad.Lunghezza(); ++i)
                colori += QString::number(banco.pad.AspettoIn(i).colore, 16);
            return colori.join(u' ');
        };
        const QString prima = colori();
        QTest::keyClicks(&banco.pad, u"!"_s);
        banco.Testi(u"b"_s, u"cc"_s);
        QVERIFY(banco.SostituisciTutto().startsWith(Sostituiti.arg(3)));
        QCOMPARE(banco.pad.Text(), u"!acc acc\r\nacc x"_s);
        // What was put in looks like what it replaced.
        QCOMPARE(colori(), u"0 c00000 c00000 c00000 ff 0 0 0 ff00ff ff00ff 0 ff ff 0 0"_s);
        QVERIFY(undo.AnnullaComando());
        QCOMPARE(banco.pad.Text(), u"!ab ab\r\nab x"_s);
        QCOMPARE(colori(), u"0 "_s + prima);
        // One place likewise, whatever is typed right before and after it.
        banco.pad.Seleziona(6, 1);
        QTest::keyClicks(&banco.pad, u"?"_s);
        banco.pad.Seleziona(10, 1);
        banco.trova.SostituisciStringa({}, u"zzz"_s, false);
        QCOMPARE(banco.Selezione(), u"13+0"_s);
        QTest::keyClicks(&banco.pad, u"-"_s);
        QCOMPARE(banco.pad.Text(), u"!ab ab?\r\nazzz- x"_s);
        QCOMPARE(banco.pad.AspettoIn(12).colore, 0xFFu);
        QVERIFY(undo.AnnullaComando());
        QCOMPARE(banco.pad.Text(), u"!ab ab?\r\nazzz x"_s);
        QVERIFY(undo.AnnullaComando());
        QCOMPARE(banco.pad.Text(), u"!ab ab?\r\nab x"_s);
        QVERIFY(undo.AnnullaComando());
        QVERIFY(undo.AnnullaComando());
        QCOMPARE(banco.pad.Text(), u"ab ab\r\nab x"_s);
        QVERIFY(!undo.CanUndo());
    }

    void controlsFollowTheMode()
    {
        Banco banco(u"abc"_s);
        for (const quint8 modalita : {FrmTrova::Trova, FrmTrova::Sostituisci, FrmTrova::Trova}) {
            banco.trova.Init(&banco.pad, modalita);
            const bool sostituisce = modalita == FrmTrova::Sostituisci;
            QCOMPARE(banco.trova.windowTitle(), ModuloPrincipale::Messaggio(sostituisce ? 18 : 16));
            for (const QString &nome : {u"Label2"_s, u"TxtReplace"_s, u"CmdSostituisci"_s, u"ChkReplaceAll"_s})
                QCOMPARE(banco.Controllo<QWidget>(nome)->isVisible(), sostituisce);
        }
    }

    void keysAndProposals()
    {
        Banco banco(u"uno due uno\r\ntre"_s);
        auto *cerca = banco.Controllo<QLineEdit>(u"TxtFind"_s);
        QVERIFY(banco.trova.windowFlags() & Qt::WindowStaysOnTopHint);
        QVERIFY(!banco.trova.isModal());
        cerca->setText(u"uno"_s);
        QTest::keyClick(cerca, Qt::Key_Return);
        QCOMPARE(banco.Selezione(), u"0+3"_s);
        QTest::keyClick(banco.Controllo<QWidget>(u"CmdEsci"_s), Qt::Key_F3);
        QCOMPARE(banco.Selezione(), u"8+3"_s);
        QVERIFY(!MessaggioDi([&] { QTest::keyClick(cerca, Qt::Key_F3); }).isEmpty());
        QVERIFY(banco.trova.windowFlags() & Qt::WindowStaysOnTopHint);
        QTest::keyClick(cerca, Qt::Key_Escape);
        QVERIFY(!banco.trova.isVisible());
        // Opened again it offers the last text, or a selection within one line.
        cerca->setText(u"never searched"_s);
        for (const auto &[da, quanti, proposto] : {std::tuple(0, 0, u"uno"_s), {4, 3, u"due"_s}, {8, 8, u"due"_s}}) {
            banco.pad.Seleziona(da, quanti);
            banco.trova.Init(&banco.pad, FrmTrova::Trova);
            QCOMPARE(cerca->selectedText(), proposto);
        }
        // It opens again where the user has left it.
        const QPoint prima = banco.trova.pos();
        banco.trova.windowHandle()->setPosition(prima.x() + 40, prima.y() + 30);
        QTRY_VERIFY(banco.trova.pos() != prima);
        const QPoint posto = banco.trova.pos();
        banco.Premi(u"CmdEsci"_s);
        QVERIFY(!banco.trova.isVisible());
        banco.trova.Init(&banco.pad, FrmTrova::Trova);
        QCOMPARE(banco.trova.pos(), posto);
    }

    void showsTheMatch()
    {
        QString pagina;
        for (int i = 0; i < 300; ++i)
            pagina += u"riga %1.\r\n"_s.arg(i);
        Banco banco(pagina, FrmTrova::Trova);
        const auto area = [&banco] {
            return QRect(banco.pad.mapToGlobal(banco.pad.PosizioneDaCarattere(banco.pad.SelStart())), QSize(40, 10));
        };
        const auto vista = [&banco] {
            return QRect(banco.pad.viewport()->mapToGlobal(QPoint()), banco.pad.viewport()->size());
        };
        // Far from the dialog: into the middle.
        banco.trova.move(600, 500);
        banco.Testi(u"riga 150."_s);
        banco.Premi(u"CmdTrova"_s);
        const int terzo = vista().height() / 3;
        QVERIFY(vista().adjusted(0, terzo, 0, -terzo).contains(area().center()));
        // A match in view does not move the page.
        const int prima = banco.pad.PrimaRigaVisibile();
        banco.Testi(u"riga 151."_s);
        banco.Premi(u"CmdTrova"_s);
        QCOMPARE(banco.pad.PrimaRigaVisibile(), prima);
        // Under the dialog, wherever it stands: in view and free of it.
        for (const QPoint dove : {QPoint(0, 0), QPoint(0, 60), QPoint(0, 100), QPoint(0, 150)}) {
            for (const QString &testo : {u"riga 0."_s, u"riga 152."_s, u"riga 299."_s}) {
                banco.trova.move(vista().topLeft() + dove);
                FrmTrova::PosizioneRicerca = 0;
                banco.Testi(testo);
                banco.Premi(u"CmdTrova"_s);
                QVERIFY(vista().contains(area().center()));
                QVERIFY(!banco.trova.frameGeometry().intersects(area()));
            }
        }
    }

    void letsGoAndRefuses()
    {
        Banco banco(u"abc"_s);
        banco.Testi(u"b"_s, u"x"_s);
        ModuloDichiarazioni::Stato().ControlloInCorso = true;
        banco.SostituisciTutto();
        banco.Controllo<QCheckBox>(u"ChkReplaceAll"_s)->setChecked(false);
        banco.Premi(u"CmdSostituisci"_s);
        QCOMPARE(banco.pad.Text(), u"abc"_s);
        ModuloDichiarazioni::Stato().ControlloInCorso = false;

        {
            RichTextBox passeggero;
            banco.trova.Init(&passeggero, FrmTrova::Sostituisci);
        }
        QCOMPARE(banco.Premi(u"CmdTrova"_s), NonTrovato.arg(u"b"_s));
        QCOMPARE(banco.Premi(u"CmdSostituisci"_s), QString());
        QCOMPARE(banco.SostituisciTutto(), QString());
        QCOMPARE(banco.pad.Text(), u"abc"_s);
    }
};

QTEST_MAIN(TstTrova)
#include "tst_trova.moc"
