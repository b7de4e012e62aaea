#pragma once

#include "html/LuogoTag.h"
#include "platform/RichTextBox.h"

#include <QHash>
#include <QKeyEvent>
#include <QObject>
#include <QSet>

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

private:
    bool PrimaIlRilascio(const QKeyEvent &tasto);
    void Premuto(EventoTasto *tasto) const;
    void Rilasciato(const EventoTasto &tasto);
    void Spazio(const LetturaTag::Luogo &luogo);
    void Uguale(const LetturaTag::Luogo &luogo);
    void Minore(const LetturaTag::Luogo &luogo);
    void Verifica() const;

    RichTextBox *m_pad;
    QHash<quint64, EventoTasto> m_giu; ///< keys that are down, as they were pressed
    QSet<quint64> m_gia;               ///< keys that are down and have counted as released already
};
