#include "dialogs/FrmImage.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "dialogs/AnteprimaImmagine.h"
#include "dialogs/Pezzi.h"
#include "dialogs/RiferimentoImmagine.h"
#include "platform/Dialoghi.h"
#include "platform/File_System.h"
#include "platform/Misure.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;
using Pezzi::Crea;

namespace
{

const QString FiltroImmagini =
    u"JPG / GIF / BMP (*.jpg, *.gif, *.bmp)\0*.jpg;*.gif;*.bmp\0"
    "JPEG / PNG / WebP / SVG (*.jpeg, *.png, *.webp, *.svg)\0*.jpeg;*.png;*.webp;*.svg\0\0"_s;

} // namespace

FrmImage::FrmImage(QWidget *parent) : QDialog(parent)
{
    setObjectName(u"FrmImage"_s);
    setWindowTitle(Messaggio(108));
    setWindowIcon(ModuloGrafica::Icona(u"immagine"));
    Stato().TestoInserimento.clear();
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(12, 8, 12, 12);
    colonna->setSpacing(8);
    colonna->addWidget(CreaPannello(), 1);
    colonna->addLayout(CreaPulsanti());
    ModuloGrafica::Decora(*this);
    connect(m_file, &QLineEdit::textChanged, this, &FrmImage::AggiornaRiferimento);
    connect(m_relativo, &QCheckBox::clicked, this, [this](bool acceso) {
        m_vuoleRelativo = acceso;
        AggiornaRiferimento();
    });
    connect(m_anteprima, &AnteprimaImmagine::ZoomCambiato, this, &FrmImage::AggiornaZoom);
    m_file->installEventFilter(this);
    m_file->setFocus();
    AggiornaRiferimento();
    AggiornaZoom();
}

QWidget *FrmImage::CreaPannello()
{
    auto *gruppo = new QWidget(this);
    PictureBox *pannello = Pezzi::Pannello(u"Frame1"_s, u"PicIntestazioneFrm1"_s, 107, gruppo);
    m_file = Crea<QLineEdit>(u"TxtFile"_s, pannello);
    auto *sfoglia = Crea<QPushButton>(u"CmdSfoglia"_s, pannello);
    sfoglia->setText(Messaggio(109));
    sfoglia->setAutoDefault(false);
    connect(sfoglia, &QPushButton::clicked, this, &FrmImage::Sfoglia);
    m_relativo = Crea<QCheckBox>(u"ChkRelativo"_s, pannello);
    m_relativo->setText(Messaggio(301));
    m_riferimento = Crea<QLabel>(u"LblRiferimento"_s, pannello);
    m_riferimento->setTextFormat(Qt::PlainText);
    m_riferimento->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto *cornice = Crea<PictureBox>(u"Picture1"_s, pannello);
    cornice->setFrameShape(QFrame::StyledPanel);
    m_anteprima = new AnteprimaImmagine(cornice);
    m_anteprima->setObjectName(u"AreaAnteprima"_s);
    m_anteprima->setAccessibleName(Messaggio(65));
    m_anteprima->setMinimumSize(Misure::InPixel(7200), Misure::InPixel(3900));
    auto *dentro = new QVBoxLayout(cornice);
    dentro->setContentsMargins(1, 1, 1, 1);
    dentro->addWidget(m_anteprima);

    auto *griglia = new QGridLayout(pannello);
    griglia->setContentsMargins(12, 12, 12, 12);
    griglia->setHorizontalSpacing(8);
    griglia->setVerticalSpacing(6);
    griglia->addWidget(Pezzi::Titolo(259, m_file, pannello), 0, 0, 1, 2);
    griglia->addWidget(m_file, 1, 0);
    griglia->addWidget(sfoglia, 1, 1);
    griglia->addWidget(m_relativo, 2, 0, 1, 2);
    griglia->addWidget(m_riferimento, 3, 0, 1, 2);
    griglia->addWidget(cornice, 4, 0, 1, 2);
    griglia->addLayout(CreaComandi(pannello), 5, 0, 1, 2);
    griglia->setRowStretch(4, 1);
    griglia->setColumnStretch(0, 1);
    return gruppo;
}

QLayout *FrmImage::CreaComandi(QWidget *parent)
{
    m_zoom = Crea<QLabel>(u"LblZoom"_s, parent);
    auto *riga = new QHBoxLayout;
    riga->setSpacing(8);
    const auto comando = [&](int indice, qint16 messaggio, QStringView icona, auto azione) {
        auto *pulsante = Crea<QPushButton>(u"CmdOp(%1)"_s.arg(indice), parent);
        pulsante->setText(Messaggio(messaggio));
        pulsante->setIcon(ModuloGrafica::Icona(icona));
        pulsante->setAutoDefault(false);
        connect(pulsante, &QPushButton::clicked, this, azione);
        riga->addWidget(pulsante);
        return pulsante;
    };
    const auto mostra = [this](bool adattata) {
        m_anteprima->ImpostaAdattata(adattata);
        AnteprimaDelFile();
    };
    comando(3, 312, u"dimensione_reale", [mostra] { mostra(false); });
    comando(2, 311, u"adatta", [mostra] { mostra(true); });
    m_meno = comando(1, 310, u"rimpicciolisci", [this] { m_anteprima->Rimpicciolisci(); });
    m_piu = comando(0, 309, u"ingrandisci", [this] { m_anteprima->Ingrandisci(); });
    riga->addStretch(1);
    riga->addWidget(m_zoom);
    return riga;
}

