#pragma once

#include <QObject>

#include <vector>

class RichTextBox;

/// Where the page's comment marks ("<!--" and "-->") stand. Reads the page once, then follows the changes of the text:
/// a change costs what it adds, and what lies between it and the change before.
class IndiceCommenti : public QObject
{
public:
    /// The index of \a editor, built the first time that it is asked for; it lives as long as the editor.
    [[nodiscard]] static IndiceCommenti &Di(RichTextBox *editor);

    /// Whether the last mark that ends at or before \a posizione opens a comment. Logarithmic.
    [[nodiscard]] bool ApertoPrimaDi(int posizione) const;

    /// Units of the page read so far, for whoever wants to know what a change costs.
    [[nodiscard]] qint64 UnitaLette() const { return m_unitaLette; }

private:
    explicit IndiceCommenti(RichTextBox *editor);

    void Aggiorna(int da, int tolti, int aggiunti);
    void SpostaVarco(int posizione);
    /// Takes in the marks that start in \a da up to, not including, \a a.
    void Leggi(int da, int a);
    [[nodiscard]] int UltimoDa(int posizione) const;

    RichTextBox *m_editor;
    // The starts of the marks on either side of the last change, so that a change moves none of them: those before it
    // counted from the start of the text, ascending; those after it counted from the end, the nearest one last.
    std::vector<int> m_prima;
    std::vector<int> m_dopo;
    int m_lunghezza = 0; ///< of the text that m_dopo counts from
    qint64 m_unitaLette = 0;
};
