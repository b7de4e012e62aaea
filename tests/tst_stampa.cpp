#include "app/TabellaLingua.h"
#include "dialogs/ModuloStampa.h"
#include "dialogs/StampaTesto.h"
#include "dialogs/TestoStampa.h"
#include "html/SchemaColori.h"
#include "platform/OpzioniStampante.h"
#include "platform/RichTextBox.h"
#include "platform/Spooler.h"

#include <QPdfWriter>
#include <QPrinter>
#include <QProcess>
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

/// A page in the editing control, printed into a PDF file.
struct Stampata {
    RichTextBox pad;
    QTemporaryDir cartella;
    OpzioniPagine opzioni{u"pagina.html"_s, {}, false, false};
    EsitoStampa esito = EsitoStampa::Fallita;

    explicit Stampata(const QString &testo)
    {
        QFont carattere(u"Courier New"_s, 10);
        carattere.setStyleHint(QFont::Monospace);
        pad.setFont(carattere);
        pad.ImpostaText(testo);
    }
    [[nodiscard]] QString File() const { return cartella.filePath(u"stampa.pdf"_s); }
    void Stampa(
        bool soloSelezione = false, const PassoStampa &passo = [](qsizetype, qsizetype) { return true; })
    {
        QPdfWriter pdf(File());
        pdf.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, {15, 15, 15, 15}, QPageLayout::Millimeter});
        esito = StampaTesto(TestoStampa::Da(pad, soloSelezione), pdf, opzioni, passo);
    }
    /// The pages as pdftotext reads them, trailing blanks cut.
    [[nodiscard]] QStringList Pagine() const
    {
        QProcess lettore;
        lettore.start(u"pdftotext"_s, {u"-layout"_s, u"-enc"_s, u"UTF-8"_s, File(), u"-"_s});
        if (!lettore.waitForFinished() || lettore.exitCode() != 0)
            return {u"pdftotext: "_s + lettore.errorString() + QString::fromUtf8(lettore.readAllStandardError())};
        QStringList pagine = QString::fromUtf8(lettore.readAllStandardOutput()).split(u'\f');
        pagine.removeLast();
        return pagine;
    }
    /// All that was printed but the footers, without any white space.
    [[nodiscard]] QString Testo() const
    {
        static const QRegularExpression piede(u"pagina\\.html\\s+Pagina \\d+ di \\d+\\s*$"_s);
        static const QRegularExpression bianco(u"\\s+"_s);
        QString testo;
        for (QString pagina : Pagine())
            testo += pagina.remove(piede).remove(bianco);
        return testo;
    }
    /// The first page as a picture.
    [[nodiscard]] QImage Immagine() const
    {
        QProcess::execute(u"pdftoppm"_s,
                          {u"-r"_s, u"100"_s, u"-png"_s, u"-singlefile"_s, File(), cartella.filePath(u"pagina"_s)});
        return QImage(cartella.filePath(u"pagina.png"_s));
    }
};

int Pixel(const QImage &immagine, const std::function<bool(QColor)> &cerca)
{
    int quanti = 0;
    for (int y = 0; y < immagine.height(); ++y) {
        for (int x = 0; x < immagine.width(); ++x)
            quanti += cerca(immagine.pixelColor(x, y)) ? 1 : 0;
    }
    return quanti;
}

QString SenzaBianchi(QString testo)
{
    static const QRegularExpression bianco(u"\\s+"_s);
    return testo.remove(bianco);
}

} // namespace

class tst_stampa : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ordine_data();
    void ordine();
    void guastoAlRipristino();
    void letturaNegata();
    void nomi_data();
    void nomi();
    void record();
    void daDialogo();
    void opzioni_data();
    void opzioni();
    void opzioniComeByte();
    void testo_data();
    void testo();
    void pagine();
    void selezione();
    void aspetto();
    void annullata();
};

void tst_stampa::initTestCase()
{
    QVERIFY(
        ModuloPrincipale::CaricaLingua(u"" CARTELLA_SORGENTI "/data"_s, ModuloPrincipale::LinguaItaliano).Riuscito());
}

