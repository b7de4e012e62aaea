#include "chrome/frmAbout.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PictureBox.h"
#include "platform/File_System.h"
#include "platform/Misure.h"
#include "platform/Registro_Di_Windows.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QVersionNumber>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int LatoFigura = 96;          // pixels
constexpr int LarghezzaTesto = 5400;    // twips
constexpr quint32 MassimoValore = 1024; // bytes

constexpr QStringView ChiaveVersione = u"Software\\Microsoft\\Windows NT\\CurrentVersion";

QLabel *Etichetta(const QString &nome, QWidget *parent)
{
    auto *etichetta = new QLabel(parent);
    etichetta->setObjectName(nome);
    etichetta->setTextFormat(Qt::PlainText);
    return etichetta;
}

void Ingrandisci(QLabel &etichetta, int punti, bool neretto)
{
    QFont carattere = etichetta.font();
    carattere.setPointSize(punti);
    carattere.setBold(neretto);
    etichetta.setFont(carattere);
}

QString TestoVersione()
{
    const QVersionNumber versione = QVersionNumber::fromString(QCoreApplication::applicationVersion());
    return u"%1.%2.%3"_s.arg(versione.majorVersion()).arg(versione.minorVersion()).arg(versione.microVersion());
}

/// True when the command line \a comando was started.
bool Avvia(const QString &comando)
{
    // A path is often written without quotes, whatever blanks it holds.
    QStringList parti = QFileInfo(comando).isFile() ? QStringList{comando} : QProcess::splitCommand(comando);
    if (parti.isEmpty())
        return false;
    const QString programma = parti.takeFirst();
    return QProcess::startDetached(programma, parti);
}

} // namespace

frmAbout::frmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName(u"frmAbout"_s);
    setWindowIcon(ModuloGrafica::Icona(u"informazioni_su"));
    setWindowTitle(Messaggio(319).arg(QCoreApplication::applicationName()));
    Crea();
    ModuloGrafica::Decora(*this);
    for (const auto &nome : {u"Frame1"_s, u"picIcon"_s}) {
        auto *riquadro = findChild<QFrame *>(nome);
        QPalette tavolozza = riquadro->palette();
        tavolozza.setColor(QPalette::Window, Colori::Finestra);
        riquadro->setPalette(tavolozza);
        riquadro->setAutoFillBackground(true);
    }
    Ingrandisci(*m_titolo, 20, true);
    Ingrandisci(*m_versione, 10, false);
    Ingrandisci(*m_avvertenza, 8, true);
    Ingrandisci(*m_utente, 9, true);
    Riempi();
}

void frmAbout::Crea()
{
    auto *cornice = new QFrame(this);
    cornice->setObjectName(u"Frame1"_s);
    auto *figura = new PictureBox(u"picIcon"_s, cornice);
    figura->setFixedSize(LatoFigura, LatoFigura);
    figura->SetAutoRedraw(true);
    figura->Disegna([](QPainter &p) { ModuloGrafica::Icona(u"velloro").paint(&p, 0, 0, LatoFigura, LatoFigura); });
    auto *dentro = new QHBoxLayout(cornice);
    dentro->setContentsMargins(4, 4, 4, 4);
    dentro->setSpacing(20);
    dentro->addWidget(figura, 0, Qt::AlignTop);
    dentro->addLayout(CreaTesti(cornice), 1);

    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(16, 16, 16, 12);
    colonna->setSpacing(16);
    colonna->addWidget(cornice, 1);
    colonna->addLayout(CreaPulsanti());
    colonna->setSizeConstraint(QLayout::SetFixedSize);
}

