#pragma once

#include "html/IndiceSegni.h"

/// Where the page holds what is no HTML: scripts, styles, the text of a text area, and the pieces of a server's
/// language between "<?" and "?>" or "<%" and "%>".
class IndiceGrezzi : public IndiceSegni
{
public:
    /// The index of \a editor, built the first time that it is asked for; it lives as long as the editor.
    [[nodiscard]] static IndiceGrezzi &Di(RichTextBox *editor);

    /// Whether \a posizione lies in such a piece; the tags around it are no part of it. Looks at a bounded number of
    /// marks before it.
    [[nodiscard]] bool Contiene(int posizione) const;

private:
    explicit IndiceGrezzi(RichTextBox *editor);
};