void tst_stampa::ordine_data()
{
    QTest::addColumn<QString>("guasto");
    QTest::addColumn<int>("errore");
    QTest::addColumn<int>("copie");
    QTest::addColumn<QStringList>("attese");
    QTest::addColumn<int>("dopo"); // copies that the printer is left with

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

    QTest::newRow("all well") << QString() << 0 << 5 << bene << 2;
    QTest::newRow("cancelled: nothing is touched") << QString() << 0 << 0 << QStringList{u"dialogo"_s} << 2;
    QTest::newRow("access denied") << u"apri"_s << 5 << 5
                                   << guasta(1, u"Access denied -- See the article for more info."_s) << 2;
    QTest::newRow("cannot be opened")
        << u"apri"_s << 1801 << 5
        << guasta(1, u"Cannot open the printer specified (make sure the printer name is correct)."_s) << 2;
    QTest::newRow("no size") << u"dimensione"_s << 0 << 5
                             << guasta(2, u"Cannot get the size of the DEVMODE structure."_s) << 2;
    QTest::newRow("no settings") << u"propri"_s << 0 << 5 << guasta(3, u"Cannot get the DEVMODE structure."_s) << 2;
    QTest::newRow("not merged") << u"unisci"_s << 0 << 5
                                << guasta(4, u"Unable to set duplex setting to this printer."_s) << 2;
    QTest::newRow("no information: no message") << u"spazio*"_s << 0 << 5 << guasta(5, {}) << 2;
    QTest::newRow("information not read")
        << u"informazioni*"_s << 0 << 5 << guasta(6, u"Unable to get shared printer settings."_s) << 2;
    QTest::newRow("not set") << u"imposta"_s << 0 << 5 << nonImpostata << 2;
}

void tst_stampa::ordine()
{
    QFETCH(QString, guasto);
    QFETCH(int, errore);
    QFETCH(int, copie);
    QFETCH(QStringList, attese);
    QFETCH(int, dopo);
    SpoolerFinto spooler;
    spooler.Aggiungi(u"Altra"_s, 1);
    spooler.Aggiungi(u"Laser"_s, 2);
    spooler.guasto = guasto;
    spooler.errore = quint32(errore);

    EseguiCon(spooler, u"Laser"_s, copie);

    QCOMPARE(spooler.chiamate, attese);
    QCOMPARE(int(spooler.stampanti.value(u"Laser"_s).Copie()), dopo);
    QCOMPARE(int(spooler.stampanti.value(u"Altra"_s).Copie()), 1);
    QCOMPARE(spooler.aperte, 0);
    QVERIFY(!spooler.descrittoreVisto);
}

void tst_stampa::guastoAlRipristino()
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

void tst_stampa::letturaNegata()
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

void tst_stampa::nomi_data()
{
    QTest::addColumn<QStringList>("stampanti");
    QTest::addColumn<QString>("scelta");
    QTest::addColumn<QStringList>("impostate"); // copies written, in order

    const QString lungo(32, u'x');
    QTest::newRow("case counts") << QStringList{u"laser"_s, u"Laser"_s} << u"Laser"_s << QStringList{u"5"_s, u"2"_s};
    QTest::newRow("the start of a name is not the name")
        << QStringList{u"Laser 2"_s, u"Laser"_s} << u"Laser"_s << QStringList{u"5"_s, u"2"_s};
    QTest::newRow("32 characters count, and the first one is taken")
        << QStringList{lungo + u"A"_s, lungo + u"B"_s} << lungo + u"B"_s << QStringList{u"5"_s, u"1"_s};
    QTest::newRow("the 32nd differs") << QStringList{lungo.left(31) + u"A"_s, lungo.left(31) + u"B"_s}
                                      << lungo.left(31) + u"B"_s << QStringList{u"5"_s, u"2"_s};
}

void tst_stampa::nomi()
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

void tst_stampa::record()
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

void tst_stampa::daDialogo()
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
}

