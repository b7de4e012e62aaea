#pragma once

#include <QString>
#include <QStringList>

/// The texts that file dialogs are given and give back, without a dialog.
namespace ModuloPrincipale
{

/// Turns "Description" NUL "*.a;*.b" NUL ... NUL into filters for Qt's dialogs, in their order; the descriptions are
/// kept as they stand. A filter for all files is added at the end when there is none. An empty \a filtro gives that one
/// alone.
[[nodiscard]] QStringList FiltriQt(const QString &filtro);

/// The full paths in \a buffer as an open dialog fills it: one full path, or a folder and the names in it, separated by
/// NUL; the last two characters and blanks around are no part of it. At least one element, empty when nothing is
/// chosen.
[[nodiscard]] QStringList ElencoDaBuffer(QString buffer);

/// The buffer that ElencoDaBuffer reads \a percorsi from: full paths of files in one folder.
[[nodiscard]] QString BufferDaElenco(const QStringList &percorsi);

} // namespace ModuloPrincipale
