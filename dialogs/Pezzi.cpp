#include "dialogs/Pezzi.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "platform/Misure.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

QLabel *Pezzi::Titolo(qint16 messaggio, QWidget *amico, QWidget *parent)
{
    auto *titolo = new QLabel(Messaggio(messaggio), parent);
    titolo->setBuddy(amico);
    return titolo;
}

QPushButton *Pezzi::Pulsante(const QString &nome, const QString &testo, QWidget *parent)
{
    auto *pulsante = Crea<QPushButton>(nome, parent);
    pulsante->setText(testo);
    pulsante->setProperty("Tag", u"D"_s);
    return pulsante;
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
