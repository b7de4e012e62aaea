#include "html/FrmComplete.h"

#include "app/Impostazioni.h"
#include "chrome/Colori.h"
#include "html/CodaTasti.h"
#include "html/ColoraBattuta.h"
#include "html/ModelloVoci.h"
#include "html/TastiTrattenuti.h"
#include "platform/RichTextBox.h"

#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

constexpr int RigheMassime = 12;
constexpr int LatoIcona = 16;
constexpr int Bordo = 1;
constexpr int Aria = 3; ///< pixels above and below an entry's text

QPointer<FrmComplete> &Aperta()
{
    static QPointer<FrmComplete> aperta;
    return aperta;
}

class DisegnoVoce : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] static int Altezza(const QFontMetrics &misure)
    {
        return std::max(misure.height(), LatoIcona) + 2 * Aria;
    }

    QSize sizeHint(const QStyleOptionViewItem &opzione, const QModelIndex &) const override
    {
        return {0, Altezza(opzione.fontMetrics)};
    }

    void paint(QPainter *pittore, const QStyleOptionViewItem &opzione, const QModelIndex &indice) const override
    {
        if (opzione.state & QStyle::State_Selected)
            pittore->fillRect(opzione.rect, Colori::Intestazione);
        const QRect icona(opzione.rect.left() + 4, opzione.rect.top() + (opzione.rect.height() - LatoIcona) / 2,
                          LatoIcona, LatoIcona);
        indice.data(Qt::DecorationRole).value<QIcon>().paint(pittore, icona);
        pittore->setPen(Colori::Testo);
        pittore->drawText(opzione.rect.adjusted(RientroTesto, 0, -Aria, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                          indice.data().toString());
    }

    static constexpr int RientroTesto = 4 + LatoIcona + 6;
};

/// How much of the text that ends at the caret goes away as one character.
int UnitaPrima(const RichTextBox &editor, int caretto)
{
    const QString prima = editor.Parte(caretto - 2, 2);
    return caretto >= 2 && (prima == u"\r\n"_s || (prima[0].isHighSurrogate() && prima[1].isLowSurrogate()))
               ? 2
               : std::min(caretto, 1);
}

} // namespace

FrmComplete::FrmComplete(RichTextBox *editor)
    : QFrame(editor, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus), m_editor(editor),
      m_oggettoEditor(editor), m_oggettoFinestra(editor->window()), m_elenco(new QListView(this))
{
    setObjectName(u"FrmComplete"_s);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFont(QApplication::font());
    m_elenco->setObjectName(u"LstView"_s);
    m_elenco->setFocusPolicy(Qt::NoFocus);
    m_elenco->setFrameShape(QFrame::NoFrame);
    m_elenco->setUniformItemSizes(true);
    m_elenco->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_elenco->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_elenco->setItemDelegate(new DisegnoVoce(m_elenco));
    QPalette tavolozza = m_elenco->palette();
    tavolozza.setColor(QPalette::Base, Colori::Pannello);
    tavolozza.setColor(QPalette::Text, Colori::Testo);
    m_elenco->setPalette(tavolozza);
    auto *disposizione = new QVBoxLayout(this);
    disposizione->setContentsMargins(Bordo, Bordo, Bordo, Bordo);
    disposizione->addWidget(m_elenco);
    connect(m_elenco, &QListView::doubleClicked, this, &FrmComplete::Conferma);
}

FrmComplete::~FrmComplete()
{
    if (m_ciclo)
        m_ciclo->exit();
}

FrmComplete *FrmComplete::Corrente()
{
    return Aperta();
}

EsitoLista FrmComplete::Apri(RichTextBox *editor, const ListaVoci &lista, const QString &prefisso,
                             const ModoLista &modo)
{
    if (lista.isEmpty() || Aperta())
        return {};
    const QPointer<FrmComplete> finestra(new FrmComplete(editor));
    Aperta() = finestra;
    EsitoLista esito = finestra->Init(lista, prefisso, modo);
    delete finestra.data();
    return esito;
}

