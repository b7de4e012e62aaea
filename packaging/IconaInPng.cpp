// velloro_icona SVG PNG SIZE: draws the picture SVG into a square of SIZE pixels. Exit code 1 and a line on the error
// output when it cannot be read or written.

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char **argv)
{
    constexpr int LatoMassimo = 4096;
    const int lato = argc == 4 ? QByteArray(argv[3]).toInt() : 0;
    if (lato < 1 || lato > LatoMassimo) {
        std::fputs("usage: velloro_icona SVG PNG SIZE\n", stderr);
        return 1;
    }
    QSvgRenderer disegno(QFile::decodeName(argv[1]));
    if (!disegno.isValid()) {
        std::fprintf(stderr, "%s: not a readable SVG picture\n", argv[1]);
        return 1;
    }
    QImage immagine(lato, lato, QImage::Format_ARGB32_Premultiplied);
    immagine.fill(Qt::transparent);
    QPainter pittore(&immagine);
    disegno.render(&pittore);
    pittore.end();
    if (!immagine.save(QFile::decodeName(argv[2]), "PNG")) {
        std::fprintf(stderr, "%s: cannot be written\n", argv[2]);
        return 1;
    }
    return 0;
}
