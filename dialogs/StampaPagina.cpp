#include "dialogs/StampaPagina.h"

#include "app/TabellaLingua.h"
#include "chrome/ClsProgressBar.h"
#include "chrome/FrmProgressBar.h"
#include "dialogs/DialogoStampa.h"
#include "dialogs/ModuloStampa.h"
#include "dialogs/Pezzi.h"
#include "dialogs/StampaTesto.h"
#include "dialogs/TestoStampa.h"
#include "platform/RichTextBox.h"
#include "platform/Spooler.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <QScopeGuard>
#include <QScopedValueRollback>

// Printing as the user meets it: the host's spooler, real dialogs, the progress window.

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

using namespace ModuloStampa;

constexpr int PausaEventi = 50; // ms between two looks at the window's events

/// The progress window of a print: appears when it lasts, and keeps the other windows still.
class AvanzamentoStampa
{
public:
    explicit AvanzamentoStampa(QWidget *finestra) : m_finestra(Messaggio(313), Messaggio(314), finestra)
    {
        m_finestra.Barra().TextStatus(Messaggio(240));
        m_inizio.start();
        m_ultimo.start();
    }
    [[nodiscard]] bool Passo(qsizetype fatto, qsizetype massimo)
    {
        if (m_ultimo.elapsed() < PausaEventi)
            return true;
        if (!m_mostrata && m_inizio.elapsed() >= FrmProgressBar::Attesa) {
            m_finestra.Mostra(0);
            m_mostrata = true;
        }
        m_finestra.Barra().Max(double(massimo));
        m_finestra.Barra().Value(double(fatto));
        // Before the window is there, keys would still reach the page.
        QCoreApplication::processEvents(m_mostrata ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
        m_ultimo.restart();
        return !m_finestra.Annullato();
    }

private:
    FrmProgressBar m_finestra;
    QElapsedTimer m_inizio;
    QElapsedTimer m_ultimo;
    bool m_mostrata = false;
};

OpzioniPagine Opzioni(const QPrinter &dispositivo, const QString &nomeFile)
{
    OpzioniPagine opzioni;
    opzioni.nomeFile = nomeFile;
    opzioni.inverse = dispositivo.pageOrder() == QPrinter::LastPageFirst;
    opzioni.grigi = dispositivo.colorMode() == QPrinter::GrayScale;
    if (dispositivo.printRange() == QPrinter::PageRange) {
        opzioni.pagine = dispositivo.pageRanges();
        if (opzioni.pagine.isEmpty() && dispositivo.fromPage() > 0)
            opzioni.pagine.addRange(dispositivo.fromPage(), std::max(dispositivo.fromPage(), dispositivo.toPage()));
    }
    return opzioni;
}

/// Into a PDF file: the whole of it, or the file that was there before.
EsitoStampa StampaPdf(const TestoStampa &testo, const QPrinter &dispositivo, const OpzioniPagine &opzioni,
                      const PassoStampa &passo, QString &errore)
{
    QBuffer byte;
    byte.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&byte);
        pdf.setResolution(dispositivo.resolution());
        pdf.setPageLayout(dispositivo.pageLayout());
        pdf.setTitle(dispositivo.docName());
        pdf.setCreator(QApplication::applicationName());
        if (const EsitoStampa esito = StampaTesto(testo, pdf, opzioni, passo); esito != EsitoStampa::Fatta)
            return esito;
    }
    QSaveFile file(dispositivo.outputFileName());
    // A disk that fills up in the middle shows in the counts alone: commit() by itself would be content.
    if (file.open(QIODevice::WriteOnly) && file.write(byte.data()) == byte.size() && file.flush() && file.commit())
        return EsitoStampa::Fatta;
    errore = file.errorString();
    return EsitoStampa::Fallita;
}

/// On a printer. A print that is given up leaves no job.
EsitoStampa StampaSuCarta(const TestoStampa &testo, QPrinter &dispositivo, const OpzioniPagine &opzioni,
                          const PassoStampa &passo, Spooler &spooler, QString &errore)
{
    const auto riprendi = qScopeGuard([&spooler] { spooler.TrattieniLavori(false); });
    const EsitoStampa esito = StampaTesto(testo, dispositivo, opzioni, [&](qsizetype fatto, qsizetype massimo) {
        const bool avanti = passo(fatto, massimo);
        if (!avanti)
            spooler.TrattieniLavori(true);
        return avanti;
    });
    if (esito != EsitoStampa::Fatta)
        return esito;
    errore = spooler.RifiutoLavoro();
    return errore.isEmpty() ? EsitoStampa::Fatta : EsitoStampa::Fallita;
}

} // namespace

void ModuloStampa::StampaScelta(RichTextBox &pad, const QString &nomeFile, const SceltaStampa &scelta, Spooler &spooler)
{
    QPrinter &dispositivo = *scelta.dispositivo;
    const TestoStampa testo = TestoStampa::Da(pad, scelta.soloSelezione);
    const OpzioniPagine opzioni = Opzioni(dispositivo, QFileInfo(nomeFile).fileName());
    const bool pdf = scelta.stampante.isEmpty();
    QString errore;
    EsitoStampa esito = EsitoStampa::Fallita;
    {
        AvanzamentoStampa avanzamento(pad.window());
        const PassoStampa passo = [&](qsizetype fatto, qsizetype massimo) { return avanzamento.Passo(fatto, massimo); };
        esito = pdf ? StampaPdf(testo, dispositivo, opzioni, passo, errore)
                    : StampaSuCarta(testo, dispositivo, opzioni, passo, spooler, errore);
    }
    if (esito == EsitoStampa::SenzaPagine)
        Pezzi::MostraMessaggio(pad.window(), QMessageBox::Information, Messaggio(243));
    if (esito != EsitoStampa::Fallita)
        return;
    const QString testoErrore =
        pdf ? Messaggio(241).arg(dispositivo.outputFileName()) : Messaggio(242).arg(scelta.stampante);
    Pezzi::MostraMessaggio(pad.window(), QMessageBox::Warning, testoErrore, errore);
}

void ModuloStampa::Stampa(RichTextBox &pad, const QString &nomeFile)
{
    static bool inCorso = false;
    if (inCorso)
        return;
    const QScopedValueRollback<bool> una(inCorso, true);
    const std::unique_ptr<Spooler> spooler = SpoolerDelSistema();
    QWidget *finestra = pad.window();
    Esegui(*spooler, {[&](const ImpostazioniSalvate &salvate) {
                          return DialogoStampa(finestra, salvate, pad.SelLength() > 0, nomeFile);
                      },
                      [&](const SceltaStampa &scelta) { StampaScelta(pad, nomeFile, scelta, *spooler); },
                      [&](const QString &testo) { Pezzi::MostraMessaggio(finestra, QMessageBox::NoIcon, testo); }});
}
