#include "app/TabellaLingua.h"
#include "chrome/FrmAdvTooltip.h"
#include "html/ContestoTag.h"
#include "html/FrmComplete.h"
#include "html/ModelloVoci.h"
#include "html/ModuloCompletamento.h"
#include "html/ModuloTag.h"
#include "html/SchemaColori.h"
#include "html/TastiTrattenuti.h"
#include "platform/RichTextBox.h"

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
          proprieta(u"BORDER"_s)},
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
        connect(this, &RichTextBox::KeyPress, this, [this](const char16_t *carattere) {
            if (*carattere == u'>')
                ChiudiTag(this);
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
        if (ContestoTag::DentroCommento(this) || !ContestoTag::DentroTag(this))
            return;
        const ContestoTag::TagAttributo letto = ContestoTag::LeggiTagAttributo(this);
        if (tasto.codice == 32 && tasto.shift == 2)
            Suggerisci(this, letto.tag, letto.attributo);
        else if (tasto.codice == 32)
            SuggerisciAttributi(this, letto.tag);
        else if (tasto.testo == u"=")
            SuggerisciValori(this, letto.tag, ContestoTag::ParolaCorrente(this), false);
    }
};

struct Tasto {
    int codice = 0;
    QString testo;
    Qt::KeyboardModifiers modificatori = Qt::NoModifier;
};

Tasto TastoDi(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
        return {Qt::Key_Return, u"\r"_s};
    case u'\t':
        return {Qt::Key_Tab, u"\t"_s};
    case u'\b':
        return {Qt::Key_Backspace, u"\b"_s};
    case u'\x1b':
        return {Qt::Key_Escape, u"\x1b"_s};
    case u'↓':
        return {Qt::Key_Down, {}};
    case u'↑':
        return {Qt::Key_Up, {}};
    case u'⇟':
        return {Qt::Key_PageDown, {}};
    case u'⇲':
        return {Qt::Key_End, {}};
    case u'⇱':
        return {Qt::Key_Home, {}};
    case u'→':
        return {Qt::Key_Right, {}};
    case u'©': // Ctrl+Space
        return {Qt::Key_Space, QString(QChar(0)), Qt::ControlModifier};
    default:
        return {c.toUpper().unicode(), QString(c)};
    }
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

QString Colori(const RichTextBox &editor)
{
    QString lettere;
    for (int i = 0; i < editor.Lunghezza(); ++i) {
        const Aspetto aspetto = editor.AspettoIn(i);
        const QMap<ColoreBgr, QChar> nomi{{SchemaColori::Tag, u't'},
                                          {SchemaColori::Attributo, u'a'},
                                          {SchemaColori::Valore, u'v'},
                                          {SchemaColori::Commento, u'c'}};
        const QChar lettera = nomi.value(aspetto.colore, u'.');
        lettere += aspetto.onda ? lettera.toUpper() : lettera;
    }
    return lettere;
}

} // namespace

class TstCompletamento : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void Tasti_data();
    void Tasti();
    void Liste();
    void ChiudeIlTag_data();
    void ChiudeIlTag();
    void AttributiSbagliati_data();
    void AttributiSbagliati();
    void ColoriDellInserito();
    void ValoriInSilenzio();
    void RilasciDellaLista();
    void ChiusaDaFuori_data();
    void ChiusaDaFuori();
    void EditorDistruttoConListaAperta();
    void TestoComposto();
    void DoppioClic();
    void Posto_data();
    void Posto();
};

void TstCompletamento::initTestCase()
{
    const auto esito =
        ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), ModuloPrincipale::LinguaInglese);
    QVERIFY2(esito.Riuscito(), qPrintable(esito.errore));
    CaricaBase();
}

void TstCompletamento::cleanup()
{
    if (FrmAdvTooltip::Corrente())
        FrmAdvTooltip::Corrente()->hide();
    QVERIFY(!FrmComplete::Corrente());
}

