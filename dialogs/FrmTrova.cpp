#include "dialogs/FrmTrova.h"

#include <algorithm>
#include <limits>

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "dialogs/Pezzi.h"
#include "platform/Cercatore.h"
#include "platform/Dialoghi.h"
#include "platform/Misure.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

int FrmTrova::PosizioneRicerca = 0;
QString FrmTrova::UltimaRicerca;

namespace
{

constexpr qint16 PaginaIntera = 425;
constexpr qint16 DaRigaAllaFine = 426;

// Twips.
constexpr int LarghezzaTesto = 3000;
constexpr int SinistraTesto = 1290;
constexpr int SinistraPulsanti = 4440;
constexpr int LarghezzaPulsante = 1350;
constexpr int AltezzaPulsante = 375;
constexpr int AltezzaTesto = 315;
constexpr int AltezzaTrova = 1530;
constexpr int AltezzaSostituisci = 2010;

constexpr int PropostaMassima = 1000; // a longer selection is hardly meant as a text to find
constexpr int MostratoMassimo = 300;  // of a text in a message

void Metti(QWidget *controllo, int sinistra, int cima, int larghezza, int altezza)
{
    controllo->setGeometry(Misure::InPixel(sinistra), Misure::InPixel(cima), Misure::InPixel(larghezza),
                           std::max(Misure::InPixel(altezza), controllo->sizeHint().height()));
}

// A page's lines end with CR LF; a box hands out what was pasted into it, with any line end.
QString InRighe(QString testo)
{
    testo.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(QChar::LineSeparator, u'\n');
    return testo.replace(QChar::ParagraphSeparator, u'\n').replace(u"\n"_s, u"\r\n"_s);
}

} // namespace

FrmTrova::FrmTrova(QWidget *genitore) : QDialog(genitore)
{
    setObjectName(u"FrmTrova"_s);
    setModal(false);
    Crea();
    ModuloGrafica::Decora(*this);
}

void FrmTrova::Crea()
{
    const auto chiama = [](auto *controllo, const QString &nome) {
        controllo->setObjectName(nome);
        return controllo;
    };
    m_label1 = chiama(new QLabel(this), u"Label1"_s);
    m_txtFind = chiama(new QLineEdit(this), u"TxtFind"_s);
    m_label2 = chiama(new QLabel(this), u"Label2"_s);
    m_txtReplace = chiama(new QLineEdit(this), u"TxtReplace"_s);
    m_chkOption = chiama(new QCheckBox(this), u"ChkOption"_s);
    m_chkReplaceAll = chiama(new QCheckBox(this), u"ChkReplaceAll"_s);
    m_cmdTrova = chiama(new QPushButton(this), u"CmdTrova"_s);
    m_cmdSostituisci = chiama(new QPushButton(this), u"CmdSostituisci"_s);
    m_cmdEsci = chiama(new QPushButton(this), u"CmdEsci"_s);
    m_label1->setBuddy(m_txtFind);
    m_label2->setBuddy(m_txtReplace);
    for (QLineEdit *casella : {m_txtFind, m_txtReplace})
        casella->setMaxLength(std::numeric_limits<int>::max());
    for (QPushButton *pulsante : {m_cmdTrova, m_cmdSostituisci, m_cmdEsci})
        pulsante->setProperty("Tag", u"D"_s);
    m_cmdTrova->setDefault(true);
    connect(m_cmdTrova, &QPushButton::clicked, this, &FrmTrova::AlTrova);
    connect(m_cmdSostituisci, &QPushButton::clicked, this, &FrmTrova::AlSostituisci);
    connect(m_cmdEsci, &QPushButton::clicked, this, &FrmTrova::close);
}

void FrmTrova::Init(RichTextBox *controllo, quint8 modalita)
{
    m_pad = controllo;
    if (modalita == RipetiTrova) {
        bool fineRicerca = false;
        const QPointer<FrmTrova> questo(this);
        TrovaStringa(UltimaRicerca, fineRicerca, false);
        if (questo)
            close();
        return;
    }
    ProponiTesto();
    ImpostaModalita(modalita);
    MettiDovEra();
    show();
    raise();
    activateWindow();
    m_txtFind->setFocus();
    m_txtFind->selectAll();
}

