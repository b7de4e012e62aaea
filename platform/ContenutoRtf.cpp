#include "platform/ContenutoRtf.h"

#include "platform/Confronto.h"
#include "platform/Rtf.h"

#include <algorithm>
#include <numeric>

namespace
{

// A piece is this long or one line longer: short enough to write anew at every record, long enough to be few.
constexpr qsizetype LunghezzaPezzo = 32768;

using Viste = std::vector<QStringView>;

// Length of the common beginning (or end) of two texts given in pieces, at most \a massimo.
qsizetype Comune(const Viste &a, const Viste &b, bool daDestra, qsizetype massimo)
{
    const auto vista = [daDestra](const Viste &viste, size_t i) {
        return daDestra ? viste[viste.size() - 1 - i] : viste[i];
    };
    qsizetype uguali = 0;
    qsizetype inA = 0;
    qsizetype inB = 0;
    for (size_t i = 0, j = 0; i < a.size() && j < b.size() && uguali < massimo;) {
        QStringView va = vista(a, i);
        QStringView vb = vista(b, j);
        va = daDestra ? va.chopped(inA) : va.sliced(inA);
        vb = daDestra ? vb.chopped(inB) : vb.sliced(inB);
        const qsizetype quanti = std::min({va.size(), vb.size(), massimo - uguali});
        va = daDestra ? va.last(quanti) : va.first(quanti);
        vb = daDestra ? vb.last(quanti) : vb.first(quanti);
        const qsizetype passo = va.utf16() == vb.utf16() ? quanti : Confronto::ParteUguale(va, vb, daDestra);
        uguali += passo;
        if (passo < quanti)
            break;
        inA += quanti;
        inB += quanti;
        if (inA == vista(a, i).size()) {
            ++i;
            inA = 0;
        }
        if (inB == vista(b, j).size()) {
            ++j;
            inB = 0;
        }
    }
    return uguali;
}

ContenutoRtf::Uguaglianza ConfrontaViste(const Viste &a, qsizetype lunghezzaA, const Viste &b, qsizetype lunghezzaB)
{
    const qsizetype massimo = std::min(lunghezzaA, lunghezzaB);
    const qsizetype sinistra = Comune(a, b, false, massimo);
    return {sinistra, Comune(a, b, true, massimo - sinistra)};
}

template <typename Pezzi>
Viste VisteDi(const Pezzi &pezzi)
{
    static const QString testata = Rtf::Testata();
    static const QString coda = Rtf::Coda();
    Viste viste;
    viste.reserve(pezzi.size() + 2);
    viste.push_back(testata);
    for (const auto &pezzo : pezzi)
        viste.push_back(pezzo->rtf);
    viste.push_back(coda);
    return viste;
}

} // namespace

ContenutoRtf::ContenutoRtf()
{
    SostituisciRighe(0, 0, QString(), {0});
}

qsizetype ContenutoRtf::Lunghezza() const
{
    static const qsizetype fissa = Rtf::Testata().size() + Rtf::Coda().size();
    return m_unita + fissa;
}

QString ContenutoRtf::Testo() const
{
    return Parte(0, Lunghezza());
}

QString ContenutoRtf::Parte(qsizetype da, qsizetype quanti) const
{
    da = std::clamp<qsizetype>(da, 0, Lunghezza());
    quanti = std::clamp<qsizetype>(quanti, 0, Lunghezza() - da);
    QString parte;
    parte.reserve(quanti);
    for (const QStringView vista : VisteDi(m_pezzi)) {
        if (da < vista.size()) {
            const qsizetype qui = std::min(quanti, vista.size() - da);
            parte += vista.sliced(da, qui);
            quanti -= qui;
        }
        da = std::max<qsizetype>(0, da - vista.size());
        if (quanti == 0)
            break;
    }
    return parte;
}

ContenutoRtf::Dove ContenutoRtf::Cerca(size_t riga) const
{
    Dove dove;
    while (dove.pezzo < m_pezzi.size() && dove.righe + m_pezzi[dove.pezzo]->lunghezze.size() <= riga) {
        dove.righe += m_pezzi[dove.pezzo]->lunghezze.size();
        dove.unita += m_pezzi[dove.pezzo]->rtf.size();
        ++dove.pezzo;
    }
    return dove;
}

