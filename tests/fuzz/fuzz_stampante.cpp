// A printer's settings record and the options stored with it.

#include "fuzz/Testo.h"

#include "platform/DevMode.h"
#include "platform/OpzioniStampante.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QByteArray byte(reinterpret_cast<const char *>(dati), qsizetype(quanti));
    const DevMode record = DevMode::DaByte(byte);
    Esigi(record.Byte().size() == DevMode::Lunghezza);
    Esigi(record.NomeDispositivo().size() <= DevMode::LunghezzaNome);
    const OpzioniStampante::Opzioni opzioni = OpzioniStampante::DaByte(byte);
    // Options keep through their bytes, and settle when merged twice with the same record.
    Esigi(OpzioniStampante::DaByte(OpzioniStampante::InByte(opzioni)) == opzioni);
    const OpzioniStampante::Opzioni unite = OpzioniStampante::Unisci(opzioni, record);
    Esigi(OpzioniStampante::Unisci(unite, record) == unite);
    return 0;
}
