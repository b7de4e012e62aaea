#pragma once

#include "platform/Aspetto.h"

class RichTextBox;

/// Colouring of what the page means, at the caret (SelStart). No call moves what is shown or the typing look, and the
/// selection's highlight stays visible: the looks are set beside the text, not through the selection.
namespace ColoraTesto
{

/// Colours \a lunghezza units from the caret on. With \a mantieni they end up selected; without it, they and two units
/// more lose their wavy underline, and the caret stays where it was with nothing selected.
void ColoraParola(RichTextBox *editor, int lunghezza, ColoreBgr colore, bool mantieni);

/// Marks \a lunghezza units from the caret on as wrong: comment colour and wavy underline. Nothing is selected then.
void SegnaErrore(RichTextBox *editor, int lunghezza);

} // namespace ColoraTesto
