#include "ProvaMotore.h"

using namespace Qt::StringLiterals;

/// What a page must not read of the files that the real engine shows.
class tst_MotoreSegreti : public ProvaMotore
{
    Q_OBJECT

private slots:
    void NienteDaLeggere_data();
    void NienteDaLeggere();
};

void tst_MotoreSegreti::NienteDaLeggere_data()
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

void tst_MotoreSegreti::NienteDaLeggere()
{
    QFETCH(QString, lettura);
    Mostra(u"<img id=f src=dentro.png><script>onload=async()=>{let e;if(f.naturalWidth!=9)return document.title='?';"
           "try{e='letto '+await(async()=>{%1})()}catch(x){e='no'}document.title=e}</script>"_s.arg(lettura));
    QTRY_VERIFY_WITH_TIMEOUT(!m_stato.isEmpty() && m_stato != u"inizio", Attesa);
    QCOMPARE(m_stato, u"no"_s);
}

QTEST_MAIN(tst_MotoreSegreti)
#include "tst_motoresegreti.moc"
