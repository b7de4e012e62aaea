#pragma once

#include <QObject>
#include <QPointer>

#include <optional>

class PictureBox;
class QLabel;

/// Draws a progress bar into a picture box, with a percentage that rides inside the bar's end. Draws only when the
/// percentage has grown by a point, and then lets pending window events run: the caller's surroundings may have changed
/// when a write of Value returns.
class ClsProgressBar : public QObject
{
    Q_OBJECT

public:
    struct Passo {
        int x = 0; ///< right end of the bar, in twips
        float percento = 0;
    };

    /// The step to draw for a value: none while the percentage has not grown by a point since \a ultima, for a value
    /// over the maximum, or without a maximum. \a scala: value units per twip.
    [[nodiscard]] static std::optional<Passo> ProssimoPasso(double valore, double massimo, double scala, float ultima);

    using QObject::QObject;

    /// Moves the percentage out of sight and erases the picture.
    void Clear();
    /// Fills the picture with its own background colour.
    void Refresh();

    [[nodiscard]] QLabel *LabelStatus() const;
    void LabelStatus(QLabel *etichetta);
    void TextStatus(const QString &testo);

    [[nodiscard]] QLabel *Label() const;
    void Label(QLabel *etichetta);

    [[nodiscard]] PictureBox *Picture() const;
    void Picture(PictureBox *riquadro);

    [[nodiscard]] double Max() const { return m_massimo; }
    /// Takes the scale from the picture's present width: set the picture first. 0: no progress is shown.
    void Max(double massimo);

    [[nodiscard]] double Value() const { return m_valore; }
    /// Ignored without a maximum or above it. May delete nothing itself, but lets events run that do.
    void Value(double valore);

private:
    void Disegna(const Passo &passo);
    void VestiEtichetta();
    [[nodiscard]] int AltezzaEtichetta() const;

    QPointer<PictureBox> m_riquadro;
    QPointer<QLabel> m_etichetta;
    QPointer<QLabel> m_stato;
    double m_massimo = 0;
    double m_scala = 0;
    double m_valore = 0;
    float m_ultima = 0; ///< percentage last drawn
    bool m_disegna = false;
};
