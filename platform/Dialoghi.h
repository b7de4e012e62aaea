#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace ModuloPrincipale
{

/// Asks whether the file of this path, which does not exist, is to be created.
using DomandaCreazione = std::function<bool(QWidget *finestra, const QString &percorso)>;

/// The dialog to open files. \a risultato holds the full paths chosen, or one empty text after Cancel. \a filtro has
/// the form of FiltriQt; an empty \a cartella is the current folder; an empty \a titolo is "Select File/s". A name
/// without an extension that does not exist gets "bas". A file that does not exist is returned after \a domanda said
/// yes (without it, a message box of the dialog's own asks): callers test with FileEsiste. With \a multipla only
/// existing files can be chosen. The dialog's object name is "ApriFileDialogo".
void ApriFileDialogo(QWidget *finestra, QStringList &risultato, bool multipla, const QString &filtro,
                     const QString &cartella, const QString &nome, const QString &titolo,
                     const DomandaCreazione &domanda = {});

/// The dialog to save a file. \a risultato is the full path, empty after Cancel. A name without an extension gets
/// \a estensione (empty: none). Asks before a file that exists is returned. The object name is "SalvaFileDialogo".
void SalvaFileDialogo(QWidget *finestra, QString &risultato, const QString &filtro, const QString &cartella,
                      const QString &nome, const QString &titolo, const QString &estensione);

/// Opens a file with the program that the desktop has for it; no result is told.
void ApriConShell(const QString &percorso);

/// Puts the window of \a finestra above all other windows of the desktop, without moving, resizing or hiding it.
void InPrimoPiano(QWidget *finestra);
/// Puts it back among them.
void NonInPrimoPiano(QWidget *finestra);

} // namespace ModuloPrincipale
