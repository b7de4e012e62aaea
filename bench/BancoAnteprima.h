#pragma once

#include <QStringList>

class Schermo;

/// Measures the preview of a program that shows the page beside its text whenever Space is released, and prints a
/// table. False when a page could not be made or the program did not show it.
bool BancoAnteprima(const Schermo &schermo, const QStringList &comando);
