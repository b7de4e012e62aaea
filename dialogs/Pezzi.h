#pragma once

#include <QGuiApplication>
#include <QMessageBox>

class PictureBox;
class QHBoxLayout;
class QLabel;
class QPushButton;

/// The pieces that dialogs are put together from, and what they all do.
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

/// Message \a messaggio as an accessible name: without its mnemonic, "&" or, in Chinese, "(&F)".
[[nodiscard]] QString NomeDa(qint16 messaggio);

struct Pulsanti {
    QPushButton *conferma = nullptr; ///< "Cmd(0)", the default button
    QPushButton *esci = nullptr;     ///< "Cmd(1)"
    QHBoxLayout *riga = nullptr;
};
/// The standard buttons of \a dialogo, at the right of their row: OK, and one with message \a messaggio that rejects
/// the dialog.
[[nodiscard]] Pulsanti CreaPulsanti(QDialog *dialogo, qint16 messaggio);

/// Fills \a contenitore with the panel \a nome under the header strip \a striscia, which shows message \a messaggio.
[[nodiscard]] PictureBox *Pannello(const QString &nome, const QString &striscia, qint16 messaggio,
                                   QWidget *contenitore);

/// A message with OK alone over \a finestra, which may go while it is open. Both texts are shown as they stand, file
/// names with "<" too; \a dettaglio, in smaller letters, may be empty.
void MostraMessaggio(QWidget *finestra, QMessageBox::Icon icona, const QString &testo, const QString &dettaglio = {});

/// Shows the hour-glass as long as it lives.
class CursoreAttesa
{
public:
    CursoreAttesa() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CursoreAttesa() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(CursoreAttesa)
};

} // namespace Pezzi
