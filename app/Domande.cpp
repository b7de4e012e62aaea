#include "app/Domande.h"

#include "app/TabellaLingua.h"
#include "dialogs/Pezzi.h"

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

/// A question that may come up while somebody types: keys that follow each other without a pause from before it was
/// there are no answer.
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
        return (tasto && !Conta()) || QMessageBox::eventFilter(oggetto, evento);
    }
    void keyPressEvent(QKeyEvent *evento) override
    {
        if (Conta())
            QMessageBox::keyPressEvent(evento);
    }

private:
    [[nodiscard]] bool Conta()
    {
        constexpr qint64 pausa = 500; // ms
        m_desta = m_desta || m_quiete.restart() >= pausa;
        return m_desta;
    }

    QElapsedTimer m_quiete;
    bool m_desta = false;
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

qint16 Domande::Scegli(QWidget *finestra, const QString &testo, const QList<qint16> &bottoni, qint16 rinuncia)
{
    const QPointer<DopoUnaPausa> domanda = new DopoUnaPausa(testo, finestra);
    domanda->setObjectName(u"Messaggio"_s);
    domanda->setTextFormat(Qt::PlainText);
    QHash<QAbstractButton *, qint16> numeri;
    for (const qint16 bottone : bottoni)
        numeri.insert(domanda->Aggiungi(bottone, QMessageBox::AcceptRole), bottone);
    QPushButton *ultimo = domanda->Aggiungi(rinuncia, QMessageBox::RejectRole);
    domanda->setEscapeButton(ultimo);
    domanda->exec();
    const qint16 scelto = domanda ? numeri.value(domanda->clickedButton(), rinuncia) : rinuncia;
    delete domanda.data();
    return scelto;
}
