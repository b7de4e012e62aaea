#pragma once

#include <optional>
#include <vector>

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "editor/clsUndoElement.h"
#include "platform/RichTextBox.h"

/// The undo manager of one editing control. It waits until the user pauses and then records the change of the
/// control's RTF, colours included; there is no limit on the number of records. Operations give false when there was
/// nothing to do, or no control.
class clsUndo : public QObject
{
    Q_OBJECT

public:
    explicit clsUndo(QObject *genitore = nullptr);
    ~clsUndo() override;

    /// Observes \a controllo from now on and starts the history afresh. The pause timer, \a pausa milliseconds, becomes
    /// a child of \a contenitore. False when there is no control or no timer could be made.
    bool Attach(QObject *contenitore, RichTextBox *controllo, int pausa);
    bool Reset();
    /// Records the change since the last record, if any.
    bool TakeUndoSnapShot();
    /// Undoes up to \a passi records, a change still pending first. Refused while a syntax check runs.
    bool Undo(int passi);
    /// Redoes up to \a passi records. A pending change of the text is recorded first, which leaves nothing to redo.
    /// Refused while a syntax check runs.
    bool Redo(int passi);
    [[nodiscard]] bool CanUndo() const { return m_undoList.size() >= 2 && m_tracking; }
    [[nodiscard]] bool CanRedo() const { return !m_redoList.empty() && m_tracking; }

    /// What is recorded from now on belongs to the page with the mark \a segno; 0 at first.
    void ImpostaSegno(int segno) { m_segno = segno; }

    /// What the commands and keys do: Undo(1), again while only looks came out of it.
    bool AnnullaComando();
    /// Likewise Redo(1); the looks that were recorded on their own right after the text come along.
    bool RipristinaComando();

    [[nodiscard]] const std::vector<clsUndoElement> &UndoList() const { return m_undoList; }
    [[nodiscard]] const std::vector<clsUndoElement> &RedoList() const { return m_redoList; }

    /// Length of the common beginning of two strings, or of their common end when \a daDestra.
    [[nodiscard]] static int MatchingChars(QStringView a, QStringView b, bool daDestra);

signals:
    /// CanUndo or CanRedo may have changed.
    void StatoCambiato();
    /// Undo or redo brought back text that was recorded under another mark.
    void SegnoCambiato(int segno);

private:
    struct Selezione {
        int inizio = 0;
        int lunghezza = 0;
    };
    class Riscrittura;

    bool CreateTimer(QObject *contenitore, int pausa);
    static void SetRedraw(Hwnd hwnd, bool acceso);
    [[nodiscard]] Selezione SelezioneDelControllo() const;
    [[nodiscard]] bool InAttesa() const { return m_timer && m_timer->isActive(); }
    [[nodiscard]] bool InCorso() const;
    void Applica(const clsUndoElement &elemento, const QString &blocco);
    void Ripristina(Selezione selezione, int primaRiga, bool mostraCaretto);
    void RiprendiAspetti();
    void Annuncia();

    void AlCambio();
    void AlTick();
    void AllaSelezione();
    void AlTasto(EventoTasto *tasto);

    QPointer<RichTextBox> m_rtb;
    QPointer<QTimer> m_timer;
    std::vector<clsUndoElement> m_undoList; ///< oldest first; the first is the base record, never undone
    std::vector<clsUndoElement> m_redoList; ///< the most recently undone last
    ContenutoRtf m_lastRtf;
    bool m_tracking = false;
    int m_segno = 0;
    Selezione m_precedente;
    Selezione m_corrente;
    int m_revisioneCorrente = -1; ///< text revision at which m_corrente was read
    int m_revisioneRtf = -1;      ///< text revision of m_lastRtf
};
