#include "app/PaginaCorrente.h"

#include "app/Domande.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/PaginaVuota.h"
#include "editor/Recupero.h"
#include "html/Risultati.h"
#include "html/VerificaSintassi.h"
#include "platform/Dialoghi.h"
#include "platform/File_System.h"
#include "platform/NomiFile.h"
#include "platform/RichTextBox.h"

#include <QFileInfo>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr qsizetype PaginaGrande = 2'000'000; // units; taking in more is felt as a wait
constexpr qsizetype InizioMostrato = 32'768;  // units; more than a screen of any size

/// What a user should know of how the page was read; empty: nothing.
QString SullaLettura(const FormatoPagina &formato)
{
    if (!formato.dichiarata.isEmpty() && formato.dichiarata != formato.codifica && formato.codifica == u"windows-1252")
        return Messaggio(343).arg(formato.dichiarata);
    if (formato.esatta)
        return Messaggio(400);
    return formato.altriFineRiga ? Messaggio(207) : QString();
}

} // namespace

PaginaCorrente::PaginaCorrente(RichTextBox *pad, QWidget *finestra)
    : QObject(finestra), m_pad(pad), m_finestra(finestra)
{
}

bool PaginaCorrente::ApriConDialogo()
{
    QStringList scelti;
    ModuloPrincipale::ApriFileDialogo(m_finestra, scelti, false, Filtro(), Cartella(), QString(), Messaggio(315),
                                      [](QWidget *, const QString &) { return true; });
    return !scelti.isEmpty() && !scelti.constFirst().isEmpty() && Apri(scelti.constFirst());
}

bool PaginaCorrente::Apri(const QString &percorso)
{
    return Carica(percorso, true);
}

bool PaginaCorrente::Carica(const QString &percorso, bool senzaDomanda)
{
    QString testo;
    FormatoPagina formato;
    FotoFile foto = FotoFile::Scatta(percorso);
    const ModuloPrincipale::RisultatoLettura esito = ModuloPrincipale::LeggiPagina(percorso, testo, &formato);
    if (!esito) {
        AvvisaLettura(percorso, esito);
        // What a failing medium gave before it failed is shown all the same.
        if (testo.isEmpty())
            return false;
    }
    if (esito) {
        foto.impronta = esito.impronta;
        foto.dimensione = esito.byte;
    }
    if (senzaDomanda) {
        Guarda(&FileAperto::Novita);
        emit Abbandonata();
    }
    emit InApertura();
    m_daRicaricare = false;
    m_schede.Apri(percorso, testo, formato);
    m_file.Letta(percorso, foto, bool(esito));
    Pubblica();
    Metti(testo);
    if (const QString avviso = SullaLettura(formato); !avviso.isEmpty())
        emit AvvisoLettura(avviso);
    emit Aperta(percorso);
    return bool(esito);
}

/// Tells everyone else what the page is now.
void PaginaCorrente::Pubblica()
{
    Stato().FileCorrente = m_schede.File();
    Stato().FileSalvato = m_schede.AltroPosto();
    Stato().TestoSalvato = m_schede.Corrente().testoSalvato;
    emit Segnata(m_schede.Segno());
    emit FormatoCambiato();
    emit TitoloCambiato();
}

/// The reader waits for nothing but the text: the preview takes the page in when it is on the screen.
void PaginaCorrente::Metti(const QString &testo)
{
    if (testo.size() > PaginaGrande)
        MostraInizio(testo);
    m_pad->Ridisegna(false); // not before it has its colours
    m_pad->ImpostaText(testo);
    emit Caricata();
    m_pad->Ridisegna(true);
    m_pad->parentWidget()->repaint();
    emit InVista();
}

/// What is read first stands there, in its colours, while the control takes in the whole page.
void PaginaCorrente::MostraInizio(const QString &testo)
{
    m_pad->ImpostaText(testo.first(testo.lastIndexOf(u'\n', InizioMostrato) + 1));
    ModuloVerificaSintassi::VerificaSintassi(*m_pad, 1, false);
    ModuloVerificaSintassi::AzzeraRisultati();
    m_pad->parentWidget()->repaint();
}

void PaginaCorrente::AvvisaLettura(const QString &percorso, const ModuloPrincipale::RisultatoLettura &esito) const
{
    using ModuloPrincipale::EsitoLettura;
    const QString nome = NomiFile::Leggibile(percorso);
    switch (esito.esito) {
    case EsitoLettura::Inesistente:
        Domande::Informa(m_finestra, Messaggio(323).arg(nome));
        break;
    case EsitoLettura::Cartella:
        Domande::Avverti(m_finestra, Messaggio(200).arg(nome));
        break;
    case EsitoLettura::NonRegolare:
        Domande::Avverti(m_finestra, Messaggio(201).arg(nome));
        break;
    case EsitoLettura::TroppoGrande:
        Domande::Avverti(m_finestra, Messaggio(203).arg(nome));
        break;
    default:
        Domande::Avverti(m_finestra, Messaggio(202).arg(nome, Messaggio(NomiFile::Consentito(percorso) ? 336 : 330)));
    }
}

bool PaginaCorrente::Modificata() const
{
    const QString &salvato = m_schede.Corrente().testoSalvato;
    if (salvato.isEmpty())
        return false;
    return salvato.compare(m_pad->Text(), Qt::CaseInsensitive) != 0;
}

QString PaginaCorrente::TestoSuDisco() const
{
    return !m_schede.SenzaFile() && m_file.Altra() ? QString() : m_schede.Corrente().testoSuDisco;
}

bool PaginaCorrente::ChiediSalvataggio()
{
    Guarda(&FileAperto::Novita);
    const bool avanti = !Modificata() || !Domande::ChiediConferma(m_finestra) || Salva();
    // A page that stays keeps its preview.
    if (avanti && !Stato().FileCorrente.isEmpty())
        emit NascondiAnteprima();
    return avanti;
}

void PaginaCorrente::Iniziata()
{
    m_daRicaricare = false;
    m_schede.Inizia(m_pad->Text());
    Pubblica();
}

void PaginaCorrente::Torna(int segno)
{
    if (!m_schede.Torna(segno))
        return;
    Pubblica();
    emit Tornata();
}

void PaginaCorrente::Recupera(const PaginaRecuperata &pagina)
{
    // Compared with what is on the disk, the page is modified: closing will ask.
    const QString &file = pagina.FileCorrente;
    QString salvato;
    FormatoPagina formato;
    FotoFile foto = FotoFile::Scatta(file);
    const ModuloPrincipale::RisultatoLettura esito = ModuloPrincipale::LeggiPagina(file, salvato, &formato);
    foto.impronta = esito.impronta;
    if (!esito) {
        salvato = PaginaVuota::Testo();
        formato = {};
    }
    // What came into the file after the text was written was never seen by the user.
    if (!esito || foto.modificata > pagina.quando.toMSecsSinceEpoch() * 1'000'000)
        foto = {};
    if (formato.codifica.isEmpty())
        formato.codifica = pagina.codifica;
    emit InApertura();
    if (file.isEmpty())
        m_schede.Inizia(salvato, formato);
    else
        m_schede.Apri(file, salvato, formato);
    m_file.Letta(file, foto, true);
    Pubblica();
    Metti(pagina.testo);
}

QString PaginaCorrente::Nome() const
{
    const QString &corrente = Stato().FileCorrente;
    return corrente.isEmpty() ? Messaggio(344) : NomiFile::Leggibile(File_System::NomeFile(corrente));
}

QString PaginaCorrente::Titolo() const
{
    return u"Velloro - [%1]"_s.arg(Nome());
}
