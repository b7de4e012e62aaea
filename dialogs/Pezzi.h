#pragma once

#include <QString>
#include <QtGlobal>

class PictureBox;
class QLabel;
class QPushButton;
class QWidget;

/// The pieces that dialogs are put together from.
namespace Pezzi
{

/// A control with its object name.
template <typename Controllo>
[[nodiscard]] Controllo *Crea(const QString &nome, QWidget *parent)
{
    auto *controllo = new Controllo(parent);
    controllo->setObjectName(nome);
    return controllo;
}

/// The label of \a amico, with message \a messaggio as its text; its mnemonic leads to \a amico.
[[nodiscard]] QLabel *Titolo(qint16 messaggio, QWidget *amico, QWidget *parent);

/// A standard dialog button.
[[nodiscard]] QPushButton *Pulsante(const QString &nome, const QString &testo, QWidget *parent);

/// Fills \a contenitore with the panel \a nome under the header strip \a striscia, which shows message \a messaggio.
[[nodiscard]] PictureBox *Pannello(const QString &nome, const QString &striscia, qint16 messaggio,
                                   QWidget *contenitore);

} // namespace Pezzi
