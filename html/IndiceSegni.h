#pragma once

#include <QObject>
#include <QStringView>

#include <functional>
#include <vector>

class RichTextBox;

/// Where the marks of one kind stand in the page. Reads the page once, then follows the changes of the text: a change
/// costs what it adds, and what lies between it and the change before.
class IndiceSegni : public QObject
{
public:
    /// Units of the page read so far, for whoever wants to know what a change costs.
    [[nodiscard]] qint64 UnitaLette() const { return m_unitaLette; }

protected:
    /// Calls \a segno, in ascending order, with the place of every mark that starts in the first \a a units of \a
    /// testo.
    using Cerca = void (*)(QStringView testo, qsizetype a, const std::function<void(qsizetype)> &segno);

    /// Marks are up to \a lunghezza units long.
    IndiceSegni(RichTextBox *editor, int lunghezza, Cerca cerca);

    /// The last mark that starts at or before \a posizione; -1: none. Logarithmic.
    [[nodiscard]] int UltimoDa(int posizione) const;
    [[nodiscard]] const RichTextBox &Editor() const { return *m_editor; }

private:
    void Aggiorna(int da, int tolti, int aggiunti);
    void SpostaVarco(int posizione);
    /// Takes in the marks that start in \a da up to, not including, \a a.
    void Leggi(int da, int a);

    RichTextBox *m_editor;
    int m_lunghezzaSegno;
    Cerca m_cerca;
    // The starts of the marks on either side of the last change, so that a change moves none of them: those before it
    // counted from the start of the text, ascending; those after it counted from the end, the nearest one last.
    std::vector<int> m_prima;
    std::vector<int> m_dopo;
    int m_lunghezza = 0; ///< of the text that m_dopo counts from
    qint64 m_unitaLette = 0;
};
