#pragma once

#include <QFrame>
#include <QImage>

#include <functional>

/// A frame that can be drawn on. With persistent drawing what was drawn stays until it is erased, whatever covers the
/// window in between; without it a drawing lasts until the next repaint.
class PictureBox : public QFrame
{
    Q_OBJECT

public:
    using QFrame::QFrame;
    explicit PictureBox(const QString &nome, QWidget *parent);

    [[nodiscard]] bool AutoRedraw() const { return m_persistente; }
    void SetAutoRedraw(bool persistente) { m_persistente = persistente; }

    /// Draws on top of what is there, in device-independent pixels from the upper left corner.
    void Disegna(const std::function<void(QPainter &)> &disegno);
    /// Erases the drawing: the background colour shows again.
    void Cls();

signals:
    /// The box has another size; what was drawn is kept where it was.
    void Ridimensionata();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void AdattaTela();

    QImage m_tela;
    bool m_persistente = false;
};
