#include "html/ElencoRisultati.h"

#include "html/TestoRiscontro.h"

#include <QHash>

#include <iterator>
#include <unordered_set>

using namespace ModuloVerificaSintassi;

namespace
{

constexpr qsizetype LontanoMassimo = 65'536; // units around a change in which the ends of its tags are looked for

/// The faults of a walk, as the list keeps them.
class Raccolta : public Ricevitore
{
public:
    void Trova(const Riscontro &riscontro) override { falli.push_back(ElencoRisultati::Da(riscontro)); }

    ElencoRisultati::Falli falli;
};

/// What a line of the list says.
struct Detto {
    int riga;
    TipoRisultato tipo;
    QStringView nome;
    bool operator==(const Detto &) const = default;
};

struct Impronta {
    size_t operator()(const Detto &d) const { return qHashMulti(0, d.riga, int(d.tipo), d.nome); }
};

} // namespace

ElencoRisultati::Fallo ElencoRisultati::Da(const Riscontro &riscontro)
{
    return {.posizione = riscontro.posizione,
            .tipo = riscontro.tipo,
            .nome = SuUnaRiga(riscontro.nome.first(std::min(riscontro.nome.size(), MassimoNome)))};
}

void ElencoRisultati::Sposta(Falli &falli, const Cambiamento &cambiamento)
{
    const qsizetype fine = cambiamento.da + cambiamento.tolti;
    std::erase_if(falli, [&](const Fallo &fallo) {
        return fallo.posizione < fine && fallo.posizione + fallo.nome.size() > cambiamento.da;
    });
    for (Fallo &fallo : falli) {
        if (fallo.posizione >= fine)
            fallo.posizione += cambiamento.aggiunti - cambiamento.tolti;
    }
}

void ElencoRisultati::ImpostaPagina(const PaginaVista *pagina)
{
    Svuota();
    m_pagina = pagina;
    m_righePagina = pagina ? pagina->NumeroRighe() : 0;
}

void ElencoRisultati::Svuota()
{
    MettiRighe(0, m_falli.size(), {});
}

size_t ElencoRisultati::PrimoDa(qsizetype posizione, size_t dopo) const
{
    const auto primo = std::lower_bound(m_falli.begin() + qsizetype(dopo), m_falli.end(), posizione,
                                        [](const Fallo &fallo, qsizetype dove) { return fallo.posizione < dove; });
    return size_t(primo - m_falli.begin());
}

// Behind a ">" no tag is open, whatever stood before it: from one to the next a page can be walked by itself.
ElencoRisultati::Zona ElencoRisultati::ZonaDi(const Cambiamento &cambiamento) const
{
    Zona zona{cambiamento.da, std::min(cambiamento.da + cambiamento.aggiunti, m_pagina->Lunghezza())};
    const qsizetype minimo = std::max<qsizetype>(0, zona.inizio - LontanoMassimo);
    while (zona.inizio > minimo && m_pagina->Unita(zona.inizio - 1) != u'>')
        --zona.inizio;
    const qsizetype massimo = std::min(m_pagina->Lunghezza(), zona.fine + LontanoMassimo);
    bool chiusa = false;
    while (zona.fine < massimo && !chiusa)
        chiusa = m_pagina->Unita(zona.fine++) == u'>';
    return zona;
}

/// Whether the fault, found in the page as it is now, was listed there before.
bool ElencoRisultati::Noto(const Fallo &fallo, const Cambiamento &cambiamento) const
{
    qsizetype dove = fallo.posizione;
    if (dove >= cambiamento.da + cambiamento.aggiunti)
        dove += cambiamento.tolti - cambiamento.aggiunti;
    else if (dove >= cambiamento.da)
        return false;
    for (size_t i = PrimoDa(dove); i < m_falli.size() && m_falli[i].posizione == dove; ++i) {
        if (m_falli[i].Stesso(fallo))
            return true;
    }
    return false;
}

ElencoRisultati::Falli ElencoRisultati::Rileggi(const Zona &zona, const Cambiamento &cambiamento, bool &nonVisti) const
{
    Raccolta raccolta;
    const QString testo = m_pagina->Parte(zona.inizio, zona.fine - zona.inizio);
    (void)Scandisci(testo, {.scarto = zona.inizio}, raccolta);
    // The mark stands behind the quote of a value.
    const auto segnata = [this](qsizetype dove) { return dove < m_pagina->Lunghezza() && m_pagina->Segnata(dove); };
    // Not while its tag is being typed in front of the next one.
    const auto finito = [&](const Fallo &fallo) {
        const qsizetype inizio = fallo.posizione - zona.inizio;
        const qsizetype fine = testo.indexOf(u'>', inizio);
        return fine >= 0 && !QStringView(testo).sliced(inizio, fine - inizio).contains(u'<');
    };
    std::erase_if(raccolta.falli, [&](const Fallo &fallo) {
        const bool ignoto = !segnata(fallo.posizione) && !segnata(fallo.posizione + 1) && !Noto(fallo, cambiamento);
        nonVisti = nonVisti || (ignoto && finito(fallo));
        return ignoto;
    });
    return std::move(raccolta.falli);
}

