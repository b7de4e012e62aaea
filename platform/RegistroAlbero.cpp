#include "platform/RegistroAlbero.h"

using namespace Qt::StringLiterals;

namespace Registro
{

void Albero::Imposta(QStringView chiave, QStringView nome, Valore valore)
{
    m_chiavi[Percorso(chiave)][nome.toString().toCaseFolded()] = std::move(valore);
}

void Albero::ImpostaTesto(QStringView chiave, QStringView nome, QStringView testo)
{
    Imposta(chiave, nome, {1, testo.toUtf8() + '\0'});
}

bool Albero::Esiste(const QString &percorso) const
{
    if (m_chiavi.contains(percorso))
        return true;
    const QString inizio = percorso + u'\\';
    const auto sotto = m_chiavi.lower_bound(inizio);
    return sotto != m_chiavi.end() && sotto->first.startsWith(inizio);
}

const Valore *Albero::Trova(const QString &percorso, QStringView nome) const
{
    const auto chiave = m_chiavi.find(percorso);
    if (chiave == m_chiavi.end())
        return nullptr;
    const auto valore = chiave->second.find(nome.toString().toCaseFolded());
    return valore == chiave->second.end() ? nullptr : &valore->second;
}

QString Albero::Percorso(QStringView chiave)
{
    QString percorso;
    percorso.reserve(chiave.size());
    for (const QStringView nome : chiave.tokenize(u'\\', Qt::SkipEmptyParts)) {
        if (!percorso.isEmpty())
            percorso += u'\\';
        percorso += nome.toString().toCaseFolded();
    }
    return percorso;
}

} // namespace Registro
