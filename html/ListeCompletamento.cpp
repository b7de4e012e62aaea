// The entries of the completion lists.

#include "html/ModuloCompletamento.h"

#include "html/FrmComplete.h"
#include "html/ModuloTag.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace ModuloCompletamento
{

void OrdinaLista(ListaVoci &lista, qsizetype prima, qsizetype ultima)
{
    prima = std::max<qsizetype>(prima, 0);
    ultima = std::min(ultima, lista.size() - 1);
    if (prima >= ultima)
        return;
    std::vector<std::pair<QString, VoceLista>> voci;
    voci.reserve(size_t(ultima - prima + 1));
    for (qsizetype i = prima; i <= ultima; ++i)
        voci.emplace_back(lista[i].testo.toUpper(), lista[i]);
    std::stable_sort(voci.begin(), voci.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    for (size_t i = 0; i < voci.size(); ++i)
        lista[prima + qsizetype(i)] = std::move(voci[i].second);
}

ListaVoci VociTag()
{
    const QList<ModuloTag::DatiTag> &tag = ModuloTag::ArrayTag();
    ListaVoci lista;
    lista.reserve(tag.size());
    for (qsizetype i = 1; i < tag.size(); ++i)
        lista.append({tag[i].Tag, GenereVoce::Tag});
    return lista;
}

ListaVoci VociAttributi(QStringView tag)
{
    const int casella = ModuloTag::CasellaTag(tag);
    if (casella < 1)
        return {};
    const QList<ModuloTag::DatiProprieta> &proprieta = ModuloTag::ArrayTag()[casella].Proprieta;
    ListaVoci lista;
    lista.reserve(proprieta.size());
    for (qsizetype i = 1; i < proprieta.size(); ++i) {
        const QString &nome = proprieta[i].Property;
        if (nome.startsWith(u"On"_s))
            lista.append({nome, GenereVoce::Evento});
        else
            lista.append({nome.toLower(), GenereVoce::Attributo});
    }
    OrdinaLista(lista, 0, lista.size() - 1);
    return lista;
}

ListaVoci VociValori(QStringView tag, QStringView attributo)
{
    const int casella = ModuloTag::CasellaTag(tag);
    if (casella < 1)
        return {};
    const QList<ModuloTag::DatiProprieta> &proprieta = ModuloTag::ArrayTag()[casella].Proprieta;
    const QString cercato = attributo.toString().toUpper();
    const auto trovata = std::find_if(proprieta.begin() + std::min<qsizetype>(1, proprieta.size()), proprieta.end(),
                                      [&](const auto &p) { return p.Property.toUpper() == cercato; });
    if (trovata == proprieta.end())
        return {};
    ListaVoci lista;
    lista.reserve(trovata->Valori.size());
    for (qsizetype i = 1; i < trovata->Valori.size(); ++i)
        lista.append({trovata->Valori[i], GenereVoce::Valore});
    return lista;
}

EsitoLista ListaTag(RichTextBox *editor, const QString &prefisso, bool chiesta)
{
    // Elements of drawings whose names begin those of others.
    const auto nomeIntero = [](QStringView nome) { return nome.compare(u"text", Qt::CaseInsensitive) == 0; };
    return FrmComplete::Apri(editor, VociTag(), prefisso, {.chiesta = chiesta, .nomeIntero = nomeIntero});
}

EsitoLista ListaAttributi(RichTextBox *editor, const QString &tag, const QString &prefisso, bool chiesta)
{
    // A name that other tags have is no beginning of one that this tag has.
    const auto nomeIntero = [tag](QStringView nome) { return ModuloTag::VerificaAttributo(tag, nome) != 2; };
    return FrmComplete::Apri(editor, VociAttributi(tag), prefisso, {.chiesta = chiesta, .nomeIntero = nomeIntero});
}

EsitoLista ListaValori(RichTextBox *editor, const QString &tag, const QString &attributo, const QString &prefisso,
                       bool chiesta)
{
    return FrmComplete::Apri(editor, VociValori(tag, attributo), prefisso, {.chiesta = chiesta, .valori = true});
}

} // namespace ModuloCompletamento