void tst_stampa::opzioni_data()
{
    using OpzioniStampante::Opzioni;
    QTest::addColumn<Opzioni>("prima");
    QTest::addColumn<Opzioni>("cambio"); // options of the record that is merged in
    QTest::addColumn<Opzioni>("dopo");

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
    QTest::newRow("colour") << Opzioni{{"print-color-mode", "auto"}} << Opzioni{{"print-color-mode", "monochrome"}}
                            << Opzioni{{"print-color-mode", "monochrome"}};
    QTest::newRow("an option of another kind stays")
        << Opzioni{{"fit-to-page", "true"}} << due
        << Opzioni{{"fit-to-page", "true"}, {"sides", "two-sided-long-edge"}};
}

void tst_stampa::opzioni()
{
    QFETCH(OpzioniStampante::Opzioni, prima);
    QFETCH(OpzioniStampante::Opzioni, cambio);
    QFETCH(OpzioniStampante::Opzioni, dopo);
    const DevMode record = OpzioniStampante::InRecord("Laser", cambio);
    QCOMPARE(record.NomeDispositivo(), "Laser");
    QCOMPARE(OpzioniStampante::Unisci(prima, record), dopo);
}

void tst_stampa::opzioniComeByte()
{
    const OpzioniStampante::Opzioni opzioni{{"media", "A4"}, {"sides", ""}, {"copies", "3"}};
    const QByteArray byte = OpzioniStampante::InByte(opzioni);
    QCOMPARE(OpzioniStampante::DaByte(byte + QByteArray(100, 'x')), opzioni);
    for (qsizetype taglio = 0; taglio < byte.size(); ++taglio)
        QCOMPARE(OpzioniStampante::DaByte(byte.left(taglio)), OpzioniStampante::Opzioni());
    QCOMPARE(OpzioniStampante::DaByte(QByteArray(64, '\xff')), OpzioniStampante::Opzioni());
}

void tst_stampa::testo_data()
{
    QTest::addColumn<QString>("testo");
    QTest::addColumn<QString>("atteso"); // without white space; null: the text itself

    QString lunga;
    for (int i = 0; i < 3000; ++i)
        lunga += u"%1,"_s.arg(i);
    QTest::newRow("empty") << QString() << u""_s;
    QTest::newRow("one line") << u"<P ALIGN=left>testo</P>"_s << QString();
    QTest::newRow("all kinds of line ends") << u"a\r\nb\nc\rd\r\n\r\ne"_s << u"abcde"_s;
    QTest::newRow("a line of 13,000 characters") << lunga << QString();
    QTest::newRow("a line of many words") << u"parola "_s.repeated(2000) << QString();
    QTest::newRow("a part ends at a line end") << QString(1024, u'x') + u"\r\ny"_s << QString();
    QTest::newRow("tabs") << u"a\tb\t\tc"_s << u"abc"_s;
    QTest::newRow("Chinese") << u"<p>网页编辑器 網頁編輯器</p>"_s << QString();
    QTest::newRow("NUL and what else has no picture") << u"a"_s + QChar(0) + u"b\u2028c\uFFFCd"_s << QString();
    QTest::newRow("accents and signs") << u"è perché « € »"_s << QString();
}

void tst_stampa::testo()
{
    QFETCH(QString, testo);
    QFETCH(QString, atteso);
    Stampata prova(testo);
    prova.Stampa();
    QCOMPARE(prova.esito, EsitoStampa::Fatta);
    if (testo.contains(QChar(0))) {
        // Which sign stands for them is the font's affair; the letters around them are all there.
        const QString letto = prova.Testo();
        for (const QChar lettera : {u'a', u'b', u'c', u'd'})
            QCOMPARE(letto.count(lettera), 1);
        return;
    }
    QCOMPARE(prova.Testo(), atteso.isNull() ? SenzaBianchi(testo) : atteso);
}

