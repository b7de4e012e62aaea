#include "dialogs/Pezzi.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "platform/Misure.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

QLabel *Pezzi::Titolo(qint16 messaggio, QWidget *amico, QWidget *parent)
{
    auto *titolo = new QLabel(Messaggio(messaggio), parent);
    titolo->setBuddy(amico);
    return titolo;
}

QString Pezzi::NomeDa(qint16 messaggio)
{
    static const QRegularExpression mnemonico(u"\\(&.\\)|&"_s);
    return Messaggio(messaggio).remove(mnemonico);
}

Pezzi::Pulsanti Pezzi::CreaPulsanti(QDialog *dialogo, qint16 messaggio)
{
    const Pulsanti pulsanti{Crea<QPushButton>(u"Cmd(0)"_s, dialogo), Crea<QPushButton>(u"Cmd(1)"_s, dialogo),
                            new QHBoxLayout};
    pulsanti.riga->setSpacing(8);
    pulsanti.riga->addStretch(1);
    for (QPushButton *pulsante : {pulsanti.conferma, pulsanti.esci}) {
        pulsante->setProperty("Tag", u"D"_s);
        pulsanti.riga->addWidget(pulsante);
    }
    pulsanti.conferma->setText(Messaggio(120));
    pulsanti.conferma->setDefault(true);
    pulsanti.esci->setText(Messaggio(messaggio));
    pulsanti.esci->setAutoDefault(false);
    QObject::connect(pulsanti.esci, &QPushButton::clicked, dialogo, &QDialog::reject);
    return pulsanti;
}

PictureBox *Pezzi::Pannello(const QString &nome, const QString &striscia, qint16 messaggio, QWidget *contenitore)
{
    constexpr int LarghezzaStriscia = 2200; // twips
    auto *pannello = new PictureBox(nome, contenitore);
    auto *testa = new PictureBox(striscia, contenitore);
    testa->setFixedWidth(Misure::InPixel(LarghezzaStriscia));
    ModuloGrafica::DisegnaIntestazione(*testa, Messaggio(messaggio));
    // Without a tag the decoration leaves the strip where the layout puts it.
    auto *sopra = new QHBoxLayout;
    sopra->setContentsMargins(Misure::InPixel(80), 4, 0, 0);
    sopra->addWidget(testa, 0, Qt::AlignLeft);
    auto *colonna = new QVBoxLayout(contenitore);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(1);
    colonna->addLayout(sopra);
    colonna->addWidget(pannello, 1);
    return pannello;
}

void Pezzi::MostraMessaggio(QWidget *finestra, QMessageBox::Icon icona, const QString &testo, const QString &dettaglio)
{
    const QPointer<QMessageBox> messaggio =
        new QMessageBox(icona, QGuiApplication::applicationDisplayName(), testo, QMessageBox::Ok, finestra);
    messaggio->setObjectName(u"Messaggio"_s);
    messaggio->setTextFormat(Qt::PlainText);
    messaggio->setInformativeText(dettaglio);
    messaggio->exec();
    delete messaggio.data();
}
