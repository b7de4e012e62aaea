#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "chrome/TurnoStato.h"

class QLabel;

/// The owner of the first panel of the status bar: whatever is written there goes through it.
class PannelloStato : public QObject
{
    Q_OBJECT

public:
    /// \a etichetta outlives it.
    explicit PannelloStato(QLabel *etichetta);

    using Argomento = TurnoStato::Argomento;
    /// Something that has happened, and that the user must be able to read. Empty: the one told on this is over.
    void Fatto(const QString &testo, Argomento argomento = Argomento::Altro);
    /// The title of the page, the link under the mouse.
    void DiPassaggio(const QString &testo);

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void Mostra();

    QLabel *m_etichetta;
    TurnoStato m_turno;
    QElapsedTimer m_orologio;
    QTimer m_scadenza;
};
