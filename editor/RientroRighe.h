#pragma once

class RichTextBox;

/// Indentation of whole lines by one tab.
namespace RientroRighe
{

/// The selection goes over the end of a line.
[[nodiscard]] bool PiuRighe(const RichTextBox &editor);

/// Puts a tab before each line of the selection that is not empty; the lines are selected then. Linear in them.
void Aumenta(RichTextBox &editor);

/// Takes one tab or blank from the start of each line of the selection, or of the caret's line.
void Riduci(RichTextBox &editor);

} // namespace RientroRighe
