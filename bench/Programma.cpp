// Measures a whole editor from the outside, on an X display: velloro_bench_programma [--preview] PROGRAM [ARGUMENT]...
// Whatever program it is given, it sees only its windows, its processor time and its memory. --preview: the preview, of
// a program that has one.

#include "bench/BancoAnteprima.h"
#include "bench/Corsa.h"
#include "bench/Pagine.h"
#include "bench/Tabella.h"

#include <cstdio>

#include <QCoreApplication>
#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

struct Misure {
    Valore finestra, disegno, memoria, battitura;
};

Misure Misura(const Schermo &schermo, const QStringList &comando, bool batte)
{
    Corsa corsa(schermo, comando);
    Misure misure;
    misure.finestra = corsa.FinoAllaFinestra();
    if (!misure.finestra)
        return misure;
    misure.disegno = corsa.FinoAlDisegno();
    misure.memoria = corsa.Memoria();
    if (batte)
        misure.battitura = corsa.Battitura();
    return misure;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication applicazione(argc, argv);
    QStringList comando = applicazione.arguments().sliced(1);
    const bool anteprima = comando.removeOne(u"--preview"_s);
    if (comando.isEmpty()) {
        std::fputs("usage: velloro_bench_programma [--preview] PROGRAM [ARGUMENT]...\n", stderr);
        return 2;
    }
    const Schermo schermo;
    if (!schermo.Aperto()) {
        std::fputs("velloro_bench_programma: there is no X display\n", stderr);
        return 1;
    }
    if (schermo.Visibile()) {
        std::fputs("velloro_bench_programma: the display must be empty, see scripts/bench\n", stderr);
        return 1;
    }

    if (anteprima)
        return BancoAnteprima(schermo, comando) ? 0 : 1;

    const QTemporaryDir cartella;
    Tabella tabella(u"%1, the whole program, medians"_s.arg(comando.first().section(u'/', -1)),
                    {u"10 kB"_s, u"1 MB"_s, u"10 MB"_s}, {{2, 1}});
    std::vector<Misure> mediane;
    for (const qsizetype unita : {10'000, 1'000'000, 10'000'000}) {
        const QString nome = cartella.filePath(u"pagina%1.html"_s.arg(unita));
        QFile file(nome);
        if (!file.open(QFile::WriteOnly) || file.write(Pagine::Html(unita).toUtf8()) < unita)
            return 1;
        file.close();
        std::vector<Valore> finestra, disegno, memoria, battitura;
        // The first run reads from the disk what the others find in memory.
        (void)Misura(schermo, comando + QStringList{nome}, false);
        for (int giro = 0; giro < 5; ++giro) {
            const Misure misure = Misura(schermo, comando + QStringList{nome}, giro < 3);
            finestra.push_back(misure.finestra);
            disegno.push_back(misure.disegno);
            memoria.push_back(misure.memoria);
            if (giro < 3)
                battitura.push_back(misure.battitura);
        }
        mediane.push_back({Mediana(finestra), Mediana(disegno), Mediana(memoria), Mediana(battitura)});
    }
    const auto riga = [&](const QString &nome, const QString &unita, Valore Misure::*quale) {
        std::vector<Valore> valori;
        for (const Misure &misure : mediane)
            valori.push_back(misure.*quale);
        tabella.Riga(nome, unita, valori);
    };
    riga(u"start to a window on the screen"_s, u"ms"_s, &Misure::finestra);
    riga(u"start to the page drawn"_s, u"ms"_s, &Misure::disegno);
    riga(u"memory (PSS)"_s, u"MB"_s, &Misure::memoria);
    riga(u"processor time per letter typed"_s, u"ms"_s, &Misure::battitura);
    std::fputs(tabella.Testo().toUtf8().constData(), stdout);
    return 0;
}
