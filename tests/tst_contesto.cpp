#include "AspettiScritti.h"

#include "html/ColoraTesto.h"
#include "html/ContestoTag.h"
#include "html/IndiceCommenti.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// The rules by plain searches of the whole text before the caret.
namespace Ingenuo
{

bool Dentro(const QString &testo, int caretto, const QString &apre, const QString &chiude)
{
    const QString prima = testo.first(caretto);
    return prima.lastIndexOf(apre) > prima.lastIndexOf(chiude);
}

LetturaTag::TagAttributo Leggi(const QString &testo, int caretto)
{
    LetturaTag::TagAttributo letto;
    const QString prima = testo.first(caretto);
    const qsizetype p = prima.lastIndexOf(u'<');
    const qsizetype s = p < 0 ? -1 : testo.indexOf(u' ', p);
    if (s < 0)
        return letto;
    if (s < caretto)
        letto.tag = testo.mid(p + 1, s - p - 1);
    else if (!prima.sliced(p + 1).contains(u' '))
        letto.tag = prima.sliced(p + 1);
    const qsizetype q = prima.lastIndexOf(u' ');
    if (!letto.tag.isEmpty() && q > p)
        letto.attributo = prima.sliced(q + 1);
    if (letto.attributo.contains(u'='))
        letto.attributo.clear();
    return letto;
}

QString Parola(const QString &testo, int caretto)
{
    const QString prima = testo.first(caretto);
    const qsizetype q = prima.lastIndexOf(u' ');
    return q < 0 ? QString() : prima.sliced(q + 1).remove(u'=');
}

} // namespace Ingenuo

/// A text that counts how much of it is read.
struct TestoContato {
    QString testo;
    mutable qint64 lette = 0;

    QChar Unita(int i) const
    {
        ++lette;
        return testo[i];
    }
    QString Parte(int da, int quanti) const
    {
        lette += quanti;
        return testo.mid(da, quanti);
    }
    int CercaIndietro(QChar carattere, int prima) const
    {
        while (--prima >= 0 && Unita(prima) != carattere)
            ;
        return prima;
    }
    int CercaAvanti(QChar carattere, int da) const
    {
        while (da < testo.size() && Unita(da) != carattere)
            ++da;
        return da < testo.size() ? da : -1;
    }
};

/// Takes the "|" out of \a testo and puts the caret there.
void Metti(RichTextBox &editor, QString testo)
{
    const int caretto = int(testo.indexOf(u'|'));
    editor.ImpostaText(testo.remove(u'|'));
    editor.ImpostaSelStart(caretto);
}

/// What every reader says, in one line.
QString Stampa(RichTextBox &editor)
{
    const LetturaTag::TagAttributo letto = ContestoTag::LeggiTagAttributo(&editor);
    return u"%1%2 <%3> [%4] (%5)"_s.arg(ContestoTag::DentroTag(&editor) ? u"tag"_s : u"-"_s,
                                        ContestoTag::DentroCommento(&editor) ? u" comment"_s : QString(), letto.tag,
                                        letto.attributo, ContestoTag::ParolaCorrente(&editor));
}

QString StampaIngenua(const QString &testo, int caretto)
{
    const LetturaTag::TagAttributo letto = Ingenuo::Leggi(testo, caretto);
    return u"%1%2 <%3> [%4] (%5)"_s.arg(Ingenuo::Dentro(testo, caretto, u"<"_s, u">"_s) ? u"tag"_s : u"-"_s,
                                        Ingenuo::Dentro(testo, caretto, u"<!--"_s, u"-->"_s) ? u" comment"_s
                                                                                             : QString(),
                                        letto.tag, letto.attributo, Ingenuo::Parola(testo, caretto));
}

} // namespace

