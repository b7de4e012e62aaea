#include "html/VerificaSintassi.h"

#include "BaseDiProva.h"
#include "ModelloControllo.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "editor/ModuloColori.h"
#include "html/Avanzamento.h"
#include "html/FrmControlloSintassi.h"
#include "html/Risultati.h"
#include "platform/RichTextBox.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace ModuloVerificaSintassi;

namespace
{

/// A page whose tags all end at a multiple of 100: events run at each.
QString PaginaConPause(int tag)
{
    return (QString(95, u' ') + u"<foo>"_s).repeated(tag);
}

/// A progress window that is none: it only keeps what it was told.
struct FintoAvanzamento : Avanzamento {
    struct Diario {
        qsizetype massimo = 0, valore = 0;
        bool mostrato = false, annulla = false, chiuso = false;
    };
    explicit FintoAvanzamento(Diario &d) : diario(d) {}
    ~FintoAvanzamento() override { diario.chiuso = true; }
    void Mostra() override { diario.mostrato = true; }
    void ImpostaValore(qsizetype valore) override { diario.valore = valore; }
    bool Annullato() const override { return diario.annulla; }
    static void Usa(Diario &diario)
    {
        ImpostaAvanzamento([&diario](const QString &, qsizetype massimo) {
            diario.massimo = massimo;
            return std::make_unique<FintoAvanzamento>(diario);
        });
    }
    Diario &diario;
};

QString Scritti(const QList<RisultatoControllo> &risultati)
{
    QString scritti;
    for (const auto &r : risultati.sliced(1))
        scritti += u"%1 %2 %3 %4\n"_s.arg(r.Posizione).arg(r.Riga).arg(r.Tipo).arg(r.Testo);
    return scritti;
}

QString Scritti(const QList<ModelloControllo::Risultato> &risultati)
{
    QString scritti;
    for (const auto &r : risultati)
        scritti += u"%1 %2 %3 %4\n"_s.arg(r.posizione).arg(r.riga).arg(r.tipo).arg(r.testo);
    return scritti;
}

/// Empty when the control looks as the model says.
QString Differenza(const RichTextBox &editor, const ModelloControllo &modello)
{
    for (int i = 0; i < editor.Lunghezza(); ++i) {
        const Aspetto vero = editor.AspettoIn(i);
        const Aspetto &atteso = modello.aspetti[i];
        if (vero != atteso) {
            return u"position %1 of %2: %3 %4 instead of %5 %6"_s.arg(i)
                .arg(QDebug::toString(editor.Text()))
                .arg(vero.colore, 0, 16)
                .arg(vero.onda)
                .arg(atteso.colore, 0, 16)
                .arg(atteso.onda);
        }
    }
    const QString trovati = Scritti(ArrayRisultati());
    const QString attesi = Scritti(modello.risultati);
    return trovati == attesi ? QString()
                             : u"%1: %2 instead of %3"_s.arg(QDebug::toString(editor.Text()), trovati, attesi);
}

} // namespace

