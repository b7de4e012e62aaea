#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "ElencoFinestre.h"
#include "EsameFinestra.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace Qt::StringLiterals;

// velloro_schermate FOLDER PROGRAM_FOLDER PAGE LANGUAGE SUFFIX: a picture of every window in one language, at the scale
// of QT_SCALE_FACTOR. Ends with status 1 when a window has a fault; the faults go to the standard output.

namespace
{

constexpr int AttesaAnteprima = 3000; // ms, until the browser engine has drawn the page

bool Fotografa(ElencoFinestre::Principale &principale, const QString &cartella, const QString &coda)
{
    bool bene = true;
    for (const ElencoFinestre::Finestra &finestra : ElencoFinestre::Tutte()) {
        finestra.apri(principale.Finestra(), [&](QWidget &aperta, const QString &nome) {
            const QString quale = QString::fromUtf16(finestra.nome) + (nome.isEmpty() ? QString() : u'-' + nome);
            QApplication::processEvents();
            const QString file = u"%1/%2-%3.png"_s.arg(cartella, quale, coda);
            if (!aperta.grab().save(file)) {
                std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
                bene = false;
            }
            const QStringList difetti = finestra.nostra ? EsameFinestra::Difetti(aperta) : QStringList();
            for (const QString &difetto : difetti) {
                std::printf("%s-%s: %s\n", qPrintable(quale), qPrintable(coda), qPrintable(difetto));
                bene = false;
            }
        });
    }
    return bene;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 6)
        return 2;
    const QTemporaryDir dati;
    ElencoFinestre::Isola(dati.path());
    QApplication applicazione(argc, argv);
    QApplication::setApplicationName(u"Velloro"_s);
    QApplication::setApplicationVersion(QStringLiteral(VELLORO_VERSIONE));
    QApplication::setQuitOnLastWindowClosed(false);
    ModuloGrafica::ApplicaStile(applicazione);

    const QStringList argomenti = QApplication::arguments();
    ModuloDichiarazioni::ImpostaCartellaProgramma(argomenti[2]);
    if (!QDir().mkpath(argomenti[1]) || !ElencoFinestre::ImpostaLingua(argomenti[2], quint8(argomenti[4].toUInt())))
        return 2;
    ElencoFinestre::Principale principale(argomenti[3]);
    QTest::qWait(AttesaAnteprima);
    return Fotografa(principale, argomenti[1], argomenti[5]) ? 0 : 1;
}