class TstContesto : public QObject
{
    Q_OBJECT

private slots:
    void Lettori_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("atteso");
        const auto riga = [](const char *nome, const QString &testo, const QString &atteso) {
            QTest::newRow(nome) << testo << atteso;
        };
        riga("empty page", u"|"_s, u"- <> [] ()"_s);
        riga("name still being written, blank behind", u"<TAB| x"_s, u"tag <TAB> [] ()"_s);
        riga("name, no blank anywhere after it", u"a <TAB|>"_s, u"tag <> [] (<TAB)"_s);
        riga("attribute being written", u"<IMG bor|>"_s, u"tag <IMG> [bor] (bor)"_s);
        riga("attribute with equals sign is no prefix", u"<IMG border=|>"_s, u"tag <IMG> [] (border)"_s);
        riga("word drops every equals sign", u"<IMG a=b=|>"_s, u"tag <IMG> [] (ab)"_s);
        riga("bracket in a quoted value ends the tag", u"<A t=\"1>2\" |"_s, u"- <A> [] ()"_s);
        riga("comment just opened", u"<!--|"_s, u"tag comment <> [] ()"_s);
        riga("bracket inside a comment leaves the tag", u"<!-- > |"_s, u"- comment <!--> [] ()"_s);
        riga("comment not yet closed", u"<!-- --|>"_s, u"tag comment <!--> [--] (--)"_s);
        riga("shortest comment", u"<!-->|"_s, u"- <> [] ()"_s);
    }

    void Lettori()
    {
        QFETCH(QString, testo);
        QFETCH(QString, atteso);
        RichTextBox editor;
        Metti(editor, testo);
        QCOMPARE(Stampa(editor), atteso);
    }

    void LettoriComeIngenui()
    {
        const QStringList pezzi{u"<"_s,  u">"_s, u" "_s,  u"="_s,    u"-"_s, u"--"_s, u"<!--"_s,     u"-->"_s,
                                u"\""_s, u"B"_s, u"al"_s, u"\r\n"_s, u"!"_s, u"x "_s, u"<SCRIPT>"_s, u"\U0001F600"_s};
        QRandomGenerator caso(20);
        for (int giro = 0; giro < 300; ++giro) {
            QString testo;
            for (int i = caso.bounded(40); i > 0; --i)
                testo += pezzi[caso.bounded(int(pezzi.size()))];
            RichTextBox editor;
            editor.ImpostaText(testo);
            // Changes come while the readers are in use, so that what they remember must follow.
            for (int passo = 0; passo < 12; ++passo) {
                editor.ImpostaSelStart(caso.bounded(int(testo.size()) + 1));
                const int caretto = editor.SelStart();
                QCOMPARE(Stampa(editor), StampaIngenua(testo, caretto));
                const int tolti = std::min(caso.bounded(4), int(testo.size()) - caretto);
                editor.Sostituisci(caretto, tolti, pezzi[caso.bounded(int(pezzi.size()))]);
                testo = editor.Text();
            }
        }
    }

    void CostoNelTagNonNellaPagina()
    {
        TestoContato pagina{u"<P class=x>some text</P>\r\n"_s.repeated(400'000)};
        const QString tag = u"<TABLE border=\"1\" wid"_s;
        const int dove = int(pagina.testo.size()) / 2 / 26 * 26;
        pagina.testo.insert(dove, tag);
        const int caretto = dove + int(tag.size());
        QVERIFY(LetturaTag::DentroTag(pagina, caretto));
        QCOMPARE(LetturaTag::LeggiTagAttributo(pagina, caretto), (LetturaTag::TagAttributo{u"TABLE"_s, u"wid"_s}));
        QCOMPARE(LetturaTag::ParolaCorrente(pagina, caretto), u"wid"_s);
        QCOMPARE_LE(pagina.lette, 6 * tag.size());
    }

    void CommentiSeguonoLeModifiche()
    {
        RichTextBox editor;
        const QString brano = u"<P>text</P>\r\n<!-- x -->\r\n"_s;
        editor.ImpostaText(brano.repeated(50'000));
        const auto dentro = [&editor](int dove) {
            editor.ImpostaSelStart(dove);
            return ContestoTag::DentroCommento(&editor);
        };
        QVERIFY(!dentro(editor.Lunghezza()));
        const IndiceCommenti &indice = IndiceCommenti::Di(&editor);
        const qint64 allInizio = indice.UnitaLette();
        editor.Sostituisci(0, 0, u"<!--"_s); // up to the first "-->"
        QVERIFY(dentro(10));
        QVERIFY(!dentro(4 + 20'000 * int(brano.size()) + 5));
        QVERIFY(dentro(4 + 20'000 * int(brano.size()) + 18));
        editor.Sostituisci(editor.Lunghezza(), 0, u"<!--"_s);
        QVERIFY(dentro(editor.Lunghezza()));
        editor.Sostituisci(editor.Lunghezza() - 1, 1, QString()); // "<!-"
        QVERIFY(!dentro(editor.Lunghezza()));
        editor.Sostituisci(0, 1, QString());
        QVERIFY(!dentro(10));
        QCOMPARE_LE(indice.UnitaLette() - allInizio, 64);
    }

    void Colori_data()
    {
        QTest::addColumn<int>("lunghezza");
        QTest::addColumn<int>("modo"); // 0 word, 1 word kept selected, 2 fault
        QTest::addColumn<QString>("aspetti");
        QTest::addColumn<int>("selezionati");
        QTest::newRow("word: two units more lose the wave") << 2 << 0 << u"~~tt..~~"_s << 0;
        QTest::newRow("word kept: waves stay, word selected") << 2 << 1 << u"~~TT~~~~"_s << 2;
        QTest::newRow("fault") << 3 << 2 << u"~~CCC~~~"_s << 0;
        QTest::newRow("word beyond the end") << 99 << 0 << u"~~tttttt"_s << 0;
        QTest::newRow("fault beyond the end") << 99 << 2 << u"~~CCCCCC"_s << 0;
    }

    void Colori()
    {
        QFETCH(int, lunghezza);
        QFETCH(int, modo);
        RichTextBox editor;
        editor.ImpostaText(u"abcdefgh"_s);
        editor.Sottolinea(0, 8, true);
        editor.Seleziona(2, 1);
        if (modo == 2)
            ColoraTesto::SegnaErrore(&editor, lunghezza);
        else
            ColoraTesto::ColoraParola(&editor, lunghezza, SchemaColori::Tag, modo == 1);
        QTEST(AspettiScritti(editor), "aspetti");
        QCOMPARE(editor.SelStart(), 2);
        QTEST(editor.SelLength(), "selezionati");
    }
};

QTEST_MAIN(TstContesto)
#include "tst_contesto.moc"
