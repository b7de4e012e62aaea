#include "app/Avvio.h"

#include "app/ModuloDichiarazioni.h"
#include "app/RigaComando.h"
#include "app/TabellaLingua.h"
#include "app/VerificaFile.h"
#include "platform/NomiFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr int NonRiuscito = 2; // exit status

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

/// Qt ends a program that finds no session with an abort.
bool MancaSessione(int argc, char **argv)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    const auto detta = [](const char *variabile) { return !qEnvironmentVariableIsEmpty(variabile); };
    const auto piattaforma = [](const char *argomento) {
        return QByteArrayView(argomento).startsWith("-platform") || QByteArrayView(argomento).startsWith("--platform");
    };
    return !detta("DISPLAY") && !detta("WAYLAND_DISPLAY") && !detta("QT_QPA_PLATFORM") &&
           std::none_of(argv + 1, argv + argc, piattaforma);
#else
    return false;
#endif
}

int AvviaFinestre(const QString &cartella, const RigaComando &riga, int argc, char **argv)
{
    if (MancaSessione(argc, argv)) {
        const ModuloPrincipale::EsitoCaricamento esito = ModuloPrincipale::CaricaPerAvvio(cartella, riga.lingua);
        Scrivi(stderr, (esito.Riuscito() ? ModuloPrincipale::Messaggio(396) : esito.errore) + u"\n"_s);
        return 1;
    }
    QLibrary modulo(ModuloDichiarazioni::PercorsoIn(cartella, u"velloro_finestre"));
    using Ingresso = int (*)(int, char **);
    const auto ingresso = reinterpret_cast<Ingresso>(modulo.resolve("VelloroFinestre"));
    if (!ingresso) {
        Scrivi(stderr, modulo.errorString() + u"\n"_s);
        return 1;
    }
    return ingresso(argc, argv);
}

/// Who starts the program with one of the three closed must not have a file of ours in its place: what is opened here
/// can neither be read nor written.
void OccupaChiusi()
{
    for (const int numero : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(numero, F_GETFD) == -1)
            (void)open("/dev/null", numero == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

int Rispondi(const RigaComando &riga, const QString &cartella)
{
    if (riga.errore != 0) {
        const QString oggetto = NomiFile::Leggibile(riga.oggettoErrore);
        Scrivi(stderr, ModuloPrincipale::Messaggio(riga.errore).replace(u"%1"_s, oggetto) + u"\n"_s);
        return NonRiuscito;
    }
    if (riga.verifica && !riga.aiuto && !riga.versione)
        return VerificaFile::Esegui(riga, cartella);
    if (riga.aiuto)
        Scrivi(stdout, RigaComando::Aiuto(u"velloro"_s));
    else
        Scrivi(stdout, u"Velloro "_s + QStringLiteral(VELLORO_VERSIONE) + u"\n"_s);
    return 0;
}

} // namespace

int Avvio::Main(int argc, char **argv)
{
    OccupaChiusi();
    const QString cartella = CartellaDi(argv[0]);
    RigaComando riga = RigaComando::Leggi(RigaComando::Argomenti(argc, argv));
    if (!riga.SenzaFinestre())
        return AvviaFinestre(cartella, riga, argc, argv);

    // What the line says is answered in the interface's language.
    const ModuloPrincipale::EsitoCaricamento esito = ModuloPrincipale::CaricaPerAvvio(cartella, riga.lingua);
    if (!esito.Riuscito()) {
        Scrivi(stderr, esito.errore + u"\n"_s);
        return NonRiuscito;
    }
    const int stato = Rispondi(riga, cartella);
    // An answer that nobody can read must not look like one.
    const int errore = std::fflush(stdout) == 0 ? 0 : errno;
    if (errore == 0 && std::ferror(stdout) == 0)
        return stato;
    const QString motivo = ModuloPrincipale::Messaggio(errore == ENOSPC ? 331 : 336);
    Scrivi(stderr, ModuloPrincipale::Messaggio(395).arg(motivo) + u"\n"_s);
    return NonRiuscito;
}
