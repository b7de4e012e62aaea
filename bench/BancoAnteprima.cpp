#include "bench/BancoAnteprima.h"

#include "bench/Corsa.h"
#include "bench/Misura.h"
#include "bench/Pagine.h"
#include "bench/Tabella.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include <QFile>

// Last: it defines words that Qt uses.
#include <X11/X.h>
#include <X11/keysym.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

// The page tells with two squares how far it is: the upper one stands in its first line, the lower one appears two
// frames after everything is loaded. Both change their colour with each letter that is typed.
constexpr unsigned Pari = 0x1FC85A;
constexpr unsigned Dispari = 0xC81F5A;
constexpr int Distanza = 40;    ///< pixels between the squares
constexpr double Quiete = 1000; ///< milliseconds after which nothing of the key before is left

QString Pagina(qsizetype unita)
{
    const QString riga = uR"(<div id="alto" style="position:fixed;left:0;top:0;width:30px;height:30px"></div>
<div id="basso" style="position:fixed;left:0;top:40px;width:30px;height:30px"></div>
<p id="riga" style="margin-left:40px">
a
</p>
<script>
colore=()=>riga.innerText.split('e').length%2?'#1FC85A':'#C81F5A';
alto.style.background=colore();
onload=()=>requestAnimationFrame(()=>requestAnimationFrame(()=>basso.style.background=colore()));
</script>
)"_s.replace(u"\n"_s, u"\r\n"_s);
    QString pagina = Pagine::Html(unita - riga.size());
    return pagina.insert(pagina.indexOf(u"\r\n"_s, pagina.indexOf(u"<body"_s)) + 2, riga);
}
constexpr int RigaScritta = 8; ///< 0-based line of the "a"

struct Misure {
    Valore primoTasto, mostrata, attesa;
    std::vector<Valore> processore, pronto, primaFigura, caricata, bloccato;
    Valore propria, tutta, propriaNascosta, tuttaNascosta;
};

class Seduta
{
public:
    Seduta(const Schermo &schermo, const QStringList &comando) : m_schermo(schermo), m_corsa(schermo, comando) {}

    bool Avvio(Misure &misure)
    {
        if (!m_corsa.FinoAllaFinestra())
            return false;
        double attesa = 0;
        while (m_corsa.Trascorsi() < Corsa::Pazienza && !m_alto) {
            const Valore risposta = Chiedi();
            if (!misure.primoTasto && risposta)
                misure.primoTasto = m_corsa.Trascorsi();
            else
                attesa = std::max(attesa, risposta.value_or(Corsa::Pazienza));
            m_alto = m_schermo.Cerca(Pari);
        }
        if (!m_alto || !AttendiColore({m_alto->x(), m_alto->y() + Distanza}, Pari, attesa))
            return false;
        misure.mostrata = m_corsa.Trascorsi();
        misure.attesa = attesa;
        Calma();
        Batti(XK_Home, ControlMask);
        for (int i = 0; i < RigaScritta; ++i)
            Batti(XK_Down);
        Batti(XK_End);
        return true;
    }

    bool Refresh(Misure &misure)
    {
        m_dispari = !m_dispari;
        Batti(XK_e);
        Calma();
        m_schermo.Premi(m_corsa.Finestra(), XK_space);
        std::this_thread::sleep_for(100ms);
        const double processore = m_corsa.ProcessoreFinestre();
        const double inizio = Orologio::Adesso();
        m_schermo.Rilascia(m_corsa.Finestra(), XK_space);
        // The question may not overtake the key.
        std::this_thread::sleep_for(500us);
        if (!Chiedi())
            return false;
        misure.pronto.push_back(Orologio::Adesso() - inizio);
        misure.processore.push_back(m_corsa.ProcessoreFinestre() - processore);
        double attesa = 0;
        const unsigned colore = m_dispari ? Dispari : Pari;
        if (!AttendiColore(*m_alto, colore, attesa))
            return false;
        misure.primaFigura.push_back(Orologio::Adesso() - inizio);
        if (!AttendiColore({m_alto->x(), m_alto->y() + Distanza}, colore, attesa))
            return false;
        misure.caricata.push_back(Orologio::Adesso() - inizio);
        misure.bloccato.push_back(attesa);
        return true;
    }

