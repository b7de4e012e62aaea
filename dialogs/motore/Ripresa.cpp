#include "Ripresa.h"

#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

// What is seen in the upper part of the view: where the page stands, how far below the top of the view the text is, the
// character of its node, and the way to that from the document, as a child's number in each node.
constexpr auto ProgrammaAncora = uR"(
(() => {
    const punto = document.caretRangeFromPoint(innerWidth / 2, innerHeight / 3);
    if (!punto)
        return [];
    const posto = punto.getClientRects()[0] ?? punto.startContainer.parentElement.getBoundingClientRect();
    const via = [];
    for (let nodo = punto.startContainer; nodo !== document; nodo = nodo.parentNode)
        via.unshift(Array.prototype.indexOf.call(nodo.parentNode.childNodes, nodo));
    return [scrollX, scrollY, posto.top, punto.startOffset, ...via];
})()
)";

// Looks before each frame where the text that was seen is, or whether the page is long enough by now, until it is
// loaded or the user scrolls. For a moment longer nothing else moves it: what scripts put in above the place would, as
// the engine holds on to what is seen.
constexpr auto Programma = uR"(
history.scrollRestoration = 'manual';
(() => {
    const x = %1, y = %2, ancora = [%3], durata = 2000;
    const visto = () => {
        let nodo = document;
        for (const numero of ancora.slice(2))
            nodo = nodo?.childNodes[numero];
        if (!nodo || ancora.length === 0)
            return null;
        const punto = document.createRange();
        punto.setStart(nodo, Math.min(ancora[1], nodo.length ?? nodo.childNodes.length));
        return (punto.getClientRects()[0] ?? nodo.parentElement?.getBoundingClientRect())?.top ?? null;
    };
    let lascia = false;
    const vai = () => scrollTo({left: x, top: y, behavior: 'instant'});
    const tieni = () => lascia || vai();
    const smetti = () => {
        lascia = true;
        removeEventListener('scroll', tieni);
    };
    for (const gesto of ['wheel', 'mousedown'])
        addEventListener(gesto, smetti, {capture: true, passive: true, once: true});
    const passo = () => {
        const foglio = document.scrollingElement;
        if (lascia || document.readyState === 'complete')
            return;
        const alto = visto();
        if (alto !== null)
            scrollTo({left: x, top: scrollY + alto - ancora[0], behavior: 'instant'});
        else if (foglio && foglio.scrollHeight - innerHeight >= y)
            vai();
        requestAnimationFrame(passo);
    };
    requestAnimationFrame(passo);
    addEventListener('load', () => {
        tieni();
        addEventListener('scroll', tieni);
        setTimeout(smetti, durata);
    });
})();
)";

QString NomeProgramma()
{
    return u"ripresa"_s;
}

QString Numero(qreal valore)
{
    return QString::number(valore, 'f', 2);
}

} // namespace

void Ripresa::Annota(const QPointF &posto)
{
    // Before the page stands where it should, its place tells nothing.
    if (!std::exchange(m_assestata, false))
        return;
    m_posto = posto;
    m_nota = true;
}

void Ripresa::Ancora(QWebEnginePage &pagina)
{
    if (!m_assestata)
        return;
    pagina.runJavaScript(QString::fromUtf16(ProgrammaAncora), QWebEngineScript::ApplicationWorld,
                         [this, volta = m_volta](const QVariant &risposta) {
                             const QVariantList numeri = risposta.toList();
                             if (volta != m_volta || numeri.size() < 5)
                                 return;
                             m_postoAncora = {numeri[0].toDouble(), numeri[1].toDouble()};
                             QStringList scritti;
                             for (const QVariant &numero : numeri.sliced(2))
                                 scritti += Numero(numero.toDouble());
                             m_ancora = scritti.join(u',');
                         });
}

void Ripresa::Dimentica()
{
    m_posto = {};
    m_ancora.clear();
    m_nota = false;
    m_assestata = false;
}

void Ripresa::Prepara(QWebEnginePage &pagina)
{
    m_assestata = false;
    ++m_volta;
    QWebEngineScriptCollection &programmi = pagina.scripts();
    for (const QWebEngineScript &vecchio : programmi.find(NomeProgramma()))
        programmi.remove(vecchio);
    if (!m_nota)
        return;
    QWebEngineScript programma;
    programma.setName(NomeProgramma());
    programma.setWorldId(QWebEngineScript::ApplicationWorld);
    programma.setInjectionPoint(QWebEngineScript::DocumentCreation);
    // Scrolled since, it is another text.
    const bool stessa = (m_posto - m_postoAncora).manhattanLength() < 1;
    programma.setSourceCode(
        QString::fromUtf16(Programma).arg(Numero(m_posto.x()), Numero(m_posto.y()), stessa ? m_ancora : QString()));
    programmi.insert(programma);
}

void Ripresa::Concludi(QWebEnginePage &pagina)
{
    if (m_assestata)
        return;
    // Once more after all that the page does itself at its end. Not as long as it does not answer is the place its own.
    const QString programma =
        m_nota ? u"scrollTo({left: %1, top: %2, behavior: 'instant'})"_s.arg(Numero(m_posto.x()), Numero(m_posto.y()))
               : u"0"_s;
    pagina.runJavaScript(programma, QWebEngineScript::ApplicationWorld,
                         [this, volta = m_volta](const QVariant &) { m_assestata = m_assestata || volta == m_volta; });
}
