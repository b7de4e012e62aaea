#include "AspettiScritti.h"

#include "app/TabellaLingua.h"
#include "chrome/FrmAdvTooltip.h"
#include "html/Battitura.h"
#include "html/ContestoTag.h"
#include "html/FrmComplete.h"
#include "html/ModuloCompletamento.h"
#include "html/ModuloTag.h"

#include <QInputMethodEvent>
#include <QListView>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>

using namespace ModuloCompletamento;
using namespace Qt::StringLiterals;
using ModuloTag::DatiProprieta;
using ModuloTag::DatiTag;

namespace
{

void CaricaBase()
{
    const auto proprieta = [](const QString &nome, const QStringList &valori = {}) {
        return DatiProprieta{nome, 0, valori.isEmpty() ? valori : QStringList{QString()} + valori, 0};
    };
    QList<DatiProprieta> molte{{}};
    for (int i = 0; i < 30; ++i)
        molte += proprieta(u"ATTR%1"_s.arg(i, 2, 10, QChar(u'0')));
    ModuloTag::ImpostaArrayTag({
        {},
        {{{}, proprieta(u"HREF"_s), proprieta(u"TARGET"_s, {u"_top"_s, u"_blank"_s})}, u"A"_s, true},
        {{{}, proprieta(u"CLASS"_s)}, u"B"_s, true},
        {{{}, proprieta(QString())}, u"BR"_s, false},
        {molte, u"FONT"_s, true},
        {{{},
          proprieta(u"WIDTH"_s),
          proprieta(u"OnLoad"_s),
          proprieta(u"ALIGN"_s, {u"right"_s, u"left"_s, u"Top"_s}),
          proprieta(u"BORDER"_s),
          DatiProprieta{u"ISMAP"_s, 2, {QString(), u"ismap"_s}, 0}},
         u"IMG"_s,
         false},
    });
}

/// The editor with the document window's answers to keys that completion needs, as that window gives them.
class Pagina : public RichTextBox
{
public:
    explicit Pagina(QString testo)
    {
        const int caretto = int(testo.indexOf(u'|'));
        resize(600, 300);
        setFont(QFont(u"Courier New"_s, 10));
        ImpostaText(testo.remove(u'|'));
        ImpostaSelStart(caretto);
        connect(this, &RichTextBox::KeyPress, this, [this](char16_t *carattere) {
            if (!Battitura::Prima(this, *carattere))
                *carattere = 0;
        });
        connect(this, &RichTextBox::KeyUp, this, [this](EventoTasto *tasto) { Rilasciato(*tasto); });
        show();
    }

    [[nodiscard]] QString Stampa() const { return Text().insert(SelStart(), u'|'); }
    QList<int> rilasci; ///< codes of the keys released in the page

private:
    void Rilasciato(const EventoTasto &tasto)
    {
        rilasci += tasto.codice;
        const LetturaTag::Luogo luogo = ContestoTag::LuogoDi(this);
        if (!luogo.InTag())
            return;
        if (tasto.codice == 32 && tasto.shift == 2)
            Suggerisci(this, true);
        else if (tasto.codice == 32 && luogo.InTagIniziale())
            SuggerisciAttributi(this, luogo.nome);
        else if (tasto.testo == u"=" && luogo.stato == LetturaTag::Stato::Uguale)
            SuggerisciValori(this, luogo.nome, luogo.attributo, false);
    }
};

struct Tasto {
    int codice = 0;
    QString testo;
    Qt::KeyboardModifiers modificatori = Qt::NoModifier;
};

Tasto TastoDi(QChar c)
{
    static const QHash<QChar, Tasto> Speciali{{u'\n', {Qt::Key_Return, u"\r"_s}},
                                              {u'\t', {Qt::Key_Tab, u"\t"_s}},
                                              {u'\b', {Qt::Key_Backspace, u"\b"_s}},
                                              {u'\x1b', {Qt::Key_Escape, u"\x1b"_s}},
                                              {u'↓', {Qt::Key_Down, {}}},
                                              {u'↑', {Qt::Key_Up, {}}},
                                              {u'⇟', {Qt::Key_PageDown, {}}},
                                              {u'⇲', {Qt::Key_End, {}}},
                                              {u'⇱', {Qt::Key_Home, {}}},
                                              {u'→', {Qt::Key_Right, {}}},
                                              {u'©', {Qt::Key_Space, QString(QChar(0)), Qt::ControlModifier}}};
    return Speciali.value(c, {c.toUpper().unicode(), QString(c)});
}

/// Presses and releases the keys of \a tasti one after the other, each from the event loop that runs then. "§" notes
/// what the open list shows, the selected entry in brackets.
class Digitazione : public QObject
{
public:
    Digitazione(Pagina *pagina, const QString &tasti) : m_pagina(pagina), m_tasti(tasti)
    {
        Prosegui(0);
        QTRY_VERIFY(m_battuti == m_tasti.size() && m_annidate == 0);
    }
    QStringList note;

