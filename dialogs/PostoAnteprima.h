#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QLockFile;

/// The place of the temporary page of this running program: "test.html", or "test-2.html" and so on while others run
/// from the same folder. A lock file beside it tells whose it is, so that what a killed program left can be deleted and
/// what a running one uses cannot.
class PostoAnteprima
{
public:
    /// In the program folder; where that cannot be written, in the user's own data folder, else in the one of this
    /// session.
    PostoAnteprima();
    /// In the first folder of \a cartelle that can be written. When none can, the page has a path where writing fails.
    explicit PostoAnteprima(const QStringList &cartelle);
    /// Deletes the page and gives the place back.
    ~PostoAnteprima();
    Q_DISABLE_COPY_MOVE(PostoAnteprima)

    [[nodiscard]] const QString &Percorso() const { return m_percorso; }

private:
    bool Prendi(const QString &cartella);
    bool Prova(const QString &percorso);

    QString m_percorso;
    std::unique_ptr<QLockFile> m_chiave; ///< null: nothing was taken, and nothing is deleted
};
