#pragma once

#include "html/LuogoTag.h"
#include "html/Scansione.h"
#include "platform/Aspetto.h"

class RichTextBox;

namespace ColoraTesto
{

/// The colour of what a walk marks so.
[[nodiscard]] ColoreBgr ColoreDi(ModuloVerificaSintassi::Segno segno);

/// Colours the tag that ends at the caret as far as it is written: a name or value that is known with its last letter
/// has its colour at once. One that is being written and is not known is black; nothing is noted or marked as wrong.
/// Costs time in proportion to the tag, and nothing for one that is very long.
void ColoraBattuta(RichTextBox *editor);
/// The same for who knows where the caret stands.
void ColoraBattuta(RichTextBox *editor, const LetturaTag::Luogo &luogo);

} // namespace ColoraTesto
