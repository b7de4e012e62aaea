#include "platform/DisegnoSvg.h"

#include "platform/AlberoSvg.h"
#include "platform/TelaLimitata.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 MassimoPunti = qint64(16) * 1024 * 1024; // of all pictures inside a drawing
constexpr qint64 BytePerElemento = 64;                    // so much text takes about as long as another element
constexpr qint64 BytePerTratto = 4;                       // a piece of a path may cross the whole picture
constexpr qint64 PezzoDiTesto = 10;                       // each has a layout of its own
constexpr double PuntiDipinti = 1e9;                      // what a slow machine paints in a few seconds
constexpr int TempoPittura = 1200;                        // ms
constexpr int LatoMinimo = 256;
constexpr int MassimaMisura = 8192;

bool Scartato(QStringView nome)
{
    for (const QStringView scarto :
         {u"script", u"foreignObject", u"animate", u"animateColor", u"animateMotion", u"animateTransform", u"set"}) {
        if (nome == scarto)
            return true;
    }
    return false;
}

bool ERiferimento(const QXmlStreamAttribute &attributo)
{
    return attributo.name() == u"href" || attributo.name() == u"src";
}

/// Points of the picture that an address carries in itself; none when it carries none that a renderer may read.
std::optional<qint64> PuntiDentro(QStringView indirizzo)
{
    const qsizetype virgola = indirizzo.indexOf(u',');
    if (!indirizzo.startsWith(u"data:") || virgola < 0 || !indirizzo.first(virgola).endsWith(u";base64"))
        return std::nullopt;
    QByteArray dati = QByteArray::fromBase64(indirizzo.sliced(virgola + 1).toLatin1());
    QBuffer memoria(&dati);
    QImageReader lettore(&memoria);
    const QByteArray forma = lettore.format();
    // A drawing within the drawing would be read with all that it refers to.
    if (forma != "png" && forma != "jpeg" && forma != "gif" && forma != "webp" && forma != "bmp")
        return std::nullopt;
    const QSize misura = lettore.size();
    return misura.isValid() ? std::optional(qint64(misura.width()) * misura.height()) : std::nullopt;
}

/// Copies a drawing without what must not be rendered.
class Copia
{
public:
    explicit Copia(const QByteArray &svg) : m_lettore(svg), m_scrittore(&m_uscita)
    {
        m_lettore.setNamespaceProcessing(false);
    }

    std::optional<DisegnoSvg::Ripulito> Esegui()
    {
        while (!m_lettore.atEnd() && m_albero.Accettabile() && m_punti <= MassimoPunti)
            Pezzo(m_lettore.readNext());
        if (m_lettore.hasError() || m_punti > MassimoPunti)
            return std::nullopt;
        const std::optional<qint64> lavoro = m_albero.Lavoro();
        return lavoro ? std::optional(DisegnoSvg::Ripulito{m_uscita, *lavoro}) : std::nullopt;
    }

private:
    void Pezzo(QXmlStreamReader::TokenType tipo)
    {
        switch (tipo) {
        case QXmlStreamReader::StartElement:
            Inizio();
            break;
        case QXmlStreamReader::EndElement:
            m_testi -= m_testi > 0 ? 1 : 0;
            m_scrittore.writeEndElement();
            m_albero.Chiudi();
            break;
        case QXmlStreamReader::Characters:
            m_scrittore.writeCharacters(m_lettore.text().toString());
            // Every character of a text is laid out, whatever becomes of it.
            m_albero.Aggiungi(m_testi > 0 ? m_lettore.text().size() : m_lettore.text().size() / BytePerElemento);
            break;
        default: // document type, processing instructions, comments
            break;
        }
    }

    void Inizio()
    {
        const QStringView nome = m_lettore.qualifiedName();
        const QXmlStreamAttributes attributi = m_lettore.attributes();
        const QStringView locale = nome.sliced(nome.indexOf(u':') + 1);
        const bool immagine = locale == u"image";
        if (Scartato(locale) || (immagine && !ImmagineAmmessa(attributi))) {
            m_lettore.skipCurrentElement();
            return;
        }
        m_scrittore.writeStartElement(nome.toString());
        // Inside a text there are only its pieces.
        m_testi += m_testi > 0 || nome == u"text" || nome.endsWith(u":text") ? 1 : 0;
        m_albero.Apri(m_testi > 0 ? PezzoDiTesto : 1);
        for (const QXmlStreamAttribute &attributo : attributi) {
            if (ERiferimento(attributo) && !immagine && !attributo.value().startsWith(u'#'))
                continue;
            m_scrittore.writeAttribute(attributo.qualifiedName().toString(), attributo.value().toString());
            if (attributo.name() == u"id")
                m_albero.Chiama(attributo.value().toString());
            else if (!immagine)
                m_albero.Riferimenti(attributo.value());
            const bool tratti = attributo.name() == u"d" || attributo.name() == u"points";
            m_albero.Aggiungi(immagine ? 0 : attributo.value().size() / (tratti ? BytePerTratto : BytePerElemento));
        }
    }

    bool ImmagineAmmessa(const QXmlStreamAttributes &attributi)
    {
        bool ammessa = false;
        for (const QXmlStreamAttribute &attributo : attributi) {
            if (!ERiferimento(attributo))
                continue;
            const std::optional<qint64> punti = PuntiDentro(attributo.value());
            if (!punti)
                return false;
            m_punti += *punti;
            ammessa = true;
        }
        return ammessa;
    }

    QByteArray m_uscita;
    QXmlStreamReader m_lettore;
    QXmlStreamWriter m_scrittore;
    AlberoSvg m_albero;
    qint64 m_punti = 0;
    int m_testi = 0; ///< open elements of a text, itself included
};

} // namespace

std::optional<DisegnoSvg::Ripulito> DisegnoSvg::Ripulisci(const QByteArray &svg)
{
    return Copia(svg).Esegui();
}

CaricaImmagine::Immagine DisegnoSvg::Disegna(const QByteArray &svg, int lato)
{
    const std::optional<Ripulito> ripulito = Ripulisci(svg);
    QSvgRenderer disegno;
    disegno.setFramesPerSecond(0);
    if (!ripulito || !disegno.load(ripulito->svg))
        return {};
    QSizeF propria = disegno.defaultSize();
    if (!(propria.width() > 0 && propria.height() > 0))
        return {};
    const auto entro = [](QSizeF misura, int massimo) {
        const double scala = massimo / std::max(misura.width(), misura.height());
        return QSize(int(std::max(1.0, std::round(misura.width() * scala))),
                     int(std::max(1.0, std::round(misura.height() * scala))));
    };
    const int ammesso = int(std::sqrt(PuntiDipinti / double(std::max<qint64>(1, ripulito->lavoro))));
    const QSize tela = entro(propria, std::clamp(ammesso, std::min(LatoMinimo, lato), lato));
    QImage immagine(tela, QImage::Format_ARGB32_Premultiplied);
    immagine.fill(Qt::transparent);
    TelaLimitata superficie(immagine, TempoPittura);
    {
        QPainter p(&superficie);
        disegno.render(&p);
    }
    // Half a picture could be taken for the whole.
    if (!superficie.Intera())
        return {};
    const double maggiore = std::max(propria.width(), propria.height());
    return {std::move(immagine), maggiore > MassimaMisura ? entro(propria, MassimaMisura) : propria.toSize()};
}
