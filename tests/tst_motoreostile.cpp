#include "ProvaMotore.h"

#include "dialogs/FrmAnteprima.h"

#include <QFile>
#include <QLineEdit>
#include <QTcpServer>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

/// The real engine and pages that mean harm, and the switches against them.
class tst_MotoreOstile : public ProvaMotore
{
    Q_OBJECT

private slots:
    void SenzaScript();
    void SenzaRete();
    void MemoriaDelProgramma();
    void DopoUnaPaginaOstile_data();
    void DopoUnaPaginaOstile();
};

void tst_MotoreOstile::SenzaScript()
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

void tst_MotoreOstile::SenzaRete()
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

void tst_MotoreOstile::MemoriaDelProgramma()
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

void tst_MotoreOstile::DopoUnaPaginaOstile_data()
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

void tst_MotoreOstile::DopoUnaPaginaOstile()
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

QTEST_MAIN(tst_MotoreOstile)
#include "tst_motoreostile.moc"
