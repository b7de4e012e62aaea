#pragma once

#include <QList>
#include <QString>

/// What an entry of a completion list stands for; it chooses the entry's icon. Events are the list's kind 2, all others
/// its kind 1.
enum class GenereVoce { Tag, Attributo, Evento, Valore };

struct VoceLista {
    QString testo; ///< as accepting it inserts it
    GenereVoce genere = GenereVoce::Tag;
    bool operator==(const VoceLista &) const = default;
};

using ListaVoci = QList<VoceLista>;

/// How a completion list ended.
struct EsitoLista {
    bool accettata = false; ///< an entry was inserted into the page
    QString scelta;         ///< its text
    bool uguale = false;    ///< accepted with "=", which the list kept for itself
};
