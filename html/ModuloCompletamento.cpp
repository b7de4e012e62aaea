#include "html/ModuloCompletamento.h"

#include "app/TabellaLingua.h"
#include "chrome/FrmAdvTooltip.h"
#include "html/ColoraTesto.h"
#include "html/ContestoTag.h"
#include "html/ModuloTag.h"
#include "html/SchemaColori.h"
#include "platform/Misure.h"
#include "platform/RichTextBox.h"
#include "platform/VersionePiattaforma.h"

#include <QPointer>

#include <utility>

using ModuloPrincipale::Messaggio;
using namespace Qt::StringLiterals;

namespace ModuloCompletamento
{
namespace
{

constexpr int PrimaVersioneSenzaAvvisi = 3;
constexpr int SecondiAvviso = 6;
constexpr int AvvisoADestra = 30; // twips
constexpr int AvvisoStretto = 3500;
constexpr int AvvisoLargo = 6000;
constexpr qint16 TitoloAvviso = 111;
constexpr qint16 AttributoSconosciuto = 112;
constexpr qint16 AttributoDiAltri = 113;
constexpr qint16 TagSconosciuto = 116;

std::function<void(RichTextBox *)> &DopoUguale()
{
    static std::function<void(RichTextBox *)> azione;
    return azione;
}

void Avvisa(RichTextBox *editor, qint16 testo, int larghezza)
{
    MostraAvviso(editor, Messaggio(TitoloAvviso), Messaggio(testo), larghezza);
    editor->setFocus();
}

/// The tag name that is being written when no blank follows it anywhere: the readers then report none.
QString NomeInFondo(const RichTextBox *editor)
{
    const int caretto = editor->SelStart();
    const int apertura = editor->CercaIndietro(u'<', caretto);
    QString nome = apertura < 0 ? QString() : editor->Parte(apertura + 1, caretto - apertura - 1);
    for (const QChar c : std::as_const(nome)) {
        if (!c.isLetterOrNumber() && c != u'-' && c != u'!')
            return {};
    }
    return nome;
}

bool OccorrePrima(const RichTextBox *editor, const QString &nome)
{
    const int caretto = editor->SelStart();
    const int apertura = editor->CercaIndietro(u'<', caretto);
    return editor->Parte(apertura + 1, caretto - apertura - 1).contains(nome) ||
           QStringView(editor->Text()).first(caretto).contains(nome);
}

/// Colours the entry that was inserted, and leaves the caret after it. \a da and \a fine bound where it is looked for.
void ColoraScelta(RichTextBox *editor, const QString &scelta, int da, int fine, bool tag)
{
    da = std::max(0, da);
    const qsizetype trovata = editor->Parte(da, fine - da).lastIndexOf(scelta);
    const int posizione = da + int(trovata);
    if (trovata < 0 || posizione <= 0)
        return;
    editor->ImpostaSelStart(posizione);
    ColoraTesto::ColoraParola(editor, int(scelta.size()), tag ? SchemaColori::Tag : SchemaColori::Attributo, tag);
    editor->ImpostaSelStart(posizione + int(scelta.size()));
}

/// Marks the attribute whose "=" stands before the caret.
void SegnaAttributo(RichTextBox *editor, const QString &attributo)
{
    const int caretto = editor->SelStart();
    const int fine = caretto > 0 && editor->Unita(caretto - 1) == u'=' ? caretto - 1 : caretto;
    const int inizio = fine - int(attributo.size());
    if (inizio < 0 || attributo.isEmpty() || editor->Parte(inizio, int(attributo.size())) != attributo)
        return;
    editor->ImpostaSelStart(inizio);
    ColoraTesto::SegnaErrore(editor, int(attributo.size()));
    editor->ImpostaSelStart(caretto);
}

/// The quote that was put in last, and what the page was then.
struct Virgoletta {
    const RichTextBox *editor = nullptr;
    int caretto = 0;
    int revisione = 0;
};

Virgoletta &Messa()
{
    static Virgoletta messa;
    return messa;
}

void OffriValori(RichTextBox *editor, const QString &tag, const QString &attributo, bool silenzioso)
{
    const int caretto = editor->SelStart();
    if (caretto < editor->Lunghezza() && editor->Unita(caretto) == u'"')
        return;
    editor->ImpostaSelColor(SchemaColori::Valore);
    if (silenzioso)
        return;
    editor->ImpostaSelText(u"\""_s);
    Messa() = {editor, editor->SelStart(), editor->Revisione()};
    const QPointer<RichTextBox> vivo(editor);
    if (!ListaValori(editor, tag, attributo).accettata || !vivo)
        return;
    editor->ImpostaSelText(u"\" "_s);
    editor->ImpostaSelStart(editor->SelStart() - 1);
}

/// Writes the "=" after the attribute \a attributo that a list inserted, and does what typing it does.
void InserisciUguale(RichTextBox *editor, const QString &tag, const QString &attributo)
{
    const QPointer<RichTextBox> vivo(editor);
    editor->ImpostaSelText(u"="_s);
    if (DopoUguale())
        DopoUguale()(editor);
    if (!vivo)
        return;
    const QString parola = ContestoTag::ParolaCorrente(editor);
    SuggerisciValori(editor, tag, parola.isEmpty() ? attributo : parola, false);
}

} // namespace

bool VirgolettaGiaMessa(const RichTextBox &editor)
{
    const Virgoletta messa = std::exchange(Messa(), {});
    return messa.editor == &editor && messa.revisione == editor.Revisione() && messa.caretto == editor.SelStart() &&
           editor.SelLength() == 0;
}

void ImpostaDopoUguale(std::function<void(RichTextBox *)> azione)
{
    DopoUguale() = std::move(azione);
}

void SuggerisciAttributi(RichTextBox *editor, const QString &tag)
{
    if (tag.isEmpty())
        return;
    if (!ModuloTag::EsisteTag(tag)) {
        Avvisa(editor, TagSconosciuto, AvvisoStretto);
        return;
    }
    // Quick fingers press the next key before they let go of Space: what they typed belongs to the entry.
    const ContestoTag::TagAttributo qui = ContestoTag::LeggiTagAttributo(editor);
    const QString prefisso = qui.tag == tag ? qui.attributo : QString();
    const QPointer<RichTextBox> vivo(editor);
    const EsitoLista esito = ListaAttributi(editor, tag, prefisso);
    if (!esito.accettata || !vivo)
        return;
    InserisciUguale(editor, tag, esito.scelta);
}

bool Suggerisci(RichTextBox *editor, const QString &tag, const QString &attributo)
{
    const QPointer<RichTextBox> vivo(editor);
    const int caretto = editor->SelStart();
    const bool diTag = attributo.isEmpty() && !ModuloTag::EsisteTag(tag);
    EsitoLista esito;
    QString prefisso = attributo;
    if (diTag) {
        if (!tag.isEmpty() && !OccorrePrima(editor, tag))
            return false;
        prefisso = tag.isEmpty() ? NomeInFondo(editor) : tag;
        esito = ListaTag(editor, prefisso);
    } else {
        esito = ListaAttributi(editor, tag, prefisso);
    }
    if (!esito.accettata || !vivo)
        return false;
    ColoraScelta(editor, esito.scelta, caretto - int(prefisso.size()), caretto + int(esito.scelta.size()) + 1, diTag);
    // Who accepts with "=" goes on with the value; without the sign it would be glued to the name.
    if (esito.uguale && !diTag)
        InserisciUguale(editor, tag, esito.scelta);
    return true;
}

void SuggerisciValori(RichTextBox *editor, const QString &tag, QString attributo, bool silenzioso)
{
    if (attributo.endsWith(u'"'))
        attributo.chop(1);
    const quint8 esito = ModuloTag::VerificaAttributo(tag, attributo);
    if (esito == 1) {
        OffriValori(editor, tag, attributo, silenzioso);
        return;
    }
    SegnaAttributo(editor, attributo);
    if (silenzioso)
        return;
    if (esito == 3)
        Avvisa(editor, AttributoDiAltri, AvvisoLargo);
    else
        Avvisa(editor, AttributoSconosciuto, AvvisoStretto);
}

void ChiudiTag(RichTextBox *editor)
{
    const int caretto = editor->SelStart();
    // In a quoted value, and where no tag is open, ">" closes none.
    if (!ContestoTag::DentroTag(editor) || LetturaTag::DentroVirgolette(*editor, caretto))
        return;
    const int inizio = editor->CercaIndietro(u'<', caretto) + 1;
    int fine = inizio;
    while (fine < caretto && editor->Unita(fine) != u' ')
        ++fine;
    const QString nome = editor->Parte(inizio, fine - inizio);
    const int casella = ModuloTag::CasellaTag(nome);
    if (nome.isEmpty() || casella < 1 || !ModuloTag::ArrayTag()[casella].CloseTag)
        return;
    editor->ImpostaSelStart(caretto);
    editor->ImpostaSelColor(SchemaColori::Tag);
    editor->ImpostaSelText(u"</"_s + nome + u'>');
    editor->ImpostaSelStart(caretto);
}

void MostraAvviso(RichTextBox *editor, const QString &titolo, const QString &testo, int larghezza)
{
    if (VersionePiattaforma() >= PrimaVersioneSenzaAvvisi)
        return;
    const QPoint carattere = editor->PosizioneDaCarattere(editor->SelStart());
    const QPoint sotto(Misure::InPixel(AvvisoADestra), editor->cursorRect().height());
    FrmAdvTooltip::MsgAuto_box(testo, FrmAdvTooltip::Informazione, titolo, SecondiAvviso,
                               editor->mapToGlobal(carattere + sotto), {}, larghezza);
}

} // namespace ModuloCompletamento