void FrmTrova::ProponiTesto()
{
    QString proposta;
    if (m_pad && m_pad->SelLength() > 0 && m_pad->SelLength() <= PropostaMassima)
        proposta = m_pad->SelText();
    if (!proposta.isEmpty() && !proposta.contains(u'\r') && !proposta.contains(u'\n'))
        m_txtFind->setText(proposta);
    else if (!isVisible() && !UltimaRicerca.isEmpty())
        m_txtFind->setText(UltimaRicerca);
}

void FrmTrova::ImpostaDidascalie(bool sostituisce)
{
    setWindowTitle(Messaggio(sostituisce ? 18 : 16));
    m_label1->setText(Messaggio(16));
    m_label2->setText(Messaggio(18));
    m_cmdTrova->setText(Messaggio(16));
    m_cmdSostituisci->setText(Messaggio(18));
    m_cmdEsci->setText(Messaggio(72));
    m_chkOption->setText(Messaggio(105));
    m_chkReplaceAll->setText(Messaggio(106));
}

void FrmTrova::ImpostaModalita(quint8 modalita)
{
    const bool sostituisce = modalita != Trova;
    ImpostaDidascalie(sostituisce);
    for (QWidget *controllo : {static_cast<QWidget *>(m_label2), static_cast<QWidget *>(m_txtReplace),
                               static_cast<QWidget *>(m_cmdSostituisci), static_cast<QWidget *>(m_chkReplaceAll)})
        controllo->setVisible(sostituisce);

    Metti(m_label1, 120, 150, SinistraTesto - 180, 255);
    Metti(m_txtFind, SinistraTesto, 105, LarghezzaTesto, AltezzaTesto);
    Metti(m_label2, 120, 600, SinistraTesto - 180, 255);
    Metti(m_txtReplace, SinistraTesto, 555, LarghezzaTesto, AltezzaTesto);
    Metti(m_chkOption, SinistraTesto, sostituisce ? 1020 : 540, LarghezzaTesto, 255);
    Metti(m_chkReplaceAll, SinistraTesto, 1380, LarghezzaTesto, 255);
    // Captions of other languages may be longer than the designed buttons.
    int larghezza = LarghezzaPulsante;
    for (const QPushButton *pulsante : {m_cmdTrova, m_cmdSostituisci, m_cmdEsci})
        larghezza = std::max(larghezza, Misure::InTwip(pulsante->sizeHint().width()));
    Metti(m_cmdTrova, SinistraPulsanti, 90, larghezza, AltezzaPulsante);
    Metti(m_cmdSostituisci, SinistraPulsanti, 555, larghezza, AltezzaPulsante);
    Metti(m_cmdEsci, SinistraPulsanti, sostituisce ? 1020 : 600, larghezza, AltezzaPulsante);
    setFixedSize(Misure::InPixel(SinistraPulsanti + larghezza + 120),
                 Misure::InPixel(sostituisce ? AltezzaSostituisci : AltezzaTrova));
}

// --- Search ---------------------------------------------------------------------------------------------------------

namespace
{

/// The selection that the last search or replacement left, and where.
struct Lasciata {
    QPointer<RichTextBox> pad;
    int da = 0;
    int quanti = 0;
};

Lasciata &UltimaSelezione()
{
    static Lasciata lasciata;
    return lasciata;
}

} // namespace

void FrmTrova::SeguiCaretto(int dopoInizio)
{
    const Lasciata &ultima = UltimaSelezione();
    const bool sua = ultima.pad == m_pad;
    if (m_pad && (m_pad->SelStart() != (sua ? ultima.da : 0) || m_pad->SelLength() != (sua ? ultima.quanti : 0)))
        PosizioneRicerca = m_pad->SelStart() + (m_pad->SelLength() > 0 ? dopoInizio : 0);
}

void FrmTrova::RicordaCaretto()
{
    if (!m_pad)
        return;
    Lasciata &ultima = UltimaSelezione();
    ultima.pad = m_pad.data();
    ultima.da = m_pad->SelStart();
    ultima.quanti = m_pad->SelLength();
}

