#include "Ripresa.h"

#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

// Looks before each frame whether the page is long enough by now, until it is loaded or the user scrolls. For a moment
// longer nothing else moves it: what scripts put in above the place would, as the engine holds on to what is seen.
constexpr auto Programma = uR"(
history.scrollRestoration = 'manual';
(() => {
    const x = %1, y = %2, durata = 2000;
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
        if (foglio && foglio.scrollHeight - innerHeight >= y)
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

void Ripresa::Dimentica()
{
    m_posto = {};
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
    programma.setSourceCode(QString::fromUtf16(Programma).arg(Numero(m_posto.x()), Numero(m_posto.y())));
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
