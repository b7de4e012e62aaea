#include "editor/RientroRighe.h"

#include "platform/RichTextBox.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace
{

/// The starts of the lines that the selection touches; its end does not touch the line that it stands before.
std::vector<int> InizioRighe(const RichTextBox &editor)
{
    const int da = editor.SelStart();
    const int fine = da + editor.SelLength();
    const int prima = editor.GetLineFromChar(da);
    int ultima = editor.GetLineFromChar(fine);
    if (ultima > prima && editor.InizioRiga(ultima) == fine)
        --ultima;
    std::vector<int> inizi;
    for (int riga = prima; riga <= ultima; ++riga)
        inizi.push_back(editor.InizioRiga(riga));
    return inizi;
}

/// Replaces \a lunghezza units at \a posti; the selection goes from the first line's start to where it ended.
void Cambia(RichTextBox &editor, const std::vector<int> &posti, int lunghezza, const QString &nuovo, int inizio)
{
    const bool scelto = editor.SelLength() > 0;
    const int caretto = editor.SelStart();
    const int scarto = int(nuovo.size()) - lunghezza;
    const int fine = caretto + editor.SelLength() + scarto * int(posti.size());
    if (posti.empty())
        return;
    editor.SostituisciTutte(posti, lunghezza, nuovo);
    if (scelto)
        editor.Seleziona(inizio, fine - inizio);
    else
        editor.ImpostaSelStart(std::max(inizio, caretto + scarto));
}

} // namespace

bool RientroRighe::PiuRighe(const RichTextBox &editor)
{
    const int da = editor.SelStart();
    return editor.SelLength() > 0 && editor.GetLineFromChar(da) != editor.GetLineFromChar(da + editor.SelLength());
}

void RientroRighe::Aumenta(RichTextBox &editor)
{
    std::vector<int> posti = InizioRighe(editor);
    const int inizio = posti.front();
    std::erase_if(posti, [&](int posto) {
        return posto >= editor.Lunghezza() || editor.Unita(posto) == u'\r' || editor.Unita(posto) == u'\n';
    });
    Cambia(editor, posti, 0, u"\t"_s, inizio);
}

void RientroRighe::Riduci(RichTextBox &editor)
{
    std::vector<int> posti = InizioRighe(editor);
    const int inizio = posti.front();
    std::erase_if(posti, [&](int posto) {
        return posto >= editor.Lunghezza() || (editor.Unita(posto) != u'\t' && editor.Unita(posto) != u' ');
    });
    Cambia(editor, posti, 1, QString(), inizio);
}
