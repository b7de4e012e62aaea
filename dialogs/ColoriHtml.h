#pragma once

#include <span>

#include <QColor>
#include <QStringView>

#include "platform/Aspetto.h"

/// The sixteen colours that the font command writes by name. Red is the lowest byte of a value.
namespace ColoriHtml
{

struct Colore {
    ColoreBgr valore = 0;
    QStringView nome;
};

[[nodiscard]] std::span<const Colore> Elenco();

/// The name of exactly this value; empty when it has none.
[[nodiscard]] QString NomeColore(ColoreBgr colore);

[[nodiscard]] ColoreBgr DaQColor(const QColor &colore);

} // namespace ColoriHtml
