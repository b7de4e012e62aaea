#pragma once

#include <QIcon>
#include <QStringView>

class PictureBox;
class QApplication;
class QWidget;

/// The look that all windows share: application style, decoration of a form's controls, icons.
///
/// A control's tag is its dynamic property "Tag". Names and tags are compared without regard to letter case.
namespace ModuloGrafica
{

/// Style, palette and font of the whole application; call once, before the first window. Does not follow the system's
/// dark theme.
void ApplicaStile(QApplication &applicazione);

/// Gives \a form and its controls the fonts, colours and sizes of their kind. Inner windows and the inside of composite
/// controls (editors, lists, combo boxes) are left alone. May be called again at any time.
///
/// A picture box named "...frame..." or "...fra(..." becomes a panel; one named "...PicIntestazioneFrm..." the header
/// strip of the panel that its tag names, hidden until DisegnaIntestazione() gives it a caption. A button tagged "D" is
/// a standard dialog button, one named "TOOLBAR..." a toolbar button.
void Decora(QWidget &form);

/// Draws the border of a panel, now and whenever its size changes.
void DisegnaPannello(PictureBox &pannello);

/// Draws the caption of a header strip, now and whenever its size changes, and shows it. A caption that does not fit
/// ends in an ellipsis.
void DisegnaIntestazione(PictureBox &striscia, const QString &didascalia);

/// Takes the Close command from the window of \a form, be it a top level window or one inside an MDI area, now or
/// later: button, system menu, keys and close() are refused. Chiudi() still closes it.
void RimuoviChiudi(QWidget &form);

/// Closes a form whether or not its Close command was removed; false when the form itself refuses.
bool Chiudi(QWidget &form);

/// The icon of that name ("nuovo", "salva_con_nome"; see NomiIcone()); a null icon for an unknown one. Sharp at any
/// size and scale, with a faded look for disabled controls.
[[nodiscard]] QIcon Icona(QStringView nome);

/// The names of all icons, sorted.
[[nodiscard]] QStringList NomiIcone();

} // namespace ModuloGrafica