    static QString Nota()
    {
        const FrmComplete *lista = FrmComplete::Corrente();
        if (!lista || !lista->isVisible())
            return u"closed"_s;
        const auto *elenco = lista->findChild<QListView *>(u"LstView"_s);
        QStringList voci;
        for (int i = 0; i < elenco->model()->rowCount(); ++i) {
            const QModelIndex indice = elenco->model()->index(i, 0);
            const bool scelta = elenco->selectionModel()->isSelected(indice);
            voci += scelta ? u'[' + indice.data().toString() + u']' : indice.data().toString();
        }
        return voci.join(u' ');
    }

private:
    /// The next key comes when the page is at rest: with a list open, or with none.
    void Prosegui(int attesa)
    {
        QTimer::singleShot(attesa, this, [this] {
            if (FrmComplete::Corrente() && !FrmComplete::Corrente()->isVisible())
                Prosegui(1);
            else if (m_battuti < m_tasti.size())
                Batti(m_tasti[m_battuti++]);
        });
    }
    void Batti(QChar c)
    {
        Prosegui(0);
        if (c == u'§') {
            note += Nota();
            return;
        }
        ++m_annidate;
        const Tasto tasto = TastoDi(c);
        Manda(QEvent::KeyPress, tasto);
        Manda(QEvent::KeyRelease, tasto);
        --m_annidate;
    }
    void Manda(QEvent::Type tipo, const Tasto &tasto)
    {
        QKeyEvent evento(tipo, tasto.codice, tasto.modificatori, tasto.testo);
        if (tasto.modificatori == Qt::ControlModifier && tipo == QEvent::KeyPress)
            return; // Ctrl+Space types nothing
        QCoreApplication::sendEvent(m_pagina, &evento);
    }

    QPointer<Pagina> m_pagina;
    QString m_tasti;
    qsizetype m_battuti = 0;
    int m_annidate = 0; ///< keys that opened a list come back only when it has closed
};

} // namespace

