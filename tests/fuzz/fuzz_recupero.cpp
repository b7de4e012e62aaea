// A recovery file.

#include "fuzz/Testo.h"

#include <QBuffer>

#include "editor/FileRecupero.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    QByteArray byte(reinterpret_cast<const char *>(dati), qsizetype(quanti));
    QBuffer letto(&byte);
    Esigi(letto.open(QIODevice::ReadOnly));
    const auto pagina = FileRecupero::Leggi(letto);
    if (!pagina)
        return 0;
    // A page that was read is written and read again as it is.
    QBuffer scritto;
    Esigi(scritto.open(QIODevice::ReadWrite) && FileRecupero::Scrivi(scritto, *pagina) && scritto.seek(0));
    const auto ancora = FileRecupero::Leggi(scritto);
    Esigi(ancora && ancora->testo == pagina->testo && ancora->FileCorrente == pagina->FileCorrente &&
          ancora->codifica == pagina->codifica);
    return 0;
}
