#pragma once

#include <QList>
#include <QString>

#include <vector>

namespace ModuloTag
{

/// Upper-case words, each with a number from 0 in the order in which they came. Looking one up takes time in its own
/// length only and, as long as it is ASCII, no memory.
class TabellaParole
{
public:
    static constexpr int Assente = -1;

    /// The number of \a maiuscola, which is taken in when it is new.
    int Aggiungi(const QString &maiuscola);

    /// The number of the word that equals the upper case of \a parola, or Assente.
    [[nodiscard]] int Cerca(QStringView parola) const;

private:
    struct Posto {
        quint32 impronta = 0;
        int numero = Assente;
    };

    [[nodiscard]] int CercaMaiuscola(QStringView maiuscola) const;
    void Allarga();

    std::vector<Posto> m_posti; ///< a power of two, at most half of them taken
    QList<QString> m_parole;
    qsizetype m_massimo = 0; ///< length of the longest word
};

} // namespace ModuloTag
