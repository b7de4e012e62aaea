#pragma once

#include <QString>
#include <QStringView>

/// In which part of a tag a caret stands, read forward from the tag's "<". Needs no control.
namespace LetturaTag
{

enum class Stato {
    Testo,      ///< in no tag: the "<" begins none, or a ">" has ended it
    Nome,       ///< in the tag's name, which may still be empty
    Fuori,      ///< behind the name, between attributes
    Attributo,  ///< in an attribute's name
    Uguale,     ///< behind the "=" of an attribute, and blanks, where its value is due
    Valore,     ///< in a value without quotes
    Virgolette, ///< in a quoted value
};

/// Positions count UTF-16 units from the start of what was read.
struct Luogo {
    Stato stato = Stato::Testo;
    bool chiusura = false; ///< an end tag
    QString nome;          ///< of the tag, as written
    QString attributo;     ///< whose name or value the caret stands in, as written
    int apertura = 0;      ///< of the "<"
    int inizioNome = 0;    ///< of the attribute's name
    int inizioValore = 0;  ///< behind the quote when there is one
    QChar virgoletta;      ///< that opened the value

    [[nodiscard]] bool InTag() const { return stato != Stato::Testo; }
    /// Where names and values are offered: in a start tag.
    [[nodiscard]] bool InTagIniziale() const { return InTag() && !chiusura; }
};

/// Reads \a tratto, from a "<" up to the caret. A "<" that no letter and no "/" follows begins no tag. Linear.
[[nodiscard]] Luogo LeggiLuogo(QStringView tratto);

/// The same for the tag around the end of \a prima, the text before a caret; a "<" in a quoted value of a tag before
/// it is part of that value. Linear.
[[nodiscard]] Luogo LuogoInFondo(QStringView prima);

} // namespace LetturaTag
