#include "platform/Interruzioni.h"

#include <algorithm>

int UnitaDi(Interruzione tipo)
{
    switch (tipo) {
    case Interruzione::CrLf:
        return 2;
    case Interruzione::Taglio:
        return 0;
    default:
        return 1;
    }
}

bool FineRiga(Interruzione tipo)
{
    return tipo == Interruzione::CrLf || tipo == Interruzione::Cr || tipo == Interruzione::Lf;
}

int InterruzioneIn(QStringView testo, qsizetype dove)
{
    switch (testo[dove].unicode()) {
    case u'\r':
        return int(dove + 1 < testo.size() && testo[dove + 1] == u'\n' ? Interruzione::CrLf : Interruzione::Cr);
    case u'\n':
        return int(Interruzione::Lf);
    case 0x2029:
        return int(Interruzione::Paragrafo);
    case 0xFDD0:
        return int(Interruzione::CorniceAperta);
    case 0xFDD1:
        return int(Interruzione::CorniceChiusa);
    default:
        return -1;
    }
}

void Interruzioni::Svuota()
{
    m_eccezioni.clear();
}

void Interruzioni::Sostituisci(int prima, int tolte, const std::vector<Interruzione> &nuove)
{
    const bool soloCrLf =
        std::all_of(nuove.begin(), nuove.end(), [](Interruzione tipo) { return tipo == Interruzione::CrLf; });
    if (m_eccezioni.empty() && soloCrLf)
        return;

    const size_t inizio = PrimaDa(prima);
    const size_t fine = PrimaDa(prima + tolte);
    const int spostamento = int(nuove.size()) - tolte;
    if (spostamento != 0) {
        for (size_t i = fine; i < m_eccezioni.size(); ++i)
            m_eccezioni[i].dove += spostamento;
    }
    std::vector<Eccezione> entranti;
    for (size_t i = 0; !soloCrLf && i < nuove.size(); ++i) {
        if (nuove[i] != Interruzione::CrLf)
            entranti.push_back({prima + int(i), nuove[i], 0, 0});
    }
    if (inizio == fine && entranti.empty())
        return;
    auto posto = m_eccezioni.erase(m_eccezioni.begin() + qsizetype(inizio), m_eccezioni.begin() + qsizetype(fine));
    m_eccezioni.insert(posto, entranti.begin(), entranti.end());
    Risomma(inizio);
}

Interruzione Interruzioni::Tipo(int interruzione) const
{
    const size_t i = PrimaDa(interruzione);
    return i < m_eccezioni.size() && m_eccezioni[i].dove == interruzione ? m_eccezioni[i].tipo : Interruzione::CrLf;
}

int Interruzioni::UnitaPrima(int interruzione) const
{
    const size_t i = PrimaDa(interruzione);
    return 2 * interruzione - (i == 0 ? 0 : m_eccezioni[i - 1].scarto);
}

int Interruzioni::NonRighePrima(int interruzione) const
{
    const size_t i = PrimaDa(interruzione);
    return i == 0 ? 0 : m_eccezioni[i - 1].nonRighe;
}

size_t Interruzioni::PrimaDa(int interruzione) const
{
    const auto trovata = std::lower_bound(m_eccezioni.begin(), m_eccezioni.end(), interruzione,
                                          [](const Eccezione &e, int dove) { return e.dove < dove; });
    return size_t(trovata - m_eccezioni.begin());
}

void Interruzioni::Risomma(size_t da)
{
    int scarto = da == 0 ? 0 : m_eccezioni[da - 1].scarto;
    int nonRighe = da == 0 ? 0 : m_eccezioni[da - 1].nonRighe;
    for (size_t i = da; i < m_eccezioni.size(); ++i) {
        scarto += 2 - UnitaDi(m_eccezioni[i].tipo);
        nonRighe += FineRiga(m_eccezioni[i].tipo) ? 0 : 1;
        m_eccezioni[i].scarto = scarto;
        m_eccezioni[i].nonRighe = nonRighe;
    }
}
