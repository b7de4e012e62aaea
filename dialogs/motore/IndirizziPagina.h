#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

/// The addresses that a page gets to see instead of those of its files. They tell it nothing that it does not know: a
/// number of equal words stands for its own folder, one less for the folder above, and so on; below them names are what
/// they are, so that relative references work, with "../" too. Words and origins are others at each start.
class IndirizziPagina
{
public:
    /// \a radice, a folder without "/" at its end: file addresses below it are read like those of the scheme.
    explicit IndirizziPagina(QString radice);

    static const QByteArray &Schema();

    /// From now on the page shown is the one at the absolute path \a posto.
    void Imposta(const QString &posto);

    /// The address of the page itself; that by which it can name itself is another one.
    [[nodiscard]] QUrl Pagina() const;
    [[nodiscard]] QUrl PaginaConNome() const;

    /// The file address that \a indirizzo stands for. What stands for none stays as it is.
    [[nodiscard]] QUrl AFile(const QUrl &indirizzo) const;
    /// The address in the scheme at which the file at \a indirizzo has its own origin; empty when it is that already,
    /// or no local file.
    [[nodiscard]] QUrl OrigineSua(const QUrl &indirizzo) const;
    /// The path below the root at which the file of \a indirizzo, an address of the scheme, lies for the engine. It
    /// begins with "/" and leads nowhere up.
    [[nodiscard]] static QString Nome(const QUrl &indirizzo);

private:
    [[nodiscard]] QString Percorso(const QString &nome) const;
    [[nodiscard]] QUrl Componi(const QString &percorso, const QString &nome) const;

    QString m_radice;
    QByteArray m_chiave;
    QString m_parola;
    QString m_posto;
    qsizetype m_livelli = 0; ///< words that stand for the page's folder
};
