#include "Aiuti.h"
#include "html/ModuloTag.h"
#include "Colonne.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <sys/stat.h>

using namespace ModuloTag;
using namespace Qt::StringLiterals;

namespace
{

/// The searches as they are defined, over all slots.
namespace Ingenuo
{

quint8 Cerca(const QList<DatiTag> &tabella, const QString &tag, const QString &attributo, const QString *valore)
{
    QString nome = tag.toUpper();
    const qsizetype i = CercaTag(tabella, nome);
    if (i < 1)
        return 2;
    const QString cercato = attributo.toUpper();
    for (qsizetype p = 1; p < tabella[i].Proprieta.size(); ++p) {
        const DatiProprieta &proprieta = tabella[i].Proprieta[p];
        if (proprieta.Property.toUpper() != cercato)
            continue;
        if (!valore || proprieta.Valori.isEmpty())
            return 1;
        for (qsizetype v = 1; v < proprieta.Valori.size(); ++v) {
            if (proprieta.Valori[v].toUpper() == valore->toUpper())
                return 1;
        }
    }
    for (qsizetype t = 1; t < tabella.size(); ++t) {
        for (qsizetype p = 1; p < tabella[t].Proprieta.size(); ++p) {
            if (tabella[t].Proprieta[p].Property.toUpper() == cercato)
                return 3;
        }
    }
    return 2;
}

} // namespace Ingenuo

QString Stampa(const QList<DatiTag> &tabella)
{
    QStringList righe;
    for (qsizetype t = 0; t < tabella.size(); ++t) {
        QStringList attributi;
        for (const DatiProprieta &p : tabella[t].Proprieta)
            attributi += u"%1:%2:%3%4"_s.arg(p.Property)
                             .arg(p.Type)
                             .arg(p.Category)
                             .arg(p.Valori.isEmpty() ? QString() : u"="_s + p.Valori.join(u'|'));
        righe +=
            u"%1 %2%3 [%4]"_s.arg(t).arg(tabella[t].Tag, tabella[t].CloseTag ? u"+"_s : u"-"_s, attributi.join(u','));
    }
    return righe.join(u'\n');
}

constexpr char Schema[] =
    "CREATE TABLE TAG (IDtag INTEGER, Tag TEXT, CloseTag INTEGER);"
    "CREATE TABLE Property (IDProperty INTEGER, IDTag INTEGER, Property TEXT, Type INTEGER, Category INTEGER);"
    "CREATE TABLE PropValue (IDTag INTEGER, IDProp INTEGER, IDPropValue INTEGER, PropValue TEXT);";
constexpr char Buona[] =
    "INSERT INTO TAG VALUES (1, 'A', 1), (2, 'BR', 0);"
    "INSERT INTO Property VALUES (1, 1, 'href', 6, 1), (2, 1, 'OnClick', 10, 1), (1, 2, 'clear', 1, 2);"
    "INSERT INTO PropValue VALUES (2, 1, 1, 'left'), (2, 1, 2, 'all');";
constexpr char BuonaStampata[] = "0 - []\n1 A+ [:0:0,href:6:1,OnClick:10:1]\n2 BR- [:0:0,clear:1:2=|left|all]";

} // namespace

class tst_ModuloTag : public QObject
{
    Q_OBJECT

    QTemporaryDir m_cartella;

    QString Percorso(const char *nome) const { return m_cartella.filePath(QString::fromUtf8(nome)); }