void TstCompletamento::Tasti_data()
{
    QTest::addColumn<QString>("testo");
    QTest::addColumn<QString>("tasti");
    QTest::addColumn<QString>("atteso");
    QTest::addColumn<QStringList>("note");
    const QString img = u"[align] border onload width"_s;

    QTest::newRow("space offers the attributes, sorted; events keep their case")
        << u"<IMG|"_s << u" §\x1b§"_s << u"<IMG |"_s << QStringList{u"[align] border OnLoad width"_s, u"closed"_s};
    QTest::newRow("accepting adds =, opens the quotes and the values, and closes them")
        << u"<IMG|>"_s << u" \n§\n§"_s << u"<IMG align=\"right\"| >"_s
        << QStringList{u"[right] left Top"_s, u"closed"_s};
    QTest::newRow("equals sign accepts and is not typed twice")
        << u"<IMG|>"_s << u" b=§"_s << u"<IMG border=\"|>"_s << QStringList{u"closed"_s};
    QTest::newRow("tab and space accept") << u"<IMG|>"_s << u" \tt "_s << u"<IMG align=\"Top\"| >"_s << QStringList{};
    QTest::newRow("typing narrows, prefix matches first")
        << u"<IMG|"_s << u" §o§\x1b"_s << u"<IMG o|"_s
        << QStringList{u"[align] border OnLoad width"_s, u"[OnLoad] border"_s};
    QTest::newRow("case of what is typed does not matter")
        << u"<IMG|>"_s << u" ONL\n"_s << u"<IMG OnLoad=\"|>"_s << QStringList{};
    QTest::newRow("no match leaves the selection, and accepting replaces what was typed")
        << u"<IMG|"_s << u" bq§\n"_s << u"<IMG border=\"|"_s << QStringList{u"[border]"_s};
    QTest::newRow("arrows move") << u"<IMG|"_s << u" ↓↓§↑§⇲§⇱§⇟§\x1b"_s << u"<IMG |"_s
                                 << QStringList{u"align border [OnLoad] width"_s, u"align [border] OnLoad width"_s,
                                                u"align border OnLoad [width]"_s, u"[align] border OnLoad width"_s,
                                                u"align border OnLoad [width]"_s};
    QTest::newRow("backspace takes back, widens, then closes past the start")
        << u"<IMG|"_s << u" wi\b§\b§\b§"_s << u"<IMG|"_s
        << QStringList{u"[width]"_s, u"[align] border OnLoad width"_s, u"closed"_s};
    QTest::newRow("ctrl space: prefix of an attribute is replaced")
        << u"<IMG bo| x"_s << u"©§\n"_s << u"<IMG border| x"_s << QStringList{u"[border]"_s};
    QTest::newRow("ctrl space: backspace eats into the prefix, accepting replaces the rest")
        << u"<IMG bo| x"_s << u"©\b\n"_s << u"<IMG border| x"_s << QStringList{};
    QTest::newRow("ctrl space: accepting with = goes on with the value")
        << u"<IMG |>"_s << u"©al=§l="_s << u"<IMG align=\"left\"| >"_s << QStringList{u"[right] left Top"_s};
    QTest::newRow("ctrl space: = that accepts a tag is only an accepting key")
        << u"<fo| x"_s << u"©="_s << u"<FONT| x"_s << QStringList{};
    QTest::newRow("ctrl space: prefix of a tag")
        << u"<fo| x"_s << u"©§\n"_s << u"<FONT| x"_s << QStringList{u"[FONT]"_s};
    QTest::newRow("ctrl space: tag at the very end, after a lone bracket")
        << u"x <|"_s << u"©i§\n"_s << u"x <IMG|"_s << QStringList{u"[IMG]"_s};
    QTest::newRow("ctrl space: tag begun at the very end") << u"<im|"_s << u"©\n"_s << u"<IMG|"_s << QStringList{};
    QTest::newRow("ctrl space: known tag gives its attributes")
        << u"<A |>"_s << u"©§\n"_s << u"<A href|>"_s << QStringList{u"[href] target"_s};
    QTest::newRow("no entry selected: accepting inserts nothing and closes")
        << u"<IMG zz| x"_s << u"©§\n§"_s << u"<IMG zz| x"_s << QStringList{u"align border OnLoad width"_s, u"closed"_s};
    QTest::newRow("a prefix that is not before the caret is never replaced")
        << u"<fo | x"_s << u"©\n"_s << u"<fo FONT| x"_s << QStringList{};
    QTest::newRow("> ends tag and list, and closes the tag")
        << u"<B|"_s << u" >§"_s << u"<B >|</B>"_s << QStringList{u"closed"_s};
    QTest::newRow("quote ends value and list")
        << u"<IMG align|>"_s << u"=up\"§"_s << u"<IMG align=\"up\"|>"_s << QStringList{u"closed"_s};
    QTest::newRow("a key that is not the list's closes it and keeps its meaning")
        << u"<IMG|>x"_s << u" →§"_s << u"<IMG >|x"_s << QStringList{u"closed"_s};
    QTest::newRow("equals sign typed in the page opens the values in their order")
        << u"<IMG align|>"_s << u"=§l\n"_s << u"<IMG align=\"left\"| >"_s << QStringList{u"[right] left Top"_s};
    QTest::newRow("equals sign, attribute without a list: quote only")
        << u"<IMG border|>"_s << u"=§"_s << u"<IMG border=\"|>"_s << QStringList{u"closed"_s};
    QTest::newRow("equals sign before a quote: nothing")
        << u"<IMG align|\"left\">"_s << u"=§"_s << u"<IMG align=|\"left\">"_s << QStringList{u"closed"_s};
    QTest::newRow("tag without attributes: an empty entry, which inserts nothing")
        << u"<BR|>"_s << u" §\n"_s << u"<BR |>"_s << QStringList{u"[]"_s};
    QTest::newRow("closing tags offer nothing") << u"</IMG|>"_s << u" §"_s << u"</IMG |>"_s << QStringList{u"closed"_s};
    QTest::newRow("in a comment") << u"<!-- <IMG|"_s << u" §"_s << u"<!-- <IMG |"_s << QStringList{u"closed"_s};
    QTest::newRow("outside a tag") << u"<IMG>|"_s << u" §"_s << u"<IMG> |"_s << QStringList{u"closed"_s};
    QTest::newRow("after > in a quoted value")
        << u"<A t=\"a>b\"|"_s << u" §"_s << u"<A t=\"a>b\" |"_s << QStringList{u"closed"_s};
    QTest::newRow("surrogate pairs before the caret and in what is typed")
        << u"\U0001F600\U0001F600<IMG|>"_s << u" b\n"_s << u"\U0001F600\U0001F600<IMG border=\"|>"_s << QStringList{};
}

