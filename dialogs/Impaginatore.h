#pragma once

#include <QFont>
#include <QSizeF>
#include <QTextOption>

#include <functional>
#include <vector>

#include "dialogs/TestoStampa.h"

class QPaintDevice;
class QPainter;
class QTextLayout;
class QTextLine;

/// Sets a text into pages and draws them. Lines wrap at the right edge; a row never stands on two pages. Memory: one
/// number a page; a line of any length is set in parts.
class Impaginatore
{
public:
    /// \a area: what a page holds, in units of \a dispositivo; both the text and the device outlive the object.
    Impaginatore(const TestoStampa &testo, QPaintDevice *dispositivo, QSizeF area, bool grigi);

    /// Finds where the pages begin; until then there are none. \a passo hears how many units are done and stops the
    /// work by false. False when it was stopped. Linear.
    [[nodiscard]] bool Impagina(const std::function<bool(qsizetype)> &passo);
    /// At least one, also for an empty text.
    [[nodiscard]] int Pagine() const { return int(m_inizi.size()); }
    /// Draws a page, from 0, with its top left corner at the painter's origin.
    void Disegna(QPainter &pittore, int pagina) const;

private:
    [[nodiscard]] qsizetype Riempi(qsizetype da, QPainter *pittore) const;
    [[nodiscard]] bool Semplice(qsizetype da, qsizetype fine) const;
    [[nodiscard]] qsizetype Componi(qsizetype da, qsizetype fine, qreal &y, QPainter *pittore) const;
    void Prepara(QTextLayout &disposizione, qsizetype da, qsizetype fine) const;
    void DisegnaOnde(QPainter &pittore, const QTextLine &riga, qsizetype da, qreal y) const;
    [[nodiscard]] size_t Tratto(qsizetype posizione) const;
    [[nodiscard]] QColor Colore(const QColor &colore) const;

    const TestoStampa &m_testo;
    QPaintDevice *m_dispositivo;
    QSizeF m_area;
    bool m_grigi;
    QFont m_carattere;
    QTextOption m_opzioni;
    qreal m_altezza = 0;     ///< of a row of plain characters, whatever their look
    qsizetype m_colonne = 0; ///< plain characters that surely fit into a row; 0: their widths differ
    std::vector<qsizetype> m_inizi;
};
