#include "html/ModuloTag.h"
#include "Colonne.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

using namespace ModuloTag;
using namespace Qt::StringLiterals;

namespace
{

const QString FileDellaBase = QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db");
const QString Tabelle = QStringLiteral(CARTELLA_SORGENTI "/data/tag");

QByteArray Leggi(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The base that is built and the tool that builds it.
class tst_BaseTag : public QObject
{
    Q_OBJECT

    QString m_uscita;

    int Costruisci(const QString &tabelle, const QString &base)
    {
        QProcess strumento;
        strumento.setProcessChannelMode(QProcess::MergedChannels);
        strumento.start(QStringLiteral(STRUMENTO), {tabelle, base});
        if (!strumento.waitForFinished())
            return -1;
        m_uscita = QString::fromUtf8(strumento.readAll());
        return strumento.exitCode();
    }

private slots:
    void initTestCase() { QVERIFY(CaricaTag(FileDellaBase).Riuscito()); }

    void loaderGivesTheRowsOfTheJoin()
    {
        sqlite3 *base = nullptr;
        sqlite3_stmt *domanda = nullptr;
        QCOMPARE(sqlite3_open_v2(QFile::encodeName(FileDellaBase).constData(), &base, SQLITE_OPEN_READONLY, nullptr),
                 SQLITE_OK);
        QCOMPARE(sqlite3_prepare_v2(
                     base,
                     "SELECT * FROM (TAG INNER JOIN Property ON Tag.IDtag = Property.IDTag) left outer join "
                     "PropValue ON Property.IDTag = PropValue.IDTag and Property.IDProperty = PropValue.IDProp "
                     "ORDER BY TAG.Tag , Property.IDProperty , PropValue.IDPropValue ",
                     -1, &domanda, nullptr),
                 SQLITE_OK);
        const auto testo = [domanda](int colonna) {
            return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(domanda, colonna)));
        };
        QStringList attese, lette;
        while (sqlite3_step(domanda) == SQLITE_ROW)
            attese +=
                QStringList{testo(0), testo(1), testo(2), testo(3), testo(5), testo(6), testo(7), testo(10), testo(11)}
                    .join(u' ');
        sqlite3_finalize(domanda);
        sqlite3_close(base);
        for (qsizetype t = 1; t < ArrayTag().size(); ++t) {
            const DatiTag &tag = ArrayTag()[t];
            for (qsizetype p = 1; p < tag.Proprieta.size(); ++p) {
                const DatiProprieta &a = tag.Proprieta[p];
                const QString inizio = u"%1 %2 %3 %4 %5 %6 %7 "_s.arg(t)
                                           .arg(tag.Tag)
                                           .arg(int(tag.CloseTag))
                                           .arg(p)
                                           .arg(a.Property)
                                           .arg(a.Type)
                                           .arg(a.Category);
                if (a.Valori.isEmpty())
                    lette += inizio + u' ';
                for (qsizetype v = 1; v < a.Valori.size(); ++v)
                    lette += inizio + QString::number(v) + u' ' + a.Valori[v];
            }
        }
        QCOMPARE(lette, attese);
    }

    void rulesOfTheData()
    {
        QVERIFY(ArrayTag().size() - 1 >= 140 && ArrayTag().size() - 1 <= 210);
        QVERIFY(ArrayTag()[0].Tag.isEmpty() && ArrayTag()[0].Proprieta.isEmpty());
        for (qsizetype t = 1; t < ArrayTag().size(); ++t) {
            const DatiTag &tag = ArrayTag()[t];
            QVERIFY2(ArrayTag()[t - 1].Tag < tag.Tag && tag.Tag == tag.Tag.toUpper(), qPrintable(tag.Tag));
            QVERIFY2(tag.Proprieta.size() >= 2, qPrintable(tag.Tag));
            for (const DatiProprieta &p : tag.Proprieta) {
                const QString dove = tag.Tag + u' ' + p.Property;
                // Completion tells events by their first two letters, as written.
                QVERIFY2(p.Property.startsWith("On"_L1) == p.Property.startsWith("on"_L1, Qt::CaseInsensitive),
                         qPrintable(dove));
                QVERIFY2(p.Valori.isEmpty() || p.Valori.size() > 1, qPrintable(dove));
                QVERIFY2(!p.Valori.mid(1).contains(QString()), qPrintable(dove));
            }
        }
    }

    void everyTagTakesTheGlobals()
    {
        for (qsizetype t = 1; t < ArrayTag().size(); ++t) {
            for (const QStringView attributo :
                 {u"id", u"class", u"style", u"title", u"lang", u"dir", u"hidden", u"tabindex", u"itemprop", u"onclick",
                  u"onload", u"onkeydown", u"onmouseover"})
                QVERIFY2(VerificaAttributo(ArrayTag()[t].Tag, attributo) == 1,
                         qPrintable(ArrayTag()[t].Tag + u' ' + attributo.toString()));
        }
    }

    void knows_data()
    {
        Colonne<QString, QString, QString, int>({"tag", "attributo", "valore", "esito"});
        const auto riga = [](const char *regola, const char *tag, const char *attributo, const char *valore,
                             int esito) {
            QTest::newRow(regola) << QString::fromUtf8(tag) << QString::fromUtf8(attributo) << QString::fromUtf8(valore)
                                  << esito;
        };
        riga("input types", "input", "type", "datetime-local", 1);
        riga("boolean has no other value", "input", "required", "yes", 3);
        riga("media type of a script is open", "script", "type", "module", 1);
        riga("pragma is open", "meta", "http-equiv", "Pragma", 1);
        riga("aria nonsense", "div", "aria-live", "often", 3);
        riga("no aria on metadata", "meta", "aria-label", "x", 3);
        riga("margin of old bodies", "body", "topmargin", "0", 1);
        riga("window event on the body", "body", "onhashchange", "f()", 1);
        riga("window event elsewhere", "div", "onhashchange", "f()", 3);
        riga("misspelt attribute", "img", "widht", "1", 2);
    }

