#include "platform/DevMode.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace
{

constexpr int PostoCampi = 40;

/// Where a field's 16-bit number stands; -1: it is no number.
int Posto(DevMode::Campo campo)
{
    switch (campo) {
    case DevMode::Orientamento:
        return 44;
    case DevMode::Carta:
        return 46;
    case DevMode::LunghezzaCarta:
        return 48;
    case DevMode::LarghezzaCarta:
        return 50;
    case DevMode::NumeroCopie:
        return 54;
    case DevMode::Qualita:
        return 58;
    case DevMode::Colore:
        return 60;
    case DevMode::FronteRetro:
        return 62;
    case DevMode::Fascicolazione:
        return 68;
    case DevMode::NomeModulo:
        break;
    }
    return -1;
}

} // namespace

DevMode DevMode::DaByte(const QByteArray &byte)
{
    DevMode record;
    record.m_byte.replace(0, std::min<qsizetype>(byte.size(), Lunghezza), byte.left(Lunghezza));
    return record;
}

quint32 DevMode::Campi() const
{
    return qFromLittleEndian<quint32>(m_byte.constData() + PostoCampi);
}

void DevMode::Segna(Campo campo)
{
    qToLittleEndian<quint32>(Campi() | campo, m_byte.data() + PostoCampi);
}

qint16 DevMode::Valore(Campo campo) const
{
    const int posto = Posto(campo);
    return posto < 0 ? qint16(0) : qFromLittleEndian<qint16>(m_byte.constData() + posto);
}

void DevMode::Imposta(Campo campo, int valore)
{
    using Limiti = std::numeric_limits<qint16>;
    const int posto = Posto(campo);
    Q_ASSERT(posto >= 0);
    qToLittleEndian<qint16>(qint16(std::clamp<int>(valore, Limiti::min(), Limiti::max())), m_byte.data() + posto);
    Segna(campo);
}

void DevMode::ImpostaNomeCarta(const QByteArray &nome)
{
    ImpostaNome(PostoModulo, nome.left(LunghezzaNome - 1));
    Segna(NomeModulo);
}

QByteArray DevMode::Nome(int posto) const
{
    const QByteArray campo = m_byte.mid(posto, LunghezzaNome);
    const qsizetype fine = campo.indexOf('\0');
    return fine < 0 ? campo : campo.left(fine);
}

void DevMode::ImpostaNome(int posto, const QByteArray &nome)
{
    m_byte.replace(posto, LunghezzaNome, nome.left(LunghezzaNome).leftJustified(LunghezzaNome, '\0'));
}
