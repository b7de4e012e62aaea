#pragma once

#include "platform/RegistroAlbero.h"

namespace Registro
{

struct Sorgenti;

/// Puts what the host knows of itself into \a albero; what it does not know is left out:
///
/// * HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion, RegisteredOwner: the full name of the user's
///   account; RegisteredOrganization: the field ORGANIZATION of the machine information. None of the fields that
///   systemd itself defines there names an organisation; it leaves others alone.
/// * HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Shared Tools\MSINFO, PATH: the command line of the system information tool,
///   the first of KInfoCenter, HardInfo and the panel of GNOME's settings that is installed.
void AggiungiFatti(Albero &albero, const Sorgenti &sorgenti);

/// The field \a nome of machine information \a testo: lines NAME=value, with the quotes and backslashes of a shell.
/// Empty when there is none; the last one counts. Linear.
[[nodiscard]] QString CampoMacchina(QStringView testo, QStringView nome);

} // namespace Registro
