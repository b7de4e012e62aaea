#include "Aiuti.h"
#include "app/Comandi.h"
#include "app/ModuloDichiarazioni.h"
#include "app/NuovaPagina.h"
#include "app/TabellaLingua.h"
#include "dialogs/FrmModelli.h"
#include "dialogs/Modelli.h"
#include "dialogs/PaginaVuota.h"
#include "html/ModuloTag.h"
#include "html/VerificaDaRiga.h"
#include "platform/FilePagina.h"
#include "platform/RichTextBox.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr auto Sorgenti = CARTELLA_SORGENTI;
const QString Prima = u"testo di prima"_s;

} // namespace

// The templates dialog and the template pages that are shipped.
class TstModelli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(u"Velloro"_s);
        QCoreApplication::setOrganizationName(u"Velloro"_s);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_impostazioni.path());
        const QString dati = QString::fromUtf8(Sorgenti) + u"/data"_s;
        QCOMPARE(ModuloPrincipale::CaricaLingua(dati, ModuloPrincipale::LinguaItaliano).errore, QString());
        QVERIFY(ModuloTag::CaricaTag(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db")).Riuscito());
    }

    void init()
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

    void arrangement()
    {
        const auto attesi = [](std::initializer_list<std::pair<int, int>> posti) {
            QList<QPoint> punti;
            for (const auto &[x, y] : posti)
                punti += QPoint(x, y);
            return punti;
        };
        using Modelli::Disposizione;
        // A place on the limit still holds; one twip less does not.
        QCOMPARE(Disposizione(1000, 3900, 5), attesi({{400, 20}, {1900, 20}, {3400, 20}, {400, 1520}, {1900, 1520}}));
        QCOMPARE(Disposizione(1000, 3899, 5), attesi({{400, 20}, {1900, 20}, {400, 1520}, {1900, 1520}, {400, 3020}}));
        // Narrower than an icon. The height is rounded, its half cut off.
        QCOMPARE(Disposizione(1000.6, 10, 3), attesi({{400, 20}, {400, 1521}, {400, 3022}}));
        QCOMPARE(Disposizione(1000, 4000, 0), QList<QPoint>());
    }

    void iconsStandWhereTheyAreArranged()
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

    void choosing()
    {
        const auto conOk = [](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Return); };
        QCOMPARE(Scegli(conOk), u"campagna_avanzata\r"_s); // an untouched list
        for (int riga = 0; riga < int(Modelli::Elenco().size()); ++riga) {
            const QString testo =
                riga == 0 ? PaginaVuota::Testo() : Modelli::Elenco()[size_t(riga)].immagine.toString() + u'\r';
            const auto scelta = [riga](QDialog &dialogo) {
                dialogo.findChild<QListWidget *>(u"LstView"_s)->setCurrentRow(riga);
                QTest::keyClick(&dialogo, Qt::Key_Return);
            };
            const auto clic = [riga](QDialog &dialogo) {
                auto *elenco = dialogo.findChild<QListWidget *>(u"LstView"_s);
                const QRect posto = elenco->visualItemRect(elenco->item(riga));
                QTest::mouseClick(elenco->viewport(), Qt::LeftButton, Qt::NoModifier, posto.center());
            };
            for (const std::function<void(QDialog &)> &modo : {std::function<void(QDialog &)>(scelta), {clic}}) {
                QCOMPARE(Scegli(modo), testo);
                QVERIFY(m_esito.iniziata && m_esito.avviso.isEmpty());
            }
        }
    }

    void noSelectionGivesTheBlankPage()
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

    void closingKeepsTheText()
    {
        QCOMPARE(Scegli([](QDialog &dialogo) { dialogo.close(); }), Prima);
        QVERIFY(!m_esito.iniziata);
        QCOMPARE(Scegli([](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Escape); }), Prima);
        QVERIFY(!m_esito.iniziata);
    }

    void textOfATemplate()
    {
        for (const auto &[file, testo] : {std::pair("a\r\nb\r\n"_ba, u"a\r\nb\r"_s), // the last line feed is dropped
                                          {"a\rb\r"_ba, u"a\r\nb\r"_s},
                                          {"a\nb"_ba, u"a\r\nb\r"_s},
                                          {""_ba, QString()},
                                          {QByteArray("GIF89a\x00\xFF\x01", 9), u"GIF89a\0\u00FF\x01"_s}}) {
            Scrivi(Modelli::Elenco()[2].file, file);
            QCOMPARE(Scegli([](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Return); }), testo);
        }
    }

    void templatesThatCannotBeRead()
    {
        const QString percorso = Modelli::Percorso(Modelli::Elenco()[2]);
        const std::pair<std::function<bool()>, qint16> guasti[] = {
            {[&] { return QFile::remove(percorso); }, qint16(332)},
            {[&] { return QDir().mkdir(percorso); }, qint16(381)},
            // Opening a pipe that nobody writes to would wait for ever.
            {[&] { return QDir().rmdir(percorso) && ::mkfifo(QFile::encodeName(percorso).constData(), 0600) == 0; },
             qint16(381)},
            // A sparse file: larger than any page may be, and no byte of it on the disk.
            {[&] {
                 QFile enorme(percorso);
                 return QFile::remove(percorso) && enorme.open(QIODevice::WriteOnly) &&
                        enorme.resize(ModuloPrincipale::MassimoPagina + 1);
             },
             qint16(382)}};
        for (const auto &[guasta, motivo] : guasti) {
            QVERIFY(guasta());
            QCOMPARE(Scegli([](QDialog &dialogo) { QTest::keyClick(&dialogo, Qt::Key_Return); }), QString());
            QCOMPARE(m_esito.avviso, Messaggio(375).arg(percorso, Messaggio(motivo)));
        }
    }

    void skipping()
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

    void wayBack()
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

    void shippedPages_data()
    {
        QTest::addColumn<int>("quale");
        for (int i = 1; i < int(Modelli::Elenco().size()); ++i)
            QTest::newRow(Modelli::Elenco()[size_t(i)].immagine.toUtf8()) << i;
    }

    void shippedPages()
    {
        QFETCH(int, quale);
        const Modelli::Modello &modello = Modelli::Elenco()[size_t(quale)];
        QFile copia(QStringLiteral(CARTELLA_PROGRAMMA "/") + modello.file.toString());
        QFile sorgente(QString::fromUtf8(Sorgenti) + u'/' + modello.file.toString());
        QVERIFY(copia.open(QIODevice::ReadOnly) && sorgente.open(QIODevice::ReadOnly));
        const QByteArray byte = sorgente.readAll();
        QCOMPARE(copia.readAll(), byte);
        QCOMPARE(byte.count('\n'), byte.count("\r\n"));
        QVERIFY(byte.endsWith("</HTML>\r\n"));

        const QString pagina = QString::fromUtf8(byte);
        QCOMPARE(VerificaDaRiga::InRighe(modello.file.toString(), pagina), QString());
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
        QCOMPARE(QPixmap(u":/modelli/%1.png"_s.arg(modello.immagine)).size(), QSize(288, 216));
    }

private:
    QString Scegli(const std::function<void(QDialog &)> &azione)
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

    void Scrivi(QStringView nome, const QByteArray &byte)
    {
        Aiuti::Scrivi(m_cartella->filePath(nome.toString()), byte);
    }

    QTemporaryDir m_impostazioni;
    std::unique_ptr<QTemporaryDir> m_cartella;
    NuovaPagina::Esito m_esito;
};

QTEST_MAIN(TstModelli)
#include "tst_modelli.moc"
