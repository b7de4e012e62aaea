#include "app/Domande.h"

#include "app/TabellaLingua.h"
#include "dialogs/Pezzi.h"

#include <QApplication>
#include <QKeyEvent>

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
