#include "html/ModuloTag.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

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

QString Unita(quint32 unita)
{
    return QString(QChar(char16_t(unita)));
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

private slots:
    void init() { ImpostaArrayTag({}); }

    void lookupsEqualTheSearches_data()
    {
        QTest::addColumn<quint32>("seme");
        QTest::addColumn<bool>("ordinata");
        for (quint32 seme = 1; seme <= 12; ++seme)
            QTest::addRow("%s table %u", seme % 3 ? "sorted" : "unsorted", seme) << seme << (seme % 3 != 0);
    }

    void lookupsEqualTheSearches()
    {
        QFETCH(quint32, seme);
        QFETCH(bool, ordinata);
        QRandomGenerator caso(seme);
        // Letters whose upper case is another length or falls among ASCII, and blanks of the table itself.
        const QStringList pezzi = {u"a"_s,       u"B"_s,        u"on"_s,      u"-"_s,
                                   u"1"_s,       Unita(0xdf),   Unita(0x131), Unita(0x17f),
                                   u"SS"_s,      Unita(0xfb01), u"i"_s,       QString::fromUcs4(U"\U00010428"),
                                   Unita(0xd801)};
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

    void lookups_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("attributo");
        QTest::addColumn<QString>("valore");
        QTest::addColumn<int>("esitoAttributo");
        QTest::addColumn<int>("esitoValore");
        QTest::newRow("any case") << u"br"_s << u"CLEAR"_s << u"LeFt"_s << 1 << 1;
        QTest::newRow("value outside the list") << u"BR"_s << u"clear"_s << u"lef"_s << 1 << 3;
        QTest::newRow("no list allows any value") << u"A"_s << u"href"_s << u"left"_s << 1 << 1;
        QTest::newRow("attribute of another tag") << u"BR"_s << u"onclick"_s << u"x"_s << 3 << 3;
        QTest::newRow("attribute of no tag") << u"BR"_s << u"clea"_s << u"left"_s << 2 << 2;
        QTest::newRow("unknown tag") << u"B"_s << u"clear"_s << u"left"_s << 2 << 2;
        QTest::newRow("nameless attribute is not found by name") << u"HR"_s << u"clear"_s << u"left"_s << 3 << 3;
        QTest::newRow("very long value") << u"BR"_s << u"clear"_s << QString(1'000'000, u'l') << 1 << 3;
    }

    void lookups()
    {
        const QByteArray sql = QByteArray(Schema) + Buona +
                               "INSERT INTO TAG VALUES (3, 'HR', 0); INSERT INTO Property VALUES (1, 3, NULL, 0, 0);";
        QVERIFY(CaricaTag(Base(sql)).Riuscito());
        QVERIFY(EsisteTag(u"hr"));
        QVERIFY(!EsisteTag(u""));
        QCOMPARE(ArrayTag()[3].Proprieta.size(), 2);
        QFETCH(QString, tag);
        QFETCH(QString, attributo);
        QFETCH(QString, valore);
        QTEST(int(VerificaAttributo(tag, attributo)), "esitoAttributo");
        QTEST(int(VerificaValore(tag, attributo, valore)), "esitoValore");
    }

    void searchGivesTheStoredNameOrMinusOne()
    {
        QVERIFY(CaricaTag(Base(QByteArray(Schema) + Buona)).Riuscito());
        QString nome = u"BR"_s;
        QCOMPARE(CercaTag(ArrayTag(), nome), 2);
        QVERIFY(nome.constData() == ArrayTag()[2].Tag.constData());
        nome = u"br"_s;
        QCOMPARE(CercaTag(ArrayTag(), nome), -1);
        nome = u"ZZ"_s;
        QCOMPARE(CercaTag(ArrayTag(), nome), -1);
        QCOMPARE(CercaTag({}, nome), -1);
    }

    void loads_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<bool>("riuscito");
        QTest::addColumn<QString>("atteso");
        const QByteArray buona = QByteArray(Schema) + Buona;
        const QString tutta = QString::fromUtf8(BuonaStampata);
        const QString soloA = u"0 - []\n1 A+ [:0:0,href:6:1,OnClick:10:1]"_s;
        QTest::newRow("the rules kept") << buona << true << tutta;
        QTest::newRow("tag without attributes is not loaded")
            << buona + "INSERT INTO TAG VALUES (3, 'HR', 0);" << true << tutta;
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
        QTest::newRow("no tables") << QByteArray("CREATE TABLE X (Y);") << false << QString();
        QTest::newRow("a table is missing") << buona + "DROP TABLE PropValue;" << false << QString();
        QTest::newRow("a fourth column in TAG") << buona + "ALTER TABLE TAG ADD Nota TEXT;" << false << QString();
        QTest::newRow("a column is missing") << buona + "ALTER TABLE Property DROP Category;" << false << QString();
        QTest::newRow("a view instead of a table")
            << buona + "ALTER TABLE TAG RENAME TO T; CREATE VIEW TAG AS SELECT * FROM T;" << false << QString();
        QTest::newRow("text for a number") << buona + "UPDATE TAG SET IDtag = 'due' WHERE IDtag = 2;" << false << soloA;
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
        QTest::newRow("blob for a value")
            << buona + "UPDATE PropValue SET PropValue = x'00' WHERE IDPropValue = 2;" << false
            << u"0 - []\n1 A+ [:0:0,href:6:1,OnClick:10:1]\n2 BR- [:0:0,clear:1:2=|left]"_s;
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

    void filesThatAreNoBase_data()
    {
        QTest::addColumn<QByteArray>("byte");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("TAG\tCloseTag\n").repeated(1000);
        QTest::newRow("zeros") << QByteArray(100'000, '\0');
        QTest::newRow("only the magic") << QByteArray("SQLite format 3\0", 16);
    }

    void filesThatAreNoBase()
    {
        QFETCH(QByteArray, byte);
        QFile file(Percorso("altro.db"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size());
        file.close();
        QVERIFY(!CaricaTag(file.fileName()).Riuscito());
        QVERIFY(ArrayTag().isEmpty());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), byte);
    }

    void missingFileIsNotMade()
    {
        const QString percorso = Percorso("manca.db");
        QCOMPARE(CaricaTag(percorso).messaggio, u"errore durante l' apertura del database "_s + percorso);
        QVERIFY(!QFile::exists(percorso));
        QVERIFY(!CaricaTag(m_cartella.path()).Riuscito());
        QVERIFY(!CaricaTag(QString()).Riuscito());
    }

    void cutFileGivesWhatComesBeforeTheCut()
    {
        QFile intero(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db"));
        QVERIFY(intero.open(QIODevice::ReadOnly));
        const QByteArray byte = intero.readAll();
        QVERIFY(CaricaTag(intero.fileName()).Riuscito());
        const QString tutta = Stampa(ArrayTag());
        for (int parte = 1; parte < 8; ++parte) {
            ImpostaArrayTag({});
            QFile file(Percorso("tagliato.db"));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(byte.first(byte.size() / 8 * parte)) > 0);
            file.close();
            QVERIFY(!CaricaTag(file.fileName()).Riuscito());
            // The last tag may lack its tail.
            const QString letta = Stampa(ArrayTag());
            QVERIFY(tutta.startsWith(letta.left(letta.lastIndexOf(u'\n'))));
        }
    }

    void damagedFileEndsTheLoadOnly()
    {
        QFile intero(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db"));
        QVERIFY(intero.open(QIODevice::ReadOnly));
        const QByteArray byte = intero.readAll();
        QRandomGenerator caso(7);
        for (int giro = 0; giro < 40; ++giro) {
            QByteArray rotto = byte;
            for (int i = 0; i < 200; ++i)
                rotto[caso.bounded(rotto.size())] = char(caso.bounded(256));
            QFile file(Percorso("rotto.db"));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(rotto) == rotto.size());
            file.close();
            const EsitoCaricamento esito = CaricaTag(file.fileName());
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
