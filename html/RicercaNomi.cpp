#include "html/RicercaNomi.h"

#include <QChar>

namespace
{

[[nodiscard]] char16_t Piega(char16_t unita)
{
    if (unita < 0x80)
        return unita >= u'A' && unita <= u'Z' ? char16_t(unita + 32) : unita;
    return QChar(unita).toCaseFolded().unicode();
}

[[nodiscard]] constexpr quint64 Chiave(int nodo, char16_t unita)
{
    return quint64(quint32(nodo)) << 16 | unita;
}

} // namespace

RicercaNomi::RicercaNomi() : m_nodi(1) {}

int RicercaNomi::Aggiungi(QStringView nome)
{
    if (nome.isEmpty()) {
        if (m_vuoto < 0)
            m_vuoto = m_nomi++;
        return m_vuoto;
    }
    int nodo = 0;
    for (const QChar c : nome)
        nodo = AggiungiFiglio(nodo, Piega(c.unicode()));
    int &numero = m_nodi[size_t(nodo)].nome;
    if (numero < 0)
        numero = m_nomi++;
    return numero;
}

size_t RicercaNomi::Posto(quint64 chiave) const
{
    const size_t maschera = m_archi.size() - 1;
    size_t posto = size_t((chiave * 0x9e3779b97f4a7c15u) >> 32) & maschera;
    while (m_archi[posto].chiave != 0 && m_archi[posto].chiave != chiave)
        posto = (posto + 1) & maschera;
    return posto;
}

int RicercaNomi::Figlio(int nodo, char16_t unita) const
{
    if (nodo == 0)
        return m_daRadice[unita];
    const Arco &arco = m_archi[Posto(Chiave(nodo, unita))];
    return arco.chiave != 0 ? arco.verso : 0;
}

int RicercaNomi::AggiungiFiglio(int nodo, char16_t unita)
{
    if (m_daRadice.empty()) {
        m_daRadice.resize(0x10000);
        m_archi.resize(64);
    }
    if (const int figlio = Figlio(nodo, unita); figlio != 0)
        return figlio;
    const int nuovo = int(m_nodi.size());
    m_nodi.push_back({.unita = unita, .padre = nodo});
    if (nodo == 0) {
        m_daRadice[unita] = nuovo;
        return nuovo;
    }
    if (m_archi.size() < m_nodi.size() * 2) {
        const std::vector<Arco> vecchi = std::exchange(m_archi, std::vector<Arco>(m_archi.size() * 2));
        for (const Arco &arco : vecchi) {
            if (arco.chiave != 0)
                m_archi[Posto(arco.chiave)] = arco;
        }
    }
    m_archi[Posto(Chiave(nodo, unita))] = {Chiave(nodo, unita), nuovo};
    return nuovo;
}

// Nodes by depth, so that what a node falls back on is ready before it.
void RicercaNomi::Collega()
{
    std::vector<int> profondita(m_nodi.size());
    std::vector<std::vector<int>> livelli;
    for (size_t n = 1; n < m_nodi.size(); ++n) {
        const int livello = profondita[n] = profondita[size_t(m_nodi[n].padre)] + 1;
        if (livelli.size() < size_t(livello))
            livelli.resize(size_t(livello));
        livelli[size_t(livello) - 1].push_back(int(n));
    }
    for (const std::vector<int> &livello : livelli) {
        for (const int n : livello) {
            Nodo &nodo = m_nodi[size_t(n)];
            int ripiego = nodo.padre;
            int figlio = 0;
            while (ripiego != 0 && figlio == 0) {
                ripiego = m_nodi[size_t(ripiego)].ripiego;
                figlio = Figlio(ripiego, nodo.unita);
            }
            nodo.ripiego = figlio;
            nodo.superiore = m_nodi[size_t(figlio)].nome >= 0 ? figlio : m_nodi[size_t(figlio)].superiore;
        }
    }
}

std::vector<qsizetype> RicercaNomi::Cerca(QStringView testo)
{
    std::vector<qsizetype> trovati(size_t(m_nomi), -1);
    int mancanti = m_nomi;
    if (m_vuoto >= 0 && !testo.isEmpty()) {
        trovati[size_t(m_vuoto)] = 0;
        --mancanti;
    }
    if (m_nodi.size() == 1)
        return trovati;
    Collega();
    int nodo = 0;
    for (qsizetype i = 0; i < testo.size(); ++i) {
        const char16_t unita = Piega(testo[i].unicode());
        int prossimo = Figlio(nodo, unita);
        while (prossimo == 0 && nodo != 0) {
            nodo = m_nodi[size_t(nodo)].ripiego;
            prossimo = Figlio(nodo, unita);
        }
        nodo = prossimo;
        // A name found before has had all that end with it found, too.
        for (int n = nodo; n > 0; n = m_nodi[size_t(n)].superiore) {
            const int nome = m_nodi[size_t(n)].nome;
            if (nome < 0)
                continue;
            if (trovati[size_t(nome)] >= 0)
                break;
            trovati[size_t(nome)] = i + 1;
            if (--mancanti == 0)
                return trovati;
        }
    }
    return trovati;
}
