#pragma once

#include <QAbstractListModel>
#include <QIcon>

#include <array>
#include <vector>

#include "html/ListaVoci.h"

/// The entries of a completion list, of which only those that a prefix calls for are shown.
class ModelloVoci : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit ModelloVoci(const ListaVoci &voci, QObject *parent = nullptr);

    /// Shows the entries that begin with \a prefisso, then those that hold it elsewhere, case ignored; both keep the
    /// list's order. \a scelta is the row selected so far, -1 for none. Returns the row to select: when entries
    /// begin with the prefix, the one that is the prefix, else the first of them; else the entry that was selected,
    /// which then stays on show.
    [[nodiscard]] int Filtra(const QString &prefisso, int scelta);

    /// The entry, shown or not, that is \a nome, case ignored; empty when there is none.
    [[nodiscard]] QString Intera(QStringView nome) const;

    /// An entry, shown or not, begins with \a prefisso, case ignored.
    [[nodiscard]] bool Comincia(QStringView prefisso) const;

    [[nodiscard]] QString Testo(int riga) const { return m_voci[m_visibili[size_t(riga)]].testo; }
    /// All entries, shown or not.
    [[nodiscard]] const ListaVoci &Voci() const { return m_voci; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &indice, int ruolo) const override;

private:
    ListaVoci m_voci;
    QList<QString> m_maiuscole;
    std::vector<int> m_visibili;
};
