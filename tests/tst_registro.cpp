#include "platform/Registro_Di_Windows.h"
#include "platform/RegistroFile.h"
#include "platform/RegistroOspite.h"
#include "platform/Utente.h"
#include "Colonne.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <array>

using namespace Qt::StringLiterals;
using namespace Registro;
using Registro_Di_Windows::LeggiValore;

namespace
{

constexpr QStringView Chiave = u"Software\\Prova";

} // namespace

class TstRegistro : public QObject
{
    Q_OBJECT

private slots:
    void readsValuesAsText_data()
    {
        Colonne<QByteArray, QString>({"tipoEDati", "testo"});

        const auto riga = [](const char *nome, const char *tipoEDati, const QString &testo) {
            QTest::newRow(nome) << QByteArray(tipoEDati) << testo;
        };
        riga("text", "REG_SZ\tStudio Alfa", u"Studio Alfa"_s);
        riga("text beyond ASCII, line with CR LF", "REG_SZ\tCaffè 编辑\r", u"Caffè 编辑"_s);
        riga("text with a tab and blanks at its end", "REG_SZ\ta\tb  ", u"a\tb  "_s);
        riga("nothing is expanded", "REG_EXPAND_SZ\t%PATH%", u"%PATH%"_s);
        riga("text without a terminator", "1\t416c6661", u"Alfa"_s);
        riga("text with a zero inside", "1\t41 6c 00 66 61 00", u"Al"_s);
        riga("number", "REG_DWORD\t70000", u"70000"_s);
        riga("number is unsigned", "REG_DWORD\t0xFFFFFFFF", u"4294967295"_s);
        riga("bytes, lowest first", "REG_BINARY\t70 11 01 00", u"70000"_s);
        riga("long bytes: the first four", "REG_BINARY\t01000000ffffffffff", u"1"_s);
        riga("several texts are no text", "7\t41 00 42 00 00", QString());
        riga("broken: number too large", "REG_DWORD\t4294967296", QString());
        riga("broken: half a byte", "REG_BINARY\t123", QString());
        riga("broken: unknown type", "REG_ALTRO\tx", QString());
        riga("broken: three fields", "REG_SZ", QString());
    }

