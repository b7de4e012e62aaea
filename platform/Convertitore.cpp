#include "platform/Convertitore.h"

#include "platform/Codifiche.h"
#include "platform/TabellaByte.h"

#include <QStringConverter>
#include <QtEndian>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <limits>
#include <string_view>

namespace Codifiche
{
namespace
{

// What the library takes in one call is counted in 32 bits.
constexpr qsizetype MassimoLibreria = std::numeric_limits<int32_t>::max() / 2;

/// The library's own callback drops characters that have no look, such as soft hyphens; this one loses nothing.
void ScriviRiferimento(const void *contatore, UConverterFromUnicodeArgs *argomenti, const UChar *, int32_t,
                       UChar32 carattere, UConverterCallbackReason motivo, UErrorCode *errore)
{
    if (motivo > UCNV_IRREGULAR)
        return;
    ++*static_cast<qsizetype *>(const_cast<void *>(contatore));
    const bool surrogato = carattere >= 0xD800 && carattere <= 0xDFFF;
    const QString riferimento =
        QStringLiteral("&#%1;").arg(surrogato ? int(QChar::ReplacementCharacter) : int(carattere));
    const auto *inizio = reinterpret_cast<const UChar *>(riferimento.utf16());
    *errore = U_ZERO_ERROR;
    ucnv_cbFromUWriteUChars(argomenti, &inizio, inizio + riferimento.size(), 0, errore);
}

/// Whether \a testo consists of blanks, tabs and those ASCII characters that no encoding of the library uses for
/// shifts. Such lines are the many; they need no library.
template <typename Vista>
bool SoloAscii(Vista testo)
{
    return std::all_of(testo.begin(), testo.end(), [](auto c) { return (c >= ' ' && c < '~') || c == '\t'; });
}

QString InUtf16(QByteArrayView byte, bool grande)
{
    if (byte.size() < 2)
        return {};
    QString testo(byte.size() / 2, Qt::Uninitialized);
    if (grande)
        qFromBigEndian<quint16>(byte.data(), testo.size(), testo.data());
    else
        qFromLittleEndian<quint16>(byte.data(), testo.size(), testo.data());
    return testo;
}

QByteArray DaUtf16(QStringView testo, bool grande)
{
    if (testo.isEmpty())
        return {}; // its data may be null, which is not copied from
    QByteArray byte(testo.size() * 2, Qt::Uninitialized);
    if (grande)
        qToBigEndian<quint16>(testo.data(), testo.size(), byte.data());
    else
        qToLittleEndian<quint16>(testo.data(), testo.size(), byte.data());
    return byte;
}

QByteArray InUtf8(QStringView testo, qsizetype &sostituiti)
{
    if (testo.isValidUtf16())
        return testo.toUtf8();
    QString sano = testo.toString();
    for (qsizetype i = 0; i < sano.size(); ++i) {
        if (sano[i].isHighSurrogate() && i + 1 < sano.size() && sano[i + 1].isLowSurrogate()) {
            ++i;
        } else if (sano[i].isSurrogate()) {
            sano[i] = QChar::ReplacementCharacter;
            ++sostituiti;
        }
    }
    return sano.toUtf8();
}

} // namespace

void ChiudiConvertitore::operator()(UConverter *convertitore) const
{
    ucnv_close(convertitore);
}

Convertitore::Convertitore(const QString &codifica)
{
    if (codifica == Utf8) {
        m_genere = Genere::Utf8;
    } else if (codifica == Utf16LE || codifica == Utf16BE) {
        m_genere = codifica == Utf16LE ? Genere::Utf16LE : Genere::Utf16BE;
    } else if (codifica == Windows1252 || codifica == Codifiche::Iso8859_16) {
        m_genere = Genere::Tabella;
        m_tabella = codifica == Windows1252 ? &TabellaByte::Windows1252() : &TabellaByte::Iso8859_16();
    } else {
        UErrorCode errore = U_ZERO_ERROR;
        m_libreria.reset(ucnv_open(NomeConvertitore(codifica).constData(), &errore));
        if (!m_libreria)
            return;
        m_genere = Genere::Libreria;
        const UConverterType tipo = ucnv_getType(m_libreria.get());
        m_conStati = tipo == UCNV_ISO_2022 || tipo == UCNV_HZ;
        if (codifica == Iso2022KR)
            m_prologo = QByteArrayLiteral("\x1b$)C");
        ucnv_setFallback(m_libreria.get(), false);
        ucnv_setToUCallBack(m_libreria.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &errore);
    }
}

bool Convertitore::Decodifica(QByteArrayView byte, QString &testo) const
{
    switch (m_genere) {
    case Genere::Utf8:
        if (!byte.isValidUtf8())
            return false;
        // Without the flag a second byte order mark would be dropped.
        testo = QStringDecoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom).decode(byte);
        return true;
    case Genere::Utf16LE:
    case Genere::Utf16BE:
        testo = InUtf16(byte, m_genere == Genere::Utf16BE);
        return byte.size() % 2 == 0;
    case Genere::Tabella:
        testo = m_tabella->Decodifica(byte);
        return true;
    case Genere::Libreria:
        return DecodificaLibreria(byte, testo);
    case Genere::Nessuno:
        break;
    }
    return false;
}

