#include "platform/GapBuffer.h"

#include <QRandomGenerator>
#include <QTest>

class TstGapBuffer : public QObject
{
    Q_OBJECT

private slots:
    // Random edits against a plain string: whatever the gap does, the values read back are those of the string.
    void followsAPlainString()
    {
        QRandomGenerator caso(17);
        GapBuffer<char16_t> buffer;
        QString modello;
        for (int giro = 0; giro < 3000; ++giro) {
            const qsizetype dove = caso.bounded(int(modello.size()) + 1);
            const qsizetype tolti = caso.bounded(int(std::min<qsizetype>(modello.size() - dove, 40)) + 1);
            const int aggiunti = giro % 500 == 0 ? 9000 : caso.bounded(30);
            QString nuovo;
            for (int i = 0; i < aggiunti; ++i)
                nuovo += QChar(u'a' + caso.bounded(26));
            std::copy_n(reinterpret_cast<const char16_t *>(nuovo.utf16()), aggiunti,
                        buffer.replace(dove, tolti, aggiunti));
            modello.replace(dove, tolti, nuovo);
            QCOMPARE(buffer.size(), modello.size());
            if (!modello.isEmpty() && giro % 7 == 0) {
                const qsizetype da = caso.bounded(int(modello.size()));
                const qsizetype quanti = std::min<qsizetype>(modello.size() - da, caso.bounded(200));
                buffer.fill(da, quanti, u'#');
                modello.replace(da, quanti, QString(quanti, u'#'));
            }
            QString letto(buffer.size(), Qt::Uninitialized);
            buffer.copy(0, buffer.size(), reinterpret_cast<char16_t *>(letto.data()));
            QCOMPARE(letto, modello);
        }
    }
};

QTEST_GUILESS_MAIN(TstGapBuffer)
#include "tst_gapbuffer.moc"
