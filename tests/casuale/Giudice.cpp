#include "Giudice.h"

#include "Attore.h"

#include "app/Comandi.h"
#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaLingua.h"
#include "editor/FrmPaginaHTML.h"
#include "editor/Recupero.h"
#include "editor/clsUndo.h"
#include "html/FrmComplete.h"
#include "html/FrmControlloSintassi.h"
#include "html/Scansione.h"
#include "html/TestoRiscontro.h"
#include "platform/FilePagina.h"
#include "platform/RichTextBox.h"

#include <QApplication>
#include <QDirIterator>
#include <QLabel>
#include <QAbstractItemView>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTextBlock>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

QStringList &Tralasciati()
{
    static QStringList tralasciati;
    return tralasciati;
}

/// A page without what a file cannot say or Qt's document cannot hold: kinds of line ends, and one at the end.
QString Nuda(QString testo)
{
    testo = QString::fromUtf8(testo.toUtf8()); // lone surrogates
    if (testo.endsWith(u'\r'))
        testo.chop(1);
    testo.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    // Characters that the page's encoding lacks are saved as references.
    static const QRegularExpression riferimento(u"&#(\\d{2,7});"_s);
    for (auto trovato = riferimento.match(testo); trovato.hasMatch(); trovato = riferimento.match(testo)) {
        const char32_t c = trovato.captured(1).toUInt();
        testo.replace(trovato.capturedStart(), trovato.capturedLength(), QString::fromUcs4(&c, 1));
    }
    return testo;
}

QString Taglia(const QString &testo)
{
    return Passo{.testo = testo.left(200)}.Riga().section(u'"', 1, 1);
}

/// Where two texts part.
QString Differenza(const QString &vero, const QString &atteso)
{
    const auto [a, b] = std::mismatch(vero.begin(), vero.end(), atteso.begin(), atteso.end());
    Q_UNUSED(b);
    const qsizetype dove = std::max<qsizetype>(0, a - vero.begin() - 10);
    return u"from %1: \"%2\" instead of \"%3\""_s.arg(QString::number(dove), Taglia(vero.mid(dove, 60)),
                                                      Taglia(atteso.mid(dove, 60)));
}

int Righe(QStringView testo)
{
    int righe = 1;
    for (qsizetype i = 0; i < testo.size(); ++i)
        righe += testo[i] == u'\n' || (testo[i] == u'\r' && (i + 1 == testo.size() || testo[i + 1] != u'\n'));
    return righe;
}

/// What Qt's document must hold of a text, and what it does hold, without the breaks.
QString SenzaInterruzioni(QString testo)
{
    testo.removeIf([](QChar c) { return u"\r\n\x2029\xFDD0\xFDD1"_s.contains(c); });
    return testo;
}

class Raccolta : public ModuloVerificaSintassi::Ricevitore
{
public:
    void Trova(const ModuloVerificaSintassi::Riscontro &r) override
    {
        const QString nome = r.nome.toString().left(ModuloVerificaSintassi::MassimoNome);
        const std::tuple chiave(qint64(r.riga), int(r.tipo), nome);
        if (std::find(riscontri.begin(), riscontri.end(), chiave) == riscontri.end())
            riscontri.push_back(chiave);
    }
    std::vector<std::tuple<qint64, int, QString>> riscontri;
};

} // namespace

Giudice::Giudice(FrmStart &finestra, const QString &cartella)
    : m_finestra(finestra), m_pad(*finestra.PadCorrente()), m_cartella(cartella)
{
    connect(&finestra, &FrmStart::Mostrata, this, [this] { m_cominciato = true; });
    // Where the history begins.
    connect(finestra.UndoRTB(), &clsUndo::StatoCambiato, this, [this, undo = finestra.UndoRTB()] {
        if (undo->UndoList().size() > 1 || !undo->RedoList().empty())
            return;
        m_primoTesto = m_pad.Text();
        m_primaRtf = m_pad.TextRTF();
    });
    connect(finestra.findChild<PaginaCorrente *>(), &PaginaCorrente::Salvata, this, &Giudice::EsaminaSalvata);
}

void Giudice::Tralascia(const QStringList &generi)
{
    Tralasciati() = generi;
}

