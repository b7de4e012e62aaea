#include "platform/Dialoghi.h"
#include "platform/FilePagina.h"
#include "platform/FiltriDialogo.h"
#include "platform/NomiFile.h"
#include "Colonne.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <QWindow>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace ModuloPrincipale;

namespace
{

const QString FiltroPagine =
    u"HTML / ASP (*.html, *.htm, *.asp)"_s + QChar(0) + u"*.html;*.htm;*.asp"_s + QString(2, QChar(0));

const QString NonTesto = NomiFile::DaOspite("caff\xE9.txt");

QString Zeri(QString testo)
{
    return testo.replace(u'|', QChar(0));
}

} // namespace

class TstDialoghi : public QObject
{
    Q_OBJECT

public slots:
    void apri(const QUrl &url) { m_aperto = url; }

private slots:
    void initTestCase()
    {
        for (const QString &nome : {u"a.html"_s, u"B.HTML"_s, u"c.txt"_s, u"d"_s, u"senza"_s}) {
            QFile file(m_cartella.filePath(nome));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("%PDF-1.4");
        }
        FormatoPagina formato;
        QVERIFY(ScriviTesto(u"x", m_cartella.filePath(NonTesto), formato));
    }

    // The folder would not go with it.
    void cleanupTestCase() { QCOMPARE(unlink(NomiFile::PerOspite(m_cartella.filePath(NonTesto)).constData()), 0); }

    void filters_data()
    {
        Colonne<QString, QStringList>({"filtro", "qt"});

        const QString tutti = u"All Files (*)"_s;
        QTest::newRow("empty") << QString() << QStringList{tutti};
        QTest::newRow("pages") << FiltroPagine
                               << QStringList{
                                      u"HTML / ASP (*.html, *.htm, *.asp) (*.html *.HTML *.htm *.HTM *.asp *.ASP)"_s,
                                      tutti};
        QTest::newRow("all files given") << Zeri(u"All Files|*.*||"_s) << QStringList{tutti};
        QTest::newRow("two filters") << Zeri(u"A|*.1|B|*.*||"_s) << QStringList{u"A (*.1)"_s, u"B (*)"_s};
        QTest::newRow("pattern without an end") << Zeri(u"A|*.1"_s) << QStringList{u"A (*.1)"_s, tutti};
    }

    void filters()
    {
        QFETCH(QString, filtro);
        QFETCH(QStringList, qt);
        QCOMPARE(FiltriQt(filtro), qt);
    }

    void buffer_data()
    {
        Colonne<QString, QStringList>({"buffer", "elenco"});

        const QString resto = QString(1000, u' ') + QString(2, QChar(0));
        QTest::newRow("nothing") << resto << QStringList{QString()};
        QTest::newRow("one file") << Zeri(u"C:\\siti\\a b.htm|"_s) + resto << QStringList{u"C:\\siti\\a b.htm"_s};
        QTest::newRow("several") << Zeri(u"C:\\siti|a.htm|b.htm||"_s) + resto
                                 << QStringList{u"C:\\siti\\a.htm"_s, u"C:\\siti\\b.htm"_s};
        QTest::newRow("root of a drive") << Zeri(u"C:\\|a.htm|b.htm||"_s) + resto
                                         << QStringList{u"C:\\a.htm"_s, u"C:\\b.htm"_s};
        QTest::newRow("proposed name over the blanks") << u"  /pub/x.htm"_s + resto << QStringList{u"/pub/x.htm"_s};
    }

    void buffer()
    {
        QFETCH(QString, buffer);
        QFETCH(QStringList, elenco);
        QCOMPARE(ElencoDaBuffer(buffer), elenco);
        for (const QStringList &percorsi :
             {QStringList{u"/x/a"_s, u"/x/b c"_s, u"/x/d"_s}, QStringList{u"/a"_s, u"/b"_s}, QStringList{u"/x/y"_s}})
            QCOMPARE(ElencoDaBuffer(BufferDaElenco(percorsi)), percorsi);
    }

    void chosenPath_data()
    {
        using Risposta = QMessageBox::StandardButton;
        // risposta: to the one question; NoButton: none is asked
        Colonne<bool, QString, Risposta, QString>({"salva", "digitato", "risposta", "atteso"});
        const auto riga = [](const char *regola, bool salva, const QString &digitato, Risposta risposta,
                             const QString &atteso) {
            QTest::newRow(regola) << salva << digitato << risposta << atteso;
        };
        riga("open: file", false, u"a.html"_s, QMessageBox::NoButton, u"a.html"_s);
        riga("open: file without an extension", false, u"senza"_s, QMessageBox::NoButton, u"senza"_s);
        riga("open: name that is no text, as it is listed", false, u"caff\\xE9.txt"_s, QMessageBox::NoButton, NonTesto);
        riga("open: cancelled", false, {}, QMessageBox::NoButton, {});
        riga("open: new file without an extension", false, u"nuovo"_s, QMessageBox::Yes, u"nuovo.bas"_s);
        riga("open: new file refused", false, u"nuovo.html"_s, QMessageBox::No, {});
        riga("save: without an extension", true, u"Pagina Web"_s, QMessageBox::NoButton, u"Pagina Web.dat"_s);
        riga("save: over a file", true, u"a.html"_s, QMessageBox::Yes, u"a.html"_s);
        riga("save: not over a file", true, u"a.html"_s, QMessageBox::No, {});
        riga("save: cancelled", true, {}, QMessageBox::NoButton, {});
    }

