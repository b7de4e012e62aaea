#include "app/FileAperto.h"

void FileAperto::Letta(const QString &percorso, const FotoFile &foto, bool intera)
{
    m_percorso = percorso;
    Scritta(foto);
    m_intera = intera;
}

void FileAperto::Scritta(const FotoFile &foto)
{
    m_foto = m_vista = foto;
    m_intera = true;
    m_detta.reset();
    m_consenso = false;
}

Mutamento FileAperto::Guarda()
{
    m_vista = FotoFile::Scatta(m_percorso, {&m_foto, m_detta ? &*m_detta : &m_foto});
    const Mutamento mutamento = Confronta(m_foto, m_vista);
    if (mutamento == Mutamento::Nessuno) {
        m_foto = m_vista; // a later time of the same content; it may be written to again
        if (m_intera)
            m_detta.reset();
        return m_intera ? Mutamento::Nessuno : Mutamento::LettaInParte;
    }
    return mutamento;
}

Mutamento FileAperto::Novita()
{
    const Mutamento mutamento = Guarda();
    // That not all of it could be read was told when it was opened.
    if (mutamento == Mutamento::LettaInParte)
        return Mutamento::Nessuno;
    return m_detta && Confronta(*m_detta, m_vista) == Mutamento::Nessuno ? Mutamento::Nessuno : mutamento;
}

Mutamento FileAperto::Ostacolo()
{
    const Mutamento mutamento = Guarda();
    const bool noto = m_consenso && m_detta && Confronta(*m_detta, m_vista) == Mutamento::Nessuno;
    return noto ? Mutamento::Nessuno : mutamento;
}

bool FileAperto::Altra() const
{
    const Mutamento mutamento = Confronta(m_foto, m_vista);
    return mutamento != Mutamento::Nessuno && mutamento != Mutamento::SolaLettura;
}

void FileAperto::Detto(bool consenso)
{
    m_detta = m_vista;
    m_consenso = consenso;
}
