#pragma once

#include <QFont>
#include <QString>

#include <vector>

#include "platform/Aspetto.h"

class RichTextBox;

/// Text and looks of a page as they are when its printing begins: what happens to the page meanwhile does not matter.
struct TestoStampa {
    /// Units from \a inizio on have this look, up to the next stretch.
    struct Tratto {
        qsizetype inizio = 0;
        Aspetto aspetto;
    };

    QString testo; ///< what cannot be drawn is replaced, unit for unit: the lengths are the page's
    std::vector<Tratto> tratti;
    QFont carattere;
    qreal tabulazione = 8; ///< distance of tab stops, in widths of a character

    /// The whole page, or only what is selected. Linear.
    [[nodiscard]] static TestoStampa Da(const RichTextBox &pad, bool soloSelezione);
};
