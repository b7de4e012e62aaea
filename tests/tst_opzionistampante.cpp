#include "platform/OpzioniStampante.h"
#include "Colonne.h"

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

    void opzioni_data()
    {
        using OpzioniStampante::Opzioni;
        // cambio: options of the record that is merged in
        Colonne<Opzioni, Opzioni, Opzioni>({"prima", "cambio", "dopo"});

        const Opzioni due{{"sides", "two-sided-long-edge"}};
        QTest::newRow("a setting is added") << Opzioni{} << due << due;
        QTest::newRow("a setting that the record lacks goes") << due << Opzioni{} << Opzioni{};
        QTest::newRow("what says the same stays as it is written")
            << Opzioni{{"Duplex", "DuplexNoTumble"}, {"orientation-requested", "5"}, {"PageSize", "A4"}}
            << Opzioni{{"sides", "two-sided-long-edge"}, {"orientation-requested", "4"}, {"media", "A4"}}
            << Opzioni{{"Duplex", "DuplexNoTumble"}, {"orientation-requested", "5"}, {"PageSize", "A4"}};
        QTest::newRow("no second name contradicts") << Opzioni{{"Duplex", "None"}, {"PageSize", "A5"}}
                                                    << Opzioni{{"sides", "two-sided-short-edge"}, {"media", "A4"}}
                                                    << Opzioni{{"sides", "two-sided-short-edge"}, {"media", "A4"}};
        QTest::newRow("numbers") << Opzioni{{"copies", "2"}, {"print-quality", "5"}, {"Collate", "True"}}
                                 << Opzioni{{"copies", "7"}, {"print-quality", "3"}, {"Collate", "False"}}
                                 << Opzioni{{"copies", "7"}, {"print-quality", "3"}, {"Collate", "False"}};
        QTest::newRow("an option of another kind stays")
            << Opzioni{{"fit-to-page", "true"}} << due
            << Opzioni{{"fit-to-page", "true"}, {"sides", "two-sided-long-edge"}};
    }

    void opzioni()
    {
        QFETCH(OpzioniStampante::Opzioni, prima);
        QFETCH(OpzioniStampante::Opzioni, cambio);
        QFETCH(OpzioniStampante::Opzioni, dopo);
        const DevMode record = OpzioniStampante::InRecord("Laser", cambio);
        QCOMPARE(record.NomeDispositivo(), "Laser");
        QCOMPARE(OpzioniStampante::Unisci(prima, record), dopo);
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
