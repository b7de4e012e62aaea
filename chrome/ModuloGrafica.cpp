#include "chrome/ModuloGrafica.h"

#include "chrome/Colori.h"
#include "chrome/PictureBox.h"
#include "platform/Misure.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto Didascalia = "didascalia";     ///< of a header strip, once it is drawn
constexpr auto Intestazioni = "intestazioni"; ///< a list whose headers are done
constexpr auto Seguito = "disegnoSeguito";    ///< a picture box that is drawn again when its size changes

const QSize MisuraPulsante{Misure::InPixel(1200), Misure::InPixel(345)};

QString Etichetta(const QWidget &controllo)
{
    return controllo.property("Tag").toString();
}

bool ESiChiama(const QWidget &controllo, QStringView pezzo)
{
    return controllo.objectName().contains(pezzo, Qt::CaseInsensitive);
}

bool EPannello(const QWidget &c)
{
    return ESiChiama(c, u"frame") || ESiChiama(c, u"fra(");
}
bool EStriscia(const QWidget &c)
{
    return ESiChiama(c, u"PicIntestazioneFrm");
}

void Sfondo(QWidget &controllo, const QColor &colore, bool riempi = true)
{
    QPalette tavolozza = controllo.palette();
    tavolozza.setColor(QPalette::Window, colore);
    controllo.setPalette(tavolozza);
    controllo.setAutoFillBackground(riempi);
}

void ColoreTesto(QWidget &controllo)
{
    QPalette tavolozza = controllo.palette();
    for (const auto ruolo : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        tavolozza.setColor(QPalette::Active, ruolo, Colori::Testo);
        tavolozza.setColor(QPalette::Inactive, ruolo, Colori::Testo);
        tavolozza.setColor(QPalette::Disabled, ruolo, Colori::TestoSpento);
    }
    controllo.setPalette(tavolozza);
}

void Carattere(QWidget &controllo, bool neretto)
{
    QFont carattere = controllo.font();
    carattere.setFamilies({u"Arial"_s});
    carattere.setPointSize(8);
    carattere.setBold(neretto);
    controllo.setFont(carattere);
}

void DecoraPulsante(QAbstractButton &pulsante)
{
    Carattere(pulsante, pulsante.text() != u"..."_s);
    const bool barra = pulsante.objectName().startsWith(u"TOOLBAR"_s, Qt::CaseInsensitive);
    QPalette tavolozza = pulsante.palette();
    tavolozza.setColor(QPalette::Button, barra ? QPalette().color(QPalette::Button) : Colori::Finestra);
    pulsante.setPalette(tavolozza);
    if (Etichetta(pulsante).compare(u"D"_s, Qt::CaseInsensitive) == 0) {
        pulsante.setFixedSize(MisuraPulsante);
        if (auto *comando = qobject_cast<QPushButton *>(&pulsante))
            comando->setFlat(false); // the style's own look is the flat one; Qt's "flat" would take the outline away
    }
}

