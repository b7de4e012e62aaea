#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QLockFile>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

/// Files that are given to the engine for one reading each. They lie in a folder of their own under names that tell
/// nothing, as links to open descriptors: what was judged is what is read, whatever happens to its path meanwhile.
class Lasciapassare
{
public:
    Lasciapassare();
    ~Lasciapassare();
    Q_DISABLE_COPY_MOVE(Lasciapassare)

    /// The folder, without a "/" at its end; empty when there is none, and then nothing is given.
    [[nodiscard]] const QString &Radice() const { return m_radice; }

    /// Opens the regular file \a percorso; -1 when it is none or cannot be read. Anything but a file, a pipe for one,
    /// could keep a reader waiting for good. The caller closes it.
    [[nodiscard]] static int Apri(const QString &percorso);
    /// Where the open \a descrittore really lies, without links.
    [[nodiscard]] static QString Vero(int descrittore);

    /// The address of \a descrittore, which is taken over, at the place \a nome, which begins with "/" and leads
    /// nowhere up; empty when it cannot be made. It ends after some time.
    [[nodiscard]] QUrl Concedi(int descrittore, const QString &nome);
    /// True when \a indirizzo was given; true only once.
    [[nodiscard]] bool Riscuoti(const QUrl &indirizzo);

private:
    struct Voce {
        int descrittore = -1;
        QString legame;
        QDeadlineTimer scadenza;
        bool riscossa = false;
    };

    void Togli(const Voce &voce) const;
    void TogliScadute();

    QTemporaryDir m_cartella;
    QLockFile m_chiave; ///< tells that the folder is in use
    QString m_radice;
    QHash<QString, Voce> m_voci;
    QTimer m_pulizia;
};
