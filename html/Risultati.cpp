#include "html/Risultati.h"

namespace ModuloVerificaSintassi
{

void Registro::Azzera()
{
    m_messaggi.clear();
    m_risultati = {RisultatoControllo()};
}

bool Registro::EsisteRisultato(QStringView testo) const
{
    return testo.isEmpty() || m_messaggi.contains(testo);
}

bool Registro::Aggiungi(const Riscontro &riscontro)
{
    const QString messaggio = TestoRiscontro(riscontro.riga, riscontro.tipo, riscontro.nome);
    if (!m_messaggi.insert(messaggio).second)
        return false;
    m_risultati.append({qint32(riscontro.posizione), qint32(riscontro.riga), riscontro.tipo, messaggio});
    return true;
}

Registro &RegistroPagina()
{
    static Registro registro;
    return registro;
}

const QList<RisultatoControllo> &ArrayRisultati()
{
    return RegistroPagina().Risultati();
}

bool EsisteRisultato(QStringView testo)
{
    return RegistroPagina().EsisteRisultato(testo);
}

void AzzeraRisultati()
{
    RegistroPagina().Azzera();
}

} // namespace ModuloVerificaSintassi
