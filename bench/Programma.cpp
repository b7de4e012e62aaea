// Measures a whole editor from the outside, on an X display: velloro_bench_programma PROGRAM [ARGUMENT]...
// Whatever program it is given, it sees only its windows, its processor time and its memory.

#include "bench/Misura.h"
#include "bench/Pagine.h"
#include "bench/Tabella.h"

#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr double Pazienza = 60'000;  ///< milliseconds until something that does not happen is given up
constexpr double Quiete = 400;       ///< a picture unchanged for so long is complete; shorter than a blink of the caret
constexpr int LarghezzaMinima = 400; ///< windows narrower than this are a splash or a dialog

using Valore = std::optional<double>;

// The window and its frame may go at any time; what is asked of a window that is gone is no error here.
int NessunErrore(Display *, XErrorEvent *)
{
    return 0;
}

class Schermo
{
public:
    Schermo() : m_display(XOpenDisplay(nullptr)) { XSetErrorHandler(NessunErrore); }
    ~Schermo()
    {
        if (m_display)
            XCloseDisplay(m_display);
    }
    Schermo(const Schermo &) = delete;
    Schermo &operator=(const Schermo &) = delete;

    [[nodiscard]] bool Aperto() const { return m_display != nullptr; }

    /// The first visible window of some size, or 0.
    [[nodiscard]] Window Visibile() const { return Cerca(DefaultRootWindow(m_display), 0); }

    /// A sum over every eighth row of pixels of the screen.
    [[nodiscard]] quint64 Figura() const
    {
        const Window radice = DefaultRootWindow(m_display);
        const int larghezza = DisplayWidth(m_display, DefaultScreen(m_display));
        const int altezza = DisplayHeight(m_display, DefaultScreen(m_display));
        quint64 somma = 1469598103934665603ULL;
        for (int riga = 4; riga < altezza; riga += 8) {
            XImage *immagine = XGetImage(m_display, radice, 0, riga, unsigned(larghezza), 1, AllPlanes, ZPixmap);
            if (!immagine)
                continue;
            for (int i = 0; i < immagine->bytes_per_line; ++i)
                somma = (somma ^ quint8(immagine->data[i])) * 1099511628211ULL;
            XDestroyImage(immagine);
        }
        return somma;
    }

private:
    Window Cerca(Window padre, int livello) const
    {
        Window radice = 0;
        Window suo = 0;
        Window *figli = nullptr;
        unsigned quanti = 0;
        Window trovata = 0;
        if (!XQueryTree(m_display, padre, &radice, &suo, &figli, &quanti))
            return 0;
        for (unsigned i = 0; i < quanti && !trovata; ++i) {
            XWindowAttributes dati{};
            char *nome = nullptr;
            if (!XGetWindowAttributes(m_display, figli[i], &dati) || dati.map_state != IsViewable ||
                dati.width < LarghezzaMinima)
                continue;
            if (XFetchName(m_display, figli[i], &nome) && nome)
                trovata = figli[i];
            XFree(nome);
            if (!trovata && livello < 2)
                trovata = Cerca(figli[i], livello + 1);
        }
        XFree(figli);
        return trovata;
    }

    Display *m_display;
};

class Corsa
{
public:
    Corsa(const Schermo &schermo, const QStringList &comando) : m_schermo(schermo)
    {
        m_processo.setStandardOutputFile(QProcess::nullDevice());
        m_processo.setStandardErrorFile(QProcess::nullDevice());
        // Every run ends with a kill: the next must not find what this one left behind, and ask about it.
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert(u"XDG_DATA_HOME"_s, m_dati.path());
        m_processo.setProcessEnvironment(ambiente);
        m_inizio = Orologio::Adesso();
        m_processo.start(comando.first(), comando.sliced(1));
        m_processo.waitForStarted();
    }
    ~Corsa()
    {
        m_processo.kill();
        m_processo.waitForFinished();
    }
    Corsa(const Corsa &) = delete;
    Corsa &operator=(const Corsa &) = delete;

    /// Milliseconds from the start until a window is on the screen.
    Valore FinoAllaFinestra()
    {
        while (Trascorsi() < Pazienza && m_processo.state() == QProcess::Running) {
            m_finestra = m_schermo.Visibile();
            if (m_finestra)
                return Trascorsi();
            std::this_thread::sleep_for(1ms);
            m_processo.waitForFinished(0);
        }
        return std::nullopt;
    }