void TstCompletamento::Tasti()
{
    QFETCH(QString, testo);
    QFETCH(QString, tasti);
    Pagina pagina(testo);
    const Digitazione digitazione(&pagina, tasti);
    QTEST(digitazione.note, "note");
    QTEST(pagina.Stampa(), "atteso");
}

void TstCompletamento::Liste()
{
    QCOMPARE(VociAttributi(u"img"), (ListaVoci{{u"align"_s, GenereVoce::Attributo},
                                               {u"border"_s, GenereVoce::Attributo},
                                               {u"OnLoad"_s, GenereVoce::Evento},
                                               {u"width"_s, GenereVoce::Attributo}}));
    QCOMPARE(VociValori(u"a", u"Target"),
             (ListaVoci{{u"_top"_s, GenereVoce::Valore}, {u"_blank"_s, GenereVoce::Valore}}));
    QVERIFY(VociValori(u"IMG", u"border").isEmpty() && VociAttributi(u"X").isEmpty() &&
            VociValori(u"X", u"").isEmpty());
    QCOMPARE(VociTag().size(), 5);

    ListaVoci lista{{u"z"_s}, {u"b"_s}, {u"_"_s}, {u"A"_s}, {u"a"_s}};
    OrdinaLista(lista, 1, 3);
    QCOMPARE(lista, (ListaVoci{{u"z"_s}, {u"A"_s}, {u"b"_s}, {u"_"_s}, {u"a"_s}}));
}

