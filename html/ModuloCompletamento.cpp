#include "html/ModuloCompletamento.h"

#include "app/TabellaLingua.h"
#include "chrome/FrmAdvTooltip.h"
#include "html/ColoraBattuta.h"
#include "html/ColoraTesto.h"
#include "html/ContestoTag.h"
#include "html/ModuloTag.h"
#include "html/Portati.h"
#include "html/SchemaColori.h"
#include "platform/Misure.h"
#include "platform/RichTextBox.h"
#include "platform/VersionePiattaforma.h"

#include <QPointer>

#include <utility>

using LetturaTag::Stato;
using ModuloPrincipale::Messaggio;
using Genere = Portati::Genere;
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

/// Colours the entry that a list put in at \a da, and leaves the caret behind it.
void ColoraScelta(RichTextBox *editor, int da, int quanti, bool tag)
{
    editor->ImpostaSelStart(da);
    ColoraTesto::ColoraParola(editor, quanti, tag ? SchemaColori::Tag : SchemaColori::Attributo, tag);
    editor->ImpostaSelStart(da + quanti);
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

/// Closes the quotes behind a value that a list put in, and puts a blank after them; the caret stays before it.
void FinisciValore(RichTextBox *editor, int apre)
{
    Portati &portati = Portati::Di(editor);
    const int caretto = editor->SelStart();
    portati.Dimentica(Genere::Apre, apre);
    portati.Dimentica(Genere::Chiude, caretto);
    if (caretto < editor->Lunghezza() && editor->Unita(caretto) == u'"')
        editor->ImpostaSelStart(caretto + 1);
    else
        editor->ImpostaSelText(u"\""_s);
    editor->Colora(apre, editor->SelStart() - apre, SchemaColori::Valore);
    portati.Metti(Genere::Spazio, u" "_s);
}

void Valori(RichTextBox *editor, const QString &tag, const QString &attributo, bool silenzioso, bool chiuse);

/// The quotes behind "=", the values between them, and what follows a value that was accepted. With \a chiuse the
/// closing quote stands there from the start.
void OffriValori(RichTextBox *editor, const QString &tag, const QString &attributo, bool silenzioso, bool chiuse)
{
    const int caretto = editor->SelStart();
    if (caretto < editor->Lunghezza() && editor->Unita(caretto) == u'"')
        return;
    editor->ImpostaSelColor(SchemaColori::Valore);
    if (silenzioso)
        return;
    Portati &portati = Portati::Di(editor);
    portati.Metti(Genere::Apre, u"\""_s);
    editor->ImpostaSelStart(caretto + 1);
    if (chiuse) {
        editor->ImpostaSelColor(SchemaColori::Valore);
        portati.Metti(Genere::Chiude, u"\""_s);
    }
    const QPointer<RichTextBox> vivo(editor);
    if (ListaValori(editor, tag, attributo).accettata && vivo)
        FinisciValore(editor, caretto);
}

/// Writes the "=" after the attribute \a attributo that a list inserted, and does what typing it does. What has no
/// value gets none, unless the user typed the "=". True when the list of attributes is due again.
bool DopoAttributo(RichTextBox *editor, const QString &tag, const QString &attributo, const QString &tasto)
{
    ColoraTesto::ColoraBattuta(editor);
    if (tasto != u"=" && ModuloTag::SenzaValore(tag, attributo)) {
        if (tasto != u" ")
            return false;
        editor->ImpostaSelText(tasto);
        return true;
    }
    const QPointer<RichTextBox> vivo(editor);
    editor->ImpostaSelText(u"="_s);
    if (DopoUguale())
        DopoUguale()(editor);
    if (vivo)
        Valori(editor, tag, attributo, false, true);
    return false;
}

/// What follows the "=" of \a attributo at the caret.
void Valori(RichTextBox *editor, const QString &tag, const QString &attributo, bool silenzioso, bool chiuse)
{
    const quint8 esito = ModuloTag::VerificaAttributo(tag, attributo);
    if (esito == 1) {
        OffriValori(editor, tag, attributo, silenzioso, chiuse);
        return;
    }
    SegnaAttributo(editor, attributo);
    if (silenzioso || attributo.contains(u'-'))
        return;
    if (esito == 3)
        Avvisa(editor, AttributoDiAltri, AvvisoLargo);
    else
        Avvisa(editor, AttributoSconosciuto, AvvisoStretto);
}

} // namespace

