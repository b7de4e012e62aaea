#include "dialogs/SceltaFont.h"

#include "dialogs/ColoriHtml.h"
#include "dialogs/FrmFont.h"
#include "dialogs/TestoHtml.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int MassimaFaccia = 32; // characters
constexpr qint16 DimensioneIniziale = 10;
constexpr ColoreBgr ColoreIniziale = 0xFFFF00; // red 0, green 255, blue 255

/// Points / 3.5, without fractions of a point lost in between.
int DimensioneHtml(int punti)
{
    return punti * 2 / 7;
}

} // namespace

QString RisultatoFont::TestoHtml() const
{
    using TestoHtml::Attributo;
    return u"<font"_s + Attributo(u"size", QString::number(DimensioneHtml(dimensione))) +
           Attributo(u"color", ColoriHtml::NomeColore(colore)) + Attributo(u"face", faccia) +
           u"> testo di prova </font>"_s;
}

QFont RisultatoFont::Carattere() const
{
    QFont carattere(faccia);
    carattere.setPointSize(qMax<int>(1, dimensione));
    carattere.setBold(grassetto);
    carattere.setItalic(corsivo);
    carattere.setUnderline(sottolineato);
    carattere.setStrikeOut(barrato);
    return carattere;
}

RisultatoFont ModuloPrincipale::SceltaFont(QWidget *finestra, const QString &faccia)
{
    RisultatoFont iniziale;
    iniziale.faccia = faccia.left(MassimaFaccia);
    iniziale.dimensione = DimensioneIniziale;
    iniziale.colore = ColoreIniziale;
    FrmFont dialogo(iniziale, finestra);
    if (dialogo.exec() != QDialog::Accepted)
        return {};
    RisultatoFont scelto = dialogo.Scelta();
    scelto.annullato = false;
    return scelto;
}
