#include "Aiuti.h"
#include "platform/Registro_Di_Windows.h"
#include "platform/RegistroFile.h"
#include "platform/RegistroOspite.h"
#include "platform/Utente.h"

#include <QTemporaryDir>

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
    void readsValuesAsText()
    {
        for (const auto &[tipoEDati, testo] : {std::pair("REG_SZ\tCaffè 编辑\r"_ba, u"Caffè 编辑"_s),
                                               {"REG_SZ\ta\tb  "_ba, u"a\tb  "_s},
                                               {"REG_EXPAND_SZ\t%PATH%"_ba, u"%PATH%"_s},
                                               {"1\t416c6661"_ba, u"Alfa"_s},        // no terminator
                                               {"1\t41 6c 00 66 61 00"_ba, u"Al"_s}, // a zero inside
                                               {"REG_DWORD\t0xFFFFFFFF"_ba, u"4294967295"_s},
                                               {"REG_BINARY\t70 11 01 00"_ba, u"70000"_s}, // lowest byte first
                                               {"REG_BINARY\t01000000ffffffffff"_ba, u"1"_s},
                                               {"7\t41 00 42 00 00"_ba, QString()}, // several texts are no text
                                               {"REG_DWORD\t4294967296"_ba, QString()},
                                               {"REG_BINARY\t123"_ba, QString()},
                                               {"REG_ALTRO\tx"_ba, QString()},
                                               {"REG_SZ"_ba, QString()}}) {
            CaricaRighe("HKEY_LOCAL_MACHINE\\Software\\Prova\tV\t" + tipoEDati +
                        "\nHKEY_LOCAL_MACHINE\\Software\\Prova\tDopo\tREG_SZ\tletto");
            QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Chiave, u"V"), testo);
            QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Chiave, u"Dopo"), u"letto"_s);
            QCOMPARE(ChiaviAperte(), 0);
        }
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

        const QString programma = m_cartella.filePath(u"hardinfo"_s);
        Aiuti::Scrivi(programma, "#!/bin/sh\n");
        QFile::setPermissions(programma, QFile::ReadOwner | QFile::ExeOwner);
        Carica(sorgenti);
        QCOMPARE(LeggiValore(HKEY_LOCAL_MACHINE, Strumento, u"PATH"), u'"' + programma + u'"');
    }

    void machineInformation()
    {
        for (const auto &[testo, valore] :
             {std::pair(u"A=1\n ORGANIZATION=\"Studio \\\"Alfa\\\"\"\r\n"_s, u"Studio \"Alfa\""_s),
              {u"ORGANIZATION='a\\b \"c\"'"_s, u"a\\b \"c\""_s}, // single quotes take all as it is
              {u"ORGANIZATION=\"Alfa\nB=2"_s, u"Alfa"_s},        // never closed
              {u"#ORGANIZATION=a"_s, QString()},
              {u"ORGANIZATION_UNIT=a\nORGANIZATION"_s, QString()}})
            QCOMPARE(CampoMacchina(testo, u"ORGANIZATION"), valore);
    }

    void fullName()
    {
        for (const auto &[descrizione, nome] : {std::pair(u"Maria Rossi,stanza 3,,"_s, u"Maria Rossi"_s),
                                                {u"& Rossi,,,"_s, u"Maria Rossi"_s},
                                                {u",,,"_s, QString()}})
            QCOMPARE(Utente::NomeDaDescrizione(descrizione, u"maria"), nome);
    }

private:
    void Scrivi(const QString &nome, const QByteArray &byte) { Aiuti::Scrivi(m_cartella.filePath(nome), byte); }
    void CaricaRighe(const QByteArray &righe)
    {
        Scrivi(u"registro.dat"_s, righe);
        Carica({{m_cartella.filePath(u"registro.dat"_s)}, {}, m_cartella.path()});
    }
    QTemporaryDir m_cartella;
};

QTEST_GUILESS_MAIN(TstRegistro)
#include "tst_registro.moc"
