#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/frmAbout.h"
#include "platform/Registro.h"
#include "Colonne.h"

#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

const QByteArray Versione = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion\t";
const QByteArray Strumenti = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools";

QString Testo(const QWidget &finestra, const QString &etichetta)
{
    return finestra.findChild<QLabel *>(etichetta)->text();
}

} // namespace

class TstAbout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_SORGENTI "/data"), 0).Riuscito());
        QCoreApplication::setApplicationName(u"Velloro"_s);
        QCoreApplication::setApplicationVersion(u"1.0.25"_s);
        ModuloGrafica::ApplicaStile(*qApp);
    }

    void fields()
    {
        CaricaRighe({});
        frmAbout about;
        QCOMPARE(Testo(about, u"lblVersion"_s), u"Versione 1.0.25"_s);
        QVERIFY(Testo(about, u"lblQt"_s).contains(QString::fromLatin1(qVersion())));
        about.show();
        about.findChild<QPushButton *>(u"cmdOK"_s)->click();
        QVERIFY(!about.isVisible());
    }

    void userLine_data()
    {
        Colonne<QByteArray, QByteArray, QString>({"organizzazione", "proprietario", "riga"});

        QTest::newRow("organisation") << QByteArray("Studio Alfa") << QByteArray("Maria") << u"Studio Alfa"_s;
        QTest::newRow("owner when the organisation is empty") << QByteArray() << QByteArray("Maria") << u"Maria"_s;
    }

    void userLine()
    {
        QFETCH(QByteArray, organizzazione);
        QFETCH(QByteArray, proprietario);
        CaricaRighe(Versione + "RegisteredOrganization\tREG_SZ\t" + organizzazione + '\n' + Versione +
                    "RegisteredOwner\tREG_SZ\t" + proprietario);
        QTEST(Testo(frmAbout(), u"LblUserReg"_s), "riga");
    }

    void keyValues_data()
    {
        // valore: "prima": not read
        Colonne<QByteArray, QString>({"tipoEDati", "valore"});

        QTest::newRow("no terminator") << QByteArray("1\t616263") << u"abc"_s;
        QTest::newRow("as long as the buffer") << QByteArray("REG_SZ\t" + QByteArray(1023, 'x')) << QString(1023, u'x');
        QTest::newRow("longer than the buffer") << QByteArray("REG_SZ\t" + QByteArray(1024, 'x')) << u"prima"_s;
        QTest::newRow("number") << QByteArray("REG_DWORD\t1") << u"prima"_s;
    }

    void keyValues()
    {
        QFETCH(QByteArray, tipoEDati);
        QFETCH(QString, valore);
        CaricaRighe("HKEY_LOCAL_MACHINE\\A\tV\t" + tipoEDati);
        QString letto = u"prima"_s;
        QCOMPARE(frmAbout::GetKeyValue(Registro::HKEY_LOCAL_MACHINE, u"A", u"V", letto), valore != u"prima"_s);
        QCOMPARE(letto, valore);
        QVERIFY(!frmAbout::GetKeyValue(Registro::HKEY_LOCAL_MACHINE, u"B", u"V", letto));
        QCOMPARE(Registro::ChiaviAperte(), 0);
    }

    void systemInformation_data()
    {
        // righe: %: the test's folder
        Colonne<QByteArray, bool>({"righe", "avviato"});

        const QByteArray percorso = Strumenti + "\\MSINFO\tPATH\tREG_SZ\t";
        const QByteArray cartella = Strumenti + " Location\tMSINFO\tREG_SZ\t";
        QTest::newRow("program") << percorso + "%/strumento" << true;
        QTest::newRow("path with a blank") << percorso + "%/lo strumento" << true;
        QTest::newRow("folder of the program") << cartella + "%" << true;
        QTest::newRow("folder without it") << cartella + "%/altra" << false;
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("program that is gone") << percorso + "%/manca" << false;
    }

    void systemInformation()
    {
        QFETCH(QByteArray, righe);
        QFETCH(bool, avviato);
        for (const QString &nome : {u"strumento"_s, u"lo strumento"_s, u"MSINFO32.EXE"_s})
            Programma(nome);
        QFile::remove(m_cartella.filePath(u"avviato"_s));
        CaricaRighe(righe.replace('%', m_cartella.path().toUtf8()));

        frmAbout about;
        about.show();
        QString messaggio;
        QTimer attesa;
        connect(&attesa, &QTimer::timeout, &about, [&messaggio] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                messaggio = box->text();
                QCOMPARE(box->icon(), QMessageBox::NoIcon);
                box->accept();
            }
        });
        attesa.start(0);
        about.findChild<QPushButton *>(u"cmdSysInfo"_s)->click();
        QCOMPARE(messaggio, avviato ? QString() : u"Le informazioni sul sistema non sono attualmente disponibili."_s);
        if (avviato)
            QTRY_VERIFY(QFile::exists(m_cartella.filePath(u"avviato"_s)));
    }

private:
    void CaricaRighe(const QByteArray &righe) const
    {
        QFile file(m_cartella.filePath(u"registro.dat"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(righe);
        file.close();
        Registro::Carica({{file.fileName()}, {}, m_cartella.path()});
    }
    /// A program that leaves the file "avviato".
    void Programma(const QString &nome) const
    {
        QFile file(m_cartella.filePath(nome));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\necho \"$1\" >'" + m_cartella.filePath(u"avviato"_s).toUtf8() + "'\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QTemporaryDir m_cartella;
};

QTEST_MAIN(TstAbout)
#include "tst_about.moc"
