#pragma once

#include <QRect>
#include <QSize>

/// Where the windows inside the main window lie, in twips.
namespace DisposizioneFinestre
{

/// The screen that the rule counts with: the real one, or a smaller one when the multi-document area has less room than
/// it would have on a maximised main window. Both in twips.
[[nodiscard]] QSize SchermoUtile(QSize schermo, QSize area);

/// The document window at start-up.
[[nodiscard]] QRect Documento(QSize schermo, QSize area);

/// The preview below and the results to the right of a document window that lies at \a documento; they end with the
/// area. Never of negative size.
[[nodiscard]] QRect Anteprima(QSize schermo, QSize area, QRect documento);
[[nodiscard]] QRect Risultati(QSize schermo, QSize area, QRect documento);

} // namespace DisposizioneFinestre