void tst_stampa::pagine()
{
    QString testo;
    for (int i = 1; i <= 500; ++i)
        testo += u"riga%1\r\n"_s.arg(i);
    Stampata prova(testo);
    prova.Stampa();
    const QStringList pagine = prova.Pagine();
    QVERIFY(pagine.size() > 5 && pagine.size() < 15);
    for (qsizetype i = 0; i < pagine.size(); ++i)
        QVERIFY2(pagine.at(i).contains(u"Pagina %1 di %2"_s.arg(i + 1).arg(pagine.size())), qPrintable(pagine.at(i)));
    QCOMPARE(prova.Testo(), SenzaBianchi(testo));

    prova.opzioni.pagine = QPageRanges::fromString(u"2,4-5"_s);
    prova.Stampa();
    QCOMPARE(prova.Pagine(), (QStringList{pagine.at(1), pagine.at(3), pagine.at(4)}));

    prova.opzioni.inverse = true;
    prova.Stampa();
    QCOMPARE(prova.Pagine(), (QStringList{pagine.at(4), pagine.at(3), pagine.at(1)}));

    // Lines that a layout has to measure break at the same places as those that are only counted.
    prova.opzioni = {u"pagina.html"_s, {}, false, false};
    prova.pad.ImpostaText(QString(testo).replace(u"riga"_s, u"rig\u00e0"_s));
    prova.Stampa();
    QCOMPARE(prova.Pagine().size(), pagine.size());
}

void tst_stampa::selezione()
{
    Stampata prova(u"prima\r\nscelta\r\ndopo"_s);
    prova.pad.Colora(7, 6, SchemaColori::Valore);
    prova.pad.Seleziona(7, 6);
    const TestoStampa scelta = TestoStampa::Da(prova.pad, true);
    QCOMPARE(scelta.testo, u"scelta"_s);
    QCOMPARE(scelta.tratti.size(), size_t(1));
    QCOMPARE(scelta.tratti.front().aspetto.colore, SchemaColori::Valore);
    prova.Stampa(true);
    QCOMPARE(prova.Testo(), u"scelta"_s);
    prova.Stampa(false);
    QCOMPARE(prova.Testo(), u"primasceltadopo"_s);
}

void tst_stampa::aspetto()
{
    const auto rosso = [](QColor c) { return c.red() > 200 && c.green() < 90 && c.blue() < 40; };
    const auto arancio = [](QColor c) { return c.red() > 220 && c.green() > 80 && c.green() < 170 && c.blue() < 140; };
    const auto colorato = [](QColor c) { return c.saturation() > 60; };
    Stampata prova(QString(40, u'M') + u"\r\n"_s + QString(40, u'M'));
    prova.Stampa();
    QCOMPARE(Pixel(prova.Immagine(), colorato), 0);
    prova.pad.Colora(0, 40, SchemaColori::Valore);
    prova.Stampa();
    QVERIFY(Pixel(prova.Immagine(), rosso) > 300);
    prova.pad.Colora(0, 40, SchemaColori::Testo);
    prova.pad.Sottolinea(42, 40, true);
    prova.Stampa();
    QVERIFY(Pixel(prova.Immagine(), arancio) > 100);
    prova.opzioni.grigi = true;
    prova.Stampa();
    QCOMPARE(Pixel(prova.Immagine(), colorato), 0);
}

void tst_stampa::annullata()
{
    Stampata prova(u"riga\r\n"_s.repeated(2000));
    int passi = 0;
    prova.Stampa(false, [&passi](qsizetype, qsizetype) { return ++passi < 3; });
    QCOMPARE(prova.esito, EsitoStampa::Annullata);
    QCOMPARE(passi, 3);

    qsizetype ultimo = 0;
    bool cresce = true;
    prova.Stampa(false, [&](qsizetype fatto, qsizetype massimo) {
        cresce = cresce && fatto >= ultimo && fatto <= massimo;
        ultimo = fatto;
        return true;
    });
    QCOMPARE(prova.esito, EsitoStampa::Fatta);
    QVERIFY(cresce && ultimo > 0);
}

QTEST_MAIN(tst_stampa)
#include "tst_stampa.moc"
