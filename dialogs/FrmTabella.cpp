#include "dialogs/FrmTabella.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "dialogs/Pezzi.h"
#include "platform/Misure.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;
using Pezzi::Crea;

namespace
{

enum Unita { Pixel = 0, Percento = 1 };
constexpr int SenzaLimite = 32767; // characters that an edit box takes when nothing is said

QLineEdit *Casella(const QString &nome, const QString &testo, int massimo, QWidget *parent)
{
    auto *casella = Crea<QLineEdit>(nome, parent);
    casella->setMaxLength(massimo);
    casella->setText(testo);
    casella->setFixedWidth(Misure::InPixel(1050));
    return casella;
}

/// A line of a panel.
struct Riga {
    QString titolo; ///< object name of the label
    qint16 messaggio = 0;
    QLineEdit *casella = nullptr;
    QComboBox *unita = nullptr;
};

void Disponi(QWidget *pannello, std::initializer_list<Riga> righe)
{
    auto *griglia = new QGridLayout(pannello);
    griglia->setContentsMargins(12, 12, 12, 12);
    griglia->setHorizontalSpacing(8);
    griglia->setVerticalSpacing(8);
    griglia->setColumnStretch(2, 1);
    for (const Riga &riga : righe) {
        const int dove = griglia->rowCount();
        QLabel *titolo = Pezzi::Titolo(riga.messaggio, riga.casella, pannello);
        titolo->setObjectName(riga.titolo);
        griglia->addWidget(titolo, dove, 0);
        griglia->addWidget(riga.casella, dove, 1);
        if (riga.unita)
            griglia->addWidget(riga.unita, dove, 2);
    }
}

} // namespace

FrmTabella::FrmTabella(QWidget *parent) : QDialog(parent)
{
    setObjectName(u"FrmTabella"_s);
    setWindowTitle(Messaggio(413));
    setWindowIcon(ModuloGrafica::Icona(u"tabella"));
    Stato().TestoInserimento.clear();
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(12, 8, 12, 12);
    colonna->setSpacing(8);
    colonna->addWidget(CreaDimensioni());
    colonna->addWidget(CreaMargini());
    colonna->addLayout(CreaPulsanti());
    colonna->setSizeConstraint(QLayout::SetFixedSize);
    ModuloGrafica::Decora(*this);
    AllineaTitoli();
    m_righe->setFocus();
    m_righe->selectAll();
}

QWidget *FrmTabella::CreaDimensioni()
{
    auto *gruppo = new QWidget(this);
    PictureBox *pannello = Pezzi::Pannello(u"Frame1"_s, u"PicIntestazioneFrm"_s, 102, gruppo);
    m_righe = Casella(u"txtRighe"_s, u"3"_s, SenzaLimite, pannello);
    m_colonne = Casella(u"TxtColonne"_s, u"4"_s, SenzaLimite, pannello);
    m_lunghezza = Casella(u"TxtLunghezza"_s, u"60"_s, 4, pannello);
    m_unitaLunghezza = CreaUnita(u"CmbLunghezza"_s, Percento, 97, pannello);
    m_altezza = Casella(u"TxtAltezza"_s, u"80"_s, 4, pannello);
    m_unitaAltezza = CreaUnita(u"CmbAltezza"_s, Pixel, 98, pannello);
    Disponi(pannello, {{u"lblRighe"_s, 95, m_righe},
                       {u"Label1"_s, 96, m_colonne},
                       {u"Label2"_s, 97, m_lunghezza, m_unitaLunghezza},
                       {u"Label3"_s, 98, m_altezza, m_unitaAltezza}});
    return gruppo;
}

QWidget *FrmTabella::CreaMargini()
{
    auto *gruppo = new QWidget(this);
    PictureBox *pannello = Pezzi::Pannello(u"Frame2"_s, u"PicIntestazioneFrm2"_s, 103, gruppo);
    m_margine = Casella(u"TxtMargine"_s, u"3"_s, 2, pannello);
    m_spaziatura = Casella(u"TxtSpazziatura"_s, u"2"_s, 2, pannello);
    m_bordo = Casella(u"TxtBordo"_s, u"3"_s, 2, pannello);
    Disponi(pannello, {{u"Label4"_s, 99, m_margine}, {u"Label5"_s, 100, m_spaziatura}, {u"Label6"_s, 101, m_bordo}});
    return gruppo;
}

QComboBox *FrmTabella::CreaUnita(const QString &nome, int scelta, qint16 messaggio, QWidget *parent)
{
    auto *unita = Crea<QComboBox>(nome, parent);
    unita->addItems({u"Pixel"_s, Messaggio(110)});
    unita->setCurrentIndex(scelta);
    unita->setAccessibleName(Pezzi::NomeDa(messaggio) + u", "_s + Messaggio(258));
    return unita;
}

/// The boxes of both panels begin at the same place.
void FrmTabella::AllineaTitoli()
{
    QList<QLabel *> titoli = findChildren<QLabel *>();
    titoli.removeIf([](const QLabel *titolo) { return !titolo->buddy(); });
    int larghezza = 0;
    for (const QLabel *titolo : titoli)
        larghezza = std::max(larghezza, titolo->sizeHint().width());
    for (QLabel *titolo : titoli)
        titolo->setFixedWidth(larghezza);
}

QLayout *FrmTabella::CreaPulsanti()
{
    const Pezzi::Pulsanti pulsanti = Pezzi::CreaPulsanti(this, 72);
    connect(pulsanti.conferma, &QPushButton::clicked, this, &FrmTabella::Conferma);
    return pulsanti.riga;
}

TestoTabella::Campi FrmTabella::Campi() const
{
    return {.righe = m_righe->text(),
            .colonne = m_colonne->text(),
            .larghezza = m_lunghezza->text(),
            .altezza = m_altezza->text(),
            .bordo = m_bordo->text(),
            .spaziatura = m_spaziatura->text(),
            .margine = m_margine->text()};
}

void FrmTabella::Conferma()
{
    const qint64 celle = TestoTabella::Celle(Campi());
    if (celle > TestoTabella::MassimoCelle) {
        const QLocale locale(ModuloPrincipale::NomeLocale(ModuloPrincipale::LinguaCaricata()));
        Pezzi::MostraMessaggio(this, QMessageBox::Information,
                               Messaggio(300).arg(locale.toString(celle), locale.toString(TestoTabella::MassimoCelle)));
        m_righe->setFocus();
        m_righe->selectAll();
        return;
    }
    const auto unisci = [](QLineEdit *casella, const QComboBox *unita) {
        if (unita->currentIndex() != Percento)
            return;
        // The box takes four characters when a person types; the unit is not theirs to count.
        const QString testo = TestoTabella::InPercento(casella->text());
        casella->setMaxLength(std::max(casella->maxLength(), int(testo.size())));
        casella->setText(testo);
    };
    unisci(m_lunghezza, m_unitaLunghezza);
    unisci(m_altezza, m_unitaAltezza);
    Stato().TestoInserimento = TestoTabella::Html(Campi(), Messaggio(104));
    accept();
}