void ElencoRisultati::Aggiorna(const Cambiamento &cambiamento)
{
    if (!m_pagina || cambiamento.Nullo())
        return;
    const qsizetype cresciuta = cambiamento.aggiunti - cambiamento.tolti;
    const Zona zona = ZonaDi(cambiamento);
    const size_t da = PrimoDa(zona.inizio);
    const size_t fino = std::max(da, PrimoDa(zona.fine - cresciuta));
    bool nonVisti = false;
    Falli nuovi = Rileggi(zona, cambiamento, nonVisti);
    for (size_t i = fino; i < m_falli.size(); ++i)
        m_falli[i].posizione += cresciuta;
    Sostituisci(da, fino, std::move(nuovi), zona);
    if (nonVisti)
        emit FalloNonVisto();
}

void ElencoRisultati::Imposta(Falli trovati, qsizetype fino)
{
    if (!m_pagina)
        return;
    const bool tutti = fino >= m_pagina->Lunghezza();
    Sostituisci(0, tutti ? m_falli.size() : PrimoDa(fino), std::move(trovati), {0, fino});
}

/// The faults from \a da to \a fino, which are those of \a zona, are \a nuovi now; the others have their new places.
void ElencoRisultati::Sostituisci(size_t da, size_t fino, Falli nuovi, const Zona &zona)
{
    const int righePrima = std::exchange(m_righePagina, m_pagina->NumeroRighe());
    const bool stesseRighe = m_righePagina == righePrima && m_pagina->Riga(zona.inizio) == m_pagina->Riga(zona.fine);
    const auto inizio = m_falli.begin();
    if (stesseRighe && std::equal(inizio + qsizetype(da), inizio + qsizetype(fino), nuovi.begin(), nuovi.end(),
                                  [](const Fallo &a, const Fallo &b) { return a.Stesso(b); })) {
        for (size_t i = da; i < fino; ++i)
            m_falli[i].posizione = nuovi[i - da].posizione;
        return;
    }
    // What a line says once depends on the whole line.
    const size_t primo = std::min(da, PrimoDa(m_pagina->LimitiRiga(zona.inizio).first));
    const size_t ultimo = PrimoDa(m_pagina->LimitiRiga(zona.fine).second, fino);
    constexpr size_t Pochi = 8;
    if (stesseRighe && fino - da + nuovi.size() <= Pochi) {
        fino = SegnaRipetuti(primo, da, fino, ultimo, nuovi);
    } else {
        nuovi.insert(nuovi.begin(), inizio + qsizetype(primo), inizio + qsizetype(da));
        nuovi.insert(nuovi.end(), inizio + qsizetype(fino), inizio + qsizetype(ultimo));
        SegnaRipetuti(nuovi);
        da = primo;
        fino = ultimo;
    }
    MettiRighe(da, fino, std::move(nuovi));
    if (!stesseRighe && rowCount() > 0)
        emit dataChanged(index(0), index(rowCount() - 1)); // their lines of the page
}

void ElencoRisultati::SegnaRipetuti(Falli &falli) const
{
    std::unordered_set<Detto, Impronta> detti;
    detti.reserve(falli.size());
    for (Fallo &fallo : falli)
        fallo.ripetuto = !detti.insert({m_pagina->Riga(fallo.posizione), fallo.tipo, fallo.nome}).second;
}

/// The same for few faults: \a nuovi take the place of those from \a da to \a fino, all within the line that goes from
/// \a primo to \a ultimo. Those behind that change, too, are added to \a nuovi; the end of what they replace is given.
size_t ElencoRisultati::SegnaRipetuti(size_t primo, size_t da, size_t fino, size_t ultimo, Falli &nuovi) const
{
    std::vector<std::pair<const Fallo *, bool>> detti; // names that come or go; whether the line has said them
    for (size_t i = da; i < fino; ++i)
        detti.emplace_back(&m_falli[i], false);
    const Falli copia = nuovi;
    for (const Fallo &fallo : copia)
        detti.emplace_back(&fallo, false);
    const auto gia = [&detti](const Fallo &fallo, bool altrimenti) {
        bool detto = altrimenti;
        for (auto &[nome, visto] : detti) {
            if (nome->Stesso(fallo))
                detto = std::exchange(visto, true);
        }
        return detto;
    };
    for (size_t i = primo; i < da; ++i)
        (void)gia(m_falli[i], false);
    for (Fallo &fallo : nuovi)
        fallo.ripetuto = gia(fallo, false);
    size_t oltre = fino;
    std::vector<size_t> altri;
    for (size_t i = fino; i < ultimo; ++i) {
        if (gia(m_falli[i], m_falli[i].ripetuto) != m_falli[i].ripetuto) {
            altri.push_back(i);
            oltre = i + 1;
        }
    }
    const size_t prima = nuovi.size();
    nuovi.insert(nuovi.end(), m_falli.begin() + qsizetype(fino), m_falli.begin() + qsizetype(oltre));
    for (const size_t i : altri)
        nuovi[prima + i - fino].ripetuto = !m_falli[i].ripetuto;
    return oltre;
}

