#pragma once

#include <QString>
#include <QStringView>

/// The syntax check. The walk over a page is here; it needs no control and no application object.
namespace ModuloVerificaSintassi
{

/// One tag of a page: its place and its parts, as views into the page's text.
struct Tag {
    qsizetype inizio = 0; ///< 1-based position of "<", in UTF-16 units; 0: no further tag
    qsizetype fine = 0;   ///< 1-based position of ">", or the length of the text when the tag is not closed
    QStringView testo;    ///< what stands between the two
    QStringView nome;     ///< up to the first blank or carriage return, every "/" removed
    QString senzaBarre;   ///< holds the name when a "/" stood inside it
};

/// The first tag after the 1-based position \a dopo. Linear in the distance to its end; never fails.
[[nodiscard]] Tag ProssimoTag(QStringView pagina, qsizetype dopo);

/// Character codes 8, 9, 10, 13 and 32.
[[nodiscard]] constexpr bool Bianco(QChar c)
{
    return c == u' ' || c == u'\r' || c == u'\n' || c == u'\t' || c == u'\b';
}

/// 1-based position of the last white space before the "=" at the 1-based position \a uguale of a tag's text, or 1.
/// White space up to position \a noto has been looked for before, and \a prima was the answer.
[[nodiscard]] qsizetype InizioAttributo(QStringView testoTag, qsizetype uguale, qsizetype noto = 0,
                                        qsizetype prima = 1);

/// 1-based position just after the value that belongs to the "=" at the 1-based position \a uguale, its closing quote
/// or the white space that ends it included; 0 when its quotes are not closed.
[[nodiscard]] qsizetype FineValore(QStringView testoTag, qsizetype uguale);

/// Names that are not checked, nor are their values: SRC and HREF in any case, and what begins with xmlns or xml: in
/// lower case.
[[nodiscard]] bool AttributoEsente(QStringView nome);

enum TipoRisultato { TagSconosciuto = 1, AttributoErrato = 2, ValoreErrato = 3 };

/// One fault. The name is valid during the call only.
struct Riscontro {
    qsizetype posizione = 0; ///< caret position of the name or value
    qsizetype riga = 1;      ///< 1-based
    qsizetype colonna = 1;   ///< 1-based, in UTF-16 units from where the walk met the line first
    TipoRisultato tipo = TagSconosciuto;
    QStringView nome;
};

enum class Segno { Tag, Attributo, Valore, Commento, Errore };

/// Who wants to know what a walk finds.
class Ricevitore
{
public:
    virtual ~Ricevitore() = default;
    /// Before the tag that ends at the 1-based position \a fine is looked at; false stops the walk.
    [[nodiscard]] virtual bool Prosegui(qsizetype fine)
    {
        Q_UNUSED(fine);
        return true;
    }
    /// How \a quanti units from the caret position \a da are to look; may reach beyond the text.
    virtual void Segna(Segno segno, qsizetype da, qsizetype quanti)
    {
        Q_UNUSED(segno);
        Q_UNUSED(da);
        Q_UNUSED(quanti);
    }
    virtual void Trova(const Riscontro &riscontro) = 0;
};

/// Where a walk starts.
struct Partenza {
    qsizetype primaFine = 1; ///< tags are looked for after this 1-based position of the page
    qsizetype scarto = 0;    ///< units of the page before the text that is walked
    qsizetype riga = 1;      ///< 1-based line on which that text starts
};

/// Walks \a testo tag by tag and tells \a ricevitore what it finds, in the order of the text. False when the receiver
/// stopped it. Linear in the text, whatever it holds; allocates only for names with a "/" inside.
bool Scandisci(QStringView testo, const Partenza &partenza, Ricevitore &ricevitore);

} // namespace ModuloVerificaSintassi