class TstVerifica : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        BaseDiProva::Carica();
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), 0).Riuscito());
    }
    void init()
    {
        ModuloDichiarazioni::Stato() = {};
        AzzeraRisultati();
        ImpostaAvanzamento({});
    }

    // Looks stay from check to check and so do results; what is checked grows out of what was.
    void everyLookAndResultIsTheModels()
    {
        QRandomGenerator caso(20240);
        RichTextBox editor;
        for (int volta = 0; volta < 1500; ++volta) {
            const QString pagina = BaseDiProva::Pagina(caso, caso.bounded(60));
            editor.ImpostaText(pagina);
            AzzeraRisultati();
            ModelloControllo modello(pagina);
            for (int passo = 0; passo < 6; ++passo) {
                if (const int tipo = caso.bounded(4); tipo < 2) {
                    const int primaFine = 1 + caso.bounded(2);
                    VerificaSintassi(editor, primaFine, tipo == 1);
                    modello.Verifica(primaFine);
                } else if (tipo == 2) {
                    const int caretto = caso.bounded(editor.Lunghezza() + 1);
                    editor.ImpostaSelStart(caretto);
                    ModuloColori::ControllaTagCorrente(editor);
                    modello.VerificaTagCorrente(modello.Limita(caretto));
                } else {
                    // A bold patch, and waves where no fault is.
                    const int da = caso.bounded(editor.Lunghezza() + 1);
                    const Aspetto aspetto{0x123456, true, false, true};
                    editor.ImpostaAspetto(da, 7, aspetto);
                    for (int i = modello.Limita(da), fine = modello.Limita(i + 7); i < fine; ++i)
                        modello.aspetti[i] = aspetto;
                }
                const QString differenza = Differenza(editor, modello);
                QVERIFY2(differenza.isEmpty(), qPrintable(u"page %1: %2"_s.arg(volta).arg(differenza)));
            }
        }
    }

    void viewStaysAsItWas()
    {
        RichTextBox editor;
        editor.resize(300, 200);
        editor.ImpostaText((u"<foo><b align=left>x</b>"_s + QString(100, u'y') + u"\r\n"_s).repeated(200));
        editor.show();
        editor.Seleziona(1000, 20);
        editor.ImpostaPosizioneScorrimento({40, 30});
        const QPoint dove = editor.PosizioneScorrimento();
        QVERIFY(dove.y() > 0);
        for (const bool mostra : {false, true}) {
            VerificaSintassi(editor, 1, mostra);
            QCOMPARE(editor.PosizioneScorrimento(), dove);
            QCOMPARE(editor.SelStart(), 1000);
            QCOMPARE(editor.SelLength(), 20);
            QVERIFY(editor.updatesEnabled());
        }
        QVERIFY(!ModuloDichiarazioni::Stato().ControlloInCorso);
        QVERIFY(ArrayRisultati().size() > 100);
    }

    void typingLookOutlivesTheCheckOfItsTag()
    {
        RichTextBox editor;
        editor.ImpostaText(u"\r\n<table  "_s);
        editor.ImpostaSelStart(9);
        ModuloColori::RegolaColoreBattitura(editor);
        ModuloColori::ControllaTagCorrente(editor);
        QCOMPARE(editor.AspettoIn(5).colore, ColoreBgr(0xC00000));
        QTest::keyClicks(&editor, u"al"_s);
        QCOMPARE(editor.Text(), u"\r\n<table al "_s);
        QCOMPARE(editor.AspettoIn(9).colore, ColoreBgr(0));
        QCOMPARE(editor.AspettoIn(10).colore, ColoreBgr(0));
    }

    void eventsDuringACheck_data()
    {
        QTest::addColumn<int>("caso");
        const char *nomi[] = {"a key waits until the check has ended",
                              "a second check is refused",
                              "a change of the text ends the check",
                              "a new page ends the check",
                              "the control goes",
                              "cancel keeps what was found",
                              "a check of the tag at the caret is refused"};
        for (int caso = 0; caso < 7; ++caso)
            QTest::newRow(nomi[caso]) << caso;
    }
    void eventsDuringACheck()
    {
        QFETCH(int, caso);
        FintoAvanzamento::Diario diario;
        FintoAvanzamento::Usa(diario);
        const QPointer<RichTextBox> editor(new RichTextBox);
        const QString pagina = u"\r\n"_s + PaginaConPause(1).mid(2) + u"\r\n<bar>"_s + PaginaConPause(50);
        editor->ImpostaText(pagina);
        editor->show();
        bool inCorso = false;
        const std::function<void()> eventi[] = {[&] {
                                                    QTest::keyClick(editor, Qt::Key_Return);
                                                    QTest::mouseClick(editor->viewport(), Qt::LeftButton, {}, {5, 30});
                                                },
                                                [&] { VerificaSintassi(*editor, 1, true); },
                                                [&] { editor->Sostituisci(0, 2, u"<b>\r\n"_s); },
                                                [&] { editor->ImpostaText(u"new"_s); },
                                                [&] { delete editor; },
                                                [&] { diario.annulla = true; },
                                                [&] {
                                                    editor->ImpostaSelStart(98);
                                                    ModuloColori::ControllaTagCorrente(*editor);
                                                }};
        QTimer::singleShot(0, this, [&] {
            inCorso = ModuloDichiarazioni::Stato().ControlloInCorso;
            eventi[caso]();
        });
        int detto = -1; // how the check was told to have ended
        ImpostaDopoVerifica([&detto](bool finita, int) { detto = finita ? 1 : 0; });
        VerificaSintassi(*editor, 1, true);
        ImpostaDopoVerifica({});
        QCOMPARE(detto, caso == 4 ? -1 : int(caso == 0 || caso == 1 || caso == 6));
        QVERIFY(inCorso);
        QVERIFY(diario.chiuso && !diario.mostrato);
        QCOMPARE(diario.massimo, pagina.size());
        QVERIFY(!ModuloDichiarazioni::Stato().ControlloInCorso);
        QCOMPARE(ArrayRisultati().size() == 4, caso == 0 || caso == 1 || caso == 6);
        QCOMPARE(editor.isNull(), caso == 4);
        if (!editor)
            return;
        QVERIFY(editor->updatesEnabled());
        if (caso == 0) {
            QCOMPARE(editor->Text(), pagina);
            QTRY_COMPARE(editor->Text(), u"\r\n"_s + pagina);
        } else if (caso == 2) {
            QCOMPARE(editor->Text(), u"<b>\r\n"_s + pagina.mid(2));
            for (int i = 0; i < editor->Lunghezza(); ++i)
                QCOMPARE(editor->AspettoIn(i), Aspetto());
        } else {
            QCOMPARE(editor->Text(), caso == 3 ? u"new"_s : pagina);
        }
        delete editor;
    }

    void longCheckHidesTheEditorAndShowsProgress()
    {
        FintoAvanzamento::Diario diario;
        FintoAvanzamento::Usa(diario);
        RichTextBox editor;
        editor.ImpostaText(PaginaConPause(100));
        editor.show();
        bool nascosto = false;
        // The first pause takes all the patience there is; at the next one the check has become a long one.
        QTimer::singleShot(0, this, [&] {
            QElapsedTimer orologio;
            orologio.start();
            while (!orologio.hasExpired(AttesaAvanzamento + 1)) {
            }
            QTimer::singleShot(0, this, [&] { nascosto = editor.isHidden() && diario.mostrato; });
        });
        VerificaSintassi(editor, 1, true);
        QVERIFY(nascosto);
        QVERIFY(diario.chiuso);
        QCOMPARE(diario.valore, diario.massimo);
        QVERIFY(editor.isVisible());
    }

    void resultsWindow()
    {
        RichTextBox editor;
        editor.ImpostaText(u"\r\n<foo>\r\n<bar>\r\n<b\rx=y>"_s);
        FrmControlloSintassi finestra;
        int scelto = -1;
        connect(&finestra, &FrmControlloSintassi::RisultatoScelto, &editor, [&](qint32 posizione) {
            scelto = posizione;
            finestra.Vai_A_Pos(posizione, editor);
        });
        auto *lista = finestra.findChild<QAbstractItemView *>(u"RichControllo"_s);
        finestra.resize(400, 300);
        finestra.show();
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, {5, 5});
        QCOMPARE(scelto, -1);
        VerificaSintassi(editor, 1, false);
        QCOMPARE(finestra.ListCount(), 4);
        QCOMPARE(finestra.List(0), u"2: Il tag 'foo' non esiste."_s);
        const auto clicca = [&](int riga) {
            const QModelIndex indice = lista->model()->index(riga, 0);
            QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, lista->visualRect(indice).center());
        };
        clicca(1);
        QCOMPARE(editor.SelStart(), 10);

        // What is corrected leaves the list; the others go along with the text, and their lines are the present ones.
        editor.Sostituisci(3, 3, u"b"_s);
        editor.Sostituisci(0, 0, u"\r\n"_s);
        clicca(0);
        QCOMPARE(scelto, 10);
        QCOMPARE(finestra.ListCount(), 3);
        QCOMPARE(finestra.List(0), u"4: Il tag 'bar' non esiste."_s);
        lista->setCurrentIndex(lista->model()->index(1, 0));
        QTest::keyClick(lista, Qt::Key_Return);
        QCOMPARE(scelto, 19);
        finestra.Svuota();
        QCOMPARE(finestra.ListCount(), 0);
    }
};

QTEST_MAIN(TstVerifica)
#include "tst_verifica.moc"
