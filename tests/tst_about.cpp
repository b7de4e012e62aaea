#include "Aiuti.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/frmAbout.h"
#include "platform/Registro.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

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

    void userLine()
    {
        for (const auto &[organizzazione, riga] :
             {std::pair("Studio Alfa"_ba, u"Studio Alfa"_s), {""_ba, u"Maria"_s}}) {
            CaricaRighe(Versione + "RegisteredOrganization\tREG_SZ\t" + organizzazione + '\n' + Versione +
                        "RegisteredOwner\tREG_SZ\tMaria");
            QCOMPARE(Testo(frmAbout(), u"LblUserReg"_s), riga);
        }
    }

    void keyValues()
    {
        // "prima": not read
        for (const auto &[tipoEDati, valore] :
             {std::pair("1\t616263"_ba, u"abc"_s),
              {"REG_SZ\t" + QByteArray(1023, 'x'), QString(1023, u'x')}, // as long as the buffer
              {"REG_SZ\t" + QByteArray(1024, 'x'), u"prima"_s},
              {"REG_DWORD\t1"_ba, u"prima"_s}}) {
            CaricaRighe("HKEY_LOCAL_MACHINE\\A\tV\t" + tipoEDati);
            QString letto = u"prima"_s;
            QCOMPARE(frmAbout::GetKeyValue(Registro::HKEY_LOCAL_MACHINE, u"A", u"V", letto), valore != u"prima"_s);
            QCOMPARE(letto, valore);
            QVERIFY(!frmAbout::GetKeyValue(Registro::HKEY_LOCAL_MACHINE, u"B", u"V", letto));
            QCOMPARE(Registro::ChiaviAperte(), 0);
        }
    }

    void systemInformation()
    {
        const QByteArray percorso = Strumenti + "\\MSINFO\tPATH\tREG_SZ\t%/";
        const QByteArray cartella = Strumenti + " Location\tMSINFO\tREG_SZ\t%";
        Apre(percorso + "lo strumento", true);
        Apre(percorso + "manca", false);
        Apre(cartella, true);
        Apre(cartella + "/altra", false);
    }

private:
    /// Whether the button starts a program. "%" in \a righe stands for the test's folder.
    void Apre(QByteArray righe, bool avviato)
    {
        for (const QString &nome : {u"lo strumento"_s, u"MSINFO32.EXE"_s})
            Programma(nome);
        QFile::remove(m_cartella.filePath(u"avviato"_s));
        CaricaRighe(righe.replace('%', m_cartella.path().toUtf8()));

        frmAbout about;
        about.show();
        QString messaggio;
        Aiuti::Rispondi<QMessageBox>(&about, [&messaggio](QMessageBox *box) {
            messaggio = box->text();
            box->accept();
        });
        about.findChild<QPushButton *>(u"cmdSysInfo"_s)->click();
        QCOMPARE(messaggio, avviato ? QString() : u"Le informazioni sul sistema non sono attualmente disponibili."_s);
        if (avviato)
            QTRY_VERIFY(QFile::exists(m_cartella.filePath(u"avviato"_s)));
    }

    void CaricaRighe(const QByteArray &righe) const
    {
        const QString file = m_cartella.filePath(u"registro.dat"_s);
        Aiuti::Scrivi(file, righe);
        Registro::Carica({{file}, {}, m_cartella.path()});
    }
    /// A program that leaves the file "avviato".
    void Programma(const QString &nome) const
    {
        const QString file = m_cartella.filePath(nome);
        Aiuti::Scrivi(file, "#!/bin/sh\necho \"$1\" >'" + m_cartella.filePath(u"avviato"_s).toUtf8() + "'\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QTemporaryDir m_cartella;
};

QTEST_MAIN(TstAbout)
#include "tst_about.moc"
