#pragma once

#include <QWidget>

class RichTextBox;

/// The gutter: the numbers of the visible lines, the caret's in bold.
class MargineRighe : public QWidget
{
    Q_OBJECT

public:
    explicit MargineRighe(const RichTextBox *pad, QWidget *parent = nullptr);

    /// Paints anew what stands beside \a area of the control's viewport, after it moved by \a dy pixels.
    void Segui(const QRect &area, int dy);
    /// Paints the numbers anew of the line that the caret left and the one that it came to.
    void SeguiCaretto();

    /// \a numero right-aligned in four characters, with one space before longer ones.
    [[nodiscard]] static QString TestoNumero(int numero);

protected:
    void paintEvent(QPaintEvent *evento) override;

private:
    const RichTextBox *m_pad;
    int m_rigaCaretto = 0; ///< painted in bold
};
