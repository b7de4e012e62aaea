#include "dialogs/ColoriHtml.h"

#include <algorithm>

using ColoriHtml::Colore;

namespace
{

// Green, lime and navy are not quite what browsers show under these names.
constexpr Colore Colori[] = {
    {0x000000, u"black"}, {0xFF0000, u"blue"},   {0xFF00FF, u"fuchsia"}, {0x808080, u"gray"},
    {0x00C000, u"green"}, {0x80FF80, u"lime"},   {0x000080, u"maroon"},  {0xC00000, u"navy"},
    {0x008000, u"olive"}, {0x800080, u"purple"}, {0x0000FF, u"red"},     {0xC0C0C0, u"silver"},
    {0x808000, u"teal"},  {0x00FFFF, u"yellow"}, {0xFFFF00, u"aqua"},    {0xFFFFFF, u"white"},
};

} // namespace

std::span<const Colore> ColoriHtml::Elenco()
{
    return Colori;
}

QString ColoriHtml::NomeColore(ColoreBgr colore)
{
    const auto trovato = std::ranges::find(Colori, colore, &Colore::valore);
    return trovato == std::end(Colori) ? QString() : trovato->nome.toString();
}

ColoreBgr ColoriHtml::DaQColor(const QColor &colore)
{
    return ColoreBgr(colore.red()) | ColoreBgr(colore.green()) << 8 | ColoreBgr(colore.blue()) << 16;
}
