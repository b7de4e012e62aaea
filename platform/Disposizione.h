#pragma once

#include <QPlainTextDocumentLayout>
#include <QTextBlock>

/// The document's layout, which can be told that the formats of one block changed without it laying out that block's
/// neighbours or repainting the view.
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

protected:
    void documentChanged(int da, int tolti, int aggiunti) override
    {
        if (!m_sospesa)
            QPlainTextDocumentLayout::documentChanged(da, tolti, aggiunti);
    }

private:
    bool m_sospesa = false;
};
