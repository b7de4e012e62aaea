#include "chrome/FrmProgressBar.h"

#include "chrome/ClsProgressBar.h"
#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "platform/Misure.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

QRect Twip(int x, int y, int largo, int alto)
{
    return {Misure::InPixel(x), Misure::InPixel(y), Misure::InPixel(largo), Misure::InPixel(alto)};
}

} // namespace

FrmProgressBar::FrmProgressBar(const QString &titolo, const QString &annulla, QWidget *parent)
    : QWidget(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_cornice(new PictureBox(u"Frame1"_s, this)), m_riquadro(new PictureBox(u"PicProgress"_s, m_cornice)),
      m_percento(new QLabel(m_riquadro)), m_stato(new QLabel(m_cornice)),
      m_annulla(new QPushButton(annulla.isEmpty() ? u"&Annulla"_s : annulla, this)), m_barra(new ClsProgressBar(this)),
      m_timer(new QTimer(this))
{
    setObjectName(u"FrmProgressBar"_s);
    setWindowTitle(titolo.isEmpty() ? u"Attendere ..."_s : titolo);
    setWindowIcon(ModuloGrafica::Icona(u"velloro"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowModality(Qt::ApplicationModal);
    m_percento->setObjectName(u"lblProgress"_s);
    m_stato->setObjectName(u"LblStatus"_s);
    m_annulla->setObjectName(u"CmdAnnulla"_s);
    m_annulla->setProperty("Tag", u"D"_s);

    setFixedSize(Twip(0, 0, 5400, 1695).size());
    m_cornice->setGeometry(Twip(150, 150, 5100, 960));
    m_stato->setGeometry(Twip(180, 90, 4740, 300));
    m_riquadro->setGeometry(Twip(180, 465, 4740, 350));
    ModuloGrafica::Decora(*this);
    ModuloGrafica::RimuoviChiudi(*this);
    m_annulla->move(Misure::InPixel(5250) - m_annulla->width(), Misure::InPixel(1230));

    QPalette tavolozza = m_riquadro->palette();
    tavolozza.setColor(QPalette::Window, Colori::Bianco);
    m_riquadro->setPalette(tavolozza);
    m_riquadro->setAutoFillBackground(true);
    m_barra->Picture(m_riquadro);
    m_barra->Label(m_percento);
    m_barra->LabelStatus(m_stato);
    m_barra->Clear();

    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &QWidget::show);
    connect(m_annulla, &QPushButton::clicked, this, &FrmProgressBar::Annulla);
}

void FrmProgressBar::Mostra(int millisecondi)
{
    m_annullato = false;
    m_timer->start(millisecondi);
}

void FrmProgressBar::Chiudi()
{
    m_timer->stop();
    ModuloGrafica::Chiudi(*this);
}

void FrmProgressBar::Annulla()
{
    m_annullato = true;
    Chiudi();
    emit annullato();
}

void FrmProgressBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        m_annulla->click();
    else
        QWidget::keyPressEvent(event);
}
