#pragma once

#include <QListWidget>

/// A list of large icons that stand where Modelli::Disposizione() puts them.
class ElencoModelli : public QListWidget
{
    Q_OBJECT

public:
    explicit ElencoModelli(QWidget *parent = nullptr);

    void doItemsLayout() override;

private:
    bool m_inDisposizione = false;
};
