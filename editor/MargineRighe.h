#pragma once

#include <QWidget>

class RichTextBox;

/// The gutter: the numbers of the visible lines, the caret's in bold.
class MargineRighe : public QWidget
{
    Q_OBJECT

public:
    explicit MargineRighe(const RichTextBox *pad, QWidget *parent = nullptr);

    /// \a numero right-aligned in four characters, with one space before longer ones.
    [[nodiscard]] static QString TestoNumero(int numero);

protected:
    void paintEvent(QPaintEvent *evento) override;

private:
    const RichTextBox *m_pad;
};
