#include "app/Comandi.h"
#include "app/ModuloDichiarazioni.h"
#include "app/NuovaPagina.h"
#include "app/TabellaLingua.h"
#include "dialogs/FrmModelli.h"
#include "dialogs/Modelli.h"
#include "dialogs/PaginaVuota.h"
#include "html/ModuloTag.h"
#include "platform/FilePagina.h"
#include "platform/RichTextBox.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QKeyEvent>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

// The templates dialog and the template pages that are shipped.
class TstModelli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void arrangement_data();
    void arrangement();
    void iconsStandWhereTheyAreArranged();
    void choosing_data();
    void choosing();
    void noSelectionGivesTheBlankPage();
    void closingKeepsTheText();
    void textOfATemplate_data();
    void textOfATemplate();
    void templatesThatCannotBeRead();
    void previewFollowsTemplatesOnly();
    void skipping();
    void wayBack();
    void shippedPages_data();
    void shippedPages();

private:
    [[nodiscard]] QString Scegli(const std::function<void(QDialog &)> &azione);
    void Scrivi(QStringView nome, const QByteArray &contenuto);

    QTemporaryDir m_impostazioni;
    std::unique_ptr<QTemporaryDir> m_cartella;
    NuovaPagina::Esito m_esito;
};

namespace
{

constexpr auto Sorgenti = CARTELLA_SORGENTI;
const QString Prima = u"testo di prima"_s;

/// Every finding of a plain walk over the tags of \a pagina: unknown names, attributes and values.
QStringList Sconosciuti(const QString &pagina)
{
    static const QRegularExpression forma(u"<(/?)([A-Za-z][A-Za-z0-9]*)([^<>]*)>"_s);
    static const QRegularExpression attributo(u"([A-Za-z-]+)(?:=\"([^\"]*)\")?"_s);
    QStringList sconosciuti;
    for (const QRegularExpressionMatch &tag : forma.globalMatch(pagina)) {
        const QString nome = tag.captured(2);
        if (!ModuloTag::EsisteTag(nome))
            sconosciuti += nome;
        for (const QRegularExpressionMatch &uno : attributo.globalMatch(tag.captured(3))) {
            const QString quale = uno.captured(1);
            const QString valore = uno.captured(2);
            if (ModuloTag::VerificaAttributo(nome, quale) != 1)
                sconosciuti += nome + u' ' + quale;
            else if (!valore.isEmpty() && ModuloTag::VerificaValore(nome, quale, valore) != 1)
                sconosciuti += nome + u' ' + quale + u'=' + valore;
        }
    }
    return sconosciuti;
}

} // namespace

void TstModelli::initTestCase()
{
    QCoreApplication::setApplicationName(u"Velloro"_s);
    QCoreApplication::setOrganizationName(u"Velloro"_s);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_impostazioni.path());
    const QString dati = QString::fromUtf8(Sorgenti) + u"/data"_s;
    QCOMPARE(ModuloPrincipale::CaricaLingua(dati, ModuloPrincipale::LinguaItaliano).errore, QString());
    QVERIFY(ModuloTag::CaricaTag(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db")).Riuscito());
    QCOMPARE(Sconosciuti(u"<BLINC><P colour=\"red\"><DIV align=\"middel\">"_s).size(), 3);
}

void TstModelli::init()
{
    QSettings().clear();
    m_cartella = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_cartella->path()).mkdir(u"modelli"_s));
    for (const Modelli::Modello &modello : Modelli::Elenco()) {
        if (!modello.file.isEmpty())
            Scrivi(modello.file, modello.immagine.toUtf8() + "\r\n");
    }
    ModuloDichiarazioni::ImpostaCartellaProgramma(m_cartella->path());
}

void TstModelli::Scrivi(QStringView nome, const QByteArray &contenuto)
{
    QFile file(m_cartella->filePath(nome.toString()));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contenuto), contenuto.size());
}

/// What the page holds after the New command has shown the dialog and \a azione was done to it.
QString TstModelli::Scegli(const std::function<void(QDialog &)> &azione)
{
    RichTextBox pad;
    pad.ImpostaText(Prima);
    QTimer::singleShot(0, &pad, [&azione] {
        auto *dialogo = qobject_cast<FrmModelli *>(QApplication::activeModalWidget());
        QVERIFY(dialogo);
        azione(*dialogo);
        // A step that failed must not keep the dialog open for ever.
        if (dialogo->isVisible())
            dialogo->reject();
    });
    m_esito = NuovaPagina::Scegli(pad, nullptr);
    QCoreApplication::sendPostedEvents(&pad);
    return pad.Text();
}

