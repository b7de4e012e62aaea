#include "html/ModuloTag.h"

#include <QFile>
#include <QTest>

using namespace ModuloTag;
using namespace Qt::StringLiterals;

/// The shipped base against the facts of the three document types of HTML 4.01 (dati/html401.tsv; dati/estrai_dtd.py
/// makes that table).
class tst_Dtd : public QObject
{
    Q_OBJECT

    QList<QStringList> m_fatti;

    [[nodiscard]] QList<QStringList> Fatti(QStringView genere) const
    {
        QList<QStringList> scelti;
        for (const QStringList &fatto : m_fatti) {
            if (fatto[0] == genere)
                scelti += fatto;
        }
        return scelti;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(CaricaTag(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db")).Riuscito());
        QFile file(QStringLiteral(CARTELLA_SORGENTI "/tests/dati/html401.tsv"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const QString &riga : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
            m_fatti += riga.split(u'\t');
        QCOMPARE(Fatti(u"elemento").size(), 91); // as in the index of elements of the recommendation
        QVERIFY(Fatti(u"attributo").size() > 1500);
    }

    void everyElementWithItsEndTag()
    {
        for (const QStringList &fatto : Fatti(u"elemento")) {
            const int casella = CasellaTag(fatto[1]);
            QVERIFY2(casella >= 1, qPrintable(fatto[1]));
            QVERIFY2(ArrayTag()[casella].CloseTag == (fatto[2] != "empty"_L1), qPrintable(fatto.join(u' ')));
        }
    }

    void everyAttribute()
    {
        for (const QStringList &fatto : Fatti(u"attributo"))
            QVERIFY2(VerificaAttributo(fatto[1], fatto[2]) == 1, qPrintable(fatto.join(u' ')));
    }

    void everyEnumeratedValueAndNoOpenList()
    {
        const QString impossibile = u"no standard has this"_s;
        for (const QStringList &fatto : Fatti(u"attributo")) {
            if (fatto[3] == "-"_L1)
                continue;
            for (const QString &valore : fatto[3].split(u' '))
                QVERIFY2(VerificaValore(fatto[1], fatto[2], valore) == 1,
                         qPrintable(fatto.join(u' ') + u": "_s + valore));
            QVERIFY2(VerificaValore(fatto[1], fatto[2], impossibile) == 3, qPrintable(fatto.join(u' ')));
        }
    }

    void openAttributesAreOpenButForThoseEnumeratedSince()
    {
        // What the document types leave open and later standards, or their own prose, enumerate.
        const QStringList elencati = {u"AREA shape"_s, u"FORM enctype"_s, u"LI type"_s, u"OL type"_s, u"FORM method"_s};
        for (const QStringList &fatto : Fatti(u"attributo")) {
            if (fatto[3] != "-"_L1 || elencati.contains(fatto[1] + u' ' + fatto[2]))
                continue;
            QVERIFY2(VerificaValore(fatto[1], fatto[2], u"any text at all") == 1, qPrintable(fatto.join(u' ')));
        }
    }
};

QTEST_APPLESS_MAIN(tst_Dtd)
#include "tst_dtd.moc"
