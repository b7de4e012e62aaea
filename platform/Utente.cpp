#include "platform/Utente.h"

#include <qsystemdetection.h>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

bool Utente::Amministratore()
{
#ifdef Q_OS_UNIX
    return ::geteuid() == 0;
#else
    return false;
#endif
}
