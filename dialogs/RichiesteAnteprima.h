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
/// bytes no script gets to see, and, from its own folder and below, as frames. What lies outside that folder is not
/// given from hidden folders. A script is only what is named as one. Web addresses are open to it: it shows as
/// it will on the web, and has nothing local to tell.
[[nodiscard]] bool Concede(const RichiestaMotore &richiesta, const QString &posto);

/// True when a click may hand \a indirizzo to the system: web and mail addresses, and local files that a browser shows.
/// Other local files could be programs.
[[nodiscard]] bool Apribile(const QUrl &indirizzo);

} // namespace RichiesteAnteprima
