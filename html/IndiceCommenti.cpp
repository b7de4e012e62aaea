#include "html/IndiceCommenti.h"

#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int LunghezzaApertura = 4;
constexpr int LunghezzaChiusura = 3;

// Both marks hold two dashes in a row, which are rare.
void CercaSegni(QStringView testo, qsizetype a, const std::function<void(qsizetype)> &segno)
{
    for (qsizetype i = testo.indexOf(u"--"); i >= 0; i = testo.indexOf(u"--", i + 1)) {
        const qsizetype apertura = i - 2;
        if (apertura >= 0 && apertura < a && testo.sliced(apertura, 2) == u"<!")
            segno(apertura);
        if (i < a && testo.sliced(i).startsWith(u"-->"))
            segno(i);
    }
}

} // namespace

IndiceCommenti &IndiceCommenti::Di(RichTextBox *editor)
{
    for (QObject *figlio : editor->children()) {
        if (auto *indice = dynamic_cast<IndiceCommenti *>(figlio))
            return *indice;
    }
    return *new IndiceCommenti(editor);
}

IndiceCommenti::IndiceCommenti(RichTextBox *editor) : IndiceSegni(editor, LunghezzaApertura, CercaSegni) {}

bool IndiceCommenti::ApertoPrimaDi(int posizione) const
{
    int segno = UltimoDa(posizione - LunghezzaChiusura);
    if (segno >= 0 && Editor().Unita(segno) == u'<' && segno + LunghezzaApertura > posizione)
        segno = UltimoDa(segno - 1);
    return segno >= 0 && Editor().Unita(segno) == u'<';
}
