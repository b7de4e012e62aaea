#include "platform/Dialoghi.h"

#include "platform/FiltriDialogo.h"
#include "platform/IconeFile.h"
#include "platform/NomiFile.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QTreeView>
#include <QUrl>
#include <QWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace ModuloPrincipale
{
namespace
{

constexpr QStringView EstensioneApri = u"bas";

bool ChiediCreazione(QWidget *finestra, const QString &percorso)
{
    const QString domanda =
        QCoreApplication::translate("ModuloPrincipale", "%1\nThis file does not exist.\nCreate it?");
    return QMessageBox::question(finestra, finestra->windowTitle(), domanda.arg(QDir::toNativeSeparators(percorso))) ==
           QMessageBox::Yes;
}

/// Qt's dialog knows two ways, existing files only or any without a question; this one asks.
class DialogoApri : public QFileDialog
{
public:
    DialogoApri(QWidget *finestra, const DomandaCreazione &domanda) : QFileDialog(finestra), m_domanda(domanda) {}

    [[nodiscard]] static QString ConEstensione(const QString &percorso)
    {
        const QFileInfo info(percorso);
        return NomiFile::Esiste(percorso) || info.fileName().contains(u'.')
                   ? percorso
                   : percorso + u'.' + EstensioneApri.toString();
    }

    /// The file \a percorso, or the one whose name reads like that and is no text: Qt's dialog cannot name it.
    [[nodiscard]] static QString Nominato(const QString &percorso)
    {
        const QFileInfo info(percorso);
        if (!NomiFile::Esiste(percorso)) {
            for (const QString &nome : NomiFile::NonTesto(info.path())) {
                if (NomiFile::Leggibile(nome) == info.fileName())
                    return info.path() + u'/' + nome;
            }
        }
        return percorso;
    }

    /// A list below the files of those that Qt's own list leaves out because their names are no text; only where there
    /// are some. A click puts one into the field for the name, a second one opens it.
    void MostraNonTesto()
    {
        auto *griglia = qobject_cast<QGridLayout *>(layout());
        auto *nome = findChild<QLineEdit *>(u"fileNameEdit"_s);
        if (!griglia || !nome)
            return;
        auto *elenco = new QListWidget(this);
        elenco->setObjectName("NonTesto"_L1);
        elenco->setAccessibleName(windowTitle());
        elenco->setMaximumHeight(elenco->fontMetrics().height() * 5);
        griglia->addWidget(elenco, griglia->rowCount(), 0, 1, griglia->columnCount());
        const auto riempi = [elenco](const QString &cartella) {
            elenco->clear();
            for (const QString &uno : NomiFile::NonTesto(cartella))
                elenco->addItem(NomiFile::Leggibile(uno));
            elenco->setVisible(elenco->count() > 0);
        };
        connect(this, &QFileDialog::directoryEntered, elenco, riempi);
        connect(elenco, &QListWidget::currentTextChanged, nome, &QLineEdit::setText);
        connect(elenco, &QListWidget::itemActivated, this, [this] { accept(); });
        riempi(directory().path());
    }

protected:
    void accept() override
    {
        const QStringList scelti = selectedFiles();
        if (fileMode() == AnyFile && scelti.size() == 1 && !scelti.first().isEmpty()) {
            const QString percorso = ConEstensione(Nominato(scelti.first()));
            if (!NomiFile::Esiste(percorso) && !(m_domanda ? m_domanda : ChiediCreazione)(this, percorso))
                return;
        }
        QFileDialog::accept();
    }

private:
    DomandaCreazione m_domanda;
};

/// Sizes, kinds and dates whole, whatever their titles are called; desktops with a dialog of their own see to that.
void MostraColonne(const QFileDialog &dialogo)
{
    const auto *elenco = dialogo.findChild<QTreeView *>(u"treeView"_s);
    if (!elenco)
        return;
    for (int colonna = 1; colonna < elenco->header()->count(); ++colonna)
        elenco->header()->setSectionResizeMode(colonna, QHeaderView::ResizeToContents);
}

/// The list stays as it was read: a file that goes away while it is the chosen one ends a program with Qt 6.4.
void FermaElenco(const QFileDialog &dialogo)
{
    if (auto *modello = dialogo.findChild<QFileSystemModel *>())
        modello->setOption(QFileSystemModel::DontWatchForChanges);
}

/// Every setting is made anew: Qt would else begin where the last dialog of any kind ended.
void Prepara(QFileDialog &dialogo, const QString &filtro, const QString &cartella, const QString &nome)
{
    IconeFile::Imposta(&dialogo);
    dialogo.setOption(QFileDialog::DontResolveSymlinks);
    dialogo.setOption(QFileDialog::HideNameFilterDetails);
    const QStringList filtri = FiltriQt(filtro);
    dialogo.setNameFilters(filtri);
    MostraColonne(dialogo);
    FermaElenco(dialogo);
    dialogo.selectNameFilter(filtri.first());
    // Of a folder whose name is no text Qt's dialog can show the next one above.
    QString inizio = cartella.isEmpty() ? QDir::currentPath() : cartella;
    while (!NomiFile::SoloTesto(inizio))
        inizio = QFileInfo(inizio).path();
    dialogo.setDirectory(inizio);
    if (!nome.isEmpty())
        dialogo.selectFile(nome);
}

void SulPiano(QWidget *finestra, bool primo)
{
    if (!finestra)
        return;
    QWidget *intera = finestra->window();
    // QWidget::setWindowFlag would hide the window; the window system changes the place of a visible one just as well.
    intera->overrideWindowFlags(intera->windowFlags().setFlag(Qt::WindowStaysOnTopHint, primo));
    if (QWindow *finestraSistema = intera->windowHandle())
        finestraSistema->setFlags(intera->windowFlags());
}

} // namespace

void ApriFileDialogo(QWidget *finestra, QStringList &risultato, bool multipla, const QString &filtro,
                     const QString &cartella, const QString &nome, const QString &titolo,
                     const DomandaCreazione &domanda)
{
    risultato = QStringList{QString()};
    // On the heap and watched: the owner may be closed, and delete the dialog, while it is open.
    const QPointer<DialogoApri> dialogo = new DialogoApri(finestra, domanda);
    dialogo->setObjectName("ApriFileDialogo"_L1);
    dialogo->setWindowTitle(titolo.isEmpty() ? u"Select File/s"_s : titolo);
    dialogo->setAcceptMode(QFileDialog::AcceptOpen);
    dialogo->setFileMode(multipla ? QFileDialog::ExistingFiles : QFileDialog::AnyFile);
    Prepara(*dialogo, filtro, cartella, nome);
    if (!multipla)
        dialogo->MostraNonTesto();
    if (dialogo->exec() == QDialog::Accepted && dialogo) {
        QStringList scelti = dialogo->selectedFiles();
        if (scelti.size() == 1)
            scelti.first() = DialogoApri::ConEstensione(DialogoApri::Nominato(scelti.first()));
        risultato = ElencoDaBuffer(BufferDaElenco(scelti));
    }
    delete dialogo.data();
}

void SalvaFileDialogo(QWidget *finestra, QString &risultato, const QString &filtro, const QString &cartella,
                      const QString &nome, const QString &titolo, const QString &estensione)
{
    risultato.clear();
    const QPointer<QFileDialog> dialogo = new QFileDialog(finestra);
    dialogo->setObjectName("SalvaFileDialogo"_L1);
    dialogo->setWindowTitle(titolo);
    dialogo->setAcceptMode(QFileDialog::AcceptSave);
    dialogo->setFileMode(QFileDialog::AnyFile);
    dialogo->setDefaultSuffix(estensione);
    Prepara(*dialogo, filtro, cartella, nome);
    if (dialogo->exec() == QDialog::Accepted && dialogo)
        risultato = QDir::toNativeSeparators(dialogo->selectedFiles().value(0));
    delete dialogo.data();
}

void ApriConShell(const QString &percorso)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(percorso).absoluteFilePath()));
}

void InPrimoPiano(QWidget *finestra)
{
    SulPiano(finestra, true);
}

void NonInPrimoPiano(QWidget *finestra)
{
    SulPiano(finestra, false);
}

} // namespace ModuloPrincipale
