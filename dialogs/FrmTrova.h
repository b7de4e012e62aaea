#pragma once

#include <QDialog>
#include <QPointer>

#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class RichTextBox;

/// Find and replace in one editing control: a small dialog that stays above the other windows while it is open. One
/// instance serves the program.
class FrmTrova : public QDialog
{
    Q_OBJECT

public:
    enum Modalita : quint8 { Trova = 0, RipetiTrova = 1, Sostituisci = 2 };

    explicit FrmTrova(QWidget *genitore = nullptr);

    /// Acts on \a controllo until the next call, or until it is destroyed. RipetiTrova repeats the last search and
    /// closes the dialog; any other value shows it. A selection within one line becomes the text to find.
    void Init(RichTextBox *controllo, quint8 modalita);

    /// One search from the search position on, which then stands one unit after the start of the match, or at 0 when
    /// nothing is found; \a fineRicerca becomes true then, and is never set to false.
    void TrovaStringa(const QString &testo, bool &fineRicerca, bool senzaMessaggio);
    /// Replaces the selection, whatever it holds; then finds the next match when \a trovaDopo.
    void SostituisciStringa(const QString &testo, const QString &testoSostituito, bool trovaDopo);

    /// 0-based position at which every search starts, unless the caret was moved; kept for the life of the program.
    static int PosizioneRicerca;
    /// Text of the last search, likewise.
    static QString UltimaRicerca;

signals:
    /// Before one or many places are replaced, and after: the edit between them is a step of its own.
    void SostituzioneImminente();
    void SostituzioneFatta();

protected:
    bool event(QEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    void hideEvent(QHideEvent *evento) override;

private:
    void Crea();
    void MettiDovEra();
    void ImpostaDidascalie(bool sostituisce);
    void ImpostaModalita(quint8 modalita);
    void ProponiTesto();
    /// A caret that was moved since the last search is where the next one starts; with text selected, \a dopoInizio
    /// units after the selection's start.
    void SeguiCaretto(int dopoInizio);
    void RicordaCaretto();
    void AlTrova();
    void AlSostituisci();
    void SostituisciTutto();
    void Informa(const QString &testo);
    void Mostra(int posizione, int lunghezza, bool eraInVista);
    [[nodiscard]] bool CopreIlTrovato(int posizione, int lunghezza) const;
    void ScansaIlTrovato(int posizione, int lunghezza);

    QPointer<RichTextBox> m_pad;
    std::optional<QPoint> m_posto; ///< where it stood when it was closed
    QLabel *m_label1 = nullptr;
    QLabel *m_label2 = nullptr;
    QLineEdit *m_txtFind = nullptr;
    QLineEdit *m_txtReplace = nullptr;
    QCheckBox *m_chkOption = nullptr;
    QCheckBox *m_chkReplaceAll = nullptr;
    QPushButton *m_cmdTrova = nullptr;
    QPushButton *m_cmdSostituisci = nullptr;
    QPushButton *m_cmdEsci = nullptr;
};
