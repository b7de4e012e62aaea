#include "editor/ModuloColori.h"

#include "html/LetturaTag.h"
#include "html/SchemaColori.h"
#include "html/VerificaSintassi.h"

#include "platform/RichTextBox.h"

namespace ModuloColori
{

void ControllaTagCorrente(RichTextBox &editor)
{
    const int caretto = editor.SelStart();
    const int apertura = editor.CercaIndietro(u'<', caretto);
    if (apertura < 0)
        return;
    // The fragment goes one character beyond the ">", or beyond the caret, where the check takes that for the tag's
    // end.
    const int chiusura = editor.CercaAvanti(u'>', apertura);
    const int fine = chiusura >= 0 ? chiusura + 2 : caretto + 1;
    ModuloVerificaSintassi::VerificaFrammento(editor, apertura, fine - apertura, 2);
}

void RegolaInizioCommento(RichTextBox &editor)
{
    const int caretto = editor.SelStart();
    if (caretto < 3)
        return;
    // Selecting ends the typing colour, so that what is typed next goes on in grey. The caret stays: one place further,
    // what follows would come into what stands there already, and a name with a hyphen apart.
    editor.Seleziona(caretto - 3, 3);
    if (editor.SelText() == u"<!-")
        editor.ImpostaSelColor(SchemaColori::Commento);
    editor.ImpostaSelStart(caretto);
}

void RegolaColoreBattitura(RichTextBox &editor)
{
    editor.ImpostaSelColor(SchemaColori::Testo);
}

bool Ricomincia(const RichTextBox &editor, int posizione)
{
    if (posizione == 0)
        return false;
    // In the middle of a comment a ">" ends nothing, and the comment's colour goes on.
    const Aspetto aspetto = editor.AspettoIn(posizione - 1);
    const bool commento = aspetto.colore == SchemaColori::Commento && !aspetto.onda;
    if (LetturaTag::DentroTag(editor, posizione))
        return !commento;
    if (editor.Unita(posizione - 1) != u'>')
        return false;
    return !commento || editor.Parte(posizione - 3, 3) == u"-->";
}

} // namespace ModuloColori
