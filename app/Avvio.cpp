#include "app/Avvio.h"

#include "app/ModuloDichiarazioni.h"
#include "app/RigaComando.h"
#include "app/TabellaLingua.h"
#include "app/VerificaFile.h"
#include "platform/NomiFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

void Scrivi(std::FILE *dove, const QString &testo)
{
    const QByteArray byte = testo.toUtf8();
    std::fwrite(byte.constData(), 1, size_t(byte.size()), dove);
}

QString CartellaDi(const char *programma)
{
    const QFileInfo info(u"/proc/self/exe"_s);
    return info.exists() ? QFileInfo(info.canonicalFilePath()).path()
                         : QFileInfo(QFile::decodeName(programma)).absolutePath();
}

int AvviaFinestre(const QString &cartella, int argc, char **argv)
{
    QLibrary modulo(ModuloDichiarazioni::PercorsoIn(cartella, u"velloro_finestre"));
    using Ingresso = int (*)(int, char **);
    const auto ingresso = reinterpret_cast<Ingresso>(modulo.resolve("VelloroFinestre"));
    if (!ingresso) {
        Scrivi(stderr, modulo.errorString() + u"\n"_s);
        return 1;
    }
    return ingresso(argc, argv);
}

} // namespace

int Avvio::Main(int argc, char **argv)
{
    const QString cartella = CartellaDi(argv[0]);
    RigaComando riga = RigaComando::Leggi(RigaComando::Argomenti(argc, argv));
    if (!riga.SenzaFinestre())
        return AvviaFinestre(cartella, argc, argv);

    // What the line says is answered in the interface's language.
    const ModuloPrincipale::EsitoCaricamento esito = ModuloPrincipale::CaricaPerAvvio(cartella, riga.lingua);
    if (!esito.Riuscito()) {
        Scrivi(stderr, esito.errore + u"\n"_s);
        return 2;
    }
    if (riga.errore != 0) {
        const QString oggetto = NomiFile::Leggibile(riga.oggettoErrore);
        Scrivi(stderr, ModuloPrincipale::Messaggio(riga.errore).replace(u"%1"_s, oggetto) + u"\n"_s);
        return 2;
    }
    if (riga.verifica && !riga.aiuto && !riga.versione)
        return VerificaFile::Esegui(riga, cartella);
    if (riga.aiuto)
        Scrivi(stdout, RigaComando::Aiuto(u"velloro"_s));
    else
        Scrivi(stdout, u"Velloro "_s + QStringLiteral(VELLORO_VERSIONE) + u"\n"_s);
    return 0;
}