    void chosenPath()
    {
        QFETCH(bool, salva);
        QFETCH(QString, digitato);
        QFETCH(QMessageBox::StandardButton, risposta);
        QFETCH(QString, atteso);
        QStringList risultato{u"vecchio"_s};
        Rispondi(digitato, risposta);
        if (salva)
            SalvaFileDialogo(nullptr, risultato.first(), FiltroPagine, m_cartella.path(), u"Pagina Web"_s, u"Salva"_s,
                             u"dat"_s);
        else
            ApriFileDialogo(nullptr, risultato, false, FiltroPagine, m_cartella.path(), {}, {});
        QCOMPARE(risultato, QStringList{atteso.isEmpty() ? QString() : m_cartella.filePath(atteso)});
        QCOMPARE(m_domande.size(), risposta == QMessageBox::NoButton ? 0 : 1);
    }

    void openingSeveral()
    {
        QStringList risultato;
        Rispondi(u"\"a.html\" \"c.txt\" \"d\""_s);
        ApriFileDialogo(nullptr, risultato, true, {}, m_cartella.path(), {}, {});
        QCOMPARE(risultato, (QStringList{m_cartella.filePath(u"a.html"_s), m_cartella.filePath(u"c.txt"_s),
                                         m_cartella.filePath(u"d"_s)}));
    }

    void openShowsWhatItWasGiven()
    {
        QStringList titoli;
        QStringList nomi;
        int ferme = 0;
        for (const QString &titolo : {QString(), u"Apri"_s}) {
            QTimer::singleShot(0, this, [&] {
                auto *dialogo = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
                titoli << dialogo->windowTitle() << dialogo->findChild<QLineEdit *>(u"fileNameEdit"_s)->text()
                       << dialogo->selectedNameFilter().first(10) << dialogo->directory().path();
                auto *elenco = dialogo->findChild<QTreeView *>(u"treeView"_s);
                const auto visibili = [elenco] {
                    QStringList trovati;
                    for (int i = 0; i < elenco->model()->rowCount(elenco->rootIndex()); ++i)
                        trovati << elenco->model()->index(i, 0, elenco->rootIndex()).data().toString();
                    trovati.sort();
                    return trovati;
                };
                [&] { QTRY_COMPARE(visibili(), (QStringList{u"B.HTML"_s, u"a.html"_s})); }();
                // Qt's list ends the program when its chosen file goes away.
                auto *modello = dialogo->findChild<QFileSystemModel *>();
                ferme += modello->testOption(QFileSystemModel::DontWatchForChanges);
                // Which kind a file is of is not found by reading it: some of the system's let wait for ever.
                nomi << dialogo->iconProvider()->type(QFileInfo(m_cartella.filePath(u"senza"_s)));
                dialogo->reject();
            });
            QStringList risultato;
            ApriFileDialogo(nullptr, risultato, false, FiltroPagine, m_cartella.path(), u"a.html"_s, titolo);
            QCOMPARE(risultato, QStringList{QString()});
        }
        const QString ignota = QMimeDatabase().mimeTypeForName(u"application/octet-stream"_s).comment();
        QCOMPARE(nomi, (QStringList{ignota, ignota}));
        const QStringList resto{u"a.html"_s, u"HTML / ASP"_s, m_cartella.path()};
        QCOMPARE(ferme, 2);
        QCOMPARE(titoli, QStringList{u"Select File/s"_s} + resto + QStringList{u"Apri"_s} + resto);
    }

    void shellOpensTheFile()
    {
        QDesktopServices::setUrlHandler(u"file"_s, this, "apri");
        QVERIFY(QDir::setCurrent(m_cartella.path()));
        ApriConShell(u"strano #%20?.html"_s);
        QDesktopServices::unsetUrlHandler(u"file"_s);
        QCOMPARE(m_aperto.toLocalFile(), QDir::currentPath() + u"/strano #%20?.html"_s);
    }

    void foremostStaysInPlace()
    {
        QWidget finestra;
        QWidget figlio(&finestra);
        finestra.setGeometry(40, 50, 300, 200);
        finestra.show();
        QVERIFY(QTest::qWaitForWindowExposed(&finestra));
        const QRect prima = finestra.geometry();
        InPrimoPiano(&figlio);
        QVERIFY(finestra.isVisible() && finestra.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
        QCOMPARE(finestra.geometry(), prima);
        NonInPrimoPiano(&finestra);
        QVERIFY(finestra.isVisible() && !finestra.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
        QCOMPARE(finestra.geometry(), prima);

        QWidget nascosta;
        InPrimoPiano(&nascosta);
        QVERIFY(!nascosta.isVisible());
        nascosta.show();
        QVERIFY(nascosta.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    }

private:
    /// Types \a nome into the next file dialog and accepts, answers its question with \a risposta; an empty name, or a
    /// question answered with No, ends in Cancel.
    void Rispondi(const QString &nome, QMessageBox::StandardButton risposta = QMessageBox::NoButton)
    {
        m_domande.clear();
        QTimer::singleShot(0, this, [this, nome, risposta] {
            auto *dialogo = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialogo);
            if (nome.isEmpty()) {
                dialogo->reject();
                return;
            }
            dialogo->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(nome);
            QTimer::singleShot(0, this, [this, risposta, dialogo] {
                auto *domanda = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                if (!domanda)
                    return;
                m_domande << domanda->text();
                domanda->button(risposta)->click();
                QTimer::singleShot(0, dialogo, &QDialog::reject);
            });
            QMetaObject::invokeMethod(dialogo, "accept");
        });
    }

    QTemporaryDir m_cartella;
    QStringList m_domande;
    QUrl m_aperto;
};

QTEST_MAIN(TstDialoghi)
#include "tst_dialoghi.moc"
