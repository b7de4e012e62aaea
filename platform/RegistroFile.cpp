#include "platform/RegistroFile.h"

#include "platform/LetturaFile.h"
#include "platform/Registro.h"

#include <QtEndian>

#include <optional>

using namespace Qt::StringLiterals;

namespace Registro
{

namespace
{

constexpr qsizetype Campi = 4;

int cifraEsadecimale(QChar carattere)
{
    const char16_t c = carattere.unicode();
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    const char16_t minuscola = c | 0x20;
    return minuscola >= u'a' && minuscola <= u'f' ? minuscola - u'a' + 10 : -1;
}

std::optional<QByteArray> byteDi(QStringView testo)
{
    QByteArray byte;
    for (qsizetype i = 0; i < testo.size();) {
        if (testo[i] == u' ') {
            ++i;
            continue;
        }
        const int alta = cifraEsadecimale(testo[i]);
        const int bassa = i + 1 < testo.size() ? cifraEsadecimale(testo[i + 1]) : -1;
        if (alta < 0 || bassa < 0)
            return std::nullopt;
        byte += static_cast<char>(alta * 16 + bassa);
        i += 2;
    }
    return byte;
}

std::optional<QByteArray> numeroDi(QStringView testo)
{
    bool valido = false;
    const bool esadecimale = testo.startsWith(u"0x", Qt::CaseInsensitive);
    const quint32 numero = (esadecimale ? testo.sliced(2) : testo).toUInt(&valido, esadecimale ? 16 : 10);
    if (!valido)
        return std::nullopt;
    const quint32 ordinato = qToLittleEndian(numero);
    return QByteArray(reinterpret_cast<const char *>(&ordinato), sizeof ordinato);
}

std::optional<Valore> valoreDi(QStringView tipo, QStringView dati)
{
    const auto conTipo = [](quint32 numero, std::optional<QByteArray> byte) -> std::optional<Valore> {
        if (!byte)
            return std::nullopt;
        return Valore{numero, *std::move(byte)};
    };
    if (tipo == u"REG_SZ")
        return conTipo(REG_SZ, dati.toUtf8() + '\0');
    if (tipo == u"REG_EXPAND_SZ")
        return conTipo(REG_EXPAND_SZ, dati.toUtf8() + '\0');
    if (tipo == u"REG_DWORD")
        return conTipo(REG_DWORD, numeroDi(dati.trimmed()));
    if (tipo == u"REG_BINARY")
        return conTipo(REG_BINARY, byteDi(dati));
    bool valido = false;
    const quint32 numero = tipo.toUInt(&valido);
    return valido ? conTipo(numero, byteDi(dati)) : std::nullopt;
}

bool radiceNota(QStringView chiave)
{
    const QString radice = Albero::Percorso(chiave).section(u'\\', 0, 0);
    return radice == u"hkey_local_machine" || radice == u"hkey_current_user";
}

void leggiRiga(QStringView riga, Albero &albero)
{
    if (riga.startsWith(u'#'))
        return;
    // A text may hold tabs: only the first three separate.
    qsizetype inizio = 0;
    QStringView campi[Campi];
    for (qsizetype i = 0; i < Campi; ++i) {
        const qsizetype fine = i < Campi - 1 ? riga.indexOf(u'\t', inizio) : riga.size();
        if (fine < 0)
            return;
        campi[i] = riga.sliced(inizio, fine - inizio);
        inizio = fine + 1;
    }
    if (!radiceNota(campi[0]))
        return;
    if (std::optional<Valore> valore = valoreDi(campi[2].trimmed(), campi[3]))
        albero.Imposta(campi[0], campi[1], *std::move(valore));
}

} // namespace

void LeggiRighe(QStringView testo, Albero &albero)
{
    for (QStringView riga : testo.tokenize(u'\n')) {
        if (riga.endsWith(u'\r'))
            riga.chop(1);
        leggiRiga(riga, albero);
    }
}

QByteArray Contenuto(const QString &percorso)
{
    QByteArray byte;
    return ModuloPrincipale::LeggiByte(percorso, byte, MassimoFile) ? byte : QByteArray();
}

void LeggiFile(const QString &percorso, Albero &albero)
{
    QString testo = QString::fromUtf8(Contenuto(percorso));
    if (testo.startsWith(QChar::ByteOrderMark))
        testo.remove(0, 1);
    LeggiRighe(testo, albero);
}

} // namespace Registro
