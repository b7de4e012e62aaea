#include "editor/FileRecupero.h"

#include <QDataStream>
#include <QIODevice>

namespace
{

constexpr quint32 Firma = 0x564C5231;            // "VLR1"
constexpr quint32 Fine = 0x454E4421;             // what follows the text of a whole file
constexpr qint64 MassimoCampo = qint64{1} << 20; // bytes; longer than any path
constexpr qint64 MassimoTesto = qint64{1} << 31; // bytes; twice what the largest page takes

void Prepara(QDataStream &flusso)
{
    flusso.setVersion(QDataStream::Qt_6_4);
    flusso.setByteOrder(QDataStream::LittleEndian);
}

/// The bytes of a text that follow; none for a length that is not there. A null text is one without bytes.
std::optional<qint64> Lunghezza(QDataStream &flusso, qint64 massimo)
{
    constexpr quint32 Nullo = 0xFFFFFFFF;
    quint32 byte = 0;
    if ((flusso >> byte).status() != QDataStream::Ok)
        return std::nullopt;
    if (byte == Nullo)
        return 0;
    const qint64 resto = flusso.device()->size() - flusso.device()->pos();
    return byte % 2 == 0 && byte <= massimo && byte <= resto ? std::optional<qint64>(byte) : std::nullopt;
}

/// A text short enough for a name.
bool LeggiCampo(QDataStream &flusso, QString &campo)
{
    const qint64 inizio = flusso.device()->pos();
    return Lunghezza(flusso, MassimoCampo) && flusso.device()->seek(inizio) &&
           (flusso >> campo).status() == QDataStream::Ok;
}

/// Written in local time; a time with the name of a zone would be a text without a bound.
bool LeggiQuando(QDataStream &flusso, QDateTime &quando)
{
    constexpr qint64 posto = 12; // of the kind, behind date and time
    const QByteArray inizio = flusso.device()->peek(posto + 1);
    return inizio.size() > posto && inizio[posto] == Qt::LocalTime && (flusso >> quando).status() == QDataStream::Ok;
}

bool SaltaTesto(QDataStream &flusso)
{
    const std::optional<qint64> byte = Lunghezza(flusso, MassimoTesto);
    return byte && flusso.device()->seek(flusso.device()->pos() + *byte);
}

} // namespace

bool FileRecupero::Scrivi(QIODevice &dove, const PaginaRecuperata &pagina)
{
    QDataStream flusso(&dove);
    Prepara(flusso);
    flusso << Firma << pagina.FileCorrente << pagina.codifica << pagina.quando << pagina.testo << Fine;
    return flusso.status() == QDataStream::Ok;
}

FileRecupero::Stato FileRecupero::LeggiTestata(QIODevice &da, PaginaRecuperata &pagina)
{
    QDataStream flusso(&da);
    Prepara(flusso);
    quint32 firma = 0;
    if (!da.seek(0) || (flusso >> firma).status() != QDataStream::Ok || firma != Firma)
        return Stato::Altrui;
    quint32 fine = 0;
    const bool campi = LeggiCampo(flusso, pagina.FileCorrente) && LeggiCampo(flusso, pagina.codifica);
    if (!campi || !LeggiQuando(flusso, pagina.quando) || !SaltaTesto(flusso))
        return Stato::Guasto;
    flusso >> fine;
    return flusso.status() == QDataStream::Ok && fine == Fine && da.atEnd() ? Stato::Intero : Stato::Guasto;
}

std::optional<PaginaRecuperata> FileRecupero::Leggi(QIODevice &da)
{
    PaginaRecuperata pagina;
    if (LeggiTestata(da, pagina) != Stato::Intero || !da.seek(0))
        return std::nullopt;
    QDataStream flusso(&da);
    Prepara(flusso);
    quint32 firma = 0;
    flusso >> firma >> pagina.FileCorrente >> pagina.codifica >> pagina.quando >> pagina.testo;
    if (flusso.status() != QDataStream::Ok)
        return std::nullopt;
    return pagina;
}
