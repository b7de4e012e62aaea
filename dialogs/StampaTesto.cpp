#include "dialogs/StampaTesto.h"

#include "app/TabellaLingua.h"
#include "dialogs/Impaginatore.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

using ModuloStampa::OpzioniPagine;

constexpr qreal DistanzaPiede = 1.0; // rows of the footer between it and the text

/// The footer: a thin line, the file's name at the left, the page's number at the right.
class Piede
{
public:
    Piede(const QFont &carattere, QPaintDevice *dispositivo)
        : m_carattere(carattere, dispositivo), m_dispositivo(dispositivo)
    {
        m_carattere.setPointSizeF(m_carattere.pointSizeF() * 0.8);
        m_carattere.setBold(false);
        m_carattere.setItalic(false);
    }
    [[nodiscard]] qreal Altezza() const { return Misure().height() * (1 + DistanzaPiede); }
    void Disegna(QPainter &pittore, QSizeF foglio, const QString &nome, const QString &numero) const
    {
        const QFontMetricsF misure = Misure();
        const QRectF riga(0, foglio.height() - misure.height(), foglio.width(), misure.height());
        const qreal resto = riga.width() - misure.horizontalAdvance(numero + u"  "_s);
        pittore.setFont(m_carattere);
        pittore.setPen(QPen(Qt::gray, m_dispositivo->logicalDpiY() / 144.0));
        pittore.drawLine(riga.topLeft(), riga.topRight());
        pittore.setPen(Qt::black);
        pittore.drawText(riga, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, numero);
        pittore.drawText(riga, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         misure.elidedText(nome, Qt::ElideMiddle, std::max(0.0, resto)));
    }

private:
    [[nodiscard]] QFontMetricsF Misure() const { return {m_carattere, m_dispositivo}; }

    QFont m_carattere;
    QPaintDevice *m_dispositivo;
};

/// The pages to print, from 0, in the order in which they come out.
std::vector<int> Elenco(const OpzioniPagine &opzioni, int pagine)
{
    std::vector<int> elenco;
    for (int pagina = 0; pagina < pagine; ++pagina) {
        if (opzioni.pagine.isEmpty() || opzioni.pagine.contains(pagina + 1))
            elenco.push_back(pagina);
    }
    if (opzioni.inverse)
        std::reverse(elenco.begin(), elenco.end());
    return elenco;
}

} // namespace

ModuloStampa::EsitoStampa ModuloStampa::StampaTesto(const TestoStampa &testo, QPagedPaintDevice &dispositivo,
                                                    const OpzioniPagine &opzioni, const PassoStampa &passo)
{
    const QSizeF foglio(dispositivo.width(), dispositivo.height());
    const Piede piede(testo.carattere, &dispositivo);
    Impaginatore impaginatore(testo, &dispositivo, {foglio.width(), foglio.height() - piede.Altezza()}, opzioni.grigi);
    // Finding the pages is the first half of the work.
    const qsizetype meta = std::max<qsizetype>(1, testo.testo.size());
    if (!impaginatore.Impagina([&](qsizetype fatto) { return passo(fatto, 2 * meta); }))
        return EsitoStampa::Annullata;
    QPainter pittore;
    const std::vector<int> elenco = Elenco(opzioni, impaginatore.Pagine());
    if (elenco.empty())
        return EsitoStampa::SenzaPagine;
    if (!pittore.begin(&dispositivo))
        return EsitoStampa::Fallita;
    for (size_t i = 0; i < elenco.size(); ++i) {
        if (!passo(meta + meta * qsizetype(i) / qsizetype(elenco.size()), 2 * meta))
            return EsitoStampa::Annullata;
        if (i > 0 && !dispositivo.newPage())
            return EsitoStampa::Fallita;
        impaginatore.Disegna(pittore, elenco[i]);
        piede.Disegna(pittore, foglio, opzioni.nomeFile, Messaggio(303).arg(elenco[i] + 1).arg(impaginatore.Pagine()));
    }
    return pittore.end() ? EsitoStampa::Fatta : EsitoStampa::Fallita;
}