void TstModelli::arrangement_data()
{
    QTest::addColumn<double>("altezza");
    QTest::addColumn<double>("larghezza");
    QTest::addColumn<QList<QPoint>>("posti");
    QTest::newRow("rows break where the next icon would begin too far right")
        << 1000.0 << 4000.0 << QList<QPoint>{{400, 20}, {1900, 20}, {3400, 20}, {400, 1520}, {1900, 1520}};
    QTest::newRow("a place on the limit still holds")
        << 1000.0 << 3900.0 << QList<QPoint>{{400, 20}, {1900, 20}, {3400, 20}, {400, 1520}, {1900, 1520}};
    QTest::newRow("one twip less does not")
        << 1000.0 << 3899.0 << QList<QPoint>{{400, 20}, {1900, 20}, {400, 1520}, {1900, 1520}, {400, 3020}};
    QTest::newRow("narrower than an icon: one below the other")
        << 1000.0 << 10.0 << QList<QPoint>{{400, 20}, {400, 1520}, {400, 3020}, {400, 4520}, {400, 6020}};
    QTest::newRow("the height is rounded, its half cut off")
        << 1000.6 << 10.0 << QList<QPoint>{{400, 20}, {400, 1521}, {400, 3022}, {400, 4523}, {400, 6024}};
}

void TstModelli::arrangement()
{
    QFETCH(double, altezza);
    QFETCH(double, larghezza);
    QFETCH(QList<QPoint>, posti);
    QCOMPARE(Modelli::Disposizione(altezza, larghezza, 5), posti);
    QCOMPARE(Modelli::Disposizione(altezza, larghezza, 0), QList<QPoint>());
}

void TstModelli::iconsStandWhereTheyAreArranged()
{
    RichTextBox pad;
    FrmModelli dialogo(&pad);
    dialogo.show();
    auto *elenco = dialogo.findChild<QListWidget *>(u"LstView"_s);
    for (const int larghezza : {720, 1000}) {
        dialogo.resize(larghezza, 600);
        QCoreApplication::sendPostedEvents();
        const QList<QPoint> posti = Modelli::Disposizione(elenco->visualItemRect(elenco->item(0)).height() * 15,
                                                          elenco->viewport()->width() * 15, elenco->count());
        for (int i = 0; i < elenco->count(); ++i)
            QTRY_COMPARE(elenco->visualItemRect(elenco->item(i)).topLeft(), (posti[i].toPointF() / 15).toPoint());
    }
}

void TstModelli::choosing_data()
{
    QTest::addColumn<int>("riga");
    QTest::addColumn<QString>("testo");
    QTest::newRow("untouched list") << -1 << u"campagna_avanzata\r"_s;
    QTest::newRow("blank page") << 0 << PaginaVuota::Testo();
    QTest::newRow("second") << 1 << u"campagna_semplice\r"_s;
    QTest::newRow("third") << 2 << u"campagna_avanzata\r"_s;
    QTest::newRow("fourth") << 3 << u"newsletter_semplice\r"_s;
    QTest::newRow("fifth") << 4 << u"newsletter_avanzata\r"_s;
}

void TstModelli::choosing()
{
    QFETCH(int, riga);
    QFETCH(QString, testo);
    const auto conOk = [riga](QDialog &dialogo) {
        if (riga >= 0)
            dialogo.findChild<QListWidget *>(u"LstView"_s)->setCurrentRow(riga);
        QTest::keyClick(&dialogo, Qt::Key_Return);
    };
    QCOMPARE(Scegli(conOk), testo);
    QVERIFY(m_esito.iniziata);
    QCOMPARE(m_esito.avviso, QString());
    if (riga < 0)
        return;
    const auto conClic = [riga](QDialog &dialogo) {
        auto *elenco = dialogo.findChild<QListWidget *>(u"LstView"_s);
        const QRect posto = elenco->visualItemRect(elenco->item(riga));
        QTest::mouseClick(elenco->viewport(), Qt::LeftButton, Qt::NoModifier, posto.center());
    };
    QCOMPARE(Scegli(conClic), testo);
    QVERIFY(m_esito.iniziata);
}

