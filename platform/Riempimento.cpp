#include "platform/Riempimento.h"

#include "platform/Interruzioni.h"

#include <vector>

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace
{

// The document keeps its blocks in a balanced tree. Adding them one after the other at the end makes every step go down
// its longest path; breaking the whole in two, then each half, keeps the paths half as long.
class Spezzatore
{
public:
    Spezzatore(QTextCursor &cursore, const std::vector<int> &punti)
        : m_cursore(cursore), m_punti(punti), m_blocco(cursore.blockFormat()), m_carattere(cursore.charFormat())
    {
    }

    /// Breaks at the points \a da .. \a fine - 1; \a prima breaks stand before them already.
    void Spezza(size_t da, size_t fine, int prima)
    {
        while (da < fine) {
            const size_t mezzo = da + (fine - da) / 2;
            m_cursore.setPosition(m_punti[mezzo] + prima);
            m_cursore.insertBlock(m_blocco, m_carattere);
            Spezza(da, mezzo, prima);
            prima += int(mezzo - da) + 1;
            da = mezzo + 1;
        }
    }

private:
    QTextCursor &m_cursore;
    const std::vector<int> &m_punti;
    QTextBlockFormat m_blocco;
    QTextCharFormat m_carattere;
};

} // namespace

void Riempi(QTextDocument &documento, QStringView testo)
{
    QString senzaInterruzioni;
    senzaInterruzioni.reserve(testo.size());
    std::vector<int> punti;
    qsizetype inizio = 0;
    for (qsizetype i = 0; i < testo.size(); ++i) {
        // All characters that break a block are below U+000E or above U+2028.
        if (testo[i].unicode() > u'\r' && testo[i].unicode() < 0x2029)
            continue;
        const int tipo = InterruzioneIn(testo, i);
        if (tipo < 0)
            continue;
        senzaInterruzioni += testo.sliced(inizio, i - inizio);
        punti.push_back(int(senzaInterruzioni.size()));
        i += tipo == int(Interruzione::CrLf) ? 1 : 0;
        inizio = i + 1;
    }
    senzaInterruzioni += testo.sliced(inizio);

    QTextCursor cursore(&documento);
    cursore.beginEditBlock();
    cursore.insertText(senzaInterruzioni);
    Spezzatore(cursore, punti).Spezza(0, punti.size(), 0);
    cursore.endEditBlock();
}
