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
    if (sta(posizione) || sta(posizione + 1))
        return true;
    return cresciuta != 0 && (sta(posizione + cresciuta) || sta(posizione + cresciuta + 1));
}

} // namespace

void Registro::Azzera()
{
    m_messaggi.clear();
    m_risultati = {RisultatoControllo()};
    m_lunghezze.assign(1, 0);
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
    return true;
}

QList<Registro::Voce> Registro::Visibili(QStringView pagina) const
{
    QList<Voce> voci;
    voci.reserve(m_risultati.size() - 1);
    RicercaNomi ricerca;
    std::vector<std::pair<qsizetype, int>> daCercare; // line of the list, number of its name
    for (int i = 1; i < m_risultati.size(); ++i) {
        const RisultatoControllo &risultato = m_risultati[i];
        Voce voce{SuUnaRiga(risultato.Testo), risultato.Posizione, i};
        const QStringView nome = NomeQuotato(voce.testo);
        if (nome.isNull() || pagina.isEmpty())
            continue;
        if (!AlSuoPosto(pagina, nome, risultato.Posizione, pagina.size() - m_lunghezze[size_t(i)]))
            daCercare.emplace_back(voci.size(), ricerca.Aggiungi(nome));
        voci.append(std::move(voce));
    }
    if (daCercare.empty())
        return voci;
    const std::vector<char> trovati = ricerca.Cerca(pagina);
    std::erase_if(daCercare, [&](const auto &coppia) { return trovati[size_t(coppia.second)] != 0; });
    auto prossimo = daCercare.cbegin();
    qsizetype riga = 0;
    voci.removeIf([&](const Voce &) {
        const bool manca = prossimo != daCercare.cend() && prossimo->first == riga;
        prossimo += manca;
        ++riga;
        return manca;
    });
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