    /// Milliseconds from the start until the picture changes no more.
    Valore FinoAlDisegno()
    {
        quint64 figura = m_schermo.Figura();
        double ultima = Trascorsi();
        // While the program works at something the picture is not complete, however still it stands.
        double lavoro = Processore();
        double dal = ultima;
        while (Trascorsi() < Pazienza) {
            std::this_thread::sleep_for(5ms);
            const quint64 adesso = m_schermo.Figura();
            const bool cambiata = std::exchange(figura, adesso) != adesso;
            if (cambiata)
                ultima = Trascorsi();
            else if (Trascorsi() - dal <= Quiete)
                continue;
            else if (Processore() - lavoro < Quiete / 2)
                return ultima;
            dal = Trascorsi();
            lavoro = Processore();
        }
        return std::nullopt;
    }

    /// Proportional resident megabytes, of the program and the programs that it started.
    [[nodiscard]] Valore Memoria() const
    {
        double somma = 0;
        for (const qint64 processo : Famiglia()) {
            std::ifstream stato("/proc/" + std::to_string(processo) + "/smaps_rollup");
            for (std::string riga; std::getline(stato, riga);) {
                if (riga.rfind("Pss:", 0) == 0)
                    somma += std::stod(riga.substr(4)) / 1024;
            }
        }
        return somma > 0 ? Valore(somma) : std::nullopt;
    }

    /// Milliseconds of processor time per character typed into the page, where the middle of the window is.
    Valore Battitura()
    {
        constexpr int lettere = 200;
        if (!Xdotool(
                {u"mousemove"_s, u"--window"_s, QString::number(m_finestra), u"400"_s, u"350"_s, u"click"_s, u"1"_s}))
            return std::nullopt;
        std::this_thread::sleep_for(500ms);
        const quint64 figura = m_schermo.Figura();
        const double prima = Processore();
        if (!Xdotool({u"type"_s, u"--delay"_s, u"25"_s, QString(lettere, u'e')}))
            return std::nullopt;
        std::this_thread::sleep_for(500ms);
        const double dopo = Processore();
        if (m_schermo.Figura() == figura)
            return std::nullopt; // the keys went somewhere else
        return (dopo - prima) / lettere;
    }

private:
    [[nodiscard]] double Trascorsi() const { return Orologio::Adesso() - m_inizio; }

    static bool Xdotool(const QStringList &argomenti) { return QProcess::execute(u"xdotool"_s, argomenti) == 0; }

    [[nodiscard]] std::vector<qint64> Famiglia() const
    {
        std::vector<qint64> famiglia{m_processo.processId()};
        for (size_t i = 0; i < famiglia.size(); ++i) {
            const std::string numero = std::to_string(famiglia[i]);
            std::ifstream figli("/proc/" + numero + "/task/" + numero + "/children");
            for (qint64 figlio = 0; figli >> figlio;)
                famiglia.push_back(figlio);
        }
        return famiglia;
    }

    /// Milliseconds of processor time of the program itself, user and system.
    [[nodiscard]] double Processore() const
    {
        std::ifstream stato("/proc/" + std::to_string(m_processo.processId()) + "/stat");
        std::string riga;
        std::getline(stato, riga);
        // The name in brackets may hold blanks; user and system time are the 12th and 13th field after it.
        std::istringstream campi(riga.substr(std::min(riga.size(), riga.rfind(')') + 1)));
        std::string campo;
        for (int i = 0; i < 11; ++i)
            campi >> campo;
        double utente = 0;
        double sistema = 0;
        campi >> utente >> sistema;
        return (utente + sistema) * 1000 / double(sysconf(_SC_CLK_TCK));
    }

    const Schermo &m_schermo;
    QTemporaryDir m_dati;
    QProcess m_processo;
    double m_inizio = 0;
    Window m_finestra = 0;
};

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

Valore Mediana(std::vector<Valore> valori)
{
    std::sort(valori.begin(), valori.end());
    return valori[valori.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication applicazione(argc, argv);
    const QStringList comando = applicazione.arguments().sliced(1);
    if (comando.isEmpty()) {
        std::fputs("usage: velloro_bench_programma PROGRAM [ARGUMENT]...\n", stderr);
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
