#include "platform/Disposizione.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

Disposizione::Disposizione(QTextDocument *documento) : QPlainTextDocumentLayout(documento)
{
    // A line written from right to left begins at the left edge, too: from the right one of the view, a long line would
    // reach to where nobody can scroll.
    QTextOption opzione = documento->defaultTextOption();
    opzione.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    documento->setDefaultTextOption(opzione);
}

void Disposizione::ImpostaFormati(QTextBlock blocco, const QList<QTextLayout::FormatRange> &formati)
{
    {
        const QScopedValueRollback<bool> sospesa(m_sospesa, true);
        blocco.layout()->setFormats(formati);
        // Setting formats leaves a pending change in the document that the next edit would report as its own.
        document()->markContentsDirty(blocco.position(), 0);
    }
    blocco.clearLayout();
}

void Disposizione::Trattieni(int primo, int ultimo)
{
    // The blocks in view may be others than last time under the same numbers, so each is told every time.
    QTextBlock blocco = document()->findBlockByNumber(primo);
    for (int numero = primo; numero <= ultimo && blocco.isValid(); ++numero, blocco = blocco.next())
        blocco.layout()->setCacheEnabled(true);
    if (primo == m_primo && ultimo == m_ultimo)
        return;
    blocco = document()->findBlockByNumber(m_primo);
    for (int numero = m_primo; numero <= m_ultimo && blocco.isValid(); ++numero, blocco = blocco.next()) {
        if ((numero < primo || numero > ultimo) && blocco.layout()->cacheEnabled())
            Libera(*blocco.layout());
    }
    m_primo = primo;
    m_ultimo = ultimo;
}

// The end of a layout gives its memory back; the block is laid out again when it is next asked for.
void Disposizione::Libera(QTextLayout &layout)
{
    layout.setCacheEnabled(false);
    layout.beginLayout();
    layout.endLayout();
}

QSizeF Disposizione::documentSize() const
{
    return {m_larghezza, QPlainTextDocumentLayout::documentSize().height()};
}

QRectF Disposizione::frameBoundingRect(QTextFrame *cornice) const
{
    QRectF area = QPlainTextDocumentLayout::frameBoundingRect(cornice);
    area.setWidth(LarghezzaRiga);
    return area;
}

QRectF Disposizione::blockBoundingRect(const QTextBlock &blocco) const
{
    QRectF area = QPlainTextDocumentLayout::blockBoundingRect(blocco);
    if (!blocco.isValid())
        return area;
    area.setWidth(Larghezza(blocco));
    if (area.width() > m_larghezza) {
        m_larghezza = area.width();
        m_piuLargo = blocco.blockNumber();
        emit const_cast<Disposizione *>(this)->documentSizeChanged(documentSize());
    }
    return area;
}

qreal Disposizione::Larghezza(const QTextBlock &blocco) const
{
    const QTextLayout &layout = *blocco.layout();
    qreal larghezza = 0;
    for (int i = 0; i < layout.lineCount(); ++i)
        larghezza = std::max(larghezza, layout.lineAt(i).naturalTextWidth());
    return larghezza + 2 * document()->documentMargin();
}

void Disposizione::documentChanged(int da, int tolti, int aggiunti)
{
    if (m_sospesa)
        return;
    QPlainTextDocumentLayout::documentChanged(da, tolti, aggiunti);
    const int primo = document()->findBlock(da).blockNumber();
    const int ultimo = document()->findBlock(std::max(0, da + tolti + aggiunti - 1)).blockNumber();
    ConfermaPiuLargo(primo, ultimo < 0 ? document()->blockCount() - 1 : ultimo);
}

/// Blocks \a primo to \a ultimo changed, as they are counted now.
void Disposizione::ConfermaPiuLargo(int primo, int ultimo)
{
    const int nuovi = document()->blockCount() - m_blocchi;
    m_blocchi += nuovi;
    if (m_piuLargo < primo)
        return;
    if (m_piuLargo > ultimo - nuovi) {
        m_piuLargo += nuovi;
        return;
    }
    // Only what was on the screen is measured again: going through all of a large document takes too long for one key.
    const qreal prima = std::exchange(m_larghezza, 0);
    const auto misura = [this](const QTextBlock &blocco) {
        if (const qreal larghezza = Larghezza(blocco); larghezza > m_larghezza) {
            m_larghezza = larghezza;
            m_piuLargo = blocco.blockNumber();
        }
    };
    misura(document()->findBlockByNumber(primo));
    QTextBlock blocco = document()->findBlockByNumber(m_primo);
    for (int numero = m_primo; numero <= m_ultimo && blocco.isValid(); ++numero, blocco = blocco.next())
        misura(blocco);
    if (m_larghezza != prima)
        emit documentSizeChanged(documentSize());
}
