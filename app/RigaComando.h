#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the command line asks for. Knows no texts, so that it can be read before the language is chosen.
struct RigaComando {
    QStringList pagine;           ///< paths of the page to open, or of the files to check; "-" is the standard input
    std::optional<quint8> lingua; ///< language for this run, in place of the settings' one
    bool aiuto = false;
    bool versione = false;
    bool verifica = false;
    bool json = false;
    qint16 errore = 0;     ///< message that says why the line makes no sense; 0: it does
    QString oggettoErrore; ///< what that message speaks of

    /// Whether the line is answered without a window.
    [[nodiscard]] bool SenzaFinestre() const { return errore != 0 || aiuto || versione || verifica; }

    /// \a argomenti without the program's name. "--" ends the options; "-" alone is a file. A "file:" address stands
    /// for its path; options of Qt's own are passed over, with their values.
    [[nodiscard]] static RigaComando Leggi(const QStringList &argomenti);

    /// The arguments of the process without the program's name, as paths of NomiFile.
    [[nodiscard]] static QStringList Argomenti(int argc, char **argv);

    /// The help text in the language loaded; \a programma is the name to call it by.
    [[nodiscard]] static QString Aiuto(const QString &programma);
};
