#include "dialogs/FrmFont.h"

#include "app/TabellaLingua.h"
#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "dialogs/ColoriHtml.h"
#include "dialogs/Pezzi.h"
#include "platform/Misure.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;
using namespace Pezzi;

namespace
{

constexpr int Dimensioni[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72}; // points
constexpr int MassimaDimensione = 999;
enum Stile { Grassetto = 1, Corsivo = 2 };

QIcon Campione(const QColor &colore)
{
    constexpr int Lato = 14;
    constexpr int Scala = 3; // sharp on every screen
    QPixmap campione(Lato * Scala, Lato * Scala);
    campione.fill(Qt::transparent);
    QPainter p(&campione);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(Scala, Scala);
    p.setPen(Colori::Bordo);
    p.setBrush(colore);
    p.drawRoundedRect(QRectF(0.5, 0.5, Lato - 1, Lato - 1), 2, 2);
    return QIcon(campione);
}

/// The faces that a page can name: of a face that comes from several foundries the name alone.
QStringList Facce()
{
    QStringList facce;
    for (const QString &famiglia : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(famiglia))
            facce += famiglia.endsWith(u']') ? famiglia.section(u" ["_s, 0, 0) : famiglia;
    }
    facce.removeDuplicates();
    return facce;
}

} // namespace

FrmFont::FrmFont(const RisultatoFont &iniziale, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"FrmFont"_s);
    setWindowTitle(Messaggio(26));
    setWindowIcon(ModuloGrafica::Icona(u"font"));
    CreaControlli();
    RiempiElenchi();
    RiempiColori();
    Mostra(iniziale);
    Collega();
    ModuloGrafica::Decora(*this);
    AggiornaEsempio();
    m_faccia->setFocus();
    m_faccia->selectAll();
}

void FrmFont::CreaControlli()
{
    m_faccia = Crea<QLineEdit>(u"TxtFaccia"_s, this);
    m_facce = Crea<QListWidget>(u"LstFacce"_s, this);
    m_facce->setUniformItemSizes(true);
    m_facce->setMinimumSize(Misure::InPixel(3600), Misure::InPixel(2250));
    m_facce->setAccessibleName(NomeDa(360));
    m_stili = Crea<QListWidget>(u"LstStili"_s, this);
    m_stili->setAccessibleName(NomeDa(361));
    m_stili->setFixedWidth(Misure::InPixel(2100));
    m_dimensione = Crea<QSpinBox>(u"TxtDimensione"_s, this);
    m_dimensione->setRange(1, MassimaDimensione);
    m_dimensioni = Crea<QListWidget>(u"LstDimensioni"_s, this);
    m_dimensioni->setFixedWidth(Misure::InPixel(1350));
    m_dimensioni->setAccessibleName(NomeDa(362));
    m_dimensione->setFixedWidth(m_dimensioni->width());

    auto *griglia = new QGridLayout(this);
    griglia->setContentsMargins(12, 12, 12, 12);
    griglia->setHorizontalSpacing(12);
    griglia->setVerticalSpacing(4);
    griglia->addWidget(Titolo(360, m_faccia, this), 0, 0);
    griglia->addWidget(Titolo(361, m_stili, this), 0, 1);
    griglia->addWidget(Titolo(362, m_dimensione, this), 0, 2);
    griglia->addWidget(m_faccia, 1, 0);
    griglia->addWidget(m_stili, 1, 1, 2, 1);
    griglia->addWidget(m_dimensione, 1, 2);
    griglia->addWidget(m_facce, 2, 0);
    griglia->addWidget(m_dimensioni, 2, 2);
    auto *sotto = new QHBoxLayout;
    sotto->setSpacing(12);
    sotto->addWidget(CreaEffetti());
    sotto->addWidget(CreaEsempio(), 1);
    griglia->addLayout(sotto, 3, 0, 1, 3);
    griglia->addLayout(CreaPulsanti(), 4, 0, 1, 3);
    griglia->setColumnStretch(0, 1);
    griglia->setRowStretch(2, 1);
}

