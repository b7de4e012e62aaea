#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <string_view>
#include <unordered_set>
#include <vector>

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
    /// Adds a finding in a text of \a lunghezza units; false when its message is there already. Constant time.
    bool Aggiungi(const Riscontro &riscontro, qsizetype lunghezza);

    /// One line of the results window.
    struct Voce {
        QString testo;     ///< the message on one line
        int posizione = 0; ///< where a click leads
        int risultato = 0; ///< slot of the finding
        bool operator==(const Voce &) const = default;
    };
    /// The findings whose quoted name stands in \a pagina, in any case. A name is looked for where it was found, there
    /// moved by one edit, and only then in the page; one that the page did not hold the last time, in what has changed
    /// since. All names together cost one pass.
    [[nodiscard]] QList<Voce> Visibili(const QString &pagina);

private:
    struct Impronta {
        using is_transparent = void;
        size_t operator()(QStringView testo) const { return qHash(testo); }
    };
    struct Uguale {
        using is_transparent = void;
        bool operator()(QStringView a, QStringView b) const { return a == b; }
    };

    QList<RisultatoControllo> m_risultati;
    std::vector<qsizetype> m_lunghezze; ///< of the checked text, per slot
    std::vector<char> m_assenti;        ///< per slot: m_cercata does not hold the name
    QString m_cercata;                  ///< the page in which names were looked for last
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
