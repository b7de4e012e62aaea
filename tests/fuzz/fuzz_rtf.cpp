// The reader of Rich Text Format, whole contents and single lines.

#include "fuzz/Testo.h"

#include "platform/Rtf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QString rtf = TestoDa(dati, quanti);
    if (const auto contenuto = Rtf::Leggi(rtf)) {
        Esigi(contenuto->testo.size() == qsizetype(contenuto->aspetti.size()));
        Esigi(contenuto->testo.size() <= 2 * rtf.size());

        // What is read is written and read again unchanged, as long as it fits into one line.
        TabellaAspetti tabella;
        std::vector<quint8> indici;
        for (const Aspetto &aspetto : contenuto->aspetti)
            indici.push_back(tabella.Indice(aspetto));
        if (tabella.Quanti() < 256 && !contenuto->testo.contains(u'\r') && !contenuto->testo.contains(u'\n')) {
            QString scritto = Rtf::Testata();
            Rtf::ScriviRiga(scritto, contenuto->testo, indici.data(), tabella);
            scritto += Rtf::Coda();
            const auto riletto = Rtf::Leggi(scritto);
            Esigi(riletto && riletto->testo == contenuto->testo && riletto->aspetti == contenuto->aspetti);
        }
    }
    if (const auto righe = Rtf::LeggiRighe(rtf))
        Esigi(righe->testo.size() == qsizetype(righe->aspetti.size()));
    return 0;
}
