#include "dialogs/FrmAnteprima.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "platform/Misure.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Sinistra = 10; // twips, like all of them
constexpr int Alto = 10;
constexpr int OltreDestra = 70;
constexpr int OltreBasso = 340;
constexpr int IntervalloTimer = 5; // ms

} // namespace

FrmAnteprima::FrmAnteprima(QWidget *parent)
    : QWidget(parent), m_browser(new QWidget(this)), m_avviso(new QLabel(this)), m_timer(new QTimer(this))
{
    setObjectName(u"FrmAnteprima"_s);
    setWindowTitle(ModuloPrincipale::Messaggio(65));
    setWindowIcon(ModuloGrafica::Icona(u"anteprima"));
    m_browser->setObjectName(u"Browser"_s);
    m_browser->setAccessibleName(ModuloPrincipale::Messaggio(65));
    m_avviso->setObjectName(u"Avviso"_s);
    m_avviso->setTextFormat(Qt::PlainText);
    m_avviso->setAlignment(Qt::AlignCenter);
    m_avviso->setWordWrap(true);
    m_avviso->hide();
    m_timer->setObjectName(u"Timer1"_s);
    m_timer->setInterval(IntervalloTimer);
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &FrmAnteprima::Pronta);
    ModuloGrafica::Decora(*this);
    ModuloGrafica::RimuoviChiudi(*this);
}

void FrmAnteprima::MostraAvviso(const QString &testo, const QString &motivo)
{
    m_avviso->setText(testo);
    m_avviso->setToolTip(motivo);
    m_avviso->setVisible(!testo.isEmpty());
    m_avviso->raise();
}

QRect FrmAnteprima::PostoBrowser(QSize finestra)
{
    return {Sinistra, Alto, std::max(finestra.width() - Sinistra - 10 - OltreDestra, 0),
            std::max(finestra.height() - Alto - 10 - OltreBasso, 0)};
}

void FrmAnteprima::paintEvent(QPaintEvent *evento)
{
    QWidget::paintEvent(evento);
    if (!std::exchange(m_dipinta, true))
        m_timer->start();
}

void FrmAnteprima::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    Disponi();
}

void FrmAnteprima::Disponi()
{
    const auto *esterna = qobject_cast<QMdiSubWindow *>(parentWidget());
    const QSize finestra = esterna ? esterna->size() : size();
    const QRect posto = PostoBrowser({Misure::InTwip(finestra.width()), Misure::InTwip(finestra.height())});
    const QRect pixel(Misure::InPixel(posto.x()), Misure::InPixel(posto.y()), Misure::InPixel(posto.width()),
                      Misure::InPixel(posto.height()));
    // The frame of an inner window may be wider than the plain one: scroll bars stay inside it.
    m_browser->setGeometry(esterna ? pixel & rect() : pixel);
    m_avviso->setGeometry(rect());
}
