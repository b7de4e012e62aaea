#include "editor/ModuloColori.h"

#include "BaseDiProva.h"

#include "html/Risultati.h"
#include "html/SchemaColori.h"
#include "platform/RichTextBox.h"
#include "Colonne.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// The control's text with a letter in place of each character that is coloured: t tag, a attribute, v value, c
/// comment; capital when underlined.
QString Colori(const RichTextBox &editor)
{
    QString colori = editor.Text();
    for (int i = 0; i < colori.size(); ++i) {
        const Aspetto aspetto = editor.AspettoIn(i);
        const QString lettere = aspetto.onda ? u"TAVC"_s : u"tavc"_s;
        const QList<ColoreBgr> schema{0xC00000, 0xFF00FF, 0xFF, 0x808080};
        if (const auto quale = schema.indexOf(aspetto.colore); quale >= 0)
            colori[i] = lettere[quale];
    }
    return colori;
}

/// Puts \a testo into the control, the caret where its bar is.
void Imposta(RichTextBox &editor, QString testo)
{
    const int caretto = int(testo.indexOf(u'|'));
    editor.ImpostaText(testo.remove(u'|'));
    editor.ImpostaSelStart(caretto);
}

} // namespace

class TstColori : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { BaseDiProva::Carica(); }

    void currentTag_data()
    {
        Colonne<QString, QString>({"testo", "atteso"});
        QTest::newRow("only the tag around the caret") << u"  <b><b |><b>"_s << u"  <b><tt><b>"_s;
        QTest::newRow("attributes and values")
            << u"  <p align=\"left\" |align=x>"_s << u"  <ttaaaaa=\"vvvv\" aaaaa=C>"_s;
        QTest::newRow("not closed: up to the caret") << u"  <p align=left| foo=1"_s << u"  <ttaaaaa=vvvv foo=1"_s;
        QTest::newRow("not closed, at the end of the page") << u"  <table |"_s << u"  <tttttt"_s;
        QTest::newRow("right after the bracket") << u"  <|b>"_s << u"  <tt"_s;
        QTest::newRow("before the bracket is another tag") << u"  <b |<p>"_s << u"  <tt<p>"_s;
        QTest::newRow("outside any tag: the last one") << u"  <b> x| <p>"_s << u"  <tt x <p>"_s;
        QTest::newRow("no bracket before the caret") << u" | <b>"_s << u"  <b>"_s;
        QTest::newRow("first two positions of the page") << u" <b |>"_s << u" <b >"_s;
    }
    void currentTag()
    {
        QFETCH(QString, testo);
        RichTextBox editor;
        Imposta(editor, testo);
        ModuloColori::ControllaTagCorrente(editor);
        QTEST(Colori(editor), "atteso");
        QCOMPARE(editor.SelStart(), int(testo.indexOf(u'|')));
    }

    void resultOfTheCurrentTagKnowsItsLine()
    {
        ModuloVerificaSintassi::AzzeraRisultati();
        RichTextBox editor;
        Imposta(editor, u"\r\n\r<b>\n<p\r\nfoo=\"x\"| >"_s);
        ModuloColori::ControllaTagCorrente(editor);
        const auto &risultati = ModuloVerificaSintassi::ArrayRisultati();
        QCOMPARE(risultati.size(), 3);
        QCOMPARE(risultati[1].Riga, 5);
        QCOMPARE(risultati[1].Posizione, 11);
        QCOMPARE(risultati[2].Posizione, 15);
    }

    void commentStart_data()
    {
        Colonne<QString, QString, int>({"testo", "atteso", "caretto"});
        QTest::newRow("the three characters turn grey") << u"<!-|"_s << u"ccc"_s << 3;
        QTest::newRow("before what stands there") << u"x<!-|y"_s << u"xccc"_s + u"y"_s << 4;
        QTest::newRow("a name with a hyphen") << u"<a-|b"_s << u"<a-b"_s << 3;
        QTest::newRow("position 2 or less") << u"!-|x"_s << u"!-x"_s << 2;
    }
    void commentStart()
    {
        QFETCH(QString, testo);
        RichTextBox editor;
        Imposta(editor, testo);
        ModuloColori::RegolaInizioCommento(editor);
        QTEST(Colori(editor), "atteso");
        QTEST(editor.SelStart(), "caretto");
        QCOMPARE(editor.SelLength(), 0);
    }

    void textAfterATagIsBlack_data()
    {
        Colonne<QString, Aspetto, bool>({"testo", "prima", "nero"});
        const Aspetto tag{.colore = SchemaColori::Tag};
        const Aspetto commento{.colore = SchemaColori::Commento};
        const Aspetto errore{.colore = SchemaColori::Commento, .onda = true};
        QTest::newRow("a tag") << u"<b>|</b>"_s << tag << true;
        QTest::newRow("behind a name") << u"<b|>"_s << tag << true;
        QTest::newRow("behind an unknown name") << u"<zz| x>"_s << errore << true;
        QTest::newRow("in a comment's first line") << u"<!-- a| -->"_s << commento << false;
        QTest::newRow("an unknown tag") << u"<zz>|"_s << errore << true;
        QTest::newRow("a comment") << u"<!-- a -->|"_s << commento << true;
        QTest::newRow("a sign in a comment") << u"<!-- a >| -->"_s << commento << false;
    }
    void textAfterATagIsBlack()
    {
        QFETCH(Aspetto, prima);
        QFETCH(QString, testo);
        RichTextBox editor;
        editor.ImpostaRicomincia([&editor](int dove) { return ModuloColori::Ricomincia(editor, dove); });
        Imposta(editor, testo);
        const int caretto = editor.SelStart();
        editor.ImpostaAspetto(0, caretto, prima);
        QTest::keyClick(&editor, Qt::Key_Return);
        QTest::keyClicks(&editor, u"x"_s);
        QTEST(editor.AspettoIn(caretto + 2) == Aspetto(), "nero");
    }

    void commentGoesOnInItsColour()
    {
        RichTextBox editor;
        Imposta(editor, u"x<!-|\r\n"_s);
        ModuloColori::RegolaColoreBattitura(editor); // as at every key inside a tag
        ModuloColori::RegolaInizioCommento(editor);
        QTest::keyClicks(&editor, u"- a"_s);
        QVERIFY2(Colori(editor).startsWith(u"xcccccc"_s), qPrintable(Colori(editor)));
    }
};

QTEST_MAIN(TstColori)
#include "tst_colori.moc"
