#include "dialogs/FrmModelli.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "dialogs/ElencoModelli.h"
#include "dialogs/Modelli.h"
#include "platform/RichTextBox.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

// A resource in a static library is only there once somebody asks for it; the macro must stand outside a namespace.
static void CaricaRisorse()
{
    Q_INIT_RESOURCE(modelli);
}

namespace
{

constexpr int PaginaBianca = 0;
constexpr int Proposto = 2; ///< row that is selected at first
constexpr QSize Immagine{144, 108};
constexpr QSize Voce{164, 136};
constexpr QSize MisuraElenco{688, 368};

QIcon IconaDi(const Modelli::Modello &modello)
{
    QPixmap immagine(u":/modelli/%1.png"_s.arg(modello.immagine));
    immagine.setDevicePixelRatio(2);
    QIcon icona(immagine);
    // A picture of a page, not a sign: selecting must not tint it.
    icona.addPixmap(immagine, QIcon::Selected);
    return icona;
}

} // namespace

FrmModelli::FrmModelli(RichTextBox *pad, QWidget *parent) : QDialog(parent), m_pad(pad)
{
    CaricaRisorse();
    setObjectName(u"FrmModelli"_s);
    setWindowIcon(ModuloGrafica::Icona(u"modello"));
    setWindowTitle(Messaggio(66));
    Crea();
    RiempiElenco();
    ModuloGrafica::Decora(*this);
    m_elenco->setFocus();
}

void FrmModelli::Crea()
{
    m_elenco = new ElencoModelli(this);
    m_elenco->setObjectName(u"LstView"_s);
    m_elenco->setAccessibleName(Messaggio(66));
    m_elenco->setIconSize(Immagine);
    m_elenco->setMinimumSize(MisuraElenco);
    m_nonMostrare = new QCheckBox(Messaggio(308), this);
    m_nonMostrare->setObjectName(u"Chktip"_s);
    m_nonMostrare->setToolTip(Messaggio(383).arg(Messaggio(63), Messaggio(307)));
    m_nonMostrare->setChecked(!Modelli::Mostra());
    auto *ok = new QPushButton(Messaggio(120), this);
    ok->setObjectName(u"Cmd(0)"_s);
    ok->setDefault(true);
    auto *esci = new QPushButton(Messaggio(72), this);
    esci->setObjectName(u"Cmd(1)"_s);
    esci->setAutoDefault(false);
    esci->setToolTip(Messaggio(67));

    auto *riga = new QHBoxLayout;
    riga->setSpacing(8);
    riga->addWidget(m_nonMostrare);
    riga->addStretch(1);
    for (QPushButton *pulsante : {ok, esci}) {
        pulsante->setProperty("Tag", u"D"_s);
        riga->addWidget(pulsante);
    }
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(12, 12, 12, 12);
    colonna->setSpacing(12);
    colonna->addWidget(m_elenco, 1);
    colonna->addLayout(riga);

    connect(ok, &QPushButton::clicked, this, [this] {
        const QList<QListWidgetItem *> scelti = m_elenco->selectedItems();
        Carica(scelti.isEmpty() ? PaginaBianca : m_elenco->row(scelti.constFirst()));
    });
    connect(esci, &QPushButton::clicked, this, [this] { Carica(PaginaBianca); });
    connect(m_elenco, &QListWidget::itemClicked, this, [this](QListWidgetItem *voce) { Carica(m_elenco->row(voce)); });
}

void FrmModelli::RiempiElenco()
{
    m_elenco->clear();
    for (const Modelli::Modello &modello : Modelli::Elenco()) {
        auto *voce = new QListWidgetItem(IconaDi(modello), Messaggio(modello.didascalia), m_elenco);
        voce->setToolTip(Messaggio(modello.descrizione));
        voce->setData(Qt::AccessibleDescriptionRole, Messaggio(modello.descrizione));
        voce->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
        voce->setSizeHint(Voce);
        voce->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }
    m_elenco->setCurrentRow(Proposto);
}

void FrmModelli::Carica(int indice)
{
    const Modelli::Modello &modello = Modelli::Elenco()[size_t(indice)];
    const Modelli::Caricato pagina = Modelli::Leggi(modello);
    m_pad->ImpostaText(pagina.testo);
    accept();
    if (indice != PaginaBianca)
        emit AnteprimaRichiesta();
    if (!pagina.motivo.isEmpty())
        emit Avviso(Messaggio(375).arg(Modelli::Percorso(modello), pagina.motivo));
}

void FrmModelli::changeEvent(QEvent *evento)
{
    QDialog::changeEvent(evento);
    if (evento->type() == QEvent::ActivationChange && isActiveWindow())
        ModuloGrafica::Decora(*this);
}

void FrmModelli::done(int esito)
{
    if (m_nonMostrare->isChecked() == Modelli::Mostra())
        Modelli::ImpostaMostra(!m_nonMostrare->isChecked());
    QDialog::done(esito);
}
