#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <utility>

namespace ModuloVerificaSintassi
{

/// A page of which parts are looked at, so that nobody needs a copy of the whole. Positions are 0-based UTF-16 units
/// within the page.
class PaginaVista
{
public:
    virtual ~PaginaVista() = default;
    [[nodiscard]] virtual qsizetype Lunghezza() const = 0;
    [[nodiscard]] virtual QChar Unita(qsizetype posizione) const = 0;
    [[nodiscard]] virtual QString Parte(qsizetype da, qsizetype quanti) const = 0;
    /// Whether a check has marked what stands there as a fault.
    [[nodiscard]] virtual bool Segnata(qsizetype posizione) const = 0;
    /// 1-based line of a position.
    [[nodiscard]] virtual int Riga(qsizetype posizione) const = 0;
    /// Where the line of a position begins and where the next one does.
    [[nodiscard]] virtual std::pair<qsizetype, qsizetype> LimitiRiga(qsizetype posizione) const = 0;
    [[nodiscard]] virtual int NumeroRighe() const = 0;
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
