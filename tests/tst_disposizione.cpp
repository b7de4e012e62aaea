#include "platform/RichTextBox.h"
#include "platform/Rtf.h"

#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

/// How wide the control thinks that its text is, and its RTF over more than one piece.
class tst_Disposizione : public QObject
{
    Q_OBJECT

    RichTextBox *m_pad = nullptr;

    [[nodiscard]] int Ampiezza() const { return m_pad->horizontalScrollBar()->maximum(); }

private slots:
    void init()
    {
        m_pad = new RichTextBox;
        m_pad->resize(300, 200);
        m_pad->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_pad));
    }
    void cleanup() { delete m_pad; }

    void widthFollowsTheWidestLine()
    {
        m_pad->ImpostaText(u"una\r\ndue\r\ntre"_s);
        QCOMPARE(Ampiezza(), 0);
        m_pad->Sostituisci(5, 3, QString(200, u'm'));
        m_pad->grab();
        const int intera = Ampiezza();
        QVERIFY(intera > 500);
        QVERIFY(m_pad->rect().contains(m_pad->PosizioneDaCarattere(205))); // the caret came into view

        m_pad->resize(500, 200);
        QCOMPARE(Ampiezza(), intera - 200);
        m_pad->resize(300, 200);
        QCOMPARE(Ampiezza(), intera);

        // A line that comes before it leaves it the widest one; so does a change of another line.
        m_pad->Sostituisci(0, 0, u"x\r\n"_s);
        m_pad->Sostituisci(0, 1, u"xyz"_s);
        QCOMPARE(Ampiezza(), intera);
        m_pad->Sostituisci(10, 200, u"due"_s);
        QCOMPARE(Ampiezza(), 0);
        m_pad->Sostituisci(0, 0, QString(100, u'm'));
        m_pad->ImpostaText(u"corta"_s);
        QCOMPARE(Ampiezza(), 0);
    }

    void everyPlaceOfALineFromRightToLeftIsReached()
    {
        const QString riga(300, QChar(0x05D0));
        m_pad->ImpostaText(u"<p>\r\n"_s + riga + u"\r\n</p>"_s);
        m_pad->grab();
        const int larghezza = m_pad->viewport()->width() + Ampiezza();
        for (int i = 5; i < 5 + int(riga.size()); ++i) {
            const int x = m_pad->PosizioneDaCarattere(i).x() + m_pad->horizontalScrollBar()->value();
            QVERIFY2(x >= 0 && x <= larghezza, qPrintable(u"%1: %2"_s.arg(i).arg(x)));
        }
    }

    // A letter that gets its colour must not cost the view; whatever changed must be painted.
    void aLookRepaintsItsLines()
    {
        struct Dipinti : QObject {
            QRegion area;
            bool eventFilter(QObject *, QEvent *evento) override
            {
                if (evento->type() == QEvent::Paint)
                    area += static_cast<QPaintEvent *>(evento)->region();
                return false;
            }
        } dipinti;
        m_pad->ImpostaText(u"testo\r\n"_s.repeated(60));
        m_pad->viewport()->installEventFilter(&dipinti);
        const auto area = [&](const std::function<void()> &cambia) {
            QCoreApplication::processEvents();
            dipinti.area = {};
            cambia();
            QCoreApplication::processEvents();
            return dipinti.area.boundingRect();
        };
        const Aspetto rosso{.colore = 0x0000FF};
        const QRect riga = area([&] { m_pad->ImpostaAspetto(15, 2, rosso); });
        const int cima = m_pad->PosizioneDaCarattere(14).y() - m_pad->viewport()->y();
        QVERIFY(riga.top() <= cima && riga.bottom() >= cima + m_pad->fontMetrics().height());
        const QRect vista = m_pad->viewport()->rect();
        QVERIFY(riga.height() < 2 * m_pad->fontMetrics().height() && riga.width() == vista.width());
        QCOMPARE(area([&] { m_pad->ImpostaAspetto(7 * 50, 2, rosso); }), QRect()); // not in view
        QCOMPARE(area([&] { m_pad->ImpostaAspetto(15, 20, rosso); }), vista);
        QCOMPARE(area([&] {
                     for (int i = 0; i < 30; ++i)
                         m_pad->ImpostaAspetto(7 * i, 1, rosso);
                 }),
                 vista);
    }

    // Line ends of every kind come to stand at the borders between what is written at once.
    void rtfOfALongText()
    {
        QString testo;
        QString rtf = Rtf::Testata();
        TabellaAspetti tabella;
        const Aspetto blu{.colore = 0xFF0000, .grassetto = true};
        std::vector<std::pair<int, int>> colorati;
        for (int i = 0; testo.size() < 100'000; ++i) {
            QString riga = QString(i % 41, u'a') + u"\\{}\té漢\u00A0"_s.first(i % 8);
            const QStringView fine = std::array{u"\r\n", u"\n", u"\r"}[size_t(i % 3)];
            riga = u'b' + riga + fine.toString();
            std::vector<quint8> aspetti(size_t(riga.size()), 0);
            if (i % 5 == 0) {
                std::fill_n(aspetti.begin(), 1, tabella.Indice(blu));
                colorati.emplace_back(int(testo.size()), 1);
            }
            Rtf::ScriviRiga(rtf, riga, aspetti.data(), tabella);
            testo += riga;
        }
        m_pad->ImpostaText(testo);
        for (const auto &[da, quanti] : colorati)
            m_pad->ImpostaAspetto(da, quanti, blu);
        QCOMPARE(m_pad->TextRTF(), rtf + Rtf::Coda());

        QVERIFY(m_pad->ImpostaTextRTF(Rtf::Testata() + u"solo\\par\r\n"_s + Rtf::Coda()));
        QCOMPARE(m_pad->Text(), u"solo\r\n"_s);
        QVERIFY(m_pad->ImpostaTextRTF(rtf + Rtf::Coda()));
        QCOMPARE(m_pad->Text(), testo);
    }
};

QTEST_MAIN(tst_Disposizione)
#include "tst_disposizione.moc"
