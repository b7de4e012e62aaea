// A whole language file.

#include "fuzz/Testo.h"

#include <QFileInfo>

#include "app/TabellaLingua.h"

using namespace ModuloPrincipale;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QString file = FileDa(dati, quanti, FileLingua(LinguaInglese));
    const EsitoCaricamento esito = CaricaLingua(QFileInfo(file).path(), LinguaInglese);
    qsizetype testi = 0;
    for (qint16 numero = 0; numero <= UltimoMessaggio; ++numero)
        testi += Messaggio(numero).size();
    Esigi(Messaggio(0).isEmpty() && testi <= qsizetype(quanti));
    Esigi(esito.Riuscito() || testi == 0);
    return 0;
}
