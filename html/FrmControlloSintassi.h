#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <QWidget>

#include "html/Risultati.h"

class RichTextBox;

/// The lines of the results window.
class ElencoRisultati : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;
    using Voci = QList<ModuloVerificaSintassi::Registro::Voce>;

    /// Makes \a voci the lines; does nothing when they are the same. Lines that stayed at the start and at the end stay
    /// as they are in the views.
    void Imposta(const Voci &voci);
    [[nodiscard]] const Voci &Tutte() const { return m_voci; }
    [[nodiscard]] int rowCount(const QModelIndex &padre = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &indice, int ruolo) const override;

private:
    Voci m_voci;
};

/// The window that lists the findings of the check, one a line.
class FrmControlloSintassi : public QWidget
{
    Q_OBJECT

public:
    explicit FrmControlloSintassi(QWidget *padre = nullptr);
    ~FrmControlloSintassi() override;

    /// The one that exists, or null.
    [[nodiscard]] static FrmControlloSintassi *Aperta();

    void Elenca(const ElencoRisultati::Voci &voci) { m_elenco.Imposta(voci); }
    void Svuota() { m_elenco.Imposta({}); }
    /// The number of lines, and what one of them says.
    [[nodiscard]] int ListCount() const { return m_elenco.rowCount(); }
    [[nodiscard]] QString List(int riga) const { return m_elenco.Tutte().value(riga).testo; }

    /// Puts the caret of \a editor at \a posizione and into view, and gives the control the focus.
    void Vai_A_Pos(qint32 posizione, RichTextBox &editor);

signals:
    /// The user chose a line, with the mouse or with Enter; \a posizione is where its finding was made.
    void RisultatoScelto(qint32 posizione);

protected:
    void resizeEvent(QResizeEvent *evento) override;

private:
    void Scegli(const QModelIndex &indice);

    ElencoRisultati m_elenco;
    QListView *m_lista;
};