void TstCompletamento::ChiudeIlTag_data()
{
    QTest::addColumn<QString>("testo");
    QTest::addColumn<QString>("atteso");
    QTest::newRow("bare tag at the very end") << u"<b|"_s << u"<b>|</b>"_s;
    QTest::newRow("attributes: bare name") << u"<FONT attr01=1| x"_s << u"<FONT attr01=1>|</FONT> x"_s;
    QTest::newRow("a blank after the caret does not end the name") << u"<A| b"_s << u"<A>|</A> b"_s;
    QTest::newRow("no closing tag needed") << u"<IMG|"_s << u"<IMG>|"_s;
    QTest::newRow("unknown") << u"<XYZ|"_s << u"<XYZ>|"_s;
    QTest::newRow("closing tag") << u"</B|"_s << u"</B>|"_s;
    QTest::newRow("no bracket before") << u"B|"_s << u"B>|"_s;
    QTest::newRow("tag already closed") << u"<B x>1 | 0"_s << u"<B x>1 >| 0"_s;
    QTest::newRow("inside a quoted value") << u"<A title=\"x|\">"_s << u"<A title=\"x>|\">"_s;
    QTest::newRow("lone bracket") << u"<|"_s << u"<>|"_s;
}

void TstCompletamento::ChiudeIlTag()
{
    QFETCH(QString, testo);
    Pagina pagina(testo);
    QTest::keyClick(&pagina, '>');
    QTEST(pagina.Stampa(), "atteso");
}

void TstCompletamento::AttributiSbagliati_data()
{
    QTest::addColumn<QString>("testo");
    QTest::addColumn<QString>("tasti");
    QTest::addColumn<QString>("colori");
    QTest::addColumn<int>("messaggio");
    QTest::addColumn<int>("larghezza");
    QTest::newRow("attribute of another tag") << u"<IMG href|>"_s << u"="_s << u".....CCCC.."_s << 113 << 400;
    QTest::newRow("attribute known nowhere") << u"<IMG hxxx|>"_s << u"="_s << u".....CCCC.."_s << 112 << 233;
    QTest::newRow("unknown tag") << u"<XYZ|>"_s << u" "_s << u"......"_s << 116 << 233;
}

void TstCompletamento::AttributiSbagliati()
{
    QFETCH(QString, testo);
    QFETCH(QString, tasti);
    QFETCH(int, messaggio);
    Pagina pagina(testo);
    const Digitazione digitazione(&pagina, tasti);
    QTEST(Colori(pagina), "colori");
    QCOMPARE(pagina.Stampa(), testo.insert(testo.indexOf(u'|'), tasti));
    const FrmAdvTooltip *avviso = FrmAdvTooltip::Corrente();
    QVERIFY(avviso && avviso->isVisible());
    QCOMPARE(avviso->accessibleName(), ModuloPrincipale::Messaggio(111));
    QCOMPARE(avviso->accessibleDescription(), ModuloPrincipale::Messaggio(qint16(messaggio)));
    QTEST(avviso->width(), "larghezza");
}

void TstCompletamento::ColoriDellInserito()
{
    Pagina attributo(u"<IMG |>"_s);
    const Digitazione prima(&attributo, u"©\n"_s);
    QCOMPARE(attributo.Stampa(), u"<IMG align|>"_s);
    QCOMPARE(Colori(attributo), u".....aaaaa."_s);

    Pagina tag(u"<i| x"_s);
    const Digitazione seconda(&tag, u"©\n"_s);
    QCOMPARE(Colori(tag), u".ttt.."_s);

    Pagina valore(u"<IMG align|>"_s);
    const Digitazione terza(&valore, u"=t\n"_s);
    QCOMPARE(valore.Stampa(), u"<IMG align=\"Top\"| >"_s);
    QCOMPARE(Colori(valore), u"...........vvvvvv."_s);

    Pagina chiusura(u"<B|"_s);
    QTest::keyClick(&chiusura, '>');
    QCOMPARE(Colori(chiusura), u"...tttt"_s);
}