void FrmTrova::TrovaStringa(const QString &testo, bool &fineRicerca, bool senzaMessaggio)
{
    UltimaRicerca = testo;
    SeguiCaretto(1);
    const bool maiuscole = m_chkOption->isChecked();
    int trovato = -1;
    if (m_pad && !testo.isEmpty()) {
        const int opzioni = maiuscole ? RichTextBox::Maiuscole : 0;
        trovato = m_pad->Find(testo, PosizioneRicerca, -1, opzioni | RichTextBox::SenzaEvidenza);
    }
    if (trovato >= 0) {
        PosizioneRicerca = trovato + 1;
        const int lunghezza = int(testo.size());
        const int riga = m_pad->GetLineFromChar(trovato);
        const auto righe = m_pad->RigheVisibili();
        const bool inVista = std::any_of(righe.begin(), righe.end(), [&](const RichTextBox::RigaVisibile &visibile) {
            return visibile.riga == riga && visibile.cima + visibile.altezza <= m_pad->viewport()->height();
        });
        m_pad->Seleziona(trovato, lunghezza);
        RicordaCaretto();
        Mostra(trovato, lunghezza, inVista);
        return;
    }
    PosizioneRicerca = 0;
    RicordaCaretto();
    fineRicerca = true;
    if (senzaMessaggio)
        return;
    QString mostrato = testo;
    if (mostrato.size() > MostratoMassimo)
        mostrato = mostrato.first(MostratoMassimo) + u'…';
    Informa(testo.isEmpty() ? Messaggio(302) : Messaggio(89) + u" '"_s + mostrato + u"' "_s + Messaggio(90));
}

