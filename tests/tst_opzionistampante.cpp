#include "platform/OpzioniStampante.h"

#include <QtTest>

using namespace Qt::StringLiterals;

// The device settings record, and a printer's options as such a record.
class tst_opzionistampante : public QObject
{
    Q_OBJECT

private slots:
    void record()
    {
        DevMode record;
        QVERIFY(record.Vuoto());
        record.ImpostaNomeDispositivo(QByteArray(40, 'n'));
        record.Imposta(DevMode::Orientamento, 2);
        record.Imposta(DevMode::NumeroCopie, 0x0203);
        record.Imposta(DevMode::FronteRetro, 3);
        record.Imposta(DevMode::Qualita, -4);
        record.ImpostaNomeCarta(QByteArray(40, 'c'));
        const QByteArray byte = record.Byte();
        QCOMPARE(byte.size(), 154);
        QCOMPARE(byte.left(34), QByteArray(32, 'n') + QByteArray(2, '\0'));
        QCOMPARE(byte.mid(40, 4), QByteArray::fromHex("01150100"));
        QCOMPARE(byte.mid(44, 2), QByteArray::fromHex("0200"));
        QCOMPARE(byte.mid(54, 6), QByteArray::fromHex("03020000fcff"));
        QCOMPARE(byte.mid(62, 2), QByteArray::fromHex("0300"));
        QCOMPARE(byte.mid(70, 33), QByteArray(31, 'c') + QByteArray(2, '\0'));
        QCOMPARE(DevMode::DaByte(byte + "driver"), record);
        QCOMPARE(DevMode::DaByte("abc").Byte().size(), 154);
        QCOMPARE(DevMode::DaByte(QByteArray("ab\0cd", 5)).NomeDispositivo(), "ab");
    }

    void opzioni()
    {
        using OpzioniStampante::Opzioni;
        const Opzioni due{{"sides", "two-sided-long-edge"}};
        struct Riga {
            Opzioni prima, cambio, dopo; // cambio: options of the record that is merged in
        };
        for (const Riga &riga :
             {Riga{{{"fit-to-page", "true"}}, due, {{"fit-to-page", "true"}, {"sides", "two-sided-long-edge"}}},
              {due, {}, {}},
              // What says the same stays as it is written; no second name contradicts.
              {{{"Duplex", "DuplexNoTumble"}, {"orientation-requested", "5"}, {"PageSize", "A4"}},
               {{"sides", "two-sided-long-edge"}, {"orientation-requested", "4"}, {"media", "A4"}},
               {{"Duplex", "DuplexNoTumble"}, {"orientation-requested", "5"}, {"PageSize", "A4"}}},
              {{{"Duplex", "None"}, {"PageSize", "A5"}},
               {{"sides", "two-sided-short-edge"}, {"media", "A4"}},
               {{"sides", "two-sided-short-edge"}, {"media", "A4"}}},
              {{{"copies", "2"}, {"print-quality", "5"}, {"Collate", "True"}},
               {{"copies", "7"}, {"print-quality", "3"}, {"Collate", "False"}},
               {{"copies", "7"}, {"print-quality", "3"}, {"Collate", "False"}}}}) {
            const DevMode record = OpzioniStampante::InRecord("Laser", riga.cambio);
            QCOMPARE(record.NomeDispositivo(), "Laser");
            QCOMPARE(OpzioniStampante::Unisci(riga.prima, record), riga.dopo);
        }
    }

    void opzioniComeByte()
    {
        const OpzioniStampante::Opzioni opzioni{{"media", "A4"}, {"sides", ""}, {"copies", "3"}};
        const QByteArray byte = OpzioniStampante::InByte(opzioni);
        QCOMPARE(OpzioniStampante::DaByte(byte + QByteArray(100, 'x')), opzioni);
        for (qsizetype taglio = 0; taglio < byte.size(); ++taglio)
            QCOMPARE(OpzioniStampante::DaByte(byte.left(taglio)), OpzioniStampante::Opzioni());
        QCOMPARE(OpzioniStampante::DaByte(QByteArray(64, '\xff')), OpzioniStampante::Opzioni());
    }
};

QTEST_MAIN(tst_opzionistampante)
#include "tst_opzionistampante.moc"
