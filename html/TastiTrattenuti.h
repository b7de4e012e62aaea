#pragma once

#include <QObject>

#include <vector>

class QKeyEvent;
class RichTextBox;

/// The keys that were pressed for a completion list and are still down. The list may close on the press; the page must
/// then see neither the key's release, which would count as a key released in the page, nor its repetitions.
class TastiTrattenuti : public QObject
{
public:
    /// The keys of \a editor; watches them from the first call on.
    static TastiTrattenuti &Di(RichTextBox *editor);

    void Premuto(const QKeyEvent &tasto);
    void Rilasciato(const QKeyEvent &tasto);

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    explicit TastiTrattenuti(RichTextBox *editor);
    [[nodiscard]] bool Contiene(quint64 tasto) const;

    std::vector<quint64> m_giu;
    quint64 m_ultimo = 0; ///< pressed last: only that one repeats
};