void Giudice::Accusa(const QString &genere, const QString &testo)
{
    if (Tralasciati().contains(genere))
        return;
    std::printf("fault %s\n", qPrintable(genere + u' ' + QString(testo).replace(u'\n', u' ')));
    std::fflush(stdout);
    std::_Exit(Colpevole);
}

// --- At any time ----------------------------------------------------------------------------------------------------

void Giudice::Esamina()
{
    if (!m_cominciato || Stato().ControlloInCorso)
        return;
    if (std::exchange(m_revisione, m_pad.Revisione()) != m_pad.Revisione())
        EsaminaTesto();
    EsaminaFinestre();
    const int inizio = m_pad.SelStart();
    if (inizio < 0 || m_pad.SelLength() < 0 || inizio + m_pad.SelLength() > m_pad.Lunghezza())
        Accusa(u"caret"_s, u"at %1 of %2"_s.arg(inizio).arg(m_pad.Lunghezza()));
}

void Giudice::EsaminaTesto()
{
    const QString testo = m_pad.Text();
    if (testo.size() != m_pad.Lunghezza())
        Accusa(u"text"_s, u"%1 units, said to be %2"_s.arg(testo.size()).arg(m_pad.Lunghezza()));
    const QString atteso = SenzaInterruzioni(testo);
    const QString documento = SenzaInterruzioni(m_pad.document()->toRawText());
    if (atteso != documento)
        Accusa(u"text"_s, u"the document differs "_s + Differenza(documento, atteso));
    if (m_finestra.Documento()->Pad_NumeroRighe() != Righe(testo))
        Accusa(u"gutter"_s,
               u"%1 lines, %2 in the text"_s.arg(m_finestra.Documento()->Pad_NumeroRighe()).arg(Righe(testo)));
}

void Giudice::EsaminaFinestre() const
{
    for (const QWidget *finestra : QApplication::topLevelWidgets()) {
        const QSize schermo = finestra->screen()->size();
        if (finestra->isVisible() && (finestra->width() > schermo.width() || finestra->height() > schermo.height()))
            Accusa(u"window"_s, u"%1 is larger than the screen"_s.arg(finestra->objectName()));
    }
    const QString titolo = m_finestra.findChild<PaginaCorrente *>()->Titolo();
    if (m_finestra.windowTitle() != titolo)
        Accusa(u"title"_s, u"%1 instead of %2"_s.arg(m_finestra.windowTitle(), titolo));
    const int riga = m_pad.GetLineFromChar(m_pad.SelStart());
    const QString posto =
        ModuloPrincipale::Messaggio(208).arg(riga + 1).arg(m_pad.SelStart() - m_pad.InizioRiga(riga) + 1);
    const QString detto = m_finestra.findChild<QLabel *>(u"StatusBar(3)"_s)->text();
    if (detto != posto)
        Accusa(u"status"_s, u"%1 instead of %2"_s.arg(detto, posto));
}

// --- What was typed -------------------------------------------------------------------------------------------------

/// Nothing stands between the user and the page.
bool Giudice::Libera() const
{
    return m_cominciato && !Stato().ControlloInCorso && !Attore::Ostacolo() && m_pad.hasFocus() &&
           QApplication::activeWindow() == &m_finestra;
}

/// The caret is in no tag.
bool Giudice::NelTesto() const
{
    const QString davanti = m_pad.Text().first(m_pad.SelStart());
    return davanti.lastIndexOf(u'<') <= davanti.lastIndexOf(u'>');
}

void Giudice::ProvaTesto(const QString &testo, bool quieto, const std::function<void()> &batti)
{
    if (Libera() && quieto && NelTesto() && !Sospeso())
        m_intero = m_pad.Text().replace(m_pad.SelStart(), m_pad.SelLength(), testo);
    else
        m_incerto = true;
    batti();
}

void Giudice::ProvaScelta(const QString &iniziali, bool quieto, const std::function<void()> &batti)
{
    if (Libera() && quieto && NelTesto() && !Sospeso()) {
        m_davanti = m_pad.Text().first(m_pad.SelStart()) + u'<' + iniziali;
        m_dietro = m_pad.Text().sliced(m_pad.SelStart() + m_pad.SelLength());
    }
    m_incerto = true;
    batti();
}

