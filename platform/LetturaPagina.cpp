#include "platform/FilePagina.h"

#include "platform/CodificaPagina.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
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

/// Judged by the first line end; zero bytes are passed over, so that UTF-16 is judged too.
bool IniziaConAltroFineRiga(QByteArrayView byte)
{
    const auto fine = std::find_if(byte.begin(), byte.end(), [](char c) { return c == '\r' || c == '\n'; });
    if (fine == byte.end())
        return false;
    const auto dopo = std::find_if(fine + 1, byte.end(), [](char c) { return c != '\0'; });
    return *fine == '\n' || dopo == byte.end() || *dopo != '\n';
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
        trovato.altriFineRiga = IniziaConAltroFineRiga(byte);
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
