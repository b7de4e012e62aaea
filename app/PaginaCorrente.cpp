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
#include "platform/RichTextBox.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr QStringView Estensione = u"dat";    // what Save As gives a name without one
constexpr qsizetype PaginaGrande = 2'000'000; // units; taking in more is felt as a wait
constexpr qsizetype InizioMostrato = 32'768;  // units; more than a screen of any size
const QString FiltroPagine = u"HTML / ASP (*.html, *.htm, *.asp)\0*.html;*.htm;*.asp\0\0"_s;

/// Where the file dialogs begin: beside the page.
QString Cartella()
{
    const QString posto = ModuloDichiarazioni::PostoPagina();
    return posto.isEmpty() ? QString() : QFileInfo(posto).path();
}

QString Motivo(ModuloPrincipale::EsitoScrittura esito)
{
    using ModuloPrincipale::EsitoScrittura;
    switch (esito) {
    case EsitoScrittura::NonConsentito:
        return Messaggio(330);
    case EsitoScrittura::DiscoPieno:
        return Messaggio(331);
    case EsitoScrittura::CartellaMancante:
        return Messaggio(333);
    case EsitoScrittura::Cartella:
    case EsitoScrittura::NonRegolare:
        return Messaggio(337);
    default:
        return Messaggio(336);
    }
}

/// The last line end of a page read from a file is a CR alone. What is typed behind it makes a line end like the others
/// of it. Linear.
QString ConFiniRiga(QString testo)
{
    const QStringView vista(testo);
    const auto solo = [vista](qsizetype cr) { return cr + 1 < vista.size() && vista[cr + 1] != u'\n'; };
    qsizetype cr = vista.indexOf(u'\r');
    while (cr >= 0 && !solo(cr))
        cr = vista.indexOf(u'\r', cr + 1);
    if (cr < 0)
        return testo;
    const bool chiuso = testo.endsWith(u'\r');
    testo.chop(chiuso ? 1 : 0);
    testo.replace(u"\r\n"_s, u"\r"_s).replace(u"\r"_s, u"\r\n"_s);
    return chiuso ? testo + u'\r' : testo;
}

} // namespace

PaginaCorrente::PaginaCorrente(RichTextBox *pad, QWidget *finestra)
    : QObject(finestra), m_pad(pad), m_finestra(finestra)
{
}

QString PaginaCorrente::Filtro() const
{
    return FiltroPagine;
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
    QString testo;
    FormatoPagina formato;
    const ModuloPrincipale::RisultatoLettura esito = ModuloPrincipale::LeggiPagina(percorso, testo, &formato);
    if (!esito) {
        AvvisaLettura(percorso, esito);
        // What a failing medium gave before it failed is shown all the same.
        if (testo.isEmpty())
            return false;
    }
    Metti(testo, formato);
    m_nuova = false;
    if (!formato.dichiarata.isEmpty() && formato.dichiarata != formato.codifica && formato.codifica == u"windows-1252")
        emit Avviso(Messaggio(343).arg(formato.dichiarata));
    else if (formato.altriFineRiga)
        emit Avviso(Messaggio(207));
    Stato().FileCorrente = percorso;
    Stato().FileSalvato.clear();
    Stato().TestoSalvato = testo;
    emit TitoloCambiato();
    emit Aperta(percorso);
    return bool(esito);
}

/// The reader waits for nothing but the text: the preview takes the page in when it is on the screen.
void PaginaCorrente::Metti(const QString &testo, const FormatoPagina &formato)
{
    emit InApertura();
    if (testo.size() > PaginaGrande)
        MostraInizio(testo);
    m_pad->Ridisegna(false); // not before it has its colours
    m_pad->ImpostaText(testo);
    m_formato = formato;
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
    switch (esito.esito) {
    case EsitoLettura::Inesistente:
        Domande::Informa(m_finestra, Messaggio(323).arg(percorso));
        break;
    case EsitoLettura::Cartella:
        Domande::Avverti(m_finestra, Messaggio(200).arg(percorso));
        break;
    case EsitoLettura::NonRegolare:
        Domande::Avverti(m_finestra, Messaggio(201).arg(percorso));
        break;
    case EsitoLettura::TroppoGrande:
        Domande::Avverti(m_finestra, Messaggio(203).arg(percorso));
        break;
    default:
        Domande::Avverti(m_finestra,
                         Messaggio(202).arg(percorso, Messaggio(QFileInfo(percorso).isReadable() ? 336 : 330)));
    }
}

