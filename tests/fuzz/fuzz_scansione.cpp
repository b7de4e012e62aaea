// The walk, its findings and the command line, against the plain model of the check.

#include "BaseDiProva.h"
#include "ModelloControllo.h"
#include "fuzz/Testo.h"

#include "html/Risultati.h"
#include "html/Scansione.h"
#include "html/VerificaDaRiga.h"

namespace
{

using namespace ModuloVerificaSintassi;

class Pittore : public Ricevitore
{
public:
    explicit Pittore(ModelloControllo &tela) : m_tela(tela) {}

    void Segna(Segno segno, qsizetype da, qsizetype quanti) override
    {
        static constexpr ColoreBgr Colori[]{0xC00000, 0xFF00FF, 0xFF, 0x808080, 0x808080};
        Esigi(da >= 0 && quanti >= 0 && da <= m_tela.testo.size());
        m_quanti += quanti;
        Esigi(m_quanti <= 3 * m_tela.testo.size());
        const int inizio = m_tela.Limita(int(da));
        const auto ognuno = [&](qsizetype lunghezza, auto cambia) {
            for (int i = inizio, fine = m_tela.Limita(inizio + int(lunghezza)); i < fine; ++i)
                cambia(m_tela.aspetti[i]);
        };
        ognuno(quanti, [segno](Aspetto &a) { a.colore = Colori[int(segno)]; });
        if (segno == Segno::Errore)
            ognuno(quanti, [](Aspetto &a) { a.onda = true; });
        else if (segno != Segno::Commento)
            ognuno(quanti + 2, [](Aspetto &a) { a.onda = false; });
    }
    void Trova(const Riscontro &riscontro) override { registro.Aggiungi(riscontro); }

    Registro registro;

private:
    ModelloControllo &m_tela;
    qsizetype m_quanti = 0;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    BaseDiProva::Carica();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QString testo = TestoDa(dati, quanti);
    ModelloControllo modello(testo), tela(testo);
    modello.Verifica(1);
    Pittore pittore(tela);
    Scandisci(testo, {}, pittore);
    Esigi(tela.aspetti == modello.aspetti);
    const auto &risultati = pittore.registro.Risultati();
    for (qsizetype i = 1; i < risultati.size(); ++i) {
        // Names beyond the limit are cut, and cut names may meet.
        if (i > modello.risultati.size() || modello.risultati[i - 1].testo.size() > MassimoNome)
            break;
        const ModelloControllo::Risultato &atteso = modello.risultati[i - 1];
        Esigi(risultati[i].Posizione == atteso.posizione && risultati[i].Riga == atteso.riga);
        Esigi(risultati[i].Tipo == atteso.tipo && risultati[i].Testo == atteso.testo);
    }
    Esigi(VerificaDaRiga::InRighe(QString(), testo).count(u'\n') == VerificaDaRiga::InJson(QString(), testo).size());
    return 0;
}
