#pragma once

#include <QDateTime>
#include <QString>

/// One recorded change of the editing control. With C the RTF on either side of it, the RTF before the change is the
/// first MatchingCharsFromLeft units of C, TextBlock_BeforeChange and the last MatchingCharsFromRight units of C; after
/// the change TextBlock_AfterChange stands between them.
class clsUndoElement
{
public:
    QString TextBlock_BeforeChange;
    QString TextBlock_AfterChange;
    qint32 MatchingCharsFromLeft = 0;
    qint32 MatchingCharsFromRight = 0; ///< counted on what follows the common beginning
    qint32 SelStart_BeforeChange = 0;
    qint32 SelLength_BeforeChange = 0;
    qint32 SelStart_AfterChange = 0;  ///< when the change was recorded
    qint32 SelLength_AfterChange = 0; ///< likewise
    qint32 FirstVisibleLine = 0;      ///< 0-based, when the change was recorded
    bool SoloAspetti = false;         ///< the text is the same before and after: only looks changed
    int Segno = 0;                    ///< the mark that the text had after the change
    QDateTime Time;                   ///< when the change was recorded
};
