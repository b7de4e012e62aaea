#include "Aiuti.h"
#include "html/ModuloTag.h"

#include <QProcess>
#include <QTemporaryDir>

#include <sqlite3.h>

using namespace ModuloTag;
using namespace Qt::StringLiterals;

namespace
{

const QString FileDellaBase = QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db");
const QString Tabelle = QStringLiteral(CARTELLA_SORGENTI "/data/tag");

/// The three tables that the tool reads, in \a cartella.
void Scrivi(const QTemporaryDir &cartella, const QByteArray &tag, const QByteArray &attributi, const QByteArray &valori)
{
    Aiuti::Scrivi(cartella.filePath(u"tag.tsv"_s), tag);
    Aiuti::Scrivi(cartella.filePath(u"attributi.tsv"_s), attributi);
    Aiuti::Scrivi(cartella.filePath(u"valori.tsv"_s), valori);
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
        QStringList attese, lette;
        QCOMPARE(sqlite3_open_v2(QFile::encodeName(FileDellaBase).constData(), &base, SQLITE_OPEN_READONLY, nullptr),
                 SQLITE_OK);
        QCOMPARE(sqlite3_exec(
                     base,
                     "SELECT TAG.IDtag || ' ' || TAG.Tag || ' ' || CloseTag || ' ' || IDProperty || ' ' || Property || "
                     "' ' || Type || ' ' || Category || ' ' || ifnull(IDPropValue || ' ' || PropValue, ' ') "
                     "FROM (TAG INNER JOIN Property ON Tag.IDtag = Property.IDTag) left outer join "
                     "PropValue ON Property.IDTag = PropValue.IDTag and Property.IDProperty = PropValue.IDProp "
                     "ORDER BY TAG.Tag , Property.IDProperty , PropValue.IDPropValue ",
                     [](void *righe, int, char **campi, char **) {
                         *static_cast<QStringList *>(righe) += QString::fromUtf8(campi[0]);
                         return 0;
                     },
                     &attese, nullptr),
                 SQLITE_OK);
        sqlite3_close(base);
        for (qsizetype t = 1; t < ArrayTag().size(); ++t) {
            const DatiTag &tag = ArrayTag()[t];
            for (qsizetype p = 1; p < tag.Proprieta.size(); ++p) {
                const DatiProprieta &a = tag.Proprieta[p];
                const QStringList inizio{QString::number(t),         tag.Tag,    QString::number(tag.CloseTag),
                                         QString::number(p),         a.Property, QString::number(a.Type),
                                         QString::number(a.Category)};
                if (a.Valori.isEmpty())
                    lette += inizio.join(u' ') + u"  "_s;
                for (qsizetype v = 1; v < a.Valori.size(); ++v)
                    lette += (inizio + QStringList{QString::number(v), a.Valori[v]}).join(u' ');
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

    void knows()
    {
        for (const auto &[tag, attributo, valore, esito] :
             {std::tuple(u"input", u"type", u"datetime-local", 1),
              {u"input", u"required", u"yes", 3}, // a boolean has no other value
              {u"script", u"type", u"module", 1}, // the media type of a script is open
              {u"meta", u"http-equiv", u"Pragma", 1},
              {u"div", u"aria-live", u"often", 3},
              {u"meta", u"aria-label", u"x", 3},
              {u"body", u"topmargin", u"0", 1},
              {u"body", u"onhashchange", u"f()", 1}, // an event of the window
              {u"div", u"onhashchange", u"f()", 3},
              {u"img", u"widht", u"1", 2}})
            QVERIFY2(VerificaValore(tag, attributo, valore) == esito, qPrintable(QStringView(attributo).toString()));
    }

    void sameTablesSameBytes()
    {
        QTemporaryDir cartella;
        const QString base = cartella.filePath(u"b.db"_s);
        QCOMPARE(Costruisci(Tabelle, base), 0);
        QCOMPARE(m_uscita, QString());
        QVERIFY(Aiuti::Contenuto(base) == Aiuti::Contenuto(FileDellaBase));
    }

    void brokenTablesStopTheBuild()
    {
        const auto guasta = [this](const QByteArray &tag, const QByteArray &attributi, const QByteArray &valori,
                                   const QString &messaggio) {
            QTemporaryDir cartella;
            Scrivi(cartella, tag, attributi, valori);
            const QString base = cartella.filePath(u"b.db"_s);
            QCOMPARE(Costruisci(cartella.path(), base), 1);
            QVERIFY2(m_uscita.contains(cartella.path() + u'/' + messaggio), qPrintable(messaggio + m_uscita));
            QVERIFY(!QFile::exists(base));
        };
        const QByteArray id = "@g\tid\tnome\tattuale\n", a = "A\ttrue\t@g\n", nessuno = "# none\n";
        guasta(a + a, id, nessuno, u"tag.tsv:2: tag \"A\" stands twice"_s);
        guasta("A\tyes\t@g\n", id, nessuno, u"tag.tsv:1: CloseTag \"yes\""_s);
        guasta("A\ttrue\t@g\t\xff\n", id, nessuno, u"tag.tsv:1: not UTF-8"_s);
        guasta(a, "@g\tx\ttesto\tattuale\nB\tid\tnome\tattuale\n", nessuno, u"attributi.tsv:2: unknown tag \"B\""_s);
        guasta(a, id + "A\tid\tnome\tattuale\n", nessuno,
               u"tag.tsv:1: \"A\" gets the attribute \"id\" twice: lines "_s);
        guasta(a, "@g\tid\tnome\tnew\n", nessuno, u"attributi.tsv:1: unknown Category"_s);
        guasta(a, "@g\tonclick\tscript\tattuale\n", nessuno, u"attributi.tsv:1: event attribute \"onclick\""_s);
        guasta(a, "@g\tid\tparola\tattuale\n", nessuno, u"attributi.tsv:1: \"id\" is of Type parola and has no"_s);
        guasta(a, id + "@h\tx\tnome\tattuale\n", nessuno, u"attributi.tsv:2: no tag takes the group \"@h\""_s);
        guasta(a, id, "@g\tid\tx\n@g\tid\tx\n", u"valori.tsv:2: value \"x\" stands twice"_s);
        guasta(a, id, "@g\tid\tx \n", u"valori.tsv:1: field \"x \""_s);
    }

    void tagWithoutAttributesKeepsItsRow()
    {
        QTemporaryDir cartella;
        Scrivi(cartella, "B\ttrue\t-\nA\tfalse\t-\tnote\r\n", "#\n", "#\n");
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
