#include "html/Risultati.h"

#include "html/RicercaNomi.h"

#include "app/TabellaLingua.h"
#include "platform/Cercatore.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ModuloVerificaSintassi
{
namespace
{

void ScriviMessaggio(QString &messaggio, const Riscontro &riscontro)
{
    const auto intorno = [&](const QString &prima, const QString &dopo) {
        messaggio.append(prima);
        messaggio.append(u" '");
        messaggio.append(riscontro.nome.first(std::min(riscontro.nome.size(), MassimoNome)));
        messaggio.append(u"' ");
        messaggio.append(dopo);
    };
    messaggio.resize(0);
    messaggio.append(QString::number(riscontro.riga));
    messaggio.append(u": ");
    switch (riscontro.tipo) {
    case TagSconosciuto:
        intorno(u"Il tag"_s, u"non esiste."_s);
        break;
    case AttributoErrato:
        intorno(ModuloPrincipale::Messaggio(81), ModuloPrincipale::Messaggio(82));
        break;
    case ValoreErrato:
        intorno(ModuloPrincipale::Messaggio(83), ModuloPrincipale::Messaggio(84));
        break;
    }
}

[[nodiscard]] QString SuUnaRiga(const QString &messaggio)
{
    if (!messaggio.contains(u'\n') && !messaggio.contains(u'\r'))
        return messaggio;
    return QString(messaggio).remove(u'\n').remove(u'\r');
}

[[nodiscard]] bool Sta(const LettorePagina &pagina, QStringView nome, qsizetype dove)
{
    return pagina.Parte(dove, nome.size()).compare(nome, Qt::CaseInsensitive) == 0;
}

class LettoreTesto : public LettorePagina
{
public:
    explicit LettoreTesto(const QString &testo) : m_testo(testo) {}
    [[nodiscard]] qsizetype Lunghezza() const override { return m_testo.size(); }
    [[nodiscard]] QString Parte(qsizetype da, qsizetype quanti) const override { return m_testo.mid(da, quanti); }
    [[nodiscard]] QString Tutta() const override { return m_testo; }

private:
    const QString &m_testo;
};

} // namespace

// The name is what stands between the first two single quotes.
Registro::Posto Registro::PostoDi(const QString &messaggio)
{
    Posto posto;
    posto.riga = SuUnaRiga(messaggio);
    const qsizetype apre = posto.riga.indexOf(u'\'');
    const qsizetype chiude = apre < 1 ? -1 : posto.riga.indexOf(u'\'', apre + 1);
    if (chiude >= 0) {
        posto.nome = int(apre) + 1;
        posto.quanti = int(chiude - apre) - 1;
    }
    return posto;
}

void Registro::Azzera()
{
    m_messaggi.clear();
    m_risultati = {RisultatoControllo()};
    m_posti.assign(1, Posto());
    m_voci.clear();
}

bool Registro::EsisteRisultato(QStringView testo) const
{
    return testo.isEmpty() || m_messaggi.contains(testo);
}

bool Registro::Aggiungi(const Riscontro &riscontro)
{
    ScriviMessaggio(m_prova, riscontro);
    if (EsisteRisultato(m_prova))
        return false;
    const QString messaggio(m_prova.constData(), m_prova.size());
    m_messaggi.insert(messaggio);
    m_risultati.append({qint32(riscontro.posizione), qint32(riscontro.riga), riscontro.tipo, messaggio});
    m_posti.push_back(PostoDi(messaggio));
    return true;
}

void Registro::Sposta(const Cambiamento &cambiamento)
{
    for (Posto &posto : m_posti) {
        if (posto.stato != Posto::Trovato || posto.dove + posto.quanti <= cambiamento.da)
            continue;
        if (posto.dove >= cambiamento.da + cambiamento.tolti)
            posto.dove += cambiamento.aggiunti - cambiamento.tolti;
        else
            posto.stato = Posto::Perso;
    }
}

void Registro::Cerca(const LettorePagina &pagina, const Cambiamento &cambiamento)
{
    struct DaCercare {
        Posto *posto;
        int numero; ///< of the name in its search
    };
    std::vector<DaCercare> vicini, ovunque;
    RicercaNomi traVicini, traTutti;
    const auto trova = [](const DaCercare &d, const std::vector<qsizetype> &fini, qsizetype inizio) {
        const qsizetype fine = fini[size_t(d.numero)];
        if (fine >= 0)
            d.posto->dove = inizio + fine - d.posto->quanti;
        d.posto->stato = fine < 0 ? Posto::Assente : Posto::Trovato;
        return fine >= 0;
    };

    for (int i = 1; i < m_risultati.size(); ++i) {
        Posto &posto = m_posti[size_t(i)];
        if (posto.stato == Posto::Trovato)
            continue;
        // The name stands where its finding was made, or one unit further when a quote or a slash precedes it.
        const qsizetype dove = m_risultati[i].Posizione;
        if (posto.quanti <= 0) {
            posto.stato = posto.quanti < 0 ? Posto::Assente : Posto::Trovato;
            continue;
        }
        const QStringView nome = posto.Nome();
        if (posto.stato != Posto::Nuovo)
            vicini.push_back({&posto, traVicini.Aggiungi(nome)});
        else if (const bool qui = Sta(pagina, nome, dove); qui || Sta(pagina, nome, dove + 1)) {
            posto.stato = Posto::Trovato;
            posto.dove = dove + (qui ? 0 : 1);
        } else
            ovunque.push_back({&posto, traTutti.Aggiungi(nome)});
    }
    if (!vicini.empty()) {
        const qsizetype inizio = std::max<qsizetype>(0, cambiamento.da - MassimoNome);
        const qsizetype fine = cambiamento.da + cambiamento.aggiunti + MassimoNome;
        const std::vector<qsizetype> fini = traVicini.Cerca(pagina.Parte(inizio, fine - inizio));
        for (const DaCercare &d : vicini) {
            const bool perso = d.posto->stato == Posto::Perso;
            if (!trova(d, fini, inizio) && perso)
                ovunque.push_back({d.posto, traTutti.Aggiungi(d.posto->Nome())});
        }
    }
    constexpr size_t Pochi = 4; // so few are looked for one by one more quickly
    if (!ovunque.empty() && ovunque.size() <= Pochi) {
        const QString tutta = pagina.Tutta();
        for (const DaCercare &d : ovunque) {
            d.posto->dove = Cercatore(d.posto->Nome(), Qt::CaseInsensitive).Prossimo(tutta, 0);
            d.posto->stato = d.posto->dove < 0 ? Posto::Assente : Posto::Trovato;
        }
    } else if (!ovunque.empty()) {
        const std::vector<qsizetype> fini = traTutti.Cerca(pagina.Tutta());
        for (const DaCercare &d : ovunque)
            (void)trova(d, fini, 0);
    }
}

const QList<Registro::Voce> &Registro::Visibili(const LettorePagina &pagina,
                                                const std::optional<Cambiamento> &cambiamento)
{
    if (!cambiamento) {
        for (Posto &posto : m_posti)
            posto.stato = Posto::Nuovo;
    } else if (!cambiamento->Nullo()) {
        Sposta(*cambiamento);
    }
    if (pagina.Lunghezza() > 0) {
        Cerca(pagina, cambiamento.value_or(Cambiamento()));
    } else {
        for (Posto &posto : m_posti)
            posto.stato = Posto::Assente;
    }

    AggiornaVoci();
    return m_voci;
}

// A key changes one line or none: the others keep their places, and nothing is copied for them.
void Registro::AggiornaVoci()
{
    constexpr size_t Poche = 16; // above that, all lines at once are cheaper
    std::vector<int> cambiati;
    for (size_t i = 1; i < m_posti.size(); ++i) {
        const bool visibile = m_posti[i].stato == Posto::Trovato;
        if (std::exchange(m_posti[i].visibile, visibile) != visibile)
            cambiati.push_back(int(i));
    }
    const auto voce = [this](int i) { return Voce{m_posti[size_t(i)].riga, m_risultati[i].Posizione, i}; };
    if (cambiati.size() <= Poche) {
        for (const int i : cambiati) {
            const auto posto = std::lower_bound(m_voci.cbegin(), m_voci.cend(), i,
                                                [](const Voce &v, int risultato) { return v.risultato < risultato; });
            if (m_posti[size_t(i)].visibile)
                m_voci.insert(posto, voce(i));
            else
                m_voci.erase(posto);
        }
        return;
    }
    QList<Voce> voci;
    for (int i = 1; i < m_risultati.size(); ++i) {
        if (m_posti[size_t(i)].visibile)
            voci.append(voce(i));
    }
    m_voci = std::move(voci);
}

const QList<Registro::Voce> &Registro::Visibili(const QString &pagina, const std::optional<Cambiamento> &cambiamento)
{
    return Visibili(LettoreTesto(pagina), cambiamento);
}

Registro &RegistroPagina()
{
    static Registro registro;
    return registro;
}

const QList<RisultatoControllo> &ArrayRisultati()
{
    return RegistroPagina().Risultati();
}

bool EsisteRisultato(QStringView testo)
{
    return RegistroPagina().EsisteRisultato(testo);
}

void AzzeraRisultati()
{
    RegistroPagina().Azzera();
}

} // namespace ModuloVerificaSintassi
