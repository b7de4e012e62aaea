#include "html/Risultati.h"

#include "html/RicercaNomi.h"

#include "app/TabellaLingua.h"

#include <algorithm>

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

/// What stands between the first two single quotes; a null view when they are missing.
[[nodiscard]] QStringView NomeQuotato(QStringView messaggio)
{
    const qsizetype apre = messaggio.indexOf(u'\'');
    const qsizetype chiude = apre < 1 ? -1 : messaggio.indexOf(u'\'', apre + 1);
    return chiude < 0 ? QStringView() : messaggio.sliced(apre + 1, chiude - apre - 1);
}

/// Whether \a nome stands where the finding was made: there, or one unit further when a quote or a slash precedes it;
/// there as it was, or moved by what the page has grown.
[[nodiscard]] bool AlSuoPosto(QStringView pagina, QStringView nome, qsizetype posizione, qsizetype cresciuta)
{
    const auto sta = [pagina, nome](qsizetype dove) {
        return dove >= 0 && nome.size() <= pagina.size() - dove &&
               pagina.sliced(dove, nome.size()).compare(nome, Qt::CaseInsensitive) == 0;
    };
    if (nome.isEmpty() || sta(posizione) || sta(posizione + 1))
        return true;
    return cresciuta != 0 && (sta(posizione + cresciuta) || sta(posizione + cresciuta + 1));
}

/// The part of \a nuova that may hold a name which \a vecchia does not hold.
[[nodiscard]] QStringView ParteCambiata(QStringView vecchia, QStringView nuova)
{
    constexpr qsizetype Passo = 4096;
    const qsizetype comune = std::min(vecchia.size(), nuova.size());
    qsizetype testa = 0, coda = 0;
    while (testa + Passo <= comune && vecchia.sliced(testa, Passo) == nuova.sliced(testa, Passo))
        testa += Passo;
    while (testa < comune && vecchia[testa] == nuova[testa])
        ++testa;
    const auto daFondo = [&coda](QStringView testo, qsizetype quanti) {
        return testo.sliced(testo.size() - coda - quanti, quanti);
    };
    while (coda + Passo <= comune - testa && daFondo(vecchia, Passo) == daFondo(nuova, Passo))
        coda += Passo;
    while (coda < comune - testa && daFondo(vecchia, 1) == daFondo(nuova, 1))
        ++coda;
    const qsizetype da = std::max<qsizetype>(0, testa - MassimoNome);
    return nuova.sliced(da, std::min(nuova.size(), nuova.size() - coda + MassimoNome) - da);
}

} // namespace

void Registro::Azzera()
{
    m_messaggi.clear();
    m_risultati = {RisultatoControllo()};
    m_lunghezze.assign(1, 0);
    m_assenti.assign(1, false);
    m_cercata.clear();
}

bool Registro::EsisteRisultato(QStringView testo) const
{
    return testo.isEmpty() || m_messaggi.contains(testo);
}

bool Registro::Aggiungi(const Riscontro &riscontro, qsizetype lunghezza)
{
    ScriviMessaggio(m_prova, riscontro);
    if (EsisteRisultato(m_prova))
        return false;
    const QString messaggio(m_prova.constData(), m_prova.size());
    m_messaggi.insert(messaggio);
    m_risultati.append({qint32(riscontro.posizione), qint32(riscontro.riga), riscontro.tipo, messaggio});
    m_lunghezze.push_back(lunghezza);
    m_assenti.push_back(false);
    return true;
}

QList<Registro::Voce> Registro::Visibili(const QString &pagina)
{
    struct DaCercare {
        qsizetype riga;   ///< of the list
        size_t risultato; ///< slot
        int numero;       ///< of the name in its search
        bool vicino;      ///< only in what has changed
    };
    QList<Voce> voci;
    voci.reserve(m_risultati.size() - 1);
    RicercaNomi ovunque, vicino;
    std::vector<DaCercare> daCercare;
    for (int i = 1; i < m_risultati.size(); ++i) {
        const RisultatoControllo &risultato = m_risultati[i];
        Voce voce{SuUnaRiga(risultato.Testo), risultato.Posizione, i};
        const QStringView nome = NomeQuotato(voce.testo);
        if (nome.isNull() || pagina.isEmpty())
            continue;
        char &assente = m_assenti[size_t(i)];
        if (AlSuoPosto(pagina, nome, risultato.Posizione, pagina.size() - m_lunghezze[size_t(i)]))
            assente = false;
        else
            daCercare.push_back({voci.size(), size_t(i), (assente ? vicino : ovunque).Aggiungi(nome), bool(assente)});
        voci.append(std::move(voce));
    }
    if (daCercare.empty())
        return voci;
    const std::vector<char> trovatiOvunque = ovunque.Cerca(pagina);
    const std::vector<char> trovatiVicino = vicino.Cerca(ParteCambiata(m_cercata, pagina));
    m_cercata = pagina;
    for (const DaCercare &d : daCercare)
        m_assenti[d.risultato] = !(d.vicino ? trovatiVicino : trovatiOvunque)[size_t(d.numero)];
    voci.removeIf([this](const Voce &voce) { return m_assenti[size_t(voce.risultato)] != 0; });
    return voci;
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
