#pragma once

#include <QString>

class Comandi;
class RichTextBox;
class QWidget;

/// What a new page starts from: the templates dialog or, when the user does without it, the blank page.
namespace NuovaPagina
{

struct Esito {
    bool iniziata = false; ///< false: the dialog was closed without a choice, the text is as it was
    QString avviso;        ///< for the status bar
};

/// Fills \a pad. \a finestra owns the dialog.
[[nodiscard]] Esito Scegli(RichTextBox &pad, QWidget *finestra);

/// The menu item that shows the dialog again after the user has switched it off, or switches it off.
void CollegaComando(Comandi &comandi, QWidget &finestra);

} // namespace NuovaPagina
