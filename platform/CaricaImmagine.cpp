#include "platform/CaricaImmagine.h"

#include "platform/DisegnoSvg.h"
#include "platform/LetturaFile.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

using namespace Qt::StringLiterals;
using CaricaImmagine::Immagine;
using CaricaImmagine::MassimoMemoria;

namespace
{

constexpr qint64 ByteMegabyte = qint64(1024) * 1024;
constexpr qint64 MassimoDisegno = 16 * ByteMegabyte;
constexpr int MassimoLato = 32767; // what the painting engine can place

/// Bytes that a picture of this size takes in the form that its reader makes.
qint64 Memoria(const QImageReader &lettore, QSize misura)
{
    constexpr int BitSconosciuti = 64; // the widest form there is
    const QImage::Format forma = lettore.imageFormat();
    const int bit = forma == QImage::Format_Invalid ? BitSconosciuti : QImage::toPixelFormat(forma).bitsPerPixel();
    return qint64(misura.width()) * misura.height() * std::max(bit, 32) / 8;
}

/// Size in which a picture fits into memory; empty when it cannot be read smaller than it is. JPEG alone can, by powers
/// of two.
QSize SenzaTroppaMemoria(const QImageReader &lettore, QSize misura)
{
    constexpr int MassimoDivisore = 8;
    if (lettore.format() != "jpeg")
        return {};
    for (int divisore = 2; divisore <= MassimoDivisore; divisore *= 2) {
        if (Memoria(lettore, misura / divisore) <= MassimoMemoria)
            return misura / divisore;
    }
    return {};
}

bool EDisegno(const QString &percorso, QFile &file)
{
    if (QFileInfo(percorso).suffix().compare(u"svg", Qt::CaseInsensitive) == 0)
        return true;
    const QByteArray inizio = file.peek(1024);
    return inizio.contains("<svg");
}

Immagine LeggiPunti(QFile &file)
{
    QImageReader lettore(&file);
    lettore.setAutoTransform(true);
    lettore.setDecideFormatFromContent(true);
    // The general plug-in for drawings follows references out of the file.
    if (lettore.format().startsWith("svg"))
        return {};
    QSize misura = lettore.size();
    if (!misura.isValid() || misura.isEmpty() || std::max(misura.width(), misura.height()) > MassimoLato)
        return {};
    if (Memoria(lettore, misura) > MassimoMemoria) {
        const QSize minore = SenzaTroppaMemoria(lettore, misura);
        if (minore.isEmpty())
            return {};
        lettore.setScaledSize(minore);
    }
    if (lettore.transformation() & QImageIOHandler::TransformationRotate90)
        misura.transpose();
    QImage immagine = lettore.read();
    if (immagine.isNull())
        return {};
    return {std::move(immagine), misura};
}

} // namespace

Immagine CaricaImmagine::Carica(const QString &percorso)
{
    QFile file;
    if (!ModuloPrincipale::ApriInLettura(percorso, file, MassimoFile))
        return {};
    if (!EDisegno(percorso, file))
        return LeggiPunti(file);
    if (file.size() > MassimoDisegno)
        return {};
    return DisegnoSvg::Disegna(file.readAll(), LatoDisegno);
}
