#pragma once

#include <QStringView>

class RichTextBox;

/// What typing a character does beyond putting it into the page: it takes the place of what was brought for it (see
/// Portati), closes what was opened for it, and brings end tags and indentation. All of it happens before the character
/// reaches the text, so that it does not depend on the speed of the keys.
namespace Battitura
{

/// Before \a carattere, "\r" for Enter, is typed at the caret. False: the page has it already.
[[nodiscard]] bool Prima(RichTextBox *editor, char16_t carattere);

/// Before a typed ">" reaches the text: puts the closing tag of the tag that it ends after the caret.
void ChiudiTag(RichTextBox *editor);

/// Whether a quote that "=" brought stands right before the caret: a quote that is typed now is that one.
[[nodiscard]] bool VirgolettaPortata(RichTextBox *editor);

/// The same, and the quote is the user's own from then on.
[[nodiscard]] bool PrendiVirgoletta(RichTextBox *editor);

/// Units of \a valore, which was typed behind a quote that "=" brought, that are the value of \a attributo of \a tag
/// when \a carattere follows. The rest is what comes after it in the tag: a name in front of "=", attributes that stand
/// without a value, the slash of the tag's end, blanks.
[[nodiscard]] qsizetype FineValore(QStringView tag, QStringView attributo, QStringView valore, char16_t carattere);

} // namespace Battitura