void Giudice::Aspetta(const QString &testo)
{
    m_contenuto = testo;
}

bool Giudice::Giunto() const
{
    const QString testo = m_pad.Text();
    return (m_intero.isEmpty() || testo == m_intero) && testo.contains(m_contenuto) &&
           testo.startsWith(m_davanti, Qt::CaseInsensitive) && testo.endsWith(m_dietro);
}

bool Giudice::Attende()
{
    constexpr int Pazienza = 200;
    if (!Sospeso())
        return false;
    const bool lista = !m_davanti.isEmpty() && FrmComplete::Corrente() && Attore::Ostacolo() == FrmComplete::Corrente();
    if (lista && ++m_attese < Pazienza)
        return true;
    if (!m_cominciato || (!Libera() && !lista)) {
        m_altrove = true; // another box that came has the keys, or some of them
        return false;
    }
    const bool giunto = Giunto();
    if (!giunto && ++m_attese < Pazienza)
        return true;
    if (!giunto && !m_altrove && !m_contenuto.isEmpty())
        Accusa(u"keys"_s, u"\"%1\", typed while a box closed: "_s.arg(m_contenuto) + Taglia(m_pad.Text()));
    else if (!giunto && !m_altrove)
        Accusa(u"typing"_s, Differenza(m_pad.Text(), m_davanti.isEmpty() ? m_intero : m_davanti + u"..."_s + m_dietro));
    if (m_incerto && Cambia())
        return true;
    m_attese = 0;
    m_altrove = m_incerto = false;
    m_intero.clear();
    m_davanti.clear();
    m_dietro.clear();
    m_contenuto.clear();
    return false;
}

/// Whether the text has changed a moment ago: keys that nobody waits for may be on their way.
bool Giudice::Cambia()
{
    constexpr int Quiete = 30;
    m_ferma = std::exchange(m_vista, m_pad.Revisione()) == m_pad.Revisione() ? m_ferma + 1 : 0;
    if (m_ferma < Quiete)
        return true;
    m_ferma = 0;
    return false;
}

// --- Files ----------------------------------------------------------------------------------------------------------

