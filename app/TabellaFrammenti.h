#pragma once

#include <span>

#include <QStringView>

/// The pieces of HTML that the menus and toolbars put into the page, each under the name of its command.
namespace TabellaFrammenti
{

struct Frammento {
    QStringView comando;
    QStringView testo; ///< lines end with CR LF; "%1" stands for the word that numbered text lines begin with
};

[[nodiscard]] std::span<const Frammento> Elenco();

/// What \a comando inserts, in the language of the interface; empty for a command that inserts nothing of its own.
[[nodiscard]] QString Testo(QStringView comando);

/// "<IMG ...>" for the picture \a riferimento; empty when that is empty.
[[nodiscard]] QString TestoImmagine(const QString &riferimento);

} // namespace TabellaFrammenti
