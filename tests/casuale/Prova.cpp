#include "Prova.h"

#include "Generatore.h"
#include "Guida.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "dialogs/Modelli.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

#ifdef __SANITIZE_ADDRESS__
constexpr int Silenzio = 90'000; // ms without a step: it hangs
#else
constexpr int Silenzio = 30'000;
#endif
constexpr auto Schermo = "{\"screens\": [{\"name\": \"virtual\", \"x\": 0, \"y\": 0, \"width\": 1366, \"height\": 768, "
                         "\"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}";

bool Salva(const QString &percorso, const QByteArray &byte)
{
    QFile file(percorso);
    return file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size();
}

/// The program's folder as it is installed, without the browser engine.
void CollegaProgramma(const QString &cartella)
{
    QDir().mkpath(cartella);
    const QDir programma(QStringLiteral(CARTELLA_PROGRAMMA));
    for (const QString &nome : programma.entryList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (!nome.startsWith(u"motore"))
            QFile::link(programma.filePath(nome), cartella + u'/' + nome);
    }
}

void Ambiente(QProcess &processo, const QString &cartella)
{
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    for (const QString &nome :
         {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_RUNTIME_DIR"_s, u"TMPDIR"_s})
        ambiente.insert(nome, cartella + u"/casa"_s);
    ambiente.insert(u"QT_QPA_PLATFORM"_s, u"offscreen:configfile="_s + cartella + u"/schermo"_s);
    ambiente.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    ambiente.insert(u"QTWEBENGINE_DISABLE_SANDBOX"_s, u"1"_s); // nothing to tell
    processo.setProcessEnvironment(ambiente);
    processo.setWorkingDirectory(cartella + u"/pagine"_s);
}

/// The line of a sanitizer's report, or of a failed assertion, that says what it is.
QString Ragione(const QByteArray &errori)
{
    static const QRegularExpression detto(
        u"(Sanitizer: [^\\n]*|runtime error: [^\\n]*|ASSERT[^\\n]*|terminate called[^\\n]*)"_s);
    return detto.match(QString::fromUtf8(errori)).captured(1);
}

/// Warnings of Qt are faults of the program, but for what the platform lacks.
void Messaggio(QtMsgType tipo, const QMessageLogContext &, const QString &testo)
{
    // What the platform lacks: also an input method that takes back what is being composed before a click. Then Qt's
    // print dialog when its button is held down or no file is named, and its file dialog when it leaves a folder while
    // a name is edited.
    static constexpr std::array<QStringView, 5> diAltri{
        u"This plugin does not support", u"QTextCursor::setPosition: Position", u"QDialog::exec: Recursive call",
        u"QFSFileEngine::open: No file name", u"QAbstractItemView::"};
    if (std::any_of(diAltri.begin(), diAltri.end(), [&](auto inizio) { return testo.startsWith(inizio); }))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(testo));
    if (tipo == QtWarningMsg)
        Giudice::Accusa(u"qt"_s, testo);
}

class SenzaAltriProgrammi : public QObject
{
    Q_OBJECT
public slots:
    void Apri(const QUrl &) {}
};

} // namespace

Prova::Esito Prova::Prova(const Passi &passi, const QStringList &tralasciati)
{
    const QTemporaryDir cartella;
    CollegaProgramma(cartella.filePath(u"programma"_s));
    QDir(cartella.path()).mkdir(u"casa"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QDir(cartella.path()).mkpath(u"pagine"_s);
    for (const Generatore::File &file : Generatore::Cartella())
        (void)Salva(cartella.filePath(u"pagine/"_s + file.nome), file.byte);
    QByteArray righe;
    for (const Passo &passo : passi)
        righe += passo.Riga().toUtf8() + '\n';
    (void)(Salva(cartella.filePath(u"schermo"_s), Schermo) && Salva(cartella.filePath(u"passi"_s), righe));

    QProcess processo;
    Ambiente(processo, cartella.path());
    processo.start(QCoreApplication::applicationFilePath(),
                   {u"--child"_s, u"--without"_s, tralasciati.join(u','), cartella.filePath(u"passi"_s)});
    QByteArray detto;
    bool muto = false;
    while (!muto && processo.state() != QProcess::NotRunning) {
        muto = !processo.waitForReadyRead(Silenzio) && processo.state() != QProcess::NotRunning;
        detto += processo.readAllStandardOutput();
    }
    processo.kill();
    processo.waitForFinished();
    detto += processo.readAllStandardOutput();

    Esito esito;
    esito.fatti = detto.count("step ");
    const QString errori = QString::fromUtf8(processo.readAllStandardError());
    if (const qsizetype guasto = detto.indexOf("fault "); guasto >= 0) {
        esito.testo = QString::fromUtf8(detto.mid(guasto + 6)).trimmed();
        esito.genere = esito.testo.section(u' ', 0, 0);
    } else if (muto) {
        esito = {u"hang"_s, u"no step for a long time"_s, esito.fatti};
    } else if (processo.exitStatus() != QProcess::NormalExit || processo.exitCode() != 0) {
        esito.genere = u"crash"_s;
        esito.testo =
            u"%1 (status %2)\n%3"_s.arg(Ragione(errori.toUtf8())).arg(processo.exitCode()).arg(errori.left(6000));
    }
    return esito;
}

int Prova::Figlio(int argc, char **argv, const QString &file, const QStringList &tralasciati)
{
    Giudice::Tralascia(tralasciati);
    qInstallMessageHandler(Messaggio);
    QCoreApplication::setApplicationName(u"Velloro"_s);
    QCoreApplication::setOrganizationName(u"Velloro"_s);
    QApplication applicazione(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ModuloGrafica::ApplicaStile(applicazione);
    ModuloDichiarazioni::ImpostaCartellaProgramma(QDir::cleanPath(QDir::currentPath() + u"/../programma"_s));
    if (!ModuloPrincipale::CaricaLingua(ModuloDichiarazioni::CartellaProgramma(), 0).Riuscito())
        return 2;
    SenzaAltriProgrammi nessuno;
    const QStringList schemi{u"file"_s, u"http"_s, u"https"_s, u"mailto"_s};
    for (const QString &schema : schemi)
        QDesktopServices::setUrlHandler(schema, &nessuno, "Apri");
    Passi passi;
    QFile righe(file);
    if (!righe.open(QIODevice::ReadOnly))
        return 2;
    for (const QByteArray &riga : righe.readAll().split('\n')) {
        if (const auto passo = Passo::LeggiRiga(QString::fromUtf8(riga)))
            passi += *passo;
    }
    Guida(passi, QDir::currentPath()).Esegui();
    for (const QString &schema : schemi)
        QDesktopServices::unsetUrlHandler(schema);
    return 0;
}

Passi Prova::Riduci(Passi passi, int secondi, const std::function<bool(const Passi &)> &fallisce)
{
    QElapsedTimer orologio;
    orologio.start();
    for (qsizetype pezzo = (passi.size() + 1) / 2; pezzo > 0; pezzo = pezzo == 1 ? 0 : (pezzo + 1) / 2) {
        bool tolto = true;
        while (std::exchange(tolto, false)) {
            // From the end: what comes late matters least to what follows.
            for (qsizetype da = (passi.size() - 1) / pezzo * pezzo; da >= 0; da -= pezzo) {
                if (orologio.elapsed() > secondi * 1000LL)
                    return passi;
                Passi senza = passi;
                senza.remove(da, std::min(pezzo, passi.size() - da));
                if (fallisce(senza)) {
                    passi = senza;
                    tolto = true;
                }
            }
        }
    }
    return passi;
}

#include "Prova.moc"
