#pragma once

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

} // namespace Domande
