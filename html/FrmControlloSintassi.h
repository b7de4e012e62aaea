#pragma once

#include <QWidget>

#include <memory>

#include "html/ElencoRisultati.h"

class ListaRisultati;
class RichTextBox;
class SeguitoPagina;

/// The window that lists the findings of the check, one a line.
class FrmControlloSintassi : public QWidget
{
    Q_OBJECT

public:
    explicit FrmControlloSintassi(QWidget *padre = nullptr);
    ~FrmControlloSintassi() override;

    /// The one that exists, or null.
    [[nodiscard]] static FrmControlloSintassi *Aperta();

    /// What keeps the list in line with \a editor. The page of another control begins with an empty list.
    [[nodiscard]] SeguitoPagina &Seguito(const RichTextBox &editor);
    void Svuota() { m_elenco.Svuota(); }
    /// The number of lines, and what one of them says.
    [[nodiscard]] int ListCount() const { return m_elenco.rowCount(); }
    [[nodiscard]] QString List(int riga) const { return m_elenco.index(riga).data().toString(); }

    /// Puts the caret of \a editor at \a posizione and into view, and gives the control the focus.
    void Vai_A_Pos(qint32 posizione, RichTextBox &editor);

signals:
    /// The user chose a line, with the mouse or with Enter; \a posizione is where its fault stands now.
    void RisultatoScelto(qint32 posizione);
    void NumeroCambiato(int righe);
    void FalloNonVisto();

protected:
    void resizeEvent(QResizeEvent *evento) override;

private:
    void Scegli(const QModelIndex &indice);

    ElencoRisultati m_elenco;
    std::unique_ptr<SeguitoPagina> m_seguito;
    ListaRisultati *m_lista;
};
