#include "html/ColoraBattuta.h"

#include "html/ContestoTag.h"
#include "html/Scansione.h"
#include "html/SchemaColori.h"
#include "platform/RichTextBox.h"

using LetturaTag::Luogo;
using LetturaTag::Stato;
using ModuloVerificaSintassi::Ricevitore;
using ModuloVerificaSintassi::Segno;
using namespace Qt::StringLiterals;

namespace
{

class Battuta : public Ricevitore
{
public:
    explicit Battuta(RichTextBox &editor) : m_editor(editor), m_caretto(editor.SelStart()) {}

    void Segna(Segno segno, qsizetype da, qsizetype quanti) override
    {
        const int fine = int(std::min<qsizetype>(da + quanti, m_caretto));
        const int inizio = int(da);
        // What stands before was looked at when it was written.
        if (fine < m_caretto || inizio >= fine || segno == Segno::Commento)
            return;
        m_editor.ImpostaAspetto(
            inizio, fine - inizio,
            {.colore = segno == Segno::Errore ? SchemaColori::Testo : ColoraTesto::ColoreDi(segno)});
    }
    void Trova(const ModuloVerificaSintassi::Riscontro &) override {}

private:
    RichTextBox &m_editor;
    int m_caretto;
};

/// What makes the part of the tag that is being written whole.
QString Seguito(const Luogo &luogo)
{
    if (luogo.stato == Stato::Attributo)
        return u"=>"_s;
    if (luogo.stato == Stato::Virgolette)
        return luogo.virgoletta + u'>';
    return u">"_s;
}

} // namespace

ColoreBgr ColoraTesto::ColoreDi(Segno segno)
{
    switch (segno) {
    case Segno::Tag:
        return SchemaColori::Tag;
    case Segno::Attributo:
        return SchemaColori::Attributo;
    case Segno::Valore:
        return SchemaColori::Valore;
    case Segno::Commento:
    case Segno::Errore:
        break;
    }
    return SchemaColori::Commento;
}

void ColoraTesto::ColoraBattuta(RichTextBox *editor)
{
    ColoraBattuta(editor, ContestoTag::LuogoDi(editor));
}

void ColoraTesto::ColoraBattuta(RichTextBox *editor, const Luogo &luogo)
{
    if (!luogo.InTag() || luogo.nome.isEmpty())
        return;
    const QString tag = editor->Parte(luogo.apertura, editor->SelStart() - luogo.apertura) + Seguito(luogo);
    Battuta battuta(*editor);
    (void)ModuloVerificaSintassi::Scandisci(tag, {.primaFine = 0, .scarto = luogo.apertura}, battuta);
}
