#pragma once

#include <QDialog>

#include "dialogs/SceltaFont.h"

class PictureBox;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

/// The font dialog: face, style, size, effects and colour, with a sample and the tag that comes out of them.
class FrmFont : public QDialog
{
    Q_OBJECT

public:
    explicit FrmFont(const RisultatoFont &iniziale, QWidget *parent = nullptr);

    /// What is chosen now; its cancelled flag is for the caller to set.
    [[nodiscard]] RisultatoFont Scelta() const;

private:
    void CreaControlli();
    [[nodiscard]] QWidget *CreaEffetti();
    [[nodiscard]] QWidget *CreaEsempio();
    [[nodiscard]] QLayout *CreaPulsanti();
    void RiempiElenchi();
    void RiempiColori();
    void Collega();
    void Mostra(const RisultatoFont &scelta);
    void CercaFaccia(const QString &testo);
    void SegnaDimensione(int punti);
    void ScegliColore(int riga);
    void AggiungiColore(ColoreBgr colore);
    void AggiornaEsempio();

    QLineEdit *m_faccia = nullptr;
    QListWidget *m_facce = nullptr;
    QListWidget *m_stili = nullptr;
    QSpinBox *m_dimensione = nullptr;
    QListWidget *m_dimensioni = nullptr;
    QCheckBox *m_sottolineato = nullptr;
    QCheckBox *m_barrato = nullptr;
    QComboBox *m_colori = nullptr;
    QLabel *m_esempio = nullptr;
    QLabel *m_tag = nullptr;
    QLabel *m_nota = nullptr;
    QPushButton *m_ok = nullptr;
    int m_ultimoColore = 0; ///< row of the colour list that stands when the choice of another one is cancelled
};
