#pragma once

#include <QPageRanges>
#include <QString>

#include <functional>

struct TestoStampa;
class QPagedPaintDevice;

namespace ModuloStampa
{

struct OpzioniPagine {
    QString nomeFile;     ///< for the footer
    QPageRanges pagine;   ///< which ones, from 1; empty: all
    bool inverse = false; ///< the last page comes first
    bool grigi = false;
};

enum class EsitoStampa {
    Fatta,
    Annullata,
    Fallita,
    SenzaPagine ///< none of the chosen pages is there; the device was not touched
};

/// Hears how much is done; false stops.
using PassoStampa = std::function<bool(qsizetype fatto, qsizetype massimo)>;

/// Prints a text page by page, each with a footer of file name and page number. The job is not undone when it is
/// stopped or fails: that is for the owner of \a dispositivo. Linear.
[[nodiscard]] EsitoStampa StampaTesto(const TestoStampa &testo, QPagedPaintDevice &dispositivo,
                                      const OpzioniPagine &opzioni, const PassoStampa &passo);

} // namespace ModuloStampa
