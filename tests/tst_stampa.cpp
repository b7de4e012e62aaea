#include "dialogs/ModuloStampa.h"
#include "platform/Spooler.h"
#include "Colonne.h"

#include <QComboBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QSpinBox>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace ModuloStampa;

namespace
{

/// A spooler of printers in memory that writes down every call, and fails at the one that it is told.
class SpoolerFinto : public Spooler
{
public:
    QMap<QString, DevMode> stampanti;
    QStringList ordine;
    QStringList chiamate;
    QString guasto; ///< name of the call that fails
    quint32 errore = NomeNonValido;
    bool descrittoreVisto = false;

    void Aggiungi(const QString &nome, int copie)
    {
        DevMode record;
        record.ImpostaNomeDispositivo(nome.toUtf8());
        record.Imposta(DevMode::NumeroCopie, copie);
        stampanti.insert(nome, record);
        ordine.append(nome);
    }
    [[nodiscard]] QStringList Stampanti() override { return ordine; }
    [[nodiscard]] Maniglia ApriStampante(const QString &nome, quint32 accesso) override
    {
        const bool completo = accesso == AccessoCompleto;
        const bool bene = Annota((completo ? u"apri "_s : u"leggi "_s) + nome, completo ? u"apri"_s : u"leggi"_s);
        if (!bene || !stampanti.contains(nome))
            return 0;
        m_aperta = nome;
        ++aperte;
        return 7;
    }
    void ChiudiStampante(Maniglia) override
    {
        --aperte;
        chiamate << u"chiudi"_s;
    }
    [[nodiscard]] qint32 ProprietaDocumento(Maniglia, const QString &, QByteArray *uscita, const QByteArray *ingresso,
                                            quint32 modo) override
    {
        const QString nome = modo == 0 ? u"dimensione"_s : modo == Uscita ? u"propri"_s : u"unisci"_s;
        if (!Annota(nome, nome))
            return -1;
        if (modo == Uscita)
            uscita->replace(0, DevMode::Lunghezza + 3, stampanti.value(m_aperta).Byte() + "drv");
        if (modo == 10 &&
            (ingresso->size() < DevMode::Lunghezza + 103 || ingresso->mid(DevMode::Lunghezza, 3) != "drv"))
            chiamate << u"the driver's own bytes were lost"_s;
        return DevMode::Lunghezza + 3;
    }
    [[nodiscard]] quint32 DimensioneInformazioni(Maniglia) override
    {
        return Annota(u"spazio"_s, u"spazio"_s) ? 500 : 0;
    }
    [[nodiscard]] bool LeggiInformazioni(Maniglia, quint32 spazio, InformazioniStampante &informazioni) override
    {
        informazioni = {m_aperta, stampanti.value(m_aperta).Byte() + "drv", "descrittore"};
        return Annota(u"informazioni %1"_s.arg(spazio), u"informazioni"_s);
    }
    [[nodiscard]] bool ImpostaStampante(Maniglia, const InformazioniStampante &informazioni) override
    {
        descrittoreVisto = descrittoreVisto || !informazioni.descrittoreSicurezza.isEmpty();
        const DevMode record = DevMode::DaByte(informazioni.impostazioni);
        if (!Annota(u"imposta %1"_s.arg(record.Copie()), u"imposta"_s))
            return false;
        stampanti[m_aperta] = record;
        return true;
    }
    [[nodiscard]] quint32 UltimoErrore() const override { return errore; }
    void TrattieniLavori(bool) override {}
    [[nodiscard]] QString RifiutoLavoro() const override { return {}; }

    int aperte = 0;

private:
    bool Annota(const QString &chiamata, const QString &passo)
    {
        chiamate << chiamata;
        return passo != guasto;
    }
    QString m_aperta;
};

/// Runs the print routine; what the user sees and the print itself stand among the calls.
void EseguiCon(SpoolerFinto &spooler, const QString &stampante, int copie)
{
    SceltaStampa scelta;
    scelta.stampante = stampante;
    scelta.impostazioni.ImpostaNomeDispositivo(stampante.toUtf8());
    if (copie > 0)
        scelta.impostazioni.Imposta(DevMode::NumeroCopie, copie);
    Esegui(spooler, {[&](const ImpostazioniSalvate &) {
                         spooler.chiamate = {u"dialogo"_s};
                         spooler.guasto.remove(u'*');
                         return scelta;
                     },
                     [&](const SceltaStampa &) { spooler.chiamate << u"stampa"_s; },
                     [&](const QString &testo) { spooler.chiamate << u'"' + testo + u'"'; }});
}

} // namespace