void TstModelli::noSelectionGivesTheBlankPage()
{
    const auto niente = [](QDialog &dialogo) {
        dialogo.findChild<QListWidget *>(u"LstView"_s)->clearSelection();
        dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
    };
    QCOMPARE(Scegli(niente), PaginaVuota::Testo());
    QCOMPARE(Scegli([](QDialog &dialogo) { dialogo.findChild<QPushButton *>(u"Cmd(1)"_s)->click(); }),
             PaginaVuota::Testo());
    QCOMPARE(PaginaVuota::Testo().size(), 231);
}

void TstModelli::closingKeepsTheText()
{
    QCOMPARE(Scegli([](QDialog &dialogo) { dialogo.close(); }), Prima);
    QVERIFY(!m_esito.iniziata);
    QCOMPARE(Scegli([](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Escape); }), Prima);
    QVERIFY(!m_esito.iniziata);
}

void TstModelli::textOfATemplate_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("testo");
    QTest::newRow("the last line feed is dropped") << QByteArray("a\r\nb\r\n") << u"a\r\nb\r"_s;
    QTest::newRow("lines that end with CR") << QByteArray("a\rb\r") << u"a\r\nb\r"_s;
    QTest::newRow("last line without an end") << QByteArray("a\nb") << u"a\r\nb\r"_s;
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("binary stays, byte for byte a character")
        << QByteArray("GIF89a\x00\xFF\x01", 9) << u"GIF89a\0\u00FF\x01"_s;
}

void TstModelli::textOfATemplate()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, testo);
    Scrivi(Modelli::Elenco()[2].file, file);
    QCOMPARE(Scegli([](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Return); }), testo);
}

void TstModelli::templatesThatCannotBeRead()
{
    const QString percorso = Modelli::Percorso(Modelli::Elenco()[2]);
    const auto avvisoAtteso = [&](qint16 motivo) { return Messaggio(375).arg(percorso, Messaggio(motivo)); };
    const auto conOk = [](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Return); };
    QVERIFY(QFile::remove(percorso));
    QCOMPARE(Scegli(conOk), QString());
    QCOMPARE(m_esito.avviso, avvisoAtteso(332));
    QVERIFY(QDir().mkdir(percorso));
    QCOMPARE(Scegli(conOk), QString());
    QCOMPARE(m_esito.avviso, avvisoAtteso(381));
    QVERIFY(QDir().rmdir(percorso));
    // Opening a pipe that nobody writes to would wait for ever.
    QCOMPARE(::mkfifo(QFile::encodeName(percorso).constData(), 0600), 0);
    QCOMPARE(Scegli(conOk), QString());
    QCOMPARE(m_esito.avviso, avvisoAtteso(381));
    QVERIFY(QFile::remove(percorso));
    // A sparse file: larger than any page may be, and no byte of it on the disk.
    QFile enorme(percorso);
    QVERIFY(enorme.open(QIODevice::WriteOnly) && enorme.resize(ModuloPrincipale::MassimoPagina + 1));
    enorme.close();
    QCOMPARE(Scegli(conOk), QString());
    QCOMPARE(m_esito.avviso, avvisoAtteso(382));
}

void TstModelli::previewFollowsTemplatesOnly()
{
    for (int riga = 0; riga < 2; ++riga) {
        RichTextBox pad;
        FrmModelli dialogo(&pad);
        dialogo.show();
        QStringList visto;
        connect(&dialogo, &FrmModelli::AnteprimaRichiesta, this,
                [&] { visto += pad.Text() + (dialogo.isVisible() ? u"open"_s : u"closed"_s); });
        dialogo.findChild<QListWidget *>(u"LstView"_s)->setCurrentRow(riga);
        dialogo.findChild<QPushButton *>(u"Cmd(0)"_s)->click();
        QCOMPARE(visto, riga == 0 ? QStringList() : QStringList{u"campagna_semplice\rclosed"_s});
    }
}

