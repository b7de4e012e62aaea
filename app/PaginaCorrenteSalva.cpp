#include "app/PaginaCorrente.h"

#include "app/Domande.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "platform/DatiFile.h"
#include "platform/Dialoghi.h"
#include "platform/File_System.h"
#include "platform/NomiFile.h"
#include "platform/RichTextBox.h"
#include "platform/TastiDopoDialogo.h"

#include <QFileInfo>

// How the page comes into its file again, and what may have happened to that in the meantime.

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::EsitoScrittura;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr QStringView Estensione = u"dat"; // what Save As gives a name without one

// Buttons.
constexpr qint16 Tieni = 389;
constexpr qint16 CaricaAltro = 390;
constexpr qint16 AltroNome = 391;
constexpr qint16 Sostituisci = 392;
constexpr qint16 Dopo = 278;
constexpr qint16 Annulla = 314;

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

qint16 TestoDomanda(Mutamento mutamento)
{
    switch (mutamento) {
    case Mutamento::Contenuto:
        return 384;
    case Mutamento::SolaLettura:
        return 386;
    case Mutamento::NonRegolare:
        return 387;
    case Mutamento::LettaInParte:
        return 388;
    default:
        return 385;
    }
}

bool Riuscito(EsitoScrittura esito)
{
    return esito == EsitoScrittura::Scritto || esito == EsitoScrittura::NienteDaScrivere;
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

QString PaginaCorrente::Filtro()
{
    return u"HTML / ASP (*.html, *.htm, *.asp)\0*.html;*.htm;*.asp\0\0"_s;
}

QString PaginaCorrente::Cartella()
{
    const QString posto = ModuloDichiarazioni::PostoPagina();
    return posto.isEmpty() ? QString() : QFileInfo(posto).path();
}

bool PaginaCorrente::Salva()
{
    // A new page must not replace, unasked, the one that was opened before it.
    if (m_schede.SenzaFile() || !File_System::FileEsiste(m_schede.File()))
        return SalvaConNome();
    while (true) {
        const Passo passo = m_pad->Lunghezza() == 0 ? Passo::Scrivi : PrimaDiScrivere();
        if (passo == Passo::AltroNome)
            return SalvaConNome();
        if (passo == Passo::Rinuncia)
            return false;
        const EsitoScrittura esito = Scrivi(m_file.Percorso(), m_file.Vista());
        if (esito != EsitoScrittura::Cambiato)
            return Riuscito(esito);
    }
}

bool PaginaCorrente::SalvaConNome()
{
    while (true) {
        QString scelto;
        ModuloPrincipale::SalvaFileDialogo(m_finestra, scelto, Filtro(), Cartella(), Messaggio(317), Messaggio(316),
                                           Estensione.toString());
        if (scelto.isEmpty())
            return false;
        // The dialog has asked about a file that is there; one that comes after it has not been asked about.
        qint16 risposta = Sostituisci;
        while (risposta == Sostituisci) {
            const EsitoScrittura esito = Scrivi(scelto, FotoFile::Scatta(scelto));
            if (esito != EsitoScrittura::Cambiato)
                return Riuscito(esito);
            risposta = Domande::Scegli(m_finestra, Messaggio(393).arg(NomiFile::Leggibile(scelto)),
                                       {Sostituisci, AltroNome}, Annulla);
        }
        if (risposta == Annulla)
            return false;
    }
}

Mutamento PaginaCorrente::Guarda(Mutamento (FileAperto::*domanda)())
{
    if (m_schede.SenzaFile())
        return Mutamento::Nessuno;
    const bool prima = m_file.Altra();
    const Mutamento mutamento = (m_file.*domanda)();
    if (m_file.Altra() != prima)
        emit DiscoCambiato();
    return mutamento;
}

void PaginaCorrente::GuardaFile()
{
    if (m_daRicaricare)
        return Ricarica();
    const Mutamento mutamento = Guarda(&FileAperto::Novita);
    if (mutamento == Mutamento::Nessuno)
        return;
    m_file.Detto(false);
    const bool altro = mutamento == Mutamento::Contenuto;
    const QList<qint16> bottoni = altro ? QList<qint16>{Tieni, CaricaAltro, AltroNome} : QList<qint16>{AltroNome};
    const QString testo = Messaggio(TestoDomanda(mutamento)).arg(NomiFile::Leggibile(m_file.Percorso()));
    switch (Domande::Scegli(m_finestra, testo, bottoni, altro ? Dopo : Tieni)) {
    case Tieni:
        m_file.Detto(altro);
        break;
    case CaricaAltro:
        CaricaAltra();
        break;
    case AltroNome:
        SalvaConNome();
        break;
    default:
        break;
    }
}

PaginaCorrente::Passo PaginaCorrente::PrimaDiScrivere()
{
    const Mutamento mutamento = Guarda(&FileAperto::Ostacolo);
    if (mutamento == Mutamento::Nessuno)
        return Passo::Scrivi;
    m_file.Detto(false);
    QList<qint16> bottoni{AltroNome};
    if (mutamento == Mutamento::Contenuto)
        bottoni = {Tieni, CaricaAltro, AltroNome};
    else if (mutamento == Mutamento::LettaInParte)
        bottoni = {Sostituisci, AltroNome};
    const QString testo = Messaggio(TestoDomanda(mutamento)).arg(NomiFile::Leggibile(m_file.Percorso()));
    switch (Domande::Scegli(m_finestra, testo, bottoni, Annulla)) {
    case Tieni:
    case Sostituisci:
        m_file.Detto(true);
        return Passo::Scrivi;
    case CaricaAltro:
        CaricaAltra();
        return Passo::Rinuncia;
    case AltroNome:
        return Passo::AltroNome;
    default:
        return Passo::Rinuncia;
    }
}

/// What was typed into the question belongs to the own text, which undo brings back.
void PaginaCorrente::CaricaAltra()
{
    m_daRicaricare = TastiDopoDialogo::Restituisce();
    if (m_daRicaricare)
        emit DaRicaricare();
    else
        Ricarica();
}

/// The view stays about where it was: the other text is mostly much the same.
void PaginaCorrente::Ricarica()
{
    m_daRicaricare = false;
    const int caretto = m_pad->SelStart();
    const QPoint scorrimento = m_pad->PosizioneScorrimento();
    if (!Carica(m_file.Percorso(), false))
        return;
    m_pad->ImpostaSelStart(caretto);
    m_pad->ImpostaPosizioneScorrimento(scorrimento);
    emit AvvisoRicarica(Messaggio(394));
}

EsitoScrittura PaginaCorrente::Scrivi(const QString &percorso, const FotoFile &attesa)
{
    FormatoPagina &formato = m_schede.Formato();
    const QString testo = formato.esatta ? m_pad->Text() : ConFiniRiga(m_pad->Text());
    const ModuloPrincipale::RisultatoScrittura esito = ModuloPrincipale::ScriviTesto(
        testo, percorso, formato, [&] { return attesa.StessiDati(FotoFile::Scatta(percorso)); });
    if (esito) {
        emit Avviso(MessaggioScritta(percorso, esito));
        if (esito.esito == EsitoScrittura::Scritto)
            Registra(percorso, esito);
    } else if (esito.esito != EsitoScrittura::Cambiato) {
        AvvisaScrittura(percorso, esito);
    }
    return esito.esito;
}

void PaginaCorrente::Registra(const QString &percorso, const ModuloPrincipale::RisultatoScrittura &esito)
{
    FotoFile foto = FotoFile::Scatta(percorso);
    foto.impronta = esito.impronta;
    foto.dimensione = esito.byte;
    if (!m_schede.SenzaFile() && DatiFile::Di(percorso).StessoFile(DatiFile::Di(m_file.Percorso())))
        m_file.Scritta(foto);
    m_daRicaricare = false;
    m_schede.Salvata(m_pad->Text(), percorso);
    Stato().FileSalvato = m_schede.AltroPosto();
    emit Salvata();
}

QString PaginaCorrente::MessaggioScritta(const QString &percorso,
                                         const ModuloPrincipale::RisultatoScrittura &esito) const
{
    if (esito.esito == EsitoScrittura::NienteDaScrivere)
        return Messaggio(341);
    if (esito.sostituiti > 0)
        return Messaggio(206).arg(esito.sostituiti).arg(m_schede.Corrente().formato.codifica);
    const int numero = m_schede.SenzaFile() ? 279 : 209;
    const bool nomeDato = QFileInfo(percorso).suffix() == Estensione;
    return Messaggio(nomeDato ? 280 : qint16(numero)).arg(NomiFile::Leggibile(percorso));
}

void PaginaCorrente::AvvisaScrittura(const QString &percorso, const ModuloPrincipale::RisultatoScrittura &esito) const
{
    QString testo = esito.esito == EsitoScrittura::SolaLettura
                        ? Messaggio(205).arg(NomiFile::Leggibile(percorso))
                        : Messaggio(204).arg(NomiFile::Leggibile(percorso), Motivo(esito.esito));
    if (!esito.copiaVecchia.isEmpty())
        testo += u"\n\n"_s + esito.copiaVecchia;
    Domande::Avverti(m_finestra, testo, esito.motivo);
}
