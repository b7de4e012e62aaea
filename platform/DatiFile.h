#pragma once

#include <QByteArray>
#include <QString>

/// What the host tells about a file without a look into it.
struct DatiFile {
    bool leggibile = false; ///< there is something, and it may be read
    bool regolare = false;  ///< a file, also at the end of a symbolic link
    bool protetto = false;  ///< nobody may write to it
    qint64 dimensione = 0;  ///< bytes
    qint64 modificata = 0;  ///< time of the content, nanoseconds since 1970
    qint64 cambiata = 0;    ///< time of content or properties, likewise
    quint64 nodo = 0;       ///< together with dispositivo, what two names of one file share
    quint64 dispositivo = 0;

    /// Two names of one file.
    [[nodiscard]] bool StessoFile(const DatiFile &altri) const
    {
        return nodo != 0 && nodo == altri.nodo && dispositivo == altri.dispositivo;
    }

    [[nodiscard]] static DatiFile Di(const QString &percorso);
    /// The file, whose name is in the host's bytes and whose mode is given, is write-protected, for the administrator
    /// too.
    [[nodiscard]] static bool Protetto(const QByteArray &percorso, quint32 modo);
};
