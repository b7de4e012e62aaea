#pragma once

#include <QString>

/// The context rules on any text that can be read unit by unit and searched for one character: the editing control, or
/// what stands in for it. `Testo` offers Lunghezza(), Unita(), Parte(), CercaIndietro() and CercaAvanti() with the
/// meaning that they have there. Every rule reads from the caret outwards and stops as soon as it knows.
namespace LetturaTag
{

struct TagAttributo {
    QString tag;       ///< name of the tag around the caret, as written; empty when it has none
    QString attributo; ///< what stands between the last blank of the tag and the caret; never holds "="
    bool operator==(const TagAttributo &) const = default;
};

template <typename Testo>
[[nodiscard]] bool DentroTag(const Testo &testo, int caretto)
{
    for (int i = caretto - 1; i >= 0; --i) {
        const QChar unita = testo.Unita(i);
        if (unita == u'<' || unita == u'>')
            return unita == u'<';
    }
    return false;
}

template <typename Testo>
[[nodiscard]] TagAttributo LeggiTagAttributo(const Testo &testo, int caretto)
{
    const int apertura = testo.CercaIndietro(u'<', caretto);
    if (apertura < 0)
        return {};
    const int spazio = testo.CercaAvanti(u' ', apertura);
    if (spazio < 0)
        return {};
    TagAttributo letto;
    // A blank that follows the caret ends no name: the name is still being written, up to the caret.
    letto.tag = testo.Parte(apertura + 1, std::min(spazio, caretto) - apertura - 1);
    if (letto.tag.isEmpty())
        return {};
    const int ultimoSpazio = testo.CercaIndietro(u' ', caretto);
    if (ultimoSpazio > apertura)
        letto.attributo = testo.Parte(ultimoSpazio + 1, caretto - ultimoSpazio - 1);
    if (letto.attributo.contains(u'='))
        letto.attributo.clear();
    return letto;
}

template <typename Testo>
[[nodiscard]] QString ParolaCorrente(const Testo &testo, int caretto)
{
    const int spazio = testo.CercaIndietro(u' ', caretto);
    return spazio < 0 ? QString() : testo.Parte(spazio + 1, caretto - spazio - 1).remove(u'=');
}

} // namespace LetturaTag
