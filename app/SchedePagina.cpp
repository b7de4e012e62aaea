#include "app/SchedePagina.h"

#include <utility>

QString SchedePagina::File() const
{
    return Corrente().file == m_ultimo ? m_ultimo : QString();
}

QString SchedePagina::AltroPosto() const
{
    const SchedaPagina &scheda = Corrente();
    return scheda.salvata.isEmpty() && scheda.file != m_ultimo ? scheda.file : scheda.salvata;
}

void SchedePagina::Apri(const QString &file, const QString &testo, const FormatoPagina &formato)
{
    m_ultimo = file;
    for (SchedaPagina &scheda : m_schede) {
        if (scheda.file == file && !scheda.nuova)
            scheda.testoSalvato = scheda.testoSuDisco = testo;
    }
    Aggiungi({.file = file, .salvata = {}, .testoSalvato = testo, .testoSuDisco = testo, .formato = formato});
}

void SchedePagina::Inizia(const QString &testo, const FormatoPagina &formato)
{
    Aggiungi({.file = m_ultimo,
              .salvata = {},
              .testoSalvato = testo,
              .testoSuDisco = testo,
              .formato = formato,
              .nuova = true});
}

void SchedePagina::Salvata(const QString &testo, const QString &percorso)
{
    const bool senza = SenzaFile();
    SchedaPagina &corrente = m_schede[size_t(m_segno)];
    corrente.testoSuDisco = testo;
    if (senza) {
        corrente.salvata = percorso;
        return;
    }
    for (SchedaPagina &scheda : m_schede) {
        if (scheda.file == corrente.file && !scheda.nuova)
            scheda.testoSuDisco = testo;
    }
}

bool SchedePagina::Torna(int segno)
{
    if (segno == m_segno || segno < 0 || size_t(segno) >= m_schede.size())
        return false;
    m_segno = segno;
    return true;
}

void SchedePagina::Aggiungi(SchedaPagina scheda)
{
    m_schede.push_back(std::move(scheda));
    m_segno = int(m_schede.size()) - 1;
}
