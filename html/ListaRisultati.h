#pragma once

#include <QTreeView>

/// A plain list of texts that wrap. Only rows on the screen are measured, so that it takes any number of them.
class ListaRisultati : public QTreeView
{
    Q_OBJECT

public:
    explicit ListaRisultati(QWidget *padre = nullptr);

    void dataChanged(const QModelIndex &primo, const QModelIndex &ultimo, const QList<int> &ruoli = {}) override;

protected:
    void verticalScrollbarValueChanged(int valore) override;
    void rowsAboutToBeRemoved(const QModelIndex &padre, int primo, int ultimo) override;
    void resizeEvent(QResizeEvent *evento) override;

private:
    bool m_daMisurare = false; ///< rows out of sight have another height now
};
