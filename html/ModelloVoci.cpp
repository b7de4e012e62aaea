#include "html/ModelloVoci.h"

#include "chrome/ModuloGrafica.h"

#include <algorithm>
#include <numeric>

namespace
{

const QIcon &IconaDi(GenereVoce genere)
{
    static const std::array<QIcon, 4> Icone{ModuloGrafica::Icona(u"voce_tag"), ModuloGrafica::Icona(u"voce_attributo"),
                                            ModuloGrafica::Icona(u"voce_evento"), ModuloGrafica::Icona(u"voce_valore")};
    return Icone[size_t(genere)];
}

} // namespace

ModelloVoci::ModelloVoci(const ListaVoci &voci, QObject *parent)
    : QAbstractListModel(parent), m_voci(voci), m_visibili(size_t(voci.size()))
{
    m_maiuscole.reserve(voci.size());
    for (const VoceLista &voce : voci)
        m_maiuscole += voce.testo.toUpper();
    std::iota(m_visibili.begin(), m_visibili.end(), 0);
}

int ModelloVoci::Filtra(const QString &prefisso, int scelta)
{
    const QString cercato = prefisso.toUpper();
    const int tenuta = scelta < 0 ? -1 : m_visibili[size_t(scelta)];
    std::vector<int> iniziano, contengono;
    for (int i = 0; i < int(m_maiuscole.size()); ++i) {
        if (cercato.isEmpty() || m_maiuscole[i].startsWith(cercato)) // a null name begins with nothing
            iniziano.push_back(i);
        else if (m_maiuscole[i].contains(cercato))
            contengono.push_back(i);
    }
    if (iniziano.empty() && contengono.empty())
        return scelta;
    // Without an entry that begins with the prefix the selection does not move, and what would be inserted is seen.
    if (iniziano.empty() && tenuta >= 0) {
        iniziano.push_back(tenuta);
        std::erase(contengono, tenuta);
        scelta = 0;
    } else if (!iniziano.empty()) {
        const auto intera = std::find_if(iniziano.begin(), iniziano.end(),
                                         [&](int voce) { return !cercato.isEmpty() && m_maiuscole[voce] == cercato; });
        scelta = intera == iniziano.end() ? 0 : int(intera - iniziano.begin());
    }
    iniziano.insert(iniziano.end(), contengono.begin(), contengono.end());
    beginResetModel();
    m_visibili = std::move(iniziano);
    endResetModel();
    return scelta;
}

QString ModelloVoci::Intera(QStringView nome) const
{
    const qsizetype quale = nome.isEmpty() ? -1 : m_maiuscole.indexOf(nome.toString().toUpper());
    return quale < 0 ? QString() : m_voci[quale].testo;
}

bool ModelloVoci::Comincia(QStringView prefisso) const
{
    const QString cercato = prefisso.toString().toUpper();
    return std::any_of(m_maiuscole.cbegin(), m_maiuscole.cend(),
                       [&cercato](const QString &voce) { return voce.startsWith(cercato); });
}

int ModelloVoci::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_visibili.size());
}

QVariant ModelloVoci::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid())
        return {};
    const VoceLista &voce = m_voci[m_visibili[size_t(indice.row())]];
    if (ruolo == Qt::DisplayRole)
        return voce.testo;
    if (ruolo == Qt::DecorationRole)
        return IconaDi(voce.genere);
    return {};
}