void ImpostaDopoUguale(std::function<void(RichTextBox *)> azione)
{
    DopoUguale() = std::move(azione);
}

void SuggerisciAttributi(RichTextBox *editor, const QString &tag)
{
    if (tag.isEmpty())
        return;
    if (!ModuloTag::EsisteTag(tag)) {
        // Names with a hyphen are the page's own.
        if (!tag.contains(u'-'))
            Avvisa(editor, TagSconosciuto, AvvisoStretto);
        return;
    }
    const QPointer<RichTextBox> vivo(editor);
    for (bool ancora = true; ancora && vivo;) {
        // Quick fingers press the next key before they let go of Space: what they typed belongs to the entry.
        const LetturaTag::Luogo qui = ContestoTag::LuogoDi(editor);
        const QString prefisso = qui.stato == Stato::Attributo && qui.nome == tag ? qui.attributo : QString();
        const EsitoLista esito = ListaAttributi(editor, tag, prefisso);
        ancora = esito.accettata && vivo && DopoAttributo(editor, tag, esito.scelta, esito.tasto);
    }
}

bool Suggerisci(RichTextBox *editor, bool chiesta)
{
    const LetturaTag::Luogo luogo = ContestoTag::LuogoDi(editor);
    const QPointer<RichTextBox> vivo(editor);
    const int caretto = editor->SelStart();
    if (luogo.stato == Stato::Nome) {
        EsitoLista esito = ListaTag(editor, luogo.nome, chiesta);
        if (!esito.accettata || !vivo)
            return false;
        const int da = caretto - int(luogo.nome.size());
        // An element has one case: its end tag is written as the start tag is.
        if (const auto *fine = Portati::Di(editor).FineTagDi(esito.scelta); luogo.chiusura && fine)
            editor->Sostituisci(da, int(esito.scelta.size()), fine->testo.sliced(2).chopped(1));
        ColoraScelta(editor, da, int(esito.scelta.size()), true);
        if (esito.tasto == u" " && luogo.chiusura)
            editor->ImpostaSelText(esito.tasto);
        return true;
    }
    if (!luogo.InTagIniziale())
        return false;
    if (luogo.stato == Stato::Virgolette) {
        const QString valore = editor->Parte(luogo.inizioValore, caretto - luogo.inizioValore);
        if (!ListaValori(editor, luogo.nome, luogo.attributo, valore, chiesta).accettata || !vivo)
            return false;
        FinisciValore(editor, luogo.inizioValore - 1);
        return true;
    }
    const QString prefisso = luogo.stato == Stato::Attributo ? luogo.attributo : QString();
    if (luogo.stato != Stato::Attributo && luogo.stato != Stato::Fuori)
        return false;
    const EsitoLista esito = ListaAttributi(editor, luogo.nome, prefisso, chiesta);
    if (!esito.accettata || !vivo)
        return false;
    ColoraScelta(editor, caretto - int(prefisso.size()), int(esito.scelta.size()), false);
    if (DopoAttributo(editor, luogo.nome, esito.scelta, esito.tasto))
        SuggerisciAttributi(editor, luogo.nome);
    return true;
}

void SuggerisciValori(RichTextBox *editor, const QString &tag, QString attributo, bool silenzioso)
{
    if (attributo.endsWith(u'"'))
        attributo.chop(1);
    Valori(editor, tag, attributo, silenzioso, false);
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
