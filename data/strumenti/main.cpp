#include "FileBase.h"
#include "TabelleTag.h"

#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

/// velloro_base_tag TABLES-FOLDER DATABASE-FILE: builds the tag knowledge base. Exit code 1 and one line per fault
/// when a table or the file breaks a rule; the database file is then left as it was, or removed.
int main(int argc, char *argv[])
{
    QTextStream uscita(stderr);
    if (argc != 3) {
        uscita << "usage: velloro_base_tag TABLES-FOLDER DATABASE-FILE\n";
        return 2;
    }
    const QString cartella = QFile::decodeName(argv[1]), percorso = QFile::decodeName(argv[2]);
    const TabelleTag::Esito esito = TabelleTag::Leggi(cartella);
    QStringList errori = esito.errori;
    if (errori.isEmpty()) {
        if (const QString motivo = FileBase::Scrivi(percorso, esito.tag); !motivo.isEmpty())
            errori += u"%1: %2"_s.arg(percorso, motivo);
        else if (errori = FileBase::Verifica(percorso); !errori.isEmpty())
            QFile::remove(percorso);
    }
    for (const QString &errore : std::as_const(errori))
        uscita << errore << '\n';
    return errori.isEmpty() ? 0 : 1;
}
