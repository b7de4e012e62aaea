#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/FrmTabella.h"
#include "dialogs/TestoTabella.h"
#include "Colonne.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

const QString Predefinito = u"<TABLE width=\"60%\" height=\"80\" border=\"3\" cellspacing=\"2\" cellpadding=\"3\">"_s;

/// Writes into the boxes of \a dialogo what "name=text" says, a unit as "name=index".
void Riempi(FrmTabella &dialogo, const QStringList &caselle)
{
    for (const QString &casella : caselle) {
        const QString nome = casella.section(u'=', 0, 0);
        const QString testo = casella.section(u'=', 1);
        if (auto *unita = dialogo.findChild<QComboBox *>(nome)) {
            unita->setCurrentIndex(testo.toInt());
            continue;
        }
        auto *quella = dialogo.findChild<QLineEdit *>(nome);
        QVERIFY2(quella, qPrintable(nome));
        quella->clear();
        QTest::keyClicks(quella, testo);
    }
}

} // namespace

// The table dialog and the table that comes out of it.
class TstTabella : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), 0).errore, QString());
    }

    void counts_data()
    {
        Colonne<QString, qint64>({"testo", "numero"});
        for (const auto &[testo, numero] : {std::pair(u"2.9"_s, 2),
                                            {u" 4 "_s, 4},
                                            {u"-7"_s, 0},
                                            {QString(), 0},
                                            {u"3 righe"_s, 0},
                                            {u"nan"_s, 0},
                                            {u"inf"_s, 0},
                                            {u"1e300"_s, 1'000'000'000}})
            QTest::newRow(qPrintable(u"\"%1\""_s.arg(testo))) << testo << qint64(numero);
    }

    void counts()
    {
        QFETCH(QString, testo);
        QTEST(TestoTabella::Conta(testo), "numero");
    }

    void defaults()
    {
        Stato().TestoInserimento = u"of another dialog"_s;
        FrmTabella dialogo;
        QCOMPARE(Stato().TestoInserimento, QString());
        dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
        const QStringList righe = Stato().TestoInserimento.split(u"\r\n"_s);
        QCOMPARE(righe.size(), 20);
        QCOMPARE(righe.first(7),
                 (QStringList{Predefinito, u"  <TR>"_s, u"    <TD> Cella 1</TD>"_s, u"    <TD> Cella 2</TD>"_s,
                              u"    <TD> Cella 3</TD>"_s, u"    <TD> Cella 4</TD>"_s, u"  </TR>"_s}));
        QCOMPARE(righe.sliced(7, 6), righe.sliced(1, 6));
        QCOMPARE(righe.sliced(13), righe.sliced(1, 6) + QStringList{u"</TABLE>"_s});
    }

    void boxesAsTyped_data()
    {
        // testo: "~" stands for a line end
        Colonne<QStringList, QString>({"caselle", "testo"});
        const auto forma = [](const char *attributo, const char *valore) {
            QString tag = Predefinito;
            const qsizetype da = tag.indexOf(QLatin1StringView(attributo)) + qsizetype(strlen(attributo)) + 2;
            return tag.replace(da, tag.indexOf(u'"', da) - da, QLatin1StringView(valore)) + u"~</TABLE>"_s;
        };
        const QString nessuna = u"txtRighe=0"_s;
        QTest::newRow("no rows") << QStringList{nessuna} << forma("width", "60%");
        QTest::newRow("no columns") << QStringList{u"txtRighe=2.9"_s, u"TxtColonne="_s}
                                    << Predefinito + u"~  <TR>~  </TR>~  <TR>~  </TR>~</TABLE>"_s;
        QTest::newRow("percent sign with pixels")
            << QStringList{nessuna, u"TxtLunghezza=50%"_s, u"CmbLunghezza=0"_s} << forma("width", "50%");
        QTest::newRow("percent sign inside") << QStringList{nessuna, u"TxtLunghezza=5%0"_s} << forma("width", "50%");
        QTest::newRow("four digits and the unit")
            << QStringList{nessuna, u"TxtLunghezza=1000"_s} << forma("width", "1000%");
        QTest::newRow("empty height in percent")
            << QStringList{nessuna, u"TxtAltezza="_s, u"CmbAltezza=1"_s} << forma("height", "%");
        QTest::newRow("no more than two") << QStringList{nessuna, u"TxtMargine=123"_s} << forma("cellpadding", "12");
        QTest::newRow("a double quote") << QStringList{nessuna, u"TxtMargine=\">"_s} << forma("cellpadding", "&quot;>");
    }

    void boxesAsTyped()
    {
        QFETCH(QStringList, caselle);
        QFETCH(QString, testo);
        FrmTabella dialogo;
        Riempi(dialogo, caselle);
        dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
        QCOMPARE(Stato().TestoInserimento.replace(u"\r\n"_s, u"~"_s), testo);
        QCOMPARE(dialogo.result(), int(QDialog::Accepted));
        // The width box shows what went into the tag.
        QVERIFY(testo.contains(u"width=\"%1\""_s.arg(dialogo.findChild<QLineEdit *>(u"TxtLunghezza"_s)->text())));
    }

    void tooManyCells_data()
    {
        // celle: empty: allowed
        Colonne<QString, QString, QString>({"righe", "colonne", "celle"});
        QTest::newRow("as many as are allowed") << u"1000"_s << u"100"_s << QString();
        QTest::newRow("one row more") << u"1001"_s << u"100"_s << u"100.100"_s;
        QTest::newRow("far beyond") << u"1e300"_s << u"1e300"_s << u"1.000.000.000.000.000.000"_s;
        QTest::newRow("columns without rows") << u"0"_s << u"1e300"_s << QString();
    }

    void tooManyCells()
    {
        QFETCH(QString, righe);
        QFETCH(QString, colonne);
        QFETCH(QString, celle);
        FrmTabella dialogo;
        dialogo.show();
        Riempi(dialogo, {u"txtRighe="_s + righe, u"TxtColonne="_s + colonne});
        QString messaggio;
        QTimer attesa;
        connect(&attesa, &QTimer::timeout, this, [&messaggio] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                messaggio = box->text();
                box->accept();
            }
        });
        attesa.start(0);
        dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
        QCOMPARE(messaggio, celle.isEmpty() ? QString() : Messaggio(300).arg(celle, u"100.000"_s));
        QCOMPARE(dialogo.isVisible(), !celle.isEmpty());
        QCOMPARE(Stato().TestoInserimento.isEmpty(), !celle.isEmpty());
        if (celle.isEmpty())
            return;
        // The user may change the number and go on.
        Riempi(dialogo, {u"txtRighe=1"_s, u"TxtColonne=1"_s});
        dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
        QCOMPARE(Stato().TestoInserimento.count(u"<TD>"_s), 1);
    }

    void keys_data()
    {
        Colonne<int, bool>({"tasto", "inserisce"});
        QTest::newRow("Enter confirms from a box") << int(Qt::Key_Return) << true;
        QTest::newRow("Escape cancels") << int(Qt::Key_Escape) << false;
    }

    void keys()
    {
        QFETCH(int, tasto);
        QFETCH(bool, inserisce);
        FrmTabella dialogo;
        dialogo.show();
        Riempi(dialogo, {u"txtRighe=7"_s, u"TxtColonne=2"_s, u"TxtBordo=9"_s, u"CmbAltezza=1"_s});
        QTest::keyClick(dialogo.findChild<QLineEdit *>(u"TxtColonne"_s), Qt::Key(tasto));
        QVERIFY(!dialogo.isVisible());
        QCOMPARE(Stato().TestoInserimento.count(u"</TR>"_s), inserisce ? 7 : 0);
    }
};

QTEST_MAIN(TstTabella)
#include "tst_tabella.moc"
