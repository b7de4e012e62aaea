#include "app/Finestre.h"

#include "app/Domande.h"
#include "app/FrmStart.h"
#include "app/Impostazioni.h"
#include "app/ModuloDichiarazioni.h"
#include "app/RigaComando.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "platform/NomiFile.h"
#include "platform/Segnali.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace
{

void CaricaTraduzioni(QApplication &applicazione)
{
    const QString locale = ModuloPrincipale::NomeLocale(ModuloPrincipale::LinguaCaricata());
    auto *traduttore = new QTranslator(&applicazione);
    if (traduttore->load(u"qtbase_"_s + locale, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(traduttore);
}

} // namespace

int Finestre::Main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(u"Velloro"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELLORO_VERSIONE));
    QCoreApplication::setOrganizationName(u"Velloro"_s);
    QApplication applicazione(argc, argv);
    QGuiApplication::setDesktopFileName(u"velloro"_s);
    ModuloGrafica::ApplicaStile(applicazione);

    const RigaComando riga = RigaComando::Leggi(RigaComando::Argomenti(argc, argv));
    const QString cartella = ModuloDichiarazioni::CartellaProgramma();
    const ModuloPrincipale::EsitoCaricamento esito = ModuloPrincipale::CaricaPerAvvio(cartella, riga.lingua);
    if (!esito.Riuscito()) {
        Domande::Critico(nullptr, esito.errore);
        return 1;
    }
    Impostazioni::Carica(cartella, ModuloPrincipale::ImpostazioniUtente());
    CaricaTraduzioni(applicazione);

    const QString pagina = riga.pagine.isEmpty() ? QString() : NomiFile::Assoluto(riga.pagine.constFirst());
    FrmStart finestra(pagina);
    Segnali::AllaFine(&applicazione, [&finestra] { finestra.FineDalSistema(); });
    return QApplication::exec();
}
