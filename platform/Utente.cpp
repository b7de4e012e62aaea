#include "platform/Utente.h"

#include <qsystemdetection.h>

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>

#include <vector>
#endif

bool Utente::Amministratore()
{
#ifdef Q_OS_UNIX
    return ::geteuid() == 0;
#else
    return false;
#endif
}

QString Utente::NomeDaDescrizione(QStringView descrizione, QStringView utente)
{
    QString nome = descrizione.toString().section(u',', 0, 0);
    QString maiuscolo = utente.toString();
    if (!maiuscolo.isEmpty())
        maiuscolo[0] = maiuscolo[0].toUpper();
    return nome.replace(u'&', maiuscolo).trimmed();
}

QString Utente::NomeCompleto()
{
#ifdef Q_OS_UNIX
    constexpr size_t Posto = 16384; // more than any host asks for
    std::vector<char> testi(Posto);
    passwd conto{};
    passwd *trovato = nullptr;
    if (::getpwuid_r(::getuid(), &conto, testi.data(), testi.size(), &trovato) != 0 || !trovato || !trovato->pw_gecos)
        return {};
    return NomeDaDescrizione(QString::fromLocal8Bit(trovato->pw_gecos), QString::fromLocal8Bit(trovato->pw_name));
#else
    return {};
#endif
}
