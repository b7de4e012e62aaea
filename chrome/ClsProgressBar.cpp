#include "chrome/ClsProgressBar.h"

#include "chrome/Colori.h"
#include "chrome/PictureBox.h"
#include "platform/Misure.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Altezza = 350;       ///< of the picture, in twips
constexpr int CodaEtichetta = 700; ///< from the label's left edge to the bar's end, in twips

} // namespace

std::optional<ClsProgressBar::Passo> ClsProgressBar::ProssimoPasso(double valore, double massimo, double scala,
                                                                   float ultima)
{
    if (massimo == 0 || !(valore <= massimo) || !(scala > 0))
        return {};
    // In single precision, like the last one: 29 of 100 is then 29 points, not a hair less.
    const float percento = float(valore / massimo * 100);
    if (!(percento >= ultima + 1))
        return {};
    const Passo passo{int(std::nearbyint(valore / scala)), percento};
    return passo.x == 0 ? std::nullopt : std::optional(passo);
}

QLabel *ClsProgressBar::LabelStatus() const
{
    return m_stato;
}

QLabel *ClsProgressBar::Label() const
{
    return m_etichetta;
}

PictureBox *ClsProgressBar::Picture() const
{
    return m_riquadro;
}

void ClsProgressBar::Clear()
{
    if (m_etichetta)
        m_etichetta->move(-m_etichetta->width() / 2, m_etichetta->y());
    if (m_riquadro)
        m_riquadro->Cls();
}

void ClsProgressBar::Refresh()
{
    if (!m_riquadro)
        return;
    m_riquadro->Disegna([this](QPainter &p) { p.fillRect(m_riquadro->rect(), m_riquadro->palette().window()); });
}

void ClsProgressBar::LabelStatus(QLabel *etichetta)
{
    m_stato = etichetta;
    if (!etichetta)
        return;
    QFont carattere = etichetta->font();
    carattere.setFamilies({u"Verdana"_s, u"Arial"_s});
    etichetta->setFont(carattere);
}

void ClsProgressBar::TextStatus(const QString &testo)
{
    if (m_stato)
        m_stato->setText(testo);
}

void ClsProgressBar::Label(QLabel *etichetta)
{
    m_etichetta = etichetta;
    VestiEtichetta();
}

void ClsProgressBar::VestiEtichetta()
{
    if (!m_etichetta)
        return;
    QPalette tavolozza = m_etichetta->palette();
    tavolozza.setColor(QPalette::WindowText, Colori::Bianco);
    m_etichetta->setPalette(tavolozza);
    m_etichetta->setAutoFillBackground(false);
    QFont carattere = m_etichetta->font();
    carattere.setBold(true);
    m_etichetta->setFont(carattere);
    m_etichetta->move(m_etichetta->x(), Misure::InPixel(30));
    m_etichetta->show();
}

void ClsProgressBar::Picture(PictureBox *riquadro)
{
    m_riquadro = riquadro;
    if (!riquadro)
        return;
    riquadro->SetAutoRedraw(true);
    riquadro->setFixedHeight(Misure::InPixel(Altezza));
}

void ClsProgressBar::Max(double massimo)
{
    m_massimo = massimo;
    m_ultima = 0;
    m_scala = m_riquadro && m_riquadro->width() > 0 ? massimo / Misure::InTwip(m_riquadro->width()) : 0;
}

void ClsProgressBar::Value(double valore)
{
    if (m_massimo == 0 || !(valore <= m_massimo))
        return;
    m_valore = valore;
    // Events that run while a step is drawn may report progress again: their value is kept, the next step draws it.
    if (m_disegna)
        return;
    if (const auto passo = ProssimoPasso(valore, m_massimo, m_scala, m_ultima))
        Disegna(*passo);
}

/// As far from the lower edge of the picture as from the upper one.
int ClsProgressBar::AltezzaEtichetta() const
{
    return Misure::InPixel(Altezza) - 2 * m_etichetta->y();
}

void ClsProgressBar::Disegna(const Passo &passo)
{
    const QPointer<ClsProgressBar> vivo(this);
    m_disegna = true;
    QCoreApplication::processEvents();
    if (vivo) {
        VestiEtichetta();
        QCoreApplication::processEvents();
    }
    if (!vivo)
        return;
    m_disegna = false;
    if (m_riquadro) {
        m_riquadro->Disegna([&passo](QPainter &p) {
            const double t = Misure::TwipPerPixel;
            p.fillRect(QRectF(QPointF(1 / t, 7 / t), QPointF(passo.x / t, Altezza / t)), Colori::Progresso);
        });
    }
    if (m_etichetta) {
        m_etichetta->setText(QString::number(std::nearbyint(passo.percento)) + u'%');
        m_etichetta->resize(m_etichetta->sizeHint().width(), AltezzaEtichetta());
        m_etichetta->move(Misure::InPixel(passo.x - CodaEtichetta), m_etichetta->y());
    }
    m_ultima = passo.percento;
}
