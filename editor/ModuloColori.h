#pragma once

class RichTextBox;

/// The colouring rules of the key releases inside a tag.
namespace ModuloColori
{

/// Checks and colours the tag around the caret. The cost does not depend on the page's length.
void ControllaTagCorrente(RichTextBox &editor);

/// After a "-": when it ends "<!-", these three turn to the comment colour, and what is typed next with them. The caret
/// stays.
void RegolaInizioCommento(RichTextBox &editor);

/// What is typed from now on is black; so is what is selected.
void RegolaColoreBattitura(RichTextBox &editor);

/// Whether what is put in at \a posizione begins in no colour: a tag or a comment ends right before it, or it stands
/// inside a tag, where only the check gives colours.
[[nodiscard]] bool Ricomincia(const RichTextBox &editor, int posizione);

} // namespace ModuloColori
