#include "ProvaMotore.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/Anteprima.h"
#include "dialogs/CaricaMotore.h"
#include "dialogs/FrmAnteprima.h"
#include "platform/RichTextBox.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

void Salva(const QString &percorso, const QByteArray &byte)
{
    QDir().mkpath(QFileInfo(percorso).path());
    QFile file(percorso);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size());
}

} // namespace

ProvaMotore::ProvaMotore() = default;
ProvaMotore::~ProvaMotore() = default;

void ProvaMotore::initTestCase()
{
    ModuloDichiarazioni::ImpostaCartellaProgramma(QStringLiteral(CARTELLA_PROGRAMMA));
    QVERIFY(
        ModuloPrincipale::CaricaLingua(u"" CARTELLA_SORGENTI "/data"_s, ModuloPrincipale::LinguaItaliano).Riuscito());
    qputenv("XDG_CONFIG_HOME", m_cartella.filePath(u"impostazioni"_s).toUtf8());
    CreaSito();
    Stato().FileAnteprima = m_cartella.filePath(u"altrove/test.html"_s);
    Salva(Stato().FileAnteprima, {});
    Stato().FileCorrente = m_cartella.filePath(u"sito/mia.html"_s);

    m_principale = std::make_unique<QWidget>();
    m_principale->resize(600, 400);
    m_finestra = new FrmAnteprima(m_principale.get());
    m_finestra->resize(600, 300);
    m_altro = new QLineEdit(m_principale.get());
    m_altro->move(0, 320);
    m_pad = std::make_unique<RichTextBox>();
    m_anteprima = std::make_unique<Anteprima>(
        *m_finestra, [] { return FormatoPagina{}; }, CaricaMotore::DalModulo);
    connect(m_anteprima.get(), &Anteprima::TestoStato, this, [this](const QString &testo) { m_stato = testo; });
    connect(m_anteprima.get(), &Anteprima::FuocoAllaPagina, m_altro, [this] { m_altro->setFocus(); });
    QSignalSpy pronta(m_finestra, &FrmAnteprima::Pronta);
    m_principale->show();
    m_principale->activateWindow();
    m_altro->setFocus();
    QTRY_COMPARE_WITH_TIMEOUT(pronta.size(), 1, Attesa);
    QCOMPARE(m_finestra->Browser()->findChildren<QWidget *>(u"VistaBrowser"_s).size(), 1);
}

void ProvaMotore::CreaSito()
{
    const auto salva = [this](const QString &nome, const QByteArray &byte) { Salva(m_cartella.filePath(nome), byte); };
    salva(u"sito/css/stile.css"_s, "p { width: 321px } b { content: url(../dentro.png) }"
                                   "@font-face { font-family: Prova; src: url(../prova.ttf) }");
    salva(u"sito/riquadro.html"_s,
          "<p>dentro</p><img src=dentro.png onload=\"parent.postMessage('riquadro '+this.naturalWidth,'*')\">");
    salva(u"segreto.txt"_s, "segreto");
    salva(u"sito/js/segreto.js"_s, "segreto");
    salva(u"sito/js/modulo.js"_s, "import {a} from './parte.js';document.title='modulo con '+a");
    salva(u"sito/js/parte.js"_s, "export const a='parte'");
    salva(u"sito/modulo.js"_s, "postMessage('modulo')");
    salva(u"sito/pila.js"_s, "var pila=new Error().stack");
    salva(u"fuori/segreto.env"_s, "chiave='segreto'");
    salva(u"fuori/fuori.js"_s, "document.title='girato'");
    salva(u"sito/.git/nascosto.js"_s, "document.title='girato'");
    salva(u"sito/.git/riquadro.html"_s, "<p>segreto</p>");
    QVERIFY(QFile::link(m_cartella.filePath(u"fuori/segreto.env"_s), m_cartella.filePath(u"sito/k.js"_s)));
    QVERIFY(QFile::link(m_cartella.filePath(u"fuori"_s), m_cartella.filePath(u"sito/legame"_s)));
    salva(u"sito/dati.xml"_s, "<a>segreto</a>");
    salva(u"sito/dati.json"_s, "\"segreto\"");
    salva(u"sito/disegno.svg"_s,
          "<svg xmlns='http://www.w3.org/2000/svg' width='7' height='5'><desc>segreto</desc></svg>");
    QVERIFY(
        QFile::copy(u"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"_s, m_cartella.filePath(u"sito/prova.ttf"_s)));
    QDir(m_cartella.path()).mkpath(u"figure"_s);
    QVERIFY(QImage(7, 5, QImage::Format_RGB32).save(m_cartella.filePath(u"figure/su.png"_s)));
    QVERIFY(QImage(9, 5, QImage::Format_RGB32).save(m_cartella.filePath(u"sito/dentro.png"_s)));
    for (const QString &nome : {u"figura.js"_s, u"figura.ttf"_s})
        QVERIFY(QFile::copy(m_cartella.filePath(u"sito/dentro.png"_s), m_cartella.filePath(u"sito/"_s + nome)));
    QVERIFY(QFile::link(m_cartella.filePath(u"figure/su.png"_s), m_cartella.filePath(u"sito/figura.woff"_s)));
}

void ProvaMotore::cleanupTestCase()
{
    m_anteprima.reset();
    m_principale.reset();
}

void ProvaMotore::Mostra(const QString &html, const QString &titolo)
{
    m_stato.clear();
    m_pad->ImpostaText(u"<html><head><title>"_s + titolo + u"</title></head><body>"_s + html + u"</body></html>"_s);
    m_anteprima->AggiornaAnteprima(m_pad.get(), false);
}

void ProvaMotore::Commuta(int voce)
{
    QWidget *browser = m_finestra->Browser();
    QContextMenuEvent evento(QContextMenuEvent::Mouse, {5, 5}, browser->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(browser->childAt(5, 5), &evento);
    auto *menu = m_finestra->findChild<QMenu *>(u"MenuAnteprima"_s);
    QVERIFY(menu);
    menu->actions().at(voce)->trigger();
    menu->close();
    QTRY_VERIFY(!m_finestra->findChild<QMenu *>(u"MenuAnteprima"_s));
    m_principale->activateWindow();
    QTRY_COMPARE(QApplication::focusWidget(), m_altro);
}
