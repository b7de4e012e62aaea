#include "html/ColoraTesto.h"

#include "html/SchemaColori.h"
#include "platform/RichTextBox.h"

namespace ColoraTesto
{
namespace
{

void TogliSelezione(RichTextBox *editor)
{
    if (editor->SelLength() > 0)
        editor->ImpostaSelStart(editor->SelStart());
}

} // namespace

void ColoraParola(RichTextBox *editor, int lunghezza, ColoreBgr colore, bool mantieni)
{
    const int inizio = editor->SelStart();
    editor->Colora(inizio, lunghezza, colore);
    if (mantieni) {
        editor->Seleziona(inizio, lunghezza);
    } else {
        editor->Sottolinea(inizio, lunghezza + 2, false);
        TogliSelezione(editor);
    }
}

void SegnaErrore(RichTextBox *editor, int lunghezza)
{
    const int inizio = editor->SelStart();
    editor->Colora(inizio, lunghezza, SchemaColori::Commento);
    editor->Sottolinea(inizio, lunghezza, true);
    TogliSelezione(editor);
}

} // namespace ColoraTesto
