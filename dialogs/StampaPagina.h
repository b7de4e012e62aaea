#pragma once

#include <QString>

class RichTextBox;
class Spooler;

namespace ModuloStampa
{

struct SceltaStampa;

/// Prints the page in \a pad on the device of \a scelta, with a progress window when it lasts. A failure is told in a
/// message box: a PDF file that was there before is then as it was, and no job is with the printer; nor is one after
/// the user gave the print up. \a nomeFile: path or name of the page.
void StampaScelta(RichTextBox &pad, const QString &nomeFile, const SceltaStampa &scelta, Spooler &spooler);

} // namespace ModuloStampa
