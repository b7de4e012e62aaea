#include "bench/Corsa.h"

#include "bench/Misura.h"

#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr double Quiete = 400; ///< a picture unchanged for so long is complete

bool Xdotool(const QStringList &argomenti)
{
    return QProcess::execute(u"xdotool"_s, argomenti) == 0;
}

double MemoriaDi(qint64 processo)
{
    std::ifstream stato("/proc/" + std::to_string(processo) + "/smaps_rollup");
    for (std::string riga; std::getline(stato, riga);) {
        if (riga.rfind("Pss:", 0) == 0)
            return std::stod(riga.substr(4)) / 1024;
    }
    return 0;
}

} // namespace

Valore Mediana(std::vector<Valore> valori)
{
    std::erase(valori, std::nullopt);
    if (valori.empty())
        return std::nullopt;
    std::sort(valori.begin(), valori.end());
    return valori[valori.size() / 2];
}

Corsa::Corsa(const Schermo &schermo, const QStringList &comando) : m_schermo(schermo)
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

Corsa::~Corsa()
{
    m_processo.kill();
    m_processo.waitForFinished();
}

Valore Corsa::FinoAllaFinestra()
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

Corsa::Disegno Corsa::FinoAlDisegno(const QRect &testo)
{
    QByteArray figura = m_schermo.Figura();
    QByteArray figuraTesto = m_schermo.Figura(testo);
    double ultima = Trascorsi();
    double ultimaTesto = ultima;
    // While the program works at something the picture is not complete, however still it stands.
    double lavoro = Processore();
    double dal = ultima;
    while (Trascorsi() < Pazienza && m_processo.state() == QProcess::Running) {
        std::this_thread::sleep_for(5ms);
        m_processo.waitForFinished(0);
        if (const QByteArray adesso = m_schermo.Figura(testo); Schermo::Altra(figuraTesto, adesso)) {
            figuraTesto = adesso;
            ultimaTesto = Trascorsi();
        }
        if (const QByteArray adesso = m_schermo.Figura(); Schermo::Altra(figura, adesso)) {
            figura = adesso;
            ultima = Trascorsi();
        } else if (Trascorsi() - dal <= Quiete) {
            continue;
        } else if (Processore() - lavoro < Quiete / 4) {
            return {ultima, figuraTesto.isEmpty() ? std::nullopt : Valore(ultimaTesto)};
        }
        dal = Trascorsi();
        lavoro = Processore();
    }
    return {};
}

bool Corsa::Riposa() const
{
    const auto lavoro = [this] {
        double somma = 0;
        for (const qint64 processo : Famiglia())
            somma += ProcessoreDi(processo);
        return somma;
    };
    const double inizio = Orologio::Adesso();
    for (double prima = lavoro(); Orologio::Adesso() - inizio < Pazienza;) {
        std::this_thread::sleep_for(1s);
        const double adesso = lavoro();
        if (adesso - std::exchange(prima, adesso) < 50)
            return true;
    }
    return false;
}

Valore Corsa::Battitura()
{
    constexpr int lettere = 200;
    const QPoint dove = Testo().center();
    if (!Xdotool({u"mousemove"_s, QString::number(dove.x()), QString::number(dove.y()), u"click"_s, u"1"_s}))
        return std::nullopt;
    std::this_thread::sleep_for(500ms);
    const QByteArray figura = m_schermo.Figura();
    const double prima = Processore();
    if (!Xdotool({u"type"_s, u"--delay"_s, u"25"_s, QString(lettere, u'e')}))
        return std::nullopt;
    std::this_thread::sleep_for(500ms);
    const double dopo = Processore();
    if (m_schermo.Figura() == figura)
        return std::nullopt; // the keys went somewhere else
    return (dopo - prima) / lettere;
}

Valore Corsa::Memoria() const
{
    double somma = 0;
    for (const qint64 processo : Famiglia())
        somma += MemoriaDi(processo);
    return somma > 0 ? Valore(somma) : std::nullopt;
}

Valore Corsa::MemoriaPropria() const
{
    const double propria = MemoriaDi(m_processo.processId());
    return propria > 0 ? Valore(propria) : std::nullopt;
}

double Corsa::Trascorsi() const
{
    return Orologio::Adesso() - m_inizio;
}

std::vector<qint64> Corsa::Famiglia() const
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

// Of the process itself, user and system.
double Corsa::ProcessoreDi(qint64 processo)
{
    std::ifstream stato("/proc/" + std::to_string(processo) + "/stat");
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

double Corsa::ProcessoreFinestre() const
{
    const std::string numero = std::to_string(m_processo.processId());
    std::ifstream stato("/proc/" + numero + "/task/" + numero + "/schedstat");
    double nanosecondi = 0;
    stato >> nanosecondi;
    return nanosecondi / 1e6;
}
