#pragma once

#include <functional>
#include <optional>

#include "editor/Recupero.h"

class QWidget;

/// The question at start-up about pages that a killed program left behind.
namespace OffertaRecupero
{

/// Asks about each page left behind, the newest first, until one is taken; \a prendi puts it into the editor, and its
/// recovery file goes only afterwards. Pages that the user discards are gone; none is when the question is not
/// answered.
std::optional<PaginaRecuperata> Chiedi(QWidget *finestra, const std::function<void(const PaginaRecuperata &)> &prendi);

} // namespace OffertaRecupero
