#pragma once

#include <QFileIconProvider>

class QDialog;

/// Icons and kinds of files by their names alone. Qt's own provider reads a file whose name does not tell its kind, in
/// the thread of the windows: of a file of the system that lets wait for its content that never ends.
class IconeFile : public QFileIconProvider
{
public:
    /// Sees to it that \a dialogo, and each file dialog that is opened as long as it is there, uses it.
    static void Imposta(QDialog *dialogo);

    using QFileIconProvider::icon;
    [[nodiscard]] QIcon icon(const QFileInfo &file) const override;
    [[nodiscard]] QString type(const QFileInfo &file) const override;
};
