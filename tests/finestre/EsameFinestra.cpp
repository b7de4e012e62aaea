#include "EsameFinestra.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{

template <typename... T>
bool Uno(const QWidget &w)
{
    return (qobject_cast<const T *>(&w) || ...);
}

/// Controls whose inside is Qt's.
bool EComposto(const QWidget &w)
{
    return Uno<QAbstractScrollArea, QComboBox, QAbstractSpinBox, QLineEdit, QMenuBar, QMenu>(w);
}

QString Nome(const QWidget &w)
{
    return w.objectName().isEmpty() ? QString::fromLatin1(w.metaObject()->className()) : w.objectName();
}

/// The visible controls of a window, parents before their children.
void Raccogli(const QWidget &sopra, QList<const QWidget *> &tutti)
{
    for (const auto *figlio : sopra.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (figlio->isWindow() || !figlio->isVisible())
            continue;
        tutti += figlio;
        if (!EComposto(*figlio))
            Raccogli(*figlio, tutti);
    }
}

template <typename Opzione, typename Controllo>
Opzione StileDi(const Controllo &controllo)
{
    Opzione opzione;
    opzione.initFrom(&controllo);
    return opzione;
}

/// The room for the text of a button-like control; the text's own size beside it.
bool Entra(const QAbstractButton &bottone, QStyle::SubElement dove)
{
    auto opzione = StileDi<QStyleOptionButton>(bottone);
    opzione.text = bottone.text();
    opzione.icon = bottone.icon();
    const QRect posto = bottone.style()->subElementRect(dove, &opzione, &bottone);
    const QSize testo = bottone.fontMetrics().size(Qt::TextShowMnemonic, bottone.text());
    const int icona = bottone.icon().isNull() ? 0 : bottone.iconSize().width() + 4;
    return testo.width() + icona <= posto.width() && testo.height() <= posto.height();
}

bool Entra(const QLabel &etichetta)
{
    if (etichetta.text().isEmpty() || etichetta.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
        return true;
    if (etichetta.wordWrap())
        return etichetta.heightForWidth(etichetta.width()) <= etichetta.height();
    const QSize serve = etichetta.sizeHint();
    return serve.width() <= etichetta.width() && serve.height() <= etichetta.height();
}

bool TestoEntra(const QWidget &w)
{
    if (const auto *etichetta = qobject_cast<const QLabel *>(&w))
        return Entra(*etichetta);
    if (const auto *bottone = qobject_cast<const QPushButton *>(&w))
        return Entra(*bottone, QStyle::SE_PushButtonContents);
    if (const auto *casella = qobject_cast<const QCheckBox *>(&w))
        return Entra(*casella, QStyle::SE_CheckBoxContents);
    if (const auto *opzione = qobject_cast<const QRadioButton *>(&w))
        return Entra(*opzione, QStyle::SE_RadioButtonContents);
    if (const auto *gruppo = qobject_cast<const QGroupBox *>(&w))
        return gruppo->minimumSizeHint().width() <= gruppo->width();
    if (const auto *bottone = qobject_cast<const QToolButton *>(&w))
        return bottone->toolButtonStyle() == Qt::ToolButtonIconOnly || bottone->sizeHint().width() <= bottone->width();
    if (const auto *elenco = qobject_cast<const QComboBox *>(&w)) {
        auto opzione = StileDi<QStyleOptionComboBox>(*elenco);
        const QRect posto =
            elenco->style()->subControlRect(QStyle::CC_ComboBox, &opzione, QStyle::SC_ComboBoxEditField, elenco);
        const bool icona = !elenco->itemIcon(elenco->currentIndex()).isNull();
        return elenco->fontMetrics().horizontalAdvance(elenco->currentText()) +
                   (icona ? elenco->iconSize().width() + 4 : 0) <=
               posto.width();
    }
    // The caption of a panel is drawn by the strip itself, which shortens it.
    if (const QString didascalia = w.property("didascalia").toString(); !didascalia.isEmpty())
        return w.fontMetrics().horizontalAdvance(didascalia) <= w.width() - 16;
    return true;
}

void EsaminaPosti(const QWidget &finestra, const QList<const QWidget *> &tutti, QStringList &difetti)
{
    for (qsizetype i = 0; i < tutti.size(); ++i) {
        const QWidget &w = *tutti[i];
        if (!w.parentWidget()->rect().contains(w.geometry()) && w.parentWidget()->size() != QSize())
            difetti += u"%1 leaves %2"_s.arg(Nome(w), Nome(*w.parentWidget()));
        for (qsizetype j = i + 1; j < tutti.size(); ++j) {
            if (tutti[j]->parentWidget() == w.parentWidget() && tutti[j]->geometry().intersects(w.geometry()))
                difetti += u"%1 and %2 overlap"_s.arg(Nome(w), Nome(*tutti[j]));
        }
    }
    if (finestra.minimumSizeHint().width() > finestra.width())
        difetti += u"%1 is narrower than its contents"_s.arg(Nome(finestra));
}

bool PrendeTab(const QWidget &w)
{
    return w.isEnabled() && (w.focusPolicy() & Qt::TabFocus) && !w.focusProxy();
}

void EsaminaNomi(const QList<const QWidget *> &tutti, QStringList &difetti)
{
    for (const QWidget *w : tutti) {
        if (!(w->focusPolicy() & Qt::TabFocus) && !qobject_cast<const QAbstractButton *>(w))
            continue;
        QAccessibleInterface *voce = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(w));
        if (!voce || voce->text(QAccessible::Name).trimmed().isEmpty())
            difetti += u"%1 has no accessible name"_s.arg(Nome(*w));
    }
}

