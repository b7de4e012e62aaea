#include "platform/Dialoghi.h"
#include "platform/FiltriDialogo.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace ModuloPrincipale;

namespace
{

const QString FiltroPagine =
    u"HTML / ASP (*.html, *.htm, *.asp)"_s + QChar(0) + u"*.html;*.htm;*.asp"_s + QString(2, QChar(0));

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
    void initTestCase();
    void filters_data();
    void filters();
    void buffer_data();
    void buffer();
    void openingGivesThePath_data();
    void openingGivesThePath();
    void openingSeveral();
    void openShowsWhatItWasGiven();
    void saving_data();
    void saving();
    void shellOpensTheFile();
    void foremostStaysInPlace();

private:
    void Rispondi(const QString &nome, QMessageBox::StandardButton risposta = QMessageBox::NoButton);

    QTemporaryDir m_cartella;
    QStringList m_domande;
    QUrl m_aperto;
};

void TstDialoghi::initTestCase()
{
    for (const QString &nome : {u"a.html"_s, u"B.HTML"_s, u"c.txt"_s, u"d"_s, u"senza"_s}) {
        QFile file(m_cartella.filePath(nome));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
}

/// Types \a nome into the next file dialog and accepts, answers its question with \a risposta; an empty name, or a
/// question answered with No, ends in Cancel.
void TstDialoghi::Rispondi(const QString &nome, QMessageBox::StandardButton risposta)
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

void TstDialoghi::filters_data()
{
    QTest::addColumn<QString>("filtro");
    QTest::addColumn<QStringList>("qt");

    const QString tutti = u"All Files (*)"_s;
    QTest::newRow("empty") << QString() << QStringList{tutti};
    QTest::newRow("pages") << FiltroPagine
                           << QStringList{
                                  u"HTML / ASP (*.html, *.htm, *.asp) (*.html *.HTML *.htm *.HTM *.asp *.ASP)"_s,
                                  tutti};
    QTest::newRow("all files given") << Zeri(u"All Files|*.*||"_s) << QStringList{tutti};
    QTest::newRow("two filters") << Zeri(u"A|*.1|B|*.*||"_s) << QStringList{u"A (*.1)"_s, u"B (*)"_s};
    QTest::newRow("no pattern") << Zeri(u"A||"_s) << QStringList{tutti};
    QTest::newRow("nothing after the double zero") << Zeri(u"A|*.1||B|*.2||"_s) << QStringList{u"A (*.1)"_s, tutti};
    QTest::newRow("pattern without an end") << Zeri(u"A|*.1"_s) << QStringList{u"A (*.1)"_s, tutti};
    QTest::newRow("blanks between patterns") << Zeri(u"A|*.1; *.2 ;||"_s) << QStringList{u"A (*.1 *.2)"_s, tutti};
}

void TstDialoghi::filters()
{
    QFETCH(QString, filtro);
    QFETCH(QStringList, qt);
    QCOMPARE(FiltriQt(filtro), qt);
}

void TstDialoghi::buffer_data()
{
    QTest::addColumn<QString>("buffer");
    QTest::addColumn<QStringList>("elenco");

    const QString resto = QString(1000, u' ') + QString(2, QChar(0));
    QTest::newRow("nothing") << resto << QStringList{QString()};
    QTest::newRow("no buffer") << QString() << QStringList{QString()};
    QTest::newRow("one file") << Zeri(u"C:\\siti\\a b.htm|"_s) + resto << QStringList{u"C:\\siti\\a b.htm"_s};
    QTest::newRow("several") << Zeri(u"C:\\siti|a.htm|b.htm||"_s) + resto
                             << QStringList{u"C:\\siti\\a.htm"_s, u"C:\\siti\\b.htm"_s};
    QTest::newRow("root of a drive") << Zeri(u"C:\\|a.htm|b.htm||"_s) + resto
                                     << QStringList{u"C:\\a.htm"_s, u"C:\\b.htm"_s};
    QTest::newRow("slashes") << Zeri(u"/pub|a.htm|b.htm||"_s) + resto << QStringList{u"/pub/a.htm"_s, u"/pub/b.htm"_s};
    QTest::newRow("root with a slash") << Zeri(u"/|a.htm|b.htm||"_s) + resto << QStringList{u"/a.htm"_s, u"/b.htm"_s};
    QTest::newRow("proposed name over the blanks") << u"  /pub/x.htm"_s + resto << QStringList{u"/pub/x.htm"_s};
}

void TstDialoghi::buffer()
{
    QFETCH(QString, buffer);
    QFETCH(QStringList, elenco);
    QCOMPARE(ElencoDaBuffer(buffer), elenco);
    for (const QStringList &percorsi :
         {QStringList{u"/x/a"_s, u"/x/b c"_s, u"/x/d"_s}, QStringList{u"/a"_s, u"/b"_s}, QStringList{u"/x/y"_s}})
        QCOMPARE(ElencoDaBuffer(BufferDaElenco(percorsi)), percorsi);
}

void TstDialoghi::openingGivesThePath_data()
{
    QTest::addColumn<QString>("digitato");
    QTest::addColumn<QMessageBox::StandardButton>("risposta");
    QTest::addColumn<QString>("atteso");
    QTest::addColumn<int>("domande");

    QTest::newRow("file") << u"a.html"_s << QMessageBox::NoButton << u"a.html"_s << 0;
    QTest::newRow("file without an extension") << u"senza"_s << QMessageBox::NoButton << u"senza"_s << 0;
    QTest::newRow("cancelled") << u""_s << QMessageBox::NoButton << u""_s << 0;
    QTest::newRow("new file") << u"nuovo.html"_s << QMessageBox::Yes << u"nuovo.html"_s << 1;
    QTest::newRow("new file without an extension") << u"nuovo"_s << QMessageBox::Yes << u"nuovo.bas"_s << 1;
    QTest::newRow("new file refused") << u"nuovo.html"_s << QMessageBox::No << u""_s << 1;
}

void TstDialoghi::openingGivesThePath()
{
    QFETCH(QString, digitato);
    QFETCH(QMessageBox::StandardButton, risposta);
    QFETCH(QString, atteso);
    QFETCH(int, domande);
    QWidget finestra;
    QStringList risultato;
    Rispondi(digitato, risposta);
    ApriFileDialogo(&finestra, risultato, false, FiltroPagine, m_cartella.path(), {}, {});
    QCOMPARE(risultato, QStringList{atteso.isEmpty() ? QString() : m_cartella.filePath(atteso)});
    QCOMPARE(m_domande.size(), domande);
}

void TstDialoghi::openingSeveral()
{
    QStringList risultato;
    Rispondi(u"\"a.html\" \"c.txt\" \"d\""_s);
    ApriFileDialogo(nullptr, risultato, true, {}, m_cartella.path(), {}, {});
    QCOMPARE(risultato, (QStringList{m_cartella.filePath(u"a.html"_s), m_cartella.filePath(u"c.txt"_s),
                                     m_cartella.filePath(u"d"_s)}));
}

void TstDialoghi::openShowsWhatItWasGiven()
{
    QStringList titoli;
    QStringList nomi;
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
            dialogo->reject();
        });
        QStringList risultato;
        ApriFileDialogo(nullptr, risultato, false, FiltroPagine, m_cartella.path(), u"a.html"_s, titolo);
        QCOMPARE(risultato, QStringList{QString()});
    }
    const QStringList resto{u"a.html"_s, u"HTML / ASP"_s, m_cartella.path()};
    QCOMPARE(titoli, QStringList{u"Select File/s"_s} + resto + QStringList{u"Apri"_s} + resto);
}

