#include "bench/Tabella.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QString Cifre(std::optional<double> valore)
{
    if (!valore)
        return u"-"_s;
    return QString::number(*valore, 'f', *valore >= 100 ? 0 : *valore >= 10 ? 1 : *valore >= 0.1 ? 2 : 3);
}

} // namespace

Tabella::Tabella(const QString &titolo, const QStringList &colonne, const std::vector<Rapporto> &rapporti)
    : m_titolo(titolo), m_rapporti(rapporti)
{
    QStringList testata{QString(), QString()};
    testata += colonne;
    for (const Rapporto &rapporto : rapporti)
        testata += colonne[rapporto.sopra] + u" : "_s + colonne[rapporto.sotto];
    m_righe.push_back(testata);
}

void Tabella::Riga(const QString &nome, const QString &unita, const std::vector<std::optional<double>> &valori)
{
    QStringList riga{nome, unita};
    for (const std::optional<double> &valore : valori)
        riga += Cifre(valore);
    for (const Rapporto &rapporto : m_rapporti) {
        const std::optional<double> sopra = valori[size_t(rapporto.sopra)];
        const std::optional<double> sotto = valori[size_t(rapporto.sotto)];
        riga += sopra && sotto && *sotto > 0 ? u"x "_s + QString::number(*sopra / *sotto, 'f', 1) : u"-"_s;
    }
    m_righe.push_back(riga);
}

QString Tabella::Testo() const
{
    std::vector<qsizetype> larghezze(size_t(m_righe.front().size()));
    for (const QStringList &riga : m_righe) {
        for (qsizetype i = 0; i < riga.size(); ++i)
            larghezze[size_t(i)] = std::max(larghezze[size_t(i)], riga[i].size());
    }
    QString testo = m_titolo + u"\n\n"_s;
    for (const QStringList &riga : m_righe) {
        QString linea;
        for (qsizetype i = 0; i < riga.size(); ++i)
            linea += i < 2 ? riga[i].leftJustified(larghezze[size_t(i)] + (i == 0 ? 2 : 0))
                           : riga[i].rightJustified(larghezze[size_t(i)] + 2);
        testo += linea + u'\n';
    }
    return testo;
}
