#pragma once

#include <span>

#include <QKeySequence>
#include <QStringView>

/// Every menu item and toolbar button, in the order in which it is shown. A command is named by its control array and
/// index ("MenuFile(0)"); a button that stands for a menu item carries that item's name as its command.
namespace TabellaComandi
{

struct Voce {
    QStringView menu{};    ///< menu that holds the item
    QStringView comando{}; ///< the item's own name, or that of the submenu it opens; empty: a separator
    qint16 messaggio = 0;
    QStringView icona{}; ///< empty: none
    QStringView tasti{}; ///< shortcut in portable form, of a menu the letter that opens it with Alt; empty: none
    bool sottomenu = false;
    bool nascosta = false; ///< switched off for good
    QStringView svolge{};  ///< the command that it stands for, when that is another one's
};

struct Bottone {
    QStringView barra{};
    int indice = 0; ///< from 1; 0: a separator
    QStringView comando{};
    QStringView icona{};
    qint16 messaggio = 0;    ///< tool tip; 0: the literal
    QStringView letterale{}; ///< tool tip, or what follows the message
};

struct Barra {
    QStringView nome{};
    qint16 messaggio = 0; ///< accessible name
};

[[nodiscard]] std::span<const Voce> Menu();
[[nodiscard]] std::span<const Bottone> Bottoni();
[[nodiscard]] std::span<const Barra> Barre();

} // namespace TabellaComandi
