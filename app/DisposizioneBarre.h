#pragma once

#include <QLayout>

/// Places toolbars side by side and goes on in a new row when the width is used up.
class DisposizioneBarre : public QLayout
{
    Q_OBJECT

public:
    explicit DisposizioneBarre(QWidget *padre);
    ~DisposizioneBarre() override;

    void addItem(QLayoutItem *voce) override;
    [[nodiscard]] int count() const override { return int(m_voci.size()); }
    [[nodiscard]] QLayoutItem *itemAt(int indice) const override { return m_voci.value(indice); }
    QLayoutItem *takeAt(int indice) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int larghezza) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect &area) override;

private:
    int Disponi(const QRect &area, bool prova) const;

    QList<QLayoutItem *> m_voci;
};
