#include "platform/FilePagina.h"

#include "platform/CodificaPagina.h"

#include <QCryptographicHash>

#include <algorithm>
#include <new>
#include <utility>

namespace ModuloPrincipale
{
namespace
{

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
        RisultatoLettura risultato = LeggiByte(percorso, byte, MassimoPagina);
        testo = Codifiche::TestoDaByte(byte, trovato);
        trovato.altriFineRiga = IniziaConAltroFineRiga(byte);
        if (formato) {
            *formato = std::move(trovato);
            risultato.impronta = Impronta(byte);
            risultato.byte = byte.size();
        }
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

QByteArray Impronta(QByteArrayView byte)
{
    QCryptographicHash calcolo(QCryptographicHash::Blake2b_160);
    calcolo.addData(byte);
    return calcolo.result();
}

QByteArray ImprontaFile(const QString &percorso)
{
    QByteArray byte;
    return LeggiByte(percorso, byte, MassimoPagina) ? Impronta(byte) : QByteArray();
}

} // namespace ModuloPrincipale
