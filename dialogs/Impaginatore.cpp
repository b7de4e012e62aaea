#include "dialogs/Impaginatore.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace
{

constexpr qsizetype Parte = 1024; // units of a long line that are set at a time
const QColor ColoreOnda(240, 86, 53);
constexpr qreal AltezzaOnda = 0.8; // points
constexpr qreal PassoOnda = 1.6;   // points from one turn to the next

QFont Variante(const QFont &carattere, bool grassetto, bool corsivo)
{
    QFont variante = carattere;
    variante.setBold(grassetto);
    variante.setItalic(corsivo);
    return variante;
}

/// How many units of the device Qt makes of one that a tab stop is given in: it takes them for dots of the screen.
qreal ScalaTabulazioni(const QFont &carattere, QPaintDevice *dispositivo)
{
    constexpr qreal distanza = 100;
    QTextOption opzioni;
    opzioni.setTabStopDistance(distanza);
    QTextLayout prova(QStringLiteral("\t"), carattere, dispositivo);
    prova.setTextOption(opzioni);
    prova.beginLayout();
    const QTextLine riga = prova.createLine();
    prova.endLayout();
    return std::max(riga.cursorToX(1) / distanza, 0.01);
}

} // namespace

Impaginatore::Impaginatore(const TestoStampa &testo, QPaintDevice *dispositivo, QSizeF area, bool grigi)
    : m_testo(testo), m_dispositivo(dispositivo), m_area(area), m_grigi(grigi),
      m_carattere(testo.carattere, dispositivo)
{
    const qreal cella = QFontMetricsF(m_carattere, dispositivo).horizontalAdvance(u'M');
    bool uguali = cella > 0;
    for (const bool grassetto : {false, true}) {
        for (const bool corsivo : {false, true}) {
            const QFont variante = Variante(m_carattere, grassetto, corsivo);
            QTextLayout prova(QStringLiteral("Mg"), variante, dispositivo);
            prova.beginLayout();
            QTextLine riga = prova.createLine();
            riga.setLineWidth(m_area.width());
            prova.endLayout();
            m_altezza = std::max(m_altezza, riga.height());
            const QFontMetricsF misure(variante, dispositivo);
            for (char16_t c = 0x20; c < 0x7F; ++c)
                uguali = uguali && std::abs(misure.horizontalAdvance(QChar(c)) - cella) < cella / 100;
        }
    }
    // One column less: advances are rounded.
    m_colonne = uguali ? std::max(qsizetype(0), qsizetype(m_area.width() / (cella * 1.01)) - 1) : 0;
    m_opzioni.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_opzioni.setTabStopDistance(testo.tabulazione * QFontMetricsF(m_carattere, dispositivo).horizontalAdvance(u' ') /
                                 ScalaTabulazioni(m_carattere, dispositivo));
}

bool Impaginatore::Impagina(const std::function<bool(qsizetype)> &passo)
{
    m_inizi.assign(1, 0);
    for (qsizetype inizio = Riempi(0, nullptr); inizio < m_testo.testo.size(); inizio = Riempi(inizio, nullptr)) {
        m_inizi.push_back(inizio);
        if (!passo(inizio))
            return false;
    }
    return true;
}

void Impaginatore::Disegna(QPainter &pittore, int pagina) const
{
    static_cast<void>(Riempi(m_inizi.at(size_t(pagina)), &pittore));
}

/// Whether these units take one row of the usual height, without a layout.
bool Impaginatore::Semplice(qsizetype da, qsizetype fine) const
{
    if (fine == da)
        return true;
    return fine - da <= m_colonne && std::all_of(m_testo.testo.cbegin() + da, m_testo.testo.cbegin() + fine,
                                                 [](QChar unita) { return unita >= u' ' && unita < QChar(0x7F); });
}

/// Fills one page from position \a da on, which begins a row; returns where the next one begins.
qsizetype Impaginatore::Riempi(qsizetype da, QPainter *pittore) const
{
    const QString &testo = m_testo.testo;
    qreal y = 0;
    while (da < testo.size()) {
        // Only as much of a long line as is set at a time is looked at.
        const qsizetype limite = std::min(testo.size(), da + Parte);
        qsizetype fine = da;
        while (fine < limite && testo.at(fine) != u'\r' && testo.at(fine) != u'\n')
            ++fine;
        if (!pittore && Semplice(da, fine) && (fine == testo.size() || fine < limite)) {
            if (y > 0 && y + m_altezza > m_area.height())
                return da;
            y += m_altezza;
            da = fine;
        } else {
            const qsizetype fatto = Componi(da, fine, y, pittore);
            if (fatto < 0)
                return -fatto - 1;
            da = fatto;
            if (da < fine)
                continue;
        }
        if (da < testo.size() && fine == da && (testo.at(da) == u'\r' || testo.at(da) == u'\n'))
            da += testo.at(da) == u'\r' && da + 1 < testo.size() && testo.at(da + 1) == u'\n' ? 2 : 1;
    }
    return da;
}

