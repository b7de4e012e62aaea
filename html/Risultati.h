#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <unordered_set>

#include "html/Scansione.h"
#include "html/TestoRiscontro.h"

namespace ModuloVerificaSintassi
{

/// One finding of the check.
struct RisultatoControllo {
    qint32 Posizione = 0; ///< caret position of the name or value, in the text as it was checked
    qint32 Riga = 0;      ///< 1-based
    qint32 Tipo = 0;      ///< TipoRisultato
    QString Testo;        ///< the message, in the language of the interface
};

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
    std::unordered_set<QString, Impronta, Uguale> m_messaggi;
};

/// What all checks of the one page have found since it was opened, whether or not it still stands there.
[[nodiscard]] Registro &RegistroPagina();

/// Its slots: 0 is empty, findings follow.
[[nodiscard]] const QList<RisultatoControllo> &ArrayRisultati();
[[nodiscard]] bool EsisteRisultato(QStringView testo);
/// At start-up and whenever a page is opened.
void AzzeraRisultati();

} // namespace ModuloVerificaSintassi
