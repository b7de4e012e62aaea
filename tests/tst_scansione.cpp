#include "html/Scansione.h"

#include "BaseDiProva.h"

#include "html/VerificaDaRiga.h"

#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ModuloVerificaSintassi;

namespace
{

/// Everything a walk tells, one item after the other.
class Elenco : public Ricevitore
{
public:
    explicit Elenco(qsizetype ultimo = -1, bool colonne = true) : m_ultimo(ultimo), m_colonne(colonne) {}
    bool Prosegui(qsizetype fine) override { return m_ultimo < 0 || fine <= m_ultimo; }
    void Segna(Segno segno, qsizetype da, qsizetype quanti) override
    {
        segni += quanti;
        if (segno != Segno::Errore && segno != Segno::Commento)
            testo += u"%1%2+%3 "_s.arg(QChar(u"tav"[int(segno)])).arg(da).arg(quanti);
    }
    void Trova(const Riscontro &r) override
    {
        ++trovati;
        if (trovati < 20)
            testo += u"[%1 %2:%3 @%4 %5] "_s.arg(r.tipo)
                         .arg(r.riga)
                         .arg(m_colonne ? r.colonna : 0)
                         .arg(r.posizione)
                         .arg(r.nome);
    }

    QString testo;
    qsizetype segni = 0;
    int trovati = 0;

private:
    qsizetype m_ultimo;
    bool m_colonne;
};

QString Scritto(const QString &pagina, const Partenza &partenza = {}, qsizetype ultimo = -1, bool colonne = true)
{
    Elenco elenco(ultimo, colonne);
    Scandisci(pagina, partenza, elenco);
    return elenco.testo.trimmed();
}

} // namespace

