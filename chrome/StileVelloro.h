#pragma once

#include <QPalette>
#include <QProxyStyle>

/// The program's look: flat, in the colours of the interface, over Qt's Fusion.
class StileVelloro : public QProxyStyle
{
    Q_OBJECT

public:
    StileVelloro();

    [[nodiscard]] static QPalette Tavolozza();

    [[nodiscard]] QPalette standardPalette() const override { return Tavolozza(); }
    void polish(QWidget *widget) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement elemento, const QStyleOption *opzione, QPainter *p,
                       const QWidget *widget) const override;
    void drawControl(ControlElement elemento, const QStyleOption *opzione, QPainter *p,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl controllo, const QStyleOptionComplex *opzione, QPainter *p,
                            const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl controllo, const QStyleOptionComplex *opzione, SubControl parte,
                                       const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType tipo, const QStyleOption *opzione, const QSize &contenuto,
                                         const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric misura, const QStyleOption *opzione,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint cosa, const QStyleOption *opzione, const QWidget *widget,
                                QStyleHintReturn *risposta) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap quale, const QStyleOption *opzione,
                                     const QWidget *widget) const override;

private:
    // StileComandi.cpp: buttons, fields, marks, menus, tool bars. Each tells whether it drew.
    [[nodiscard]] bool DisegnaCampo(PrimitiveElement elemento, const QStyleOption &opzione, QPainter &p) const;
    [[nodiscard]] bool DisegnaBarra(PrimitiveElement elemento, const QStyleOption &opzione, QPainter &p) const;
    [[nodiscard]] bool DisegnaMenu(ControlElement elemento, const QStyleOption &opzione, QPainter &p,
                                   const QWidget *widget) const;
    void DisegnaCombo(const QStyleOptionComplex &opzione, QPainter &p, const QWidget *widget) const;

    // StileFinestre.cpp: inner windows, scroll bars, list headers, tabs.
    void DisegnaTitolo(const QStyleOptionComplex &opzione, QPainter &p, const QWidget *widget) const;
    void DisegnaScorrimento(const QStyleOptionComplex &opzione, QPainter &p, const QWidget *widget) const;
    [[nodiscard]] QRect ParteScorrimento(const QStyleOptionComplex &opzione, SubControl parte,
                                         const QWidget *widget) const;
    [[nodiscard]] bool DisegnaProgresso(ControlElement elemento, const QStyleOption &opzione, QPainter &p) const;
    [[nodiscard]] bool DisegnaRamo(const QStyleOption &opzione, QPainter &p) const;
    void DisegnaIntestazione(const QStyleOption &opzione, QPainter &p) const;
    void DisegnaLinguetta(const QStyleOption &opzione, QPainter &p) const;
};
