#pragma once

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct RigaComando {
    QString pagina; ///< page to open; empty: none
    bool aiuto = false;
    bool versione = false;
    QString errore; ///< why the line makes no sense, in the interface's language; empty: it does

    /// \a argomenti without the program's name. "--" ends the options.
    [[nodiscard]] static RigaComando Leggi(const QStringList &argomenti);

    /// The help text; \a programma is the name to call it by.
    [[nodiscard]] static QString Aiuto(const QString &programma);
};
