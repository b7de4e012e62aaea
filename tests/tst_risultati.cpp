#include "html/ElencoRisultati.h"

#include "BaseDiProva.h"

#include "app/TabellaLingua.h"
#include "html/Risultati.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ModuloVerificaSintassi;

namespace
{

/// A page in which a check has marked everything: all of its faults are known.
class PaginaDiProva : public PaginaVista
{
public:
    QString testo;

    [[nodiscard]] qsizetype Lunghezza() const override { return testo.size(); }
    [[nodiscard]] QChar Unita(qsizetype posizione) const override { return testo[posizione]; }
    [[nodiscard]] QString Parte(qsizetype da, qsizetype quanti) const override { return testo.mid(da, quanti); }
    [[nodiscard]] bool Segnata(qsizetype) const override { return true; }
    [[nodiscard]] int Riga(qsizetype posizione) const override { return int(testo.left(posizione).count(u'\n')) + 1; }
    [[nodiscard]] std::pair<qsizetype, qsizetype> LimitiRiga(qsizetype posizione) const override
    {
        const qsizetype fine = testo.indexOf(u'\n', posizione);
        return {posizione == 0 ? 0 : testo.lastIndexOf(u'\n', posizione - 1) + 1, fine < 0 ? Lunghezza() : fine + 1};
    }
    [[nodiscard]] int NumeroRighe() const override { return int(testo.count(u'\n')) + 1; }
};

/// What a walk over a whole page finds, each message once.
struct Percorsa : Ricevitore {
    void Trova(const Riscontro &riscontro) override
    {
        const QString voce = SuUnaRiga(TestoRiscontro(riscontro.riga, riscontro.tipo, riscontro.nome));
        if (!voci.contains(voce))
            voci += voce;
    }
    QStringList voci;
};

QStringList Voci(const ElencoRisultati &elenco)
{
    QStringList voci;
    for (int riga = 0; riga < elenco.rowCount(); ++riga)
        voci += elenco.index(riga).data().toString();
    return voci;
}

} // namespace