bool Giudice::InUnFile(const QString &testo) const
{
    const QString cercata = Nuda(testo);
    for (QDirIterator file(m_cartella + u"/.."_s, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         file.hasNext();) {
        QString letta;
        if (ModuloPrincipale::LeggiFile(file.next(), letta) && Nuda(letta) == cercata)
            return true;
    }
    return false;
}

void Giudice::EsaminaSalvata() const
{
    const QString testo = m_pad.Text();
    if (InUnFile(testo))
        return;
    const QString file = Stato().FileSalvato.isEmpty() ? Stato().FileCorrente : Stato().FileSalvato;
    QString letta;
    (void)ModuloPrincipale::LeggiFile(file, letta);
    Accusa(u"saved"_s,
           u"no file holds the page that was saved; %1 differs "_s.arg(file) + Differenza(Nuda(letta), Nuda(testo)));
}

void Giudice::PrimaDellaFine()
{
    const QString testo = m_pad.Text();
    if (m_cominciato && !testo.isEmpty() && testo != Stato().TestoSalvato && !InUnFile(testo))
        m_lasciata = testo;
}

void Giudice::DopoLaFine(const QString &lasciata)
{
    if (lasciata.isEmpty())
        return;
    const auto voci = Recupero::DaOffrire();
    const bool offerta = std::any_of(voci.begin(), voci.end(), [&](const VoceRecupero &voce) {
        const auto pagina = Recupero::Leggi(voce);
        return pagina && pagina->testo == lasciata;
    });
    if (!offerta)
        Accusa(u"recovery"_s, u"the unsaved page is not offered: "_s + Taglia(lasciata));
}

// --- The check ------------------------------------------------------------------------------------------------------

void Giudice::ProvaControllo(int riga)
{
    if (!Libera())
        return;
    const int revisione = m_pad.Revisione();
    const std::pair selezione(m_pad.SelStart(), m_pad.SelLength());
    m_finestra.ElencoComandi().Esegui(u"MenuStrumenti(0)"_s);
    if (m_pad.Revisione() == revisione && std::pair(m_pad.SelStart(), m_pad.SelLength()) != selezione)
        Accusa(u"check"_s, u"the caret went to %1"_s.arg(m_pad.SelStart()));
    if (!Libera() || m_pad.Revisione() != revisione)
        return;
    EsaminaElenco(m_pad.Text());
    if (FrmControlloSintassi::Aperta()->ListCount() > 0)
        ScegliRiga(riga % FrmControlloSintassi::Aperta()->ListCount());
}

void Giudice::EsaminaElenco(const QString &testo) const
{
    Raccolta raccolta;
    ModuloVerificaSintassi::Scandisci(testo, {}, raccolta);
    const FrmControlloSintassi &elenco = *FrmControlloSintassi::Aperta();
    QStringList righe;
    for (int i = 0; i < elenco.ListCount(); ++i)
        righe += elenco.List(i);
    for (const auto &[riga, tipo, nome] : raccolta.riscontri) {
        Q_UNUSED(tipo);
        const QString inizio = QString::number(riga) + u": "_s;
        const QString citato =
            u'\'' + ModuloVerificaSintassi::SuUnaRiga(nome.section(u'\r', 0, 0).section(u'\n', 0, 0));
        const auto qui = std::find_if(righe.begin(), righe.end(), [&](const QString &voce) {
            return voce.startsWith(inizio) && voce.contains(citato.left(300));
        });
        if (qui == righe.end())
            return Accusa(u"list"_s, u"line %1, %2' is not listed"_s.arg(riga).arg(citato));
        righe.erase(qui);
    }
    if (!righe.isEmpty())
        Accusa(u"list"_s, u"listed without reason: "_s + righe.constFirst());
}

void Giudice::ScegliRiga(int riga)
{
    auto *lista = m_finestra.findChild<QAbstractItemView *>(u"RichControllo"_s);
    const QString voce = FrmControlloSintassi::Aperta()->List(riga);
    const QModelIndex indice = lista->model()->index(riga, 0);
    lista->scrollTo(indice);
    const QPoint dove = lista->visualRect(indice).topLeft() + QPoint(3, 3);
    if (!lista->viewport()->visibleRegion().contains(dove))
        return; // in a small window
    QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, dove);
    const int vera = m_pad.GetLineFromChar(m_pad.SelStart()) + 1;
    if (!voce.startsWith(QString::number(vera) + u':'))
        Accusa(u"list"_s, u"a click on \"%1\" leads to line %2"_s.arg(voce).arg(vera));
}

// --- Undo -----------------------------------------------------------------------------------------------------------

void Giudice::ProvaStoria()
{
    if (!Libera())
        return;
    clsUndo &undo = *m_finestra.UndoRTB();
    m_pad.ConcludiComposizione();
    while (undo.RipristinaComando())
        ;
    undo.TakeUndoSnapShot();
    const QString ultimo = m_pad.Text();
    const QString ultimaRtf = m_pad.TextRTF();
    QList<size_t> testi{qHash(ultimo)};
    while (undo.AnnullaComando())
        testi += qHash(m_pad.Text());
    if (m_pad.Text() != m_primoTesto)
        Accusa(u"undo"_s, u"not back to the first text "_s + Differenza(m_pad.Text(), m_primoTesto));
    if (m_pad.TextRTF() != m_primaRtf)
        Accusa(u"undo"_s, u"not back to the first looks "_s + Differenza(m_pad.TextRTF(), m_primaRtf));
    if (testi.constLast() != qHash(m_pad.Text()))
        Accusa(u"undo"_s, u"the last step is no step"_s);
    while (undo.RipristinaComando()) {
        if (!testi.contains(qHash(m_pad.Text())))
            Accusa(u"undo"_s, u"redo shows a page that undo did not: "_s + Taglia(m_pad.Text()));
    }
    if (m_pad.Text() != ultimo)
        Accusa(u"undo"_s, u"not forward to the last text "_s + Differenza(m_pad.Text(), ultimo));
    if (m_pad.TextRTF() != ultimaRtf)
        Accusa(u"undo"_s, u"not forward to the last looks "_s + Differenza(m_pad.TextRTF(), ultimaRtf));
}
