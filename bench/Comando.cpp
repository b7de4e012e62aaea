// Measures whole commands that check a page, start included: velloro_bench_comando PROGRAM
// The program is asked for "--verifica FILE"; two other checkers see the same files in the same run, when they are
// there.

#include "bench/Misura.h"
#include "bench/Pagine.h"
#include "bench/Tabella.h"

#include <cstdio>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace
{

constexpr int GiriMinimi = 7;
constexpr int GiriMassimi = 25;

struct Comando {
    QString nome;
    QStringList parole; ///< the file follows
};

/// Runs the command to its end, its output thrown away; milliseconds. Nothing when it could not be run.
std::optional<double> Esegui(const QStringList &parole)
{
    std::vector<QByteArray> byte;
    for (const QString &parola : parole)
        byte.push_back(parola.toLocal8Bit());
    std::vector<char *> argomenti;
    for (QByteArray &parola : byte)
        argomenti.push_back(parola.data());
    argomenti.push_back(nullptr);

    posix_spawn_file_actions_t uscite;
    posix_spawn_file_actions_init(&uscite);
    posix_spawn_file_actions_addopen(&uscite, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&uscite, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const double prima = Orologio::Adesso();
    pid_t processo = 0;
    int stato = 0;
    const bool riuscito = posix_spawn(&processo, argomenti[0], &uscite, nullptr, argomenti.data(), environ) == 0 &&
                          waitpid(processo, &stato, 0) == processo && WIFEXITED(stato) && WEXITSTATUS(stato) < 126;
    posix_spawn_file_actions_destroy(&uscite);
    return riuscito ? std::optional(Orologio::Adesso() - prima) : std::nullopt;
}

std::optional<double> Mediana(std::vector<double> tempi)
{
    if (tempi.empty())
        return std::nullopt;
    std::sort(tempi.begin(), tempi.end());
    return tempi[tempi.size() / 2];
}

std::vector<Comando> Comandi(const QString &programma)
{
    std::vector<Comando> comandi{{u"velloro --verifica"_s, {programma, u"--verifica"_s}}};
    if (const QString tidy = QStandardPaths::findExecutable(u"tidy"_s); !tidy.isEmpty())
        comandi.push_back({u"tidy -e -q"_s, {tidy, u"-e"_s, u"-q"_s}});
    // Without the catalogue it would fetch the document type over the network; at its limit of errors it would stop.
    const QString catalogo = u"/usr/share/xml/w3c-sgml-lib/schema/dtd/sgml.soc"_s;
    const QString onsgmls = QStandardPaths::findExecutable(u"onsgmls"_s);
    if (!onsgmls.isEmpty() && QFile::exists(catalogo))
        comandi.push_back({u"onsgmls -s"_s, {onsgmls, u"-s"_s, u"-E0"_s, u"-c"_s, catalogo}});
    return comandi;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication applicazione(argc, argv);
    if (argc != 2) {
        std::fputs("usage: velloro_bench_comando PROGRAM\n", stderr);
        return 2;
    }
    // The encoding in which all of them are to read the pages.
    qputenv("SP_CHARSET_FIXED", "1");
    qputenv("SP_ENCODING", "utf-8");

    const QTemporaryDir cartella;
    const std::vector<Comando> comandi = Comandi(applicazione.arguments().at(1));
    const std::vector<qsizetype> misure{10'000, 100'000, 1'000'000, 10'000'000};
    std::vector<std::vector<std::optional<double>>> mediane(comandi.size());
    for (const qsizetype unita : misure) {
        const QString nome = cartella.filePath(u"pagina%1.html"_s.arg(unita));
        QFile file(nome);
        if (!file.open(QFile::WriteOnly) || file.write(Pagine::Html(unita).toUtf8()) < unita)
            return 1;
        file.close();

        // In turns, so that what else the machine does falls on all of them.
        std::vector<std::vector<double>> tempi(comandi.size());
        const double inizio = Orologio::Adesso();
        for (int giro = -1; giro < GiriMassimi && (giro < GiriMinimi || Orologio::Adesso() - inizio < 3000); ++giro) {
            for (size_t i = 0; i < comandi.size(); ++i) {
                const std::optional<double> tempo = Esegui(comandi[i].parole + QStringList{nome});
                if (tempo && giro >= 0)
                    tempi[i].push_back(*tempo);
            }
        }
        for (size_t i = 0; i < comandi.size(); ++i)
            mediane[i].push_back(Mediana(tempi[i]));
    }

    Tabella tabella(u"Check of a page from the command line, start included, medians"_s,
                    {u"10 kB"_s, u"100 kB"_s, u"1 MB"_s, u"10 MB"_s}, {{3, 2}});
    for (size_t i = 0; i < comandi.size(); ++i)
        tabella.Riga(comandi[i].nome, u"ms"_s, mediane[i]);
    for (size_t i = 1; i < comandi.size(); ++i) {
        std::vector<std::optional<double>> rapporti;
        for (size_t j = 0; j < misure.size(); ++j)
            rapporti.push_back(mediane[0][j] && mediane[i][j] ? std::optional(*mediane[0][j] / *mediane[i][j])
                                                              : std::nullopt);
        tabella.Riga(u"velloro in terms of "_s + comandi[i].nome.section(u' ', 0, 0), u"x"_s, rapporti);
    }
    std::fputs(tabella.Testo().toUtf8().constData(), stdout);
    return mediane[0].front() ? 0 : 1;
}