QLayout *frmAbout::CreaTesti(QWidget *cornice)
{
    m_titolo = Etichetta(u"lblTitle"_s, cornice);
    m_versione = Etichetta(u"lblVersion"_s, cornice);
    auto *qt = Etichetta(u"lblQt"_s, cornice);
    qt->setText(Messaggio(306).arg(QString::fromLatin1(qVersion())));
    auto *licenza = Etichetta(u"lblLicenza"_s, cornice);
    licenza->setText(Messaggio(305));
    m_utente = Etichetta(u"LblUserReg"_s, cornice);
    m_utente->setWordWrap(true);
    auto *linea = new QFrame(cornice);
    linea->setFrameShape(QFrame::HLine);
    m_avvertenza = Etichetta(u"lblDisclaimer"_s, cornice);
    m_descrizione = Etichetta(u"lblDescription"_s, cornice);
    m_descrizione->setWordWrap(true);
    m_descrizione->setFixedWidth(Misure::InPixel(LarghezzaTesto));

    constexpr int Distacco = 6; // pixels between groups of texts
    auto *testi = new QVBoxLayout;
    testi->setSpacing(3);
    testi->addWidget(m_titolo);
    testi->addWidget(m_versione);
    testi->addSpacing(Distacco);
    testi->addWidget(qt);
    testi->addWidget(licenza);
    testi->addSpacing(Distacco);
    testi->addWidget(m_utente);
    testi->addSpacing(Distacco);
    testi->addWidget(linea);
    testi->addSpacing(Distacco);
    testi->addWidget(m_avvertenza);
    testi->addWidget(m_descrizione);
    testi->addStretch(1);
    return testi;
}

QLayout *frmAbout::CreaPulsanti()
{
    auto *info = new QPushButton(Messaggio(321), this);
    info->setObjectName(u"cmdSysInfo"_s);
    info->setAutoDefault(false);
    connect(info, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    auto *ok = new QPushButton(Messaggio(120), this);
    ok->setObjectName(u"cmdOK"_s);
    ok->setProperty("Tag", u"D"_s);
    ok->setDefault(true);
    ok->setFocus();
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto *riga = new QHBoxLayout;
    riga->setSpacing(8);
    riga->addWidget(info);
    riga->addStretch(1);
    riga->addWidget(ok);
    return riga;
}

void frmAbout::Riempi()
{
    using Registro_Di_Windows::LeggiValore;
    const QString organizzazione = LeggiValore(Registro::HKEY_LOCAL_MACHINE, ChiaveVersione, u"RegisteredOrganization");
    const QString proprietario = LeggiValore(Registro::HKEY_LOCAL_MACHINE, ChiaveVersione, u"RegisteredOwner");
    m_titolo->setText(QCoreApplication::applicationName());
    m_versione->setText(Messaggio(320).arg(TestoVersione()));
    m_avvertenza->setText(Messaggio(92));
    m_descrizione->setText(Messaggio(93));
    m_utente->setText(organizzazione.isEmpty() ? proprietario : organizzazione);
    m_utente->setHidden(m_utente->text().isEmpty());
}

void frmAbout::StartSysInfo()
{
    QString percorso;
    if (GetKeyValue(Registro::HKEY_LOCAL_MACHINE, u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", u"PATH", percorso)) {
        if (Avvia(percorso))
            return;
    } else if (GetKeyValue(Registro::HKEY_LOCAL_MACHINE, u"SOFTWARE\\Microsoft\\Shared Tools Location", u"MSINFO",
                           percorso)) {
        const QString programma = ModuloDichiarazioni::PercorsoIn(percorso, u"MSINFO32.EXE");
        if (File_System::FileEsiste(programma) && Avvia(programma))
            return;
    }
    QMessageBox messaggio(QMessageBox::NoIcon, QCoreApplication::applicationName(), Messaggio(322), QMessageBox::Ok,
                          this);
    messaggio.setObjectName(u"Messaggio"_s);
    messaggio.setTextFormat(Qt::PlainText);
    messaggio.exec();
}

bool frmAbout::GetKeyValue(Registro::HKey KeyRoot, QStringView KeyName, QStringView SubKeyRef, QString &KeyVal)
{
    Registro::HKey chiave = 0;
    if (Registro::RegOpenKeyEx(KeyRoot, KeyName, Registro::KEY_ALL_ACCESS, chiave) != Registro::Successo)
        return false;
    QByteArray valore(MassimoValore, '\0');
    quint32 tipo = 0;
    quint32 misura = MassimoValore;
    const Registro::Esito esito = Registro::RegQueryValueEx(chiave, SubKeyRef, &tipo, valore.data(), &misura);
    Registro::RegCloseKey(chiave);
    if (esito != Registro::Successo || (tipo != Registro::REG_SZ && tipo != Registro::REG_EXPAND_SZ))
        return false;
    valore.truncate(misura);
    if (valore.endsWith('\0'))
        valore.chop(1);
    KeyVal = QString::fromUtf8(valore);
    return true;
}
