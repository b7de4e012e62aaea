#pragma once

#include "platform/RichTextBox.h"

#include <QHash>
#include <QKeyEvent>
#include <QObject>
#include <QSet>

#include <memory>

/// What the keys of the page do beyond typing: completion, closing tags, colours and the check of the tag at the caret.
/// Most of it happens when a key is released. Quick fingers press the next key before that: the key that is still down
/// then counts as released first, so that the page does not depend on the speed of typing.
class TastiPagina : public QObject
{
    Q_OBJECT

public:
    /// Watches \a pad, which outlives it or takes it along.
    explicit TastiPagina(RichTextBox *pad);

signals:
    void AnteprimaRichiesta(bool nascondi);

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    void customEvent(QEvent *evento) override;

private:
    bool PrimaIlRilascio(const QKeyEvent &tasto);
    void Premuto(EventoTasto *tasto) const;
    void Rilasciato(const EventoTasto &tasto);
    void Spazio(const QString &tag);
    void Uguale(const QString &tag);
    void Minore(const QString &tag, const QString &attributo);
    void Verifica() const;

    RichTextBox *m_pad;
    QHash<quint64, EventoTasto> m_giu;    ///< keys that are down, as they were pressed
    QSet<quint64> m_gia;                  ///< keys that are down and have counted as released already
    std::unique_ptr<QKeyEvent> m_sospeso; ///< the press that waits for what the release before it does
};