    void Memoria(Misure &misure)
    {
        Calma();
        misure.propria = m_corsa.MemoriaPropria();
        misure.tutta = m_corsa.Memoria();
        // The preview is hidden while the page, saved, gives way to a new one.
        Batti(XK_n, ControlMask);
        Calma();
        m_schermo.Premi(m_schermo.Attiva(), XK_Return);
        m_schermo.Rilascia(m_schermo.Attiva(), XK_Return);
        Calma();
        if (m_schermo.Cerca(m_dispari ? Dispari : Pari))
            return;
        misure.propriaNascosta = m_corsa.MemoriaPropria();
        misure.tuttaNascosta = m_corsa.Memoria();
    }

private:
    [[nodiscard]] Valore Chiedi() const { return m_schermo.Risposta(m_corsa.Finestra(), Corsa::Pazienza); }

    /// False when that pixel does not get that colour. \a attesa grows to the longest that a key would wait meanwhile.
    bool AttendiColore(QPoint dove, unsigned colore, double &attesa) const
    {
        const double inizio = Orologio::Adesso();
        while (m_schermo.Colore(dove) != colore) {
            if (Orologio::Adesso() - inizio > Corsa::Pazienza)
                return false;
            attesa = std::max(attesa, Chiedi().value_or(Corsa::Pazienza));
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }

    void Batti(Schermo::Simbolo tasto, unsigned modificatori = 0) const
    {
        m_schermo.Premi(m_corsa.Finestra(), tasto, modificatori);
        m_schermo.Rilascia(m_corsa.Finestra(), tasto, modificatori);
        (void)Chiedi();
        std::this_thread::sleep_for(30ms);
    }

    void Calma() const { std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(Quiete)); }

    const Schermo &m_schermo;
    Corsa m_corsa;
    std::optional<QPoint> m_alto;
    bool m_dispari = false;
};

} // namespace

bool BancoAnteprima(const Schermo &schermo, const QStringList &comando)
{
    const QTemporaryDir cartella;
    Tabella tabella(u"%1, the preview, medians"_s.arg(comando.first().section(u'/', -1)),
                    {u"10 kB"_s, u"1 MB"_s, u"10 MB"_s}, {{2, 1}});
    std::vector<Misure> tutte;
    bool riuscito = true;
    for (const qsizetype unita : {10'000, 1'000'000, 10'000'000}) {
        const QString nome = cartella.filePath(u"pagina%1.html"_s.arg(unita));
        QFile file(nome);
        if (!file.open(QFile::WriteOnly) || file.write(Pagina(unita).toUtf8()) < unita)
            return false;
        file.close();
        Misure misure;
        Seduta seduta(schermo, comando + QStringList{nome});
        bool va = seduta.Avvio(misure);
        for (int giri = unita > 5'000'000 ? 3 : 11; giri > 0 && va; --giri)
            va = seduta.Refresh(misure);
        if (va)
            seduta.Memoria(misure);
        riuscito = riuscito && va;
        tutte.push_back(misure);
    }
    const auto riga = [&](const QString &nome, const QString &unita, auto quale) {
        std::vector<Valore> valori;
        for (const Misure &misure : tutte)
            valori.push_back(quale(misure));
        tabella.Riga(nome, unita, valori);
    };
    const auto uno = [&](const QString &nome, const QString &unita, Valore Misure::*quale) {
        riga(nome, unita, [quale](const Misure &misure) { return misure.*quale; });
    };
    const auto mezzo = [&](const QString &nome, std::vector<Valore> Misure::*quale) {
        riga(nome, u"ms"_s,
             [quale](const Misure &misure) { return (misure.*quale).empty() ? std::nullopt : Mediana(misure.*quale); });
    };
    uno(u"start to the first key taken"_s, u"ms"_s, &Misure::primoTasto);
    uno(u"start to the page in the preview"_s, u"ms"_s, &Misure::mostrata);
    uno(u"longest wait of a key in between"_s, u"ms"_s, &Misure::attesa);
    mezzo(u"Space released to the next key taken"_s, &Misure::pronto);
    mezzo(u"its processor time"_s, &Misure::processore);
    mezzo(u"longest wait of a key afterwards"_s, &Misure::bloccato);
    mezzo(u"Space released to the new page's top painted"_s, &Misure::primaFigura);
    mezzo(u"Space released to the new page loaded and painted"_s, &Misure::caricata);
    uno(u"memory (PSS), the program"_s, u"MB"_s, &Misure::propria);
    uno(u"memory (PSS), with the engine's processes"_s, u"MB"_s, &Misure::tutta);
    uno(u"preview hidden: the program"_s, u"MB"_s, &Misure::propriaNascosta);
    uno(u"preview hidden: with the engine's processes"_s, u"MB"_s, &Misure::tuttaNascosta);
    std::fputs(tabella.Testo().toUtf8().constData(), stdout);
    return riuscito;
}
