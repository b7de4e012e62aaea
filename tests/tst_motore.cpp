#include "ProvaMotore.h"

#include "dialogs/Anteprima.h"
#include "dialogs/FrmAnteprima.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QLabel>
#include <QProcess>
#include <QUrl>

using namespace Qt::StringLiterals;

/// What the real engine shows of a page.
class tst_Motore : public ProvaMotore
{
    Q_OBJECT

public slots:
    void Aperto(const QUrl &indirizzo) { m_aperti += indirizzo.toString(); }

private slots:
    void Pagina_data();
    void Pagina();
    void TitoloComeIndirizzo();
    void Scorrimento_data();
    void Scorrimento();
    void ImmaginiLente();
    void Clic_data();
    void Clic();

private:
    QStringList m_aperti;
};

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
        << di +
               u"<script>onload=async()=>{let r=await Promise.all(['manca','.git','legame'].flatMap(via=>[['img','src',"
               "'x.png'],['script','src','nascosto.js'],['link','href','x.css'],['iframe','src','riquadro.html'],"
               "['object','data','riquadro.html'],['video','src','x.mp4']].map(async([t,a,n])=>{let e=document."
               "createElement(t);if(t=='link')e.rel='stylesheet';e[a]=via+'/'+n;let f=await new Promise(r=>{e.onload="
               "()=>r('load');e.onerror=()=>r('error '+(e.error?e.error.message:''));setTimeout(r,3000);"
               "document.body.append(e)});return t+f+(e.contentDocument?'!':'')})));let k=r.length/3;"
               "di(r.slice(0,k).join()==r.slice(k,2*k).join()&&r.slice(k,2*k).join()==r.slice(2*k).join()?"
               "'uguali':r.join())}</script>"_s
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

void tst_Motore::TitoloComeIndirizzo()
{
    Mostra(u"<script>document.title=location.href.slice(-1)</script>"_s, u"inizio"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato.size(), 1, Attesa);
    QStringList detti;
    const QObject ascolto;
    connect(m_anteprima.get(), &Anteprima::TestoStato, &ascolto, [&detti](const QString &testo) { detti += testo; });
    Mostra(u"<script>document.title=location.href;setTimeout(()=>document.title='fine',50)</script>"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"fine"_s, Attesa);
    QVERIFY2(detti.filter(u"velloro:"_s).isEmpty(), qPrintable(detti.join(u' ')));
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
    QTest::newRow("killed process") << u"%1"_s + righe << vai;
}

void tst_Motore::Scorrimento()
{
    QFETCH(QString, corpo);
    QFETCH(QString, gesto);
    const QString poi = u"<script>addEventListener('load',()=>setTimeout(()=>{%1},200))</script>"_s;
    Mostra(u"<script>onscroll=()=>setTimeout(()=>document.title='scorsa',100)</script>"_s + corpo.arg(u""_s) +
           poi.arg(gesto));
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"scorsa"_s, Attesa);
    if (QTest::currentDataTag() == QByteArray("killed process")) {
        // What draws pages is a child of the engine's own first processes.
        const QString uccidi = u"for z in $(pgrep -P %1 QtWebEngine); do pgrep -P $z; done | xargs kill -9"_s;
        QProcess::execute(u"/bin/sh"_s, {u"-c"_s, uccidi.arg(QCoreApplication::applicationPid())});
        QTRY_VERIFY_WITH_TIMEOUT(m_finestra->findChild<QLabel *>()->isVisibleTo(m_finestra), Attesa);
    }
    for (const QString &testo : {u"a"_s, u"ab "_s}) {
        Mostra(corpo.arg(testo) + poi.arg(u"document.title='a '+scrollY"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"a 700"_s, Attesa);
    }
}

// The text that was seen stays where it is while pictures above it are on their way, and when they are there.
void tst_Motore::ImmaginiLente()
{
    QTcpServer servizio;
    QVERIFY(servizio.listen(QHostAddress::LocalHost));
    QByteArray figura = "HTTP/1.1 200 OK\r\nContent-Type: image/svg+xml\r\nCache-Control: no-store\r\n"
                        "Connection: close\r\n\r\n<svg xmlns='http://www.w3.org/2000/svg' width='9' height='300'/>";
    bool subito = true;
    QList<QTcpSocket *> sospesi;
    const auto rispondi = [&](QTcpSocket *presa) {
        presa->write(figura);
        presa->disconnectFromHost();
    };
    connect(&servizio, &QTcpServer::newConnection, this, [&] {
        QTcpSocket *presa = servizio.nextPendingConnection();
        connect(presa, &QTcpSocket::readyRead, this, [&, presa] { subito ? rispondi(presa) : sospesi.append(presa); });
    });
    QString corpo = u"<img src=http://127.0.0.1:%1/a.svg><br>"_s.arg(servizio.serverPort());
    for (int i = 0; i < 400; ++i)
        corpo += u"riga %1<br>"_s.arg(i);
    const QString riga = u"<script>riga=x=>document.title=x+document.caretRangeFromPoint(20,9).startContainer.data;"
                         "addEventListener('%1',()=>setTimeout(()=>{%2},300))</script>"_s;
    Mostra(corpo + riga.arg(u"load"_s, u"dispatchEvent(new Event('wheel'));scrollTo(0,1500);"
                                       "setTimeout(()=>riga('scorsa '),500)"_s));
    QTRY_VERIFY_WITH_TIMEOUT(m_stato.startsWith(u"scorsa riga"), Attesa);
    const QString vista = m_stato.section(u' ', 1);
    subito = false;
    Mostra(corpo + riga.arg(u"DOMContentLoaded"_s, u"riga('prima ');onload=()=>setTimeout(()=>riga('dopo '),300)"_s));
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"prima "_s + vista, Attesa);
    std::for_each(sospesi.begin(), sospesi.end(), rispondi);
    QTRY_COMPARE_WITH_TIMEOUT(m_stato, u"dopo "_s + vista, Attesa);
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

QTEST_MAIN(tst_Motore)
#include "tst_motore.moc"
