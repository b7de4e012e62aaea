#include "html/ContestoTag.h"

#include "html/IndiceCommenti.h"
#include "html/IndiceGrezzi.h"
#include "platform/RichTextBox.h"

#include <algorithm>

namespace ContestoTag
{
namespace
{

constexpr int TagLetto = 4096; ///< units before the caret in which its tag must begin

} // namespace

bool DentroTag(const RichTextBox *editor)
{
    return LetturaTag::DentroTag(*editor, editor->SelStart());
}

bool DentroCommento(RichTextBox *editor)
{
    return IndiceCommenti::Di(editor).ApertoPrimaDi(editor->SelStart());
}

TagAttributo LeggiTagAttributo(const RichTextBox *editor)
{
    return LetturaTag::LeggiTagAttributo(*editor, editor->SelStart());
}

LetturaTag::Luogo LuogoDi(RichTextBox *editor)
{
    const int caretto = editor->SelStart();
    const int da = std::max(0, caretto - TagLetto);
    const QString prima = editor->Parte(da, caretto - da);
    if (!prima.contains(u'<') || DentroCommento(editor) || IndiceGrezzi::Di(editor).Contiene(caretto))
        return {};
    LetturaTag::Luogo luogo = LetturaTag::LuogoInFondo(prima);
    luogo.apertura += da;
    luogo.inizioNome += da;
    luogo.inizioValore += da;
    return luogo;
}

QString ParolaCorrente(const RichTextBox *editor)
{
    return LetturaTag::ParolaCorrente(*editor, editor->SelStart());
}

} // namespace ContestoTag