void TstCompletamento::ValoriInSilenzio()
{
    Pagina pagina(u"<IMG href=|>"_s);
    SuggerisciValori(&pagina, u"IMG"_s, u"align\""_s, true);
    QCOMPARE(pagina.SelColor(), SchemaColori::Valore);
    SuggerisciValori(&pagina, u"IMG"_s, u"href"_s, true);
    QCOMPARE(Colori(pagina), u".....CCCC.."_s);
    QCOMPARE(pagina.Stampa(), u"<IMG href=|>"_s);
    QVERIFY(!FrmAdvTooltip::Corrente() || !FrmAdvTooltip::Corrente()->isVisible());
}

// The key that closes a list is not a key released in the page, nor one that repeats there.
void TstCompletamento::RilasciDellaLista()
{
    Pagina pagina(u"<IMG|>"_s);
    const auto manda = [&pagina](QEvent::Type tipo, int codice, const QString &testo, bool ripetuto = false) {
        QCoreApplication::postEvent(&pagina, new QKeyEvent(tipo, codice, Qt::NoModifier, testo, ripetuto));
    };
    const QString spazio = u" "_s;
    // All in one batch, as they arrive from quick fingers while the program was busy.
    manda(QEvent::KeyPress, Qt::Key_Space, spazio);
    manda(QEvent::KeyRelease, Qt::Key_Space, spazio);
    manda(QEvent::KeyPress, Qt::Key_A, u"a"_s);
    manda(QEvent::KeyPress, Qt::Key_Space, spazio); // accepts "align"; the values open
    manda(QEvent::KeyRelease, Qt::Key_A, u"a"_s);
    manda(QEvent::KeyRelease, Qt::Key_Space, spazio);
    manda(QEvent::KeyPress, Qt::Key_T, u"t"_s);
    manda(QEvent::KeyRelease, Qt::Key_T, u"t"_s);
    manda(QEvent::KeyPress, Qt::Key_Return, u"\r"_s); // accepts "Top"
    manda(QEvent::KeyPress, Qt::Key_Return, u"\r"_s, true);
    manda(QEvent::KeyRelease, Qt::Key_Return, u"\r"_s);
    manda(QEvent::KeyPress, Qt::Key_X, u"x"_s);
    manda(QEvent::KeyRelease, Qt::Key_X, u"x"_s);
    manda(QEvent::KeyPress, Qt::Key_Return, u"\r"_s);
    manda(QEvent::KeyRelease, Qt::Key_Return, u"\r"_s);
    QTRY_COMPARE(pagina.Stampa(), u"<IMG align=\"Top\"x\r\n| >"_s);
    QTRY_COMPARE(pagina.rilasci, (QList<int>{32, 'X', 13}));
}

void TstCompletamento::ChiusaDaFuori_data()
{
    QTest::addColumn<int>("come");
    QTest::newRow("click in the page") << 0;
    QTest::newRow("click elsewhere") << 1;
    QTest::newRow("focus goes away") << 2;
    QTest::newRow("editor is hidden") << 3;
    QTest::newRow("text changes behind its back") << 4;
    QTest::newRow("wheel over the page") << 5;
}

