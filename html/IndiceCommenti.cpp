#include "html/IndiceCommenti.h"

#include "platform/RichTextBox.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int LunghezzaApertura = 4;
constexpr int LunghezzaChiusura = 3;
constexpr int Brano = 1 << 16; ///< units read at a time

} // namespace

IndiceCommenti &IndiceCommenti::Di(RichTextBox *editor)
{
    for (QObject *figlio : editor->children()) {
        if (auto *indice = dynamic_cast<IndiceCommenti *>(figlio))
            return *indice;
    }
    return *new IndiceCommenti(editor);
}

IndiceCommenti::IndiceCommenti(RichTextBox *editor) : QObject(editor), m_editor(editor)
{
    connect(editor, &RichTextBox::TestoCambiato, this, &IndiceCommenti::Aggiorna);
    Aggiorna(0, 0, editor->Lunghezza());
}

void IndiceCommenti::Aggiorna(int da, int tolti, int aggiunti)
{
    // A mark that the change touches starts up to three units before it.
    const int inizio = std::max(0, da - LunghezzaApertura + 1);
    SpostaVarco(inizio);
    while (!m_dopo.empty() && m_lunghezza - m_dopo.back() < da + tolti)
        m_dopo.pop_back();
    m_lunghezza = m_editor->Lunghezza();
    Leggi(inizio, da + aggiunti);
}

void IndiceCommenti::SpostaVarco(int posizione)
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

void IndiceCommenti::Leggi(int da, int a)
{
    // Both marks hold two dashes in a row, which are rare.
    for (int brano = da; brano < a; brano += Brano) {
        const int fineBrano = std::min(brano + Brano, a);
        const QString testo = m_editor->Parte(brano, fineBrano - brano + LunghezzaApertura - 1);
        const QStringView vista(testo);
        m_unitaLette += vista.size();
        for (qsizetype i = vista.indexOf(u"--"); i >= 0; i = vista.indexOf(u"--", i + 1)) {
            const qsizetype apertura = i - 2;
            if (apertura >= 0 && apertura < fineBrano - brano && vista.sliced(apertura, 2) == u"<!")
                m_prima.push_back(brano + int(apertura));
            if (i < fineBrano - brano && vista.sliced(i).startsWith(u"-->"))
                m_prima.push_back(brano + int(i));
        }
    }
}

int IndiceCommenti::UltimoDa(int posizione) const
{
    // m_dopo descends in distance from the end towards its back: its positions ascend from back to front.
    const auto oltre = std::upper_bound(m_dopo.rbegin(), m_dopo.rend(), posizione,
                                        [this](int cercata, int dalFondo) { return cercata < m_lunghezza - dalFondo; });
    if (oltre != m_dopo.rbegin())
        return m_lunghezza - *std::prev(oltre);
    const auto prima = std::upper_bound(m_prima.begin(), m_prima.end(), posizione);
    return prima == m_prima.begin() ? -1 : *std::prev(prima);
}

bool IndiceCommenti::ApertoPrimaDi(int posizione) const
{
    int segno = UltimoDa(posizione - LunghezzaChiusura);
    if (segno >= 0 && m_editor->Unita(segno) == u'<' && segno + LunghezzaApertura > posizione)
        segno = UltimoDa(segno - 1);
    return segno >= 0 && m_editor->Unita(segno) == u'<';
}
