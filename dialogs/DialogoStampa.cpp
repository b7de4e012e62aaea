#include "dialogs/DialogoStampa.h"

#include "platform/IconeFile.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr qreal Margine = 15; // mm
constexpr int CartaPropria = 256;
constexpr int MassimaPagina = 99999; // how many there are depends on the paper that is yet to be chosen

int NumeroFronteRetro(QPrinter::DuplexMode modo, bool orizzontale)
{
    switch (modo) {
    case QPrinter::DuplexLongSide:
        return 2;
    case QPrinter::DuplexShortSide:
        return 3;
    case QPrinter::DuplexAuto:
        return orizzontale ? 3 : 2;
    case QPrinter::DuplexNone:
        break;
    }
    return 1;
}

/// Where a PDF file goes unless the user says otherwise: beside the page, under its name.
QString FilePdf(const QString &nomeFile)
{
    const QFileInfo pagina(nomeFile);
    const QDir cartella = pagina.isAbsolute() ? pagina.dir() : QDir::home();
    return cartella.filePath(pagina.completeBaseName() + u".pdf"_s);
}

/// What Qt's dialog leaves to be desired.
void Completa(QPrintDialog &dialogo, const QString &nomeFile)
{
    // The field for several ranges refuses valid ones; from and to beside it do work.
    for (const QString &nome : {u"pagesRadioButton"_s, u"pagesLineEdit"_s}) {
        if (auto *campo = dialogo.findChild<QWidget *>(nome))
            campo->hide();
    }
    // It would put every file into the home folder.
    if (auto *file = dialogo.findChild<QLineEdit *>(u"filename"_s))
        file->setText(FilePdf(nomeFile));
    // Its rows press their captions together.
    for (auto *voce : dialogo.findChildren<QRadioButton *>()) {
        voce->ensurePolished();
        voce->setMinimumWidth(voce->sizeHint().width());
    }
    if (auto *insieme = dialogo.findChild<QComboBox *>(u"pageSetCombo"_s)) {
        insieme->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        insieme->ensurePolished();
        insieme->setMinimumWidth(insieme->sizeHint().width());
    }
    // It unfolds its options at the width that it had without them.
    for (const auto *pulsante : dialogo.findChildren<QPushButton *>()) {
        QObject::connect(
            pulsante, &QPushButton::clicked, &dialogo,
            [&dialogo] {
                for (QWidget *scheda : dialogo.findChildren<QWidget *>()) {
                    if (scheda->layout())
                        scheda->layout()->invalidate();
                }
                dialogo.layout()->activate();
                dialogo.resize(dialogo.size().expandedTo(dialogo.layout()->totalMinimumSize()));
            },
            Qt::QueuedConnection);
    }
}

} // namespace

void ModuloStampa::Prepara(QPrinter &dispositivo, const DevMode &record)
{
    if (record.Ha(DevMode::NumeroCopie))
        dispositivo.setCopyCount(std::max<int>(1, record.Copie()));
    if (record.Ha(DevMode::Orientamento))
        dispositivo.setPageOrientation(record.Valore(DevMode::Orientamento) == 2 ? QPageLayout::Landscape
                                                                                 : QPageLayout::Portrait);
    if (record.Ha(DevMode::FronteRetro)) {
        const int lati = record.Valore(DevMode::FronteRetro);
        dispositivo.setDuplex(lati == 2   ? QPrinter::DuplexLongSide
                              : lati == 3 ? QPrinter::DuplexShortSide
                                          : QPrinter::DuplexNone);
    }
    if (record.Ha(DevMode::Colore))
        dispositivo.setColorMode(record.Valore(DevMode::Colore) == 1 ? QPrinter::GrayScale : QPrinter::Color);
    if (record.Ha(DevMode::Fascicolazione))
        dispositivo.setCollateCopies(record.Valore(DevMode::Fascicolazione) == 1);
}

