#pragma once

#include <QObject>
#include <QString>

#include <utility>
#include <vector>

class RichTextBox;

/// What the program put into the page unasked while somebody typed: end tags, quotes, a blank, indentation. Each piece
/// is known as such as long as nobody touches it, so that whoever types the same steps over it and whoever types
/// something else gets rid of it. The places follow the changes of the text; a change costs time in proportion to the
/// pieces, of which the last ones are kept.
class Portati : public QObject
{
public:
    enum class Genere { FineTag, Apre, Chiude, Spazio, Rientro };
    struct Pezzo {
        Genere genere = Genere::FineTag;
        int da = 0;
        QString testo;
        int origine = 0;      ///< end tags: where the start tag begins
        bool incerto = false; ///< indentation: the user typed that of the line before

        [[nodiscard]] int Fine() const { return da + int(testo.size()); }
    };

    /// The pieces of \a editor; they live as long as it does.
    [[nodiscard]] static Portati &Di(RichTextBox *editor);

    /// Puts \a testo into the page at the caret, which stays before it, and keeps it as a piece.
    void Metti(Genere genere, const QString &testo, int origine = 0);
    /// \a pezzo stands in the page already.
    void Ricorda(const Pezzo &pezzo);

    /// The piece of that kind that begins at \a da, or ends there; null: none. Valid until the next call that is not
    /// const.
    [[nodiscard]] const Pezzo *CheComincia(Genere genere, int da) const;
    [[nodiscard]] const Pezzo *CheFinisce(Genere genere, int fine) const;
    /// The end tag called \a nome, in any case, that was brought last; null: none.
    [[nodiscard]] const Pezzo *FineTagDi(QStringView nome) const;

    /// The piece that begins at \a da is the user's own from now on.
    void Dimentica(Genere genere, int da);
    /// Takes such a piece out of the page; false when there is none.
    bool Togli(Genere genere, int da);

    /// The user types in place of the brought indentation \a rientro. Gives the last one of which that was told.
    QString PrendiRientro(const QString &rientro) { return std::exchange(m_rientroPreso, rientro); }

private:
    explicit Portati(RichTextBox *editor);
    void Segui(int da, int tolti, int aggiunti);

    RichTextBox *m_editor;
    std::vector<Pezzo> m_pezzi; ///< the last one came last
    QString m_rientroPreso;
};
