#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <functional>

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
    QString tasto;          ///< what the key types that accepted it, which the list kept for itself
};

/// How a completion list came about, and what it takes for a name that needs no entry.
struct ModoLista {
    bool chiesta = false; ///< asked for with Ctrl+Space: the entry shown counts as chosen
    bool valori = false;  ///< the entries are values: text that may hold nearly any character
    std::function<bool(QStringView)> nomeIntero =
        {}; ///< what was typed is a name of its own; null: only the entries are
};
