#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The text tables that people edit (their format: README beside them), read, checked and with the groups expanded.
namespace TabelleTag
{

struct Attributo {
    QString nome;
    int tipo = 0;
    int categoria = 0;
    QStringList valori; ///< in the order of the table; empty for an open set
    int riga = 0;       ///< line of attributi.tsv, from 1
};

struct Tag {
    QString nome; ///< upper case
    bool chiusura = false;
    QList<Attributo> attributi; ///< ascending by lower-case name
};

struct Esito {
    QList<Tag> tag;     ///< in binary order of the names; of no use when there are errors
    QStringList errori; ///< "file:line: message"; empty when every rule holds
};

/// Reads tag.tsv, attributi.tsv and valori.tsv of \a cartella.
[[nodiscard]] Esito Leggi(const QString &cartella);

} // namespace TabelleTag
