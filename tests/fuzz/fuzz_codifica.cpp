// A page's bytes to text and back: whatever the bytes are, nothing of them is lost.

#include "fuzz/Testo.h"

#include "platform/CodificaPagina.h"
#include "platform/Codifiche.h"

namespace
{

bool SoloRigheCrLf(QByteArrayView byte)
{
    for (qsizetype i = 0; i < byte.size(); ++i) {
        if (byte[i] == '\n' || (byte[i] == '\r' && (i + 1 == byte.size() || byte[i + 1] != '\n')))
            return false;
        i += byte[i] == '\r';
    }
    return byte.endsWith("\r\n");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QByteArrayView byte(dati, qsizetype(quanti));
    FormatoPagina formato;
    const QString testo = Codifiche::TestoDaByte(byte, formato);
    Esigi(!formato.codifica.isEmpty() && testo.size() <= 2 * byte.size() + 2);
    Esigi(formato.esatta || !testo.endsWith(u'\n'));

    qsizetype sostituiti = 0;
    const bool sediciBit = formato.codifica == Codifiche::Utf16LE || formato.codifica == Codifiche::Utf16BE;
    const QByteArray scritti = Codifiche::ByteDaTesto(testo, formato, &sostituiti);
    Esigi(sostituiti == 0);
    Esigi(!(formato.esatta || (!sediciBit && SoloRigheCrLf(byte))) || scritti == byte);

    // Line ends made regular may turn bytes that were no text in their encoding into some, but never change a text.
    FormatoPagina riletto;
    const QString dopo = Codifiche::TestoDaByte(scritti, riletto);
    Esigi(testo.isEmpty() || riletto.codifica != formato.codifica || dopo == testo);
    return 0;
}