QWidget *FrmFont::CreaEffetti()
{
    auto *gruppo = new QWidget(this);
    PictureBox *pannello = Pannello(u"Frame(0)"_s, u"PicIntestazioneFrm(0)"_s, 363, gruppo);
    m_sottolineato = Crea<QCheckBox>(u"ChkSottolineato"_s, pannello);
    m_sottolineato->setText(Messaggio(364));
    m_barrato = Crea<QCheckBox>(u"ChkBarrato"_s, pannello);
    m_barrato->setText(Messaggio(365));
    m_colori = Crea<QComboBox>(u"CmbColore"_s, pannello);
    m_colori->setMinimumWidth(Misure::InPixel(2100));
    m_colori->setMaxVisibleItems(20);
    auto *colonna = new QVBoxLayout(pannello);
    colonna->setContentsMargins(12, 12, 12, 12);
    colonna->addWidget(m_sottolineato);
    colonna->addWidget(m_barrato);
    colonna->addSpacing(4);
    colonna->addWidget(Titolo(366, m_colori, pannello));
    colonna->addWidget(m_colori);
    colonna->addStretch(1);
    return gruppo;
}

QWidget *FrmFont::CreaEsempio()
{
    auto *gruppo = new QWidget(this);
    PictureBox *pannello = Pannello(u"Frame(1)"_s, u"PicIntestazioneFrm(1)"_s, 368, gruppo);
    // The picture of a page, so that the colour is seen on what it usually stands on.
    auto *foglio = Crea<PictureBox>(u"PicEsempio"_s, pannello);
    m_esempio = Crea<QLabel>(u"LblEsempio"_s, foglio);
    m_esempio->setText(Messaggio(369));
    m_esempio->setAlignment(Qt::AlignCenter);
    m_esempio->setMinimumSize(Misure::InPixel(3600), Misure::InPixel(1200));
    m_esempio->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto *dentro = new QVBoxLayout(foglio);
    dentro->setContentsMargins(1, 1, 1, 1);
    dentro->addWidget(m_esempio);
    m_tag = Crea<QLabel>(u"LblTag"_s, pannello);
    m_tag->setTextFormat(Qt::PlainText);
    m_tag->setWordWrap(true);
    m_tag->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_nota = Crea<QLabel>(u"LblNota"_s, pannello);
    m_nota->setWordWrap(true);
    auto *colonna = new QVBoxLayout(pannello);
    colonna->setContentsMargins(12, 12, 12, 12);
    colonna->addWidget(foglio, 1);
    colonna->addWidget(m_tag);
    colonna->addWidget(m_nota);
    return gruppo;
}

QLayout *FrmFont::CreaPulsanti()
{
    const Pulsanti pulsanti = Pezzi::CreaPulsanti(this, 314);
    m_ok = pulsanti.conferma;
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    pulsanti.riga->setContentsMargins(0, 8, 0, 0);
    return pulsanti.riga;
}

void FrmFont::RiempiElenchi()
{
    m_facce->addItems(Facce());
    // In the order of the bits of Stile.
    m_stili->addItems({Messaggio(370), Messaggio(77), Messaggio(78), Messaggio(371)});
    for (const int punti : Dimensioni)
        m_dimensioni->addItem(QString::number(punti));
}

void FrmFont::RiempiColori()
{
    for (const ColoriHtml::Colore &colore : ColoriHtml::Elenco())
        m_colori->addItem(Campione(ColoreQt(colore.valore)), colore.nome.toString(), colore.valore);
    m_colori->insertSeparator(m_colori->count());
    m_colori->addItem(Messaggio(367));
}

void FrmFont::Mostra(const RisultatoFont &scelta)
{
    m_faccia->setText(scelta.faccia);
    CercaFaccia(scelta.faccia);
    m_stili->setCurrentRow((scelta.grassetto ? Grassetto : 0) | (scelta.corsivo ? Corsivo : 0));
    m_dimensione->setValue(scelta.dimensione);
    SegnaDimensione(scelta.dimensione);
    m_sottolineato->setChecked(scelta.sottolineato);
    m_barrato->setChecked(scelta.barrato);
    AggiungiColore(scelta.colore);
    m_ultimoColore = m_colori->currentIndex();
}

