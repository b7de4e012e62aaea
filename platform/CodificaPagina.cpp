#include "platform/CodificaPagina.h"

#include "platform/Codifiche.h"
#include "platform/Convertitore.h"
#include "platform/DichiarazioneCodifica.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Codifiche
{
namespace
{

constexpr QByteArrayView FirmaUtf8 = "\xEF\xBB\xBF";
constexpr QByteArrayView FirmaUtf16LE = "\xFF\xFE";
constexpr QByteArrayView FirmaUtf16BE = "\xFE\xFF";
constexpr QByteArrayView FirmaIso2022KR = "\x1b$)C";
constexpr char ShiftOut = '\x0E';

template <typename Unita>
bool FineRiga(Unita c)
{
    return c == Unita('\r') || c == Unita('\n');
}

/// Calls fai(start of the line, start of its end, start of the next line) for each line. An end at the end of the text
/// begins no further line.
template <typename Unita, typename Funzione>
void PerOgniRiga(const Unita *inizio, qsizetype quante, Funzione fai)
{
    const Unita *termine = inizio + quante;
    while (inizio != termine) {
        const Unita *fine = std::find_if(inizio, termine, FineRiga<Unita>);
        const Unita *prossima = fine == termine ? fine : fine + 1;
        if (prossima != termine && *fine == Unita('\r') && *prossima == Unita('\n'))
            ++prossima;
        fai(inizio, fine, prossima);
        inizio = prossima;
    }
}

/// Every line followed by CR LF, the last LF left out.
QString ConFineRighe(QString testo)
{
    qsizetype cambiate = 0;
    PerOgniRiga(QStringView(testo).utf16(), testo.size(),
                [&](const char16_t *, const char16_t *fine, const char16_t *prossima) {
                    cambiate += prossima - fine == 2 ? 0 : 1;
                });
    if (cambiate > 0) {
        // An end of two units is counted already, a last line without an end needs both.
        const bool senzaFine = !FineRiga(testo.back().unicode());
        QString regolare(testo.size() + cambiate + (senzaFine ? 1 : 0), Qt::Uninitialized);
        auto *dove = reinterpret_cast<char16_t *>(regolare.data());
        PerOgniRiga(QStringView(testo).utf16(), testo.size(),
                    [&](const char16_t *inizio, const char16_t *fine, const char16_t *) {
                        dove = std::copy(inizio, fine, dove);
                        *dove++ = u'\r';
                        *dove++ = u'\n';
                    });
        testo = std::move(regolare);
    }
    if (!testo.isEmpty())
        testo.chop(1);
    return testo;
}

struct RigaInsolita {
    qsizetype numero;
    QByteArrayView byte;
};

void RicordaRighe(const QString &testo, const std::vector<RigaInsolita> &insolite, FormatoPagina &formato)
{
    if (insolite.empty())
        return;
    auto &ricordate = formato.righeInsolite;
    for (const bool segnaTesti : {true, false}) {
        qsizetype numero = 0;
        auto prossima = insolite.cbegin();
        PerOgniRiga(QStringView(testo).utf16(), testo.size(),
                    [&](const char16_t *inizio, const char16_t *fine, const char16_t *) {
                        const bool insolita = prossima != insolite.cend() && prossima->numero == numero++;
                        const QString riga = segnaTesti && !insolita ? QString() : QStringView(inizio, fine).toString();
                        if (segnaTesti) {
                            if (insolita)
                                ricordate.insert(riga, {});
                        } else if (const auto trovata = ricordate.find(riga); trovata != ricordate.end()) {
                            trovata->append(insolita ? prossima->byte.toByteArray() : QByteArray());
                        }
                        if (insolita)
                            ++prossima;
                    });
    }
}

/// Line by line, so that an encoding's odd spellings are known for each line.
std::optional<QString> LeggiARighe(QByteArrayView byte, const Convertitore &convertitore, FormatoPagina &formato)
{
    QString testo;
    testo.reserve(byte.size());
    std::vector<RigaInsolita> insolite;
    qsizetype numero = 0;
    bool leggibile = true;
    QString riga;
    PerOgniRiga(byte.data(), byte.size(), [&](const char *inizio, const char *fine, const char *dopo) {
        const QByteArrayView originale(inizio, fine);
        leggibile = leggibile && convertitore.Decodifica(originale, riga);
        if (!leggibile)
            return;
        // Where line ends stay, no line of the text could hold bytes that stand for nothing.
        leggibile = !formato.esatta || !riga.isEmpty() || originale.isEmpty();
        qsizetype sostituiti = 0;
        if (convertitore.Codifica(riga, sostituiti) != originale)
            insolite.push_back({numero, originale});
        testo.append(riga).append(formato.esatta ? QLatin1StringView(fine, dopo - fine) : "\r\n"_L1);
        ++numero;
    });
    if (!leggibile)
        return std::nullopt;
    if (!testo.isEmpty() && !formato.esatta)
        testo.chop(1);
    RicordaRighe(testo, insolite, formato);
    return testo;
}

std::optional<QString> LeggiCon(const QString &codifica, QByteArrayView firma, QByteArrayView byte,
                                FormatoPagina &formato)
{
    const Convertitore convertitore(codifica);
    std::optional<QString> testo;
    // A line end put into bytes that are no text would tear them apart: they may be units wider than a byte.
    formato.esatta = byte.contains('\0');
    if (convertitore.Biunivoco()) {
        QString letto;
        const bool doppia = codifica == Utf16LE || codifica == Utf16BE;
        const qsizetype mezza = doppia ? byte.size() % 2 : 0;
        if (convertitore.Decodifica(byte.sliced(firma.size()).chopped(mezza), letto)) {
            formato.esatta = doppia ? mezza > 0 || letto.contains(u'\0') : formato.esatta;
            formato.coda = byte.last(mezza).toByteArray();
            testo = formato.esatta ? std::move(letto) : ConFineRighe(std::move(letto));
        }
    } else {
        testo = LeggiARighe(byte.sliced(firma.size()), convertitore, formato);
    }
    if (testo) {
        formato.codifica = codifica;
        formato.firma = firma.toByteArray();
    }
    return testo;
}

std::optional<QString> LeggiConFirma(QByteArrayView byte, FormatoPagina &formato)
{
    for (const auto &[firma, codifica] :
         {std::pair(FirmaUtf8, Utf8), std::pair(FirmaUtf16LE, Utf16LE), std::pair(FirmaUtf16BE, Utf16BE)}) {
        if (byte.startsWith(firma))
            return LeggiCon(codifica.toString(), firma, byte, formato);
    }
    return std::nullopt;
}

std::optional<QString> LeggiComeDichiarata(QByteArrayView byte, FormatoPagina &formato)
{
    const QByteArrayView inizio = byte.first(std::min(byte.size(), FinestraDichiarazione));
    QString codifica = CodificaDichiarata(QString::fromLatin1(inizio));
    if (codifica.isEmpty())
        codifica = Utf8.toString();
    std::optional<QString> testo;
    while (!testo && !codifica.isEmpty()) {
        const bool kr = codifica == Iso2022KR && byte.startsWith(FirmaIso2022KR);
        testo = LeggiCon(codifica, kr ? FirmaIso2022KR : QByteArrayView(), byte, formato);
        if (testo && codifica == Iso2022KR && !kr && byte.contains(ShiftOut))
            formato.firma = QByteArray("");
        codifica = AlternativaDi(codifica);
    }
    return testo;
}

/// Decides in which encoding the page is written now.
void ScegliCodifica(QStringView testo, FormatoPagina &formato)
{
    const QString dichiarata = CodificaDichiarata(testo);
    const bool cambiata = !dichiarata.isEmpty() && dichiarata != formato.dichiarata;
    if (formato.codifica.isEmpty()) {
        formato.codifica = dichiarata.isEmpty() ? Utf8.toString() : dichiarata;
    } else if (cambiata && dichiarata != formato.codifica) {
        formato.codifica = dichiarata;
        formato.firma.clear();
        formato.righeInsolite.clear();
        formato.coda.clear();
    }
    // A declaration that is gone for the moment, because it is being typed, does not count as a change when it is back.
    if (!dichiarata.isEmpty())
        formato.dichiarata = dichiarata;
    if (formato.firma.isEmpty() && formato.codifica == Utf16LE)
        formato.firma = FirmaUtf16LE.toByteArray();
    else if (formato.firma.isEmpty() && formato.codifica == Utf16BE)
        formato.firma = FirmaUtf16BE.toByteArray();
}

QByteArray ScriviARighe(QStringView testo, const Convertitore &convertitore, const FormatoPagina &formato,
                        qsizetype &sostituiti)
{
    QByteArray byte;
    byte.reserve(testo.size() + testo.size() / 2);
    QHash<QString, qsizetype> incontrate;
    PerOgniRiga(QStringView(testo).utf16(), testo.size(),
                [&](const char16_t *inizio, const char16_t *fine, const char16_t *dopo) {
                    const QStringView riga(inizio, fine);
                    QByteArray originale;
                    if (!formato.righeInsolite.isEmpty()) {
                        const QString chiave = riga.toString();
                        const auto ricordata = formato.righeInsolite.constFind(chiave);
                        if (ricordata != formato.righeInsolite.cend())
                            originale = ricordata->value(incontrate[chiave]++);
                    }
                    byte.append(originale.isEmpty() ? convertitore.Codifica(riga, sostituiti) : originale);
                    for (; fine != dopo; ++fine)
                        byte.append(char(*fine));
                });
    return byte;
}

} // namespace

QString TestoDaByte(QByteArrayView byte, FormatoPagina &formato)
{
    formato = {};
    std::optional<QString> testo = LeggiConFirma(byte, formato);
    const bool firmata = byte.startsWith(FirmaUtf8) || byte.startsWith(FirmaUtf16LE) || byte.startsWith(FirmaUtf16BE);
    if (!testo && !firmata)
        testo = LeggiComeDichiarata(byte, formato);
    if (!testo)
        testo = LeggiCon(Windows1252.toString(), {}, byte, formato);
    formato.dichiarata = CodificaDichiarata(*testo);
    return *std::move(testo);
}

QByteArray ByteDaTesto(QStringView testo, FormatoPagina &formato, qsizetype *sostituiti)
{
    ScegliCodifica(testo, formato);
    const QStringView fine = formato.esatta ? QStringView() : testo.endsWith(u'\r') ? u"\n" : u"\r\n";
    const Convertitore convertitore(formato.codifica);
    qsizetype mancanti = 0;
    QByteArray byte;
    if (convertitore.Biunivoco()) {
        byte = convertitore.Codifica(testo, mancanti) + convertitore.Codifica(fine, mancanti);
    } else {
        // With its own end: an empty last line may have an odd spelling, too.
        byte = ScriviARighe(testo, convertitore, formato, mancanti) + fine.toLatin1();
        if (formato.codifica == Iso2022KR && formato.firma.isNull() && byte.contains(ShiftOut))
            formato.firma = FirmaIso2022KR.toByteArray();
    }
    if (sostituiti)
        *sostituiti = mancanti;
    return formato.firma.isEmpty() && formato.coda.isEmpty() ? byte : formato.firma + byte + formato.coda;
}

} // namespace Codifiche
