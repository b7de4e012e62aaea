#pragma once

#include "app/FotoFile.h"

#include <optional>

/// The file of the page, as the program knows it: what was read from it or written to it last, and what the user was
/// told about it since.
class FileAperto
{
public:
    /// \a foto: what was read from \a percorso; \a intera: it was read to its end.
    void Letta(const QString &percorso, const FotoFile &foto, bool intera);
    void Scritta(const FotoFile &foto);

    [[nodiscard]] const QString &Percorso() const { return m_percorso; }

    /// Looks at the disk. What the user has to be told and was not told yet. Costs a look at the file's data; its
    /// content is read only when they differ, or are too young to be sure of.
    [[nodiscard]] Mutamento Novita();
    /// Looks at the disk. What stands between the page and a save, other than what the user agreed to replace.
    [[nodiscard]] Mutamento Ostacolo();
    /// What Novita or Ostacolo saw was told; with \a consenso the user wants the own text in its place.
    void Detto(bool consenso);
    /// As far as was seen, the file does not hold what was read or written last: that stands in the editor alone.
    [[nodiscard]] bool Altra() const;
    /// What they saw.
    [[nodiscard]] const FotoFile &Vista() const { return m_vista; }

private:
    [[nodiscard]] Mutamento Guarda();

    QString m_percorso;
    FotoFile m_foto;                 ///< as read or written last
    bool m_intera = true;            ///< m_foto was read to its end
    FotoFile m_vista;                ///< as seen last
    std::optional<FotoFile> m_detta; ///< what the user was told about
    bool m_consenso = false;         ///< and agreed to replace
};
