#pragma once

#include <QWidget>

class QLabel;
class QTimer;

/// The preview window: a frame around the browser.
class FrmAnteprima : public QWidget
{
    Q_OBJECT

public:
    explicit FrmAnteprima(QWidget *parent = nullptr);

    /// What the engine's view is put in, and what the hide mode hides.
    [[nodiscard]] QWidget *Browser() const { return m_browser; }
    /// Shows \a testo in place of the browser, \a motivo as its tool tip; empty: the browser again.
    void MostraAvviso(const QString &testo, const QString &motivo = {});

    /// Where the browser lies in a window of that outer size, both in twips; empty in one that is too small.
    [[nodiscard]] static QRect PostoBrowser(QSize finestra);

signals:
    /// The window is on the screen for the first time: what takes long may start.
    void Pronta();

protected:
    void paintEvent(QPaintEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;

private:
    void Disponi();

    QWidget *m_browser;
    QLabel *m_avviso;
    QTimer *m_timer;
    bool m_dipinta = false;
};
