#include "app/OffertaRecupero.h"

#include "app/TabellaLingua.h"
#include "platform/NomiFile.h"

#include <QApplication>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

enum class Risposta { Recupera, Scarta, Dopo };

/// The time is written by hand: Qt 6.4 does not know the words for parts of the day that some languages' formats ask
/// for. Date and time stay on one line.
QString Quando(const QDateTime &quando)
{
    return QLocale().toString(quando.date(), QLocale::ShortFormat) + QChar(QChar::Nbsp) +
           quando.time().toString(u"HH:mm"_s);
}

Risposta Domanda(QWidget *finestra, const VoceRecupero &pagina)
{
    const QString nome = pagina.FileCorrente.isEmpty() ? Messaggio(216) : NomiFile::Leggibile(pagina.FileCorrente);
    QMessageBox domanda(QMessageBox::Question, QApplication::applicationName(),
                        Messaggio(213).arg(nome, Quando(pagina.quando)), QMessageBox::NoButton, finestra);
    domanda.setObjectName(u"DomandaRecupero"_s);
    domanda.setTextFormat(Qt::PlainText);
    const QAbstractButton *recupera = domanda.addButton(Messaggio(211), QMessageBox::AcceptRole);
    const QAbstractButton *scarta = domanda.addButton(Messaggio(212), QMessageBox::DestructiveRole);
    domanda.addButton(Messaggio(278), QMessageBox::RejectRole); // Escape's answer: nothing is lost by it
    domanda.exec();
    if (domanda.clickedButton() == recupera)
        return Risposta::Recupera;
    return domanda.clickedButton() == scarta ? Risposta::Scarta : Risposta::Dopo;
}

} // namespace

std::optional<PaginaRecuperata> OffertaRecupero::Chiedi(QWidget *finestra,
                                                        const std::function<void(const PaginaRecuperata &)> &prendi)
{
    for (VoceRecupero &voce : Recupero::DaOffrire()) {
        const Risposta risposta = Domanda(finestra, voce);
        if (risposta == Risposta::Dopo)
            continue;
        std::optional<PaginaRecuperata> pagina;
        if (risposta == Risposta::Recupera) {
            pagina = Recupero::Leggi(voce);
            if (!pagina) // it was whole a moment ago: it stays for another start
                continue;
            prendi(*pagina);
        }
        Recupero::Scarta(std::move(voce));
        if (risposta == Risposta::Recupera)
            return pagina;
    }
    return std::nullopt;
}
