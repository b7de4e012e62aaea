#pragma once

#include <QByteArray>

/// A printer's device settings in the spooler's published form with one byte per character, cut to its first 154 bytes:
/// device name at 0..31, which fields count at 40, orientation at 44, copies at 54, form name at 70..101 and so on;
/// numbers stand with their lowest byte first. A record without a device name is empty.
class DevMode
{
public:
    static constexpr int Lunghezza = 154;    ///< bytes
    static constexpr int LunghezzaNome = 32; ///< bytes of the device name and of the form name

    /// Bits of dmFields: a field without its bit says nothing.
    enum Campo : quint32 {
        Orientamento = 0x1,      ///< 1 portrait, 2 landscape
        Carta = 0x2,             ///< number of the paper, 256 for one of its own size
        LunghezzaCarta = 0x4,    ///< tenths of a millimetre
        LarghezzaCarta = 0x8,    ///< tenths of a millimetre
        NumeroCopie = 0x100,     ///< from 1
        Qualita = 0x400,         ///< -1 draft, -2 low, -3 medium, -4 high
        Colore = 0x800,          ///< 1 monochrome, 2 colour
        FronteRetro = 0x1000,    ///< 1 one side, 2 turned at the long edge, 3 at the short one
        Fascicolazione = 0x8000, ///< 0 off, 1 on
        NomeModulo = 0x10000     ///< the paper's name
    };

    DevMode() = default;
    /// The first 154 bytes of \a byte; what is missing is zero.
    [[nodiscard]] static DevMode DaByte(const QByteArray &byte);
    [[nodiscard]] const QByteArray &Byte() const { return m_byte; }

    [[nodiscard]] bool Vuoto() const { return NomeDispositivo().isEmpty(); }
    /// Cut at its first NUL, 32 bytes at most.
    [[nodiscard]] QByteArray NomeDispositivo() const { return Nome(0); }
    void ImpostaNomeDispositivo(const QByteArray &nome) { ImpostaNome(0, nome); }
    [[nodiscard]] QByteArray NomeCarta() const { return Nome(PostoModulo); }
    /// Longer names are cut at 31 bytes.
    void ImpostaNomeCarta(const QByteArray &nome);

    [[nodiscard]] bool Ha(Campo campo) const { return (Campi() & campo) != 0; }
    /// The number in a field, whether it counts or not; 0 for a form name.
    [[nodiscard]] qint16 Valore(Campo campo) const;
    /// Sets a number, which then counts.
    void Imposta(Campo campo, int valore);
    [[nodiscard]] qint16 Copie() const { return Valore(NumeroCopie); }

    bool operator==(const DevMode &) const = default;

private:
    static constexpr int PostoModulo = 70;
    [[nodiscard]] quint32 Campi() const;
    void Segna(Campo campo);
    [[nodiscard]] QByteArray Nome(int posto) const;
    void ImpostaNome(int posto, const QByteArray &nome);

    QByteArray m_byte = QByteArray(Lunghezza, '\0');
};
