#pragma once

#include <QWidget>

/// The preview window.
class FrmAnteprima : public QWidget
{
    Q_OBJECT

public:
    explicit FrmAnteprima(QWidget *parent = nullptr);
};
