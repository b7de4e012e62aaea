#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace ModuloVerificaSintassi
{

/// The progress window, as the check sees it. It goes when the object goes.
class Avanzamento
{
public:
    virtual ~Avanzamento() = default;
    /// Puts it on the screen. Called once, when the check lasts longer than a blink.
    virtual void Mostra() = 0;
    /// From 0 to the maximum that it was made with; also called before it is shown.
    virtual void ImpostaValore(qsizetype valore) = 0;
    /// The user has pressed the cancel button.
    [[nodiscard]] virtual bool Annullato() const = 0;
};

/// Makes a progress window, not yet shown, with a label and a maximum.
using CreaAvanzamento = std::function<std::unique_ptr<Avanzamento>(const QString &etichetta, qsizetype massimo)>;

/// What makes the progress windows of the checks from now on; none at first.
void ImpostaAvanzamento(CreaAvanzamento crea);

/// A check lasts longer than a blink after so many milliseconds.
inline constexpr int AttesaAvanzamento = 300;

} // namespace ModuloVerificaSintassi
