#include "platform/Confronto.h"

#include <algorithm>
#include <cstring>

qsizetype Confronto::ParteUguale(QStringView a, QStringView b, bool daDestra)
{
    qsizetype basso = 1;
    qsizetype alto = std::min(a.size(), b.size());
    qsizetype fatto = 0;
    while (basso <= alto) {
        const qsizetype mezzo = (alto - basso) / 2 + basso;
        const qsizetype daA = daDestra ? a.size() - mezzo : fatto;
        const qsizetype daB = daDestra ? b.size() - mezzo : fatto;
        if (std::memcmp(a.utf16() + daA, b.utf16() + daB, size_t(mezzo - fatto) * sizeof(char16_t)) == 0) {
            fatto = mezzo;
            basso = mezzo + 1;
        } else {
            alto = mezzo - 1;
        }
    }
    return alto;
}
