#include "platform/OpzioniStampante.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <optional>
#include <vector>

namespace
{

using OpzioniStampante::Opzioni;

/// A value of an option and the number that stands for it. The first one of a number is the one that is written.
struct Valore {
    int numero;
    const char *testo;
};

/// One setting: its field, the option's names (the first one is written) and its values; no values: a plain number.
struct Impostazione {
    DevMode::Campo campo;
    std::vector<const char *> nomi;
    std::vector<Valore> valori;
};

const std::vector<Impostazione> &Tabella()
{
    static const std::vector<Impostazione> tabella{
        {DevMode::NumeroCopie, {"copies"}, {}},
        {DevMode::Orientamento, {"orientation-requested"}, {{1, "3"}, {2, "4"}, {2, "5"}, {1, "6"}}},
        {DevMode::FronteRetro,
         {"sides", "Duplex"},
         {{1, "one-sided"},
          {2, "two-sided-long-edge"},
          {3, "two-sided-short-edge"},
          {1, "None"},
          {2, "DuplexNoTumble"},
          {3, "DuplexTumble"}}},
        {DevMode::Colore,
         {"print-color-mode", "ColorModel"},
         {{1, "monochrome"}, {2, "color"}, {2, "auto"}, {1, "Gray"}, {2, "RGB"}, {2, "CMYK"}, {2, "CMY"}}},
        {DevMode::Qualita, {"print-quality"}, {{-1, "3"}, {-3, "4"}, {-4, "5"}, {-2, "3"}}},
        {DevMode::Fascicolazione, {"Collate"}, {{0, "False"}, {1, "True"}}},
    };
    return tabella;
}

constexpr const char *NomiCarta[] = {"media", "PageSize", "PageRegion"};

/// The number that the options give a setting; none without an option that is understood.
std::optional<int> Numero(const Impostazione &impostazione, const Opzioni &opzioni)
{
    for (const char *nome : impostazione.nomi) {
        const auto opzione = opzioni.constFind(nome);
        if (opzione == opzioni.cend())
            continue;
        if (impostazione.valori.empty()) {
            bool numero = false;
            const int valore = opzione->toInt(&numero);
            if (numero && valore > 0)
                return valore;
        }
        for (const Valore &valore : impostazione.valori) {
            if (opzione->compare(valore.testo, Qt::CaseInsensitive) == 0)
                return valore.numero;
        }
    }
    return std::nullopt;
}

std::optional<QByteArray> Carta(const Opzioni &opzioni)
{
    for (const char *nome : NomiCarta) {
        if (const auto opzione = opzioni.constFind(nome); opzione != opzioni.cend())
            return *opzione;
    }
    return std::nullopt;
}

QByteArray TestoDi(const Impostazione &impostazione, int numero)
{
    if (impostazione.valori.empty())
        return QByteArray::number(numero);
    for (const Valore &valore : impostazione.valori) {
        if (valore.numero == numero)
            return valore.testo;
    }
    return {};
}

} // namespace

Opzioni OpzioniStampante::Note(const Opzioni &tutte)
{
    Opzioni note;
    const auto prendi = [&](const char *nome) {
        if (const auto opzione = tutte.constFind(nome); opzione != tutte.cend())
            note.insert(nome, *opzione);
    };
    for (const Impostazione &impostazione : Tabella()) {
        for (const char *nome : impostazione.nomi)
            prendi(nome);
    }
    for (const char *nome : NomiCarta)
        prendi(nome);
    return note;
}

DevMode OpzioniStampante::InRecord(const QByteArray &stampante, const Opzioni &opzioni)
{
    DevMode record;
    record.ImpostaNomeDispositivo(stampante);
    for (const Impostazione &impostazione : Tabella()) {
        if (const std::optional<int> numero = Numero(impostazione, opzioni))
            record.Imposta(impostazione.campo, *numero);
    }
    if (const std::optional<QByteArray> carta = Carta(opzioni))
        record.ImpostaNomeCarta(*carta);
    return record;
}

Opzioni OpzioniStampante::Unisci(const Opzioni &attuali, const DevMode &record)
{
    Opzioni unite = attuali;
    for (const Impostazione &impostazione : Tabella()) {
        const bool conta = record.Ha(impostazione.campo);
        if (conta && Numero(impostazione, attuali) == record.Valore(impostazione.campo))
            continue;
        for (const char *nome : impostazione.nomi)
            unite.remove(nome);
        if (!conta)
            continue;
        if (const QByteArray testo = TestoDi(impostazione, record.Valore(impostazione.campo)); !testo.isEmpty())
            unite.insert(impostazione.nomi.front(), testo);
    }
    const bool haCarta = record.Ha(DevMode::NomeModulo) && !record.NomeCarta().isEmpty();
    const std::optional<QByteArray> carta = Carta(attuali);
    if (!haCarta || !carta || carta->left(DevMode::LunghezzaNome - 1) != record.NomeCarta()) {
        for (const char *nome : NomiCarta)
            unite.remove(nome);
        if (haCarta)
            unite.insert(NomiCarta[0], record.NomeCarta());
    }
    return unite;
}

QByteArray OpzioniStampante::InByte(const Opzioni &opzioni)
{
    QByteArray byte;
    QDataStream flusso(&byte, QIODevice::WriteOnly);
    flusso << opzioni;
    QByteArray lunghezza(sizeof(quint32), '\0');
    qToLittleEndian<quint32>(quint32(byte.size()), lunghezza.data());
    return lunghezza + byte;
}

Opzioni OpzioniStampante::DaByte(const QByteArray &byte)
{
    if (byte.size() < qsizetype(sizeof(quint32)))
        return {};
    const qsizetype lunghezza = qFromLittleEndian<quint32>(byte.constData());
    if (lunghezza > byte.size() - qsizetype(sizeof(quint32)))
        return {};
    QDataStream flusso(byte.mid(sizeof(quint32), lunghezza));
    Opzioni opzioni;
    flusso >> opzioni;
    return flusso.status() == QDataStream::Ok ? opzioni : Opzioni();
}
