#pragma once

#include <span>

#include <QList>
#include <QPoint>
#include <QString>

/// The pages that a new page can start from, and whether their window is shown.
namespace Modelli
{

struct Modello {
    qint16 didascalia = 0;  ///< message number
    qint16 descrizione = 0; ///< message number
    QStringView immagine;
    QStringView file; ///< below the program folder; empty: the blank page
};

[[nodiscard]] std::span<const Modello> Elenco();

/// Full path of a template's file; empty for the blank page.
[[nodiscard]] QString Percorso(const Modello &modello);

struct Caricato {
    QString testo;
    QString motivo; ///< why a file was not read, in the language of the interface; empty when it was
};
/// The page that \a modello starts with; empty when its file cannot be read.
[[nodiscard]] Caricato Leggi(const Modello &modello);

/// Places of \a quanti icons in a list of that width, left to right and top to bottom, all in twips. \a altezza: of an
/// icon with its caption.
[[nodiscard]] QList<QPoint> Disposizione(double altezza, double larghezzaElenco, int quanti);

/// Whether the New command offers the templates; kept for this user.
[[nodiscard]] bool Mostra();
void ImpostaMostra(bool mostra);

} // namespace Modelli
