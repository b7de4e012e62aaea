#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/// How a page stands in its file; travels with the page's text. The default is that of a page that has no file yet.
struct FormatoPagina {
    QString codifica;   ///< name as Codifiche::NomeCodifica gives it; empty: taken from the text when it is written
    QString dichiarata; ///< the encoding that the text itself declared when it was read or written last; empty: none
    /// What stands in the file before the text: byte order mark or the like. Null: nothing so far, added when the
    /// encoding needs it; empty but not null: the file does without, against its encoding's rule.
    QByteArray firma;

    bool altriFineRiga = false; ///< the file's first line end was no CR LF; the page is written with CR LF

    /// The page holds what is no text: its line ends are those of the file, and nothing is added at its end.
    bool esatta = false;
    QByteArray coda; ///< what stands in the file behind the text: half a unit of UTF-16

    /// Several byte sequences may mean the same text. For each text of a line that was not written the usual way, the
    /// bytes of all lines with that text, in their order; a null one stands for the usual way.
    QHash<QString, QList<QByteArray>> righeInsolite;
};