void EsaminaLettere(const QList<std::pair<QString, QString>> &testi, QStringList &difetti)
{
    QHash<QString, QString> prese;
    for (const auto &[nome, testo] : testi) {
        const QString lettera = QKeySequence::mnemonic(testo).toString();
        if (lettera.isEmpty())
            continue;
        if (prese.contains(lettera))
            difetti += u"%1 and %2 share %3"_s.arg(prese[lettera], nome, lettera);
        prese.insert(lettera, nome);
    }
}

QList<std::pair<QString, QString>> ConLettera(const QWidget &finestra, const QList<const QWidget *> &tutti)
{
    QList<std::pair<QString, QString>> testi;
    QList<QAction *> azioni = qobject_cast<const QMenu *>(&finestra) ? finestra.actions() : QList<QAction *>();
    for (const QWidget *w : tutti) {
        if (const auto *bottone = qobject_cast<const QAbstractButton *>(w))
            testi.emplaceBack(Nome(*w), bottone->text());
        else if (const auto *etichetta = qobject_cast<const QLabel *>(w); etichetta && etichetta->buddy())
            testi.emplaceBack(Nome(*w), etichetta->text());
        else if (const auto *gruppo = qobject_cast<const QGroupBox *>(w))
            testi.emplaceBack(Nome(*w), gruppo->title());
        else if (qobject_cast<const QMenuBar *>(w))
            azioni += w->actions();
    }
    for (const QAction *azione : std::as_const(azioni))
        testi.emplaceBack(azione->objectName(), azione->text());
    return testi;
}

// The next control may stand lower, or further right, but not wholly above in the same column nor to the left in the
// same row.
void EsaminaOrdine(const QWidget &finestra, const QList<const QWidget *> &tutti, QStringList &difetti)
{
    QList<const QWidget *> catena;
    for (const QWidget *w = finestra.nextInFocusChain(); w && w != &finestra; w = w->nextInFocusChain()) {
        if (tutti.contains(w) && PrendeTab(*w))
            catena += w;
    }
    for (qsizetype i = 1; i < catena.size(); ++i) {
        const QRect prima(catena[i - 1]->mapTo(&finestra, QPoint(0, 0)), catena[i - 1]->size());
        const QRect dopo(catena[i]->mapTo(&finestra, QPoint(0, 0)), catena[i]->size());
        const bool stessaRiga = dopo.top() <= prima.bottom() && prima.top() <= dopo.bottom();
        const bool indietro = stessaRiga ? dopo.right() < prima.left() : dopo.bottom() < prima.top();
        if (indietro && (stessaRiga || dopo.left() <= prima.right()))
            difetti += u"Tab jumps back from %1 to %2"_s.arg(Nome(*catena[i - 1]), Nome(*catena[i]));
    }
}

} // namespace

QStringList EsameFinestra::Difetti(const QWidget &finestra)
{
    QStringList difetti;
    QList<const QWidget *> tutti;
    Raccogli(finestra, tutti);
    for (const QWidget *w : std::as_const(tutti)) {
        if (!TestoEntra(*w))
            difetti += u"the text of %1 is cut"_s.arg(Nome(*w));
    }
    EsaminaPosti(finestra, tutti, difetti);
    EsaminaNomi(tutti, difetti);
    EsaminaLettere(ConLettera(finestra, tutti), difetti);
    // A window frame with inner windows has an order in each of them.
    if (!finestra.inherits("QMainWindow"))
        EsaminaOrdine(finestra, tutti, difetti);
    return difetti;
}
