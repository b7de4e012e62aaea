#pragma once

#include <functional>
#include <optional>

#include <QHash>
#include <QPlainTextEdit>

#include "platform/Aspetto.h"
#include "platform/ContenutoRtf.h"
#include "platform/GapBuffer.h"
#include "platform/Interruzioni.h"

/// A key as the program's rules name it.
struct EventoTasto {
    int codice = 0; ///< virtual key code (13 Enter, 32 Space, 39 Right, 65-90 letters, 112-123 F1-F12, 226 the key that
                    ///< types "<"); a handler that sets 0 swallows the key
    int shift = 0;  ///< 1 Shift, 2 Ctrl, 4 Alt, added
    QString testo;  ///< what the key types; empty for none
};

/// A handle for code that sends messages to a control; 0 is none.
using Hwnd = quint32;

class Disposizione;
namespace Rtf
{
struct Contenuto;
}

/// The editing control: plain text with a look (colour, bold, italic, wavy underline) per character.
///
/// A position is the count of UTF-16 units before it, from 0; CR LF counts as two and cannot be entered: a position
/// between its halves means the one before it. Every position and length given is clamped to the text. What is put in
/// comes out, unit for unit, whatever it is. The control has no undo of its own.
class RichTextBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    enum OpzioneRicerca { ParolaIntera = 2, Maiuscole = 4, SenzaEvidenza = 8 };

    explicit RichTextBox(QWidget *parent = nullptr);
    ~RichTextBox() override;

    // --- Text -------------------------------------------------------------------------------------------------------
    /// The whole text; copied once per change of the text, then shared.
    [[nodiscard]] QString Text() const;
    /// Replaces the whole text in the default look, the caret at its start.
    void ImpostaText(const QString &testo);
    [[nodiscard]] int Lunghezza() const { return int(m_testo.size()); }
    /// At most \a quanti units from \a da, without a copy of the rest.
    [[nodiscard]] QString Parte(int da, int quanti) const;
    [[nodiscard]] QChar Unita(int posizione) const { return QChar(m_testo.at(posizione)); }
    /// Position of the last \a carattere before \a prima (not including it), or -1. Linear in the distance.
    [[nodiscard]] int CercaIndietro(QChar carattere, int prima) const;
    /// Position of the first \a carattere from \a da on, or -1. Linear in the distance.
    [[nodiscard]] int CercaAvanti(QChar carattere, int da) const;
    /// Counts every change of the text.
    [[nodiscard]] int Revisione() const { return m_revisione; }
    /// Replaces \a quanti units from \a da by \a testo, in the typing look or that of the character before; the caret
    /// goes after the new text.
    void Sostituisci(int da, int quanti, const QString &testo);
    /// Replaces \a lunghezza units at each of \a posizioni, which ascend, by \a sostituto, as one edit; what stands
    /// between keeps its looks. A place that begins inside the one before is left out. The caret goes after the last
    /// new text. Returns how many places were replaced. Linear in the distance from the first to the last.
    int SostituisciTutte(const std::vector<int> &posizioni, int lunghezza, const QString &sostituto);

    // --- Selection --------------------------------------------------------------------------------------------------
    [[nodiscard]] int SelStart() const;
    [[nodiscard]] int SelLength() const;
    [[nodiscard]] QString SelText() const { return Parte(SelStart(), SelLength()); }
    /// Puts the caret there with nothing selected, and into view.
    void ImpostaSelStart(int posizione);
    /// Selects from SelStart on.
    void ImpostaSelLength(int lunghezza);
    /// Replaces the selection; the caret goes after the new text.
    void ImpostaSelText(const QString &testo);
    void Seleziona(int da, int quanti);

    // --- Looks ------------------------------------------------------------------------------------------------------
    /// Colour of the first selected character; with no selection, the colour that typing would take.
    [[nodiscard]] ColoreBgr SelColor() const { return AspettoSelezione().colore; }
    [[nodiscard]] bool SelBold() const { return AspettoSelezione().grassetto; }
    [[nodiscard]] bool SelItalic() const { return AspettoSelezione().corsivo; }
    /// Set the selection's look; with no selection, the typing look until the caret moves.
    void ImpostaSelColor(ColoreBgr colore);
    void ImpostaSelBold(bool grassetto);
    void ImpostaSelItalic(bool corsivo);
    /// \a ricomincia tells of a position whether what is put in there begins in the default look instead of that of the
    /// character before it.
    void ImpostaRicomincia(std::function<bool(int)> ricomincia) { m_ricomincia = std::move(ricomincia); }
    [[nodiscard]] Aspetto AspettoIn(int posizione) const { return m_tabella[m_aspetti.at(posizione)]; }
    /// Colours a range without touching caret or selection.
    void Colora(int da, int quanti, ColoreBgr colore);
    /// Wavy underline of a range, on or off; colours stay.
    void Sottolinea(int da, int quanti, bool onda);
    /// Colour and underline in one step, the quickest way: what the range looked like before is not kept.
    void ImpostaAspetto(int da, int quanti, const Aspetto &aspetto);

    // --- Search -----------------------------------------------------------------------------------------------------
    /// First occurrence of \a testo that starts at \a inizio or later and ends before \a fine (-1: the end of the
    /// text), or -1. Case is ignored without Maiuscole. Selects it without SenzaEvidenza. An empty text is never found.
    int Find(const QString &testo, int inizio = 0, int fine = -1, int opzioni = 0);

    // --- Lines ------------------------------------------------------------------------------------------------------
    /// 0-based line that holds a position. CR LF, lone CR and lone LF end a line.
    [[nodiscard]] int GetLineFromChar(int posizione) const;
    [[nodiscard]] int NumeroRighe() const;
    [[nodiscard]] int PrimaRigaVisibile() const;
    /// Position of the first character of a 0-based line; beyond the last line, the length of the text.
    [[nodiscard]] int InizioRiga(int riga) const;
    struct RigaVisibile {
        int riga = 0;    ///< 0-based
        int cima = 0;    ///< top edge in the control's pixels
        int altezza = 0; ///< pixels
    };
    /// The lines on the screen, top to bottom, with their places. Rows that only continue a line are left out.
    [[nodiscard]] std::vector<RigaVisibile> RigheVisibili() const;
    /// Place of a character in the control's pixels (top left corner).
    [[nodiscard]] QPoint PosizioneDaCarattere(int posizione) const;
    void ScorriRighe(int righe);
    [[nodiscard]] QPoint PosizioneScorrimento() const;
    void ImpostaPosizioneScorrimento(QPoint punto);

    // --- RTF --------------------------------------------------------------------------------------------------------
    /// Text and looks as RTF, one RTF line per text line; linear.
    [[nodiscard]] QString TextRTF() const { return ContenutoRTF().Testo(); }
    /// The same without putting it together. Only lines changed since the last call are written anew.
    [[nodiscard]] const ContenutoRtf &ContenutoRTF() const;
    /// Takes text and looks from RTF; only lines that differ are replaced. False for a text that is no RTF: nothing
    /// changes.
    bool ImpostaTextRTF(const QString &rtf);
    /// Makes the RTF its first \a sinistra units, \a blocco and its last \a destra units, which must not overlap. Only
    /// the lines in between are read. False for what gives no RTF: nothing changes.
    bool SostituisciRTF(qsizetype sinistra, const QString &blocco, qsizetype destra);

    // --- Commands ---------------------------------------------------------------------------------------------------
    void Taglia() { cut(); }
    void Copia() { copy(); }
    void Incolla() { paste(); }
    void Elimina();
    /// What an input method is composing becomes text, as before anything that moves the caret.
    void ConcludiComposizione();
    /// Moves the selected text to a position outside of it; the caret goes after it.
    void SpostaSelezione(int dove);
    [[nodiscard]] bool PuoIncollare() const { return canPaste(); }
    /// Hides the selection's highlight, or shows it, also while the control has no focus.
    void NascondiSelezione(bool nascondi);
    void Ridisegna(bool acceso);
    [[nodiscard]] Hwnd hWnd() const { return m_hwnd; }
    /// The control of a handle; null when it is gone.
    [[nodiscard]] static RichTextBox *DaHandle(Hwnd hwnd);