    QString Base(const QByteArray &sql) const
    {
        const QString percorso = Percorso("base.db");
        QFile::remove(percorso);
        sqlite3 *base = nullptr;
        sqlite3_open(QFile::encodeName(percorso).constData(), &base);
        if (sqlite3_exec(base, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(base));
        sqlite3_close(base);
        return percorso;
    }

    const QString Vera = QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db");

    QString ConByte(const QByteArray &byte) const
    {
        Aiuti::Scrivi(Percorso("altro.db"), byte);
        return Percorso("altro.db");
    }

private slots:
    void init() { ImpostaArrayTag({}); }

    void lookupsEqualTheSearches()
    {
        for (quint32 seme = 1; seme <= 12; ++seme) {
            const bool ordinata = seme % 3 != 0;
            QRandomGenerator caso(seme);
            // Letters whose upper case is another length or falls among ASCII, and blanks of the table itself.
            const QStringList pezzi = u"a,B,on,-,1,\u00df,\u0131,\u017f,SS,\ufb01,i,\U00010428,\xd801"_s.split(u',');
            const auto parola = [&] {
                QString testo;
                for (auto n = caso.bounded(4); n > 0; --n)
                    testo += pezzi[caso.bounded(pezzi.size())];
                return testo;
            };
            QList<DatiTag> tabella(1 + caso.bounded(30));
            for (qsizetype t = 1; t < tabella.size(); ++t) {
                tabella[t].Tag = parola().toUpper();
                tabella[t].Proprieta.resize(caso.bounded(8));
                for (qsizetype p = 1; p < tabella[t].Proprieta.size(); ++p) {
                    tabella[t].Proprieta[p].Property = parola();
                    tabella[t].Proprieta[p].Valori.resize(caso.bounded(4));
                    for (QString &valore : tabella[t].Proprieta[p].Valori)
                        valore = parola();
                }
            }
            if (ordinata)
                std::sort(tabella.begin() + 1, tabella.end(),
                          [](const DatiTag &a, const DatiTag &b) { return a.Tag < b.Tag; });
            ImpostaArrayTag(tabella);
            for (int giro = 0; giro < 4000; ++giro) {
                const QString tag = giro % 2 ? parola() : tabella[caso.bounded(tabella.size())].Tag.toLower();
                const QString attributo = parola(), valore = parola();
                QString nome = tag.toUpper();
                const qsizetype casella = CercaTag(tabella, nome);
                QCOMPARE(EsisteTag(tag), !tag.isEmpty() && casella >= 1);
                QCOMPARE(VerificaAttributo(tag, attributo), Ingenuo::Cerca(tabella, tag, attributo, nullptr));
                QCOMPARE(VerificaValore(tag, attributo, valore), Ingenuo::Cerca(tabella, tag, attributo, &valore));
            }
        }
    }

    // All else is looked up at random above.
    void lookups()
    {
        const QByteArray sql = QByteArray(Schema) + Buona +
                               "INSERT INTO TAG VALUES (3, 'HR', 0); INSERT INTO Property VALUES (1, 3, NULL, 0, 0);";
        QVERIFY(CaricaTag(Base(sql)).Riuscito());
        QVERIFY(EsisteTag(u"hr") && !EsisteTag(u""));
        QCOMPARE(ArrayTag()[3].Proprieta.size(), 2);
        QCOMPARE(VerificaAttributo(u"HR"_s, u"clear"_s), quint8(3)); // a nameless attribute is not found by name
        QCOMPARE(VerificaValore(u"BR"_s, u"CLEAR"_s, u"LeFt"_s), quint8(1));
        QCOMPARE(VerificaValore(u"BR"_s, u"clear"_s, QString(1'000'000, u'l')), quint8(3));
        QString nome = u"BR"_s;
        QCOMPARE(CercaTag(ArrayTag(), nome), 2);
        for (QString altro : {u"br"_s, u"ZZ"_s})
            QCOMPARE(CercaTag(ArrayTag(), altro), -1);
        QCOMPARE(CercaTag({}, nome), -1);
    }

    void loads_data()
    {
        Colonne<QByteArray, bool, QString>({"sql", "riuscito", "atteso"});
        const QByteArray buona = QByteArray(Schema) + Buona;
        const QString tutta = QString::fromUtf8(BuonaStampata);
        const QString soloA = u"0 - []\n1 A+ [:0:0,href:6:1,OnClick:10:1]"_s;
        QTest::newRow("the rules kept") << buona << true << tutta;
        QTest::newRow("rows of no tag or attribute are left out")
            << buona + "INSERT INTO Property VALUES (1, 9, 'x', 1, 1); INSERT INTO PropValue VALUES (1, 7, 1, 'x'), "
                       "(9, 1, 1, 'y'), (0, 0, 0, 'z'), (NULL, NULL, 1, 'n');"
            << true << tutta;
        QTest::newRow("UTF-16") << QByteArray("PRAGMA encoding = 'UTF-16';") + buona << true << tutta;
        QTest::newRow("columns in another order")
            << QByteArray("CREATE TABLE TAG (IDtag, CloseTag, Tag); CREATE TABLE Property (IDProperty, Category, Type, "
                          "Property, "
                          "IDTag); CREATE TABLE PropValue (PropValue, IDPropValue, IDProp, IDTag); INSERT INTO TAG "
                          "VALUES (1, 1, "
                          "'A'); INSERT INTO Property VALUES (1, 2, -3, 'href', 1); INSERT INTO PropValue VALUES ('v', "
                          "1, 1, 1);")
            << true << u"0 - []\n1 A+ [:0:0,href:-3:2=|v]"_s;
        QTest::newRow("gaps stay empty slots")
            << QByteArray(Schema) +
                   "INSERT INTO TAG VALUES (2, 'A', 1); INSERT INTO Property VALUES (2, 2, 'x', 1, 255); INSERT "
                   "INTO PropValue VALUES (2, 2, 3, 'v');"
            << true << u"0 - []\n1 - []\n2 A+ [:0:0,:0:0,x:1:255=|||v]"_s;
        QTest::newRow("a table is missing") << buona + "DROP TABLE PropValue;" << false << QString();
        QTest::newRow("a fourth column in TAG") << buona + "ALTER TABLE TAG ADD Nota TEXT;" << false << QString();
        QTest::newRow("a view instead of a table")
            << buona + "ALTER TABLE TAG RENAME TO T; CREATE VIEW TAG AS SELECT * FROM T;" << false << QString();
        QTest::newRow("NULL for a tag name") << buona + "UPDATE TAG SET Tag = NULL;" << false << QString();
        QTest::newRow("negative slot") << buona + "UPDATE TAG SET IDtag = -1 WHERE IDtag = 1;" << false << QString();
        QTest::newRow("slot beyond 16 bits")
            << buona +
                   "UPDATE TAG SET IDtag = 32768 WHERE IDtag = 2; UPDATE Property SET IDTag = 32768 WHERE IDTag = 2;"
            << false << soloA;
        QTest::newRow("numbers against the order of the names")
            << buona + "UPDATE TAG SET Tag = 'Z' WHERE IDtag = 1;" << false
            << u"0 - []\n1 - []\n2 BR- [:0:0,clear:1:2=|left|all]"_s;
        QTest::newRow("Category beyond a byte") << buona + "UPDATE Property SET Category = 256 WHERE IDProperty = 2;"
                                                << false << u"0 - []\n1 A+ [:0:0,href:6:1]"_s;
        QTest::newRow("overlong text") << buona + "UPDATE TAG SET Tag = 'B' || hex(zeroblob(5000)) WHERE IDtag = 2;"
                                       << false << QString();
        QTest::newRow("computed column that would fill the memory")
            << buona + "ALTER TABLE PropValue ADD X AS (hex(zeroblob(400000000)));" << false << QString();
    }

    void loads()
    {
        QFETCH(QByteArray, sql);
        QFETCH(bool, riuscito);
        const QString percorso = Base(sql);
        const EsitoCaricamento esito = CaricaTag(percorso);
        QCOMPARE(esito.messaggio, riuscito ? QString() : u"errore durante l' apertura del database "_s + percorso);
        QCOMPARE(esito.motivo.isEmpty(), riuscito);
        QTEST(Stampa(ArrayTag()), "atteso");
    }

    void hugeSlotNumbersStayWithinBounds()
    {
        const QByteArray sql =
            QByteArray(Schema) +
            "INSERT INTO TAG WITH n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 32767) SELECT i, "
            "printf('T%05d', i), 1 FROM n; INSERT INTO Property SELECT 32767, IDtag, 'x', 1, 1 FROM TAG;";
        QVERIFY(!CaricaTag(Base(sql)).Riuscito());
        qsizetype caselle = 0;
        for (const DatiTag &tag : ArrayTag())
            caselle += tag.Proprieta.size();
        QVERIFY(caselle > 0);
        QVERIFY(caselle <= 500'000);
    }

    void filesThatAreNoBase()
    {
        for (const QByteArray &byte : {QByteArray(), "TAG\tCloseTag\n"_ba.repeated(1000), QByteArray(100'000, '\0'),
                                       QByteArray("SQLite format 3\0", 16)}) {
            const QString percorso = ConByte(byte);
            QVERIFY(!CaricaTag(percorso).Riuscito());
            QVERIFY(ArrayTag().isEmpty());
            QCOMPARE(Aiuti::Contenuto(percorso), byte);
        }
        const QString manca = Percorso("manca.db"), tubo = Percorso("tubo.db");
        QCOMPARE(mkfifo(QFile::encodeName(tubo).constData(), 0666), 0);
        for (const QString &percorso : {manca, tubo, m_cartella.path(), QString()})
            QCOMPARE(CaricaTag(percorso).messaggio, u"errore durante l' apertura del database "_s + percorso);
        QVERIFY(!QFile::exists(manca));
    }

    void cutFileGivesWhatComesBeforeTheCut()
    {
        const QByteArray byte = Aiuti::Contenuto(Vera);
        QVERIFY(CaricaTag(Vera).Riuscito());
        const QString tutta = Stampa(ArrayTag());
        for (int parte = 1; parte < 8; ++parte) {
            ImpostaArrayTag({});
            QVERIFY(!CaricaTag(ConByte(byte.first(byte.size() / 8 * parte))).Riuscito());
            // The last tag may lack its tail.
            const QString letta = Stampa(ArrayTag());
            QVERIFY(tutta.startsWith(letta.left(letta.lastIndexOf(u'\n'))));
        }
    }

    void damagedFileEndsTheLoadOnly()
    {
        const QByteArray byte = Aiuti::Contenuto(Vera);
        QRandomGenerator caso(7);
        for (int giro = 0; giro < 40; ++giro) {
            QByteArray rotto = byte;
            for (int i = 0; i < 200; ++i)
                rotto[caso.bounded(rotto.size())] = char(caso.bounded(256));
            const EsitoCaricamento esito = CaricaTag(ConByte(rotto));
            QCOMPARE(esito.messaggio.isEmpty(), esito.motivo.isEmpty());
            QVERIFY(ArrayTag().size() <= 32768);
            QVERIFY(!EsisteTag(u""));
        }
    }

    void lockedFileFailsAndAnOldTableStays()
    {
        const QString percorso = Base(QByteArray(Schema) + Buona);
        QVERIFY(CaricaTag(percorso).Riuscito());
        sqlite3 *base = nullptr;
        sqlite3_open(QFile::encodeName(percorso).constData(), &base);
        QCOMPARE(sqlite3_exec(base, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        QVERIFY(!CaricaTag(percorso).Riuscito());
        QCOMPARE(Stampa(ArrayTag()), QString::fromUtf8(BuonaStampata));
        sqlite3_close(base);
        QVERIFY(CaricaTag(percorso).Riuscito());
        QCOMPARE(Stampa(ArrayTag()), QString::fromUtf8(BuonaStampata));
    }
};

QTEST_APPLESS_MAIN(tst_ModuloTag)
#include "tst_modulotag.moc"
