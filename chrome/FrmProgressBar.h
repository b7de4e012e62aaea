#pragma once

#include <QWidget>

class ClsProgressBar;
class PictureBox;
class QLabel;
class QPushButton;
class QTimer;

/// The small window of a long operation: a status text, a bar, and the button that cancels. It has no Close command,
/// and while it is on the screen no other window takes input. The operation asks Annullato() or listens to annullato(),
/// and destroys or closes the window when it ends.
class FrmProgressBar : public QWidget
{
    Q_OBJECT

public:
    /// How long an operation must last before its window appears, in milliseconds.
    static constexpr int Attesa = 300;

    /// \a titolo: "Attendere ..." when empty. \a annulla: caption of the button.
    explicit FrmProgressBar(const QString &titolo = {}, const QString &annulla = {}, QWidget *parent = nullptr);

    [[nodiscard]] ClsProgressBar &Barra() { return *m_barra; }
    [[nodiscard]] bool Annullato() const { return m_annullato; }

    /// Shows the window once \a millisecondi have passed, provided that events run; a short operation never shows it.
    void Mostra(int millisecondi = Attesa);
    /// Closes the window, or takes back a Mostra() that is still waiting.
    void Chiudi();

signals:
    /// The user pressed CmdAnnulla.
    void annullato();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Annulla();

    PictureBox *m_cornice;
    PictureBox *m_riquadro;
    QLabel *m_percento;
    QLabel *m_stato;
    QPushButton *m_annulla;
    ClsProgressBar *m_barra;
    QTimer *m_timer;
    bool m_annullato = false;
};
