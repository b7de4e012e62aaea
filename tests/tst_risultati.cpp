#include "html/Risultati.h"

#include "html/RicercaNomi.h"

#include "app/TabellaLingua.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ModuloVerificaSintassi;

namespace
{

QString Visti(Registro &registro, const QString &pagina)
{
    QString visti;
    for (const Registro::Voce &voce : registro.Visibili(pagina))
        visti += u"%1 "_s.arg(voce.risultato);
    return visti.trimmed();
}

} // namespace

class TstRisultati : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), 0).Riuscito());
    }

    void messages()
    {
        Registro registro;
        QCOMPARE(registro.Risultati().size(), 1);
        QVERIFY(registro.Aggiungi({7, 12, 1, TagSconosciuto, u"FOO"}, 100));
        QVERIFY(registro.Aggiungi({8, 12, 1, AttributoErrato, u"FOO"}, 100));
        QVERIFY(registro.Aggiungi({9, 12, 1, ValoreErrato, u"FOO"}, 100));
        QVERIFY(!registro.Aggiungi({99, 12, 1, TagSconosciuto, u"FOO"}, 100)); // same line, name and kind
        QVERIFY(registro.Aggiungi({99, 13, 1, TagSconosciuto, u"FOO"}, 100));
        QVERIFY(registro.Aggiungi({99, 12, 1, TagSconosciuto, u"foo"}, 100));
        const QStringList attesi{u""_s,
                                 u"12: Il tag 'FOO' non esiste."_s,
                                 u"12: Attributo 'FOO' non previsto per questo tag."_s,
                                 u"12: Valore 'FOO' non ammesso per questo attributo."_s,
                                 u"13: Il tag 'FOO' non esiste."_s,
                                 u"12: Il tag 'foo' non esiste."_s};
        QStringList testi;
        for (const RisultatoControllo &risultato : registro.Risultati())
            testi += risultato.Testo;
        QCOMPARE(testi, attesi);
        QCOMPARE(registro.Risultati()[3].Posizione, 9);
        QCOMPARE(registro.Risultati()[3].Tipo, 3);
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
        QVERIFY(registro.Aggiungi({1, 1, 1, TagSconosciuto, lungo}, 1'000'001));
        QVERIFY(!registro.Aggiungi({1, 1, 1, TagSconosciuto, QStringView(lungo).chopped(1)}, 1'000'001));
        QCOMPARE(registro.Risultati()[1].Testo, u"1: Il tag '"_s + lungo.left(MassimoNome) + u"' non esiste."_s);
    }

    void visible_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("pagina");
        QTest::addColumn<bool>("visibile");
        // The finding was made at position 4 of a page of 10 units.
        QTest::newRow("where it was") << u"foo"_s << u"xxx<foo>xx"_s << true;
        QTest::newRow("behind a quote") << u"foo"_s << u"xx ='foo'x"_s << true;
        QTest::newRow("in another case") << u"foo"_s << u"xxx<FoO>xx"_s << true;
        QTest::newRow("moved by an edit before it") << u"foo"_s << u"xxxxxxx<foo>xx"_s << true;
        QTest::newRow("somewhere else") << u"foo"_s << u"foo xxxxxxxxxxxxxx"_s << true;
        QTest::newRow("part of a word") << u"foo"_s << u"barfoobar"_s << true;
        QTest::newRow("gone") << u"foo"_s << u"xxx<fo>oxx"_s << false;
        QTest::newRow("page emptied") << u"foo"_s << u""_s << false;
        QTest::newRow("empty name, some page") << u""_s << u"x"_s << true;
        QTest::newRow("empty name, no page") << u""_s << u""_s << false;
        QTest::newRow("what stands before a quote in the name") << u"fo'o"_s << u"a fo b"_s << true;
        QTest::newRow("a name over two lines is looked for on one") << u"f\r\noo"_s << u"xxx<f\r\noo>"_s << false;
        QTest::newRow("and found there") << u"f\r\noo"_s << u"xxx foo"_s << true;
        QTest::newRow("letters beyond ASCII") << u"ÈÄ"_s << u"a èä"_s << true;
    }
    void visible()
    {
        QFETCH(QString, nome);
        QFETCH(QString, pagina);
        Registro registro;
        QVERIFY(registro.Aggiungi({4, 1, 1, TagSconosciuto, nome}, 10));
        const auto voci = registro.Visibili(pagina);
        QTEST(!voci.isEmpty(), "visibile");
        if (!voci.isEmpty())
            QVERIFY(!voci[0].testo.contains(u'\n') && !voci[0].testo.contains(u'\r'));
    }

    void linesKnowTheirResult()
    {
        Registro registro;
        for (const QStringView nome : {u"uno", u"due", u"tre", u"due", u"sei"})
            QVERIFY(registro.Aggiungi({1000, qint32(registro.Risultati().size()), 1, TagSconosciuto, nome}, 10));
        QCOMPARE(Visti(registro, u"uno tre sei"_s), u"1 3 5"_s);
        QCOMPARE(Visti(registro, u"due"_s), u"2 4"_s);
        QCOMPARE(Visti(registro, u"nessuno"_s), u"1"_s);
        QCOMPARE(Visti(registro, u"DUE SEI TRE UNO"_s), u"1 2 3 4 5"_s);
    }

    void manyNamesAreFoundAsOneByOne()
    {
        QRandomGenerator caso(99);
        const auto parola = [&caso](int massimo) {
            QString testo;
            for (int i = caso.bounded(massimo + 1); i > 0; --i)
                testo += u"aAbBèÈ\x131\x212A"_s[caso.bounded(8)];
            return testo;
        };
        for (int volta = 0; volta < 3000; ++volta) {
            const QString testo = parola(40);
            RicercaNomi ricerca;
            QStringList nomi;
            std::vector<int> numeri;
            for (int i = caso.bounded(12); i >= 0; --i) {
                nomi += parola(5);
                numeri.push_back(ricerca.Aggiungi(nomi.back()));
            }
            const std::vector<char> trovati = ricerca.Cerca(testo);
            for (int i = 0; i < nomi.size(); ++i) {
                const bool atteso = !testo.isEmpty() && testo.contains(nomi[i], Qt::CaseInsensitive);
                QVERIFY2(bool(trovati[size_t(numeri[size_t(i)])]) == atteso, qPrintable(nomi[i] + u" in "_s + testo));
            }
        }
    }

    // What is remembered of one page must not change what is said of the next.
    void editsOfThePage()
    {
        QRandomGenerator caso(7);
        QString pagina;
        Registro registro;
        const QStringList nomi{u"foo"_s, u"oof"_s, u"f"_s, u"fof"_s, u"ooo"_s, u"of of"_s, u"FFF"_s};
        for (const QString &nome : nomi)
            QVERIFY(registro.Aggiungi({caso.bounded(30), 1, 1, TagSconosciuto, nome}, 20));
        for (int volta = 0; volta < 20'000; ++volta) {
            const int da = caso.bounded(int(pagina.size()) + 1);
            QString nuovo;
            for (int i = caso.bounded(3); i > 0; --i)
                nuovo += u"foOx "_s[caso.bounded(5)];
            pagina.replace(da, caso.bounded(4), nuovo);
            if (caso.bounded(10) == 0)
                pagina.prepend(QString(caso.bounded(9000), u' '));
            if (pagina.size() > 20'000)
                pagina.clear();
            if (caso.bounded(2) == 0)
                continue;
            QStringList attesi;
            for (int i = 0; i < nomi.size(); ++i) {
                if (pagina.contains(nomi[i], Qt::CaseInsensitive))
                    attesi += QString::number(i + 1);
            }
            QCOMPARE(Visti(registro, pagina), attesi.join(u' '));
        }
    }

    // Linear work: one pass over the page for each of these would take minutes.
    void twentyThousandFindings()
    {
        Registro registro;
        QString pagina;
        for (int i = 0; i < 20'000; ++i) {
            const QString nome = u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa%1x"_s.arg(i);
            QVERIFY(registro.Aggiungi({0, 1, 1, TagSconosciuto, nome}, 1));
            if (i % 2 == 0)
                pagina += nome.toUpper() + u' ' + QString(60, u'a');
        }
        QCOMPARE(registro.Visibili(pagina).size(), 10'000);
    }
};

QTEST_GUILESS_MAIN(TstRisultati)
#include "tst_risultati.moc"
