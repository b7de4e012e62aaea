#pragma once

#include <optional>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringView>

/// How much a renderer has to paint when it follows every reference of a drawing.
class AlberoSvg
{
public:
    static constexpr int MassimaAltezza = 512;       ///< nested elements, through references too
    static constexpr qint64 MassimoLavoro = 100'000; ///< elements painted

    /// An element begins, inside the one that is open.
    void Apri(qint64 peso);
    /// More to paint in the open element.
    void Aggiungi(qint64 peso);
    /// The open element is called \a id.
    void Chiama(const QString &id);
    /// Takes note of the references ("#id") in an attribute's value.
    void Riferimenti(QStringView valore);
    void Chiudi();

    /// False once the tree is too deep to go on.
    [[nodiscard]] bool Accettabile() const { return int(m_aperti.size()) <= MassimaAltezza; }
    /// What painting the whole costs; none when it is over the limits or an element refers to itself.
    [[nodiscard]] std::optional<qint64> Lavoro();

private:
    struct Elemento {
        qint64 peso = 0;
        std::vector<int> sotto; ///< children and targets of references
        std::vector<QString> riferiti;
        int altezza = 0; ///< 0: not yet known
        bool incorso = false;
    };
    [[nodiscard]] bool Misura(int elemento, int livello);

    std::vector<Elemento> m_elementi;
    std::vector<int> m_aperti;
    QHash<QString, int> m_nomi;
};
