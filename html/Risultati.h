#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <unordered_set>
#include <vector>

#include "html/LettorePagina.h"
#include "html/Scansione.h"

namespace ModuloVerificaSintassi
{

/// One finding of the check.
struct RisultatoControllo {
    qint32 Posizione = 0; ///< caret position of the name or value, in the text as it was checked
    qint32 Riga = 0;      ///< 1-based
    qint32 Tipo = 0;      ///< TipoRisultato
    QString Testo;        ///< the message, in the language of the interface
};

/// A message quotes at most so many units of a name: a tag of a megabyte is still one line of the list.
inline constexpr qsizetype MassimoNome = 500;

/// Findings in the order in which they were made, each message once.
class Registro
{
public:
    Registro() { Azzera(); }

    /// Leaves slot 0 only, which is empty.
    void Azzera();
    [[nodiscard]] const QList<RisultatoControllo> &Risultati() const { return m_risultati; }
    /// Constant time, whatever the number of findings.
    [[nodiscard]] bool EsisteRisultato(QStringView testo) const;
    /// Adds a finding; false when its message is there already. Constant time.
    bool Aggiungi(const Riscontro &riscontro);

    /// One line of the results window.
    struct Voce {
        QString testo;     ///< the message on one line
        int posizione = 0; ///< where a click leads
        int risultato = 0; ///< slot of the finding
        bool operator==(const Voce &) const = default;
    };
    /// The findings whose quoted name stands in \a pagina, in any case. \a cambiamento is what has become of the page
    /// since the last call; without one it may be any other page. The list shares its data with that of the last call
    /// when both are the same.
    ///
    /// The place of each name is remembered and moves with the changes, so a change costs time in proportion to itself
    /// and to the findings. Names that it broke, and those of new findings that do not stand where they were found, are
    /// looked for in the whole page, all in one pass.
    const QList<Voce> &Visibili(const LettorePagina &pagina, const std::optional<Cambiamento> &cambiamento);
    const QList<Voce> &Visibili(const QString &pagina, const std::optional<Cambiamento> &cambiamento = std::nullopt);

private:
    struct Impronta {
        using is_transparent = void;
        size_t operator()(QStringView testo) const { return qHash(testo); }
    };
    struct Uguale {
        using is_transparent = void;
        bool operator()(QStringView a, QStringView b) const { return a == b; }
    };

    /// Where a finding's name stands.
    struct Posto {
        enum Stato : char {
            Nuovo,   ///< not known yet
            Trovato, ///< at dove
            Perso,   ///< a change broke the one that was known
            Assente  ///< nowhere
        } stato = Nuovo;
        bool visibile = false; ///< in m_voci
        int quanti = -1;       ///< length of the name, -1: the message quotes none
        int nome = 0;          ///< where the name begins in riga
        QString riga;          ///< the message on one line
        qsizetype dove = 0;

        [[nodiscard]] QStringView Nome() const { return QStringView(riga).sliced(nome, quanti); }
    };

    [[nodiscard]] static Posto PostoDi(const QString &messaggio);
    void Sposta(const Cambiamento &cambiamento);
    void Cerca(const LettorePagina &pagina, const Cambiamento &cambiamento);
    void AggiornaVoci();

    QList<RisultatoControllo> m_risultati;
    std::vector<Posto> m_posti; ///< per slot
    QList<Voce> m_voci;
    std::unordered_set<QString, Impronta, Uguale> m_messaggi;
    QString m_prova;
};

/// The findings of the one page.
[[nodiscard]] Registro &RegistroPagina();

/// Its slots: 0 is empty, findings follow.
[[nodiscard]] const QList<RisultatoControllo> &ArrayRisultati();
[[nodiscard]] bool EsisteRisultato(QStringView testo);
/// At start-up and whenever a page is opened.
void AzzeraRisultati();

} // namespace ModuloVerificaSintassi
