// The file of the tag knowledge base.

#include "fuzz/Testo.h"

#include "html/LettoreBaseTag.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    QList<ModuloTag::DatiTag> tabella;
    const ModuloTag::EsitoLettura esito = ModuloTag::LeggiBaseTag(FileDa(dati, quanti, u"tag.db"_s), tabella);
    // What was read without a fault came from rows.
    Esigi(!esito.motivo.isEmpty() || esito.righe > 0 || tabella.isEmpty());
    return 0;
}
