#pragma once

#include <QColor>
#include <QPainterPath>
#include <QWidget>

class QLabel;
class QTimer;

/// The program's hint: a balloon that points at a place on the screen, stays above all windows, never takes the focus
/// and closes itself after a time or on a click.
class FrmAdvTooltip : public QWidget
{
    Q_OBJECT

public:
    /// Where the pointer leaves the balloon.
    enum class Puntatore { InAlto, InBasso };

    /// Icon codes of the platform's message boxes. Any other code shows no icon.
    enum Icona { Errore = 16, Domanda = 32, Attenzione = 48, Informazione = 64 };

    /// Shows a hint, in place of the one that may still be there. \a punto: the place to point at, in global pixels;
    /// \a secondi: display time, negative counts as 0, any length; \a colore: background, pale yellow when invalid;
    /// \a larghezza: of the whole balloon in twips, 0 for as wide as the text needs.
    static void MsgAuto_box(const QString &testo, int icona, const QString &titolo, int secondi, QPoint punto,
                            const QColor &colore = {}, int larghezza = 0);

    /// The hint that is on the screen, or null.
    [[nodiscard]] static FrmAdvTooltip *Corrente();

    /// Below the point when there is room for \a altezza pixels down to the lower edge of \a schermo, else the side
    /// with more room: the pointer then leaves the balloon at the bottom.
    [[nodiscard]] static Puntatore GetPointerStyle(QPoint punto, int altezza, const QRect &schermo);

    [[nodiscard]] QColor Colore() const { return m_colore; }
    [[nodiscard]] Puntatore StilePuntatore() const { return m_stile; }
    /// Tip of the pointer, in global pixels.
    [[nodiscard]] QPoint Punta() const { return mapToGlobal(m_punta); }
    /// The balloon's body without pointer and shadow, in window pixels.
    [[nodiscard]] QRect n_GetMainRect() const { return m_corpo; }
    /// The body's shadow, in window pixels.
    [[nodiscard]] QRect n_GetShadowRect() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    FrmAdvTooltip();

    void SetDisplayIcon(int icona);
    void DisponiTesto(int larghezza);
    void DrawBalloon(QPoint punto);
    void SetPointer(Puntatore stile, int x);

    QLabel *m_titolo;
    QLabel *m_testo;
    QLabel *m_icona;
    QTimer *m_timer;
    QColor m_colore;
    QRect m_corpo;
    QPoint m_punta;
    QPainterPath m_forma;
    Puntatore m_stile = Puntatore::InAlto;
};
