#include "Generatore.h"
#include "Prova.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

// velloro_uso_casuale: uses the program at random, and tells the shortest way to each fault that it meets. --help names
// the options. Ends with status 1 when there was a fault.

namespace
{

struct Opzioni {
    quint32 seme = 1;
    int giri = 0;        ///< how many seeds; 0: as many as the time allows
    int secondi = 0;     ///< 0: no limit
    int passi = 300;     ///< of each seed
    int riduzione = 120; ///< seconds
    QStringList tralasciati;
};

void Racconta(const Passi &passi)
{
    for (const Passo &passo : passi)
        std::printf("    %s\n", qPrintable(passo.Riga()));
    std::fflush(stdout);
}

/// The fault of \a passi, with the fewest steps that lead to one of its kind.
void Racconta(const QString &nome, Passi passi, const Prova::Esito &esito, const Opzioni &opzioni)
{
    std::printf("%s, step %d: %s: %s\n", qPrintable(nome), int(esito.fatti), qPrintable(esito.genere),
                qPrintable(esito.testo));
    std::fflush(stdout);
    passi.resize(std::min(passi.size(), esito.fatti + 1)); // the first one counts no step: it is the page
    int prove = 0;
    const auto fallisce = [&](const Passi &meno) {
        ++prove;
        return Prova::Prova(meno, opzioni.tralasciati).genere == esito.genere;
    };
    const Passi pochi = Prova::Riduci(passi, opzioni.riduzione, fallisce);
    std::printf("  %d steps, after %d runs:\n", int(pochi.size()), prove);
    Racconta(pochi);
}

int Cerca(const Opzioni &opzioni)
{
    QElapsedTimer orologio;
    orologio.start();
    qint64 passi = 0;
    int guasti = 0;
    quint32 seme = opzioni.seme;
    const auto ancora = [&] {
        return (opzioni.giri == 0 || int(seme - opzioni.seme) < opzioni.giri) &&
               (opzioni.secondi == 0 || orologio.elapsed() < opzioni.secondi * 1000LL);
    };
    for (; ancora(); ++seme) {
        const Passi inventati = Generatore::Inventa(seme, opzioni.passi);
        const Prova::Esito esito = Prova::Prova(inventati, opzioni.tralasciati);
        passi += esito.fatti;
        if (esito.genere.isEmpty())
            continue;
        ++guasti;
        std::printf("after %.1f s: ", double(orologio.elapsed()) / 1000);
        Racconta(u"seed %1"_s.arg(seme), inventati, esito, opzioni);
    }
    std::printf("%d seeds from %u, %lld steps, %.0f s: %d findings\n", int(seme - opzioni.seme), opzioni.seme,
                static_cast<long long>(passi), double(orologio.elapsed()) / 1000, guasti);
    return guasti > 0;
}

int Ripeti(const QString &file, const Opzioni &opzioni)
{
    QFile righe(file);
    if (!righe.open(QIODevice::ReadOnly))
        return 2;
    Passi passi;
    for (const QByteArray &riga : righe.readAll().split('\n')) {
        if (const auto passo = Passo::LeggiRiga(QString::fromUtf8(riga)))
            passi += *passo;
    }
    const Prova::Esito esito = Prova::Prova(passi, opzioni.tralasciati);
    if (esito.genere.isEmpty()) {
        std::printf("%d steps: no finding\n", int(esito.fatti));
        return 0;
    }
    Racconta(file, passi, esito, opzioni);
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 5 && QByteArrayView(argv[1]) == "--child")
        return Prova::Figlio(argc, argv, QString::fromLocal8Bit(argv[4]),
                             QString::fromLocal8Bit(argv[3]).split(u',', Qt::SkipEmptyParts));
    const QCoreApplication applicazione(argc, argv);
    QCommandLineParser riga;
    riga.setApplicationDescription(u"Uses Velloro at random and tells the shortest way to each fault."_s);
    riga.addHelpOption();
    riga.addOptions({{u"seed"_s, u"first seed (1)"_s, u"n"_s, u"1"_s},
                     {u"seeds"_s, u"how many seeds (no limit)"_s, u"n"_s, u"0"_s},
                     {u"seconds"_s, u"how long (no limit)"_s, u"n"_s, u"0"_s},
                     {u"steps"_s, u"steps of each seed (300)"_s, u"n"_s, u"300"_s},
                     {u"shorten"_s, u"seconds for shortening a way (120)"_s, u"n"_s, u"120"_s},
                     {u"without"_s, u"kinds of faults to pass over, with commas between"_s, u"kinds"_s},
                     {u"replay"_s, u"steps to repeat in place of random ones"_s, u"file"_s}});
    riga.process(applicazione);
    const Opzioni opzioni{riga.value(u"seed"_s).toUInt(),   riga.value(u"seeds"_s).toInt(),
                          riga.value(u"seconds"_s).toInt(), riga.value(u"steps"_s).toInt(),
                          riga.value(u"shorten"_s).toInt(), riga.value(u"without"_s).split(u',', Qt::SkipEmptyParts)};
    return riga.isSet(u"replay"_s) ? Ripeti(riga.value(u"replay"_s), opzioni) : Cerca(opzioni);
}