    void knows()
    {
        QFETCH(QString, tag);
        QFETCH(QString, attributo);
        QFETCH(QString, valore);
        QTEST(int(VerificaValore(tag, attributo, valore)), "esito");
    }

    void sameTablesSameBytes()
    {
        QTemporaryDir cartella;
        const QString base = cartella.filePath(u"b.db"_s);
        QCOMPARE(Costruisci(Tabelle, base), 0);
        QCOMPARE(m_uscita, QString());
        QVERIFY(Leggi(base) == Leggi(FileDellaBase));
    }

    void brokenTablesStopTheBuild_data()
    {
        Colonne<QString, QByteArray, QString>({"tabella", "righe", "messaggio"});
        const QString tag = u"tag.tsv"_s, attributi = u"attributi.tsv"_s, valori = u"valori.tsv"_s;
        const auto riga = [](const char *regola, const QString &tabella, const char *righe, const QString &messaggio) {
            QTest::newRow(regola) << tabella << QByteArray(righe) << messaggio;
        };
        riga("tag twice", tag, "A\ttrue\t@g\nA\ttrue\t@g\n", u"tag.tsv:2: tag \"A\" stands twice"_s);
        riga("CloseTag misspelt", tag, "A\tyes\t@g\n", u"tag.tsv:1: CloseTag \"yes\""_s);
        riga("unknown group", tag, "A\ttrue\t@g @h\n", u"tag.tsv:1: unknown group \"@h\""_s);
        riga("no tag at all", tag, "# nothing\n", u"tag.tsv:1: no tag"_s);
        riga("not UTF-8", tag, "A\ttrue\t@g\t\xff\n", u"tag.tsv:1: not UTF-8"_s);
        riga("attribute of no tag", attributi, "@g\tx\ttesto\tattuale\nB\tid\tnome\tattuale\n",
             u"attributi.tsv:2: unknown tag \"B\""_s);
        riga("attribute of the tag and of its group", attributi, "@g\tid\tnome\tattuale\nA\tid\tnome\tattuale\n",
             u"tag.tsv:1: \"A\" gets the attribute \"id\" twice: lines "_s);
        riga("unknown Category", attributi, "@g\tid\tnome\tnew\n", u"attributi.tsv:1: unknown Category"_s);
        riga("event in small letters", attributi, "@g\tonclick\tscript\tattuale\n",
             u"attributi.tsv:1: event attribute \"onclick\""_s);
        riga("keyword without values", attributi, "@g\tid\tparola\tattuale\n",
             u"attributi.tsv:1: \"id\" is of Type parola and has no value"_s);
        riga("boolean without its name", attributi, "@g\tinert\tbooleano\tattuale\n",
             u"attributi.tsv:1: \"inert\" is of Type booleano"_s);
        riga("group that no tag takes", attributi, "@g\tid\tnome\tattuale\n@h\tx\tnome\tattuale\n",
             u"attributi.tsv:2: no tag takes the group \"@h\""_s);
        riga("value of an open attribute", valori, "@g\tid\tx\n",
             u"attributi.tsv:1: \"id\" is of an open Type and has values"_s);
        riga("value twice", valori, "@g\tid\tx\n@g\tid\tx\n", u"valori.tsv:2: value \"x\" stands twice"_s);
        riga("blank at the end", valori, "@g\tid\tx \n", u"valori.tsv:1: field \"x \""_s);
    }

    void brokenTablesStopTheBuild()
    {
        QFETCH(QString, tabella);
        QFETCH(QByteArray, righe);
        QFETCH(QString, messaggio);
        QTemporaryDir cartella;
        const std::pair<QString, QByteArray> buone[] = {{u"tag.tsv"_s, "A\ttrue\t@g\n"},
                                                        {u"attributi.tsv"_s, "@g\tid\tnome\tattuale\n"},
                                                        {u"valori.tsv"_s, "# none\n"}};
        for (const auto &[nome, contenuto] : buone) {
            QFile file(cartella.filePath(nome));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(nome == tabella ? righe : contenuto) > 0);
        }
        const QString base = cartella.filePath(u"b.db"_s);
        QCOMPARE(Costruisci(cartella.path(), base), 1);
        QVERIFY2(m_uscita.contains(cartella.path() + u'/' + messaggio), qPrintable(m_uscita));
        QVERIFY(!QFile::exists(base));
    }

    void tagWithoutAttributesKeepsItsRow()
    {
        QTemporaryDir cartella;
        for (const auto &[nome, contenuto] : {std::pair("tag.tsv", "B\ttrue\t-\nA\tfalse\t-\tnote\r\n"),
                                              std::pair("attributi.tsv", "#\n"), std::pair("valori.tsv", "#\n")}) {
            QFile file(cartella.filePath(QString::fromUtf8(nome)));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contenuto) > 0);
        }
        const QString base = cartella.filePath(u"b.db"_s);
        QCOMPARE(Costruisci(cartella.path(), base), 0);
        QVERIFY(CaricaTag(base).Riuscito());
        QCOMPARE(ArrayTag().size(), 3);
        QVERIFY(EsisteTag(u"a") && !ArrayTag()[1].CloseTag && ArrayTag()[2].CloseTag);
        QCOMPARE(ArrayTag()[1].Proprieta.size(), 2);
        QCOMPARE(VerificaAttributo(u"a", u"id"), 2);
        QVERIFY(CaricaTag(FileDellaBase).Riuscito());
    }
};

QTEST_GUILESS_MAIN(tst_BaseTag)
#include "tst_base_tag.moc"
