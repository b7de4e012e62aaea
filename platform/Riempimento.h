#pragma once

#include <QStringView>

class QTextDocument;

/// Puts \a testo into \a documento, which must be empty, one block per line. Breaks are those of InterruzioneIn.
/// O(n log n) in the number of lines, and quicker than the document's own way from a few hundred lines on.
void Riempi(QTextDocument &documento, QStringView testo);
