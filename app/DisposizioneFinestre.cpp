#include "app/DisposizioneFinestre.h"

#include <algorithm>

namespace
{

constexpr int AccantoDocumento = 3000; // left free to the right of the document window
constexpr int Intorno = 2530;          // menus, toolbars, status bar and title bar
constexpr int BordoDestro = 100;
constexpr int QuotaDocumento = 58; // per cent of the area's height

} // namespace

QSize DisposizioneFinestre::SchermoUtile(QSize schermo, QSize area)
{
    return {std::min(schermo.width(), area.width()), std::min(schermo.height(), area.height() + Intorno)};
}

QRect DisposizioneFinestre::Documento(QSize schermo, QSize area)
{
    const QSize utile = SchermoUtile(schermo, area);
    // On a narrow screen the results may not crowd out the page.
    const int larghezza = std::max(utile.width() - AccantoDocumento, utile.width() * 60 / 100);
    return {0, 0, larghezza, (utile.height() - Intorno) * QuotaDocumento / 100};
}

QRect DisposizioneFinestre::Anteprima(QSize schermo, QSize area, QRect documento)
{
    const QSize utile = SchermoUtile(schermo, area);
    const int cima = documento.y() + documento.height();
    return {0, cima, std::max(0, utile.width() - BordoDestro), std::max(0, utile.height() - cima - Intorno)};
}

QRect DisposizioneFinestre::Risultati(QSize schermo, QSize area, QRect documento)
{
    const QSize utile = SchermoUtile(schermo, area);
    const int larghezza = utile.width() - documento.width() - BordoDestro;
    return {documento.width() - 15, 0, std::max(0, larghezza), documento.height()};
}