/// Sets the rows of the units from \a da to \a fine, below \a y. Returns how far it came; when the page is full, the
/// position of the first row that has no room, as -1 - position.
qsizetype Impaginatore::Componi(qsizetype da, qsizetype fine, qreal &y, QPainter *pittore) const
{
    const bool continua =
        fine < m_testo.testo.size() && m_testo.testo.at(fine) != u'\r' && m_testo.testo.at(fine) != u'\n';
    QTextLayout disposizione(m_testo.testo.mid(da, fine - da), m_carattere, m_dispositivo);
    Prepara(disposizione, da, fine);
    disposizione.beginLayout();
    for (QTextLine riga = disposizione.createLine(); riga.isValid(); riga = disposizione.createLine())
        riga.setLineWidth(m_area.width());
    disposizione.endLayout();
    // The last row of a part that goes on may yet take more: it begins the next part.
    const int righe = disposizione.lineCount() - (continua && disposizione.lineCount() > 1 ? 1 : 0);
    for (int i = 0; i < righe; ++i) {
        const QTextLine riga = disposizione.lineAt(i);
        const qreal altezza = std::max(m_altezza, riga.height());
        if (y > 0 && y + altezza > m_area.height())
            return -1 - (da + riga.textStart());
        if (pittore) {
            riga.draw(pittore, QPointF(0, y - riga.y()));
            DisegnaOnde(*pittore, riga, da, y);
        }
        y += altezza;
    }
    if (righe == 0)
        return fine;
    const QTextLine ultima = disposizione.lineAt(righe - 1);
    return da + ultima.textStart() + ultima.textLength();
}

size_t Impaginatore::Tratto(qsizetype posizione) const
{
    const auto dopo =
        std::upper_bound(m_testo.tratti.cbegin(), m_testo.tratti.cend(), posizione,
                         [](qsizetype p, const TestoStampa::Tratto &tratto) { return p < tratto.inizio; });
    return size_t(std::max<ptrdiff_t>(0, dopo - m_testo.tratti.cbegin() - 1));
}

QColor Impaginatore::Colore(const QColor &colore) const
{
    const int grigio = qGray(colore.rgb());
    return m_grigi ? QColor(grigio, grigio, grigio) : colore;
}

void Impaginatore::Prepara(QTextLayout &disposizione, qsizetype da, qsizetype fine) const
{
    disposizione.setTextOption(m_opzioni);
    disposizione.setCacheEnabled(true);
    QList<QTextLayout::FormatRange> formati;
    for (size_t i = Tratto(da); i < m_testo.tratti.size() && m_testo.tratti[i].inizio < fine; ++i) {
        const qsizetype inizio = std::max(da, m_testo.tratti[i].inizio);
        const qsizetype termine = i + 1 < m_testo.tratti.size() ? std::min(fine, m_testo.tratti[i + 1].inizio) : fine;
        const Aspetto &aspetto = m_testo.tratti[i].aspetto;
        QTextCharFormat formato;
        formato.setForeground(Colore(ColoreQt(aspetto.colore)));
        if (aspetto.grassetto)
            formato.setFontWeight(QFont::Bold);
        if (aspetto.corsivo)
            formato.setFontItalic(true);
        formati.append({int(inizio - da), int(termine - inizio), formato});
    }
    disposizione.setFormats(formati);
}

// Qt draws its wavy underline as a small picture, which a printer's many dots make invisible.
void Impaginatore::DisegnaOnde(QPainter &pittore, const QTextLine &riga, qsizetype da, qreal y) const
{
    const qreal punto = m_dispositivo->logicalDpiY() / 72.0;
    const qsizetype inizio = da + riga.textStart();
    const qsizetype fine = inizio + riga.textLength();
    for (size_t i = Tratto(inizio); i < m_testo.tratti.size() && m_testo.tratti[i].inizio < fine; ++i) {
        if (!m_testo.tratti[i].aspetto.onda)
            continue;
        const qsizetype termine = i + 1 < m_testo.tratti.size() ? std::min(fine, m_testo.tratti[i + 1].inizio) : fine;
        const qreal sinistra = riga.cursorToX(int(std::max(inizio, m_testo.tratti[i].inizio) - da));
        const qreal destra = riga.cursorToX(int(termine - da));
        const qreal base = y + riga.ascent() + 1.5 * punto;
        QPolygonF onda;
        int giro = 0;
        for (qreal x = std::min(sinistra, destra); x < std::max(sinistra, destra); x += PassoOnda * punto)
            onda << QPointF(x, base + (giro++ % 2 == 0 ? -0.5 : 0.5) * AltezzaOnda * punto);
        pittore.setPen(QPen(Colore(ColoreOnda), 0.5 * punto));
        pittore.drawPolyline(onda);
    }
}
