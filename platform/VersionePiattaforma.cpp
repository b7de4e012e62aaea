#include "platform/VersionePiattaforma.h"

#include <QtGlobal>

int VersionePiattaforma()
{
#ifdef Q_OS_WIN
    return 3; // Qt 6 runs on no older one
#else
    return 2;
#endif
}