bool PaginaCorrente::Salva()
{
    const QString &corrente = Stato().FileCorrente;
    // A new page must not replace, unasked, the one that was opened before it.
    if (SenzaFile() || !File_System::FileEsiste(corrente))
        return SalvaConNome();
    return Scrivi(corrente);
}

bool PaginaCorrente::SalvaConNome()
{
    QString scelto;
    ModuloPrincipale::SalvaFileDialogo(m_finestra, scelto, Filtro(), Cartella(), Messaggio(317), Messaggio(316),
                                       Estensione.toString());
    return !scelto.isEmpty() && Scrivi(scelto);
}

bool PaginaCorrente::SenzaFile() const
{
    return Stato().FileCorrente.isEmpty() || m_nuova;
}

qint16 PaginaCorrente::MessaggioSalvata(const QString &percorso) const
{
    if (QFileInfo(percorso).suffix() == Estensione)
        return 280;
    return qint16(SenzaFile() ? 279 : 209);
}

bool PaginaCorrente::Scrivi(const QString &percorso)
{
    const ModuloPrincipale::RisultatoScrittura esito =
        ModuloPrincipale::ScriviTesto(ConFiniRiga(m_pad->Text()), percorso, m_formato);
    if (!esito) {
        AvvisaScrittura(percorso, esito);
        return false;
    }
    if (esito.esito == ModuloPrincipale::EsitoScrittura::NienteDaScrivere)
        emit Avviso(Messaggio(341));
    else if (esito.sostituiti > 0)
        emit Avviso(Messaggio(206).arg(esito.sostituiti).arg(m_formato.codifica));
    else
        emit Avviso(Messaggio(MessaggioSalvata(percorso)).arg(QDir::toNativeSeparators(percorso)));
    if (esito.esito != ModuloPrincipale::EsitoScrittura::Scritto)
        return true;
    if (SenzaFile())
        Stato().FileSalvato = percorso;
    emit Salvata();
    return true;
}

void PaginaCorrente::AvvisaScrittura(const QString &percorso, const ModuloPrincipale::RisultatoScrittura &esito) const
{
    using ModuloPrincipale::EsitoScrittura;
    QString testo = esito.esito == EsitoScrittura::SolaLettura ? Messaggio(205).arg(percorso)
                                                               : Messaggio(204).arg(percorso, Motivo(esito.esito));
    if (!esito.copiaVecchia.isEmpty())
        testo += u"\n\n"_s + esito.copiaVecchia;
    Domande::Avverti(m_finestra, testo, esito.motivo);
}

bool PaginaCorrente::Modificata() const
{
    const QString &salvato = Stato().TestoSalvato;
    if (salvato.isEmpty())
        return false;
    return salvato.compare(m_pad->Text(), Qt::CaseInsensitive) != 0;
}

bool PaginaCorrente::ChiediSalvataggio()
{
    const bool avanti = !Modificata() || !Domande::ChiediConferma(m_finestra) || Salva();
    if (!Stato().FileCorrente.isEmpty())
        emit NascondiAnteprima();
    return avanti;
}

void PaginaCorrente::Iniziata()
{
    m_formato = {};
    m_nuova = !Stato().FileCorrente.isEmpty();
    Stato().FileSalvato.clear();
    Stato().TestoSalvato = m_pad->Text();
}

void PaginaCorrente::Recupera(const PaginaRecuperata &pagina)
{
    // Compared with what is on the disk, the page is modified: closing will ask.
    QString salvato;
    FormatoPagina formato;
    if (pagina.FileCorrente.isEmpty() || !ModuloPrincipale::LeggiFile(pagina.FileCorrente, salvato, &formato))
        salvato = PaginaVuota::Testo();
    if (formato.codifica.isEmpty())
        formato.codifica = pagina.codifica;
    Metti(pagina.testo, formato);
    Stato().FileCorrente = pagina.FileCorrente;
    Stato().FileSalvato.clear();
    Stato().TestoSalvato = salvato;
    emit TitoloCambiato();
}

QString PaginaCorrente::Nome() const
{
    const QString &corrente = Stato().FileCorrente;
    return corrente.isEmpty() ? Messaggio(344) : File_System::NomeFile(corrente);
}

QString PaginaCorrente::Titolo() const
{
    return u"Velloro - [%1]"_s.arg(Nome());
}
