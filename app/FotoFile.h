#pragma once

#include <QByteArray>
#include <QString>

/// What a file looked like at one moment: enough to tell later whether it still is what was read or written then. It
/// belongs to a path and not to an entry of the disk, since most programs save by putting a new file in the old one's
/// place.
struct FotoFile {
    enum class Specie {
        Assente,  ///< nothing there, or nothing that may be read
        Regolare, ///< a file, also at the end of a symbolic link
        Altro     ///< a folder, a pipe, a device
    };

    Specie specie = Specie::Assente;
    qint64 dimensione = 0; ///< bytes
    qint64 modificata = 0; ///< time of the content, nanoseconds since 1970
    qint64 cambiata = 0;   ///< time of content or properties, likewise
    qint64 scattata = 0;   ///< when this was seen, likewise
    bool protetta = false; ///< nobody may write to it
    QByteArray impronta;   ///< of the bytes, as ModuloPrincipale::Impronta; empty: not known

    /// The file at \a percorso now, without its digest. Reads no content.
    [[nodiscard]] static FotoFile Scatta(const QString &percorso);
    /// Likewise with the digest: that of one of \a note when the file is certainly that one, else the file is read.
    [[nodiscard]] static FotoFile Scatta(const QString &percorso, std::initializer_list<const FotoFile *> note);

    /// Kind, size and times are the same.
    [[nodiscard]] bool StessiDati(const FotoFile &altra) const;
    /// StessiDati, and this was seen so long after the last change that a later one has another time.
    [[nodiscard]] bool Certamente(const FotoFile &ora) const;
};

/// What became of the file of a page.
enum class Mutamento {
    Nessuno,     ///< the same content, whatever its time
    Contenuto,   ///< other content, or a file where none was
    Sparito,     ///< deleted, moved, or out of reach
    NonRegolare, ///< a folder, pipe or device stands in its place
    SolaLettura, ///< the same content, but nobody may write any more
    LettaInParte ///< the same, but only its beginning is known
};

/// \a prima and \a ora have their digests.
[[nodiscard]] Mutamento Confronta(const FotoFile &prima, const FotoFile &ora);
