#include "platform/TabellaByte.h"

namespace Codifiche
{

template <size_t N>
TabellaByte::TabellaByte(const std::array<Scambio, N> &scambi)
    : m_byte(0x10000), m_primo(scambi.front().byte), m_ultimo(scambi.back().byte)
{
    for (size_t i = 0; i < m_caratteri.size(); ++i)
        m_caratteri[i] = char16_t(i);
    for (const Scambio &scambio : scambi)
        m_caratteri[scambio.byte] = scambio.carattere;
    for (size_t i = 0; i < m_caratteri.size(); ++i)
        m_byte[m_caratteri[i]] = uchar(i);
}

const TabellaByte &TabellaByte::Windows1252()
{
    // The five bytes that the code page leaves open stay the control characters of their number, as in browsers.
    static const TabellaByte tabella(std::to_array<Scambio>(
        {{0x80, 0x20AC}, {0x82, 0x201A}, {0x83, 0x0192}, {0x84, 0x201E}, {0x85, 0x2026}, {0x86, 0x2020}, {0x87, 0x2021},
         {0x88, 0x02C6}, {0x89, 0x2030}, {0x8A, 0x0160}, {0x8B, 0x2039}, {0x8C, 0x0152}, {0x8E, 0x017D}, {0x91, 0x2018},
         {0x92, 0x2019}, {0x93, 0x201C}, {0x94, 0x201D}, {0x95, 0x2022}, {0x96, 0x2013}, {0x97, 0x2014}, {0x98, 0x02DC},
         {0x99, 0x2122}, {0x9A, 0x0161}, {0x9B, 0x203A}, {0x9C, 0x0153}, {0x9E, 0x017E}, {0x9F, 0x0178}}));
    return tabella;
}

const TabellaByte &TabellaByte::Iso8859_16()
{
    static const TabellaByte tabella(std::to_array<Scambio>(
        {{0xA1, 0x0104}, {0xA2, 0x0105}, {0xA3, 0x0141}, {0xA4, 0x20AC}, {0xA5, 0x201E}, {0xA6, 0x0160}, {0xA8, 0x0161},
         {0xAA, 0x0218}, {0xAC, 0x0179}, {0xAE, 0x017A}, {0xAF, 0x017B}, {0xB2, 0x010C}, {0xB3, 0x0142}, {0xB4, 0x017D},
         {0xB5, 0x201D}, {0xB8, 0x017E}, {0xB9, 0x010D}, {0xBA, 0x0219}, {0xBC, 0x0152}, {0xBD, 0x0153}, {0xBE, 0x0178},
         {0xBF, 0x017C}, {0xC3, 0x0102}, {0xC5, 0x0106}, {0xD0, 0x0110}, {0xD1, 0x0143}, {0xD5, 0x0150}, {0xD7, 0x015A},
         {0xD8, 0x0170}, {0xDD, 0x0118}, {0xDE, 0x021A}, {0xE3, 0x0103}, {0xE5, 0x0107}, {0xF0, 0x0111}, {0xF1, 0x0144},
         {0xF5, 0x0151}, {0xF7, 0x015B}, {0xF8, 0x0171}, {0xFD, 0x0119}, {0xFE, 0x021B}}));
    return tabella;
}

QString TabellaByte::Decodifica(QByteArrayView byte) const
{
    QString testo = QString::fromLatin1(byte);
    auto *unita = reinterpret_cast<char16_t *>(testo.data());
    for (qsizetype i = 0; i < testo.size(); ++i) {
        if (unita[i] >= m_primo && unita[i] <= m_ultimo)
            unita[i] = m_caratteri[unita[i]];
    }
    return testo;
}

QByteArray TabellaByte::Codifica(QStringView testo, qsizetype &sostituiti) const
{
    // As a rule nothing is lacking: one byte a unit, written in place.
    QByteArray byte(testo.size(), Qt::Uninitialized);
    char *scritti = byte.data();
    qsizetype primo = 0;
    for (; primo < testo.size(); ++primo) {
        scritti[primo] = char(m_byte[testo[primo].unicode()]);
        if (scritti[primo] == 0 && testo[primo].unicode() != 0)
            break;
    }
    byte.truncate(primo);
    for (qsizetype i = primo; i < testo.size(); ++i) {
        const char16_t unita = testo[i].unicode();
        const uchar trovato = m_byte[unita];
        if (trovato != 0 || unita == 0) {
            byte.append(char(trovato));
        } else {
            AggiungiRiferimento(byte, testo, i);
            ++sostituiti;
        }
    }
    return byte;
}

void AggiungiRiferimento(QByteArray &byte, QStringView testo, qsizetype &dove)
{
    char32_t carattere = testo[dove].unicode();
    if (testo[dove].isHighSurrogate() && dove + 1 < testo.size() && testo[dove + 1].isLowSurrogate()) {
        carattere = QChar::surrogateToUcs4(testo[dove], testo[dove + 1]);
        ++dove;
    } else if (testo[dove].isSurrogate()) {
        carattere = QChar::ReplacementCharacter;
    }
    byte.append("&#").append(QByteArray::number(uint(carattere))).append(';');
}

} // namespace Codifiche
