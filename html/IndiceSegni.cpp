#include "html/IndiceSegni.h"

#include "platform/RichTextBox.h"

#include <algorithm>

namespace
{

constexpr int Brano = 1 << 16; ///< units read at a time

} // namespace

IndiceSegni::IndiceSegni(RichTextBox *editor, int lunghezza, Cerca cerca)
    : QObject(editor), m_editor(editor), m_lunghezzaSegno(lunghezza), m_cerca(cerca)
{
    connect(editor, &RichTextBox::TestoCambiato, this, &IndiceSegni::Aggiorna);
    Aggiorna(0, 0, editor->Lunghezza());
}

void IndiceSegni::Aggiorna(int da, int tolti, int aggiunti)
{
    // A mark that the change touches starts before it, but not by more than its length.
    const int inizio = std::max(0, da - m_lunghezzaSegno + 1);
    SpostaVarco(inizio);
    while (!m_dopo.empty() && m_lunghezza - m_dopo.back() < da + tolti)
        m_dopo.pop_back();
    m_lunghezza = m_editor->Lunghezza();
    Leggi(inizio, da + aggiunti);
}

void IndiceSegni::SpostaVarco(int posizione)
{
    while (!m_prima.empty() && m_prima.back() >= posizione) {
        m_dopo.push_back(m_lunghezza - m_prima.back());
        m_prima.pop_back();
    }
    while (!m_dopo.empty() && m_lunghezza - m_dopo.back() < posizione) {
        m_prima.push_back(m_lunghezza - m_dopo.back());
        m_dopo.pop_back();
    }
}

void IndiceSegni::Leggi(int da, int a)
{
    for (int brano = da; brano < a; brano += Brano) {
        const int fineBrano = std::min(brano + Brano, a);
        const QString testo = m_editor->Parte(brano, fineBrano - brano + m_lunghezzaSegno - 1);
        m_unitaLette += testo.size();
        m_cerca(testo, fineBrano - brano, [this, brano](qsizetype dove) { m_prima.push_back(brano + int(dove)); });
    }
}

int IndiceSegni::UltimoDa(int posizione) const
{
    // m_dopo descends in distance from the end towards its back: its positions ascend from back to front.
    const auto oltre = std::upper_bound(m_dopo.rbegin(), m_dopo.rend(), posizione,
                                        [this](int cercata, int dalFondo) { return cercata < m_lunghezza - dalFondo; });
    if (oltre != m_dopo.rbegin())
        return m_lunghezza - *std::prev(oltre);
    const auto prima = std::upper_bound(m_prima.begin(), m_prima.end(), posizione);
    return prima == m_prima.begin() ? -1 : *std::prev(prima);
}
