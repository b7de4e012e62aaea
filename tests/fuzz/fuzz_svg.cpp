// Drawings of strangers, before they are painted.

#include "fuzz/Testo.h"

#include "platform/DisegnoSvg.h"

#include <QXmlStreamReader>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const auto pulito = DisegnoSvg::Ripulisci(QByteArray(reinterpret_cast<const char *>(dati), qsizetype(quanti)));
    if (!pulito)
        return 0;
    Esigi(pulito->lavoro >= 0);
    QXmlStreamReader lettore(pulito->svg);
    lettore.setNamespaceProcessing(false);
    while (!lettore.atEnd()) {
        lettore.readNext();
        Esigi(!lettore.isDTD() && !lettore.isProcessingInstruction() && !lettore.isEntityReference());
        const QStringView nome = lettore.isStartElement() ? lettore.qualifiedName() : QStringView();
        Esigi(nome.sliced(nome.indexOf(u':') + 1) != u"script");
    }
    Esigi(!lettore.hasError());
    return 0;
}
