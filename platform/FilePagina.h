#pragma once

#include "platform/FormatoPagina.h"

#include <QString>
#include <QStringView>

namespace ModuloPrincipale
{

enum class EsitoLettura {
    Letto,
    Inesistente,
    Cartella,     ///< the path is a folder
    NonRegolare,  ///< a pipe, a device, a socket: it was not opened
    NonLeggibile, ///< no permission, or an error of the medium while reading
    TroppoGrande  ///< more than MassimoPagina, or more than memory holds
};

/// Larger files are refused: the control counts positions in 32 bits, and a line end may grow from one unit to two.
inline constexpr qint64 MassimoPagina = 512LL * 1024 * 1024;

struct RisultatoLettura {
    EsitoLettura esito = EsitoLettura::Letto;
    QString motivo; ///< the system's text of the error, for people; may be empty
    [[nodiscard]] explicit operator bool() const { return esito == EsitoLettura::Letto; }
};

/// Reads the page \a percorso into \a testo: every line followed by CR LF, the very last LF left out. On an error of
/// the medium \a testo keeps what was read so far; it is empty after every other failure. \a formato (may be null) is
/// what ScriviTesto needs to write the page back. Never handles window messages: 10 MB take tens of milliseconds, and a
/// command that came in between could change the page that is being opened.
[[nodiscard]] RisultatoLettura LeggiPagina(const QString &percorso, QString &testo, FormatoPagina *formato = nullptr);

/// LeggiPagina for callers that need no reason.
bool LeggiFile(const QString &percorso, QString &testo, FormatoPagina *formato = nullptr);

enum class EsitoScrittura {
    Scritto,
    NienteDaScrivere, ///< the text is empty: the file was not touched
    Cartella,         ///< the path is a folder
    NonRegolare,      ///< a pipe, a device, a socket: it was not opened
    SolaLettura,      ///< the file is write-protected
    CartellaMancante, ///< the folder of the file does not exist
    NonConsentito,    ///< the folder or the file system may not be written to
    DiscoPieno,       ///< no room, or the user's quota or size limit is reached
    Fallito           ///< any other error
};

struct RisultatoScrittura {
    EsitoScrittura esito = EsitoScrittura::Scritto;
    QString motivo;           ///< the system's text of the error, for people; may be empty
    qsizetype sostituiti = 0; ///< characters written as references because the page's encoding lacks them
    /// Set when the write failed half-way in a place where files can only be overwritten: the old page is kept here.
    QString copiaVecchia;
    [[nodiscard]] explicit operator bool() const
    {
        return esito == EsitoScrittura::Scritto || esito == EsitoScrittura::NienteDaScrivere;
    }
};

/// Writes a page: \a testo without one trailing CR, followed by CR LF; an empty text touches nothing. The file is
/// replaced as a whole: after any failure its old content stands. A symbolic link stays, its target is written.
/// Permissions, and the owner where the system allows it, stay. Write protection is respected for the administrator
/// too. \a formato is brought up to date when the file was written.
[[nodiscard]] RisultatoScrittura ScriviTesto(QStringView testo, const QString &percorso, FormatoPagina &formato);

/// The same for bytes: \a byte become the whole content of \a percorso.
[[nodiscard]] RisultatoScrittura ScriviByte(QByteArrayView byte, const QString &percorso);

} // namespace ModuloPrincipale
