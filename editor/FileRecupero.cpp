#include "editor/FileRecupero.h"

#include <QDataStream>

namespace
{

constexpr quint32 Firma = 0x564C5231; // "VLR1"
constexpr quint32 Fine = 0x454E4421;  // what follows the text of a whole file

void Prepara(QDataStream &flusso)
{
    flusso.setVersion(QDataStream::Qt_6_4);
    flusso.setByteOrder(QDataStream::LittleEndian);
}

} // namespace

bool FileRecupero::Scrivi(QIODevice &dove, const PaginaRecuperata &pagina)
{
    QDataStream flusso(&dove);
    Prepara(flusso);
    flusso << Firma << pagina.FileCorrente << pagina.codifica << pagina.quando << pagina.testo << Fine;
    return flusso.status() == QDataStream::Ok;
}

std::optional<PaginaRecuperata> FileRecupero::Leggi(QIODevice &da)
{
    QDataStream flusso(&da);
    Prepara(flusso);
    quint32 firma = 0;
    quint32 fine = 0;
    PaginaRecuperata pagina;
    flusso >> firma;
    if (firma != Firma)
        return std::nullopt;
    flusso >> pagina.FileCorrente >> pagina.codifica >> pagina.quando >> pagina.testo >> fine;
    if (flusso.status() != QDataStream::Ok || fine != Fine)
        return std::nullopt;
    return pagina;
}
