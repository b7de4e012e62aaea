#include "Aiuti.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/FrmTabella.h"
#include "dialogs/TestoTabella.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

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

    void counts()
    {
        for (const auto &[testo, numero] : {std::pair(u"2.9"_s, 2),
                                            {u" 4 "_s, 4},
                                            {u"-7"_s, 0},
                                            {u"3 righe"_s, 0},
                                            {u"nan"_s, 0},
                                            {u"inf"_s, 0},
                                            {u"1e300"_s, 1'000'000'000}})
            QCOMPARE(TestoTabella::Conta(testo), numero);
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

    void boxesAsTyped()
    {
        const auto forma = [](const QString &attributo, const QString &valore) {
            static const QString Cerca = u" %1=\"[^\"]*\""_s;
            return QString(Predefinito)
                       .replace(QRegularExpression(Cerca.arg(attributo)), u" %1=\"%2\""_s.arg(attributo, valore)) +
                   u"~</TABLE>"_s;
        };
        for (const auto &[caselle, testo] :
             {std::pair(u"txtRighe=2.9 TxtColonne="_s, Predefinito + u"~  <TR>~  </TR>~  <TR>~  </TR>~</TABLE>"_s),
              {u"txtRighe=0 TxtLunghezza=50 CmbLunghezza=0"_s, forma(u"width"_s, u"50"_s)},
              {u"txtRighe=0 TxtLunghezza=5%0"_s, forma(u"width"_s, u"50%"_s)},
              {u"txtRighe=0 TxtLunghezza=1000"_s, forma(u"width"_s, u"1000%"_s)},
              {u"txtRighe=0 TxtAltezza= CmbAltezza=1"_s, forma(u"height"_s, u"%"_s)},
              {u"txtRighe=0 TxtMargine=123"_s, forma(u"cellpadding"_s, u"12"_s)},
              {u"txtRighe=0 TxtMargine=\">"_s, forma(u"cellpadding"_s, u"&quot;>"_s)}}) {
            FrmTabella dialogo;
            Riempi(dialogo, caselle.split(u' '));
            dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
            // "~" stands for a line end.
            QCOMPARE(Stato().TestoInserimento.replace(u"\r\n"_s, u"~"_s), testo);
            QCOMPARE(dialogo.result(), int(QDialog::Accepted));
            // The width box shows what went into the tag.
            QVERIFY(testo.contains(u"width=\"%1\""_s.arg(dialogo.findChild<QLineEdit *>(u"TxtLunghezza"_s)->text())));
        }
    }

    void tooManyCells()
    {
        // celle: empty: allowed
        for (const auto &[righe, colonne, celle] : {std::tuple(u"1000"_s, u"100"_s, QString()),
                                                    {u"1001"_s, u"100"_s, u"100.100"_s},
                                                    {u"1e300"_s, u"1e300"_s, u"1.000.000.000.000.000.000"_s},
                                                    {u"0"_s, u"1e300"_s, QString()}}) {
            FrmTabella dialogo;
            dialogo.show();
            Riempi(dialogo, {u"txtRighe="_s + righe, u"TxtColonne="_s + colonne});
            QString messaggio;
            Aiuti::Rispondi<QMessageBox>(&dialogo, [&messaggio](QMessageBox *box) {
                messaggio = box->text();
                box->accept();
            });
            dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
            QCOMPARE(messaggio, celle.isEmpty() ? QString() : Messaggio(300).arg(celle, u"100.000"_s));
            QCOMPARE(dialogo.isVisible(), !celle.isEmpty());
            QCOMPARE(Stato().TestoInserimento.isEmpty(), !celle.isEmpty());
            if (celle.isEmpty())
                continue;
            // The user may change the number and go on.
            Riempi(dialogo, {u"txtRighe=1"_s, u"TxtColonne=1"_s});
            dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
            QCOMPARE(Stato().TestoInserimento.count(u"<TD>"_s), 1);
        }
    }

    void keys()
    {
        for (const auto &[tasto, righe] : {std::pair(Qt::Key_Return, 7), {Qt::Key_Escape, 0}}) {
            FrmTabella dialogo;
            dialogo.show();
            Riempi(dialogo, {u"txtRighe=7"_s});
            QTest::keyClick(dialogo.findChild<QLineEdit *>(u"TxtColonne"_s), tasto);
            QVERIFY(!dialogo.isVisible());
            QCOMPARE(Stato().TestoInserimento.count(u"</TR>"_s), righe);
        }
    }
};

QTEST_MAIN(TstTabella)
#include "tst_tabella.moc"