QByteArray Convertitore::Codifica(QStringView testo, qsizetype &sostituiti) const
{
    switch (m_genere) {
    case Genere::Utf8:
        return InUtf8(testo, sostituiti);
    case Genere::Utf16LE:
    case Genere::Utf16BE:
        return DaUtf16(testo, m_genere == Genere::Utf16BE);
    case Genere::Tabella:
        return m_tabella->Codifica(testo, sostituiti);
    case Genere::Libreria:
        return CodificaLibreria(testo, sostituiti);
    case Genere::Nessuno:
        break;
    }
    return {};
}

bool Convertitore::DecodificaLibreria(QByteArrayView byte, QString &testo) const
{
    if (byte.size() > MassimoLibreria)
        return false;
    if (SoloAscii(byte)) {
        testo = QString::fromLatin1(byte);
        return true;
    }
    const QByteArray intero = m_prologo.isEmpty() ? QByteArray() : m_prologo + byte.toByteArray();
    const QByteArrayView fonte = m_prologo.isEmpty() ? byte : QByteArrayView(intero);
    const char *letti = fonte.data();
    const char *fine = letti + fonte.size();
    testo.resize(fonte.size() + 8);
    qsizetype scritti = 0;
    ucnv_resetToUnicode(m_libreria.get());
    while (true) {
        auto *inizio = reinterpret_cast<UChar *>(testo.data());
        UChar *dove = inizio + scritti;
        UErrorCode errore = U_ZERO_ERROR;
        ucnv_toUnicode(m_libreria.get(), &dove, inizio + testo.size(), &letti, fine, nullptr, true, &errore);
        scritti = dove - inizio;
        if (errore != U_BUFFER_OVERFLOW_ERROR) {
            testo.truncate(scritti);
            return U_SUCCESS(errore);
        }
        testo.resize(testo.size() * 2);
    }
}

QByteArray Convertitore::CodificaLibreria(QStringView testo, qsizetype &sostituiti) const
{
    if (SoloAscii(std::u16string_view(testo.utf16(), size_t(testo.size()))))
        return testo.toLatin1();
    // The line end takes an encoding with states back to ASCII; it is cut off again.
    const QString conFine = m_conStati ? testo.toString() + u'\n' : QString();
    const QStringView fonte = m_conStati ? QStringView(conFine) : testo;
    UErrorCode errore = U_ZERO_ERROR;
    ucnv_setFromUCallBack(m_libreria.get(), ScriviRiferimento, &sostituiti, nullptr, nullptr, &errore);
    ucnv_resetFromUnicode(m_libreria.get());
    const auto *letti = reinterpret_cast<const UChar *>(fonte.utf16());
    const UChar *fine = letti + fonte.size();
    QByteArray byte(fonte.size() * 2 + 16, Qt::Uninitialized);
    qsizetype scritti = 0;
    do {
        char *dove = byte.data() + scritti;
        errore = U_ZERO_ERROR;
        ucnv_fromUnicode(m_libreria.get(), &dove, byte.data() + byte.size(), &letti, fine, nullptr, true, &errore);
        scritti = dove - byte.data();
        if (errore == U_BUFFER_OVERFLOW_ERROR)
            byte.resize(byte.size() * 2);
    } while (errore == U_BUFFER_OVERFLOW_ERROR);
    byte.truncate(scritti);
    if (m_conStati)
        byte.chop(1);
    return byte.startsWith(m_prologo) ? byte.sliced(m_prologo.size()) : byte;
}

} // namespace Codifiche