void ContenutoRtf::SostituisciRighe(size_t prima, size_t dopo, const QString &rtf, const std::vector<int> &lunghezze)
{
    const Dove inizio = Cerca(prima);
    const Dove fine = Cerca(dopo);
    // What stays of the pieces that are cut goes into the new ones.
    QString nuovo;
    std::vector<int> righe;
    const auto prendi = [&](size_t pezzo, size_t da, size_t a) {
        if (pezzo >= m_pezzi.size() || da == a)
            return;
        const std::vector<int> &sue = m_pezzi[pezzo]->lunghezze;
        const auto primaSua = sue.begin() + qsizetype(da);
        const auto ultimaSua = sue.begin() + qsizetype(a);
        const qsizetype unita = std::accumulate(sue.begin(), primaSua, qsizetype(0));
        nuovo += QStringView(m_pezzi[pezzo]->rtf).sliced(unita, std::accumulate(primaSua, ultimaSua, qsizetype(0)));
        righe.insert(righe.end(), primaSua, ultimaSua);
    };
    prendi(inizio.pezzo, 0, prima - inizio.righe);
    nuovo += rtf;
    righe.insert(righe.end(), lunghezze.begin(), lunghezze.end());
    const size_t ultimo = dopo > fine.righe ? fine.pezzo + 1 : fine.pezzo;
    if (ultimo > fine.pezzo)
        prendi(fine.pezzo, dopo - fine.righe, m_pezzi[fine.pezzo]->lunghezze.size());

    Pezzi nuovi;
    qsizetype inizioPezzo = 0;
    for (size_t i = 0, da = 0; da < righe.size(); da = i) {
        qsizetype unita = 0;
        // A rest too short for a piece of its own goes with the last one.
        while (i < righe.size() && (unita < LunghezzaPezzo || nuovo.size() - inizioPezzo - unita < LunghezzaPezzo / 4))
            unita += righe[i++];
        nuovi.push_back(std::make_shared<const Pezzo>(
            Pezzo{nuovo.sliced(inizioPezzo, unita), {righe.begin() + qsizetype(da), righe.begin() + qsizetype(i)}}));
        inizioPezzo += unita;
    }
    const auto primo = m_pezzi.begin() + qsizetype(inizio.pezzo);
    const auto oltre = m_pezzi.begin() + qsizetype(ultimo);
    for (auto i = primo; i != oltre; ++i) {
        m_unita -= (*i)->rtf.size();
        m_righe -= (*i)->lunghezze.size();
    }
    for (const auto &pezzo : nuovi) {
        m_unita += pezzo->rtf.size();
        m_righe += pezzo->lunghezze.size();
    }
    const auto posto = m_pezzi.erase(primo, oltre);
    m_pezzi.insert(posto, nuovi.begin(), nuovi.end());
}

ContenutoRtf::Posto ContenutoRtf::Riga(qsizetype posizione) const
{
    static const qsizetype testata = Rtf::Testata().size();
    Posto posto{0, testata, testata};
    for (const auto &pezzo : m_pezzi) {
        const bool ultimo = pezzo == m_pezzi.back();
        if (!ultimo && posto.fine + pezzo->rtf.size() <= posizione) {
            posto.riga += pezzo->lunghezze.size();
            posto.fine += pezzo->rtf.size();
            continue;
        }
        for (const int unita : pezzo->lunghezze) {
            posto.inizio = posto.fine;
            posto.fine += unita;
            if (posizione < posto.fine || posto.riga + 1 == m_righe)
                return posto;
            ++posto.riga;
        }
    }
    return posto;
}

ContenutoRtf::Uguaglianza ContenutoRtf::Confronta(const ContenutoRtf &a, const ContenutoRtf &b)
{
    return ConfrontaViste(VisteDi(a.m_pezzi), a.Lunghezza(), VisteDi(b.m_pezzi), b.Lunghezza());
}

ContenutoRtf::Uguaglianza ContenutoRtf::Confronta(QStringView rtf) const
{
    return ConfrontaViste(VisteDi(m_pezzi), Lunghezza(), {rtf}, rtf.size());
}

bool ContenutoRtf::operator==(const ContenutoRtf &altro) const
{
    if (m_unita != altro.m_unita)
        return false;
    return Comune(VisteDi(m_pezzi), VisteDi(altro.m_pezzi), false, Lunghezza()) == Lunghezza();
}
