#pragma once

class RichTextBox;

namespace ModuloVerificaSintassi
{

/// Checks the whole page in \a editor: colours it, marks its faults and adds them to the page's findings. Tags are
/// looked for after the 1-based position \a primaFine. Caret, selection and scroll position stay, the control gets the
/// focus when it is visible, and when there are new findings the results window lists them.
///
/// With \a mostraAvanzamento events are let through while it works: keys for the control wait until it ends, other
/// input to the control is refused, and ControlloInCorso tells everyone else to keep off. When the text changes all the
/// same, the control goes, or the user cancels, the check ends there and keeps what it found. Colours then leave old
/// underlines as they are. A check that is asked for while another one works is refused.
///
/// Linear in the page.
void VerificaSintassi(RichTextBox &editor, int primaFine, bool mostraAvanzamento);

/// The same for \a quanti units of the page from the position \a da on, as if nothing but blanks stood before them and
/// nothing after them. Events wait. The cost does not depend on the page's length.
void VerificaFrammento(RichTextBox &editor, int da, int quanti, int primaFine);

/// Lists the page's findings in the results window, those whose name no longer stands in the page left out. Costs time
/// in proportion to the findings and, when a name was edited, to the page.
void AggiornaElencoErrori(const RichTextBox &editor);

} // namespace ModuloVerificaSintassi
