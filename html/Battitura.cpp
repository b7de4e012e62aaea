#include "html/Battitura.h"

#include "app/Impostazioni.h"
#include "html/ContestoTag.h"
#include "html/ModuloTag.h"
#include "html/Portati.h"
#include "html/Scansione.h"
#include "html/SchemaColori.h"
#include "platform/RichTextBox.h"

#include <QRegularExpression>

using LetturaTag::Luogo;
using LetturaTag::Stato;
using ModuloVerificaSintassi::Bianco;
using Genere = Portati::Genere;
using namespace Qt::StringLiterals;

namespace Battitura
{
namespace
{

constexpr int BiancoGuardato = 4096; ///< units of white space up to an end tag

// --- Quotes that "=" brought ----------------------------------------------------------------------------------------

/// The caret stands in a value whose opening quote was brought and not taken by the user since.
bool VirgolettaAperta(RichTextBox *editor, const Luogo &luogo)
{
    return luogo.stato == Stato::Virgolette &&
           Portati::Di(editor).CheComincia(Genere::Apre, luogo.inizioValore - 1) != nullptr;
}

/// Closes the value at its end; the caret goes on behind what follows the value.
void ChiudiValore(RichTextBox *editor, const Luogo &luogo, char16_t carattere)
{
    Portati &portati = Portati::Di(editor);
    const int caretto = editor->SelStart();
    const QString valore = editor->Parte(luogo.inizioValore, caretto - luogo.inizioValore);
    const qsizetype fine = FineValore(luogo.nome, luogo.attributo, valore, carattere);
    if (carattere == u'=' && fine == valore.size())
        return;
    portati.Dimentica(Genere::Apre, luogo.inizioValore - 1);
    if (portati.CheComincia(Genere::Chiude, caretto)) {
        if (fine == valore.size()) {
            portati.Dimentica(Genere::Chiude, caretto);
            editor->ImpostaSelStart(caretto + 1);
            return;
        }
        portati.Togli(Genere::Chiude, caretto);
    }
    const int dove = luogo.inizioValore + int(fine);
    editor->Sostituisci(dove, 0, u"\""_s);
    editor->Colora(dove, 1, SchemaColori::Valore);
    editor->Colora(dove + 1, caretto - dove, SchemaColori::Testo);
    editor->ImpostaSelStart(caretto + 1);
}

bool Virgoletta(RichTextBox *editor, char16_t carattere)
{
    Portati &portati = Portati::Di(editor);
    const int caretto = editor->SelStart();
    if (carattere == u'"' && PrendiVirgoletta(editor))
        return false;
    if (const auto *apre = portati.CheFinisce(Genere::Apre, caretto); apre && carattere == u'\'') {
        const int dove = apre->da;
        portati.Togli(Genere::Chiude, caretto);
        editor->Sostituisci(dove, 1, u"'"_s);
        return false;
    }
    if (carattere != u'"')
        return true;
    const Luogo luogo = ContestoTag::LuogoDi(editor);
    if (luogo.stato == Stato::Virgolette && luogo.virgoletta == u'"')
        portati.Dimentica(Genere::Apre, luogo.inizioValore - 1);
    if (!portati.CheComincia(Genere::Chiude, caretto))
        return true;
    portati.Dimentica(Genere::Chiude, caretto);
    editor->ImpostaSelStart(caretto + 1);
    return false;
}

/// A blank or a line end right behind the "=" says that the value follows further on, with quotes of its own or none.
bool TogliVirgoletta(RichTextBox *editor)
{
    Portati &portati = Portati::Di(editor);
    const int caretto = editor->SelStart();
    const auto *apre = portati.CheFinisce(Genere::Apre, caretto);
    return apre && !portati.CheComincia(Genere::Chiude, caretto) && portati.Togli(Genere::Apre, apre->da);
}

// --- Blanks and indentation -----------------------------------------------------------------------------------------

void TogliSpazi(RichTextBox *editor)
{
    Portati &portati = Portati::Di(editor);
    const int caretto = editor->SelStart();
    if (!portati.Togli(Genere::Spazio, caretto))
        portati.Togli(Genere::Spazio, caretto - 1);
}

bool Spazio(RichTextBox *editor)
{
    Portati &portati = Portati::Di(editor);
    const int caretto = editor->SelStart();
    if (portati.CheComincia(Genere::Spazio, caretto - 1)) {
        portati.Dimentica(Genere::Spazio, caretto - 1);
        return false;
    }
    if (portati.CheComincia(Genere::Spazio, caretto)) {
        portati.Dimentica(Genere::Spazio, caretto);
        editor->ImpostaSelStart(caretto + 1);
        return false;
    }
    if (TogliVirgoletta(editor))
        return true;
    const Luogo luogo = ContestoTag::LuogoDi(editor);
    if (!VirgolettaAperta(editor, luogo))
        return true;
    const QString valore = editor->Parte(luogo.inizioValore, caretto - luogo.inizioValore);
    if (ModuloTag::ValoreInLista(luogo.nome, luogo.attributo, valore))
        ChiudiValore(editor, luogo, u' ');
    return true;
}

/// The white space that the line of \a posizione begins with, no further than \a posizione.
QString RientroDi(const RichTextBox &editor, int posizione)
{
    const int inizio = editor.InizioRiga(editor.GetLineFromChar(posizione));
    int fine = inizio;
    while (fine < posizione && (editor.Unita(fine) == u' ' || editor.Unita(fine) == u'\t'))
        ++fine;
    return editor.Parte(inizio, fine - inizio);
}

/// The indentation of what the line of the caret belongs to: behind a tag of several lines, that of its first one.
QString RientroDaTenere(RichTextBox *editor)
{
    const int caretto = editor->SelStart();
    const int inizio = editor->InizioRiga(editor->GetLineFromChar(caretto));
    const int da = std::max(0, inizio - BiancoGuardato);
    if (ContestoTag::LuogoDi(editor).InTag())
        return RientroDi(*editor, caretto);
    const Luogo luogo = LetturaTag::LuogoInFondo(editor->Parte(da, inizio - da));
    return luogo.InTag() ? RientroDi(*editor, da + luogo.apertura) : RientroDi(*editor, caretto);
}

/// The indentation that Enter brought goes when the user types one of their own, and on the line after one that was
/// typed in place of the brought one: who indents by hand there means a line without any.
void PrendiRientro(RichTextBox *editor, char16_t carattere)
{
    Portati &portati = Portati::Di(editor);
    const auto *rientro = portati.CheFinisce(Genere::Rientro, editor->SelStart());
    if (!rientro)
        return;
    if (Bianco(QChar(carattere)))
        portati.PrendiRientro(rientro->testo);
    else if (!rientro->incerto && carattere != u'>')
        return;
    portati.Togli(Genere::Rientro, rientro->da);
}

bool ACapo(RichTextBox *editor)
{
    if (!Impostazioni::Rientri())
        return true;
    Portati &portati = Portati::Di(editor);
    const QString rientro = RientroDaTenere(editor);
    const QString preso = portati.PrendiRientro({});
    const auto *vuota = portati.CheFinisce(Genere::Rientro, editor->SelStart());
    const bool incerto = vuota ? vuota->incerto : !preso.isEmpty() && rientro.startsWith(preso);
    if (vuota)
        portati.Togli(Genere::Rientro, vuota->da);
    editor->ImpostaSelText(u"\r\n"_s + rientro);
    if (!rientro.isEmpty())
        portati.Ricorda({Genere::Rientro, editor->SelStart() - int(rientro.size()), rientro, 0, incerto});
    editor->ensureCursorVisible();
    return false;
}

// --- End tags -------------------------------------------------------------------------------------------------------

/// The brought end tag of \a nome behind the caret, with only white space and end tags of elements inside before it.
/// \a fra: what lies between without those end tags. Null: none.
const Portati::Pezzo *FineTagDavanti(RichTextBox *editor, QStringView nome, QString &fra)
{
    const Portati &portati = Portati::Di(editor);
    const QString scritto = u"</"_s + nome.toString() + u'>';
    int posizione = editor->SelStart();
    const int limite = std::min(editor->Lunghezza(), posizione + BiancoGuardato);
    while (posizione < limite) {
        if (const auto *fine = portati.CheComincia(Genere::FineTag, posizione)) {
            if (fine->testo.compare(scritto, Qt::CaseInsensitive) == 0)
                return fine;
            posizione = fine->Fine();
        } else if (Bianco(editor->Unita(posizione))) {
            fra += editor->Unita(posizione++);
        } else {
            return nullptr;
        }
    }
    return nullptr;
}

/// A typed end tag up to its ">" gives way to the one that was brought for the same element.
bool ScavalcaFineTag(RichTextBox *editor, const Luogo &luogo)
{
    QString fra;
    const auto *fine = FineTagDavanti(editor, luogo.nome, fra);
    if (!fine)
        return false;
    Portati &portati = Portati::Di(editor);
    int da = luogo.apertura;
    // Alone on its line it goes below its start tag, when its indentation is not the user's own.
    if (const auto *rientro = portati.CheFinisce(Genere::Rientro, luogo.apertura); rientro && fra.isEmpty()) {
        da = rientro->da;
        fra = RientroDi(*editor, fine->origine);
    }
    const int lunghezza = int(fine->testo.size());
    const int posto = fine->da;
    if (luogo.stato != Stato::Nome) {
        // Written with more than its name, the typed one stays.
        const int caretto = editor->SelStart();
        editor->Sostituisci(caretto, posto + lunghezza - caretto, fra);
        editor->ImpostaSelStart(caretto);
        return false;
    }
    portati.Dimentica(Genere::FineTag, posto);
    editor->Sostituisci(da, posto - da, fra);
    editor->ImpostaSelStart(da + int(fra.size()) + lunghezza);
    return true;
}

bool Maggiore(RichTextBox *editor)
{
    Luogo luogo = ContestoTag::LuogoDi(editor);
    if (VirgolettaAperta(editor, luogo))
        ChiudiValore(editor, luogo, u'>');
    TogliSpazi(editor);
    luogo = ContestoTag::LuogoDi(editor);
    if (luogo.chiusura && luogo.InTag() && ScavalcaFineTag(editor, luogo))
        return false;
    ChiudiTag(editor);
    return true;
}

} // namespace

void ChiudiTag(RichTextBox *editor)
{
    const Luogo luogo = ContestoTag::LuogoDi(editor);
    const int caretto = editor->SelStart();
    if (!luogo.InTagIniziale() || luogo.stato == Stato::Virgolette)
        return;
    // "<A NAME=x/>" and "<A/>": only in the second one the slash is the tag's.
    if (luogo.stato != Stato::Valore && editor->Unita(caretto - 1) == u'/')
        return;
    const int casella = ModuloTag::CasellaTag(luogo.nome);
    if (casella < 1 || !ModuloTag::ArrayTag()[casella].CloseTag)
        return;
    editor->ImpostaSelStart(caretto);
    editor->ImpostaSelColor(SchemaColori::Tag);
    Portati::Di(editor).Metti(Genere::FineTag, u"</"_s + luogo.nome + u'>', luogo.apertura);
}

bool VirgolettaPortata(RichTextBox *editor)
{
    return editor->SelLength() == 0 && Portati::Di(editor).CheFinisce(Genere::Apre, editor->SelStart());
}

bool PrendiVirgoletta(RichTextBox *editor)
{
    if (!VirgolettaPortata(editor))
        return false;
    Portati::Di(editor).Dimentica(Genere::Apre, editor->SelStart() - 1);
    return true;
}

qsizetype FineValore(QStringView tag, QStringView attributo, QStringView valore, char16_t carattere)
{
    static const QRegularExpression NomeInFondo(u"\\s[A-Za-z_:][\\w:.-]*$"_s);
    qsizetype fine = valore.size();
    if (carattere == u'=') {
        const auto trovato = NomeInFondo.match(valore);
        if (!trovato.hasMatch())
            return valore.size();
        fine = trovato.capturedStart();
        // Script and style hold "=" and blanks of their own, and so does what a sign such as ";" leaves unfinished.
        const bool delTag = ModuloTag::VerificaAttributo(tag, valore.sliced(fine + 1)) == 1;
        const bool codice = attributo.startsWith(u"on", Qt::CaseInsensitive) ||
                            attributo.compare(u"style", Qt::CaseInsensitive) == 0 ||
                            attributo.compare(u"content", Qt::CaseInsensitive) == 0;
        const QStringView prima = valore.first(fine).trimmed();
        if ((codice && !delTag) || (!prima.isEmpty() && QStringView(u";,:{(&").contains(prima.back())))
            return valore.size();
    }
    for (;;) {
        while (fine > 0 && Bianco(valore[fine - 1]))
            --fine;
        qsizetype parola = fine;
        while (parola > 0 && !Bianco(valore[parola - 1]))
            --parola;
        const QStringView ultima = valore.sliced(parola, fine - parola);
        if (parola == 0 || (ultima != u"/" && !ModuloTag::SenzaValore(tag, ultima)))
            return fine;
        fine = parola;
    }
}

bool Prima(RichTextBox *editor, char16_t carattere)
{
    if (editor->SelLength() > 0 && carattere != u'\r')
        return true;
    if (carattere != u'\r')
        PrendiRientro(editor, carattere);
    switch (carattere) {
    case u'"':
    case u'\'':
        return Virgoletta(editor, carattere);
    case u'>':
        return Maggiore(editor);
    case u' ':
        return Spazio(editor);
    case u'/':
        TogliSpazi(editor);
        return true;
    case u'=':
    case u'\r': {
        if (carattere == u'\r')
            TogliVirgoletta(editor);
        const Luogo luogo = ContestoTag::LuogoDi(editor);
        if (VirgolettaAperta(editor, luogo))
            ChiudiValore(editor, luogo, carattere);
        if (carattere == u'=')
            return true;
        TogliSpazi(editor);
        return ACapo(editor);
    }
    default:
        return true;
    }
}

} // namespace Battitura
