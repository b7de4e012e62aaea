#include "html/Risultati.h"

#include "html/RicercaNomi.h"

#include "app/TabellaLingua.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ModuloVerificaSintassi;

namespace
{

QString Visti(Registro &registro, const QString &pagina, const std::optional<Cambiamento> &cambiamento = std::nullopt)
{
    QString visti;
    for (const Registro::Voce &voce : registro.Visibili(pagina, cambiamento))
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

    void visible_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("pagina");
        QTest::addColumn<bool>("visibile");
        const auto riga = [](const char *caso, const QString &nome, const QString &pagina, bool visibile) {
            QTest::newRow(caso) << nome << pagina << visibile;
        };
        // The finding was made at position 4 of a page of 10 units; edits are walked at random below.
        riga("gone", u"foo"_s, u"xxx<fo>oxx"_s, false);
        riga("empty name, some page", u""_s, u"x"_s, true);
        riga("empty name, no page", u""_s, u""_s, false);
        riga("what stands before a quote in the name", u"fo'o"_s, u"a fo b"_s, true);
        riga("a name over two lines is looked for on one", u"f\r\noo"_s, u"xxx<f\r\noo>"_s, false);
        riga("and found there", u"f\r\noo"_s, u"xxx foo"_s, true);
        riga("letters beyond ASCII", u"ÈÄ"_s, u"a èä"_s, true);
    }
    void visible()
    {
        QFETCH(QString, nome);
        QFETCH(QString, pagina);
        Registro registro;
        QVERIFY(registro.Aggiungi({4, 1, 1, TagSconosciuto, nome}));
        const auto voci = registro.Visibili(pagina);
        QTEST(!voci.isEmpty(), "visibile");
        if (!voci.isEmpty())
            QVERIFY(!voci[0].testo.contains(u'\n') && !voci[0].testo.contains(u'\r'));
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
            const std::vector<qsizetype> trovati = ricerca.Cerca(testo);
            for (int i = 0; i < nomi.size(); ++i) {
                const bool atteso = !testo.isEmpty() && testo.contains(nomi[i], Qt::CaseInsensitive);
                QVERIFY2((trovati[size_t(numeri[size_t(i)])] >= 0) == atteso, qPrintable(nomi[i] + u" in "_s + testo));
            }
        }
    }

    // Places are followed through the changes; what is seen must be what a look at the whole page finds.
    void editsOfThePage()
    {
        QRandomGenerator caso(7);
        QString pagina;
        Registro registro;
        Cambiamento cambiamento;
        const QStringList nomi{u"foo"_s,   u"oof"_s, u"f"_s, u"fof"_s,  u"ooo"_s,
                               u"of of"_s, u"FFF"_s, u""_s,  u"o\rf"_s, QString(MassimoNome, u'f')};
        qsizetype trovati = 0;
        for (int volta = 0; volta < 6'000; ++volta) {
            if (volta % 20 == 0 && registro.Risultati().size() <= nomi.size())
                QVERIFY(
                    registro.Aggiungi({caso.bounded(30), 1, 1, TagSconosciuto, nomi[registro.Risultati().size() - 1]}));
            Cambiamento questo{caso.bounded(int(pagina.size()) + 1)};
            questo.tolti = std::min<qsizetype>(caso.bounded(4), pagina.size() - questo.da);
            QString nuovo;
            for (int i = caso.bounded(3); i > 0; --i)
                nuovo += u"foOx "_s[caso.bounded(5)];
            if (caso.bounded(10) == 0)
                nuovo += QString(caso.bounded(600), u"f "_s[caso.bounded(2)]);
            if (pagina.size() > 4'000 || caso.bounded(200) == 0)
                questo = {0, pagina.size(), 0};
            questo.aggiunti = nuovo.size();
            pagina.replace(questo.da, questo.tolti, nuovo);
            cambiamento.Unisci(questo);
            if (caso.bounded(2) == 0)
                continue;
            QStringList attesi;
            for (qsizetype i = 1; i < registro.Risultati().size(); ++i) {
                const QString nome = QString(nomi[i - 1]).remove(u'\r');
                if (!pagina.isEmpty() && pagina.contains(nome, Qt::CaseInsensitive))
                    attesi += QString::number(i);
            }
            trovati += attesi.size();
            const bool sconosciuta = volta == 1 || caso.bounded(100) == 0;
            QCOMPARE(Visti(registro, pagina, sconosciuta ? std::nullopt : std::optional(cambiamento)),
                     attesi.join(u' '));
            cambiamento = {};
        }
        QVERIFY(trovati > 6'000);
    }

    // Linear work: one pass over the page for each of these would take minutes.
    void twentyThousandFindings()
    {
        Registro registro;
        QString pagina;
        for (int i = 0; i < 20'000; ++i) {
            const QString nome = u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa%1x"_s.arg(i);
            QVERIFY(registro.Aggiungi({0, 1, 1, TagSconosciuto, nome}));
            if (i % 2 == 0)
                pagina += nome.toUpper() + u' ' + QString(60, u'a');
        }
        QCOMPARE(registro.Visibili(pagina).size(), 10'000);
    }
};

QTEST_GUILESS_MAIN(TstRisultati)
#include "tst_risultati.moc"
