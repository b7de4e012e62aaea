#pragma once

#include <QPlainTextDocumentLayout>
#include <QTextBlock>

/// The document's layout, which can be told that the formats of one block changed without it laying out that block's
/// neighbours or repainting the view, and which keeps the glyphs of the blocks on the screen.
class Disposizione : public QPlainTextDocumentLayout
{
    Q_OBJECT

public:
    using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

    /// Gives \a blocco its formats; it is laid out again when it is next asked for.
    void ImpostaFormati(QTextBlock blocco, const QList<QTextLayout::FormatRange> &formati)
    {
        m_sospesa = true;
        blocco.layout()->setFormats(formati);
        // Setting formats leaves a pending change in the document that the next edit would report as its own.
        document()->markContentsDirty(blocco.position(), 0);
        m_sospesa = false;
        blocco.clearLayout();
    }

    /// Blocks \a primo to \a ultimo are about to be painted: their glyphs are kept from one painting to the next, those
    /// of the blocks painted before are given back. Qt alone would shape every line in view at every painting.
    void Trattieni(int primo, int ultimo)
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

protected:
    void documentChanged(int da, int tolti, int aggiunti) override
    {
        if (!m_sospesa)
            QPlainTextDocumentLayout::documentChanged(da, tolti, aggiunti);
    }

private:
    // The end of a layout gives its memory back; the block is laid out again when it is next asked for.
    static void Libera(QTextLayout &layout)
    {
        layout.setCacheEnabled(false);
        layout.beginLayout();
        layout.endLayout();
    }

    bool m_sospesa = false;
    int m_primo = 0;
    int m_ultimo = -1;
};
