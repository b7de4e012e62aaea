#pragma once

#include "dialogs/MotoreAnteprima.h"

#include <QString>

#include <functional>

/// What the preview lets a page load and follow. The temporary page lies elsewhere than the page that it shows, so what
/// the page names relative to itself has to be looked for in the page's own folder.
namespace RichiesteAnteprima
{

struct Luoghi {
    QString anteprima; ///< full path of the temporary page
    QString cartella;  ///< folder of the page itself; empty for a page that has no file
};

using EsisteFile = std::function<bool(const QString &percorso)>;

/// Local files are given to a page only as pictures, styles, scripts, fonts and media, which no script can read, and,
/// from its own folder and below, as frames. Remote addresses are open. \a esiste tells addresses with ".." from
/// absolute ones where both are possible.
[[nodiscard]] DecisioneRichiesta Decidi(const RichiestaMotore &richiesta, const Luoghi &luoghi,
                                        const EsisteFile &esiste);

/// What a local address of the temporary page means in the page's own folder; empty for a place beside an unsaved page.
[[nodiscard]] QUrl AlProprioPosto(const QUrl &indirizzo, const Luoghi &luoghi, const EsisteFile &esiste);

/// True when a click may hand \a indirizzo to the system: web and mail addresses, and local files that a browser shows.
/// Other local files could be programs.
[[nodiscard]] bool Apribile(const QUrl &indirizzo);

} // namespace RichiesteAnteprima
