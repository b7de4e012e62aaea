#include "platform/FilePagina.h"

#include "platform/CodificaPagina.h"

#include <QFile>
#include <QFileInfo>

#include <new>
#include <utility>

namespace ModuloPrincipale
{
namespace
{

RisultatoLettura LeggiByte(const QString &percorso, QByteArray &byte)
{
    const QFileInfo info(percorso);
    if (percorso.isEmpty() || !info.exists())
        return {EsitoLettura::Inesistente, {}};
    if (info.isDir())
        return {EsitoLettura::Cartella, {}};
    // Opening a pipe waits for its writer, opening a device may do anything.
    if (!info.isFile())
        return {EsitoLettura::NonRegolare, {}};
    if (info.size() > MassimoPagina)
        return {EsitoLettura::TroppoGrande, {}};
    QFile file(percorso);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {EsitoLettura::NonLeggibile, file.errorString()};
    byte = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {EsitoLettura::NonLeggibile, file.errorString()};
    if (byte.size() > MassimoPagina) {
        byte.clear();
        return {EsitoLettura::TroppoGrande, {}};
    }
    return {};
}

} // namespace

RisultatoLettura LeggiPagina(const QString &percorso, QString &testo, FormatoPagina *formato)
{
    testo.clear();
    FormatoPagina trovato;
    try {
        QByteArray byte;
        RisultatoLettura risultato = LeggiByte(percorso, byte);
        testo = Codifiche::TestoDaByte(byte, trovato);
        if (formato)
            *formato = std::move(trovato);
        return risultato;
    } catch (const std::bad_alloc &) {
        testo.clear();
        return {EsitoLettura::TroppoGrande, {}};
    }
}

bool LeggiFile(const QString &percorso, QString &testo, FormatoPagina *formato)
{
    return bool(LeggiPagina(percorso, testo, formato));
}

} // namespace ModuloPrincipale