void TstDialoghi::saving_data()
{
    QTest::addColumn<QString>("digitato");
    QTest::addColumn<QMessageBox::StandardButton>("risposta");
    QTest::addColumn<QString>("atteso");
    QTest::addColumn<int>("domande");

    QTest::newRow("with an extension") << u"x.html"_s << QMessageBox::NoButton << u"x.html"_s << 0;
    QTest::newRow("without one") << u"Pagina Web"_s << QMessageBox::NoButton << u"Pagina Web.dat"_s << 0;
    QTest::newRow("over a file") << u"a.html"_s << QMessageBox::Yes << u"a.html"_s << 1;
    QTest::newRow("not over a file") << u"a.html"_s << QMessageBox::No << u""_s << 1;
    QTest::newRow("cancelled") << u""_s << QMessageBox::NoButton << u""_s << 0;
}

void TstDialoghi::saving()
{
    QFETCH(QString, digitato);
    QFETCH(QMessageBox::StandardButton, risposta);
    QFETCH(QString, atteso);
    QFETCH(int, domande);
    QString risultato = u"vecchio"_s;
    Rispondi(digitato, risposta);
    SalvaFileDialogo(nullptr, risultato, FiltroPagine, m_cartella.path(), u"Pagina Web"_s, u"Salva"_s, u"dat"_s);
    QCOMPARE(risultato, atteso.isEmpty() ? QString() : m_cartella.filePath(atteso));
    QCOMPARE(m_domande.size(), domande);
}

void TstDialoghi::shellOpensTheFile()
{
    QDesktopServices::setUrlHandler(u"file"_s, this, "apri");
    QVERIFY(QDir::setCurrent(m_cartella.path()));
    ApriConShell(u"strano #%20?.html"_s);
    QDesktopServices::unsetUrlHandler(u"file"_s);
    QCOMPARE(m_aperto.toLocalFile(), QDir::currentPath() + u"/strano #%20?.html"_s);
}

void TstDialoghi::foremostStaysInPlace()
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

QTEST_MAIN(TstDialoghi)
#include "tst_dialoghi.moc"
