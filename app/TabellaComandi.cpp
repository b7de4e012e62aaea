#include "app/TabellaComandi.h"

namespace
{

using TabellaComandi::Barra;
using TabellaComandi::Bottone;
using TabellaComandi::Voce;

constexpr QStringView Radice = u"";

// clang-format off
constexpr Voce VociMenu[] = {
    {Radice, u"MFile", 117, u"", u"F", true},
    {u"MFile", u"MenuFile(0)", 1, u"nuovo", u"Ctrl+N"},
    {u"MFile", u"MenuFile(1)", 2, u"apri", u"Ctrl+O"},
    {u"MFile", u"MenuFile(2)", 3, u"chiudi", u"", false, true},
    {u"MFile", u""},
    {u"MFile", u"MenuFile(4)", 4, u"salva", u"Ctrl+S"},
    {u"MFile", u"MenuFile(5)", 5, u"salva_con_nome", u""},
    {u"MFile", u""},
    {u"MFile", u"MenuFile(7)", 6, u"stampa", u""},
    {u"MFile", u""},
    {u"MFile", u"MenuFile(9)", 7, u"anteprima_browser", u"Ctrl+P"},
    {u"MFile", u""},
    {u"MFile", u"MenuFile(11)", 8, u"esci", u""},

    {Radice, u"Medit", 119, u"", u"E", true},
    {u"Medit", u"MenuEdit(0)", 9, u"annulla", u""},
    {u"Medit", u"MenuEdit(1)", 10, u"ripristina", u""},
    {u"Medit", u""},
    {u"Medit", u"MenuEdit(3)", 11, u"taglia", u"Ctrl+X"},
    {u"Medit", u"MenuEdit(4)", 12, u"copia", u"Ctrl+C"},
    {u"Medit", u"MenuEdit(5)", 13, u"incolla", u"Ctrl+V"},
    {u"Medit", u"MenuEdit(6)", 14, u"elimina", u"Del"},
    {u"Medit", u""},
    {u"Medit", u"MenuEdit(8)", 15, u"seleziona_tutto", u""},
    {u"Medit", u""},
    {u"Medit", u"MenuEdit(10)", 16, u"trova", u"Ctrl+F"},
    {u"Medit", u"MenuEdit(11)", 17, u"ripeti_trova", u"F3"},
    {u"Medit", u"MenuEdit(12)", 18, u"sostituisci", u""},

    {Radice, u"MFormato", 62, u"", u"O", true},
    {u"MFormato", u"MAlliniamento", 19, u"allinea_sinistra", u"", true},
    {u"MAlliniamento", u"MenuAllineamento(0)", 20, u"allinea_sinistra", u""},
    {u"MAlliniamento", u"MenuAllineamento(1)", 21, u"allinea_centro", u""},
    {u"MAlliniamento", u"MenuAllineamento(2)", 22, u"allinea_destra", u""},
    {u"MFormato", u"MFont", 26, u"font", u""},
    {u"MFormato", u"MenuFormato(0)", 27, u"elenco_puntato", u""},
    {u"MFormato", u"MenuFormato(1)", 28, u"elenco_numerato", u""},

    {Radice, u"Mtag", 118, u"", u"A", true},
    {u"Mtag", u"MComuni", 30, u"tag", u"", true},
    {u"MComuni", u"MenuComuni(0)", 33, u"riga_vuota", u""},
    {u"MComuni", u"MenuComuni(1)", 34, u"spazio", u""},
    {u"MComuni", u"MenuComuni(2)", 35, u"commento", u""},
    {u"MComuni", u"MenuComuni(3)", 36, u"linea_orizzontale", u""},
    {u"MComuni", u"MenuComuni(4)", 37, u"testata", u""},
    {u"MComuni", u"MenuComuni(5)", 38, u"paragrafo", u""},
    {u"Mtag", u"MCollegamenti", 29, u"collegamento", u"", true},
    {u"MCollegamenti", u"MenuCollegamenti(0)", 39, u"immagine", u""},
    {u"MCollegamenti", u"MenuCollegamenti(1)", 40, u"sfondo", u""},
    {u"MCollegamenti", u"MenuCollegamenti(2)", 41, u"collegamento", u""},
    {u"MCollegamenti", u"MenuCollegamenti(3)", 42, u"email", u""},
    {u"Mtag", u"MTabella", 31, u"tabella", u"", true},
    {u"MTabella", u"MenuTabella(0)", 51, u"tabella", u""},
    {u"MTabella", u"MenuTabella(1)", 52, u"tag_table", u""},
    {u"MTabella", u"MenuTabella(2)", 53, u"tag_tr", u""},
    {u"MTabella", u"MenuTabella(3)", 54, u"tag_td", u""},
    {u"MTabella", u"MenuTabella(4)", 55, u"tag_th", u""},
    {u"Mtag", u"MForm", 32, u"form", u"", true},
    {u"MForm", u"MenuForm(0)", 43, u"form", u""},
    {u"MForm", u"MenuForm(1)", 44, u"casella_combinata", u""},
    {u"MForm", u"MenuForm(2)", 45, u"casella_testo", u""},
    {u"MForm", u"MenuForm(3)", 46, u"pulsante_opzione", u""},
    {u"MForm", u"MenuForm(4)", 47, u"casella_controllo", u""},
    {u"MForm", u"MenuForm(5)", 48, u"casella_elenco", u""},
    {u"MForm", u"MenuForm(6)", 49, u"pulsante", u""},
    {u"MForm", u"MenuForm(7)", 50, u"etichetta", u""},

    {Radice, u"Mstrumenti", 63, u"", u"T", true},
    {u"Mstrumenti", u"MenuStrumenti(0)", 56, u"verifica_sintassi", u""},
    {u"Mstrumenti", u"MenuStrumenti(1)", 57, u"verifica_collegamenti", u"", false, true},
    {u"Mstrumenti", u"MenuStrumenti(2)", 58, u"aggiorna_anteprima", u""},
    {u"Mstrumenti", u"MenuStrumenti(3)", 59, u"tempo_caricamento", u"", false, true},
    {u"Mstrumenti", u"MenuStrumenti(4)", 60, u"statistiche", u"", false, true},
    {u"Mstrumenti", u""},
    {u"Mstrumenti", u"MenuStrumenti(6)", 307, u"", u""},

    {Radice, u"MHelp", 0, u"", u"H", true},
    {u"MHelp", u"MenuHelp(0)", 61, u"informazioni_su", u""},

    {u"MPopUp", u"MenuPopUp(0)", 11, u"taglia", u"", false, false, u"MenuEdit(3)"},
    {u"MPopUp", u"MenuPopUp(1)", 12, u"copia", u"", false, false, u"MenuEdit(4)"},
    {u"MPopUp", u"MenuPopUp(2)", 13, u"incolla", u"", false, false, u"MenuEdit(5)"},
    {u"MPopUp", u"MenuPopUp(3)", 14, u"elimina", u"", false, false, u"MenuEdit(6)"},
    {u"MPopUp", u"MenuPopUp(4)", 56, u"verifica_sintassi", u"", false, false, u"MenuStrumenti(0)"},
    {u"MPopUp", u"MenuPopUp(5)", 58, u"aggiorna_anteprima", u"", false, false, u"MenuStrumenti(2)"},
};

constexpr Barra ElencoBarre[] = {
    {u"ToolStandard", 220}, {u"ToolFormat", 221}, {u"ToolFormat2", 222}, {u"ToolFormat3", 223}, {u"ToolCommon", 224},
    {u"ToolCommon2", 225},  {u"ToolLink", 226},   {u"ToolForm", 227},    {u"ToolTable", 228},
};

constexpr Bottone ElencoBottoni[] = {
    {u"ToolStandard", 1, u"MenuFile(0)", u"nuovo", 1, u""},
    {u"ToolStandard", 2, u"MenuFile(1)", u"apri", 2, u""},
    {u"ToolStandard", 3, u"MenuFile(4)", u"salva", 4, u""},
    {u"ToolStandard"},
    {u"ToolStandard", 5, u"MenuEdit(3)", u"taglia", 11, u""},
    {u"ToolStandard", 6, u"MenuEdit(4)", u"copia", 12, u""},
    {u"ToolStandard", 7, u"MenuEdit(5)", u"incolla", 13, u""},
    {u"ToolStandard"},
    {u"ToolStandard", 9, u"MenuEdit(0)", u"annulla", 9, u""},
    {u"ToolStandard", 10, u"MenuEdit(1)", u"ripristina", 10, u""},

    {u"ToolFormat", 1, u"MenuAllineamento(0)", u"allinea_sinistra", 75, u""},
    {u"ToolFormat", 2, u"MenuAllineamento(1)", u"allinea_centro", 21, u""},
    {u"ToolFormat", 3, u"MenuAllineamento(2)", u"allinea_destra", 76, u""},
    {u"ToolFormat"},
    {u"ToolFormat", 5, u"ToolFormat(5)", u"rientro_riduci", 73, u""},
    {u"ToolFormat", 6, u"ToolFormat(6)", u"rientro_aumenta", 74, u""},

    {u"ToolFormat2", 1, u"ToolFormat2(1)", u"grassetto", 77, u""},
    {u"ToolFormat2", 2, u"ToolFormat2(2)", u"corsivo", 78, u""},
    {u"ToolFormat2", 3, u"ToolFormat2(3)", u"sottolineato", 79, u""},

    {u"ToolFormat3", 1, u"MenuFormato(1)", u"elenco_numerato", 28, u""},
    {u"ToolFormat3", 2, u"MenuFormato(0)", u"elenco_puntato", 27, u""},

    {u"ToolCommon", 1, u"MenuComuni(0)", u"riga_vuota", 33, u""},
    {u"ToolCommon", 2, u"MenuComuni(1)", u"spazio", 34, u""},
    {u"ToolCommon", 3, u"MenuComuni(2)", u"commento", 35, u""},
    {u"ToolCommon"},
    {u"ToolCommon", 5, u"MenuComuni(3)", u"linea_orizzontale", 36, u""},
    {u"ToolCommon", 6, u"MenuComuni(5)", u"paragrafo", 38, u""},

    {u"ToolCommon2", 1, u"ToolCommon2(1)", u"titolo1", 37, u" 1"},
    {u"ToolCommon2", 2, u"ToolCommon2(2)", u"titolo2", 37, u" 2"},
    {u"ToolCommon2", 3, u"ToolCommon2(3)", u"titolo3", 37, u" 3"},

    {u"ToolLink", 1, u"MenuCollegamenti(0)", u"immagine", 39, u""},
    {u"ToolLink", 2, u"MenuCollegamenti(2)", u"collegamento", 41, u""},
    {u"ToolLink", 3, u"MenuCollegamenti(1)", u"sfondo", 40, u""},

    {u"ToolForm", 1, u"MenuForm(0)", u"form", 0, u"Form"},
    {u"ToolForm", 2, u"MenuForm(1)", u"casella_combinata", 0, u"ComboBox"},
    {u"ToolForm", 3, u"MenuForm(2)", u"casella_testo", 0, u"TextBox"},
    {u"ToolForm", 4, u"MenuForm(3)", u"pulsante_opzione", 0, u"RadioButton"},
    {u"ToolForm", 5, u"MenuForm(4)", u"casella_controllo", 0, u"CheckBox"},
    {u"ToolForm", 6, u"MenuForm(5)", u"casella_elenco", 0, u"ListBox"},
    {u"ToolForm", 7, u"MenuForm(6)", u"pulsante", 0, u"Button"},
    {u"ToolForm", 8, u"MenuForm(7)", u"etichetta", 0, u"Label"},

    {u"ToolTable", 1, u"MenuTabella(0)", u"tabella", 51, u""},
    {u"ToolTable", 2, u"MenuTabella(1)", u"tag_table", 52, u""},
    {u"ToolTable", 3, u"MenuTabella(2)", u"tag_tr", 53, u""},
    {u"ToolTable", 4, u"MenuTabella(3)", u"tag_td", 54, u""},
    {u"ToolTable", 5, u"MenuTabella(4)", u"tag_th", 55, u""},
};
// clang-format on

} // namespace

std::span<const Voce> TabellaComandi::Menu()
{
    return VociMenu;
}

std::span<const Bottone> TabellaComandi::Bottoni()
{
    return ElencoBottoni;
}

std::span<const Barra> TabellaComandi::Barre()
{
    return ElencoBarre;
}
