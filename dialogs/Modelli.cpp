#include "dialogs/Modelli.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/PaginaVuota.h"
#include "platform/FilePagina.h"

#include <QFileInfo>
#include <QSettings>

#include <cmath>

using namespace Qt::StringLiterals;
using ModuloPrincipale::EsitoLettura;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr Modelli::Modello Pagine[] = {
    {67, 376, u"vuota", {}},
    {68, 377, u"campagna_semplice", u"modelli/campagna semplice.html"},
    {69, 378, u"campagna_avanzata", u"modelli/campagna avanzata.html"},
    {70, 379, u"newsletter_semplice", u"modelli/newsletter semplice.html"},
    {71, 380, u"newsletter_avanzata", u"modelli/newsletter avanzata.html"},
};

const QString ChiaveMostra = u"modelli/mostra"_s;

QString Motivo(EsitoLettura esito, const QString &percorso)
{
    switch (esito) {
    case EsitoLettura::Letto:
        return {};
    case EsitoLettura::Inesistente:
        return Messaggio(332);
    case EsitoLettura::Cartella:
    case EsitoLettura::NonRegolare:
        return Messaggio(381);
    case EsitoLettura::TroppoGrande:
        return Messaggio(382);
    case EsitoLettura::NonLeggibile:
        break;
    }
    return Messaggio(QFileInfo(percorso).isReadable() ? 336 : 330);
}

} // namespace

std::span<const Modelli::Modello> Modelli::Elenco()
{
    return Pagine;
}

QString Modelli::Percorso(const Modello &modello)
{
    using namespace ModuloDichiarazioni;
    return modello.file.isEmpty() ? QString() : PercorsoIn(CartellaProgramma(), modello.file);
}

Modelli::Caricato Modelli::Leggi(const Modello &modello)
{
    if (modello.file.isEmpty())
        return {PaginaVuota::Testo(), {}};
    const QString percorso = Percorso(modello);
    Caricato caricato;
    const ModuloPrincipale::RisultatoLettura esito = ModuloPrincipale::LeggiPagina(percorso, caricato.testo);
    if (!esito) {
        caricato.testo.clear();
        caricato.motivo = Motivo(esito.esito, percorso);
    }
    return caricato;
}

QList<QPoint> Modelli::Disposizione(double altezza, double larghezzaElenco, int quanti)
{
    constexpr int Sinistra = 400;
    constexpr int Alto = 20;
    const int h = int(std::nearbyint(altezza));
    const int s = h / 2;
    const int limite = int(std::nearbyint(larghezzaElenco - s));
    QList<QPoint> posti;
    QPoint posto(Sinistra, Alto);
    for (int i = 0; i < quanti; ++i) {
        posti += posto;
        posto.rx() += h + s;
        if (posto.x() > limite)
            posto = {Sinistra, posto.y() + h + s};
    }
    return posti;
}

bool Modelli::Mostra()
{
    return QSettings().value(ChiaveMostra, true).toBool();
}

void Modelli::ImpostaMostra(bool mostra)
{
    QSettings().setValue(ChiaveMostra, mostra);
}
