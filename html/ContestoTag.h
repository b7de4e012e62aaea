#pragma once

#include <QString>

#include "html/LetturaTag.h"
#include "html/LuogoTag.h"

class RichTextBox;

/// What the caret stands in. The caret is SelStart. A call costs the distance to the tag around the caret, whatever the
/// size of the page.
namespace ContestoTag
{

using LetturaTag::TagAttributo;

/// The last "<" before the caret lies after the last ">" before it.
[[nodiscard]] bool DentroTag(const RichTextBox *editor);

/// The last "<!--" before the caret lies after the last "-->" before it. The first call for an editor reads the page.
[[nodiscard]] bool DentroCommento(RichTextBox *editor);

/// Name of the tag around the caret and the attribute that is being written. Both are empty when no blank follows the
/// last "<" anywhere in the page.
[[nodiscard]] TagAttributo LeggiTagAttributo(const RichTextBox *editor);

/// The part of a tag that the caret stands in; Stato::Testo in a comment, a script, a style, a text area and a piece of
/// a server's language. Looks at a bounded part of the page.
[[nodiscard]] LetturaTag::Luogo LuogoDi(RichTextBox *editor);

/// What stands between the last blank before the caret and the caret, without any "="; empty when there is no blank.
[[nodiscard]] QString ParolaCorrente(const RichTextBox *editor);

} // namespace ContestoTag
