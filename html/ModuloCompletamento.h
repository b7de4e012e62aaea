#pragma once

#include <QStringView>

#include <functional>

#include "html/ListaVoci.h"

class RichTextBox;

/// What is offered while HTML is typed. Every call works at the caret of \a editor. Those that offer a list return when
/// it has closed; the editor may be gone by then. Their cost does not grow with the page.
namespace ModuloCompletamento
{

/// Attributes of \a tag, after a blank. Accepting one adds "=" and offers its values. An unknown tag gets a hint; an
/// empty one, nothing.
void SuggerisciAttributi(RichTextBox *editor, const QString &tag);

/// What the caret's place asks for: tags in a tag's name, attributes behind it, values between quotes. What is inserted
/// gets its colour; an attribute gets "=" and quotes with the caret between them. With \a chiesta the user asked for
/// the list, and the entry that it shows is chosen. True when an entry was accepted.
bool Suggerisci(RichTextBox *editor, bool chiesta);

/// Values of \a attributo, after its "=": opens the quotes, and closes them when a value was accepted; the caret then
/// stands right after them, before a blank. An attribute that does not belong here is marked and gets a hint. With \a
/// silenzioso there is neither list, insertion nor hint, only the colour. Nothing when the quotes are there already.
void SuggerisciValori(RichTextBox *editor, const QString &tag, QString attributo, bool silenzioso);

EsitoLista ListaTag(RichTextBox *editor, const QString &prefisso, bool chiesta = false);
EsitoLista ListaAttributi(RichTextBox *editor, const QString &tag, const QString &prefisso, bool chiesta = false);
EsitoLista ListaValori(RichTextBox *editor, const QString &tag, const QString &attributo, const QString &prefisso = {},
                       bool chiesta = false);

/// The entries that the three lists above show.
[[nodiscard]] ListaVoci VociTag();
[[nodiscard]] ListaVoci VociAttributi(QStringView tag);
[[nodiscard]] ListaVoci VociValori(QStringView tag, QStringView attributo);

/// Sorts the entries \a prima to \a ultima, both 0-based and included, by their upper case, unit by unit.
void OrdinaLista(ListaVoci &lista, qsizetype prima, qsizetype ultima);

/// A hint at the caret, for 6 seconds; \a larghezza in twips. Not on platforms with a version code from 3 on.
void MostraAvviso(RichTextBox *editor, const QString &titolo, const QString &testo, int larghezza);

/// Runs when completion itself has inserted the "=" of an attribute, before it offers the values: the place for what
/// the editor does on a typed "=". None by default.
void ImpostaDopoUguale(std::function<void(RichTextBox *)> azione);

} // namespace ModuloCompletamento
