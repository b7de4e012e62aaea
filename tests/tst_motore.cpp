#include "app/ModuloDichiarazioni.h"
#include "dialogs/Anteprima.h"
#include "dialogs/CaricaMotore.h"
#include "dialogs/FrmAnteprima.h"
#include "platform/RichTextBox.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

constexpr int Attesa = 30000; // ms; a busy machine starts the engine slowly

void Salva(const QString &percorso, const QByteArray &byte)
{
    QDir().mkpath(QFileInfo(percorso).path());
    QFile file(percorso);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size());
}

} // namespace

/// The real engine. What a page found out it says in its title, which comes back as the text for the status bar.
class tst_Motore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void Pagina_data();
    void Pagina();
    void DopoUnaPaginaOstile_data();
    void DopoUnaPaginaOstile();

private:
    void Mostra(const QString &html);

    QTemporaryDir m_cartella;
    std::unique_ptr<QWidget> m_principale;
    FrmAnteprima *m_finestra = nullptr;
    QLineEdit *m_altro = nullptr;
    std::unique_ptr<Anteprima> m_anteprima;
    std::unique_ptr<RichTextBox> m_pad;
    QString m_stato;
};

void tst_Motore::initTestCase()
{
    ModuloDichiarazioni::ImpostaCartellaProgramma(QStringLiteral(CARTELLA_PROGRAMMA));
    Salva(m_cartella.filePath(u"sito/css/stile.css"_s), "p { width: 321px }");
    Salva(m_cartella.filePath(u"sito/riquadro.html"_s), "<p>dentro</p>");
    Salva(m_cartella.filePath(u"segreto.txt"_s), "segreto");
    Salva(m_cartella.filePath(u"sito/modulo.js"_s), "document.title='modulo'");
    QDir(m_cartella.path()).mkpath(u"figure"_s);
    QVERIFY(QImage(7, 5, QImage::Format_RGB32).save(m_cartella.filePath(u"figure/su.png"_s)));
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
    QSignalSpy pronta(m_finestra, &FrmAnteprima::Pronta);
    m_principale->show();
    m_principale->activateWindow();
    m_altro->setFocus();
    QTRY_COMPARE_WITH_TIMEOUT(pronta.size(), 1, Attesa);
    QCOMPARE(m_finestra->Browser()->findChildren<QWidget *>(u"VistaBrowser"_s).size(), 1);
}

void tst_Motore::cleanupTestCase()
{
    m_anteprima.reset();
    m_principale.reset();
}

void tst_Motore::Mostra(const QString &html)
{
    m_stato.clear();
    m_pad->ImpostaText(u"<html><head><title>inizio</title></head><body>"_s + html + u"</body></html>"_s);
    m_anteprima->AggiornaAnteprima(m_pad.get(), false);
}

