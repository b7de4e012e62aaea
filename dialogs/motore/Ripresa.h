#pragma once

#include <QPointF>
#include <QString>

class QWebEnginePage;

/// Keeps the place at which a page is read while it is loaded again, whatever the engine makes of it: it forgets the
/// place when the address had a fragment or when another process draws the page, and misses it where the text has no
/// elements to hold on to. Until the page is loaded the text that was seen stays where it is, then the place counts.
class Ripresa
{
public:
    /// The page stands at \a posto and is about to be loaded again or replaced: that is the place to go to.
    void Annota(const QPointF &posto);
    /// The next page is another one: it begins at its top.
    void Dimentica();
    /// What \a pagina loads next goes to the place as soon as there is enough of it.
    void Prepara(QWebEnginePage &pagina);
    /// \a pagina is loaded.
    void Concludi(QWebEnginePage &pagina);
    /// Remembers what \a pagina shows where it stands, to hold on to while pictures above it are on their way.
    void Ancora(QWebEnginePage &pagina);
    /// The user scrolls: from now on the place is where the page stands.
    void LasciaStare() { m_assestata = true; }

private:
    QPointF m_posto;
    QString m_ancora; ///< of m_postoAncora; empty: none
    QPointF m_postoAncora;
    bool m_nota = false;      ///< there is a place to go to
    bool m_assestata = false; ///< the page stands where it should
    quint64 m_volta = 0;      ///< of the loads
};
