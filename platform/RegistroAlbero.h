#pragma once

#include <QByteArray>
#include <QString>

#include <map>

namespace Registro
{

struct Valore {
    quint32 tipo = 0;
    QByteArray dati; ///< as stored, with the terminators that it has
};

/// The values of a registry by path and name, both in folded letter case. A path begins with its root's name and has
/// single separators; a key exists when it or one below it holds a value.
class Albero
{
public:
    /// Replaces a value of that name.
    void Imposta(QStringView chiave, QStringView nome, Valore valore);
    /// A text with its terminator.
    void ImpostaTesto(QStringView chiave, QStringView nome, QStringView testo);

    [[nodiscard]] bool Esiste(const QString &percorso) const;
    /// Null when there is none.
    [[nodiscard]] const Valore *Trova(const QString &percorso, QStringView nome) const;

    /// \a chiave as a path: folded case, no empty names. Linear.
    [[nodiscard]] static QString Percorso(QStringView chiave);

private:
    std::map<QString, std::map<QString, Valore>> m_chiavi;
};

} // namespace Registro
