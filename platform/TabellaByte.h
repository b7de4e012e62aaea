#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <vector>

namespace Codifiche
{

/// An encoding of one byte a character in which all 256 bytes are characters and the lower half is ASCII.
class TabellaByte
{
public:
    [[nodiscard]] static const TabellaByte &Windows1252();
    [[nodiscard]] static const TabellaByte &Iso8859_16();

    [[nodiscard]] QString Decodifica(QByteArrayView byte) const;
    /// Characters that the table lacks become decimal references, \a sostituiti counts them.
    [[nodiscard]] QByteArray Codifica(QStringView testo, qsizetype &sostituiti) const;

private:
    struct Scambio {
        uchar byte;
        char16_t carattere;
    };
    /// The table is Latin-1 but for \a scambi.
    template <size_t N>
    explicit TabellaByte(const std::array<Scambio, N> &scambi);

    std::array<char16_t, 256> m_caratteri{};
    std::vector<uchar> m_byte; ///< for every UTF-16 unit its byte; 0 for those that the table lacks
    uchar m_primo = 0;         ///< the bytes that are not Latin-1 lie from here
    uchar m_ultimo = 0;        ///< to here
};

/// Adds "&#N;" for the character that starts at \a dove and moves \a dove to its last unit; U+FFFD for a lone
/// surrogate.
void AggiungiRiferimento(QByteArray &byte, QStringView testo, qsizetype &dove);

} // namespace Codifiche
