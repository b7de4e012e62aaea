#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct UConverter;

namespace Codifiche
{

struct ChiudiConvertitore {
    void operator()(UConverter *convertitore) const;
};

/// Bytes to text and back in one encoding. Nothing is kept from one call to the next: each piece of text stands for
/// itself, starting and ending in the ASCII state of encodings that have states.
class Convertitore
{
public:
    /// \a codifica is a name given by NomeCodifica or AlternativaDi. An encoding that cannot be opened: Valido is
    /// false.
    explicit Convertitore(const QString &codifica);

    [[nodiscard]] bool Valido() const { return m_genere != Genere::Nessuno; }
    /// True when encoding what was decoded gives the same bytes for every input.
    [[nodiscard]] bool Biunivoco() const { return m_genere != Genere::Libreria; }

    /// False when \a byte are no text in this encoding; \a testo is then undefined.
    [[nodiscard]] bool Decodifica(QByteArrayView byte, QString &testo) const;

    /// A character that the encoding lacks is written as its decimal character reference; \a sostituiti grows by one
    /// for each. UTF-16 keeps a lone surrogate as it is, UTF-8 writes U+FFFD for it, all others its reference.
    [[nodiscard]] QByteArray Codifica(QStringView testo, qsizetype &sostituiti) const;

private:
    enum class Genere { Nessuno, Utf8, Utf16LE, Utf16BE, Tabella, Libreria };

    [[nodiscard]] bool DecodificaLibreria(QByteArrayView byte, QString &testo) const;
    [[nodiscard]] QByteArray CodificaLibreria(QStringView testo, qsizetype &sostituiti) const;

    Genere m_genere = Genere::Nessuno;
    const class TabellaByte *m_tabella = nullptr;
    std::unique_ptr<UConverter, ChiudiConvertitore> m_libreria;
    bool m_conStati = false;
    QByteArray m_prologo; ///< bytes that the library wants before, and writes before, every text
};

} // namespace Codifiche
