#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "finestre/ElencoFinestre.h"
#include "finestre/EsameFinestra.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Every window in every language: nothing cut, nothing on top of something else, everything named.
class TstFinestre : public QObject
{
    Q_OBJECT

private slots:
    // What the other test looks for is found where it is.
    void examinationFindsFaults()
    {
        QDialog finestra;
        finestra.setObjectName(u"F"_s);
        finestra.resize(300, 200);
        const auto metti = [](QWidget *w, const QString &nome, QRect dove) {
            w->setObjectName(nome);
            w->setGeometry(dove);
        };
        metti(new QPushButton(u"&Aiuto di molte parole"_s, &finestra), u"stretto"_s, {10, 100, 40, 25});
        metti(new QPushButton(u"&Altro"_s, &finestra), u"sopra"_s, {40, 100, 100, 25});
        metti(new QLineEdit(&finestra), u"senzaNome"_s, {10, 10, 100, 25});
        metti(new QLabel(u"testo"_s, &finestra), u"fuori"_s, {280, 150, 60, 25});
        finestra.show();
        QStringList attesi{u"the text of stretto is cut"_s,
                           u"stretto and sopra overlap"_s,
                           u"stretto and sopra share Alt+A"_s,
                           u"senzaNome has no accessible name"_s,
                           u"fuori leaves F"_s,
                           u"Tab jumps back from sopra to senzaNome"_s};
        QStringList trovati = EsameFinestra::Difetti(finestra);
        attesi.sort();
        trovati.sort();
        QCOMPARE(trovati, attesi);
    }

    void everyWindow_data()
    {
        QTest::addColumn<quint8>("lingua");
        for (const ModuloPrincipale::Lingua &lingua : ModuloPrincipale::Lingue())
            QTest::newRow(qPrintable(lingua.locale.toString())) << lingua.codice;
    }

    void everyWindow()
    {
        QFETCH(quint8, lingua);
        QVERIFY(ElencoFinestre::ImpostaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), lingua));
        ElencoFinestre::Principale principale(QStringLiteral(CARTELLA_SORGENTI "/docs/esempio.html"));
        QStringList difetti;
        for (const ElencoFinestre::Finestra &finestra : ElencoFinestre::Tutte()) {
            int viste = 0;
            finestra.apri(principale.Finestra(), [&](QWidget &aperta, const QString &nome) {
                ++viste;
                const QString quale = QString::fromUtf16(finestra.nome) + u' ' + nome + u": "_s;
                if (finestra.nostra) {
                    for (const QString &difetto : EsameFinestra::Difetti(aperta))
                        difetti += quale + difetto;
                }
                if (!finestra.escape)
                    return;
                QTest::keyClick(&aperta, Qt::Key_Escape);
                if (aperta.isVisible())
                    difetti += quale + u"Escape does not close it"_s;
            });
            QVERIFY2(viste > 0, qPrintable(QString::fromUtf16(finestra.nome)));
        }
        for (const QString &difetto : std::as_const(difetti))
            qWarning("%s", qPrintable(difetto));
        QCOMPARE(difetti.size(), 0);
    }
};

int main(int argc, char **argv)
{
    // Without the browser engine's module: it is not what is looked at.
    const QTemporaryDir cartella;
    ElencoFinestre::Isola(cartella.path());
    if (!QFile::copy(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db"), cartella.filePath(u"tag html.db"_s)))
        return 2;
    ModuloDichiarazioni::ImpostaCartellaProgramma(cartella.path());
    QApplication applicazione(argc, argv);
    QApplication::setApplicationName(u"Velloro"_s);
    QApplication::setApplicationVersion(u"1.0.25"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    ModuloGrafica::ApplicaStile(applicazione);
    TstFinestre prova;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&prova, argc, argv);
}

#include "tst_finestre.moc"
