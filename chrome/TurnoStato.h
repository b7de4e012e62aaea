#pragma once

#include <QString>

#include <optional>
#include <vector>

/// What the first panel of the status bar says, and for how long.
///
/// A text that tells of a fact stands until the user has done something and it could be read for five seconds; page
/// titles and links under the mouse wait, and the latest of them is shown then. A newer fact is shown at once; the one
/// that it covers comes back for the rest of its time. Times are milliseconds from any start, never going back.
class TurnoStato
{
public:
    /// What a fact is about. A newer one takes the place of the older one on the same thing, which holds no longer.
    enum class Argomento {
        Altro, ///< a thing of its own: covers others, takes no place
        Verifica,
        Lettura,  ///< how the page in hand was read
        Ricarica, ///< what the page in hand has taken the place of
        Anteprima
    };
    static constexpr qint64 Minimo = 5000; ///< ms

    /// An empty \a testo takes the fact on this thing back.
    void Fatto(const QString &testo, Argomento argomento, qint64 ora);
    void DiPassaggio(const QString &testo) { m_diPassaggio = testo; }
    /// The user has pressed a key or a mouse button.
    void Azione(qint64 ora);
    [[nodiscard]] const QString &Testo(qint64 ora);
    /// When the text changes if nobody does anything.
    [[nodiscard]] std::optional<qint64> Scadenza() const;

private:
    struct Voce {
        QString testo;
        Argomento argomento = Argomento::Altro;
        qint64 visto = 0;   ///< how long it has been shown, up to m_da
        bool agito = false; ///< the user has done something meanwhile
    };
    void Passa(qint64 ora);

    std::vector<Voce> m_fatti; ///< the last one is shown
    qint64 m_da = 0;           ///< since when
    QString m_diPassaggio;
};
