// The one symbol of the module that holds the windows.

#include "app/Finestre.h"

#include <QtGlobal>

extern "C" Q_DECL_EXPORT int VelloroFinestre(int argc, char **argv)
{
    return Finestre::Main(argc, argv);
}
