#pragma once

#include "dialogs/MotoreAnteprima.h"

#include <QString>

/// What the preview lets a page load and follow.
namespace RichiesteAnteprima
{

/// Where the page in the preview lies as far as the page can tell: at the place of its file \a corrente, so that what
/// it names relative to itself is found; at the root of the file system when it has none, where nothing is found.
[[nodiscard]] QString Posto(const QString &corrente);

/// Local files are given to a page, the one at \a posto, only as pictures, styles, scripts, fonts and media, whose
/// bytes no script gets to see, and, from its own folder and below, as frames. Links are followed before anything is
/// judged. Nothing is given from hidden folders other than those that the page lies in. What lies outside of the page's
/// folder is given only as what its name says; a script is only what lies inside and is named as one. A file that is
/// missing is refused. Web addresses are open to a page as long as there is \a rete: it shows as it will on the web,
/// and has nothing local to tell.
[[nodiscard]] bool Concede(const RichiestaMotore &richiesta, const QString &posto, bool rete);

/// True when a click may hand \a indirizzo to the system: web and mail addresses, and local files that a browser shows.
/// Other local files could be programs.
[[nodiscard]] bool Apribile(const QUrl &indirizzo);

} // namespace RichiesteAnteprima