QLayout *FrmImage::CreaPulsanti()
{
    const Pezzi::Pulsanti pulsanti = Pezzi::CreaPulsanti(this, 8);
    m_ok = pulsanti.conferma;
    m_esci = pulsanti.esci;
    connect(m_ok, &QPushButton::clicked, this, &FrmImage::Conferma);
    return pulsanti.riga;
}

void FrmImage::changeEvent(QEvent *evento)
{
    QDialog::changeEvent(evento);
    if (evento->type() != QEvent::ActivationChange || !isActiveWindow() || m_sfogliato)
        return;
    m_sfogliato = true;
    QTimer::singleShot(0, this, &FrmImage::Sfoglia);
}

void FrmImage::keyPressEvent(QKeyEvent *evento)
{
    const bool invio = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
    if (!invio || focusWidget() != m_file) {
        QDialog::keyPressEvent(evento);
        return;
    }
    AnteprimaDelFile();
}

bool FrmImage::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_file && evento->type() == QEvent::FocusOut) {
        const Qt::FocusReason motivo = static_cast<QFocusEvent *>(evento)->reason();
        // A message would swallow the click on the button that closes the dialog.
        const bool chiude = motivo == Qt::MouseFocusReason && (m_ok->underMouse() || m_esci->underMouse());
        if (!chiude && motivo != Qt::ActiveWindowFocusReason && motivo != Qt::PopupFocusReason &&
            motivo != Qt::MenuBarFocusReason)
            QTimer::singleShot(0, this, &FrmImage::AllaPerdita);
    }
    return QDialog::eventFilter(oggetto, evento);
}

QString FrmImage::Percorso() const
{
    return RiferimentoImmagine::Intero(m_file->text(), ModuloDichiarazioni::PostoPagina());
}

QString FrmImage::Relativo() const
{
    const QString pagina = ModuloDichiarazioni::PostoPagina();
    const QFileInfo immagine(Percorso());
    if (pagina.isEmpty() || m_file->text().isEmpty() || !immagine.isFile())
        return {};
    QString diretto = RiferimentoImmagine::Relativo(immagine.absoluteFilePath(), pagina);
    const auto sale = [](const QString &riferimento) {
        return riferimento.isEmpty() || riferimento.startsWith(u"../");
    };
    if (!sale(diretto))
        return diretto;
    // One of the two may have been reached through a link. A way up is not shortened by that: browsers go up by names.
    const QFileInfo cartella(QFileInfo(pagina).absolutePath());
    const QString vero =
        RiferimentoImmagine::Relativo(immagine.canonicalFilePath(), cartella.canonicalFilePath() + u"/x"_s);
    return sale(vero) ? diretto : vero;
}

void FrmImage::Sfoglia()
{
    const QString pagina = ModuloDichiarazioni::PostoPagina();
    const QString vicino = m_file->text().isEmpty() ? pagina : Percorso();
    const QString cartella = vicino.isEmpty() ? QString() : QFileInfo(vicino).absolutePath();
    QStringList scelti;
    ModuloPrincipale::ApriFileDialogo(this, scelti, false, FiltroImmagini,
                                      QFileInfo(cartella).isDir() ? cartella : QString(), {}, Messaggio(318),
                                      [](QWidget *finestra, const QString &) {
                                          Pezzi::MostraMessaggio(finestra, QMessageBox::Information, Messaggio(91));
                                          return false;
                                      });
    if (scelti.value(0).isEmpty())
        return;
    m_file->setText(scelti.constFirst());
    AnteprimaDelFile();
}

void FrmImage::AnteprimaDelFile()
{
    m_mostrato = m_file->text();
    const QString percorso = Percorso();
    if (!File_System::FileEsiste(percorso)) {
        m_anteprima->Mostra({});
        Pezzi::MostraMessaggio(this, QMessageBox::Information, Messaggio(91));
        return;
    }
    {
        const Pezzi::CursoreAttesa clessidra;
        m_anteprima->Mostra(CaricaImmagine::Carica(percorso));
    }
    if (m_anteprima->Vuota())
        Pezzi::MostraMessaggio(this, QMessageBox::Information, Messaggio(323).arg(m_file->text()));
}

/// The box lost the focus: what the preview has seen already is not told again, nor that nothing was chosen.
void FrmImage::AllaPerdita()
{
    if (isVisible() && !m_file->text().isEmpty() && m_file->text() != m_mostrato)
        AnteprimaDelFile();
}

void FrmImage::AggiornaRiferimento()
{
    const QString relativo = Relativo();
    m_relativo->setEnabled(!relativo.isEmpty());
    m_relativo->setChecked(m_vuoleRelativo && !relativo.isEmpty());
    const QString riferimento = m_relativo->isChecked() ? relativo : m_file->text();
    m_riferimento->setText(riferimento);
    m_riferimento->setToolTip(riferimento.toHtmlEscaped());
}

void FrmImage::AggiornaZoom()
{
    const bool vuota = m_anteprima->Vuota();
    m_piu->setEnabled(!vuota && m_anteprima->Zoom() < AnteprimaImmagine::Massimo);
    m_meno->setEnabled(!vuota && m_anteprima->Zoom() > AnteprimaImmagine::Minimo);
    m_zoom->setText(vuota ? QString()
                          : u"%1 × %2 · %3%"_s.arg(m_anteprima->Misura().width())
                                .arg(m_anteprima->Misura().height())
                                .arg(qRound(m_anteprima->Zoom() * 100)));
}

void FrmImage::Conferma()
{
    Stato().TestoInserimento = m_relativo->isChecked() ? Relativo() : m_file->text();
    accept();
}
