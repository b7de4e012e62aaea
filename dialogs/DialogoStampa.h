#pragma once

#include <QStringList>

#include <memory>
#include <vector>

#include "platform/DevMode.h"

class QPrintDialog;
class QPrinter;
class QWidget;

namespace ModuloStampa
{

/// The installed printers and the settings that were read of each, in the spooler's order.
struct ImpostazioniSalvate {
    QStringList nomi;
    std::vector<DevMode> record; ///< empty for a printer that could not be opened
};

/// What the print dialog gives back.
struct SceltaStampa {
    DevMode impostazioni; ///< copies 0: cancelled
    QString stampante;    ///< full name of the printer; empty: into a PDF file
    bool soloSelezione = false;
    std::shared_ptr<QPrinter> dispositivo; ///< as the dialog left it
};

/// The print dialog, modal to \a finestra. \a selezione: something is selected; the dialog then offers to print only
/// that, and begins with it. It opens without any printer too, and prints into a PDF file.
[[nodiscard]] SceltaStampa DialogoStampa(QWidget *finestra, const ImpostazioniSalvate &salvate, bool selezione,
                                         const QString &nomeFile);

/// Sets what \a record tells of into the printer object, so that the dialog begins with it; the paper is Qt's own
/// affair.
void Prepara(QPrinter &dispositivo, const DevMode &record);

/// From now on another printer chosen in \a dialogo brings its own number of copies, 1 when it has none.
void SeguiStampante(QPrintDialog &dialogo, const ImpostazioniSalvate &salvate);

/// The settings of a printer as chosen: \a prima (empty for none) with what the printer object says.
[[nodiscard]] DevMode Impostazioni(const QPrinter &dispositivo, const DevMode &prima);

} // namespace ModuloStampa
