#pragma once

#include <QPlainTextDocumentLayout>
#include <QTextBlock>

/// The document's layout, for lines that do not wrap. The place of a line does not depend on the width of the view, so
/// that a view that is resized has nothing to lay out anew; the formats of one block can change without its neighbours
/// being laid out or the view repainted; the glyphs of the blocks on the screen are kept.
class Disposizione : public QPlainTextDocumentLayout
{
    Q_OBJECT

public:
    /// The width, in pixels, that the view is to give this layout once and for all: wider than any block of text. Qt
    /// then never finds a wider one, nor looks through the whole document when that shrinks.
    static constexpr int LarghezzaRiga = 1'000'000;

    explicit Disposizione(QTextDocument *documento);

    /// Gives \a blocco its formats; it is laid out again when it is next asked for.
    void ImpostaFormati(QTextBlock blocco, const QList<QTextLayout::FormatRange> &formati);

    /// Blocks \a primo to \a ultimo are about to be painted: their glyphs are kept from one painting to the next, those
    /// of the blocks painted before are given back. Qt alone would shape every line in view at every painting.
    void Trattieni(int primo, int ultimo);

    /// As wide as the widest line that was laid out, as high as there are lines.
    [[nodiscard]] QSizeF documentSize() const override;
    [[nodiscard]] QRectF frameBoundingRect(QTextFrame *) const override;
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock &blocco) const override;

protected:
    void documentChanged(int da, int tolti, int aggiunti) override;

private:
    static void Libera(QTextLayout &layout);
    [[nodiscard]] qreal Larghezza(const QTextBlock &blocco) const;
    void ConfermaPiuLargo(int primo, int ultimo);

    bool m_sospesa = false;
    int m_primo = 0;
    int m_ultimo = -1;
    int m_blocchi = 1;
    mutable qreal m_larghezza = 0; ///< of the widest line that was laid out, margins included
    mutable int m_piuLargo = 0;    ///< number of its block
};
