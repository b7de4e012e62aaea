// The administrators' file of the registry.

#include "fuzz/Testo.h"

#include "platform/RegistroFile.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *dati, size_t quanti)
{
    const QString testo = TestoDa(dati, quanti);
    Registro::Albero albero;
    Registro::LeggiRighe(testo, albero);
    // What stands behind the broken lines is still read.
    const QString chiave = u"HKEY_LOCAL_MACHINE\\Software\\Prova"_s;
    Registro::LeggiRighe(testo + u"\n"_s + chiave + u"\tNome\tREG_SZ\tdato"_s, albero);
    const Registro::Valore *valore = albero.Trova(Registro::Albero::Percorso(chiave), u"nome");
    Esigi(valore && valore->dati.startsWith("dato"));
    return 0;
}
