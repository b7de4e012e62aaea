#pragma once

#include <QDialog>

#include "dialogs/TestoTabella.h"

class QComboBox;
class QLayout;
class QLineEdit;
class QWidget;

/// The table dialog. Leaves the finished table in the program's insertion text, which stays empty unless the user
/// confirms.
class FrmTabella : public QDialog
{
    Q_OBJECT

public:
    explicit FrmTabella(QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *CreaDimensioni();
    [[nodiscard]] QWidget *CreaMargini();
    [[nodiscard]] QLayout *CreaPulsanti();
    [[nodiscard]] QComboBox *CreaUnita(const QString &nome, int scelta, qint16 messaggio, QWidget *parent);
    [[nodiscard]] TestoTabella::Campi Campi() const;
    void AllineaTitoli();
    void Conferma();

    QLineEdit *m_righe = nullptr;
    QLineEdit *m_colonne = nullptr;
    QLineEdit *m_lunghezza = nullptr;
    QComboBox *m_unitaLunghezza = nullptr;
    QLineEdit *m_altezza = nullptr;
    QComboBox *m_unitaAltezza = nullptr;
    QLineEdit *m_margine = nullptr;
    QLineEdit *m_spaziatura = nullptr;
    QLineEdit *m_bordo = nullptr;
};
