#pragma once

#include <QWidget>

#include "platform/RichTextBox.h"

class MargineRighe;
class QTimer;

/// The document window: the editing control, the gutter with the line numbers, and the timer that keeps the two in
/// step. There is one in the whole program, for its whole life.
class FrmPaginaHTML : public QWidget
{
    Q_OBJECT

public:
    explicit FrmPaginaHTML(QWidget *parent = nullptr);
    ~FrmPaginaHTML() override;

    [[nodiscard]] RichTextBox *RichPad() const { return m_pad; }

    /// Why the knowledge base could not be loaded whole; empty when it was.
    [[nodiscard]] const QString &ErroreBase() const { return m_erroreBase; }

    /// The window has become the active one: the first time after loading, the page is started.
    void Attiva();

    void Pad_Disegna_Numero_Righe(MargineRighe *margine);
    /// 0-based index of the first visible line.
    [[nodiscard]] int Pad_Prima_Riga_Visibile() const;
    [[nodiscard]] int Pad_NumeroRighe() const;
    /// Puts the caret at the start of a 1-based line, towards the top of the view; a line that does not exist means the
    /// start of the text.
    void Pad_Vai_A_Riga(int line_number);
    /// 0-based line that holds the character \a lIndex.
    [[nodiscard]] int Pad_Ultima_Riga_Selezionata(int lIndex) const;

signals:
    /// The window has become active for the first time: time to fill the page.
    void PrimaAttivazione();
    /// What the edit commands may do has changed.
    void StatoModificaCambiato(Hwnd hwnd);
    /// The pop-up menu is asked for, at a place in global pixels.
    void MenuRichiesto(QPoint dove);
    void AnteprimaRichiesta(bool nascondi);
    /// Size or place have changed: the windows around are to be placed anew.
    void Ridimensionata();

protected:
    void resizeEvent(QResizeEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;

private:
    void Carica();
    void CollegaEventi();
    void Disponi();
    void ScorrimentoForseCambiato();

    RichTextBox *m_pad;
    MargineRighe *m_margine;
    QTimer *m_timer;
    QString m_erroreBase;
    int m_ultimaPrimaRiga = 0; ///< 1-based first visible line that the timer drew the gutter for
};
