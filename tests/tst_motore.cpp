#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/Anteprima.h"
#include "dialogs/CaricaMotore.h"
#include "dialogs/FrmAnteprima.h"
#include "platform/RichTextBox.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTcpServer>
#include <QTest>
#include <QUdpSocket>
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

public slots:
    void Aperto(const QUrl &indirizzo) { m_aperti += indirizzo.toString(); }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void Pagina_data();
    void Pagina();
    void NienteDaLeggere_data();
    void NienteDaLeggere();
    void Scorrimento_data();
    void Scorrimento();
    void Clic_data();
    void Clic();
    void SenzaScript();
    void SenzaRete();
    void MemoriaDelProgramma();
    void DopoUnaPaginaOstile_data();
    void DopoUnaPaginaOstile();

private:
    void Mostra(const QString &html, const QString &titolo = u"inizio"_s);
    void Commuta(int voce);

    QTemporaryDir m_cartella;
    std::unique_ptr<QWidget> m_principale;
    FrmAnteprima *m_finestra = nullptr;
    QLineEdit *m_altro = nullptr;
    std::unique_ptr<Anteprima> m_anteprima;
    std::unique_ptr<RichTextBox> m_pad;
    QString m_stato;
    QStringList m_aperti;
};

void tst_Motore::initTestCase()
{
    ModuloDichiarazioni::ImpostaCartellaProgramma(QStringLiteral(CARTELLA_PROGRAMMA));
    QVERIFY(
        ModuloPrincipale::CaricaLingua(u"" CARTELLA_SORGENTI "/data"_s, ModuloPrincipale::LinguaItaliano).Riuscito());
    qputenv("XDG_CONFIG_HOME", m_cartella.filePath(u"impostazioni"_s).toUtf8());
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

void tst_Motore::cleanupTestCase()
{
    m_anteprima.reset();
    m_principale.reset();
}

void tst_Motore::Mostra(const QString &html, const QString &titolo)
{
    m_stato.clear();
    m_pad->ImpostaText(u"<html><head><title>"_s + titolo + u"</title></head><body>"_s + html + u"</body></html>"_s);
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
    QTest::newRow("module and what it imports")
        << di + u"<script type=module src=js/modulo.js onerror=\"di('no')\"></script>"_s << u"modulo con parte"_s;
    QTest::newRow("font of a style sheet")
        << di + u"<link rel=stylesheet href=css/stile.css><p style='font-family:Prova'>x</p><script>onload=()=>"
                "document.fonts.load('9px Prova').then(f=>di(f.length+f[0].status)).catch(e=>di('no'))</script>"_s
        << u"1loaded"_s;
    QTest::newRow("picture of a style sheet")
        << di + u"<link rel=stylesheet href=css/stile.css><b id=b></b><script>onload=()=>di(b.offsetWidth)</script>"_s
        << u"9"_s;
    QTest::newRow("frame beside the page, with its picture")
        << di + u"<script>onmessage=m=>di(m.data)</script><iframe src=riquadro.html></iframe>"_s << u"riquadro 9"_s;
    QTest::newRow("frame by its file address")
        << di + u"<script>onmessage=m=>di(m.data)</script><iframe src=\"%1\"></iframe>"_s.arg(
                    QUrl::fromLocalFile(m_cartella.filePath(u"sito/riquadro.html"_s)).toString())
        << u"riquadro 9"_s;
    QTest::newRow("drawing in an object, with its size")
        << di + u"<object id=o data=disegno.svg onload=\"di('oggetto '+this.clientWidth)\"></object>"_s
        << u"oggetto 7"_s;
    QTest::newRow("error of a script that is none")
        << di + u"<script>onerror=m=>di(m)</script><script src=js/segreto.js></script>"_s << u"Script error."_s;
    QTest::newRow("picture from below its neighbour")
        << di + u"<img src=\"../figure/../figure/su.png\" onload=\"di('figura '+this.naturalWidth)\">"_s
        << u"figura 7"_s;
    QTest::newRow("addresses tell nothing")
        << di +
               u"<link rel=stylesheet href=css/stile.css><b id=b></b><script src=pila.js></script><iframe "
               "src=riquadro.html></iframe><script type=module>import.meta.url;onload=()=>{let a=[location.href,"
               "document.baseURI,origin,pila,import.meta.url,getComputedStyle(b).content,b.baseURI]"
               ".concat(performance.getEntries().map(e=>e.name));di(!pila||!getComputedStyle(b).content.includes('url')"
               "||a.filter(x=>x.includes('%1')||x.includes('sito')||x.includes('mia.html')).join()||'niente')}"
               "</script>"_s.arg(QFileInfo(m_cartella.path()).fileName())
        << u"niente"_s;
    for (const QString &via : {u"k.js"_s, u"legame/fuori.js"_s, u"../fuori/fuori.js"_s, u".git/nascosto.js"_s})
        QTest::addRow("script that may not run: %s", qUtf8Printable(via))
            << di + u"<script src=\"%1\" onload=\"di('girato')\" onerror=\"di('no '+window.chiave)\"></script>"_s.arg(
                        via)
            << u"no undefined"_s;
    QTest::newRow("missing and forbidden are alike")
        << di + u"<script>onload=async()=>{let r=[];for(const via of ['manca','.git','legame'])for(const [t,a,n] of "
                "[['img','src','x.png'],['script','src','nascosto.js'],['link','href','x.css'],['iframe','src',"
                "'riquadro.html'],['object','data','riquadro.html'],['video','src','x.mp4']]){let e=document."
                "createElement(t);if(t=='link')e.rel='stylesheet';e[a]=via+'/'+n;let f=await new "
                "Promise(r=>{e.onload=()=>"
                "r('load');e.onerror=()=>r('error "
                "'+(e.error?e.error.message:''));setTimeout(r,200);document.body.append(e)});"
                "r.push(t+f+(e.contentDocument?'!':''))}let k=r.length/3;di(r.slice(0,k).join()==r.slice(k,2*k).join()"
                "&&r.slice(k,2*k).join()==r.slice(2*k).join()?'uguali':r.join())}</script>"_s
        << u"uguali"_s;
    QTest::newRow("frame of a file address")
        << di + dopo +
               u"<iframe src=\"%1\" onload=\"try{letto=frames[0].document.body.innerText}catch(e){}\">"_s.arg(segreto)
        << u"no"_s;
    QTest::newRow("style sheet beside the page")
        << di + u"<link rel=stylesheet href=css/stile.css><p id=p>x</p><script>onload=()=>di(p.clientWidth)</script>"_s
        << u"321"_s;
    QTest::newRow("frame beside the page, not to be read")
        << di + u"<iframe src=riquadro.html onload=\"try{di(frames[0].document.body.innerText)}catch(e){di('no')}\">"_s
        << u"no"_s;
    QTest::newRow("request of a local file")
        << di + u"<script>x=new XMLHttpRequest;x.onload=()=>di(x.responseText);x.onerror=()=>di('no');"
                "x.open('GET','../segreto.txt');x.send()</script>"_s
        << u"no"_s;
    QTest::newRow("page beyond ASCII that declares no encoding")
        << di + u"<p id=p>\u00e8\u6f22</p><script>di(p.innerText)</script>"_s << u"\u00e8\u6f22"_s;
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

void tst_Motore::NienteDaLeggere_data()
{
    // The body of a function that gives what it could read of a local file; f is a picture that is shown.
    QTest::addColumn<QString>("lettura");
    const QString tela = u"let t=document.createElement('canvas'),c=t.getContext('2d');c.drawImage(%1,0,0);return %2"_s;
    const QString figura = u"f"_s;
    QTest::newRow("pixels of a picture") << tela.arg(figura, u"c.getImageData(0,0,1,1).data.join()"_s);
    QTest::newRow("pixels of a bitmap") << tela.arg(u"await createImageBitmap(f)"_s, u"t.toDataURL()"_s);
    QTest::newRow("texture")
        << u"let g=document.createElement('canvas').getContext('webgl');g.bindTexture(g.TEXTURE_2D,g.createTexture());"
           "g.texImage2D(g.TEXTURE_2D,0,g.RGBA,g.RGBA,g.UNSIGNED_BYTE,f);return g.getError()"_s;
    QTest::newRow("picture asked for with the right to read it")
        << u"let i=new Image;i.crossOrigin='';i.src=f.src;await i.decode();"_s + tela.arg(u"i"_s, u"t.toDataURL()"_s);
    const QString perFile = u"'file://'+new URL('%1',document.baseURI).pathname"_s;
    for (const QString &nome : {u"figura.js"_s, u"figura.ttf"_s, u"figura.woff"_s}) {
        QTest::addRow("picture named as what may be read: %s", qUtf8Printable(nome))
            << u"let i=new Image;i.crossOrigin='';i.src='%1';await i.decode();"_s.arg(nome) +
                   tela.arg(u"i"_s, u"t.toDataURL()"_s);
        QTest::addRow("the same without asking: %s", qUtf8Printable(nome))
            << u"let i=new Image;i.src='%1';try{await i.decode()}catch(x){return 'nothing shown'}"_s.arg(nome) +
                   tela.arg(u"i"_s, u"t.toDataURL()"_s);
    }
    QTest::newRow("frame in a linked folder")
        << u"let o=document.createElement('iframe');o.src='legame/segreto.env';document.body.append(o);"
           "await new Promise(r=>{o.onload=r;setTimeout(r,500)});if(o.contentDocument)throw 1;return 'shown'"_s;
    QTest::newRow("picture by its file address, with the right to read it")
        << u"let i=new Image;i.crossOrigin='';i.src=%1;await i.decode();"_s.arg(perFile.arg(u"dentro.png"_s)) +
               tela.arg(u"i"_s, u"t.toDataURL()"_s);
    QTest::newRow("style sheet by its file address, with the right to read it")
        << u"let "
           u"l=document.createElement('link');l.rel='stylesheet';l.crossOrigin='';l.href=%1;document.head.append(l);"
           "await new Promise((r,e)=>{l.onload=r;l.onerror=e});return l.sheet.cssRules[0].cssText"_s.arg(
               perFile.arg(u"css/stile.css"_s));
    QTest::newRow("data imported by their file address")
        << u"return (await import(%1,{assert:{type:'json'}})).default"_s.arg(perFile.arg(u"dati.json"_s));
    for (const QString &via : {u"dati.xml"_s, u"css/stile.css"_s, u"dentro.png"_s, u"mia.html"_s}) {
        QTest::addRow("fetch of %s", qUtf8Printable(via)) << u"return await(await fetch('%1')).text()"_s.arg(via);
        QTest::addRow("opaque fetch of %s", qUtf8Printable(via))
            << u"return await(await fetch('%1',{mode:'no-cors'})).text()"_s.arg(via);
    }
    QTest::newRow("rules of a style sheet")
        << u"let l=document.createElement('link');l.rel='stylesheet';l.href='css/stile.css';document.head.append(l);"
           "await new Promise((r,e)=>{l.onload=r;l.onerror=e});return l.sheet.cssRules[0].cssText"_s;
    for (const QString &via : {u"css/stile.css"_s, u"dati.json"_s, u"mia.html"_s, u"js/segreto.js"_s}) {
        QTest::addRow("rules of %s", qUtf8Printable(via))
            << u"let l=document.createElement('style');l.textContent='@import \"%1\"';document.head.append(l);"
               "await new Promise(r=>l.onload=l.onerror=r);return l.sheet.cssRules[0].styleSheet.cssRules.length"_s.arg(
                   via);
    }
    QTest::newRow("worker") << u"let w=new Worker('modulo.js');"
                               "return await new Promise((r,e)=>{w.onmessage=m=>r(m.data);w.onerror=e})"_s;
    QTest::newRow("worker that fetches")
        << u"let w=new Worker(URL.createObjectURL(new Blob(['fetch(\"'+new URL('dati.xml',document.baseURI)+'\")"
           ".then(r=>r.text()).then(postMessage).catch(()=>{throw 1})'])));"
           "return await new Promise((r,e)=>{w.onmessage=m=>r(m.data);setTimeout(e,2000)})"_s;
    QTest::newRow("import of a style sheet")
        << u"return (await import('./css/stile.css',{assert:{type:'css'}})).default.cssRules[0].cssText"_s;
    QTest::newRow("drawing in an object")
        << u"let o=document.createElement('object');o.data='disegno.svg';document.body.append(o);"
           "await new Promise((r,e)=>{o.onload=r;o.onerror=e});return o.contentDocument.documentElement.outerHTML"_s;
    QTest::newRow("fetch out of a frame of the page's own")
        << u"let o=document.createElement('iframe');document.body.append(o);"
           "return await(await o.contentWindow.fetch(new URL('dati.xml',document.baseURI))).text()"_s;
    QTest::newRow("document of a transformation")
        << u"let x=new XSLTProcessor,p=new DOMParser;x.importStylesheet(p.parseFromString('<x:stylesheet "
           u"version=\"1.0\" "
           "xmlns:x=\"http://www.w3.org/1999/XSL/Transform\"><x:template match=\"/\"><b><x:value-of "
           "select=\"document(\\''+new URL('dati.xml',document.baseURI)+'\\')\"/></b></x:template></x:stylesheet>',"
           "'text/xml'));let d=x.transformToDocument(p.parseFromString('<c/>','text/xml'));"
           "if(!d.documentElement.textContent)throw 1;return d.documentElement.textContent"_s;
    QTest::newRow("size in the list of what was loaded")
        << u"let e=performance.getEntriesByType('resource').map(e=>e.decodedBodySize).filter(n=>n>0);"
           "if(!e.length)throw 1;return e"_s;
    QTest::newRow("where the user is")
        << u"return await new Promise((r,e)=>navigator.geolocation.getCurrentPosition(r,e))"_s;
    QTest::newRow("full screen") << u"return await document.documentElement.requestFullscreen()"_s;
}

void tst_Motore::NienteDaLeggere()
{
    QFETCH(QString, lettura);
    Mostra(u"<img id=f src=dentro.png><script>onload=async()=>{let e;if(f.naturalWidth!=9)return document.title='?';"
           "try{e='letto '+await(async()=>{%1})()}catch(x){e='no'}document.title=e}</script>"_s.arg(lettura));
    QTRY_VERIFY_WITH_TIMEOUT(!m_stato.isEmpty() && m_stato != u"inizio", Attesa);
    QCOMPARE(m_stato, u"no"_s);
}

void tst_Motore::Scorrimento_data()
{
    QTest::addColumn<QString>("corpo"); // %1: what is typed meanwhile
    QTest::addColumn<QString>("gesto"); // by which the place is left or made hard to find again
    const QString righe = u"riga<br>"_s.repeated(400);
    const QString vai = u"dispatchEvent(new Event('wheel'));scrollTo(0,700)"_s;
    QTest::newRow("one tall element") << u"<p style='height:5000px'>%1</p>"_s << vai;
    QTest::newRow("lines of the body") << u"%1"_s + righe << vai;
    QTest::newRow("lines of a cell") << u"<table><tr><td>%1"_s + righe + u"</table>"_s << vai;
    QTest::newRow("page that scrolls itself at its end")
        << u"<p style='height:5000px'>%1</p><script>onload=()=>scrollTo(0,9)</script>"_s << vai;
    QTest::newRow("link in the page") << u"%1"_s + righe + u"<a id=qui>x</a>"_s + righe
                                      << u"location.hash='qui';"_s + vai;
    QTest::newRow("text that a script puts in above, later")
        << u"<div id=d></div><script>addEventListener('load',()=>setTimeout(()=>d.innerHTML='x<br>'.repeat(50),50))"
           "</script>%1"_s +
               righe
        << vai;
    QTest::newRow("refused navigation") << u"%1"_s + righe << vai + u";location='http://127.0.0.1:9/'"_s;
}

void tst_Motore::Scorrimento()
{
    QFETCH(QString, corpo);
    QFETCH(QString, gesto);
    const QString poi = u"<script>addEventListener('load',()=>setTimeout(()=>{%1},200))</script>"_s;
    Mostra(u"<script>onscroll=()=>setTimeout(()=>document.title='scorsa',100)</script>"_s + corpo.arg(u""_s) +
           poi.arg(gesto));
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"scorsa"_s, Attesa);
    for (const QString &testo : {u"a"_s, u"ab "_s}) {
        Mostra(corpo.arg(testo) + poi.arg(u"document.title='a '+scrollY"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"a 700"_s, Attesa);
    }
}

void tst_Motore::Clic_data()
{
    QTest::addColumn<QString>("collegamento");
    QTest::addColumn<QString>("aperto"); // by the system
    QTest::newRow("mail") << u"mailto:nome@example.com"_s << u"mailto:nome@example.com"_s;
    QTest::newRow("telephone") << u"tel:+3906"_s << u"tel:+3906"_s;
    QTest::newRow("file transfer") << u"ftp://example.com/a.txt"_s << u"ftp://example.com/a.txt"_s;
    QTest::newRow("local page") << u"riquadro.html#x"_s
                                << u"file://"_s + m_cartella.filePath(u"sito/riquadro.html#x"_s);
    QTest::newRow("place in the page by its name") << u"mia.html#qui"_s << QString();
    QTest::newRow("unknown scheme") << u"smb://a/b"_s << QString();
}

void tst_Motore::Clic()
{
    QFETCH(QString, collegamento);
    QFETCH(QString, aperto);
    m_aperti.clear();
    for (const QString &schema : {u"mailto"_s, u"tel"_s, u"ftp"_s, u"file"_s, u"smb"_s})
        QDesktopServices::setUrlHandler(schema, this, "Aperto");
    // Frames ask as well, without a click. The link goes away: its address would stand where the title is read.
    Mostra(
        u"<body style='height:5000px'><iframe src='mailto:x' hidden></iframe><a id=a href=\"%1\" style='position:"
        "fixed;inset:0'>x</a><p id=qui style='margin-top:3000px'>y<script>onclick=()=>setTimeout(()=>{a.remove();"
        "document.title='cliccata '+location.hash},300);onload=()=>setTimeout(()=>document.title='qui',300)</script>"_s
            .arg(collegamento));
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"qui"_s, Attesa);
    QTest::mouseClick(m_finestra->Browser()->childAt(m_finestra->Browser()->rect().center()), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(m_stato.startsWith(u"cliccata"), Attesa);
    QTRY_COMPARE(m_aperti, aperto.isEmpty() ? QStringList{} : QStringList{aperto});
    QCOMPARE(m_stato, collegamento.startsWith(u"mia.html") ? u"cliccata #qui"_s : u"cliccata"_s);
    for (const QString &schema : {u"mailto"_s, u"tel"_s, u"ftp"_s, u"file"_s, u"smb"_s})
        QDesktopServices::unsetUrlHandler(schema);
}

void tst_Motore::Commuta(int voce)
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

void tst_Motore::SenzaScript()
{
    const QString righe = u"riga<br>"_s.repeated(400);
    Mostra(righe + u"<script>onload=()=>setTimeout(()=>{onscroll=()=>setTimeout(()=>document.title='scorsa',100);"
                   "dispatchEvent(new Event('wheel'));scrollTo(0,650)},100)</script>"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"scorsa"_s, Attesa);
    Commuta(0);
    const QString pagina =
        righe + u"<script>document.title='girato'</script><img src=x onerror=\"document.title='girato'\">"_s;
    for (const QString &titolo : {u"uno"_s, u"due"_s}) {
        Mostra(pagina, titolo);
        QTRY_COMPARE_WITH_TIMEOUT(m_stato, titolo, Attesa);
    }
    Commuta(0);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"girato"_s, Attesa);
    Mostra(righe + u"<script>onload=()=>setTimeout(()=>document.title='a '+scrollY,100)</script>"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"a 650"_s, Attesa);
}

void tst_Motore::SenzaRete()
{
    QTcpServer servizio;
    QUdpSocket stun;
    QVERIFY(servizio.listen(QHostAddress::LocalHost) && stun.bind(QHostAddress::LocalHost));
    const QString dove = u"127.0.0.1:%1"_s.arg(servizio.serverPort());
    const QString pagina =
        u"<link rel=preconnect href=http://%1><link rel=dns-prefetch href=http://%1><img src=http://%1/a.png>"
        "<iframe src=http://%1/></iframe><style>@import 'http://%1/a.css';</style><script>"
        "let chiama=C=>{let r=new C({iceServers:[{urls:'stun:127.0.0.1:%2'}]});r.createDataChannel('x');"
        "r.createOffer().then(o=>r.setLocalDescription(o))};let f=document.createElement('iframe');"
        "document.head.append(f);chiama(f.contentWindow.RTCPeerConnection);"
        "try{new WebSocket('ws://%1');fetch('http://%1/b').catch(()=>0);navigator.sendBeacon('http://%1/c','x');"
        "new EventSource('http://%1/d');chiama(RTCPeerConnection)}catch(e){}"
        "setTimeout(()=>document.title='fatto',1500)</script>"_s.arg(dove)
            .arg(stun.localPort());
    Commuta(1);
    Mostra(pagina);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"fatto"_s, Attesa);
    QVERIFY(!servizio.hasPendingConnections());
    QVERIFY(!stun.hasPendingDatagrams());
    Commuta(1);
    QTRY_VERIFY_WITH_TIMEOUT(servizio.hasPendingConnections(), Attesa);
}