DevMode ModuloStampa::Impostazioni(const QPrinter &dispositivo, const DevMode &prima)
{
    DevMode record = prima;
    const QPageLayout disposizione = dispositivo.pageLayout();
    const bool orizzontale = disposizione.orientation() == QPageLayout::Landscape;
    const QSizeF carta = disposizione.pageSize().size(QPageSize::Millimeter) * 10;
    record.ImpostaNomeDispositivo(dispositivo.printerName().toUtf8());
    record.Imposta(DevMode::NumeroCopie, std::max(1, dispositivo.copyCount()));
    record.Imposta(DevMode::Orientamento, orizzontale ? 2 : 1);
    record.Imposta(DevMode::LarghezzaCarta, int(std::lround(carta.width())));
    record.Imposta(DevMode::LunghezzaCarta, int(std::lround(carta.height())));
    const int numero = disposizione.pageSize().windowsId();
    record.Imposta(DevMode::Carta, numero > 0 ? numero : CartaPropria);
    record.ImpostaNomeCarta(disposizione.pageSize().key().toUtf8());
    record.Imposta(DevMode::FronteRetro, NumeroFronteRetro(dispositivo.duplex(), orizzontale));
    record.Imposta(DevMode::Colore, dispositivo.colorMode() == QPrinter::GrayScale ? 1 : 2);
    record.Imposta(DevMode::Fascicolazione, dispositivo.collateCopies() ? 1 : 0);
    return record;
}

void ModuloStampa::SeguiStampante(QPrintDialog &dialogo, const ImpostazioniSalvate &salvate)
{
    const auto *stampanti = dialogo.findChild<QComboBox *>(u"printers"_s);
    auto *copie = dialogo.findChild<QSpinBox *>(u"copies"_s);
    if (!stampanti || !copie)
        return;
    QObject::connect(stampanti, &QComboBox::currentTextChanged, copie, [salvate, copie](const QString &nome) {
        const qsizetype quale = salvate.nomi.indexOf(nome);
        const DevMode record = quale < 0 ? DevMode() : salvate.record.at(size_t(quale));
        copie->setValue(record.Ha(DevMode::NumeroCopie) ? std::max<int>(1, record.Copie()) : 1);
    });
}

ModuloStampa::SceltaStampa ModuloStampa::DialogoStampa(QWidget *finestra, const ImpostazioniSalvate &salvate,
                                                       bool selezione, const QString &nomeFile)
{
    SceltaStampa scelta;
    scelta.dispositivo = std::make_shared<QPrinter>(QPrinter::HighResolution);
    QPrinter &dispositivo = *scelta.dispositivo;
    dispositivo.setDocName(QFileInfo(nomeFile).fileName());
    dispositivo.setPageMargins({Margine, Margine, Margine, Margine}, QPageLayout::Millimeter);
    if (const qsizetype prima = salvate.nomi.indexOf(dispositivo.printerName()); prima >= 0)
        Prepara(dispositivo, salvate.record.at(size_t(prima)));
    QPrintDialog dialogo(&dispositivo, finestra);
    dialogo.setObjectName(u"DialogoStampa"_s);
    // Files of the host's own kind are PDF: that choice needs no printer.
    dialogo.setOptions(QAbstractPrintDialog::PrintPageRange | QAbstractPrintDialog::PrintShowPageSize |
                       QAbstractPrintDialog::PrintCollateCopies | QAbstractPrintDialog::PrintToFile);
    dialogo.setMinMax(1, MassimaPagina);
    if (selezione) {
        dialogo.setOption(QAbstractPrintDialog::PrintSelection);
        dialogo.setPrintRange(QAbstractPrintDialog::Selection);
    }
    Completa(dialogo, nomeFile);
    SeguiStampante(dialogo, salvate);
    IconeFile::Imposta(&dialogo);
    if (dialogo.exec() != QDialog::Accepted)
        return {};
    scelta.soloSelezione = selezione && dispositivo.printRange() == QPrinter::Selection;
    if (dispositivo.outputFormat() != QPrinter::PdfFormat)
        scelta.stampante = dispositivo.printerName();
    const qsizetype indice = salvate.nomi.indexOf(scelta.stampante);
    scelta.impostazioni = Impostazioni(dispositivo, indice < 0 ? DevMode() : salvate.record.at(size_t(indice)));
    return scelta;
}