// The order of the spooler's calls, the messages of each failure, and the dialog's settings as a record.
class tst_stampa : public QObject
{
    Q_OBJECT

private slots:
    void ordine_data()
    {
        Colonne<QString, int, int, QStringList>({"guasto", "errore", "copie", "attese"});

        const QString apri = u"apri Laser"_s;
        const QStringList scrivi{apri, u"dimensione"_s, u"propri"_s, u"unisci"_s, u"spazio"_s, u"informazioni 600"_s};
        const auto guasta = [&](int passi, const QString &messaggio) {
            QStringList chiamate = scrivi.mid(0, passi);
            if (!messaggio.isEmpty())
                chiamate << u'"' + messaggio + u'"';
            if (passi > 1)
                chiamate << u"chiudi"_s;
            return QStringList{u"dialogo"_s} + chiamate + QStringList{u"stampa"_s} + chiamate;
        };
        const QStringList bene = QStringList{u"dialogo"_s} + scrivi +
                                 QStringList{u"imposta 5"_s, u"chiudi"_s, u"stampa"_s} + scrivi +
                                 QStringList{u"imposta 2"_s, u"chiudi"_s};
        QStringList nonImpostata = bene;
        for (qsizetype i = nonImpostata.size() - 1; i >= 0; --i) {
            if (nonImpostata.at(i).startsWith(u"imposta"))
                nonImpostata.insert(i + 1, u"\"Unable to set shared printer settings.\""_s);
        }

        QTest::newRow("all well") << QString() << 0 << 5 << bene;
        QTest::newRow("cancelled: nothing is touched") << QString() << 0 << 0 << QStringList{u"dialogo"_s};
        QTest::newRow("access denied") << u"apri"_s << 5 << 5
                                       << guasta(1, u"Access denied -- See the article for more info."_s);
        QTest::newRow("cannot be opened")
            << u"apri"_s << 1801 << 5
            << guasta(1, u"Cannot open the printer specified (make sure the printer name is correct)."_s);
        QTest::newRow("no size") << u"dimensione"_s << 0 << 5
                                 << guasta(2, u"Cannot get the size of the DEVMODE structure."_s);
        QTest::newRow("no settings") << u"propri"_s << 0 << 5 << guasta(3, u"Cannot get the DEVMODE structure."_s);
        QTest::newRow("not merged") << u"unisci"_s << 0 << 5
                                    << guasta(4, u"Unable to set duplex setting to this printer."_s);
        QTest::newRow("no information: no message") << u"spazio*"_s << 0 << 5 << guasta(5, {});
        QTest::newRow("information not read")
            << u"informazioni*"_s << 0 << 5 << guasta(6, u"Unable to get shared printer settings."_s);
        QTest::newRow("not set") << u"imposta"_s << 0 << 5 << nonImpostata;
    }

    void ordine()
    {
        QFETCH(QString, guasto);
        QFETCH(int, errore);
        QFETCH(int, copie);
        QFETCH(QStringList, attese);
        SpoolerFinto spooler;
        spooler.Aggiungi(u"Altra"_s, 1);
        spooler.Aggiungi(u"Laser"_s, 2);
        spooler.guasto = guasto;
        spooler.errore = quint32(errore);

        EseguiCon(spooler, u"Laser"_s, copie);

        QCOMPARE(spooler.chiamate, attese);
        QCOMPARE(int(spooler.stampanti.value(u"Laser"_s).Copie()), 2);
        QCOMPARE(spooler.aperte, 0);
        QVERIFY(!spooler.descrittoreVisto);
    }

    void guastoAlRipristino()
    {
        // A print that throws still brings the settings back.
        SpoolerFinto spooler;
        spooler.Aggiungi(u"Laser"_s, 2);
        SceltaStampa scelta;
        scelta.stampante = u"Laser"_s;
        scelta.impostazioni.ImpostaNomeDispositivo("Laser");
        scelta.impostazioni.Imposta(DevMode::NumeroCopie, 9);
        int durante = 0;
        try {
            Esegui(spooler, {[&](const ImpostazioniSalvate &) { return scelta; },
                             [&](const SceltaStampa &) {
                                 durante = spooler.stampanti.value(u"Laser"_s).Copie();
                                 throw std::bad_alloc();
                             },
                             [](const QString &) {}});
            QFAIL("the failure was swallowed");
        } catch (const std::bad_alloc &) {
            QCOMPARE(durante, 9);
            QCOMPARE(int(spooler.stampanti.value(u"Laser"_s).Copie()), 2);
        }
    }

