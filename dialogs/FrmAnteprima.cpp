#include "dialogs/FrmAnteprima.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"

using namespace Qt::StringLiterals;

FrmAnteprima::FrmAnteprima(QWidget *parent) : QWidget(parent)
{
    setObjectName(u"FrmAnteprima"_s);
    setWindowTitle(ModuloPrincipale::Messaggio(65));
    setWindowIcon(ModuloGrafica::Icona(u"anteprima"));
    ModuloGrafica::Decora(*this);
    ModuloGrafica::RimuoviChiudi(*this);
}