EsitoLista FrmComplete::Init(const ListaVoci &lista, const QString &prefisso, const ModoLista &modo)
{
    m_modo = modo;
    m_modello = new ModelloVoci(lista, this);
    m_elenco->setModel(m_modello);
    m_inizio = m_editor->SelStart();
    m_editor->ImpostaSelStart(m_inizio); // with text selected, typing and accepting would lose track of the place
    m_prefisso = prefisso;
    // A prefix that does not stand right before the caret is not there to be replaced.
    if (m_inizio >= prefisso.size() &&
        m_editor->Parte(m_inizio - int(prefisso.size()), int(prefisso.size())) == prefisso)
        m_lunghezzaPrefisso = int(prefisso.size());

    const QPoint caretto = m_editor->mapToGlobal(m_editor->PosizioneDaCarattere(m_inizio));
    const QPoint inizioParola = m_editor->mapToGlobal(m_editor->PosizioneDaCarattere(m_inizio - m_lunghezzaPrefisso));
    m_riga = QRect(inizioParola.y() == caretto.y() ? inizioParola : caretto, QSize(1, m_editor->cursorRect().height()));
    SelezionaVoce();

    // Also when the choice has been put in and this loop has not ended: there is nothing left to go on with.
    connect(m_editor, &RichTextBox::Change, this, [this] {
        if (m_scrivo)
            return;
        m_esito = {};
        Chiudi();
    });
    TastiTrattenuti::Di(m_editor); // its filter must be there before a key comes
    (void)CodaTasti::Di(m_editor);
    m_editor->setFocus();
    qApp->installEventFilter(this);
    show();

    const QPointer<FrmComplete> questo(this);
    QEventLoop ciclo;
    m_ciclo = &ciclo;
    ciclo.exec();
    if (!questo)
        return {};
    m_ciclo = nullptr;
    m_chiusa = true;
    hide();
    if (m_editor)
        CodaTasti::Di(m_editor).Anteponi(std::move(m_inAttesa));
    return m_esito;
}

void FrmComplete::Chiudi()
{
    if (m_chiusa)
        return;
    m_chiusa = true;
    hide();
    if (m_ciclo)
        m_ciclo->exit();
}

// --- The page -------------------------------------------------------------------------------------------------------

void FrmComplete::DigitaCarattere(const QString &carattere)
{
    {
        const QScopedValueRollback<bool> scrivo(m_scrivo, true);
        m_editor->ImpostaSelText(m_editor->SelText() + carattere);
    }
    m_prefisso += carattere;
    m_digitati += int(carattere.size());
    ColoraTesto::ColoraBattuta(m_editor);
    SelezionaVoce();
}

void FrmComplete::Cancella()
{
    const int caretto = m_editor->SelStart();
    const int unita = UnitaPrima(*m_editor, caretto);
    {
        const QScopedValueRollback<bool> scrivo(m_scrivo, true);
        m_editor->Sostituisci(caretto - unita, unita, QString());
    }
    m_digitati -= unita;
    if (m_prefisso.isEmpty()) {
        Chiudi();
        return;
    }
    m_prefisso.chop(std::min<qsizetype>(unita, m_prefisso.size()));
    SelezionaVoce();
}

void FrmComplete::Conferma()
{
    const int riga = RigaScelta();
    QString scelta = riga < 0 ? QString() : m_modello->Testo(riga);
    if (!m_modo.valori)
        scelta = Impostazioni::NomeScelto(scelta, m_prefisso);
    if (m_chiusa || scelta.isEmpty()) {
        Chiudi();
        return;
    }
    {
        const QScopedValueRollback<bool> scrivo(m_scrivo, true);
        m_editor->Sostituisci(m_inizio - m_lunghezzaPrefisso, std::max(0, m_digitati + m_lunghezzaPrefisso), scelta);
    }
    m_esito = {true, scelta, {}};
    Chiudi();
}

int FrmComplete::RigaScelta() const
{
    const QModelIndex indice = m_elenco->currentIndex();
    return indice.isValid() && m_elenco->selectionModel()->isSelected(indice) ? indice.row() : -1;
}