class TstRisultati : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        BaseDiProva::Carica();
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), 0).Riuscito());
    }

    void messages()
    {
        Registro registro;
        QCOMPARE(registro.Risultati().size(), 1);
        QVERIFY(registro.Aggiungi({7, 12, 1, TagSconosciuto, u"FOO"}));
        QVERIFY(registro.Aggiungi({8, 12, 1, AttributoErrato, u"FOO"}));
        QVERIFY(registro.Aggiungi({9, 12, 1, ValoreErrato, u"FOO"}));
        QVERIFY(!registro.Aggiungi({99, 12, 1, TagSconosciuto, u"FOO"})); // same line, name and kind
        QVERIFY(registro.Aggiungi({99, 13, 1, TagSconosciuto, u"FOO"}));
        QVERIFY(registro.Aggiungi({99, 12, 1, TagSconosciuto, u"foo"}));
        const QStringList attesi = u"|12: Il tag 'FOO' non esiste.|12: Attributo 'FOO' non previsto per questo tag.|"
                                   "12: Valore 'FOO' non ammesso per questo attributo.|13: Il tag 'FOO' non esiste.|"
                                   "12: Il tag 'foo' non esiste."_s.split(u'|');
        QStringList testi;
        for (const RisultatoControllo &risultato : registro.Risultati())
            testi += risultato.Testo;
        QCOMPARE(testi, attesi);
        QVERIFY(registro.EsisteRisultato(attesi[4]));
        QVERIFY(registro.EsisteRisultato(u"")); // slot 0
        QVERIFY(!registro.EsisteRisultato(attesi[4].toUpper()));
        registro.Azzera();
        QCOMPARE(registro.Risultati().size(), 1);
        QVERIFY(!registro.EsisteRisultato(attesi[4]));
    }

    void longNamesAreCut()
    {
        Registro registro;
        const QString lungo = QString(1'000'000, u'x');
        QVERIFY(registro.Aggiungi({1, 1, 1, TagSconosciuto, lungo}));
        QVERIFY(!registro.Aggiungi({1, 1, 1, TagSconosciuto, QStringView(lungo).chopped(1)}));
        QCOMPARE(registro.Risultati()[1].Testo, u"1: Il tag '"_s + lungo.left(MassimoNome) + u"' non esiste."_s);
    }

    void onOneLine_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("atteso");
        QTest::newRow("line ends go") << u"1: 'a\r\nb\nc'"_s << u"1: 'abc'"_s;
        QTest::newRow("terminal commands are seen") << u"\x1b]52;c\a\x9b"_s << u"\\x1B]52;c\\x07\\x9B"_s;
        QTest::newRow("so are marks of direction")
            << u"a\x202E\x2066\x200F\x061C"_s << u"a\\u202E\\u2066\\u200F\\u061C"_s;
        QTest::newRow("other text stands as it is") << u"\u00A0È <b> \\ \u200D"_s << u"\u00A0È <b> \\ \u200D"_s;
    }
    void onOneLine()
    {
        QFETCH(QString, testo);
        QTEST(SuUnaRiga(testo), "atteso");
    }

    // Only the tags around a change are walked again; the list must be that of the whole page.
    void editsOfThePage()
    {
        QRandomGenerator caso(7);
        PaginaDiProva pagina;
        ElencoRisultati elenco;
        elenco.ImpostaPagina(&pagina);
        const QAbstractItemModelTester esame(&elenco, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QStringList pezzi{u"<"_s,   u">"_s,      u"<foo>"_s, u"<p "_s,       u"</"_s,  u"!--"_s, u"x=y"_s, u" "_s,
                                u"\n"_s,  u"align="_s, u"\""_s,    u"'"_s,         u"oo"_s,  u"<b>"_s, u"f"_s,   u"="_s,
                                u"-->"_s, u"\n"_s,     u"/>"_s,    u" =\"foo\""_s, u"foo"_s, u"t"_s};
        Cambiamento cambiamento;
        qsizetype trovati = 0;
        for (int volta = 0; volta < 12'000; ++volta) {
            Cambiamento questo{caso.bounded(int(pagina.testo.size()) + 1)};
            questo.tolti = std::min<qsizetype>(caso.bounded(5), pagina.testo.size() - questo.da);
            if (pagina.testo.size() > 400)
                questo.tolti = pagina.testo.size() - questo.da;
            QString nuovo;
            for (int i = caso.bounded(3); i > 0; --i)
                nuovo += pezzi[caso.bounded(int(pezzi.size()))];
            questo.aggiunti = nuovo.size();
            pagina.testo.replace(questo.da, questo.tolti, nuovo);
            cambiamento.Unisci(questo);
            if (caso.bounded(3) == 0)
                continue;
            elenco.Aggiorna(cambiamento);
            cambiamento = {};
            Percorsa percorsa;
            (void)Scandisci(pagina.testo, {}, percorsa);
            const QStringList voci = Voci(elenco);
            QVERIFY2(voci == percorsa.voci,
                     qPrintable(u"%1: %2 instead of %3"_s.arg(QDebug::toString(pagina.testo), voci.join(u'|'),
                                                              percorsa.voci.join(u'|'))));
            trovati += voci.size();
        }
        QVERIFY(trovati > 20'000);
    }

    // One pass over the page, or over the findings, for each of these would take minutes.
    void twentyThousandFindings()
    {
        PaginaDiProva pagina;
        ElencoRisultati elenco;
        elenco.ImpostaPagina(&pagina);
        for (int i = 0; i < 20'000; ++i)
            pagina.testo += u"<x%1>"_s.arg(i);
        elenco.Aggiorna({0, 0, pagina.testo.size()});
        QCOMPARE(elenco.rowCount(), 19'999); // the first position is not looked at
        for (int i = 0; i < 1'000; ++i) {
            pagina.testo.insert(50'000, u' ');
            elenco.Aggiorna({50'000, 0, 1});
        }
        QCOMPARE(elenco.Posizione(19'998), pagina.testo.size() - 7);
    }
};

QTEST_GUILESS_MAIN(TstRisultati)
#include "tst_risultati.moc"
