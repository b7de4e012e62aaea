#pragma once

#include <QAbstractListModel>

#include "html/PaginaVista.h"
#include "html/Scansione.h"

#include <vector>

/// The faults that stand in a page, as far as checks have found them: each once, by place, with its present line.
///
/// Each fault is a value whose place follows the text. Where the text has changed, the tags around are walked again,
/// and what the walk finds is listed when the page shows it marked: so a fault that is corrected, or goes into a
/// comment, leaves the list, and one that undo brings back returns to it, without a check. A change costs time in
/// proportion to itself, to the tags around it and, a few nanoseconds each, to the faults behind it.
class ElencoRisultati : public QAbstractListModel
{
    Q_OBJECT

public:
    struct Fallo {
        qsizetype posizione = 0; ///< caret position of the name or value
        ModuloVerificaSintassi::TipoRisultato tipo = ModuloVerificaSintassi::TagSconosciuto;
        bool ripetuto = false; ///< the line of another one, before it on the same line of the page, says the same
        QString nome;          ///< on one line, cut like that of a message

        [[nodiscard]] bool Stesso(const Fallo &altro) const { return tipo == altro.tipo && nome == altro.nome; }
    };
    using Falli = std::vector<Fallo>;
    using Cambiamento = ModuloVerificaSintassi::Cambiamento;
    using PaginaVista = ModuloVerificaSintassi::PaginaVista;

    using QAbstractListModel::QAbstractListModel;

    /// Whose faults these are from now on, none yet; null: nobody's. Must outlive the list or be taken back.
    void ImpostaPagina(const PaginaVista *pagina);
    void Svuota();
    /// The page has changed since the last call.
    void Aggiorna(const Cambiamento &cambiamento);
    /// A check has found \a trovati in the first \a fino units of the page, and no others there.
    void Imposta(Falli trovati, qsizetype fino);
    /// Where the fault of a line stands now.
    [[nodiscard]] qsizetype Posizione(int riga) const { return m_falli[size_t(m_righe[size_t(riga)])].posizione; }

    [[nodiscard]] int rowCount(const QModelIndex &padre = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &indice, int ruolo) const override;

    /// A fault as the list keeps it.
    [[nodiscard]] static Fallo Da(const ModuloVerificaSintassi::Riscontro &riscontro);
    /// Moves \a falli along with a change of their text; those that it touched go.
    static void Sposta(Falli &falli, const Cambiamento &cambiamento);

signals:
    void NumeroCambiato(int righe);
    /// Where the page has changed, a finished tag holds a fault that no check has seen: it is not listed.
    void FalloNonVisto();

private:
    struct Zona {
        qsizetype inizio = 0, fine = 0;
    };
    [[nodiscard]] Zona ZonaDi(const Cambiamento &cambiamento) const;
    /// The first fault from \a posizione on among those from \a dopo on, where no run of attributes without white space
    /// goes over that place: in such a run an attribute begins where the first one does, so that places go back.
    [[nodiscard]] size_t PrimoDa(qsizetype posizione, size_t dopo = 0) const;
    [[nodiscard]] bool Noto(const Fallo &fallo, const Cambiamento &cambiamento) const;
    [[nodiscard]] Falli Rileggi(const Zona &zona, const Cambiamento &cambiamento, bool &nonVisti) const;
    void Sostituisci(size_t da, size_t fino, Falli nuovi, const Zona &zona);
    void SegnaRipetuti(Falli &falli) const;
    [[nodiscard]] size_t SegnaRipetuti(size_t primo, size_t da, size_t fino, size_t ultimo, Falli &nuovi) const;
    [[nodiscard]] bool Rinomina(size_t da, size_t fino, Falli &nuovi);
    void MettiRighe(size_t da, size_t fino, Falli nuovi);
    void MettiFalli(size_t da, size_t fino, Falli nuovi);

    const PaginaVista *m_pagina = nullptr;
    Falli m_falli;            ///< in the order of the page
    std::vector<int> m_righe; ///< per line of the list, its fault
    int m_righePagina = 0;    ///< lines of the page when the list was brought in line last
};
