#include "app/TabellaFrammenti.h"

#include "app/TabellaLingua.h"
#include "dialogs/TestoHtml.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using TabellaFrammenti::Frammento;

namespace
{

constexpr qint16 ParolaRiga = 94;

// clang-format off
constexpr Frammento Frammenti[] = {
    {u"MenuAllineamento(0)", u"<DIV align=\"left\"></DIV>"},
    {u"MenuAllineamento(1)", u"<DIV align=\"center\"></DIV>"},
    {u"MenuAllineamento(2)", u"<DIV align=\"right\"></DIV>"},

    {u"MenuFormato(0)", u"<UL>\r\n   <LI> Riga 1 </LI>\r\n   <LI> Riga 2 </LI>\r\n</UL>"},
    {u"MenuFormato(1)", u"<OL>\r\n   <LI> Riga 1 </LI>\r\n   <LI> Riga 2 </LI>\r\n</OL>"},

    {u"MenuComuni(0)", u"<BR>"},
    {u"MenuComuni(1)", u"&nbsp;"},
    {u"MenuComuni(2)", u"<!-- Riga di commento -->"},
    {u"MenuComuni(3)", u"<HR size=4 width=800 align=\"left\">"},
    {u"MenuComuni(4)", u"<H1>"},
    {u"MenuComuni(5)", u"<P>"},

    {u"MenuCollegamenti(2)", u"<A href=\"http://www.example.com/\" target=\"_blank\">Descrizione link</A>"},
    {u"MenuCollegamenti(3)", u"<A href=\"mailto:nome@example.com\" target=\"_blank\">Descrizione e-mail</A>"},

    {u"MenuTabella(1)", u"<TABLE>"},
    {u"MenuTabella(2)", u"<TR>"},
    {u"MenuTabella(3)", u"<TD>"},
    {u"MenuTabella(4)", u"<TH>"},

    {u"MenuForm(0)", u"<FORM method=\"post\" action=\"inserire lo script\">\r\n\r\n</FORM>"},
    {u"MenuForm(1)", u"<SELECT name=\"select\">\r\n"
                     u"  <OPTION value=\"op1\"> testo1\r\n"
                     u"  <OPTION value=\"op2\"> testo2\r\n"
                     u"  <OPTION value=\"op3\"> testo3\r\n"
                     u"</SELECT>"},
    {u"MenuForm(2)", u"<INPUT type=\"text\" name=\"textbox\" value=\"testo\">"},
    {u"MenuForm(3)", u"<INPUT type=\"radio\" name=\"radio\" value=\"1\">Radio"},
    {u"MenuForm(4)", u"<INPUT type=\"checkbox\" name=\"chk\" value=\"1\">Checkbox"},
    {u"MenuForm(5)", u"<TEXTAREA name=\"textarea\" cols=10 rows=5>\r\n%1 1\r\n%1 2\r\n</TEXTAREA>"},
    {u"MenuForm(6)", u"<INPUT type=\"button\" name=\"button\" value=\"bottone\">"},
    {u"MenuForm(7)", u"<LABEL for=\"label\">Label</LABEL>"},

    {u"ToolFormat2(1)", u"<B>"},
    {u"ToolFormat2(2)", u"<I>"},
    {u"ToolFormat2(3)", u"<U>"},

    {u"ToolCommon2(1)", u"<H1>"},
    {u"ToolCommon2(2)", u"<H2>"},
    {u"ToolCommon2(3)", u"<H3>"},
};
// clang-format on

} // namespace

std::span<const Frammento> TabellaFrammenti::Elenco()
{
    return Frammenti;
}

QString TabellaFrammenti::Testo(QStringView comando)
{
    const auto trovato = std::ranges::find(Frammenti, comando, &Frammento::comando);
    if (trovato == std::end(Frammenti))
        return {};
    return trovato->testo.toString().replace(u"%1"_s, ModuloPrincipale::Messaggio(ParolaRiga));
}

QString TabellaFrammenti::TestoImmagine(const QString &riferimento)
{
    return riferimento.isEmpty() ? QString() : u"<IMG"_s + TestoHtml::Attributo(u"src", riferimento) + u'>';
}
