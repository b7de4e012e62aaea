#pragma once

#include "platform/FormatoPagina.h"

#include <vector>

/// What belongs to one page besides its text.
struct SchedaPagina {
    QString file = {};         ///< full path of the file opened last when it came into the editor; empty: none
    QString salvata = {};      ///< full path that it was saved to last, having no file of its own; else empty
    QString testoSalvato = {}; ///< its text as opened or begun; what counts as modified is compared with it
    QString testoSuDisco = {}; ///< its text as opened, begun or saved last
    FormatoPagina formato = {};
    bool nuova = false; ///< it has no file of its own: begun, not opened
};

/// The pages that stood in the editor one after the other, since undo brings them back: one card each. The mark of a
/// card is its index. Only a page that came from the file opened last has a file; any other is as one just begun.
class SchedePagina
{
public:
    [[nodiscard]] int Segno() const { return m_segno; }
    [[nodiscard]] const SchedaPagina &Corrente() const { return m_schede[size_t(m_segno)]; }
    [[nodiscard]] FormatoPagina &Formato() { return m_schede[size_t(m_segno)].formato; }

    /// Full path of the file opened last, as far as the page may claim it; empty: none.
    [[nodiscard]] QString File() const;
    /// Save has to ask for a name.
    [[nodiscard]] bool SenzaFile() const { return File().isEmpty() || Corrente().nuova; }
    /// Full path of a place other than File() that the page lies at; empty: none.
    [[nodiscard]] QString AltroPosto() const;

    /// The page of \a file stands in the editor, \a testo in the file. Other texts of the same file that undo brings
    /// back are compared with it from now on.
    void Apri(const QString &file, const QString &testo, const FormatoPagina &formato);
    /// A page without a file stands in the editor.
    void Inizia(const QString &testo, const FormatoPagina &formato = {});
    /// \a testo, the text of the page, now stands in \a percorso.
    void Salvata(const QString &testo, const QString &percorso);
    /// Undo or redo brought back the text of another page. False when it is the current one.
    bool Torna(int segno);

private:
    void Aggiungi(SchedaPagina scheda);

    std::vector<SchedaPagina> m_schede{1};
    int m_segno = 0;
    QString m_ultimo; ///< the file opened last
};