void TstCompletamento::ChiusaDaFuori()
{
    QFETCH(int, come);
    Pagina pagina(u"<IMG |>"_s);
    QWidget altra;
    QTimer::singleShot(0, &pagina, [&] {
        QVERIFY(FrmComplete::Corrente());
        QFocusEvent via(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QWheelEvent rotella({5, 5}, pagina.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                            Qt::NoScrollPhase, false);
        switch (come) {
        case 0:
            return QTest::mouseClick(pagina.viewport(), Qt::LeftButton, {}, {590, 5});
        case 1:
            return QTest::mouseClick(&altra, Qt::LeftButton);
        case 2:
            return void(QCoreApplication::sendEvent(&pagina, &via));
        case 3:
            return pagina.hide();
        case 4:
            return pagina.Sostituisci(0, 0, u"y"_s);
        default:
            return void(QCoreApplication::sendEvent(pagina.viewport(), &rotella));
        }
    });
    QVERIFY(!Suggerisci(&pagina, u"IMG"_s, QString()));
    QVERIFY(!FrmComplete::Corrente());
    QCOMPARE(pagina.Text(), come == 4 ? u"y<IMG >"_s : u"<IMG >"_s);
    QCOMPARE(pagina.SelStart(), come == 0 ? 6 : come == 4 ? 1 : 5);
}

void TstCompletamento::EditorDistruttoConListaAperta()
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

void TstCompletamento::TestoComposto()
{
    Pagina pagina(u"<IMG |>"_s);
    QTimer::singleShot(0, &pagina, [&pagina] {
        QInputMethodEvent evento(QString(), {});
        evento.setCommitString(u"bo="_s);
        QCoreApplication::sendEvent(&pagina, &evento);
    });
    SuggerisciAttributi(&pagina, u"IMG"_s);
    QCOMPARE(pagina.Stampa(), u"<IMG border=\"|>"_s);
}

void TstCompletamento::DoppioClic()
{
    Pagina pagina(u"<IMG |>"_s);
    QTimer::singleShot(0, &pagina, [] {
        auto *elenco = FrmComplete::Corrente()->findChild<QListView *>(u"LstView"_s);
        const QPoint dove = elenco->visualRect(elenco->model()->index(1, 0)).center();
        QTest::mouseClick(elenco->viewport(), Qt::LeftButton, {}, dove);
        QTest::mouseDClick(elenco->viewport(), Qt::LeftButton, {}, dove);
    });
    QVERIFY(Suggerisci(&pagina, u"IMG"_s, QString()));
    QCOMPARE(pagina.Stampa(), u"<IMG border|>"_s);
}

void TstCompletamento::Posto_data()
{
    QTest::addColumn<QPoint>("angolo"); // of the editor, in parts of the screen
    QTest::newRow("room below") << QPoint(0, 0);
    QTest::newRow("at the lower edge: above the line") << QPoint(0, 1);
    QTest::newRow("at the right edge") << QPoint(1, 0);
    QTest::newRow("in the last corner") << QPoint(1, 1);
}

void TstCompletamento::Posto()
{
    QFETCH(QPoint, angolo);
    Pagina pagina(u"x <FONT at|>"_s);
    const QRect schermo = pagina.screen()->availableGeometry();
    pagina.resize(100, 30);
    pagina.move(schermo.left() + angolo.x() * (schermo.width() - 100),
                schermo.top() + angolo.y() * (schermo.height() - 30));
    QCoreApplication::processEvents();
    QTimer::singleShot(0, &pagina, [&] {
        const FrmComplete *lista = FrmComplete::Corrente();
        const QRect posto = lista->geometry();
        QVERIFY2(schermo.contains(posto), qPrintable(QDebug::toString(posto)));
        const int caretto = pagina.mapToGlobal(pagina.PosizioneDaCarattere(pagina.SelStart())).y();
        const bool sotto = posto.top() >= caretto + pagina.cursorRect().height();
        QVERIFY(angolo.y() == 0 ? sotto : posto.bottom() < caretto);
        auto *elenco = lista->findChild<QListView *>(u"LstView"_s);
        QCOMPARE(elenco->viewport()->height() / elenco->sizeHintForRow(0), 12);
        QVERIFY(lista->width() > elenco->fontMetrics().horizontalAdvance(u"attr00"_s));
        FrmComplete::LvwScrollRows(elenco, 7);
        QCOMPARE(elenco->indexAt({1, 1}).row(), 7);
        QTest::keyClick(&pagina, Qt::Key_Escape);
    });
    QVERIFY(!Suggerisci(&pagina, u"FONT"_s, u"at"_s));
}

QTEST_MAIN(TstCompletamento)
#include "tst_completamento.moc"
