#pragma once

#include <QList>
#include <QString>

class QWidget;

/// The program's message boxes. Each is modal to \a finestra and has the object name "Messaggio".
namespace Domande
{

void Informa(QWidget *finestra, const QString &testo);
/// \a dettaglio: the system's own words, shown below; may be empty.
void Avverti(QWidget *finestra, const QString &testo, const QString &dettaglio = {});
/// Without an icon.
void Semplice(QWidget *finestra, const QString &testo);
void Critico(QWidget *finestra, const QString &testo);

/// The save question, Yes or No; true on Yes. Neither Escape nor the close box answers it.
[[nodiscard]] bool ChiediConferma(QWidget *finestra);

/// A question with buttons of its own, given by the numbers of their texts; the number of the chosen one. \a rinuncia
/// is the last button, which Escape and the close box stand for too; Enter stands for \a predefinito, else for that
/// as well. Who was typing when it came up answers
/// nothing by that: keys count from the first pause on, what writes never does, and all that is no answer reaches
/// \a finestra afterwards.
[[nodiscard]] qint16 Scegli(QWidget *finestra, const QString &testo, const QList<qint16> &bottoni, qint16 rinuncia,
                            qint16 predefinito = 0);

} // namespace Domande
