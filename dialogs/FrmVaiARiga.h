#pragma once

#include <QDialog>

class QSpinBox;

/// Asks for a line number.
class FrmVaiARiga : public QDialog
{
    Q_OBJECT

public:
    /// Proposes line \a corrente of a page of \a righe lines; both count from 1.
    FrmVaiARiga(int corrente, int righe, QWidget *parent);

    /// The chosen line, from 1 to the page's last one.
    [[nodiscard]] int Riga() const;

private:
    QSpinBox *m_riga = nullptr;
};