void FrmTrova::SostituisciStringa(const QString &testo, const QString &testoSostituito, bool trovaDopo)
{
    Q_UNUSED(testo);
    // A running check works with places in the text.
    if (!m_pad || ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    const QPointer<FrmTrova> questo(this);
    emit SostituzioneImminente();
    if (!questo || !m_pad)
        return;
    // New text looks like what it replaces, as when all are replaced.
    if (m_pad->SelLength() > 0)
        m_pad->SostituisciTutte({m_pad->SelStart()}, m_pad->SelLength(), testoSostituito);
    else
        m_pad->ImpostaSelText(testoSostituito);
    RicordaCaretto();
    emit SostituzioneFatta();
    if (questo && trovaDopo)
        AlTrova();
}

void FrmTrova::AlTrova()
{
    bool fineRicerca = false;
    TrovaStringa(InRighe(m_txtFind->text()), fineRicerca, false);
}

void FrmTrova::AlSostituisci()
{
    if (m_chkReplaceAll->isChecked())
        SostituisciTutto();
    else
        SostituisciStringa(InRighe(m_txtFind->text()), InRighe(m_txtReplace->text()), true);
}

// One pass over the text as it was: a search that goes on after the text put in never meets that text.
void FrmTrova::SostituisciTutto()
{
    if (!m_pad || ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    int quanti = 0;
    SeguiCaretto(0);
    const int primaRiga = m_pad->GetLineFromChar(PosizioneRicerca) + 1;
    const QString testo = InRighe(m_txtFind->text());
    {
        const Pezzi::CursoreAttesa attesa;
        std::vector<int> posizioni;
        if (!testo.isEmpty() && testo.size() <= m_pad->Lunghezza()) {
            const QString pagina = m_pad->Text();
            const Cercatore cercatore(testo, m_chkOption->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive);
            for (qsizetype dove = cercatore.Prossimo(pagina, PosizioneRicerca); dove >= 0;
                 dove = cercatore.Prossimo(pagina, dove + testo.size()))
                posizioni.push_back(int(dove));
        }
        if (!posizioni.empty()) {
            const QPointer<FrmTrova> questo(this);
            emit SostituzioneImminente();
            if (!questo || !m_pad)
                return;
            quanti = m_pad->SostituisciTutte(posizioni, int(testo.size()), InRighe(m_txtReplace->text()));
            emit SostituzioneFatta();
            if (!questo)
                return;
        }
    }
    UltimaRicerca = testo;
    const QString dove = PosizioneRicerca == 0 ? Messaggio(PaginaIntera) : Messaggio(DaRigaAllaFine).arg(primaRiga);
    PosizioneRicerca = 0;
    RicordaCaretto();
    Informa(Messaggio(87) + u' ' + QString::number(quanti) + u' ' + Messaggio(88) + u'\n' + dove);
}

void FrmTrova::Informa(const QString &testo)
{
    const QPointer<FrmTrova> questo(this);
    ModuloPrincipale::NonInPrimoPiano(this);
    Pezzi::MostraMessaggio(isVisible() || !m_pad ? this : m_pad->window(), QMessageBox::Information, testo);
    if (questo)
        ModuloPrincipale::InPrimoPiano(this);
}

// --- The match in view ----------------------------------------------------------------------------------------------

void FrmTrova::Mostra(int posizione, int lunghezza, bool eraInVista)
{
    if (!eraInVista)
        m_pad->centerCursor();
    if (CopreIlTrovato(posizione, lunghezza))
        ScansaIlTrovato(posizione, lunghezza);
}

namespace
{

// Screen area of a match, that of its first line when it has several.
QRect AreaTrovato(const RichTextBox &pad, int posizione, int lunghezza)
{
    const QPoint inizio = pad.PosizioneDaCarattere(posizione);
    const QPoint fine = pad.PosizioneDaCarattere(posizione + lunghezza);
    const int altezza = std::max(1, pad.fontMetrics().lineSpacing());
    const int destra = fine.y() == inizio.y() ? fine.x() : pad.width();
    return {pad.mapToGlobal(inizio), QSize(std::max(1, destra - inizio.x()), altezza)};
}

} // namespace

bool FrmTrova::CopreIlTrovato(int posizione, int lunghezza) const
{
    return isVisible() && frameGeometry().intersects(AreaTrovato(*m_pad, posizione, lunghezza));
}

void FrmTrova::ScansaIlTrovato(int posizione, int lunghezza)
{
    // First by scrolling: into the middle of the larger part of the view that the dialog leaves free.
    const QRect trovato = AreaTrovato(*m_pad, posizione, lunghezza);
    const QRect vista(m_pad->viewport()->mapToGlobal(QPoint(0, 0)), m_pad->viewport()->size());
    const QRect dialogo = frameGeometry();
    const int sopra = dialogo.top() - vista.top();
    const int sotto = vista.bottom() - dialogo.bottom();
    const int meta = sopra > sotto ? vista.top() + sopra / 2 : dialogo.bottom() + sotto / 2;
    if (std::max(sopra, sotto) >= 3 * trovato.height())
        m_pad->ScorriRighe((trovato.top() - meta) / trovato.height());
    if (!CopreIlTrovato(posizione, lunghezza))
        return;
    // The page ends there: the dialog moves, below the match or above it.
    const QRect ora = AreaTrovato(*m_pad, posizione, lunghezza);
    const QRect schermo = screen()->availableGeometry();
    const int margine = 2 * ora.height();
    const bool cisSta = ora.bottom() + margine + dialogo.height() <= schermo.bottom();
    move(x(), cisSta ? ora.bottom() + margine : std::max(schermo.top(), ora.top() - margine - dialogo.height()));
}

// --- Window ---------------------------------------------------------------------------------------------------------

bool FrmTrova::event(QEvent *evento)
{
    if (evento->type() == QEvent::WindowActivate && m_txtFind->isEnabled() && m_txtFind->isVisible())
        m_txtFind->setFocus();
    return QDialog::event(evento);
}

void FrmTrova::keyPressEvent(QKeyEvent *evento)
{
    if (evento->key() == Qt::Key_F3 && evento->modifiers() == Qt::NoModifier) {
        AlTrova();
        evento->accept();
        return;
    }
    QDialog::keyPressEvent(evento);
}

void FrmTrova::MettiDovEra()
{
    if (isVisible() || !m_posto)
        return;
    // The screen may be another one by now.
    const QRect schermo = screen()->availableGeometry();
    move(std::clamp(m_posto->x(), schermo.left(), std::max(schermo.left(), schermo.right() - width())),
         std::clamp(m_posto->y(), schermo.top(), std::max(schermo.top(), schermo.bottom() - height())));
}

void FrmTrova::hideEvent(QHideEvent *evento)
{
    if (!evento->spontaneous())
        m_posto = pos();
    QDialog::hideEvent(evento);
}

void FrmTrova::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    ModuloPrincipale::InPrimoPiano(this);
}
