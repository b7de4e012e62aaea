#include "html/ContestoTag.h"

#include "html/IndiceCommenti.h"
#include "platform/RichTextBox.h"

namespace ContestoTag
{

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

QString ParolaCorrente(const RichTextBox *editor)
{
    return LetturaTag::ParolaCorrente(*editor, editor->SelStart());
}

} // namespace ContestoTag
