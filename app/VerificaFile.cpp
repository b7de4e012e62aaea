#include "app/VerificaFile.h"

#include "app/ModuloDichiarazioni.h"
#include "app/RigaComando.h"
#include "app/TabellaLingua.h"
#include "html/ModuloTag.h"
#include "html/VerificaDaRiga.h"
#include "platform/CodificaPagina.h"
#include "platform/FilePagina.h"
#include "platform/NomiFile.h"

#include <QFile>
#include <QJsonDocument>

#include <cstdio>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int SenzaRiscontri = 0;
constexpr int ConRiscontri = 1;
constexpr int NonLetto = 2;
constexpr QStringView Ingresso = u"-"; // the file that stands for standard input

void Scrivi(std::FILE *dove, const QByteArray &byte)
{
    std::fwrite(byte.constData(), 1, size_t(byte.size()), dove);
}

QString MotivoLettura(const QString &percorso, const ModuloPrincipale::RisultatoLettura &esito)
{
    using ModuloPrincipale::EsitoLettura;
    const QString file = NomiFile::Leggibile(percorso);
    const bool consentito = percorso == Ingresso || NomiFile::Consentito(percorso);
    switch (esito.esito) {
    case EsitoLettura::Cartella:
        return Messaggio(200).arg(file);
    case EsitoLettura::NonRegolare:
        return Messaggio(201).arg(file);
    case EsitoLettura::TroppoGrande:
        return Messaggio(203).arg(file);
    case EsitoLettura::Inesistente:
        return Messaggio(202).arg(file, Messaggio(332));
    default:
        return Messaggio(202).arg(file, Messaggio(consentito ? 336 : 330));
    }
}

ModuloPrincipale::RisultatoLettura LeggiIngresso(QString &testo)
{
    using ModuloPrincipale::EsitoLettura;
    QFile ingresso;
    if (!ingresso.open(fileno(stdin), QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {EsitoLettura::NonLeggibile, ingresso.errorString()};
    QByteArray byte;
    ModuloPrincipale::RisultatoLettura esito =
        ModuloPrincipale::LeggiTutto(ingresso, byte, ModuloPrincipale::MassimoPagina);
    FormatoPagina formato;
    if (esito)
        testo = Codifiche::TestoDaByte(byte, formato);
    return esito;
}

bool Leggi(const QString &file, QString &testo)
{
    const ModuloPrincipale::RisultatoLettura esito =
        file == Ingresso ? LeggiIngresso(testo) : ModuloPrincipale::LeggiPagina(file, testo);
    if (!esito)
        Scrivi(stderr, MotivoLettura(file, esito).toUtf8() + '\n');
    return bool(esito);
}

} // namespace

int VerificaFile::Esegui(const RigaComando &riga, const QString &cartella)
{
    const ModuloTag::EsitoCaricamento base =
        ModuloTag::CaricaTag(ModuloDichiarazioni::PercorsoIn(cartella, u"tag html.db"));
    if (!base.Riuscito()) {
        Scrivi(stderr, base.messaggio.toUtf8() + '\n');
        return NonLetto;
    }
    int stato = SenzaRiscontri;
    QJsonArray tutti;
    for (const QString &file : riga.pagine) {
        QString testo;
        if (!Leggi(file, testo)) {
            stato = NonLetto;
            continue;
        }
        bool trovati = false;
        if (riga.json) {
            const QJsonArray riscontri = VerificaDaRiga::InJson(file, testo);
            trovati = !riscontri.isEmpty();
            for (const auto &riscontro : riscontri)
                tutti.append(riscontro);
        } else {
            const QString righe = VerificaDaRiga::InRighe(file, testo);
            trovati = !righe.isEmpty();
            Scrivi(stdout, righe.toUtf8());
        }
        if (trovati && stato == SenzaRiscontri)
            stato = ConRiscontri;
    }
    if (riga.json)
        Scrivi(stdout, QJsonDocument(tutti).toJson());
    return stato;
}
