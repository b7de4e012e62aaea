#include "dialogs/ModuloStampa.h"

#include "platform/Spooler.h"

#include <QCoreApplication>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{

using ModuloStampa::ImpostazioniSalvate;
using Messaggio = std::function<void(const QString &)>;

constexpr qint32 InPiu = 100; // bytes that every buffer has beyond what was asked for

ImpostazioniSalvate LeggiTutte(Spooler &spooler)
{
    ImpostazioniSalvate salvate;
    salvate.nomi = spooler.Stampanti();
    for (const QString &nome : std::as_const(salvate.nomi))
        salvate.record.push_back(ModuloStampa::LeggiImpostazioni(spooler, nome));
    return salvate;
}

/// The first saved record with the device name of \a scelto; empty when there is none.
DevMode Precedente(const ImpostazioniSalvate &salvate, const DevMode &scelto)
{
    for (const DevMode &record : salvate.record) {
        if (!record.Vuoto() && record.NomeDispositivo() == scelto.NomeDispositivo())
            return record;
    }
    return {};
}

/// The driver's settings with \a nuove merged in; empty after a failure, which was told.
QByteArray Unite(Spooler &spooler, Spooler::Maniglia maniglia, const QString &stampante, const DevMode &nuove,
                 const Messaggio &messaggio)
{
    const qint32 dimensione = spooler.ProprietaDocumento(maniglia, stampante, nullptr, nullptr, Spooler::Dimensione);
    if (dimensione < 0) {
        messaggio(u"Cannot get the size of the DEVMODE structure."_s);
        return {};
    }
    QByteArray impostazioni(std::max<qsizetype>(DevMode::Lunghezza, qsizetype(dimensione) + InPiu), '\0');
    if (spooler.ProprietaDocumento(maniglia, stampante, &impostazioni, nullptr, Spooler::Uscita) < 0) {
        messaggio(u"Cannot get the DEVMODE structure."_s);
        return {};
    }
    impostazioni.replace(0, DevMode::Lunghezza, nuove.Byte());
    const quint32 modo = Spooler::Ingresso | Spooler::Uscita;
    if (spooler.ProprietaDocumento(maniglia, stampante, &impostazioni, &impostazioni, modo) < 0) {
        messaggio(u"Unable to set duplex setting to this printer."_s);
        return {};
    }
    return impostazioni;
}

void Imposta(Spooler &spooler, Spooler::Maniglia maniglia, const QByteArray &impostazioni, const Messaggio &messaggio)
{
    const quint32 dimensione = spooler.DimensioneInformazioni(maniglia);
    if (dimensione == 0)
        return;
    InformazioniStampante informazioni;
    if (!spooler.LeggiInformazioni(maniglia, dimensione + InPiu, informazioni)) {
        messaggio(u"Unable to get shared printer settings."_s);
        return;
    }
    informazioni.impostazioni = impostazioni;
    informazioni.descrittoreSicurezza.clear();
    // What the user types meanwhile waits: nothing may begin between the dialog and the print.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (!spooler.ImpostaStampante(maniglia, informazioni))
        messaggio(u"Unable to set shared printer settings."_s);
}

} // namespace

DevMode ModuloStampa::LeggiImpostazioni(Spooler &spooler, const QString &stampante)
{
    const Spooler::Maniglia maniglia = spooler.ApriStampante(stampante, Spooler::AccessoLettura);
    if (maniglia == 0)
        return {};
    const auto chiudi = qScopeGuard([&] { spooler.ChiudiStampante(maniglia); });
    InformazioniStampante informazioni;
    const quint32 dimensione = spooler.DimensioneInformazioni(maniglia);
    if (dimensione == 0 || !spooler.LeggiInformazioni(maniglia, dimensione + InPiu, informazioni))
        return {};
    return DevMode::DaByte(informazioni.impostazioni);
}

void ModuloStampa::ScriviImpostazioni(Spooler &spooler, const QString &stampante, const DevMode &nuove,
                                      const Messaggio &messaggio)
{
    const Spooler::Maniglia maniglia = spooler.ApriStampante(stampante, Spooler::AccessoCompleto);
    if (maniglia == 0) {
        messaggio(spooler.UltimoErrore() == Spooler::AccessoNegato
                      ? u"Access denied -- See the article for more info."_s
                      : u"Cannot open the printer specified "_s + u"(make sure the printer name is correct)."_s);
        return;
    }
    const auto chiudi = qScopeGuard([&] { spooler.ChiudiStampante(maniglia); });
    const QByteArray impostazioni = Unite(spooler, maniglia, stampante, nuove, messaggio);
    if (!impostazioni.isEmpty())
        Imposta(spooler, maniglia, impostazioni, messaggio);
}

void ModuloStampa::Esegui(Spooler &spooler, const Passi &passi)
{
    const ImpostazioniSalvate salvate = LeggiTutte(spooler);
    const SceltaStampa scelta = passi.dialogo(salvate);
    if (scelta.impostazioni.Copie() == 0)
        return;
    // A file has no stored settings.
    if (scelta.stampante.isEmpty()) {
        passi.stampa(scelta);
        return;
    }
    const DevMode precedente = Precedente(salvate, scelta.impostazioni);
    ScriviImpostazioni(spooler, scelta.stampante, scelta.impostazioni, passi.messaggio);
    const auto ripristina = qScopeGuard([&] {
        if (!precedente.Vuoto())
            ScriviImpostazioni(spooler, scelta.stampante, precedente, passi.messaggio);
    });
    passi.stampa(scelta);
}
