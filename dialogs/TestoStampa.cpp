#include "dialogs/TestoStampa.h"

#include "platform/RichTextBox.h"

#include <QFontMetricsF>

namespace
{

/// What stands on paper for a unit that has no picture of its own or would disturb the layout.
QChar Stampabile(QChar unita)
{
    const ushort codice = unita.unicode();
    if (codice == u'\t' || codice == u'\r' || codice == u'\n')
        return unita;
    if (codice < 0x20)
        return QChar(0x2400 + codice); // the pictures of control characters
    if (codice == 0x7F)
        return QChar(0x2421);
    if (codice == QChar::LineSeparator || codice == QChar::ParagraphSeparator ||
        codice == QChar::ObjectReplacementCharacter)
        return QChar::ReplacementCharacter;
    return unita;
}

void RendiStampabile(QString &testo)
{
    for (qsizetype i = 0; i < testo.size(); ++i) {
        const QChar unita = testo.at(i);
        if (unita.isHighSurrogate() && i + 1 < testo.size() && testo.at(i + 1).isLowSurrogate()) {
            ++i;
            continue;
        }
        const QChar stampabile = unita.isSurrogate() ? QChar(QChar::ReplacementCharacter) : Stampabile(unita);
        if (stampabile != unita)
            testo[i] = stampabile;
    }
}

} // namespace

TestoStampa TestoStampa::Da(const RichTextBox &pad, bool soloSelezione)
{
    TestoStampa stampa;
    const int inizio = soloSelezione ? pad.SelStart() : 0;
    stampa.testo = soloSelezione ? pad.SelText() : pad.Text();
    for (int i = 0; i < stampa.testo.size(); ++i) {
        const Aspetto aspetto = pad.AspettoIn(inizio + i);
        if (stampa.tratti.empty() || stampa.tratti.back().aspetto != aspetto)
            stampa.tratti.push_back({i, aspetto});
    }
    RendiStampabile(stampa.testo);
    stampa.carattere = pad.font();
    if (stampa.carattere.pointSizeF() <= 0)
        stampa.carattere.setPointSizeF(stampa.carattere.pixelSize() * 72.0 / pad.logicalDpiY());
    if (const qreal cella = QFontMetricsF(pad.font()).horizontalAdvance(u' '); cella > 0)
        stampa.tabulazione = pad.tabStopDistance() / cella;
    return stampa;
}
