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

    struct Attributo {
        QString tag, nome, valori; ///< "-" for an open set of values

        [[nodiscard]] QByteArray Testo() const { return (tag + u' ' + nome + u' ' + valori).toUtf8(); }
    };
    QList<Attributo> m_attributi;
    QMap<QString, bool> m_elementi; ///< whether they have an end tag

private slots:
    void initTestCase()
    {
        QVERIFY(CaricaTag(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db")).Riuscito());
        QFile file(QStringLiteral(CARTELLA_SORGENTI "/tests/dati/html401.tsv"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const QString &riga : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList campi = riga.split(u'\t');
            for (const QString &tag : campi.constLast().split(u' ')) {
                if (campi[0] == u"elemento")
                    m_elementi[tag] = campi[1] != u"empty";
                else
                    m_attributi.append({tag, campi[1], campi[2]});
            }
        }
        QCOMPARE(m_elementi.size(), 91); // as in the index of elements of the recommendation
        QVERIFY(m_attributi.size() > 1500);
    }

    void everyElementWithItsEndTag()
    {
        for (auto elemento = m_elementi.cbegin(); elemento != m_elementi.cend(); ++elemento) {
            const int casella = CasellaTag(elemento.key());
            QVERIFY2(casella >= 1 && ArrayTag()[casella].CloseTag == elemento.value(), qPrintable(elemento.key()));
        }
    }

    void everyAttribute()
    {
        for (const Attributo &uno : m_attributi)
            QVERIFY2(VerificaAttributo(uno.tag, uno.nome) == 1, uno.Testo());
    }

    void everyEnumeratedValueAndNoOpenList()
    {
        const QString impossibile = u"no standard has this"_s;
        for (const Attributo &uno : m_attributi) {
            if (uno.valori == u"-")
                continue;
            for (const QString &valore : uno.valori.split(u' '))
                QVERIFY2(VerificaValore(uno.tag, uno.nome, valore) == 1, uno.Testo() + qPrintable(valore));
            QVERIFY2(VerificaValore(uno.tag, uno.nome, impossibile) == 3, uno.Testo());
        }
    }

    void openAttributesAreOpenButForThoseEnumeratedSince()
    {
        // What the document types leave open and later standards, or their own prose, enumerate.
        const QStringList elencati = {u"AREA shape"_s, u"FORM enctype"_s, u"LI type"_s, u"OL type"_s, u"FORM method"_s};
        for (const Attributo &uno : m_attributi) {
            if (uno.valori != u"-" || elencati.contains(uno.tag + u' ' + uno.nome))
                continue;
            QVERIFY2(VerificaValore(uno.tag, uno.nome, u"any text at all") == 1, uno.Testo());
        }
    }
};

QTEST_APPLESS_MAIN(tst_Dtd)
#include "tst_dtd.moc"
