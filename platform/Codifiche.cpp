#include "platform/Codifiche.h"

#include <unicode/ucnv.h>

#include <QByteArray>
#include <QHash>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Codifiche
{
namespace
{

struct Voce {
    QLatin1StringView nome;
    QLatin1StringView etichette;        ///< lower case, blanks between them; the Encoding Standard's and older ones
    const char *convertitore = nullptr; ///< null: the library knows the encoding by its own name
};

constexpr std::array Voci{
    Voce{"UTF-16BE"_L1, "unicodefffe utf-16be"_L1, nullptr},
    Voce{"UTF-16LE"_L1, "csunicode iso-10646-ucs-2 ucs-2 unicode unicodefeff utf-16 utf-16le"_L1, nullptr},
    Voce{"UTF-8"_L1, "unicode-1-1-utf-8 unicode11utf8 unicode20utf8 utf-8 utf8 x-unicode20utf8"_L1, nullptr},
    Voce{"windows-1252"_L1,
         "ansi_x3.4-1968 ascii cp1252 cp819 csisolatin1 ibm819 iso-8859-1 iso-ir-100 iso8859-1 iso88591 "
         "iso_8859-1 iso_8859-1:1987 l1 latin1 us-ascii windows-1252 x-cp1252 x-user-defined"_L1,
         nullptr},
    Voce{"Big5"_L1, "big5 big5-hkscs cn-big5 csbig5 x-x-big5"_L1, "windows-950-2000"},
    Voce{"EUC-JP"_L1, "cseucpkdfmtjapanese euc-jp x-euc-jp"_L1, "euc-jp-2007"},
    Voce{"EUC-KR"_L1,
         "cseuckr csksc56011987 euc-kr iso-ir-149 korean ks_c_5601-1987 ks_c_5601-1989 ksc5601 ksc_5601 "
         "windows-949"_L1,
         "windows-949-2000"},
    Voce{"gb18030"_L1, "gb18030"_L1, nullptr},
    Voce{"GBK"_L1,
         "chinese cp936 csgb2312 csiso58gb231280 euc-cn gb2312 gb2312-80 gb_2312 gb_2312-80 gbk iso-ir-58 "
         "ms936 windows-936 x-euc-cn x-gbk"_L1,
         "windows-936-2000"},
    Voce{"HZ-GB-2312"_L1, "hz-gb-2312"_L1, "HZ"},
    Voce{"IBM866"_L1, "866 cp866 csibm866 ibm866"_L1, nullptr},
    Voce{"ISO-2022-JP"_L1, "csiso2022jp iso-2022-jp"_L1, nullptr},
    Voce{"ISO-2022-KR"_L1, "csiso2022kr iso-2022-kr"_L1, "ISO_2022,locale=ko,version=1"},
    Voce{"ISO-8859-10"_L1, "csisolatin6 iso-8859-10 iso-ir-157 iso8859-10 iso885910 iso_8859-10 l6 latin6"_L1, nullptr},
    Voce{"ISO-8859-13"_L1, "iso-8859-13 iso8859-13 iso885913 iso_8859-13"_L1, nullptr},
    Voce{"ISO-8859-14"_L1, "iso-8859-14 iso8859-14 iso885914 iso_8859-14"_L1, nullptr},
    Voce{"ISO-8859-15"_L1, "csisolatin9 iso-8859-15 iso8859-15 iso885915 iso_8859-15 l9"_L1, nullptr},
    Voce{"ISO-8859-16"_L1, "iso-8859-16 iso8859-16 iso_8859-16"_L1, nullptr},
    Voce{"ISO-8859-2"_L1,
         "csisolatin2 iso-8859-2 iso-ir-101 iso8859-2 iso88592 iso_8859-2 iso_8859-2:1987 l2 latin2"_L1, nullptr},
    Voce{"ISO-8859-3"_L1,
         "csisolatin3 iso-8859-3 iso-ir-109 iso8859-3 iso88593 iso_8859-3 iso_8859-3:1988 l3 latin3"_L1, nullptr},
    Voce{"ISO-8859-4"_L1,
         "csisolatin4 iso-8859-4 iso-ir-110 iso8859-4 iso88594 iso_8859-4 iso_8859-4:1988 l4 latin4"_L1, nullptr},
    Voce{"ISO-8859-5"_L1,
         "csisolatincyrillic cyrillic iso-8859-5 iso-ir-144 iso8859-5 iso88595 iso_8859-5 iso_8859-5:1988"_L1, nullptr},
    Voce{"ISO-8859-6"_L1,
         "arabic asmo-708 csiso88596e csiso88596i csisolatinarabic ecma-114 iso-8859-6 iso-8859-6-e "
         "iso-8859-6-i iso-ir-127 iso8859-6 iso88596 iso_8859-6 iso_8859-6:1987"_L1,
         nullptr},
    Voce{"ISO-8859-7"_L1,
         "csisolatingreek ecma-118 elot_928 greek greek8 iso-8859-7 iso-ir-126 iso8859-7 iso88597 iso_8859-7 "
         "iso_8859-7:1987 sun_eu_greek"_L1,
         nullptr},
    Voce{"ISO-8859-8"_L1,
         "csiso88598e csiso88598i csisolatinhebrew hebrew iso-8859-8 iso-8859-8-e iso-8859-8-i iso-ir-138 "
         "iso8859-8 iso88598 iso_8859-8 iso_8859-8:1988 logical visual"_L1,
         nullptr},
    Voce{"KOI8-R"_L1, "cskoi8r koi koi8 koi8-r koi8_r"_L1, nullptr},
    Voce{"KOI8-U"_L1, "koi8-ru koi8-u"_L1, nullptr},
    Voce{"macintosh"_L1, "csmacintosh mac macintosh x-mac-roman"_L1, nullptr},
    Voce{"Shift_JIS"_L1, "cp932 csshiftjis ms932 ms_kanji shift-jis shift_jis sjis windows-31j x-sjis"_L1,
         "ibm-943_P15A-2003"},
    Voce{"windows-1250"_L1, "cp1250 windows-1250 x-cp1250"_L1, nullptr},
    Voce{"windows-1251"_L1, "cp1251 windows-1251 x-cp1251"_L1, nullptr},
    Voce{"windows-1253"_L1, "cp1253 windows-1253 x-cp1253"_L1, nullptr},
    Voce{"windows-1254"_L1,
         "cp1254 csisolatin5 iso-8859-9 iso-ir-148 iso8859-9 iso88599 iso_8859-9 iso_8859-9:1989 l5 latin5 "
         "windows-1254 x-cp1254"_L1,
         nullptr},
    Voce{"windows-1255"_L1, "cp1255 windows-1255 x-cp1255"_L1, nullptr},
    Voce{"windows-1256"_L1, "cp1256 windows-1256 x-cp1256"_L1, nullptr},
    Voce{"windows-1257"_L1, "cp1257 windows-1257 x-cp1257"_L1, nullptr},
    Voce{"windows-1258"_L1, "cp1258 windows-1258 x-cp1258"_L1, nullptr},
    Voce{"windows-874"_L1, "dos-874 iso-8859-11 iso8859-11 iso885911 iso_8859-11 tis-620 windows-874"_L1,
         "windows-874-2000"},
    Voce{"x-mac-cyrillic"_L1, "x-mac-cyrillic x-mac-ukrainian"_L1, nullptr},
    // Mostly reached through AlternativaDi.
    Voce{"Big5-HKSCS"_L1, ""_L1, "ibm-1375_P100-2008"},
    Voce{"ISO-2022-JP-2"_L1, "csiso2022jp2 iso-2022-jp-2"_L1, nullptr},
    Voce{"CP50221"_L1, "cp50221 iso-2022-jp-ms"_L1, "ISO_2022,locale=ja,version=4"},
};

QHash<QString, QString> IndiceEtichette()
{
    QHash<QString, QString> indice;
    for (const Voce &voce : Voci) {
        const QString etichette = voce.etichette;
        for (const QString &etichetta : etichette.split(u' ', Qt::SkipEmptyParts))
            indice.insert(etichetta, voce.nome);
    }
    return indice;
}

/// Whether \a convertitore reads the characters that mark-up consists of from their ASCII bytes. Shift sequences and
/// the like use none of them.
bool LeggeAscii(UConverter *convertitore)
{
    switch (ucnv_getType(convertitore)) {
    case UCNV_UTF7:
    case UCNV_IMAP_MAILBOX:
    case UCNV_CESU8:
    case UCNV_SCSU:
    case UCNV_BOCU1:
        return false;
    default:
        break;
    }
    constexpr char ascii[] = "\t\r\n !\"#$%&'()*+,-./0123456789:;<=>?@ABCXYZ[\\]^_`abcxyz{|}";
    constexpr int32_t lunghezza = sizeof ascii - 1;
    std::array<UChar, lunghezza> letti{};
    UErrorCode errore = U_ZERO_ERROR;
    const int32_t quanti = ucnv_toUChars(convertitore, letti.data(), lunghezza, ascii, lunghezza, &errore);
    return U_SUCCESS(errore) && quanti == lunghezza && std::equal(letti.begin(), letti.end(), ascii);
}

QString NomeDallaLibreria(const QByteArray &etichetta)
{
    // A comma introduces options of the library's own, never a name that a page may use.
    if (etichetta.isEmpty() || etichetta.size() >= UCNV_MAX_CONVERTER_NAME_LENGTH || etichetta.contains(','))
        return {};
    UErrorCode errore = U_ZERO_ERROR;
    UConverter *convertitore = ucnv_open(etichetta.constData(), &errore);
    if (!convertitore)
        return {};
    QString nome = LeggeAscii(convertitore) ? QString::fromLatin1(ucnv_getName(convertitore, &errore)) : QString();
    ucnv_close(convertitore);
    return nome;
}

} // namespace

QString NomeCodifica(QStringView etichetta)
{
    static const QHash<QString, QString> indice = IndiceEtichette();
    const QString cercata = etichetta.trimmed().toString().toLower();
    const auto nota = indice.constFind(cercata);
    return nota != indice.cend() ? *nota : NomeDallaLibreria(cercata.toLatin1());
}

QByteArray NomeConvertitore(QStringView codifica)
{
    for (const Voce &voce : Voci) {
        if (voce.nome == codifica && voce.convertitore)
            return voce.convertitore;
    }
    return codifica.toLatin1();
}

QString AlternativaDi(QStringView codifica)
{
    static const QHash<QString, QString> alternative{{u"GBK"_s, u"gb18030"_s},
                                                     {u"Big5"_s, u"Big5-HKSCS"_s},
                                                     {u"ISO-2022-JP"_s, u"ISO-2022-JP-2"_s},
                                                     {u"ISO-2022-JP-2"_s, u"CP50221"_s}};
    return alternative.value(codifica.toString());
}

} // namespace Codifiche
