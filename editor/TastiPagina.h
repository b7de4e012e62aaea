#pragma once

#include <QObject>

struct EventoTasto;
class RichTextBox;

/// What the keys of the page do beyond typing: completion, closing tags, colours and the check of the tag at the caret.
class TastiPagina : public QObject
{
    Q_OBJECT

public:
    /// Watches \a pad, which outlives it or takes it along.
    explicit TastiPagina(RichTextBox *pad);

signals:
    void AnteprimaRichiesta(bool nascondi);

private:
    void Premuto(EventoTasto *tasto) const;
    void Rilasciato(const EventoTasto &tasto);
    void Spazio(const QString &tag);
    void Uguale(const QString &tag);
    void Minore(const QString &tag, const QString &attributo);
    void Verifica() const;

    RichTextBox *m_pad;
};