/// Puts \a nuovi in place of as many others that are listed, or not, as they are. False when they are not, or too many
/// of them say something else.
bool ElencoRisultati::Rinomina(size_t da, size_t fino, Falli &nuovi)
{
    constexpr size_t Poche = 16;
    std::vector<int> cambiate;
    if (nuovi.size() != fino - da)
        return false;
    for (size_t i = da; i < fino; ++i) {
        const Fallo &nuovo = nuovi[i - da];
        if (nuovo.ripetuto != m_falli[i].ripetuto || cambiate.size() > Poche)
            return false;
        if (!nuovo.ripetuto && !nuovo.Stesso(m_falli[i]))
            cambiate.push_back(int(std::lower_bound(m_righe.begin(), m_righe.end(), int(i)) - m_righe.begin()));
    }
    std::move(nuovi.begin(), nuovi.end(), m_falli.begin() + qsizetype(da));
    for (const int riga : cambiate)
        emit dataChanged(index(riga), index(riga));
    return true;
}

// Only what lies between the lines that stayed is told as changed, so that the view keeps its place and its choice.
void ElencoRisultati::MettiRighe(size_t da, size_t fino, Falli nuovi)
{
    if (Rinomina(da, fino, nuovi))
        return;
    const int quante = rowCount();
    std::vector<const Fallo *> dopo;
    for (const Fallo &fallo : nuovi) {
        if (!fallo.ripetuto)
            dopo.push_back(&fallo);
    }
    const int prima = int(std::lower_bound(m_righe.begin(), m_righe.end(), int(da)) - m_righe.begin());
    const int oltre = int(std::lower_bound(m_righe.begin(), m_righe.end(), int(fino)) - m_righe.begin());
    const auto vecchia = [this](int riga) -> const Fallo & { return m_falli[size_t(m_righe[size_t(riga)])]; };
    const int comuni = std::min(oltre - prima, int(dopo.size()));
    int testa = 0;
    while (testa < comuni && vecchia(prima + testa).Stesso(*dopo[size_t(testa)]))
        ++testa;
    int coda = 0;
    while (coda < comuni - testa && vecchia(oltre - 1 - coda).Stesso(*dopo[dopo.size() - 1 - size_t(coda)]))
        ++coda;
    const int inizio = prima + testa;
    if (const int tolte = oltre - prima - testa - coda; tolte > 0) {
        beginRemoveRows({}, inizio, inizio + tolte - 1);
        m_righe.erase(m_righe.begin() + inizio, m_righe.begin() + inizio + tolte);
        endRemoveRows();
    }
    MettiFalli(da, fino, std::move(nuovi));
    std::vector<int> righe;
    righe.reserve(m_falli.size());
    for (size_t i = 0; i < m_falli.size(); ++i) {
        if (!m_falli[i].ripetuto)
            righe.push_back(int(i));
    }
    m_righe = righe;
    if (const int aggiunte = int(dopo.size()) - testa - coda; aggiunte > 0) {
        m_righe.erase(m_righe.begin() + inizio, m_righe.begin() + inizio + aggiunte);
        beginInsertRows({}, inizio, inizio + aggiunte - 1);
        m_righe = std::move(righe);
        endInsertRows();
    }
    if (rowCount() != quante)
        emit NumeroCambiato(rowCount());
}

void ElencoRisultati::MettiFalli(size_t da, size_t fino, Falli nuovi)
{
    const qsizetype comuni = qsizetype(std::min(fino - da, nuovi.size()));
    const auto posto = std::move(nuovi.begin(), nuovi.begin() + comuni, m_falli.begin() + qsizetype(da));
    if (nuovi.size() > fino - da)
        m_falli.insert(posto, std::make_move_iterator(nuovi.begin() + comuni), std::make_move_iterator(nuovi.end()));
    else
        m_falli.erase(posto, m_falli.begin() + qsizetype(fino));
}

int ElencoRisultati::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : int(m_righe.size());
}

QVariant ElencoRisultati::data(const QModelIndex &indice, int ruolo) const
{
    if (!m_pagina || !indice.isValid() || indice.row() >= rowCount() ||
        (ruolo != Qt::DisplayRole && ruolo != Qt::ToolTipRole))
        return {};
    const Fallo &fallo = m_falli[size_t(m_righe[size_t(indice.row())])];
    const QString testo = TestoRiscontro(m_pagina->Riga(fallo.posizione), fallo.tipo, fallo.nome);
    // A name may hold "<": a tool tip must not take it for formatting.
    return ruolo == Qt::ToolTipRole ? testo.toHtmlEscaped() : testo;
}
