#include "html/ModuloTag.h"

#include "html/IndiceTag.h"
#include "html/LettoreBaseTag.h"

using namespace Qt::StringLiterals;

namespace ModuloTag
{
namespace
{

struct Stato {
    QList<DatiTag> tabella;
    IndiceTag indice;
};

Stato &StatoCorrente()
{
    static Stato stato;
    return stato;
}

} // namespace

EsitoCaricamento CaricaTag(const QString &percorso)
{
    QList<DatiTag> tabella;
    const EsitoLettura lettura = LeggiBaseTag(percorso, tabella);
    if (lettura.righe > 0)
        ImpostaArrayTag(tabella);
    if (lettura.motivo.isEmpty())
        return {};
    return {u"errore durante l' apertura del database "_s + percorso, lettura.motivo};
}

const QList<DatiTag> &ArrayTag()
{
    return StatoCorrente().tabella;
}

void ImpostaArrayTag(const QList<DatiTag> &tabella)
{
    StatoCorrente() = {tabella, IndiceTag(tabella)};
}

qsizetype CercaTag(const QList<DatiTag> &tabella, QString &nome)
{
    qsizetype primo = 0, ultimo = tabella.size() - 1;
    while (primo <= ultimo) {
        const qsizetype mezzo = (primo + ultimo) / 2;
        const int confronto = tabella[mezzo].Tag.compare(nome);
        if (confronto == 0) {
            nome = tabella[mezzo].Tag;
            return mezzo;
        }
        if (confronto < 0)
            primo = mezzo + 1;
        else
            ultimo = mezzo - 1;
    }
    return -1;
}

int CasellaTag(QStringView nome)
{
    return StatoCorrente().indice.Tag(nome);
}

bool EsisteTag(QStringView nome)
{
    return !nome.isEmpty() && CasellaTag(nome) >= 1;
}

quint8 VerificaAttributo(QStringView tag, QStringView attributo)
{
    return StatoCorrente().indice.VerificaAttributo(tag, attributo);
}

namespace
{

const DatiProprieta *Proprieta(QStringView tag, QStringView attributo)
{
    const int casella = CasellaTag(tag);
    if (casella < 1 || attributo.isEmpty())
        return nullptr;
    for (const DatiProprieta &proprieta : ArrayTag()[casella].Proprieta) {
        if (attributo.compare(proprieta.Property, Qt::CaseInsensitive) == 0)
            return &proprieta;
    }
    return nullptr;
}

} // namespace

bool SenzaValore(QStringView tag, QStringView attributo)
{
    constexpr qint32 Booleano = 2;
    const DatiProprieta *proprieta = Proprieta(tag, attributo);
    return proprieta && proprieta->Type == Booleano;
}

bool ValoreInLista(QStringView tag, QStringView attributo, QStringView valore)
{
    const DatiProprieta *proprieta = Proprieta(tag, attributo);
    return proprieta && !valore.isEmpty() && proprieta->Valori.contains(valore, Qt::CaseInsensitive);
}

quint8 VerificaValore(QStringView tag, QStringView attributo, QStringView valore)
{
    return StatoCorrente().indice.VerificaValore(tag, attributo, valore);
}

} // namespace ModuloTag