void DecoraIntestazioni(QAbstractItemView &elenco)
{
    if (elenco.property(Intestazioni).toBool())
        return;
    elenco.setProperty(Intestazioni, true);
    for (QHeaderView *testa : elenco.findChildren<QHeaderView *>()) {
        Carattere(*testa, true);
        testa->setHighlightSections(false);
        if (testa->orientation() == Qt::Horizontal)
            testa->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

void DecoraElenco(QAbstractItemView &elenco)
{
    ColoreTesto(elenco);
    auto *lista = qobject_cast<QListView *>(&elenco);
    if (!lista || lista->viewMode() == QListView::IconMode) {
        DecoraIntestazioni(elenco);
        return;
    }
    QPalette tavolozza = elenco.palette();
    tavolozza.setColor(QPalette::Base, Colori::Bianco);
    elenco.setPalette(tavolozza);
}

void DecoraProgresso(QProgressBar &barra)
{
    QPalette tavolozza = barra.palette();
    tavolozza.setColor(QPalette::Base, Colori::Bianco);
    tavolozza.setColor(QPalette::Highlight, Colori::Progresso);
    barra.setPalette(tavolozza);
}

/// The panel of a header strip: the one that the tag names, for an element of an array the one of the same index.
QWidget *Pannello(const QWidget &form, const QWidget &striscia)
{
    const QString etichetta = Etichetta(striscia);
    const QString nome = etichetta.section(u" - "_s, 0, 0);
    if (nome.isEmpty())
        return nullptr;
    const qsizetype indice = striscia.objectName().lastIndexOf(u'(');
    const QStringList possibili =
        indice < 0 ? QStringList{nome} : QStringList{nome + striscia.objectName().mid(indice), nome};
    const auto controlli = form.findChildren<QWidget *>();
    for (const QString &cercato : possibili) {
        for (QWidget *controllo : controlli) {
            if (controllo->objectName().compare(cercato, Qt::CaseInsensitive) == 0)
                return controllo;
        }
    }
    return nullptr;
}

void DecoraStriscia(QWidget &form, PictureBox &striscia)
{
    striscia.setFrameShape(QFrame::NoFrame);
    striscia.SetAutoRedraw(true);
    Sfondo(striscia, Colori::Intestazione);
    ColoreTesto(striscia);
    Carattere(striscia, true);
    striscia.setFixedHeight(Misure::InPixel(300));
    striscia.setVisible(striscia.property(Didascalia).isValid());
    if (const QWidget *pannello = Pannello(form, striscia); pannello && striscia.parentWidget()) {
        const QPoint angolo = striscia.parentWidget()->mapFromGlobal(pannello->mapToGlobal(QPoint(0, 0)));
        striscia.move(angolo.x() + Misure::InPixel(80), angolo.y() - striscia.height() - Misure::InPixel(20));
        striscia.raise();
    }
}

void DecoraPannello(PictureBox &pannello)
{
    pannello.setFrameShape(QFrame::NoFrame);
    pannello.SetAutoRedraw(true);
    Sfondo(pannello, Colori::Pannello);
    ModuloGrafica::DisegnaPannello(pannello);
    pannello.show();
}

void DecoraControllo(QWidget &form, QWidget &controllo)
{
    if (auto *riquadro = qobject_cast<PictureBox *>(&controllo)) {
        // A header strip's name contains the word for a frame too.
        if (EStriscia(controllo))
            return DecoraStriscia(form, *riquadro);
        Carattere(controllo, false);
        if (EPannello(controllo))
            DecoraPannello(*riquadro);
        return;
    }
    if (auto *pulsante = qobject_cast<QPushButton *>(&controllo))
        return DecoraPulsante(*pulsante);
    if (auto *pulsante = qobject_cast<QToolButton *>(&controllo);
        pulsante && controllo.objectName().startsWith(u"TOOLBAR"_s, Qt::CaseInsensitive))
        return DecoraPulsante(*pulsante);

    Carattere(controllo, controllo.font().bold());
    if (qobject_cast<QLabel *>(&controllo) || qobject_cast<QRadioButton *>(&controllo)) {
        Sfondo(controllo, Colori::Pannello, false);
        ColoreTesto(controllo);
    } else if (qobject_cast<QCheckBox *>(&controllo)) {
        Sfondo(controllo, Colori::Finestra, false);
        ColoreTesto(controllo);
    } else if (qobject_cast<QTabWidget *>(&controllo) || qobject_cast<QTabBar *>(&controllo)) {
        Sfondo(controllo, Colori::Finestra, qobject_cast<QTabWidget *>(&controllo));
        ColoreTesto(controllo);
    } else if (auto *elenco = qobject_cast<QAbstractItemView *>(&controllo)) {
        DecoraElenco(*elenco);
    } else if (auto *barra = qobject_cast<QProgressBar *>(&controllo)) {
        DecoraProgresso(*barra);
    } else if (qobject_cast<QGroupBox *>(&controllo) || controllo.metaObject() == &QFrame::staticMetaObject) {
        Sfondo(controllo, Colori::Pannello, controllo.metaObject() == &QFrame::staticMetaObject);
    }
}

/// Controls with an inside of their own, which is theirs to look after.
bool EComposto(const QWidget &controllo)
{
    if (qobject_cast<const QScrollArea *>(&controllo))
        return false;
    return qobject_cast<const QAbstractScrollArea *>(&controllo) || qobject_cast<const QComboBox *>(&controllo) ||
           qobject_cast<const QAbstractSpinBox *>(&controllo) || qobject_cast<const QLineEdit *>(&controllo) ||
           qobject_cast<const QMenuBar *>(&controllo);
}

void DecoraDentro(QWidget &form, QWidget &contenitore)
{
    const auto figli = contenitore.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *figlio : figli) {
        if (figlio->isWindow() || qobject_cast<QMdiSubWindow *>(figlio) || qobject_cast<QMenu *>(figlio))
            continue;
        DecoraControllo(form, *figlio);
        if (!EComposto(*figlio))
            DecoraDentro(form, *figlio);
    }
}

void Segui(PictureBox &riquadro, void (*disegna)(PictureBox &))
{
    if (riquadro.property(Seguito).toBool())
        return;
    riquadro.setProperty(Seguito, true);
    QObject::connect(&riquadro, &PictureBox::Ridimensionata, &riquadro, [&riquadro, disegna] { disegna(riquadro); });
}

void Bordo(PictureBox &pannello)
{
    pannello.Cls();
    pannello.Disegna([&pannello](QPainter &p) {
        // The corners show the form behind the panel.
        QPainterPath angoli;
        angoli.addRect(pannello.rect());
        QPainterPath dentro;
        const QRectF bordo = QRectF(pannello.rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        dentro.addRoundedRect(bordo, 4, 4);
        const QWidget *dietro = pannello.parentWidget();
        p.fillPath(angoli - dentro, dietro ? dietro->palette().color(QPalette::Window) : Colori::Finestra);
        p.setPen(Colori::Bordo);
        p.drawPath(dentro);
    });
}

void Striscia(PictureBox &striscia)
{
    striscia.Cls();
    striscia.Disegna([&striscia](QPainter &p) {
        const QRect tutto = striscia.rect();
        p.fillRect(QRect(0, 0, 3, tutto.height()), Colori::Progresso);
        p.setPen(Colori::Testo);
        const QRect posto = tutto.adjusted(10, 0, -6, 0);
        const QString testo = striscia.property(Didascalia).toString();
        p.drawText(posto, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   striscia.fontMetrics().elidedText(testo, Qt::ElideRight, posto.width()));
    });
}

} // namespace

void ModuloGrafica::Decora(QWidget &form)
{
    Sfondo(form, Colori::Finestra);
    DecoraDentro(form, form);
}

void ModuloGrafica::DisegnaPannello(PictureBox &pannello)
{
    Segui(pannello, Bordo);
    Bordo(pannello);
}

void ModuloGrafica::DisegnaIntestazione(PictureBox &striscia, const QString &didascalia)
{
    striscia.setProperty(Didascalia, didascalia);
    striscia.setAccessibleName(didascalia);
    Segui(striscia, Striscia);
    Striscia(striscia);
    striscia.show();
}
