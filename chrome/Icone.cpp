#include "chrome/ModuloGrafica.h"

#include <QDir>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

// A resource in a static library is only there once somebody asks for it; the macro must stand outside a namespace.
static void CaricaRisorse()
{
    [[maybe_unused]] static const bool caricate = [] {
        Q_INIT_RESOURCE(icone);
        return true;
    }();
}

namespace
{

QString Percorso(QStringView nome)
{
    return u":/icone/%1.svg"_s.arg(nome);
}

/// Grey, and half as strong: readable as "not now" on every background of the palette.
void Spegni(QImage &immagine)
{
    for (int y = 0; y < immagine.height(); ++y) {
        auto *riga = reinterpret_cast<QRgb *>(immagine.scanLine(y));
        for (int x = 0; x < immagine.width(); ++x) {
            const int grigio = (qGray(riga[x]) * 3 + qBlue(riga[x])) / 4;
            riga[x] = qRgba(grigio * 45 / 100, grigio * 45 / 100, grigio * 45 / 100, qAlpha(riga[x]) * 45 / 100);
        }
    }
}

/// Draws an SVG at the very size asked for. Independent of the image plug-ins that are installed.
class MotoreIcona : public QIconEngine
{
public:
    explicit MotoreIcona(const QString &nome) : m_nome(nome) {}

    void paint(QPainter *pittore, const QRect &dove, QIcon::Mode modo, QIcon::State stato) override
    {
        const qreal scala = pittore->device() ? pittore->device()->devicePixelRatioF() : 1;
        pittore->drawPixmap(dove, pixmap((QSizeF(dove.size()) * scala).toSize(), modo, stato));
    }

    QPixmap pixmap(const QSize &misura, QIcon::Mode modo, QIcon::State) override
    {
        if (misura.isEmpty())
            return {};
        const QString chiave = u"velloro_%1_%2x%3_%4"_s.arg(m_nome)
                                   .arg(misura.width())
                                   .arg(misura.height())
                                   .arg(int(modo == QIcon::Disabled));
        QPixmap figura;
        if (QPixmapCache::find(chiave, &figura))
            return figura;
        QImage immagine(misura, QImage::Format_ARGB32_Premultiplied);
        immagine.fill(Qt::transparent);
        QSvgRenderer lettore(Percorso(m_nome));
        lettore.setAspectRatioMode(Qt::KeepAspectRatio);
        QPainter pittore(&immagine);
        lettore.render(&pittore);
        pittore.end();
        if (modo == QIcon::Disabled)
            Spegni(immagine);
        figura = QPixmap::fromImage(std::move(immagine));
        QPixmapCache::insert(chiave, figura);
        return figura;
    }

    // A picture without a size of its own: the window system gets these, everyone else asks for what is needed.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {128, 128}};
    }
    QSize actualSize(const QSize &misura, QIcon::Mode, QIcon::State) override { return misura; }
    QIconEngine *clone() const override { return new MotoreIcona(m_nome); }
    QString key() const override { return u"VelloroIcona"_s; }
    QString iconName() override { return m_nome; }

private:
    QString m_nome;
};

} // namespace

QIcon ModuloGrafica::Icona(QStringView nome)
{
    CaricaRisorse();
    return QFile::exists(Percorso(nome)) ? QIcon(new MotoreIcona(nome.toString())) : QIcon();
}

QStringList ModuloGrafica::NomiIcone()
{
    CaricaRisorse();
    QStringList nomi = QDir(u":/icone"_s).entryList({u"*.svg"_s}, QDir::Files, QDir::Name);
    for (QString &nome : nomi)
        nome.chop(4);
    return nomi;
}
