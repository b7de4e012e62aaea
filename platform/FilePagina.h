#pragma once

#include "platform/FormatoPagina.h"
#include "platform/LetturaFile.h"

#include <QString>
#include <QStringView>

#include <functional>

namespace ModuloPrincipale
{

/// Larger files are refused: the control counts positions in 32 bits, and a line end may grow from one unit to two.
inline constexpr qint64 MassimoPagina = 512LL * 1024 * 1024;

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
    Cambiato,         ///< the file was no longer the one that was to be replaced: it was not touched
    DiscoPieno,       ///< no room, or the user's quota or size limit is reached
    Fallito           ///< any other error
};

struct RisultatoScrittura {
    EsitoScrittura esito = EsitoScrittura::Scritto;
    QString motivo;           ///< the system's text of the error, for people; may be empty
    qsizetype sostituiti = 0; ///< characters written as references because the page's encoding lacks them
    /// Set when the write failed half-way in a place where files can only be overwritten: the old page is kept here.
    QString copiaVecchia = {};
    QByteArray impronta = {}; ///< of the bytes of the page
    qint64 byte = 0;          ///< how many they are
    [[nodiscard]] explicit operator bool() const
    {
        return esito == EsitoScrittura::Scritto || esito == EsitoScrittura::NienteDaScrivere;
    }
};

/// Writes a page: \a testo without one trailing CR, followed by CR LF; an empty text touches nothing. The file is
/// replaced as a whole: after any failure its old content stands. A symbolic link stays, its target is written.
/// Permissions, and the owner where the system allows it, stay. Write protection is respected for the administrator
/// too. \a formato is brought up to date when the file was written. \a ancora (may be null) is asked right before the
/// old file goes, when the new one is on the disk; false leaves it.
[[nodiscard]] RisultatoScrittura ScriviTesto(QStringView testo, const QString &percorso, FormatoPagina &formato,
                                             const std::function<bool()> &ancora = {});

/// The same for bytes: \a byte become the whole content of \a percorso.
[[nodiscard]] RisultatoScrittura ScriviByte(QByteArrayView byte, const QString &percorso,
                                            const std::function<bool()> &ancora = {});

/// A digest by which to tell the content of a page file from any other; never empty.
[[nodiscard]] QByteArray Impronta(QByteArrayView byte);
/// That of a file; empty when it cannot be read, is no regular file, or is larger than MassimoPagina.
[[nodiscard]] QByteArray ImprontaFile(const QString &percorso);

} // namespace ModuloPrincipale
