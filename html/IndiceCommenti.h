#pragma once

#include "html/IndiceSegni.h"

/// Where the page's comment marks ("<!--" and "-->") stand.
class IndiceCommenti : public IndiceSegni
{
public:
    /// The index of \a editor, built the first time that it is asked for; it lives as long as the editor.
    [[nodiscard]] static IndiceCommenti &Di(RichTextBox *editor);

    /// Whether the last mark that ends at or before \a posizione opens a comment. Logarithmic.
    [[nodiscard]] bool ApertoPrimaDi(int posizione) const;

private:
    explicit IndiceCommenti(RichTextBox *editor);
};
