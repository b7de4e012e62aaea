#pragma once

#include <QString>

/// What the whole program shares: the one page's files and texts, and the flags by which windows wait for each other.
/// Everything here belongs to the user-interface thread.
namespace ModuloDichiarazioni
{

struct StatoProgramma {
    QString FileCorrente;     ///< full path of the file opened last; empty until one is opened
    QString FileSalvato;      ///< full path that a page without a file was saved to last; empty for an opened page
    QString TestoSalvato;     ///< the page as last opened or created; empty until then, and then no page is modified
    QString FileAnteprima;    ///< full path of the temporary page that the preview shows
    QString TestoInserimento; ///< result left by the image and table dialogs; empty: cancelled
    bool ControlloInCorso = false; ///< a syntax check is under way: gutter and edit state keep still
    bool FinestraPronta = false;   ///< the document window has become active once since it loaded
    int LarghezzaDocumento = 0;    ///< outer width of the document window, in twips
    int AltezzaDocumento = 0;      ///< outer height of the document window, in twips
};

/// The one state. A test starts afresh with `Stato() = {}`.
[[nodiscard]] StatoProgramma &Stato();

/// Full path of the place where the page lies, from which its relative addresses count; empty: it lies nowhere yet.
[[nodiscard]] QString PostoPagina();

/// Folder of the running executable, where the data files lie; no separator at its end unless it is the root.
[[nodiscard]] QString CartellaProgramma();

/// Makes \a cartella the answer of CartellaProgramma(), for tests; empty: the executable's folder again.
void ImpostaCartellaProgramma(const QString &cartella);

/// \a nome in the folder \a cartella, with a single separator between them.
[[nodiscard]] QString PercorsoIn(const QString &cartella, QStringView nome);

} // namespace ModuloDichiarazioni
