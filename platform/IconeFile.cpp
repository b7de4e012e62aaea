#include "platform/IconeFile.h"

#include <QApplication>
#include <QCompleter>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMimeDatabase>

namespace
{

IconeFile *Uniche()
{
    static auto *const icone = new IconeFile; // windows ask it until the very end
    return icone;
}

QMimeType Specie(const QFileInfo &file)
{
    return QMimeDatabase().mimeTypeForFile(file.fileName(), QMimeDatabase::MatchExtension);
}

/// Qt makes some file dialogs itself.
class AltriDialoghi : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject *oggetto, QEvent *evento) override
    {
        if (evento->type() == QEvent::Polish) {
            if (auto *dialogo = qobject_cast<QFileDialog *>(oggetto))
                dialogo->setIconProvider(Uniche());
        }
        return false;
    }
};

} // namespace

void IconeFile::Imposta(QDialog *dialogo)
{
    if (auto *file = qobject_cast<QFileDialog *>(dialogo))
        return file->setIconProvider(Uniche());
    qApp->installEventFilter(new AltriDialoghi(dialogo));
    for (const QLineEdit *riga : dialogo->findChildren<QLineEdit *>()) {
        auto *modello = riga->completer() ? qobject_cast<QFileSystemModel *>(riga->completer()->model()) : nullptr;
        if (modello)
            modello->setIconProvider(Uniche());
    }
}

QIcon IconeFile::icon(const QFileInfo &file) const
{
    if (file.isDir())
        return QFileIconProvider::icon(file);
    return QIcon::fromTheme(Specie(file).iconName(), icon(QFileIconProvider::File));
}

QString IconeFile::type(const QFileInfo &file) const
{
    return file.isDir() ? QFileIconProvider::type(file) : Specie(file).comment();
}