signals:
    /// Which units changed: \a tolti units from \a da gave way to \a aggiunti. Comes before Change, at every revision,
    /// while the document is still at work: a handler may read the text (Unita, Parte), nothing else.
    void TestoCambiato(int da, int tolti, int aggiunti);
    void Change();
    void SelChange();
    /// Before the control acts on a key. A handler may change or swallow it.
    void KeyDown(EventoTasto *tasto);
    /// Before a character is typed; "\r" for Enter, "\t" for Tab. A handler may replace the character, or swallow it
    /// (0).
    void KeyPress(char16_t *carattere);
    /// After a key was let go, with the code, text and shift state of its press.
    void KeyUp(EventoTasto *tasto);
    /// \a bottone: 1 left, 2 right, 4 middle.
    void MouseDown(int bottone, int shift, QPoint dove);
    void MouseUp(int bottone, int shift, QPoint dove);
    void Click();
    void LostFocus();
    /// The keyboard's menu key; \a dove is the caret's place.
    void MenuDaTastiera(QPoint dove);

protected:
    void keyPressEvent(QKeyEvent *evento) override;
    void keyReleaseEvent(QKeyEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void mouseReleaseEvent(QMouseEvent *evento) override;
    void contextMenuEvent(QContextMenuEvent *evento) override;
    void dropEvent(QDropEvent *evento) override;
    void focusOutEvent(QFocusEvent *evento) override;
    void inputMethodEvent(QInputMethodEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData *dati) const override;
    void insertFromMimeData(const QMimeData *dati) override;

private:
    /// What the program itself is putting into the document, so that the change report needs no guessing.
    struct Attesa {
        int inizio = 0;
        int fine = 0;
        int primaInterruzione = 0;
        int interruzioniTolte = 0;
        QStringView testo;
        std::vector<Interruzione> tipi;
    };

    // Positions (RichTextBoxTesto.cpp)
    [[nodiscard]] int DaDocumento(int posizioneDocumento) const;
    [[nodiscard]] int InDocumento(int posizione) const;
    [[nodiscard]] int Limita(int posizione) const;
    [[nodiscard]] int InizioBlocco(const QTextBlock &blocco) const;
    void DocumentoCambiato(int da, int tolti, int aggiunti);
    void Registra(int da, int fine, int primaInterruzione, int interruzioniTolte, QStringView nuovo,
                  const std::vector<Interruzione> &tipi);
    void DopoCambiamento();
    void Normalizza();
    bool UnisciCrLf(int blocco);
    void CambiaTaglio(int posizioneDocumento, bool aggiungi);
    void SelezioneForseCambiata();
    void AnnunciaCambiamento();
    void ScavalcaTaglio(int codice, bool estende);
    void MuoviCursore(int ancora, int posizione);

    // Looks (RichTextBoxAspetti.cpp)
    template <typename Cambia>
    void CambiaAspetti(int da, int quanti, Cambia cambia);
    [[nodiscard]] Aspetto AspettoSelezione() const;
    [[nodiscard]] quint8 AspettoBattitura(int posizione) const;
    template <typename Cambia>
    void CambiaSelezione(Cambia cambia);
    void AspettiCambiati(int da, int quanti);
    /// Repaints the line that these units stand in; false when they stand in several.
    bool RidisegnaRiga(int da, int quanti);
    [[nodiscard]] int RigheInVista() const;
    void AggiornaBlocchiVisibili();
    [[nodiscard]] int ImprontaAspetti(const QTextBlock &blocco) const;
    [[nodiscard]] QList<QTextLayout::FormatRange> Formati(const QTextBlock &blocco) const;

    // RTF (RichTextBoxRtf.cpp)
    void SegnaRtf(int da, int coda) const;
    void RiscriviRtf(int da, int fine, size_t primaRiga, size_t oltreRiga) const;
    [[nodiscard]] int InizioRigaDi(int posizione) const;
    [[nodiscard]] int FineRigaDi(int posizione) const;
    void MettiContenuto(int da, int fine, const Rtf::Contenuto &contenuto);

    GapBuffer<char16_t> m_testo;
    GapBuffer<quint8> m_aspetti;
    Interruzioni m_interruzioni;
    TabellaAspetti m_tabella;
    std::vector<QTextCharFormat> m_formati; ///< what Qt draws each look with
    Disposizione *m_disposizione = nullptr;
    int m_blocchi = 1;
    int m_revisione = 0;
    int m_revisioneAnnunciata = 0; ///< the revision that Change was emitted for
    Attesa *m_attesa = nullptr;
    bool m_interno = false; ///< the document is being changed without a change of the text
    bool m_ridisegnoChiesto = false;
    int m_righeChieste = 0;                             ///< since the last painting
    std::optional<std::pair<int, Aspetto>> m_battitura; ///< typing look and the caret position that it holds for
    std::function<bool(int)> m_ricomincia;
    int m_ultimoBlocco = -1;               ///< block of the last change, to be put in order afterwards
    QHash<quint64, EventoTasto> m_premuti; ///< keys that are down, as they were pressed
    std::pair<int, int> m_selezione{0, 0};
    Hwnd m_hwnd = 0;

    mutable QString m_testoIntero;
    mutable int m_revisioneTesto = -1;

    mutable ContenutoRtf m_rtf;
    mutable int m_rtfDa = -1;  ///< units at the start of the text whose RTF still holds; -1: all of it
    mutable int m_rtfCoda = 0; ///< units at its end, likewise
};
