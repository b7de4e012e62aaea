#pragma once

#include <QString>
#include <QStringView>

namespace ModuloVerificaSintassi
{

/// A page of which parts are read, so that nobody needs a copy of the whole. Positions are 0-based UTF-16 units.
class LettorePagina
{
public:
    virtual ~LettorePagina() = default;
    [[nodiscard]] virtual qsizetype Lunghezza() const = 0;
    /// What does not lie within the page is left out.
    [[nodiscard]] virtual QString Parte(qsizetype da, qsizetype quanti) const = 0;
    [[nodiscard]] virtual QString Tutta() const = 0;
};

/// What has become of a text: \a tolti units from \a da on are \a aggiunti others now. All zero: nothing has changed.
struct Cambiamento {
    qsizetype da = 0;
    qsizetype tolti = 0;
    qsizetype aggiunti = 0;

    [[nodiscard]] bool Nullo() const { return tolti == 0 && aggiunti == 0; }

    /// Takes in \a altro, which came after: the smallest single change that covers both.
    void Unisci(const Cambiamento &altro)
    {
        if (Nullo()) {
            *this = altro;
            return;
        }
        const qsizetype inizio = std::min(da, altro.da);
        const qsizetype tutti = std::max(da + aggiunti, altro.da + altro.tolti) - inizio;
        tolti += tutti - aggiunti;
        aggiunti = tutti - altro.tolti + altro.aggiunti;
        da = inizio;
    }
};

} // namespace ModuloVerificaSintassi