    void readsValuesAsText()
    {
        QFETCH(QByteArray, tipoEDati);
        QFETCH(QString, testo);
        CaricaRighe("HKEY_LOCAL_MACHINE\\Software\\Prova\tV\t" + tipoEDati +
                    "\nHKEY_LOCAL_MACHINE\\Software\\Prova\tDopo\tREG_SZ\tletto");
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Chiave, u"V"), testo);
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Chiave, u"Dopo"), u"letto"_s);
        QCOMPARE(ChiaviAperte(), 0);
    }

    // Sizes and codes of the single calls.
    void calls()
    {
        CaricaRighe("HKEY_LOCAL_MACHINE\\Software\\Prova\tV\tREG_SZ\tabc");
        HKey chiave = 0;
        QCOMPARE(RegOpenKey(HKEY_LOCAL_MACHINE, u"Software\\Altro", chiave), NonTrovato);
        QCOMPARE(chiave, HKey(0));
        QCOMPARE(RegOpenKey(12345, Chiave, chiave), HandleNonValido);
        HKey software = 0;
        QCOMPARE(RegOpenKey(HKEY_LOCAL_MACHINE, u"Software", software), Successo);
        QCOMPARE(RegOpenKey(software, u"Prova", chiave), Successo);

        quint32 tipo = 0;
        quint32 byte = 0;
        QCOMPARE(RegQueryValueEx(chiave, u"V", &tipo, nullptr, &byte), Successo);
        QCOMPARE(tipo, quint32(REG_SZ));
        QCOMPARE(byte, 4u);
        std::array<char, 8> dati{'?', '?', '?', '?', '?', '?', '?', '?'};
        byte = 3;
        QCOMPARE(RegQueryValueEx(chiave, u"V", nullptr, dati.data(), &byte), AltriDati);
        QCOMPARE(byte, 4u);
        QCOMPARE(dati[0], '?');
        byte = 8;
        QCOMPARE(RegQueryValueEx(chiave, u"V", nullptr, dati.data(), &byte), Successo);
        QCOMPARE(QByteArray(dati.data(), 5), QByteArray("abc\0?", 5));
        QCOMPARE(RegQueryValueEx(chiave, u"V", nullptr, dati.data(), nullptr), ParametroErrato);
        QCOMPARE(RegQueryValueEx(chiave, u"W", nullptr, nullptr, nullptr), NonTrovato);

        QCOMPARE(RegCloseKey(chiave), Successo);
        QCOMPARE(RegCloseKey(chiave), HandleNonValido);
        QCOMPARE(RegQueryValueEx(chiave, u"V", nullptr, nullptr, nullptr), HandleNonValido);
        QCOMPARE(RegOpenKeyEx(HKEY_LOCAL_MACHINE, Chiave, 0x20006, chiave), Successo); // the right to write alone
        QCOMPARE(RegQueryValueEx(chiave, u"V", nullptr, nullptr, nullptr), AccessoNegato);
    }

    void namesAndPaths()
    {
        CaricaRighe("# HKEY_LOCAL_MACHINE\\Nota\tV\tREG_SZ\tno\n"
                    "hkey_local_machine\\\\UNO\\Due\\\tNome\tREG_SZ\tsì\n"
                    "HKEY_CURRENT_USER\\Uno\t\tREG_SZ\tsenza nome\n"
                    "HKEY_ALTRA\\Uno\tV\tREG_SZ\tno\n"
                    "Uno\tV\tREG_SZ\tno\n");
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, u"uno\\dUE", u"NOME"), u"sì"_s);
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, u"\\Uno\\Due\\", u"nome"), u"sì"_s);
        QCOMPARE(LeggiValore(HKEY_CURRENT_USER, u"Uno", u""), u"senza nome"_s);
        for (const QStringView chiave : {u"Nota", u"Uno", u"Un", u"Uno\\Due\\Tre", u""}) {
            QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, chiave, u"V"), QString());
            QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, chiave, u"Nome"), QString());
        }
        HKey chiave = 0;
        QCOMPARE(RegOpenKey(HKEY_LOCAL_MACHINE, u"Un", chiave), NonTrovato); // a part of a name is no key
    }

    void laterFilesWin()
    {
        Scrivi(u"primo"_s, "HKEY_LOCAL_MACHINE\\A\tUno\tREG_SZ\tprimo\nHKEY_LOCAL_MACHINE\\A\tDue\tREG_SZ\tprimo\n");
        Scrivi(u"secondo"_s, "\xEF\xBB\xBFHKEY_LOCAL_MACHINE\\a\tUNO\tREG_DWORD\t2\n");
        Carica({{m_cartella.filePath(u"primo"_s), m_cartella.filePath(u"manca"_s), m_cartella.filePath(u"secondo"_s)},
                {},
                {}});
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, u"A", u"Uno"), u"2"_s);
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, u"A", u"Due"), u"primo"_s);
    }

    void strangeFilesAddNothing()
    {
        QByteArray grande = "HKEY_LOCAL_MACHINE\\A\tV\tREG_SZ\tx\n";
        grande.append(MassimoFile, '#');
        Scrivi(u"grande"_s, grande);
        Carica(
            {{m_cartella.filePath(u"grande"_s), m_cartella.path(), u"/dev/zero"_s}, u"/dev/zero"_s, m_cartella.path()});
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, u"A", u"V"), QString());
        // One key of very many names costs no more than its length.
        CaricaRighe("HKEY_LOCAL_MACHINE" + QByteArray("\\a").repeated(400'000) + "\tV\tREG_SZ\tx");
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, u"\\a"_s.repeated(400'000), u"V"), u"x"_s);
    }

    void hostFacts()
    {
        constexpr QStringView Versione = u"Software\\Microsoft\\Windows NT\\CurrentVersion";
        constexpr QStringView Strumento = u"Software\\Microsoft\\Shared Tools\\MSINFO";
        Scrivi(u"machine-info"_s, "PRETTY_HOSTNAME=\"Il mio computer\"\nORGANIZATION=\"Studio Alfa\"\n");
        const Sorgenti sorgenti{{}, m_cartella.filePath(u"machine-info"_s), m_cartella.path()};
        Carica(sorgenti);
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Versione, u"RegisteredOrganization"), u"Studio Alfa"_s);
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Versione, u"RegisteredOwner"), Utente::NomeCompleto());
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Strumento, u"PATH"), QString());

        // The tools in their order, each found before those that were there already.
        for (const QString &nome : {u"gnome-control-center"_s, u"hardinfo"_s, u"hardinfo2"_s, u"kinfocenter"_s}) {
            Scrivi(nome, "#!/bin/sh\n");
            QFile::setPermissions(m_cartella.filePath(nome), QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
            Carica(sorgenti);
            const QString comando = LeggiValore(HKEY_LOCAL_MACHINE, Strumento, u"PATH");
            QVERIFY2(comando.startsWith(u'"' + m_cartella.filePath(nome) + u'"'), qPrintable(comando));
        }
    }

    void machineInformation_data()
    {
        Colonne<QString, QString>({"testo", "valore"});

        QTest::newRow("plain") << u"ORGANIZATION=Alfa\n"_s << u"Alfa"_s;
        QTest::newRow("double quotes with escapes")
            << u"A=1\n ORGANIZATION=\"Studio \\\"Alfa\\\"\"\r\n"_s << u"Studio \"Alfa\""_s;
        QTest::newRow("single quotes take all as it is") << u"ORGANIZATION='a\\b \"c\"'"_s << u"a\\b \"c\""_s;
        QTest::newRow("never closed") << u"ORGANIZATION=\"Alfa\nB=2"_s << u"Alfa"_s;
        QTest::newRow("comment") << u"#ORGANIZATION=a"_s << QString();
        QTest::newRow("longer name") << u"ORGANIZATION_UNIT=a\nORGANIZATION"_s << QString();
    }

    void machineInformation()
    {
        QFETCH(QString, testo);
        QTEST(CampoMacchina(testo, u"ORGANIZATION"), "valore");
    }

    void fullName_data()
    {
        Colonne<QString, QString>({"descrizione", "nome"});

        QTest::newRow("up to the comma") << u"Maria Rossi,stanza 3,,"_s << u"Maria Rossi"_s;
        QTest::newRow("& is the account") << u"& Rossi,,,"_s << u"Maria Rossi"_s;
        QTest::newRow("none") << u",,,"_s << QString();
    }

    void fullName()
    {
        QFETCH(QString, descrizione);
        QTEST(Utente::NomeDaDescrizione(descrizione, u"maria"), "nome");
    }

private:
    void Scrivi(const QString &nome, const QByteArray &byte)
    {
        QFile file(m_cartella.filePath(nome));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(byte);
    }
    void CaricaRighe(const QByteArray &righe)
    {
        Scrivi(u"registro.dat"_s, righe);
        Carica({{m_cartella.filePath(u"registro.dat"_s)}, {}, m_cartella.path()});
    }
    QTemporaryDir m_cartella;
};

QTEST_GUILESS_MAIN(TstRegistro)
#include "tst_registro.moc"