    void letturaNegata()
    {
        // A printer that could not be opened for reading has an empty record: it is written to and not restored.
        SpoolerFinto spooler;
        spooler.Aggiungi(u"Laser"_s, 2);
        spooler.guasto = u"leggi"_s;
        EseguiCon(spooler, u"Laser"_s, 5);
        QCOMPARE(spooler.chiamate.count(u"imposta 5"_s), 1);
        QCOMPARE(spooler.chiamate.last(), u"stampa"_s);

        // Into a file: no printer is touched.
        EseguiCon(spooler, {}, 1);
        QCOMPARE(spooler.chiamate, (QStringList{u"dialogo"_s, u"stampa"_s}));
    }

    void nomi_data()
    {
        // impostate: copies written, in order
        Colonne<QStringList, QString, QStringList>({"stampanti", "scelta", "impostate"});

        const QString lungo(32, u'x');
        QTest::newRow("the start of a name is not the name")
            << QStringList{u"Laser 2"_s, u"Laser"_s} << u"Laser"_s << QStringList{u"5"_s, u"2"_s};
        QTest::newRow("32 characters count, and the first one is taken")
            << QStringList{lungo + u"A"_s, lungo + u"B"_s} << lungo + u"B"_s << QStringList{u"5"_s, u"1"_s};
        QTest::newRow("the 32nd differs") << QStringList{lungo.left(31) + u"A"_s, lungo.left(31) + u"B"_s}
                                          << lungo.left(31) + u"B"_s << QStringList{u"5"_s, u"2"_s};
    }

    void nomi()
    {
        QFETCH(QStringList, stampanti);
        QFETCH(QString, scelta);
        QFETCH(QStringList, impostate);
        SpoolerFinto spooler;
        int copie = 0;
        for (const QString &nome : stampanti)
            spooler.Aggiungi(nome, ++copie);
        EseguiCon(spooler, scelta, 5);
        QStringList scritte = spooler.chiamate.filter(u"imposta "_s);
        QCOMPARE(scritte.replaceInStrings(u"imposta "_s, QString()), impostate);
        QCOMPARE(spooler.chiamate.count(u"apri "_s + scelta), 2);
    }

    void daDialogo()
    {
        QPrinter dispositivo(QPrinter::HighResolution);
        dispositivo.setOutputFormat(QPrinter::PdfFormat);
        dispositivo.setPageLayout({QPageSize(QPageSize::A5), QPageLayout::Landscape, {}});
        dispositivo.setColorMode(QPrinter::GrayScale);
        dispositivo.setCopyCount(3);
        DevMode prima;
        prima.Imposta(DevMode::Qualita, -4);
        const DevMode record = Impostazioni(dispositivo, prima);
        QCOMPARE(int(record.Copie()), 3);
        QCOMPARE(int(record.Valore(DevMode::Orientamento)), 2);
        QCOMPARE(int(record.Valore(DevMode::Carta)), 11);
        QCOMPARE(int(record.Valore(DevMode::LarghezzaCarta)), 1480);
        QCOMPARE(int(record.Valore(DevMode::LunghezzaCarta)), 2100);
        QCOMPARE(record.NomeCarta(), "A5");
        QCOMPARE(int(record.Valore(DevMode::Colore)), 1);
        QCOMPARE(int(record.Valore(DevMode::Qualita)), -4);

        // The stored settings stand in the dialog when it opens; what they do not tell of stays.
        QPrinter altro(QPrinter::HighResolution);
        altro.setOutputFormat(QPrinter::PdfFormat);
        for (const DevMode &salvate : {record, DevMode()}) {
            Prepara(altro, salvate);
            QCOMPARE(altro.copyCount(), 3);
            QCOMPARE(altro.pageLayout().orientation(), QPageLayout::Landscape);
            QCOMPARE(altro.colorMode(), QPrinter::GrayScale);
        }
    }

    void copieDellAltraStampante()
    {
        QPrinter dispositivo(QPrinter::HighResolution);
        QPrintDialog dialogo(&dispositivo);
        auto *copie = dialogo.findChild<QSpinBox *>(u"copies"_s);
        auto *stampanti = dialogo.findChild<QComboBox *>(u"printers"_s);
        QVERIFY(copie && stampanti);
        ImpostazioniSalvate salvate{{u"A"_s, u"B"_s}, {DevMode(), DevMode()}};
        salvate.record[1].Imposta(DevMode::NumeroCopie, 4);
        SeguiStampante(dialogo, salvate);
        copie->setValue(7);
        emit stampanti->currentTextChanged(u"B"_s);
        QCOMPARE(copie->value(), 4);
        emit stampanti->currentTextChanged(u"A"_s);
        QCOMPARE(copie->value(), 1);
    }
};

QTEST_MAIN(tst_stampa)
#include "tst_stampa.moc"
