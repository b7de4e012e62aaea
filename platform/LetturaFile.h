#pragma once

#include <QByteArray>
#include <QString>

class QFile;

namespace ModuloPrincipale
{

enum class EsitoLettura {
    Letto,
    Inesistente,
    Cartella,     ///< the path is a folder
    NonRegolare,  ///< a pipe, a device, a socket, or a file of the system that lets wait for its content
    NonLeggibile, ///< no permission, or an error of the medium while reading
    TroppoGrande  ///< more than was asked for, or more than memory holds
};

struct RisultatoLettura {
    EsitoLettura esito = EsitoLettura::Letto;
    QString motivo;           ///< the system's text of the error, for people; may be empty
    QByteArray impronta = {}; ///< of the bytes of a page, when its format was asked for
    qint64 byte = 0;          ///< how many they are
    [[nodiscard]] explicit operator bool() const { return esito == EsitoLettura::Letto; }
};

/// Opens the regular file \a percorso, at most \a massimo bytes large, for reading. Never waits: what is opened is what
/// was looked at, and a pipe that comes in between is not waited for. \a file is closed after every failure.
[[nodiscard]] RisultatoLettura ApriInLettura(const QString &percorso, QFile &file, qint64 massimo);

/// The same, and its content. On an error of the medium \a byte keeps what was read so far; it is empty after every
/// other failure.
[[nodiscard]] RisultatoLettura LeggiByte(const QString &percorso, QByteArray &byte, qint64 massimo);

/// The content of what ApriInLettura opened.
[[nodiscard]] RisultatoLettura LeggiTutto(const QFile &file, QByteArray &byte, qint64 massimo);

} // namespace ModuloPrincipale
