#pragma once

#include <QDialog>

class AnteprimaImmagine;
class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QWidget;

/// The image dialog. Leaves the reference to the chosen picture in the program's insertion text, which stays empty
/// unless the user confirms. Opens the file chooser by itself when it becomes active for the first time.
class FrmImage : public QDialog
{
    Q_OBJECT

public:
    explicit FrmImage(QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    [[nodiscard]] QWidget *CreaPannello();
    [[nodiscard]] QLayout *CreaComandi(QWidget *parent);
    [[nodiscard]] QLayout *CreaPulsanti();
    [[nodiscard]] QString Percorso() const;
    /// The path as the page would name it; empty where that is no choice.
    [[nodiscard]] QString Relativo() const;
    void Sfoglia();
    void AnteprimaDelFile();
    void AllaPerdita();
    void AggiornaRiferimento();
    void AggiornaZoom();
    void Conferma();

    QLineEdit *m_file = nullptr;
    QCheckBox *m_relativo = nullptr;
    QLabel *m_riferimento = nullptr;
    AnteprimaImmagine *m_anteprima = nullptr;
    QLabel *m_zoom = nullptr;
    QPushButton *m_piu = nullptr;
    QPushButton *m_meno = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_esci = nullptr;
    QString m_mostrato;          ///< path that the preview step saw last
    bool m_sfogliato = false;    ///< the file chooser has opened by itself
    bool m_vuoleRelativo = true; ///< the check box as the user left it
};
