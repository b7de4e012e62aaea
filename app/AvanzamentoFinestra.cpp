#include "app/AvanzamentoFinestra.h"

#include "app/TabellaLingua.h"
#include "chrome/ClsProgressBar.h"

using ModuloPrincipale::Messaggio;

AvanzamentoFinestra::AvanzamentoFinestra(QWidget *padre, const QString &etichetta, qsizetype massimo)
    : m_finestra(Messaggio(313), Messaggio(314), padre)
{
    m_finestra.Barra().TextStatus(etichetta);
    m_finestra.Barra().Max(double(massimo));
}

void AvanzamentoFinestra::Mostra()
{
    m_finestra.Mostra(0);
}

void AvanzamentoFinestra::ImpostaValore(qsizetype valore)
{
    m_finestra.Barra().Value(double(valore));
}
