#include "platform/CambioDocumento.h"

#include <QTextBlock>

#include <algorithm>
#include <array>

CambioDocumento::CambioDocumento(const GapBuffer<char16_t> &testo, const Interruzioni &interruzioni)
    : m_testo(testo), m_interruzioni(interruzioni)
{
}

void CambioDocumento::Restringi(const QTextBlock &primo, const QTextBlock &ultimo, int daDoc, int aDoc)
{
    bool inTesta = true;
    for (QTextBlock blocco = primo; blocco.isValid(); blocco = blocco.next()) {
        const int da = std::max(daDoc, blocco.position());
        const int a = std::min(aDoc, blocco.position() + blocco.length() - 1);
        const QString pezzo = blocco.text().mid(da - blocco.position(), a - da);
        qsizetype uguali = 0;
        if (inTesta) {
            uguali = SaltaUguali(pezzo);
            if (uguali == pezzo.size() && blocco != ultimo && SaltaInterruzione())
                continue;
            inTesta = false;
        }
        nuovo += QStringView(pezzo).sliced(uguali);
        if (blocco == ultimo)
            break;
        m_inizi.push_back(nuovo.size());
        tipi.push_back(Interruzione::CrLf);
        nuovo += u"\r\n";
    }
    TogliCoda();
}

/// How much of \a pezzo stands at the start of the old range already; the range then begins after it.
qsizetype CambioDocumento::SaltaUguali(QStringView pezzo)
{
    qsizetype uguali = 0;
    while (uguali < pezzo.size() && inizio + uguali < fine && m_testo.at(inizio + uguali) == pezzo[uguali].unicode())
        ++uguali;
    inizio += int(uguali);
    return uguali;
}

/// Whether the old range goes on with a break as well; it then begins after that.
bool CambioDocumento::SaltaInterruzione()
{
    if (prima >= dopo)
        return false;
    const Interruzione tipo = m_interruzioni.Tipo(prima);
    if (!StaIn(tipo, inizio))
        return false;
    inizio += UnitaDi(tipo);
    ++prima;
    return true;
}

/// The same from the end: equal characters, and breaks with what they stand for.
void CambioDocumento::TogliCoda()
{
    qsizetype fineNuovo = nuovo.size();
    while (fineNuovo > 0 && fine > inizio) {
        if (!m_inizi.empty() && m_inizi.back() + 2 == fineNuovo) {
            if (!TogliInterruzione())
                break;
            fineNuovo -= 2;
        } else if (m_testo.at(fine - 1) == nuovo[fineNuovo - 1].unicode()) {
            --fine;
            --fineNuovo;
        } else {
            break;
        }
    }
    nuovo.truncate(fineNuovo);
}

bool CambioDocumento::TogliInterruzione()
{
    if (dopo <= prima)
        return false;
    const Interruzione tipo = m_interruzioni.Tipo(dopo - 1);
    if (!StaIn(tipo, fine - UnitaDi(tipo)))
        return false;
    fine -= UnitaDi(tipo);
    m_inizi.pop_back();
    tipi.pop_back();
    --dopo;
    return true;
}

/// Whether the old range has \a tipo at \a dove.
bool CambioDocumento::StaIn(Interruzione tipo, int dove) const
{
    const int unita = UnitaDi(tipo);
    if (dove < inizio || dove + unita > fine)
        return false;
    if (unita == 0)
        return true;
    std::array<char16_t, 2> coppia{};
    const qsizetype quante = std::min<qsizetype>(2, m_testo.size() - dove);
    m_testo.copy(dove, quante, coppia.data());
    return InterruzioneIn(QStringView(coppia.data(), quante), 0) == int(tipo);
}
