#include "app/Avvio.h"

#include "app/Domande.h"
#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/RigaComando.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "platform/Segnali.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

void Scrivi(std::FILE *dove, const QString &testo)
{
    const QByteArray byte = testo.toLocal8Bit();
    std::fwrite(byte.constData(), 1, size_t(byte.size()), dove);
}

/// --help, --version and mistakes are answered without a display.
std::optional<int> RispondiSenzaFinestra(const RigaComando &riga)
{
    if (!riga.errore.isEmpty()) {
        Scrivi(stderr, riga.errore + u"\n"_s);
        return 2;
    }
    if (riga.aiuto) {
        Scrivi(stdout, RigaComando::Aiuto(u"velloro"_s));
        return 0;
    }
    if (riga.versione) {
        Scrivi(stdout, u"Velloro "_s + QStringLiteral(VELLORO_VERSIONE) + u"\n"_s);
        return 0;
    }
    return std::nullopt;
}

QStringList Argomenti(int argc, char **argv)
{
    QStringList argomenti;
    for (int i = 1; i < argc; ++i)
        argomenti += QFile::decodeName(argv[i]);
    return argomenti;
}

void CaricaTraduzioni(QApplication &applicazione)
{
    const QString locale = ModuloPrincipale::NomeLocale(ModuloPrincipale::LinguaCaricata());
    auto *traduttore = new QTranslator(&applicazione);
    if (traduttore->load(u"qtbase_"_s + locale, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(traduttore);
}

QString CartellaDi(const char *programma)
{
    const QFileInfo info(u"/proc/self/exe"_s);
    return info.exists() ? QFileInfo(info.canonicalFilePath()).path()
                         : QFileInfo(QFile::decodeName(programma)).absolutePath();
}

} // namespace

int Avvio::Main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(u"Velloro"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELLORO_VERSIONE));
    QCoreApplication::setOrganizationName(u"Velloro"_s);

    // The texts come first: whatever the line says is answered in the interface's language.
    const ModuloPrincipale::EsitoCaricamento esito = ModuloPrincipale::CaricaImpostazioni(CartellaDi(argv[0]));
    const RigaComando riga = RigaComando::Leggi(Argomenti(argc, argv));
    if (esito.Riuscito()) {
        if (const std::optional<int> stato = RispondiSenzaFinestra(riga))
            return *stato;
    }

    QApplication applicazione(argc, argv);
    QGuiApplication::setDesktopFileName(u"velloro"_s);
    ModuloGrafica::ApplicaStile(applicazione);
    if (!esito.Riuscito()) {
        Domande::Critico(nullptr, esito.errore);
        return 1;
    }
    CaricaTraduzioni(applicazione);

    const QString pagina = riga.pagina.isEmpty() ? QString() : QFileInfo(riga.pagina).absoluteFilePath();
    FrmStart finestra(pagina);
    Segnali::AllaFine(&applicazione, [] { QCoreApplication::quit(); });
    return QApplication::exec();
}
