#pragma once

#include "editor/FileRecupero.h"

#include <memory>
#include <optional>
#include <vector>

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

class QLockFile;
class RichTextBox;

/// One recovery file that can be offered. As long as it exists no other running program offers it.
class VoceRecupero
{
public:
    VoceRecupero(QString file, std::unique_ptr<QLockFile> chiave, QString fileCorrente, QDateTime quando);
    VoceRecupero(VoceRecupero &&) noexcept;
    VoceRecupero &operator=(VoceRecupero &&) noexcept;
    ~VoceRecupero();

    QString file;         ///< the recovery file
    QString FileCorrente; ///< full path of the page; empty for one without a file
    QDateTime quando;     ///< when it was written

private:
    friend class Recupero;
    std::unique_ptr<QLockFile> m_chiave;
};

/// Keeps the text of the page in a file of its own in the user's data folder while the page is not saved, so that it
/// outlives a program that is killed. It is written by a thread of its own: a key only pays for a shared copy of the
/// text.
class Recupero : public QObject
{
    Q_OBJECT

public:
    static constexpr int Pausa = 1'500;     ///< milliseconds without a change before the text is written
    static constexpr int AttesaMax = 4'000; ///< milliseconds after which it is written in the middle of typing

    /// Watches \a controllo; what stands in it now counts as saved. \a cartella: empty for CartellaUtente().
    explicit Recupero(RichTextBox *controllo, const QString &cartella = {}, int pausa = Pausa,
                      QObject *genitore = nullptr);
    /// Ends in order, as Chiudi().
    ~Recupero() override;

    /// Name of the page's encoding, written with the text.
    void ImpostaCodifica(const QString &codifica) { m_codifica = codifica; }
    /// Whether the page has a file of its own. One just begun has not, whatever file was opened before it: recovered,
    /// it must not claim that.
    void ImpostaConFile(bool conFile) { m_conFile = conFile; }
    /// The page was saved, opened or newly made: there is nothing to recover until the text changes.
    void Salvata();
    /// \a testo is what the disk holds of the page that undo or redo brought back.
    void ImpostaSalvato(const QString &testo);
    /// The text is about to give way to another page without a question: when it is not saved it is left for the next
    /// start, unless it is saved after all.
    void Deponi();
    /// The text that was deposed stays in the editor after all.
    void Riprendi();
    /// Writes at once when the page is not saved; returns when the file is written. Needed before the text that was
    /// just recovered is discarded.
    void ScriviOra();
    /// The program ends in order, the page is saved or was given up by its user: the recovery file goes. Nothing is
    /// written any more.
    void Chiudi();

    /// The program ends without asking: what is not saved is written and left for the next start.
    void Lascia();

    /// The folder of the recovery files in the user's data folder.
    [[nodiscard]] static QString CartellaUtente();
    /// Pages left behind by programs that no longer run, the newest first; their texts are not read yet. A recovery
    /// file that is not whole is set aside: it gets the extension "guasto". Another program's stays as it is.
    [[nodiscard]] static std::vector<VoceRecupero> DaOffrire(const QString &cartella = {});
    /// The page of \a voce; none when it cannot be read.
    [[nodiscard]] static std::optional<PaginaRecuperata> Leggi(const VoceRecupero &voce);
    /// Removes its file.
    static void Scarta(VoceRecupero voce);

private:
    /// A text that was left for the next start.
    struct Deposto {
        QString file;
        std::unique_ptr<QLockFile> chiave; ///< no other program offers it while this one runs
        QString testo;
    };

    void AlCambio();
    void AlTick();
    [[nodiscard]] bool DaSalvare() const;
    [[nodiscard]] bool Prenota();
    void Accoda();
    void AccodaRimozione();
    void TogliDeposti(const QString &testo);

    QPointer<RichTextBox> m_pad;
    QString m_cartella;
    QString m_file; ///< own recovery file; empty until the first is written
    QString m_codifica;
    bool m_conFile = true;
    std::unique_ptr<QLockFile> m_chiave;
    std::vector<Deposto> m_deposti;
    QTimer m_timer;
    int m_pausa = 0;            ///< milliseconds
    QElapsedTimer m_daScrivere; ///< since the first change that is not written yet
    QThreadPool m_scrittore;    ///< one thread: what was asked first is done first
    int m_revisioneSalvata = 0;
    std::optional<QString> m_testoSalvato; ///< as of Salvata; before it, the program's own counts
    int m_revisioneScritta = -1;
    bool m_chiuso = false;
};
