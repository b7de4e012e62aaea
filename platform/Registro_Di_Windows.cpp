#include "platform/Registro_Di_Windows.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>
#include <cstring>

using namespace Registro;

QString Registro_Di_Windows::LeggiValore(HKey radice, QStringView chiave, QStringView nomeValore)
{
    HKey aperta = 0;
    if (RegOpenKey(radice, chiave, aperta) != Successo)
        aperta = 0;
    QString testo = InterrogaValore(aperta, nomeValore);
    RegCloseKey(aperta);
    return testo;
}

QString Registro_Di_Windows::InterrogaValore(HKey chiaveAperta, QStringView nomeValore)
{
    quint32 tipo = 0;
    quint32 misura = 0;
    if (RegQueryValueEx(chiaveAperta, nomeValore, &tipo, nullptr, &misura) != Successo)
        return {};
    if (tipo != REG_SZ && tipo != REG_EXPAND_SZ && tipo != REG_BINARY && tipo != REG_DWORD)
        return {};
    // Four bytes that do not fit a number are still its first four: the whole value is read.
    QByteArray dati(std::max<qsizetype>(misura, sizeof(quint32)), '\0');
    if (RegQueryValueEx(chiaveAperta, nomeValore, &tipo, dati.data(), &misura) != Successo)
        return {};
    if (tipo == REG_BINARY || tipo == REG_DWORD)
        return QString::number(qFromLittleEndian<quint32>(dati.constData()));
    dati.truncate(misura);
    const qsizetype fine = dati.indexOf('\0');
    return QString::fromUtf8(fine < 0 ? dati : dati.first(fine));
}
