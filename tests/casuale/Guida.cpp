#include "Guida.h"

#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "chrome/FrmProgressBar.h"

#include <QApplication>

#include <cstdio>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

#ifdef __SANITIZE_ADDRESS__
constexpr double Pazienza = 10; // seconds of the processor for one step
#else
constexpr double Pazienza = 2;
#endif
constexpr int Congedi = 60;

} // namespace

Guida::Guida(Passi passi, QString cartella) : m_passi(std::move(passi)), m_cartella(std::move(cartella)) {}

void Guida::Esegui()
{
    QString pagina;
    if (!m_passi.isEmpty() && m_passi.constFirst().tipo == Passo::Pagina)
        pagina = m_cartella + u'/' + m_passi.takeFirst().testo;
    while (!m_finita) {
        Stato() = {};
        QString lasciata;
        {
            FrmStart finestra(std::exchange(pagina, {}));
            Giudice giudice(finestra, m_cartella);
            Attore attore(finestra, giudice, m_cartella);
            m_attore = &attore;
            m_giudice = &giudice;
            m_pronta = false;
            m_inizio = 0;
            connect(&finestra, &FrmStart::Mostrata, this, [this] { m_pronta = true; });
            Programma(0);
            QApplication::exec();
            delete m_prossimo;
            lasciata = giudice.Lasciata();
        }
        Giudice::DopoLaFine(lasciata);
    }
}

/// A timer of its own each time: one that is at work would keep still in the loops below it.
void Guida::Programma(int millisecondi)
{
    if (m_prossimo)
        return;
    m_prossimo = new QTimer(this);
    m_prossimo->setSingleShot(true);
    connect(m_prossimo, &QTimer::timeout, this, [this, timer = m_prossimo.data()] {
        m_prossimo.clear();
        timer->deleteLater();
        Turno();
    });
    m_prossimo->start(millisecondi);
}

/// Whether a user could do nothing now: input waits.
bool Guida::Trattenuto() const
{
    if (!m_pronta && !QApplication::activeModalWidget())
        return true;
    if (!Stato().ControlloInCorso)
        return false;
    const auto finestre = QApplication::topLevelWidgets();
    return std::none_of(finestre.begin(), finestre.end(),
                        [](QWidget *f) { return f->isVisible() && qobject_cast<FrmProgressBar *>(f); });
}

void Guida::Turno()
{
    if (m_finita)
        return;
    if (Trattenuto())
        return Programma(1);
    Misura();
    const auto tipo = m_fatti < m_passi.size() ? m_passi[m_fatti].tipo : Passo::Attendi;
    if (tipo == Passo::Scrivi || tipo == Passo::Scegli)
        m_giudice->Quieta();
    if (m_giudice->Attende())
        return Programma(1);
    if (m_fatti == m_passi.size())
        return Congeda();
    const ::Passo &passo = m_passi[m_fatti];
    Programma(passo.tipo == Passo::Attendi ? passo.a : 0);
    do
        Passo(m_passi[m_fatti++]);
    while (m_fatti < m_passi.size() && m_passi[m_fatti].subito && !Trattenuto() && !m_giudice->Sospeso());
}

void Guida::Passo(const ::Passo &passo)
{
    std::printf("step %d\n", int(m_fatti) - 1);
    std::fflush(stdout);
    m_inizio = std::clock();
    m_attore->Esegui(passo);
    m_giudice->Esamina();
}

/// Processor time, so that other programs do not count; until the next turn, so that what the step left to do does.
void Guida::Misura()
{
    const std::clock_t inizio = std::exchange(m_inizio, 0);
    const double secondi = double(std::clock() - inizio) / CLOCKS_PER_SEC;
    if (inizio != 0 && secondi > Pazienza)
        Giudice::Accusa(u"slow"_s, u"a step took %1 s"_s.arg(secondi, 0, 'f', 1));
}

void Guida::Congeda()
{
    if (const QWidget *ostacolo = Attore::Ostacolo()) {
        if (m_congedi == Congedi)
            Giudice::Accusa(u"box"_s,
                            u"%1 \"%2\" cannot be closed"_s.arg(QLatin1StringView(ostacolo->metaObject()->className()),
                                                                ostacolo->windowTitle()));
        Programma(1);
        return m_attore->Congeda(m_congedi++);
    }
    m_finita = true;
    m_giudice->ProvaControllo(0);
    m_giudice->ProvaStoria();
    m_giudice->Esamina();
    QCoreApplication::exit();
}
