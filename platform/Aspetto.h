#pragma once

#include <array>
#include <vector>

#include <QColor>

/// A colour as the program keeps it: 0x00BBGGRR, red in the lowest byte.
using ColoreBgr = quint32;

[[nodiscard]] QColor ColoreQt(ColoreBgr colore);

/// How a character of the editing control looks.
struct Aspetto {
    ColoreBgr colore = 0;
    bool grassetto = false;
    bool corsivo = false;
    bool onda = false; ///< wavy underline

    bool operator==(const Aspetto &) const = default;
};

/// The looks in use, each known by one byte. Look 0 is the default one: black, upright, not underlined. At most 256;
/// when all are taken the nearest existing one stands in.
class TabellaAspetti
{
public:
    TabellaAspetti();

    /// The byte of \a aspetto, added when it is new.
    [[nodiscard]] quint8 Indice(const Aspetto &aspetto);
    [[nodiscard]] const Aspetto &operator[](quint8 indice) const { return m_aspetti[indice]; }
    [[nodiscard]] int Quanti() const { return int(m_aspetti.size()); }

private:
    [[nodiscard]] quint8 PiuVicino(const Aspetto &aspetto) const;

    std::vector<Aspetto> m_aspetti;
};