void tst_Motore::Pagina_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("titolo");
    const QString di = u"<script>function di(x){document.title=x}</script>"_s;
    const QString figura = QUrl::fromLocalFile(m_cartella.filePath(u"figure/su.png"_s)).toString();
    const QString segreto = QUrl::fromLocalFile(m_cartella.filePath(u"segreto.txt"_s)).toString();
    const QString dopo = u"<script>onload=()=>di(window.letto||'no')</script>"_s;
    QTest::newRow("picture by its full path")
        << di + u"<img src=\"%1\" onload=\"di('figura '+this.naturalWidth)\">"_s.arg(
                    m_cartella.filePath(u"figure/su.png"_s))
        << u"figura 7"_s;
    QTest::newRow("picture by its file address")
        << di + u"<img src=\"%1\" onload=\"di('figura '+this.naturalWidth)\">"_s.arg(figura) << u"figura 7"_s;
    QTest::newRow("fetch of a file address")
        << di + u"<script>fetch('%1').then(r=>r.text()).then(di).catch(e=>di('no'))</script>"_s.arg(segreto) << u"no"_s;
    QTest::newRow("request of a file address")
        << di + u"<script>x=new XMLHttpRequest;x.onload=()=>di(x.responseText);x.onerror=()=>di('no');"
                "try{x.open('GET','%1');x.send()}catch(e){di('no')}</script>"_s.arg(segreto)
        << u"no"_s;
    QTest::newRow("module, that would be read with the rights of a script")
        << di + u"<script type=module src=modulo.js onerror=\"di('no')\"></script>"_s << u"no"_s;
    QTest::newRow("frame of a file address")
        << di + dopo +
               u"<iframe src=\"%1\" onload=\"try{letto=frames[0].document.body.innerText}catch(e){}\">"_s.arg(segreto)
        << u"no"_s;
    QTest::newRow("object of a file address")
        << di + dopo +
               u"<object data=\"%1\" onload=\"try{letto=this.contentDocument.body.innerText}catch(e){}\">"_s.arg(
                   segreto)
        << u"no"_s;
    QTest::newRow("picture above the page's folder")
        << di + u"<img src=../figure/su.png onload=\"di('figura '+this.naturalWidth)\">"_s << u"figura 7"_s;
    QTest::newRow("style sheet beside the page")
        << di + u"<link rel=stylesheet href=css/stile.css><p id=p>x</p><script>onload=()=>di(p.clientWidth)</script>"_s
        << u"321"_s;
    QTest::newRow("frame beside the page, not to be read")
        << di + u"<iframe src=riquadro.html onload=\"try{di(frames[0].document.body.innerText)}catch(e){di('no')}\">"_s
        << u"no"_s;
    QTest::newRow("fetch of a local file")
        << di + u"<script>fetch('../segreto.txt').then(r=>r.text()).then(di).catch(e=>di('no'))</script>"_s << u"no"_s;
    QTest::newRow("request of a local file")
        << di + u"<script>x=new XMLHttpRequest;x.onload=()=>di(x.responseText);x.onerror=()=>di('no');"
                "x.open('GET','../segreto.txt');x.send()</script>"_s
        << u"no"_s;
    QTest::newRow("page beyond ASCII that declares no encoding")
        << di + u"<p id=p>\u00e8\u6f22</p><script>di(p.innerText)</script>"_s << u"\u00e8\u6f22"_s;
    QTest::newRow("page with an encoding of its own")
        << di + u"<meta charset=koi8-r><p id=p>\u0436</p><script>di(document.characterSet+p.innerText)</script>"_s
        << u"KOI8-R\u0436"_s;
    QTest::newRow("script dialogs answer at once")
        << di + u"<script>alert(1);di(confirm(2)+' '+prompt(3))</script>"_s << u"false null"_s;
    QTest::newRow("the page stays where it is")
        << di + u"<script>location='http://127.0.0.1:9/';setTimeout(()=>{open('http://127.0.0.1:9/');di('qui')},200)"
                "</script>"_s
        << u"qui"_s;
    QTest::newRow("focus stays with the editor")
        << di + u"<input autofocus id=i><script>i.focus();window.focus();setTimeout(()=>di('fatto'),100)</script>"_s
        << u"fatto"_s;
}

void tst_Motore::Pagina()
{
    QFETCH(QString, html);
    QFETCH(QString, titolo);
    QWidget *fuoco = QApplication::focusWidget();
    Mostra(html);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, titolo, Attesa);
    QCOMPARE(QApplication::focusWidget(), fuoco);
}

void tst_Motore::DopoUnaPaginaOstile_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("endless script") << u"<script>document.title='ostile';for(;;);</script>"_s;
    QTest::newRow("endless alerts") << u"<script>document.title='ostile';for(;;)alert(1)</script>"_s;
    QTest::newRow("endless after it was shown")
        << u"<script>document.title='ostile';onload=()=>setTimeout(()=>{for(;;);},50)</script>"_s;
    QTest::newRow("reloads itself")
        << u"<script>document.title='ostile';setInterval(()=>location.reload(),1)</script>"_s;
}

void tst_Motore::DopoUnaPaginaOstile()
{
    QFETCH(QString, html);
    Mostra(html);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"ostile"_s, Attesa);
    Mostra(u"<script>document.title='di nuovo'</script>"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"di nuovo"_s, Attesa);
}

QTEST_MAIN(tst_Motore)
#include "tst_motore.moc"
