#pragma once

#include <QDialog>

class ElencoModelli;
class QCheckBox;
class RichTextBox;

/// The templates dialog: puts the page that is chosen into the editing control and closes. Accepted when a page was
/// put there; the close box and Escape leave the text as it is.
class FrmModelli : public QDialog
{
    Q_OBJECT

public:
    explicit FrmModelli(RichTextBox *pad, QWidget *parent = nullptr);

signals:
    /// A template stands in the control and the dialog is closed.
    void AnteprimaRichiesta();
    /// For the status bar: a template could not be read.
    void Avviso(const QString &testo);

protected:
    void changeEvent(QEvent *evento) override;
    void done(int esito) override;

private:
    void Crea();
    void RiempiElenco();
    void Carica(int indice);

    RichTextBox *m_pad = nullptr;
    ElencoModelli *m_elenco = nullptr;
    QCheckBox *m_nonMostrare = nullptr;
};
