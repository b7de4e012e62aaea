#include "html/FrmControlloSintassi.h"

#include "app/TabellaLingua.h"
#include "platform/Misure.h"
#include "platform/RichTextBox.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

FrmControlloSintassi *aperta = nullptr;

// The list's place in the window, in twips; the larger figures leave room for the window's frame.
constexpr int Margine = 10;
constexpr int CorniceLarghezza = 70;
constexpr int CorniceAltezza = 340;
constexpr int FuoriSchermo = -1000;

} // namespace

// Only what lies between the lines that stayed is told as changed, so that the view keeps its place and its choice.
void ElencoRisultati::Imposta(const Voci &voci)
{
    if (voci.constData() == m_voci.constData() && voci.size() == m_voci.size())
        return;
    const auto stessa = [&](int qui, int li) {
        const auto &a = m_voci.at(qui);
        const auto &b = voci.at(li);
        return a.testo.constData() == b.testo.constData() ? a.posizione == b.posizione && a.risultato == b.risultato
                                                          : a == b;
    };
    const int prima = int(m_voci.size());
    const int dopo = int(voci.size());
    const int comuni = std::min(prima, dopo);
    int testa = 0;
    while (testa < comuni && stessa(testa, testa))
        ++testa;
    int coda = 0;
    while (coda < comuni - testa && stessa(prima - 1 - coda, dopo - 1 - coda))
        ++coda;
    const int tolte = prima - coda - testa;
    const int aggiunte = dopo - coda - testa;
    if (tolte > 0) {
        beginRemoveRows({}, testa, testa + tolte - 1);
        if (aggiunte > 0)
            m_voci.remove(testa, tolte);
        else
            m_voci = voci;
        endRemoveRows();
    }
    if (aggiunte > 0) {
        beginInsertRows({}, testa, testa + aggiunte - 1);
        m_voci = voci;
        endInsertRows();
    }
}

int ElencoRisultati::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : int(m_voci.size());
}

QVariant ElencoRisultati::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid() || indice.row() >= m_voci.size() || (ruolo != Qt::DisplayRole && ruolo != Qt::ToolTipRole))
        return {};
    // A name may hold "<": a tool tip must not take it for formatting.
    const QString &testo = m_voci[indice.row()].testo;
    return ruolo == Qt::ToolTipRole ? testo.toHtmlEscaped() : testo;
}

FrmControlloSintassi::FrmControlloSintassi(QWidget *padre) : QWidget(padre, Qt::Tool), m_lista(new QListView(this))
{
    setObjectName(u"FrmControlloSintassi"_s);
    setWindowTitle(ModuloPrincipale::Messaggio(64));
    m_lista->setObjectName(u"RichControllo"_s);
    m_lista->setAccessibleName(windowTitle());
    m_lista->setModel(&m_elenco);
    m_lista->setUniformItemSizes(true);
    m_lista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_lista->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    move(Misure::InPixel(FuoriSchermo), Misure::InPixel(FuoriSchermo));

    connect(m_lista, &QListView::clicked, this, &FrmControlloSintassi::Scegli);
    // Enter; a double click leads to the same place once more.
    connect(m_lista, &QListView::activated, this, &FrmControlloSintassi::Scegli);
    aperta = this;
}

FrmControlloSintassi::~FrmControlloSintassi()
{
    if (aperta == this)
        aperta = nullptr;
    delete m_lista; // before the model that it shows
}

FrmControlloSintassi *FrmControlloSintassi::Aperta()
{
    return aperta;
}

void FrmControlloSintassi::Vai_A_Pos(qint32 posizione, RichTextBox &editor)
{
    editor.ImpostaSelStart(posizione);
    editor.ensureCursorVisible();
    editor.activateWindow();
    editor.setFocus();
}

void FrmControlloSintassi::Scegli(const QModelIndex &indice)
{
    if (indice.isValid())
        emit RisultatoScelto(m_elenco.Tutte()[indice.row()].posizione);
}

void FrmControlloSintassi::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    const QSize fuori = frameGeometry().size();
    const int larghezza = Misure::InTwip(fuori.width()) - Margine - 10 - CorniceLarghezza;
    const int altezza = Misure::InTwip(fuori.height()) - Margine - 10 - CorniceAltezza;
    m_lista->setGeometry(Misure::InPixel(Margine), Misure::InPixel(Margine), Misure::InPixel(std::max(0, larghezza)),
                         Misure::InPixel(std::max(0, altezza)));
}
