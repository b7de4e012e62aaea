#include "GuardiaMemoria.h"

#include <QFile>

#include <algorithm>
#include <chrono>

#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

constexpr auto Intervallo = 200ms;

/// Bytes of memory that this process has in use; 0 where the host does not tell.
qint64 Memoria()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return 0;
    return file.read(200).split(' ').value(1).toLongLong() * qint64(sysconf(_SC_PAGESIZE));
}

} // namespace

GuardiaMemoria::GuardiaMemoria(QObject *parent) : QObject(parent)
{
    m_orologio.setInterval(Intervallo);
    connect(&m_orologio, &QTimer::timeout, this, &GuardiaMemoria::Guarda);
}

void GuardiaMemoria::Riparti()
{
    m_minimo = Memoria();
    m_orologio.start();
}

void GuardiaMemoria::Guarda()
{
    const qint64 adesso = Memoria();
    m_minimo = std::min(m_minimo, adesso);
    if (adesso - m_minimo <= Limite)
        return;
    m_orologio.stop();
    emit Superata();
}
