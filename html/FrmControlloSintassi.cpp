#include "html/FrmControlloSintassi.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "html/ListaRisultati.h"
#include "html/SeguitoPagina.h"
#include "platform/Misure.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

FrmControlloSintassi *aperta = nullptr;

constexpr int Margine = 10; // twips
constexpr int FuoriSchermo = -1000;

} // namespace

FrmControlloSintassi::FrmControlloSintassi(QWidget *padre) : QWidget(padre, Qt::Tool), m_lista(new ListaRisultati(this))
{
    setObjectName(u"FrmControlloSintassi"_s);
    setWindowTitle(ModuloPrincipale::Messaggio(64));
    m_lista->setObjectName(u"RichControllo"_s);
    m_lista->setAccessibleName(windowTitle());
    m_lista->setModel(&m_elenco);
    ModuloGrafica::Decora(*this);
    move(Misure::InPixel(FuoriSchermo), Misure::InPixel(FuoriSchermo));

    connect(m_lista, &ListaRisultati::clicked, this, &FrmControlloSintassi::Scegli);
    // Enter; a double click leads to the same place once more.
    connect(m_lista, &ListaRisultati::activated, this, &FrmControlloSintassi::Scegli);
    connect(&m_elenco, &ElencoRisultati::NumeroCambiato, this, &FrmControlloSintassi::NumeroCambiato);
    connect(&m_elenco, &ElencoRisultati::FalloNonVisto, this, &FrmControlloSintassi::FalloNonVisto);
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

SeguitoPagina &FrmControlloSintassi::Seguito(const RichTextBox &editor)
{
    if (!m_seguito || !m_seguito->Segue(editor)) {
        m_seguito.reset();
        m_seguito = std::make_unique<SeguitoPagina>(editor, m_elenco);
    }
    return *m_seguito;
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
    const QPersistentModelIndex riga = indice;
    if (m_seguito)
        m_seguito->Aggiorna();
    if (riga.isValid())
        emit RisultatoScelto(qint32(m_elenco.Posizione(riga.row())));
}

void FrmControlloSintassi::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    const int margine = Misure::InPixel(Margine);
    m_lista->setGeometry(rect().marginsRemoved({margine, margine, margine, margine}));
}
