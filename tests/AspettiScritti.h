#pragma once

#include <QHash>

#include "html/SchemaColori.h"
#include "platform/RichTextBox.h"

/// One letter per unit for its look: t, a, v, c for the colours, "." for plain text; upper case ("~") with a wave.
inline QString AspettiScritti(const RichTextBox &editor, int da = 0)
{
    static const QHash<ColoreBgr, QChar> Lettere{{0, u'.'},
                                                 {SchemaColori::Tag, u't'},
                                                 {SchemaColori::Attributo, u'a'},
                                                 {SchemaColori::Valore, u'v'},
                                                 {SchemaColori::Commento, u'c'}};
    QString scritti;
    for (int i = da; i < editor.Lunghezza(); ++i) {
        const Aspetto aspetto = editor.AspettoIn(i);
        const QChar lettera = Lettere.value(aspetto.colore, u'?');
        scritti += !aspetto.onda ? lettera : lettera == u'.' ? QChar(u'~') : lettera.toUpper();
    }
    return scritti;
}
