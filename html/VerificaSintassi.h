#pragma once

#include <functional>

class RichTextBox;

namespace ModuloVerificaSintassi
{

/// Checks the whole page in \a editor: colours it, marks its faults and nothing else, and adds them to the page's
/// findings. Tags are looked for after the 1-based position \a primaFine. Caret, selection and scroll position stay,
/// the control gets the focus when it is visible, and the results window lists the faults that the check has found.
///
/// With \a mostraAvanzamento events are let through while it works: keys for the control wait until it ends, other
/// input to the control is refused, and ControlloInCorso tells everyone else to keep off. When the text changes all the
/// same, the control goes, or the user cancels, the check ends there and keeps what it found, and beyond that what was
/// known. A check that is asked for while another one works is refused.
///
/// Linear in the page.
void VerificaSintassi(RichTextBox &editor, int primaFine, bool mostraAvanzamento);

/// The same for \a quanti units of the page from the position \a da on, as if nothing but blanks stood before them and
/// nothing after them. Events wait. The cost does not depend on the page's length.
void VerificaFrammento(RichTextBox &editor, int da, int quanti, int primaFine);

/// Brings the results window in line with the page (see ElencoRisultati); that happens by itself soon after a change.
void AggiornaElencoErrori(const RichTextBox &editor);

/// Is called when a check of the whole page has ended and the results window lists its \a falli; \a finita is false
/// when it was broken off. Nobody at first.
using DopoVerifica = std::function<void(bool finita, int falli)>;
void ImpostaDopoVerifica(DopoVerifica dopo);

} // namespace ModuloVerificaSintassi
