#pragma once

#include <functional>

#include "dialogs/DialogoStampa.h"

class RichTextBox;
class Spooler;

/// Printing: the chosen printer has the settings of the dialog while one page is printed, then its own again.
namespace ModuloStampa
{

/// What printing asks of the user and of the printer.
struct Passi {
    std::function<SceltaStampa(const ImpostazioniSalvate &salvate)> dialogo;
    std::function<void(const SceltaStampa &scelta)> stampa;
    std::function<void(const QString &testo)> messaggio;
};

/// The print routine: dialog, settings of the chosen printer, the print itself, and the settings as they were. They
/// are written back also when the print fails, but not when none were read.
void Esegui(Spooler &spooler, const Passi &passi);

/// The printer's stored settings; empty when it cannot be opened or says nothing.
[[nodiscard]] DevMode LeggiImpostazioni(Spooler &spooler, const QString &stampante);

/// Makes \a nuove the printer's stored settings. The step that fails is told by \a messaggio.
void ScriviImpostazioni(Spooler &spooler, const QString &stampante, const DevMode &nuove,
                        const std::function<void(const QString &testo)> &messaggio);

/// The same with the host's spooler and dialog, for the page in \a pad. \a nomeFile: path or name of the page. One
/// print at a time.
void Stampa(RichTextBox &pad, const QString &nomeFile);

} // namespace ModuloStampa
