#pragma once

#include <QFont>
#include <QString>

#include "platform/Aspetto.h"

class QWidget;

/// What the font dialog gives back; empty and zero when it was cancelled.
struct RisultatoFont {
    QString faccia;
    bool annullato = true;
    bool grassetto = false;
    bool corsivo = false;
    bool sottolineato = false;
    bool barrato = false;
    qint16 dimensione = 0; ///< whole points
    ColoreBgr colore = 0;

    /// "<font ...>" with a sample text: face, size in HTML's own steps (points / 3.5, cut off) and colour name. The
    /// name is empty for a colour that has none; styles and effects are left out.
    [[nodiscard]] QString TestoHtml() const;
    [[nodiscard]] QFont Carattere() const;
};

namespace ModuloPrincipale
{

/// The font dialog, modal to \a finestra, on the face \a faccia (its first 32 characters) in 10 points.
[[nodiscard]] RisultatoFont SceltaFont(QWidget *finestra, const QString &faccia);

} // namespace ModuloPrincipale
