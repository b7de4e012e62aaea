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

void Scrivi(std::FILE *dove, const QByteArray &byte)
{
    std::fwrite(byte.constData(), 1, size_t(byte.size()), dove);
}

QString MotivoLettura(const QString &percorso, const ModuloPrincipale::RisultatoLettura &esito)
{
    using ModuloPrincipale::EsitoLettura;
    const QString file = NomiFile::Leggibile(percorso);
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
        return Messaggio(202).arg(file, Messaggio(NomiFile::Consentito(percorso) ? 336 : 330));
    }
}

bool Leggi(const QString &file, QString &testo)
{
    if (file == u"-"_s) {
        QFile ingresso;
        FormatoPagina formato;
        if (!ingresso.open(stdin, QIODevice::ReadOnly))
            return false;
        testo = Codifiche::TestoDaByte(ingresso.readAll(), formato);
        return true;
    }
    const ModuloPrincipale::RisultatoLettura esito = ModuloPrincipale::LeggiPagina(file, testo);
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