class TstCompletamento : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const auto esito =
            ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), ModuloPrincipale::LinguaInglese);
        QVERIFY2(esito.Riuscito(), qPrintable(esito.errore));
        CaricaBase();
    }

    void cleanup()
    {
        if (FrmAdvTooltip::Corrente())
            FrmAdvTooltip::Corrente()->hide();
        QVERIFY(!FrmComplete::Corrente());
    }

    void Tasti_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("tasti");
        QTest::addColumn<QString>("atteso");
        QTest::addColumn<QString>("note");
        const auto riga = [](const char *nome, const QString &testo, const QString &tasti, const QString &atteso,
                             const QString &note = {}) { QTest::newRow(nome) << testo << tasti << atteso << note; };
        riga("space offers the attributes, sorted; events keep their case", u"<IMG|"_s, u" §\x1b§"_s, u"<IMG |"_s,
             u"[align] border ismap OnLoad width;closed"_s);
        riga("accepting adds = and quotes, offers the values, and ends behind them", u"<IMG|>"_s, u" a\n§l\n§"_s,
             u"<IMG align=\"left\"| >"_s, u"[right] left Top;closed"_s);
        riga("accepting brings the quotes around the caret", u"<IMG|>"_s, u" b\n§"_s, u"<IMG border=\"|\">"_s,
             u"closed"_s);
        riga("nothing typed and nothing moved: Space, Enter and = are written", u"<IMG|>"_s, u"  =\n§"_s,
             u"<IMG  =\r\n|>"_s, u"closed"_s);
        riga("Tab still accepts", u"<IMG|>"_s, u" \t§\x1b"_s, u"<IMG align=\"|\">"_s, u"[right] left Top"_s);
        riga("a name typed in full is that name", u"<FONT|>"_s, u" border=2>"_s, u"<FONT border=2>|</FONT>>"_s);
        riga("a name stands without a value", u"<IMG|>"_s, u" is b\n§"_s, u"<IMG ismap border=\"|\">"_s, u"closed"_s);
        riga("equals sign accepts and is not typed twice", u"<IMG|>"_s, u" b=§"_s, u"<IMG border=\"|\">"_s,
             u"closed"_s);
        riga("tab and space accept", u"<IMG|>"_s, u" \tt "_s, u"<IMG align=\"Top\"| >"_s);
        riga("typing narrows in any case, prefix matches first", u"<IMG|"_s, u" O§\x1b"_s, u"<IMG O|"_s,
             u"[OnLoad] border"_s);
        riga("no match leaves the selection", u"<IMG|"_s, u" bq§\x1b"_s, u"<IMG bq|"_s, u"[border]"_s);
        riga("a name that is no entry: = is written behind it", u"<IMG|>"_s, u" data-x=§"_s, u"<IMG data-x=|>"_s,
             u"closed"_s);
        riga("so is a space", u"<IMG|>"_s, u" zz §\x1b"_s, u"<IMG zz |>"_s, u"[align] border ismap OnLoad width"_s);
        riga("so is Enter", u"<IMG|>"_s, u" zz\n§"_s, u"<IMG zz\r\n|>"_s, u"closed"_s);
        riga("an entry chosen after it is accepted", u"<IMG|>"_s, u" zz↓="_s, u"<IMG border=\"|\">"_s);
        riga("arrows move, and stay where they can go no further", u"<IMG|"_s, u" ↑§↓↓§↑§⇲↓§⇱⇱§⇟⇟§\x1b"_s, u"<IMG |"_s,
             u"[align] border ismap OnLoad width;align border [ismap] OnLoad width;align [border] ismap OnLoad width;"
             "align border ismap OnLoad [width];[align] border ismap OnLoad width;align border ismap OnLoad [width]"_s);
        riga("up and down with one entry left", u"<IMG|>"_s, u" bor↑↓§="_s, u"<IMG border=\"|\">"_s, u"[border]"_s);
        riga("backspace takes back, widens, then closes past the start", u"<IMG|"_s, u" wi\b§\b§\b§"_s, u"<IMG|"_s,
             u"[width];[align] border ismap OnLoad width;closed"_s);
        riga("ctrl space: backspace eats into the prefix, accepting replaces the rest", u"<IMG bo| x"_s, u"©§\b\n"_s,
             u"<IMG border=\"|\" x"_s, u"[border]"_s);
        riga("ctrl space: accepting with = goes on with the value", u"<IMG |>"_s, u"©al=§l="_s,
             u"<IMG align=\"left\"| >"_s, u"[right] left Top"_s);
        riga("ctrl space: = that accepts a tag is only an accepting key", u"<fo| x"_s, u"©§="_s, u"<FONT| x"_s,
             u"[FONT]"_s);
        riga("ctrl space: tag at the very end, after a lone bracket", u"x <|"_s, u"©i§\n"_s, u"x <IMG|"_s, u"[IMG]"_s);
        riga("ctrl space: tag begun at the very end", u"<im|"_s, u"©\n"_s, u"<IMG|"_s);
        riga("ctrl space: closing tag begun", u"</fo|"_s, u"©§\n"_s, u"</FONT|"_s, u"[FONT]"_s);
        riga("the caret stays before what is like the entry", u"x <|B>"_s, u"©B§\t"_s, u"x <B|B>"_s, u"[B] BR"_s);
        riga("the same with a blank behind", u"</fo| x"_s, u"©\n"_s, u"</FONT| x"_s);
        riga("no entry selected", u"<IMG zz| x"_s, u"©§\t§"_s, u"<IMG zz\t| x"_s,
             u"align border ismap OnLoad width;closed"_s);
        riga("right behind a blank the attributes are offered", u"<fo | x"_s, u"©§"_s, u"<fo | x"_s, u"closed"_s);
        riga("> ends tag and list, and closes the tag", u"<B|"_s, u" >§"_s, u"<B >|</B>"_s, u"closed"_s);
        riga("quote ends value and list", u"<IMG align|>"_s, u"=up\"§"_s, u"<IMG align=\"up\"|>"_s, u"closed"_s);
        riga("a quote typed after the one that = brought is that one", u"<IMG align|>"_s, u"=\"up\"§"_s,
             u"<IMG align=\"up\"|>"_s, u"closed"_s);
        riga("the second one counts", u"<IMG align|>"_s, u"=\"\"§"_s, u"<IMG align=\"\"|>"_s, u"closed"_s);
        riga("a sign that begins no entry is written and ends the list", u"<| x"_s, u"©!§--"_s, u"<!--| x"_s,
             u"closed"_s);
        riga("so it does in a value", u"<IMG align|>"_s, u"=#§f"_s, u"<IMG align=\"#f|>"_s, u"closed"_s);
        riga("any other key closes the list and keeps its meaning", u"<IMG|>x"_s, u" →§"_s, u"<IMG >|x"_s, u"closed"_s);
        riga("equals sign, attribute without a list: quote only", u"<IMG border|>"_s, u"=§"_s, u"<IMG border=\"|>"_s,
             u"closed"_s);
        riga("equals sign before a quote: nothing", u"<IMG align|\"left\">"_s, u"=§"_s, u"<IMG align=|\"left\">"_s,
             u"closed"_s);
        riga("tag without attributes: an empty entry", u"<BR|>"_s, u" §\t"_s, u"<BR |>"_s, u"[]"_s);
        riga("closing tags offer nothing", u"</IMG|>"_s, u" §"_s, u"</IMG |>"_s, u"closed"_s);
        riga("in a comment", u"<!-- <IMG|"_s, u" §"_s, u"<!-- <IMG |"_s, u"closed"_s);
        riga("surrogate pairs before the caret", u"😀😀<IMG|>"_s, u" b\n"_s, u"😀😀<IMG border=\"|\">"_s);
    }

    void Tasti()
    {
        QFETCH(QString, testo);
        QFETCH(QString, tasti);
        Pagina pagina(testo);
        const Digitazione digitazione(&pagina, tasti);
        QTEST(digitazione.note.join(u';'), "note");
        QTEST(pagina.Stampa(), "atteso");
    }

    void CambiataDopoLaScelta()
    {
        RichTextBox pagina;
        pagina.show();
        pagina.ImpostaText(u"<"_s);
        pagina.ImpostaSelStart(1);
        QString scritta;
        QTimer::singleShot(0, &pagina, [&] {
            QTest::keyClick(&pagina, Qt::Key_Tab);
            scritta = pagina.Text();
            pagina.ImpostaText(u"un'altra"_s);
        });
        QVERIFY(!FrmComplete::Apri(&pagina, {{u"B"_s}}, {}, {}).accettata);
        QCOMPARE(scritta, u"<B"_s);
    }

    void OrdineDiUnTratto()
    {
        ListaVoci lista{{u"z"_s}, {u"b"_s}, {u"_"_s}, {u"A"_s}, {u"a"_s}};
        OrdinaLista(lista, 1, 3);
        QCOMPARE(lista, (ListaVoci{{u"z"_s}, {u"A"_s}, {u"b"_s}, {u"_"_s}, {u"a"_s}}));
    }

    void ChiudeIlTag_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("atteso");
        const auto riga = [](const char *nome, const QString &testo, const QString &atteso) {
            QTest::newRow(nome) << testo << atteso;
        };
        riga("bare tag at the very end", u"<b|"_s, u"<b>|</b>"_s);
        riga("attributes: bare name", u"<FONT attr01=1| x"_s, u"<FONT attr01=1>|</FONT> x"_s);
        riga("a blank after the caret does not end the name", u"<A| b"_s, u"<A>|</A> b"_s);
        riga("no closing tag needed", u"<IMG|"_s, u"<IMG>|"_s);
        riga("unknown", u"<XYZ|"_s, u"<XYZ>|"_s);
        riga("closing tag", u"</B|"_s, u"</B>|"_s);
        riga("name at a line end", u"<b\r\nclass=\"x\"|"_s, u"<b\r\nclass=\"x\">|</b>"_s);
        riga("in a comment", u"<!-- <b| -->"_s, u"<!-- <b>| -->"_s);
        riga("no bracket before", u"B|"_s, u"B>|"_s);
        riga("tag already closed", u"<B x>1 | 0"_s, u"<B x>1 >| 0"_s);
        riga("inside a quoted value", u"<A title=\"x|\">"_s, u"<A title=\"x>|\">"_s);
        riga("lone bracket", u"<|"_s, u"<>|"_s);
    }

    void ChiudeIlTag()
    {
        QFETCH(QString, testo);
        Pagina pagina(testo);
        QTest::keyClick(&pagina, '>');
        QTEST(pagina.Stampa(), "atteso");
    }

    void Aspetti_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("tasti");
        QTest::addColumn<QString>("aspetti");
        QTest::addColumn<int>("messaggio"); // of the balloon, 0 for none
        const auto riga = [](const char *nome, const QString &testo, const QString &tasti, const QString &aspetti,
                             int messaggio) { QTest::newRow(nome) << testo << tasti << aspetti << messaggio; };
        riga("attribute of another tag", u"<IMG href|>"_s, u"="_s, u".....CCCC.."_s, 113);
        riga("attribute known nowhere", u"<IMG hxxx|>"_s, u"="_s, u".....CCCC.."_s, 112);
        riga("unknown tag", u"<XYZ|>"_s, u" "_s, u"......"_s, 116);
        riga("attribute put in", u"<IMG |>"_s, u"©\n\x1b"_s, u".....aaaaaavv."_s, 0);
        riga("tag put in", u"<i| x"_s, u"©\n"_s, u".ttt.."_s, 0);
        riga("value put in", u"<IMG align|>"_s, u"=t\n"_s, u"...........vvvvvv."_s, 0);
        riga("closing tag put in", u"<B|"_s, u">"_s, u"...tttt"_s, 0);
    }

    void Aspetti()
    {
        QFETCH(QString, testo);
        QFETCH(QString, tasti);
        QFETCH(int, messaggio);
        Pagina pagina(testo);
        const Digitazione digitazione(&pagina, tasti);
        QTEST(AspettiScritti(pagina), "aspetti");
        const FrmAdvTooltip *avviso = FrmAdvTooltip::Corrente();
        QCOMPARE(avviso && avviso->isVisible(), messaggio != 0);
        if (messaggio != 0)
            QCOMPARE(avviso->accessibleDescription(), ModuloPrincipale::Messaggio(qint16(messaggio)));
    }

    void ValoriInSilenzio()
    {
        Pagina pagina(u"<IMG href=|>"_s);
        SuggerisciValori(&pagina, u"IMG"_s, u"align\""_s, true);
        QCOMPARE(pagina.SelColor(), SchemaColori::Valore);
        SuggerisciValori(&pagina, u"IMG"_s, u"href"_s, true);
        QCOMPARE(AspettiScritti(pagina), u".....CCCC.."_s);
        QCOMPARE(pagina.Stampa(), u"<IMG href=|>"_s);
        QVERIFY(!FrmAdvTooltip::Corrente() || !FrmAdvTooltip::Corrente()->isVisible());
    }

    // The key that closes a list is not a key released in the page, nor one that repeats there. All in one batch, as
    // the keys arrive from quick fingers while the program was busy: "+" presses the next key, "-" releases it, "*"
    // repeats it. The second blank accepts "align", the first Return "Top". The repeated "h" is one
    // pressed anew; ">" has no code of its own.
    void RilasciDellaLista()
    {
        Pagina pagina(u"<IMG|>"_s);
        const QString mosse = u"+ - +a+ -a- +t-t+\n*\n-\n+x-x+\n-\n+ - +h+>*h-h->"_s;
        for (qsizetype i = 0; i < mosse.size(); i += 2) {
            const Tasto tasto = TastoDi(mosse[i + 1]);
            const auto tipo = mosse[i] == u'-' ? QEvent::KeyRelease : QEvent::KeyPress;
            QCoreApplication::postEvent(
                &pagina, new QKeyEvent(tipo, tasto.codice, Qt::NoModifier, tasto.testo, mosse[i] == u'*'));
        }
        QTRY_COMPARE(pagina.Stampa(), u"<IMG align=\"Top\"x\r\n h>h|>"_s);
        QTRY_COMPARE(pagina.rilasci, (QList<int>{32, 'X', 13, 32, 'H', 255}));
    }

    void ChiusaDaFuori()
    {
        Pagina pagina(u"<IMG |>"_s);
        QWidget altra;
        QFocusEvent via(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QWheelEvent rotella({5, 5}, pagina.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                            Qt::NoScrollPhase, false);
        const std::function<void()> modi[] = {
            [&] { QTest::mouseClick(&altra, Qt::LeftButton); },
            [&] { QCoreApplication::sendEvent(&pagina, &via); },
            [&] { QCoreApplication::sendEvent(pagina.viewport(), &rotella); },
            [&] {
                QTest::mouseClick(pagina.viewport(), Qt::LeftButton, {}, {590, 5});
            },
            [&] { pagina.Sostituisci(0, 0, u"y"_s); },
            [&] { pagina.hide(); },
        };
        const QString dopo[] = {u"<IMG |>"_s, u"<IMG |>"_s, u"<IMG |>"_s, u"<IMG >|"_s, u"y|<IMG >"_s, u"y<IMG |>"_s};
        for (size_t i = 0; i < std::size(modi); ++i) {
            pagina.ImpostaSelStart(int(pagina.Text().indexOf(u'>')));
            QTimer::singleShot(0, &pagina, [&] {
                QVERIFY(FrmComplete::Corrente());
                modi[i]();
            });
            QVERIFY(!Suggerisci(&pagina, true));
            QVERIFY(!FrmComplete::Corrente());
            QCOMPARE(pagina.Stampa(), dopo[i]);
        }
    }

    void EditorDistruttoConListaAperta()
    {
        auto *pagina = new Pagina(u"<IMG |>"_s);
        const QPointer<Pagina> viva(pagina);
        QTimer::singleShot(0, pagina, [pagina] { pagina->deleteLater(); });
        // The list's loop lets the deletion through, as a window that closes does.
        QTimer::singleShot(0, qApp, [viva] { delete viva.data(); });
        SuggerisciAttributi(pagina, u"IMG"_s);
        QVERIFY(!viva);
        QVERIFY(!FrmComplete::Corrente());
    }

    void TestoComposto()
    {
        Pagina pagina(u"<IMG |>"_s);
        QTimer::singleShot(0, &pagina, [&pagina] {
            QInputMethodEvent evento(QString(), {});
            evento.setCommitString(u"bo="_s);
            QCoreApplication::sendEvent(&pagina, &evento);
        });
        SuggerisciAttributi(&pagina, u"IMG"_s);
        QCOMPARE(pagina.Stampa(), u"<IMG border=\"|\">"_s);
    }

    void DoppioClic()
    {
        Pagina pagina(u"<IMG |>"_s);
        QTimer::singleShot(0, &pagina, [] {
            auto *elenco = FrmComplete::Corrente()->findChild<QListView *>(u"LstView"_s);
            const QPoint dove = elenco->visualRect(elenco->model()->index(1, 0)).center();
            QTest::mouseClick(elenco->viewport(), Qt::LeftButton, {}, dove);
            QTest::mouseDClick(elenco->viewport(), Qt::LeftButton, {}, dove);
        });
        QVERIFY(Suggerisci(&pagina, true));
        QCOMPARE(pagina.Stampa(), u"<IMG border=\"|\">"_s);
    }

    void ListaSulloSchermo()
    {
        for (const bool ultimoAngolo : {false, true}) {
            Pagina pagina(u"x <FONT at|>"_s);
            const QRect schermo = pagina.screen()->availableGeometry();
            pagina.resize(100, 30);
            pagina.move(ultimoAngolo ? schermo.bottomRight() - QPoint(99, 29) : schermo.topLeft());
            QCoreApplication::processEvents();
            QTimer::singleShot(0, &pagina, [&] {
                const QRect posto = FrmComplete::Corrente()->geometry();
                QVERIFY2(schermo.contains(posto), qPrintable(QDebug::toString(posto)));
                const int caretto = pagina.mapToGlobal(pagina.PosizioneDaCarattere(pagina.SelStart())).y();
                const bool sotto = posto.top() >= caretto + pagina.cursorRect().height();
                QVERIFY(ultimoAngolo ? posto.bottom() < caretto : sotto);
                auto *elenco = FrmComplete::Corrente()->findChild<QListView *>(u"LstView"_s);
                QCOMPARE(elenco->viewport()->height() / elenco->sizeHintForRow(0), 12);
                FrmComplete::LvwScrollRows(elenco, 7);
                QCOMPARE(elenco->indexAt({1, 1}).row(), 7);
                QTest::keyClick(&pagina, Qt::Key_Escape);
            });
            QVERIFY(!Suggerisci(&pagina, true));
        }
    }
};

QTEST_MAIN(TstCompletamento)
#include "tst_completamento.moc"
