#include "app/OffertaRecupero.h"

#include "app/Domande.h"
#include "app/TabellaLingua.h"
#include "platform/NomiFile.h"

#include <QLocale>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

// Buttons.
constexpr qint16 Recupera = 211;
constexpr qint16 Scarta = 212;
constexpr qint16 Dopo = 278; // Escape's answer: nothing is lost by it

/// The time is written by hand: Qt 6.4 does not know the words for parts of the day that some languages' formats ask
/// for. Date and time stay on one line.
QString Quando(const QDateTime &quando)
{
    return QLocale().toString(quando.date(), QLocale::ShortFormat) + QChar(QChar::Nbsp) +
           quando.time().toString(u"HH:mm"_s);
}

/// Who types at once at the start means the page.
qint16 Domanda(QWidget *finestra, const VoceRecupero &pagina)
{
    const QString nome = pagina.FileCorrente.isEmpty() ? Messaggio(216) : NomiFile::Leggibile(pagina.FileCorrente);
    return Domande::Scegli(finestra, Messaggio(213).arg(nome, Quando(pagina.quando)), {Recupera, Scarta}, Dopo,
                           Recupera);
}

} // namespace

std::optional<PaginaRecuperata> OffertaRecupero::Chiedi(QWidget *finestra,
                                                        const std::function<void(const PaginaRecuperata &)> &prendi)
{
    for (VoceRecupero &voce : Recupero::DaOffrire()) {
        const qint16 risposta = Domanda(finestra, voce);
        if (risposta == Dopo)
            continue;
        std::optional<PaginaRecuperata> pagina;
        if (risposta == Recupera) {
            pagina = Recupero::Leggi(voce);
            if (!pagina) // it was whole a moment ago: it stays for another start
                continue;
            prendi(*pagina);
        }
        Recupero::Scarta(std::move(voce));
        if (risposta == Recupera)
            return pagina;
    }
    return std::nullopt;
}