void TstModelli::skipping()
{
    const auto spunta = [](QDialog &dialogo) {
        QTest::keyClick(dialogo.findChild<QCheckBox *>(u"Chktip"_s), Qt::Key_Space);
        QTest::keyClick(&dialogo, Qt::Key_Return);
    };
    QVERIFY(Modelli::Mostra());
    QCOMPARE(Scegli(spunta), u"campagna_avanzata\r"_s);
    QVERIFY(!Modelli::Mostra());
    // From now on no dialog comes up.
    RichTextBox pad;
    QVERIFY(NuovaPagina::Scegli(pad, nullptr).iniziata);
    QCOMPARE(pad.Text(), PaginaVuota::Testo());
    QVERIFY(QDir(m_impostazioni.path()).exists(u"Velloro"_s));
}

void TstModelli::wayBack()
{
    QMainWindow finestra;
    Comandi comandi;
    comandi.CostruisciMenu(finestra.menuBar());
    NuovaPagina::CollegaComando(comandi, finestra);
    auto *voce = finestra.findChild<QAction *>(u"MenuStrumenti(6)"_s);
    QVERIFY(voce && voce->isEnabled());
    QVERIFY(voce->isChecked());
    voce->trigger();
    QVERIFY(!Modelli::Mostra());
    // Switched off in the dialog in the meantime: the menu knows when it opens.
    voce->trigger();
    QVERIFY(Modelli::Mostra());
    Modelli::ImpostaMostra(false);
    emit comandi.MenuAperto(u"Mstrumenti"_s);
    QVERIFY(!voce->isChecked());
}

void TstModelli::shippedPages_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("immagine");
    for (const Modelli::Modello &modello : Modelli::Elenco().subspan(1))
        QTest::newRow(modello.immagine.toUtf8()) << modello.file.toString() << modello.immagine.toString();
}

void TstModelli::shippedPages()
{
    QFETCH(QString, file);
    QFETCH(QString, immagine);
    QFile copia(QStringLiteral(CARTELLA_PROGRAMMA "/") + file);
    QFile sorgente(QString::fromUtf8(Sorgenti) + u'/' + file);
    QVERIFY(copia.open(QIODevice::ReadOnly) && sorgente.open(QIODevice::ReadOnly));
    const QByteArray byte = sorgente.readAll();
    QCOMPARE(copia.readAll(), byte);
    QCOMPARE(byte.count('\n'), byte.count("\r\n"));
    QVERIFY(byte.endsWith("</HTML>\r\n"));

    const QString pagina = QString::fromUtf8(byte);
    QCOMPARE(Sconosciuti(pagina), QStringList());
    // The caret of a new page goes to the line after this tag.
    QVERIFY(pagina.contains(u"<BODY>\r\n"_s));
    // Nothing is fetched: no addresses but those of links, which are nobody's.
    static const QRegularExpression indirizzo(u"https?:|//|url\\(|@import| src="_s);
    QCOMPARE(indirizzo.match(QString(pagina).remove(u"href=\"http://www.example.com/\""_s)).captured(), QString());
    static const QRegularExpression collegamento(
        u"href=\"(?!http://www\\.example\\.com/|mailto:nome@example\\.com|#)"_s);
    QCOMPARE(collegamento.match(pagina).captured(), QString());
    // Every link within the page leads somewhere, and every element that needs an end has one.
    static const QRegularExpression interno(u"href=\"#([^\"]+)\""_s);
    for (const QRegularExpressionMatch &uno : interno.globalMatch(pagina))
        QVERIFY2(pagina.contains(u" id=\"%1\""_s.arg(uno.captured(1))), qPrintable(uno.captured(1)));
    static const QRegularExpression forma(u"<(/?)([A-Z][A-Z0-9]*)\\b[^<>]*>"_s);
    QStringList aperti;
    for (const QRegularExpressionMatch &tag : forma.globalMatch(pagina)) {
        const QString nome = tag.captured(2);
        if (!ModuloTag::ArrayTag()[ModuloTag::CasellaTag(nome)].CloseTag)
            continue;
        if (tag.captured(1).isEmpty())
            aperti += nome;
        else
            QCOMPARE(aperti.isEmpty() ? QString() : aperti.takeLast(), nome);
    }
    QCOMPARE(aperti, QStringList());

    RichTextBox pad;
    const FrmModelli dialogo(&pad); // makes the pictures known
    QCOMPARE(QPixmap(u":/modelli/%1.png"_s.arg(immagine)).size(), QSize(288, 216));
}

QTEST_MAIN(TstModelli)
#include "tst_modelli.moc"