void FrmFont::Collega()
{
    connect(m_faccia, &QLineEdit::textEdited, this, &FrmFont::CercaFaccia);
    connect(m_faccia, &QLineEdit::textChanged, this, &FrmFont::AggiornaEsempio);
    // A list that gets the focus makes its first entry the current one; only a selected entry was chosen.
    connect(m_facce, &QListWidget::itemSelectionChanged, this, [this] {
        if (const QList<QListWidgetItem *> scelte = m_facce->selectedItems(); !scelte.isEmpty())
            m_faccia->setText(scelte.constFirst()->text());
    });
    connect(m_facce, &QListWidget::itemClicked, this,
            [this](QListWidgetItem *voce) { m_faccia->setText(voce->text()); });
    connect(m_stili, &QListWidget::currentRowChanged, this, &FrmFont::AggiornaEsempio);
    connect(m_dimensione, &QSpinBox::valueChanged, this, &FrmFont::SegnaDimensione);
    connect(m_dimensione, &QSpinBox::valueChanged, this, &FrmFont::AggiornaEsempio);
    connect(m_dimensioni, &QListWidget::itemSelectionChanged, this, [this] {
        if (const QList<QListWidgetItem *> scelte = m_dimensioni->selectedItems(); !scelte.isEmpty())
            m_dimensione->setValue(scelte.constFirst()->text().toInt());
    });
    for (QListWidget *elenco : {m_facce, m_stili, m_dimensioni})
        connect(elenco, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_sottolineato, &QCheckBox::toggled, this, &FrmFont::AggiornaEsempio);
    connect(m_barrato, &QCheckBox::toggled, this, &FrmFont::AggiornaEsempio);
    connect(m_colori, &QComboBox::activated, this, &FrmFont::ScegliColore);
    connect(m_colori, &QComboBox::currentIndexChanged, this, &FrmFont::AggiornaEsempio);
}

/// Brings the list to the face that is being typed; the face itself stays as typed.
void FrmFont::CercaFaccia(const QString &testo)
{
    const QSignalBlocker muto(m_facce);
    QList<QListWidgetItem *> trovate = m_facce->findItems(testo, Qt::MatchFixedString);
    if (trovate.isEmpty() && !testo.isEmpty())
        trovate = m_facce->findItems(testo, Qt::MatchStartsWith);
    if (trovate.isEmpty()) {
        m_facce->setCurrentRow(-1);
        return;
    }
    m_facce->setCurrentItem(trovate.constFirst());
    m_facce->scrollToItem(trovate.constFirst(), QAbstractItemView::PositionAtTop);
}

void FrmFont::SegnaDimensione(int punti)
{
    const QSignalBlocker muto(m_dimensioni);
    const QList<QListWidgetItem *> trovate = m_dimensioni->findItems(QString::number(punti), Qt::MatchExactly);
    m_dimensioni->setCurrentItem(trovate.value(0));
}

void FrmFont::ScegliColore(int riga)
{
    if (riga != m_colori->count() - 1) {
        m_ultimoColore = riga;
        return;
    }
    const QColor prima = ColoreQt(m_colori->itemData(m_ultimoColore).toUInt());
    const QColor scelto = QColorDialog::getColor(prima, this, Messaggio(372));
    if (scelto.isValid())
        AggiungiColore(ColoriHtml::DaQColor(scelto));
    else
        m_colori->setCurrentIndex(m_ultimoColore);
    m_ultimoColore = m_colori->currentIndex();
}

/// Selects a colour; one without a name is put before the last row first.
void FrmFont::AggiungiColore(ColoreBgr colore)
{
    if (m_colori->findData(colore) < 0) {
        const QColor quello = ColoreQt(colore);
        m_colori->insertItem(m_colori->count() - 1, Campione(quello), quello.name(), colore);
    }
    m_colori->setCurrentIndex(m_colori->findData(colore));
}

RisultatoFont FrmFont::Scelta() const
{
    RisultatoFont scelta;
    scelta.faccia = m_faccia->text().trimmed();
    const int stile = qMax(0, m_stili->currentRow());
    scelta.grassetto = stile & Grassetto;
    scelta.corsivo = stile & Corsivo;
    scelta.sottolineato = m_sottolineato->isChecked();
    scelta.barrato = m_barrato->isChecked();
    scelta.dimensione = qint16(m_dimensione->value());
    const QVariant colore = m_colori->currentData();
    scelta.colore = (colore.isValid() ? colore : m_colori->itemData(m_ultimoColore)).toUInt();
    return scelta;
}

void FrmFont::AggiornaEsempio()
{
    const RisultatoFont scelta = Scelta();
    m_esempio->setFont(scelta.Carattere());
    QPalette tavolozza = m_esempio->palette();
    tavolozza.setColor(QPalette::Window, Colori::Bianco);
    tavolozza.setColor(QPalette::WindowText, ColoreQt(scelta.colore));
    m_esempio->setPalette(tavolozza);
    m_esempio->setAutoFillBackground(true);
    const QString html = scelta.TestoHtml();
    m_tag->setText(html.first(html.indexOf(u'>') + 1));
    m_nota->setText(ColoriHtml::NomeColore(scelta.colore).isEmpty() ? Messaggio(373) : QString());
    m_ok->setEnabled(!scelta.faccia.isEmpty());
}
