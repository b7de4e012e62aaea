#include "app/TabellaLingua.h"

#include "app/ModuloDichiarazioni.h"

#include "platform/LetturaFile.h"

#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

using namespace Qt::StringLiterals;

namespace ModuloPrincipale
{

namespace
{

// Far more than any settings or language file; keeps a mistaken link to something huge from filling the memory.
constexpr qint64 MassimoLetto = qint64{64} << 20; // bytes

constexpr Lingua TutteLeLingue[] = {
#include "app/Lingue.inc"
};

const Lingua &diCodice(quint8 codice)
{
    const auto trova = [](quint8 cercato) {
        return std::find_if(std::begin(TutteLeLingue), std::end(TutteLeLingue),
                            [cercato](const Lingua &lingua) { return lingua.codice == cercato; });
    };
    const auto sua = trova(codice);
    return sua == std::end(TutteLeLingue) ? *trova(LinguaInglese) : *sua;
}

struct Tabella {
    std::array<QString, UltimoMessaggio + 1> testi;
    quint8 lingua = LinguaItaliano;
};

Tabella &tabella()
{
    static Tabella unica;
    return unica;
}

std::optional<QString> leggiTesto(const QString &percorso)
{
    QByteArray byte;
    if (!LeggiByte(percorso, byte, MassimoLetto))
        return std::nullopt;
    return QString::fromUtf8(byte);
}

// Takes the first line, without its end (CR LF, LF or CR), off the front of `resto`.
QStringView prossimaRiga(QStringView &resto)
{
    const auto fine = std::find_if(resto.begin(), resto.end(), [](QChar c) { return c == u'\r' || c == u'\n'; });
    const qsizetype lunghezza = fine - resto.begin();
    const QStringView riga = resto.first(lunghezza);
    const bool doppia = resto.sliced(lunghezza).startsWith(u"\r\n");
    resto = resto.sliced(std::min(resto.size(), lunghezza + (doppia ? 2 : 1)));
    return riga;
}

// Walks over a text without its blanks.
class Cursore
{
public:
    explicit Cursore(QStringView testo) : m_testo(testo) { saltaBianchi(); }
    [[nodiscard]] char16_t corrente() const { return m_posto < m_testo.size() ? m_testo[m_posto].unicode() : u'\0'; }
    [[nodiscard]] bool cifra() const { return corrente() >= u'0' && corrente() <= u'9'; }
    void avanza()
    {
        ++m_posto;
        saltaBianchi();
    }
    bool accetta(char16_t carattere)
    {
        if (corrente() != carattere)
            return false;
        avanza();
        return true;
    }

private:
    void saltaBianchi()
    {
        while (corrente() == u' ' || corrente() == u'\t')
            ++m_posto;
    }
    QStringView m_testo;
    qsizetype m_posto = 0;
};

// A decimal number as its significant digits, with the point before the first one, and a power of ten.
struct Decimale {
    std::string cifre;
    qint64 esponente = 0;
    bool negativo = false;
};

constexpr size_t CifreTenute = 40;       // beyond what a double tells apart
constexpr qint64 EsponenteLimite = 1000; // beyond what a double holds

void leggiCifre(Cursore &cursore, Decimale &numero, bool dopoVirgola)
{
    for (; cursore.cifra(); cursore.avanza()) {
        const bool significativa = !numero.cifre.empty() || cursore.corrente() != u'0';
        if (significativa != dopoVirgola)
            numero.esponente += dopoVirgola ? -1 : 1;
        if (significativa && numero.cifre.size() < CifreTenute)
            numero.cifre += static_cast<char>(cursore.corrente());
    }
}

void leggiEsponente(Cursore &cursore, Decimale &numero)
{
    if (!cursore.accetta(u'e') && !cursore.accetta(u'E'))
        return;
    const bool negativo = cursore.accetta(u'-');
    if (!negativo)
        cursore.accetta(u'+');
    qint64 valore = 0;
    for (; cursore.cifra(); cursore.avanza())
        valore = std::min<qint64>(valore * 10 + (cursore.corrente() - u'0'), Q_INT64_C(1) << 40);
    numero.esponente += negativo ? -valore : valore;
}

double valoreDecimale(QStringView testo)
{
    Cursore cursore(testo);
    Decimale numero;
    numero.negativo = cursore.accetta(u'-');
    if (!numero.negativo)
        cursore.accetta(u'+');
    leggiCifre(cursore, numero, false);
    if (cursore.accetta(u'.'))
        leggiCifre(cursore, numero, true);
    leggiEsponente(cursore, numero);
    if (numero.cifre.empty())
        return 0;
    const qint64 esponente = std::clamp(numero.esponente, -EsponenteLimite, EsponenteLimite);
    double valore = 0;
    const std::string scritto = "0." + numero.cifre + "e" + std::to_string(esponente);
    const auto esito = std::from_chars(scritto.data(), scritto.data() + scritto.size(), valore);
    if (esito.ec == std::errc::result_out_of_range)
        valore = esponente > 0 ? HUGE_VAL : 0;
    return numero.negativo ? -valore : valore;
}

} // namespace

QString Messaggio(qint16 numero)
{
    const bool valido = numero >= 0 && numero <= UltimoMessaggio;
    Q_ASSERT_X(valido, "Messaggio", "number outside the language table");
    return valido ? tabella().testi[static_cast<size_t>(numero)] : QString();
}

std::optional<quint8> NumeroDaRiga(QStringView riga, QStringView nome)
{
    if (!riga.startsWith(nome))
        return std::nullopt;
    const double valore = std::nearbyint(valoreDecimale(riga.mid(11)));
    return valore >= 0 && valore <= 255 ? static_cast<quint8>(valore) : LinguaInglese;
}

std::optional<quint8> LinguaDaRiga(QStringView riga)
{
    return NumeroDaRiga(riga, u"Language");
}

std::optional<quint8> LinguaScritta(QStringView testo)
{
    std::optional<quint8> codice;
    while (!testo.isEmpty()) {
        if (const auto scritto = LinguaDaRiga(prossimaRiga(testo)))
            codice = scritto;
    }
    return codice;
}

quint8 LinguaDaImpostazioni(QStringView testo)
{
    return LinguaScritta(testo).value_or(LinguaItaliano);
}

std::span<const Lingua> Lingue()
{
    return TutteLeLingue;
}

QString FileLingua(quint8 codice)
{
    return diCodice(codice).file.toString();
}

QString NomeLocale(quint8 codice)
{
    return diCodice(codice).locale.toString();
}

QStringView TestoDaRiga(QStringView riga)
{
    const QStringView testo = riga.mid(5);
    const qsizetype marcatore = testo.indexOf(u"=%!%=");
    return marcatore > 0 ? testo.first(marcatore) : testo;
}

EsitoCaricamento CaricaLingua(const QString &cartella, quint8 codice)
{
    tabella() = {};
    const QString percorso = ModuloDichiarazioni::PercorsoIn(cartella, FileLingua(codice));
    const std::optional<QString> contenuto = leggiTesto(percorso);
    if (!contenuto)
        return {u"File "_s + percorso + u" missing."_s};
    QStringView resto = *contenuto;
    for (size_t numero = 1; numero <= UltimoMessaggio && !resto.isEmpty(); ++numero)
        tabella().testi[numero] = TestoDaRiga(prossimaRiga(resto)).toString();
    tabella().lingua = codice;
    return {};
}

EsitoCaricamento CaricaImpostazioni(const QString &cartella, const QString &utente)
{
    tabella() = {};
    const auto contenuto = leggiTesto(ModuloDichiarazioni::PercorsoIn(cartella, u"GlobalSetting.dat"));
    if (!contenuto)
        return {u"File GlobalSetting.dat missing."_s};
    const std::optional<quint8> sua = LinguaScritta(leggiTesto(utente).value_or(QString()));
    return CaricaLingua(cartella, sua.value_or(LinguaDaImpostazioni(*contenuto)));
}

EsitoCaricamento CaricaPerAvvio(const QString &cartella, std::optional<quint8> codice)
{
    return codice ? CaricaLingua(cartella, *codice) : CaricaImpostazioni(cartella, ImpostazioniUtente());
}

QString ImpostazioniUtente()
{
    const QString cartella = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return ModuloDichiarazioni::PercorsoIn(cartella, u"velloro/GlobalSetting.dat");
}

quint8 LinguaCaricata()
{
    return tabella().lingua;
}

} // namespace ModuloPrincipale
