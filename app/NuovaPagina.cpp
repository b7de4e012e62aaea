#include "app/NuovaPagina.h"

#include "app/Comandi.h"
#include "dialogs/FrmModelli.h"
#include "dialogs/Modelli.h"
#include "dialogs/PaginaVuota.h"
#include "platform/RichTextBox.h"

#include <QAction>

using namespace Qt::StringLiterals;

NuovaPagina::Esito NuovaPagina::Scegli(RichTextBox &pad, QWidget *finestra)
{
    Esito esito;
    if (!Modelli::Mostra()) {
        pad.ImpostaText(PaginaVuota::Testo());
        esito.iniziata = true;
        return esito;
    }
    FrmModelli dialogo(&pad, finestra);
    QObject::connect(&dialogo, &FrmModelli::Avviso, &dialogo, [&esito](const QString &testo) { esito.avviso = testo; });
    esito.iniziata = dialogo.exec() == QDialog::Accepted;
    return esito;
}

void NuovaPagina::CollegaComando(Comandi &comandi, QWidget &finestra)
{
    const QString comando = u"MenuStrumenti(6)"_s;
    auto *voce = finestra.findChild<QAction *>(comando);
    if (!voce)
        return;
    voce->setCheckable(true);
    comandi.Collega(comando, [voce] { Modelli::ImpostaMostra(voce->isChecked()); });
    const auto aggiorna = [voce] { voce->setChecked(Modelli::Mostra()); };
    QObject::connect(&comandi, &Comandi::MenuAperto, voce, [aggiorna](const QString &menu) {
        if (menu == u"Mstrumenti")
            aggiorna();
    });
    aggiorna();
}
