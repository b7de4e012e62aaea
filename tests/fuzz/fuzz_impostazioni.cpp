// The settings file and the lines of a language file.

#include "fuzz/Testo.h"

#include "app/TabellaLingua.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QString testo = TestoDa(dati, quanti);
    const quint8 lingua = ModuloPrincipale::LinguaDaImpostazioni(testo);
    Esigi(!ModuloPrincipale::FileLingua(lingua).isEmpty());
    const QStringView riga(testo);
    const QStringView voce = ModuloPrincipale::TestoDaRiga(riga);
    Esigi(voce.isEmpty() || (voce.begin() >= riga.begin() + 5 && voce.end() <= riga.end()));
    if (const auto codice = ModuloPrincipale::LinguaDaRiga(riga))
        Esigi(riga.startsWith(u"Language", Qt::CaseInsensitive));
    return 0;
}
