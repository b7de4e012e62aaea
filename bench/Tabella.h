#pragma once

#include <optional>
#include <vector>

#include <QStringList>

/// A table of figures: one row per thing measured, one column per size, after some columns a ratio of two of them.
class Tabella
{
public:
    struct Rapporto {
        int sopra = 0; ///< column, from 0
        int sotto = 0;
    };

    Tabella(const QString &titolo, const QStringList &colonne, const std::vector<Rapporto> &rapporti);

    /// Figures and unit are printed as they are given; a missing figure is a dash.
    void Riga(const QString &nome, const QString &unita, const std::vector<std::optional<double>> &valori);
    [[nodiscard]] QString Testo() const;

private:
    QString m_titolo;
    std::vector<Rapporto> m_rapporti;
    std::vector<QStringList> m_righe; ///< the heads first
};