class TstScansione : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { BaseDiProva::Carica(); }

    void nextTag_data()
    {
        QTest::addColumn<QString>("pagina");
        QTest::addColumn<int>("dopo");
        QTest::addColumn<QString>("atteso");
        QTest::newRow("closing tag gives the bare name") << u"x</B>"_s << 1 << u"2-5 /B B"_s;
        QTest::newRow("name ends at the line end") << u"x<IMG\r\nsrc=a>"_s << 1 << u"2-13 IMG\r\nsrc=a IMG"_s;
        QTest::newRow("name goes on over a lone line feed") << u"x<IMG\nsrc>"_s << 1 << u"2-10 IMG\nsrc IMG\nsrc"_s;
        QTest::newRow("every slash goes") << u"x</a//b/ c/>"_s << 1 << u"2-12 /a//b/ c/ ab"_s;
        QTest::newRow("nothing inside") << u"x<>"_s << 1 << u"2-3  "_s;
        QTest::newRow("never closed: the last character stands for the end")
            << u"x<TABLE "_s << 1 << u"2-8 TABLE TABLE"_s;
        QTest::newRow("the first position is not looked at") << u"<B><P>"_s << 1 << u"4-6 P P"_s;
        QTest::newRow("empty page") << QString() << 1 << u"0-0  "_s;
    }
    void nextTag()
    {
        QFETCH(QString, pagina);
        QFETCH(int, dopo);
        const Tag tag = ProssimoTag(pagina, dopo);
        QTEST(u"%1-%2 %3 %4"_s.arg(tag.inizio).arg(tag.fine).arg(tag.testo, tag.nome), "atteso");
    }

    void attributeParts_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<int>("inizio");
        QTest::addColumn<int>("fine");
        // The bar marks the "=" that is asked about and is taken out.
        QTest::newRow("double quotes") << u"a b|=\"c d\" e"_s << 2 << 10;
        QTest::newRow("empty quotes") << u"a b|=\"\""_s << 2 << 7;
        QTest::newRow("quotes not closed") << u"a b|=\"c d"_s << 2 << 0;
        QTest::newRow("single quotes closed by double ones") << u"a b|='c\""_s << 2 << 0;
        QTest::newRow("ended by a tab") << u"a\tb|=c\td"_s << 2 << 7;
        QTest::newRow("ended by a line end") << u"a\r\nb|=c\r\nd"_s << 3 << 8;
        QTest::newRow("ended by the next tag") << u"a b|=c</p"_s << 2 << 7;
        QTest::newRow("ended by a quote") << u"a b|=c'd"_s << 2 << 7;
        QTest::newRow("nothing after the sign") << u"a b|="_s << 2 << 5;
        QTest::newRow("no white space before it") << u"ab|=c"_s << 1 << 5;
    }
    void attributeParts()
    {
        QFETCH(QString, tag);
        const qsizetype uguale = tag.indexOf(u'|') + 1;
        tag.remove(u'|');
        QTEST(int(InizioAttributo(tag, uguale)), "inizio");
        QTEST(int(FineValore(tag, uguale)), "fine");
    }

    void walk_data()
    {
        QTest::addColumn<QString>("pagina");
        QTest::addColumn<QString>("atteso");
        QTest::newRow("single quotes do not belong to the value") << u" <p align='left'>"_s << u"t2+2 a4+5 v11+4"_s;
        QTest::newRow("a tab does not belong to the value") << u" <p align=left\tx>"_s << u"t2+2 a4+5 v10+4"_s;
        QTest::newRow("unknown everything, each with its place")
            << u"\r\n<foo>\n <p foo=1 align=\"mid\r\ndle\">\r<b\r\nbar=x></P>"_s
            << u"[1 2:2 @3 foo] t10+2 [2 3:5 @12 foo] [3 3:9 @16 1] a18+5 [3 3:17 @24 mid\r\ndle] t37+2 [2 6:1 @40 bar] [3 6:5 @44 x] t47+2"_s;
        QTest::newRow("exempt names") << u" <a href=x SRC='y' xmlns=z xml:q=\"w\" Href>"_s << u"t2+2"_s;
        QTest::newRow("exempt beginnings count in lower case only")
            << u" <a XMLNS:o=\"z\">"_s << u"t2+2 [2 1:5 @4 XMLNS:o] [3 1:13 @12 z]"_s;
        QTest::newRow("value that is not closed")
            << u" <p align=\"left foo=1>"_s << u"t2+2 a4+5 [2 1:17 @16 foo] [3 1:21 @20 1]"_s;
        QTest::newRow("no blank between attributes")
            << u" <p align=\"left\"align='x'>"_s << u"t2+2 a4+5 v11+4 [2 1:5 @4 align=\"left\"align] [3 1:23 @22 x]"_s;
        QTest::newRow("a quote at the end of a name is dropped")
            << u" <p align\"=left>"_s << u"t2+2 a4+5 [3 1:12 @11 left]"_s;
        QTest::newRow("declarations are passed over") << u" <!FOO x=y><?foo x=y><%foo x=y>"_s << u""_s;
        QTest::newRow("scripts are passed over up to their end")
            << u" <Script type=x><foo></script ><foo></SCRIPT><foo>"_s
            << u"t2+7 a9+4 [3 1:15 @14 x] t37+7 [1 1:47 @46 foo]"_s;
        QTest::newRow("blank after the bracket: no tag") << u" < foo x=y>"_s << u""_s;
    }
    void walk()
    {
        QFETCH(QString, pagina);
        QTEST(Scritto(pagina), "atteso");
        QCOMPARE(Scritto(u" <foo> <b> <p>"_s, {}, 10), u"[1 1:3 @2 foo] t8+2"_s); // stops where told
    }

    void fragmentIsLikeThePaddedPage()
    {
        QRandomGenerator caso(4711);
        for (int volta = 0; volta < 3000; ++volta) {
            const QString frammento = BaseDiProva::Pagina(caso, 1 + caso.bounded(12));
            const int scarto = caso.bounded(5);
            const QString pieno = QString(scarto, u' ') + frammento;
            QCOMPARE(Scritto(frammento, {.primaFine = 2, .scarto = scarto}, -1, false),
                     Scritto(pieno, {.primaFine = 2}, -1, false));
        }
    }

    // Linear work: these take hours when something is looked at again and again.
    void hugeInput_data()
    {
        QTest::addColumn<QString>("pagina");
        QTest::addColumn<int>("trovati");
        const int tanti = 2'000'000;
        QTest::newRow("nothing but opening brackets") << u"<"_s.repeated(tanti) << 1;
        QTest::newRow("attributes without blanks") << u" <p "_s + u"=\"\""_s.repeated(tanti) << tanti;
        QTest::newRow("equals signs alone") << u" <p "_s + u"= "_s.repeated(tanti) + u'>' << tanti;
        QTest::newRow("unclosed quotes of both kinds")
            << u" <p "_s + u"a='\"b=\" "_s + u" =x"_s.repeated(tanti) + u'>' << tanti + 2;
        QTest::newRow("a fault on every line") << u"\r\n<q>"_s.repeated(tanti) << tanti;
    }
    void hugeInput()
    {
        QFETCH(QString, pagina);
        Elenco elenco;
        Scandisci(pagina, {}, elenco);
        QTEST(elenco.trovati, "trovati");
        QVERIFY(elenco.segni <= 3 * pagina.size());
    }

    void commandLine()
    {
        const QString pagina = u"\r\n<foo>\r\n <P align=\"mid\" foo=x>\r\n<q/ux><a\nb >\r\n"_s;
        // Also a name that the page does not hold as the message quotes it, on one line.
        QCOMPARE(VerificaDaRiga::InRighe(u"p.html"_s, pagina),
                 u"p.html:2: Il tag 'foo' non esiste.\np.html:3:  'mid' \np.html:3:  'foo' \np.html:3:  'x' \n"
                 "p.html:4: Il tag 'qux' non esiste.\np.html:4: Il tag 'a\\nb' non esiste.\n"_s);
        const QJsonArray json = VerificaDaRiga::InJson(u"p.html"_s, pagina);
        QCOMPARE(json.size(), 6);
        QCOMPARE(json[1].toObject(), (QJsonObject{{u"file"_s, u"p.html"_s},
                                                  {u"line"_s, 3},
                                                  {u"column"_s, 11},
                                                  {u"position"_s, 19},
                                                  {u"type"_s, 3},
                                                  {u"name"_s, u"mid"_s},
                                                  {u"message"_s, u"3:  'mid' "_s}}));
    }
};

QTEST_GUILESS_MAIN(TstScansione)
#include "tst_scansione.moc"
