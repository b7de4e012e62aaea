#pragma once

#include <QStringList>

class QWidget;

/// Looks at a window that is on the screen as a picky user would, and tells what is wrong with it, one fault a line.
namespace EsameFinestra
{

/// Texts that do not fit their control, controls that overlap or leave their parent, controls that a screen reader has
/// no name for, letters for Alt that two controls share, and a tab order that jumps back. A menu is a window as well.
/// Composite controls count as one.
[[nodiscard]] QStringList Difetti(const QWidget &finestra);

} // namespace EsameFinestra