void tst_Motore::MemoriaDelProgramma()
{
    const auto memoria = [] {
        QFile file(u"/proc/self/statm"_s);
        return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * 4096 : -1;
    };
    const qint64 prima = memoria();
    qint64 massimo = 0;
    auto *avviso = m_finestra->findChild<QWidget *>(u"Avviso"_s);
    Mostra(u"<script>let t=[];setInterval(()=>t.push(new Blob([new Uint8Array(32<<20).fill(7)])),20)</script>"_s);
    QTRY_VERIFY_WITH_TIMEOUT((massimo = std::max(massimo, memoria()), avviso->isVisible()), 4 * Attesa);
    QVERIFY2(massimo - prima < qint64{1} << 30, qPrintable(QString::number((massimo - prima) >> 20)));
    QTRY_VERIFY_WITH_TIMEOUT(memoria() - prima < qint64{200} << 20, Attesa);
    Mostra(u"<script>document.title='di nuovo'</script>"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"di nuovo"_s, Attesa);
    QVERIFY(!avviso->isVisible());
}

void tst_Motore::DopoUnaPaginaOstile_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("endless script") << u"<script>document.title='ostile';for(;;);</script>"_s;
    QTest::newRow("endless alerts") << u"<script>document.title='ostile';for(;;)alert(1)</script>"_s;
    QTest::newRow("endless after it was shown")
        << u"<script>document.title='ostile';onload=()=>setTimeout(()=>{for(;;);},50)</script>"_s;
    QTest::newRow("sends itself elsewhere")
        << u"<meta http-equiv=refresh content=\"0;url=http://127.0.0.1:9/\"><script>document.title='ostile'</script>"_s;
    QTest::newRow("calls another program")
        << u"<script>document.title='ostile';for(i=0;i<9;i++)setTimeout(()=>location='tel:1',i)</script>"_s;
    QTest::newRow("calls another program while it is loaded")
        << u"<script>document.title='ostile';location='tel:1'</script>"_s;
    QTest::newRow("asks whether it may be left")
        << u"<script>document.title='ostile';onbeforeunload=e=>{e.preventDefault();return e.returnValue='x'}</script>"_s;
    QTest::newRow("prints itself") << u"<script>document.title='ostile';for(i=0;i<50;i++)print()</script>"_s;
    QTest::newRow("saves files")
        << u"<a id=a download=x.txt href=\"data:,x\">x</a><script>document.title='ostile';for(i=0;i<50;i++)a.click()"
           "</script>"_s;
    QTest::newRow("reloads itself")
        << u"<script>document.title='ostile';setInterval(()=>location.reload(),1)</script>"_s;
}

void tst_Motore::DopoUnaPaginaOstile()
{
    QFETCH(QString, html);
    m_altro->clear();
    Mostra(html);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"ostile"_s, Attesa);
    Mostra(u"<script>document.title='di nuovo'</script>"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"di nuovo"_s, Attesa);
    QTest::keyClicks(QApplication::focusWidget(), u"prova"_s);
    QCOMPARE(m_altro->text(), u"prova"_s);
    for (QWidget *parte : m_finestra->Browser()->findChildren<QWidget *>()) {
        parte->setFocus(); // as the engine does for a new process
        QCOMPARE(QApplication::focusWidget(), m_altro);
    }
}

QTEST_MAIN(tst_Motore)
#include "tst_motore.moc"