void FrmComplete::SelezionaVoce()
{
    const int riga = m_modello->Filtra(m_prefisso, RigaScelta());
    Disponi();
    if (riga >= 0) {
        LvwScrollRows(m_elenco, riga);
        m_elenco->setCurrentIndex(m_modello->index(riga));
    }
    m_rigaTenuta = RigaScelta();
}

// The list never sees the key: one that it has no use for would come back to the editor, and from there to the list.
void FrmComplete::Naviga(int tasto)
{
    const int ultima = m_modello->rowCount() - 1;
    const int pagina =
        std::max(1, m_elenco->viewport()->height() / DisegnoVoce::Altezza(QFontMetrics(m_elenco->font())) - 1);
    int riga = m_elenco->currentIndex().row(); // -1: none yet
    switch (tasto) {
    case Qt::Key_Up:
        riga -= 1;
        break;
    case Qt::Key_Down:
        riga += 1;
        break;
    case Qt::Key_PageUp:
        riga -= pagina;
        break;
    case Qt::Key_PageDown:
        riga += pagina;
        break;
    default:
        riga = tasto == Qt::Key_Home ? 0 : ultima;
        break;
    }
    m_elenco->setCurrentIndex(m_modello->index(std::clamp(riga, 0, ultima)));
}

void FrmComplete::LvwScrollRows(QListView *lista, int righe)
{
    if (lista->model() && lista->model()->rowCount() > 0)
        lista->scrollTo(lista->model()->index(righe, 0), QAbstractItemView::PositionAtTop);
}

// --- Place and look -------------------------------------------------------------------------------------------------

void FrmComplete::Disponi()
{
    const QFontMetrics misure(m_elenco->font());
    const int righe = std::min(m_modello->rowCount(), RigheMassime);
    const int altezza = righe * DisegnoVoce::Altezza(misure) + 2 * Bordo;
    QScreen *schermo = QGuiApplication::screenAt(m_riga.topLeft());
    const QRect area = (schermo ? schermo : m_editor->screen())->availableGeometry();
    if (!isVisible()) {
        // The first time: the width holds for every entry, and the side for as long as the list is open.
        int testo = 0;
        for (const VoceLista &voce : m_modello->Voci())
            testo = std::max(testo, misure.horizontalAdvance(voce.testo));
        const int barra =
            m_modello->Voci().size() > RigheMassime ? m_elenco->verticalScrollBar()->sizeHint().width() : 0;
        const int larghezza = DisegnoVoce::RientroTesto + testo + 10 + barra + 2 * Bordo;
        resize(std::min(larghezza, area.width()), altezza);
        const int massima = RigheMassime * DisegnoVoce::Altezza(misure) + 2 * Bordo;
        const int serve = std::min(massima, int(m_modello->Voci().size()) * DisegnoVoce::Altezza(misure) + 2 * Bordo);
        m_sopra =
            m_riga.bottom() + serve > area.bottom() && m_riga.top() - area.top() > area.bottom() - m_riga.bottom();
    }
    // A screen with little room shows fewer rows: the line that is being written stays in view.
    const int spazio = m_sopra ? m_riga.top() - area.top() - 2 : area.bottom() - m_riga.bottom() - 2;
    const int riga = DisegnoVoce::Altezza(misure);
    const int righeIntere = std::max(1, (spazio - 2 * Bordo) / riga);
    QRect posto(0, 0, width(), std::min(altezza, righeIntere * riga + 2 * Bordo));
    posto.moveLeft(m_riga.left() - DisegnoVoce::RientroTesto - Bordo);
    if (m_sopra)
        posto.moveBottom(m_riga.top() - 2);
    else
        posto.moveTop(m_riga.bottom() + 2);
    posto.moveRight(std::min(posto.right(), area.right()));
    posto.moveLeft(std::max(posto.left(), area.left()));
    posto.moveBottom(std::min(posto.bottom(), area.bottom()));
    posto.moveTop(std::max(posto.top(), area.top()));
    setGeometry(posto);
}

void FrmComplete::paintEvent(QPaintEvent *)
{
    QPainter pittore(this);
    pittore.fillRect(rect(), Colori::Bordo);
}
