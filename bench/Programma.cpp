// Measures whole editors from the outside, on an X display, and puts them into one table:
// velloro_bench_programma [--preview] PROGRAM [ARGUMENT]... [-- PROGRAM [ARGUMENT]...]...
// Whatever program it is given, it sees only its windows, its processor time and its memory. --preview: the preview, of
// a program that has one.

#include "bench/BancoAnteprima.h"
#include "bench/Corsa.h"
#include "bench/Misura.h"
#include "bench/Pagine.h"
#include "bench/Tabella.h"

#include <cstdio>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Giri = 3;
constexpr double Limite = 300'000; ///< milliseconds for one program, whatever happens

const std::vector<qsizetype> Unita{10'000, 1'000'000, 10'000'000};
const QStringList Colonne{u"10 kB"_s, u"1 MB"_s, u"10 MB"_s};

struct Misure {
    Valore finestra, testo, disegno, memoria, battitura;
    QString motivo; ///< why the first missing one is missing
};

Misure Misura(const Schermo &schermo, const QStringList &comando, QRect &testo, bool batte)
{
    Corsa corsa(schermo, comando);
    Misure misure;
    misure.finestra = corsa.FinoAllaFinestra();
    if (!misure.finestra) {
        misure.motivo = corsa.Viva() ? u"no window within a minute"_s : u"it ended before it had a window"_s;
        return misure;
    }
    const Corsa::Disegno disegno = corsa.FinoAlDisegno(testo);
    misure.disegno = disegno.tutto;
    misure.testo = disegno.testo;
    if (!disegno.tutto) {
        misure.motivo = corsa.Viva() ? u"its picture was not complete within a minute"_s : u"it ended by itself"_s;
        return misure;
    }
    testo = corsa.Testo();
    misure.memoria = corsa.Memoria();
    if (!batte)
        return misure;
    (void)corsa.Riposa(); // what does not rest in a minute works all the time, with or without keys
    misure.battitura = corsa.Battitura();
    if (!misure.battitura)
        misure.motivo = u"the keys did not reach the page"_s;
    return misure;
}

/// The medians of some runs with one page; what the time was not enough for is missing.
Misure Mediane(const Schermo &schermo, const QStringList &comando, double fine)
{
    std::vector<Valore> finestra, testo, disegno, memoria, battitura;
    Misure misure;
    QRect dove;
    // The first run reads from the disk what the others find in memory, and tells where the text is.
    for (int giro = -1; giro < Giri; ++giro) {
        if (Orologio::Adesso() > fine) {
            misure.motivo = u"the time for one program was over"_s;
            break;
        }
        const Misure una = Misura(schermo, comando, dove, giro == Giri - 1);
        if (!una.motivo.isEmpty())
            misure.motivo = una.motivo;
        if (!una.disegno)
            break;
        if (giro < 0)
            continue;
        finestra.push_back(una.finestra);
        testo.push_back(una.testo);
        disegno.push_back(una.disegno);
        memoria.push_back(una.memoria);
        battitura.push_back(una.battitura);
    }
    misure.finestra = Mediana(finestra);
    misure.testo = Mediana(testo);
    misure.disegno = Mediana(disegno);
    misure.memoria = Mediana(memoria);
    misure.battitura = Mediana(battitura);
    return misure;
}

struct Programma {
    QString nome;
    QStringList comando;
    std::vector<Misure> misure; ///< per size
};

std::vector<Programma> Programmi(const QStringList &argomenti)
{
    std::vector<Programma> programmi(1);
    for (const QString &argomento : argomenti) {
        if (argomento == u"--")
            programmi.emplace_back();
        else
            programmi.back().comando += argomento;
    }
    std::erase_if(programmi, [](const Programma &programma) { return programma.comando.isEmpty(); });
    for (Programma &programma : programmi)
        programma.nome = programma.comando.first().section(u'/', -1);
    return programmi;
}

void MisuraTutto(const Schermo &schermo, Programma &programma, const QTemporaryDir &cartella)
{
    programma.misure.resize(Unita.size());
    const QString &file = programma.comando.first();
    if (!QFileInfo(file).isExecutable() && QStandardPaths::findExecutable(file).isEmpty()) {
        for (Misure &misure : programma.misure)
            misure.motivo = u"it is not installed"_s;
        return;
    }
    const double fine = Orologio::Adesso() + Limite;
    for (size_t i = 0; i < Unita.size(); ++i) {
        const QString pagina = cartella.filePath(u"pagina%1.html"_s.arg(Unita[i]));
        programma.misure[i] = Mediane(schermo, programma.comando + QStringList{pagina}, fine);
    }
}

QString TestoTabella(const std::vector<Programma> &programmi)
{
    struct Voce {
        QString nome, unita;
        Valore Misure::*quale;
    };
    const Voce voci[] = {{u"start to a window on the screen"_s, u"ms"_s, &Misure::finestra},
                         {u"start to the page's text painted"_s, u"ms"_s, &Misure::testo},
                         {u"start to all painted, the preview too"_s, u"ms"_s, &Misure::disegno},
                         {u"memory (PSS)"_s, u"MB"_s, &Misure::memoria},
                         {u"processor time per letter typed"_s, u"ms"_s, &Misure::battitura}};
    Tabella tabella(u"The whole program, medians"_s, Colonne, {{2, 1}, {2, 0}});
    for (const Voce &voce : voci) {
        for (const Programma &programma : programmi) {
            std::vector<Valore> valori;
            for (const Misure &misure : programma.misure)
                valori.push_back(misure.*voce.quale);
            tabella.Riga(voce.nome + u", "_s + programma.nome, voce.unita, valori);
        }
    }
    QString testo = tabella.Testo();
    for (const Programma &programma : programmi) {
        for (size_t i = 0; i < programma.misure.size(); ++i) {
            if (!programma.misure[i].motivo.isEmpty())
                testo += u"-: %1, %2: %3\n"_s.arg(programma.nome, Colonne[qsizetype(i)], programma.misure[i].motivo);
        }
    }
    return testo;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication applicazione(argc, argv);
    QStringList argomenti = applicazione.arguments().sliced(1);
    const bool anteprima = argomenti.removeOne(u"--preview"_s);
    std::vector<Programma> programmi = Programmi(argomenti);
    if (programmi.empty()) {
        std::fputs("usage: velloro_bench_programma [--preview] PROGRAM [ARGUMENT]... [-- PROGRAM [ARGUMENT]...]...\n",
                   stderr);
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
        return BancoAnteprima(schermo, programmi.front().comando) ? 0 : 1;

    const QTemporaryDir cartella;
    for (const qsizetype unita : Unita) {
        QFile file(cartella.filePath(u"pagina%1.html"_s.arg(unita)));
        if (!file.open(QFile::WriteOnly) || file.write(Pagine::Html(unita).toUtf8()) < unita)
            return 1;
    }
    for (Programma &programma : programmi)
        MisuraTutto(schermo, programma, cartella);
    std::fputs(TestoTabella(programmi).toUtf8().constData(), stdout);
    return 0;
}
