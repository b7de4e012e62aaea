#include "app/Domande.h"

#include "app/TabellaLingua.h"
#include "dialogs/Pezzi.h"
#include "platform/TastiDopoDialogo.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace
{

/// A question that only its buttons answer: a stray Escape must not throw a page away.
class SoloBottoni : public QMessageBox
{
public:
    using QMessageBox::QMessageBox;

protected:
    void keyPressEvent(QKeyEvent *evento) override
    {
        if (evento->key() != Qt::Key_Escape)
            QMessageBox::keyPressEvent(evento);
    }
    void closeEvent(QCloseEvent *evento) override { evento->ignore(); }
    void reject() override {}
};

/// A question that may come up while somebody types. Keys that follow each other without a pause from before it was
/// there are no answer, and neither is what writes: they are kept for the page. Nobody types Enter, Escape or an arrow
/// after a pause, or a blank on a button that he went to, without looking.
class DopoUnaPausa : public QMessageBox
{
public:
    DopoUnaPausa(const QString &testo, QWidget *finestra)
        : QMessageBox(QMessageBox::Question, QApplication::applicationName(), testo, QMessageBox::NoButton, finestra)
    {
        m_quiete.start();
    }
    QPushButton *Aggiungi(qint16 messaggio, QMessageBox::ButtonRole ruolo)
    {
        QPushButton *bottone = addButton(ModuloPrincipale::Messaggio(messaggio), ruolo);
        bottone->installEventFilter(this);
        return bottone;
    }
    [[nodiscard]] TastiDopoDialogo::Tasti &Scritti() { return m_scritti; }

protected:
    bool event(QEvent *evento) override
    {
        // To draw it for the first time may take as long as the pause.
        if (evento->type() == QEvent::WindowActivate || evento->type() == QEvent::Paint)
            m_quiete.start();
        return QMessageBox::event(evento);
    }
    bool eventFilter(QObject *oggetto, QEvent *evento) override
    {
        const bool tasto = evento->type() == QEvent::KeyPress || evento->type() == QEvent::KeyRelease;
        return (tasto && Tiene(static_cast<QKeyEvent &>(*evento))) || QMessageBox::eventFilter(oggetto, evento);
    }
    void keyPressEvent(QKeyEvent *evento) override
    {
        if (!Tiene(*evento))
            QMessageBox::keyPressEvent(evento);
    }
    void keyReleaseEvent(QKeyEvent *evento) override
    {
        if (!Tiene(*evento))
            QMessageBox::keyReleaseEvent(evento);
    }

private:
    /// Whether \a tasto is no answer; it is kept then.
    [[nodiscard]] bool Tiene(const QKeyEvent &tasto)
    {
        constexpr qint64 pausa = 500; // ms
        constexpr Qt::KeyboardModifiers comando = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
        const bool risponde =
            m_desta || m_quiete.hasExpired(pausa) || (tasto.key() == Qt::Key_Escape && m_scritti.empty());
        m_quiete.restart();
        const QString testo = tasto.text();
        const bool scrive = !(tasto.modifiers() & comando) && !testo.isEmpty() && testo[0].isPrint();
        const bool preme = tasto.key() == Qt::Key_Space && m_mossa;
        if (tasto.type() == QEvent::KeyPress) {
            m_desta = risponde && (!scrive || preme);
            m_mossa = m_desta && (m_mossa || Muove(tasto.key()));
        }
        // The release of what went down before writes nothing.
        if (!m_desta && (tasto.type() == QEvent::KeyPress || !m_scritti.empty()))
            m_scritti.emplace_back(tasto.clone());
        return !m_desta;
    }
    [[nodiscard]] static bool Muove(int tasto)
    {
        return tasto == Qt::Key_Tab || tasto == Qt::Key_Backtab || (tasto >= Qt::Key_Left && tasto <= Qt::Key_Down);
    }

    QElapsedTimer m_quiete;
    TastiDopoDialogo::Tasti m_scritti;
    bool m_desta = false; ///< keys answer
    bool m_mossa = false; ///< the user went to a button
};

} // namespace

void Domande::Informa(QWidget *finestra, const QString &testo)
{
    Pezzi::MostraMessaggio(finestra, QMessageBox::Information, testo);
}

void Domande::Avverti(QWidget *finestra, const QString &testo, const QString &dettaglio)
{
    Pezzi::MostraMessaggio(finestra, QMessageBox::Warning, testo, dettaglio);
}

void Domande::Semplice(QWidget *finestra, const QString &testo)
{
    Pezzi::MostraMessaggio(finestra, QMessageBox::NoIcon, testo);
}

void Domande::Critico(QWidget *finestra, const QString &testo)
{
    Pezzi::MostraMessaggio(finestra, QMessageBox::Critical, testo);
}

bool Domande::ChiediConferma(QWidget *finestra)
{
    SoloBottoni domanda(QMessageBox::Question, QApplication::applicationName(), ModuloPrincipale::Messaggio(86),
                        QMessageBox::Yes | QMessageBox::No, finestra);
    domanda.setObjectName(u"Messaggio"_s);
    domanda.setDefaultButton(QMessageBox::Yes);
    return domanda.exec() == QMessageBox::Yes;
}

qint16 Domande::Scegli(QWidget *finestra, const QString &testo, const QList<qint16> &bottoni, qint16 rinuncia,
                       qint16 predefinito)
{
    const QPointer<DopoUnaPausa> domanda = new DopoUnaPausa(testo, finestra);
    domanda->setObjectName(u"Messaggio"_s);
    domanda->setTextFormat(Qt::PlainText);
    QHash<QAbstractButton *, qint16> numeri;
    for (const qint16 bottone : bottoni)
        numeri.insert(domanda->Aggiungi(bottone, QMessageBox::AcceptRole), bottone);
    QPushButton *ultimo = domanda->Aggiungi(rinuncia, QMessageBox::RejectRole);
    domanda->setEscapeButton(ultimo);
    domanda->setDefaultButton(qobject_cast<QPushButton *>(numeri.key(predefinito, ultimo)));
    domanda->exec();
    if (!domanda)
        return rinuncia;
    const qint16 scelto = numeri.value(domanda->clickedButton(), rinuncia);
    TastiDopoDialogo::Restituisci(finestra, std::move(domanda->Scritti()));
    delete domanda.data();
    return scelto;
}
