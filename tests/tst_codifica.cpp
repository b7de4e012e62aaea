#include "platform/CodificaPagina.h"
#include "platform/Codifiche.h"
#include "platform/Convertitore.h"
#include "platform/DichiarazioneCodifica.h"
#include "Colonne.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// A page of lines that each end with CR LF, declared in \a etichetta.
QByteArray Pagina(const QByteArray &etichetta, const QByteArray &corpo)
{
    return "<meta charset=\"" + etichetta + "\">\r\n" + corpo + "\r\n";
}

const QList<QByteArray> &TutteLeCodifiche()
{
    static const QList<QByteArray> nomi =
        QByteArray(
            "utf-8 windows-1252 iso-8859-1 gb2312 gbk gb18030 big5 shift_jis euc-jp iso-2022-jp euc-kr iso-2022-kr "
            "iso-2022-cn hz-gb-2312 koi8-r koi8-u ibm866 macintosh x-mac-cyrillic tis-620 euc-tw iso-8859-2 iso-8859-3 "
            "iso-8859-4 iso-8859-5 iso-8859-6 iso-8859-7 iso-8859-8 iso-8859-9 iso-8859-10 iso-8859-11 iso-8859-13 "
            "iso-8859-14 iso-8859-15 iso-8859-16 windows-1250 windows-1251 windows-1253 windows-1254 windows-1255 "
            "windows-1256 windows-1257 windows-1258 ibm850 ibm437")
            .split(' ');
    return nomi;
}

/// A line of characters from many scripts that the encoding has; the ASCII ones are harmless in mark-up.
QString RigaCasuale(QRandomGenerator &caso, const Codifiche::Convertitore &convertitore)
{
    static const QString scritture =
        u"àéîõüßŁřşğİАБЖяїґΑΩςאבגשؠءبيกขฮ你好世界漢字日本語ひらカタㄱ가힣한글“”–€™ｱｲ｡㈱①"_s;
    QString riga;
    for (int i = 0; i < 30; ++i) {
        const QChar c =
            caso.bounded(3) == 0 ? QChar(u'a' + caso.bounded(26)) : scritture[caso.bounded(int(scritture.size()))];
        qsizetype mancanti = 0;
        const QByteArray byte = convertitore.Codifica(QStringView(&c, 1), mancanti);
        if (QString letto; mancanti == 0 && convertitore.Decodifica(byte, letto) && letto == c)
            riga += c;
    }
    return riga;
}

/// What is to be in the file after a page of \a byte was read and written: line ends, in the page's units, made
/// regular; in bytes that are no text nothing is changed.
QByteArray Attesi(const QByteArray &byte, const FormatoPagina &formato)
{
    if (formato.esatta)
        return byte;
    const bool piccolo = formato.codifica == Codifiche::Utf16LE;
    const qsizetype passo = piccolo || formato.codifica == Codifiche::Utf16BE ? 2 : 1;
    const auto unita = [&](char c) {
        return passo == 1 ? QByteArray(1, c) : piccolo ? QByteArray{c + QByteArray(1, 0)} : QByteArray(1, 0) + c;
    };
    const QByteArray cr = unita('\r'), lf = unita('\n');
    QByteArray attesi = byte.first(formato.firma.size());
    const QByteArray testo = byte.sliced(formato.firma.size());
    bool aperta = testo.isEmpty();
    for (qsizetype i = 0; i < testo.size(); i += passo) {
        const QByteArray u = testo.sliced(i, passo);
        aperta = u != cr && u != lf;
        attesi += aperta ? u : cr + lf;
        i += u == cr && testo.sliced(i + passo, std::min(passo, testo.size() - i - passo)) == lf ? passo : 0;
    }
    return aperta ? attesi + cr + lf : attesi;
}

} // namespace

class TstCodifica : public QObject
{
    Q_OBJECT

private slots:
    void label_data()
    {
        Colonne<QString, QString>({"etichetta", "nome"});

        QTest::newRow("blanks and case") << u" UTF8 "_s << u"UTF-8"_s;
        QTest::newRow("latin-1 is windows-1252") << u"ISO-8859-1"_s << u"windows-1252"_s;
        QTest::newRow("gb2312 is GBK") << u"gb2312"_s << u"GBK"_s;
        QTest::newRow("ks_c_5601-1987 is EUC-KR") << u"ks_c_5601-1987"_s << u"EUC-KR"_s;
        QTest::newRow("known to the library alone") << u"ibm850"_s << u"ibm-850_P100-1995"_s;
        QTest::newRow("no ASCII bytes: EBCDIC") << u"ibm037"_s << QString();
        QTest::newRow("no ASCII bytes: UTF-7") << u"utf-7"_s << QString();
        QTest::newRow("library options are no label") << u"ISO_2022,locale=ja"_s << QString();
        QTest::newRow("nonsense") << u"utf-8foo"_s << QString();
        QTest::newRow("empty") << u""_s << QString();
        QTest::newRow("no ASCII label") << u"ütf-8"_s << QString();
        QTest::newRow("long") << QString(100000, u'x') << QString();
    }

    void label()
    {
        QFETCH(QString, etichetta);
        QFETCH(QString, nome);
        QCOMPARE(Codifiche::NomeCodifica(etichetta), nome);
    }

    void declaration_data()
    {
        Colonne<QString, QString>({"pagina", "nome"});

        const QString koi = u"KOI8-R"_s;
        QTest::newRow("charset") << u"<html><head><META CharSet = 'koi8-r'>"_s << koi;
        QTest::newRow("charset before the slash") << u"<meta charset=koi8-r />"_s << koi;
        QTest::newRow("content") << u"<meta http-equiv=\"Content-Type\" content=\"text/html; charset=koi8-r\">"_s
                                 << koi;
        QTest::newRow("content, quoted label")
            << u"<meta http-equiv=content-type content='text/html; charset=\"koi8-r\"'>"_s << koi;
        QTest::newRow("content of another pragma") << u"<meta name=x content='charset=koi8-r'>"_s << QString();
        QTest::newRow("XML prolog") << u"<?xml version='1.0' encoding=\"koi8-r\"?><html>"_s << koi;
        QTest::newRow("META before XML prolog")
            << u"<?xml version='1.0' encoding='big5'?><meta charset=koi8-r>"_s << koi;
        QTest::newRow("prolog not at the start") << u" <?xml version='1.0' encoding='koi8-r'?>"_s << QString();
        QTest::newRow("in a comment") << u"<!-- <meta charset=big5> --><meta charset=koi8-r>"_s << koi;
        QTest::newRow("in another tag's value") << u"<a title='<meta charset=big5>'><meta charset=koi8-r>"_s << koi;
        QTest::newRow("unknown one is passed over") << u"<meta charset=nonsense><meta charset=koi8-r>"_s << koi;
        QTest::newRow("utf-16 is passed over") << u"<meta charset=utf-16><meta charset=koi8-r>"_s << koi;
        QTest::newRow("other name") << u"<metal charset=koi8-r>"_s << QString();
        QTest::newRow("4000 characters down") << QString(4000, u' ') + u"<body><meta charset=koi8-r>"_s << koi;
        QTest::newRow("far down in the body")
            << QString(5000, u' ') + u"</head><body><meta charset=koi8-r>"_s << QString();
        QTest::newRow("never closed") << u"<meta charset='koi8-r"_s << koi;
        QTest::newRow("only openings") << QString(100000, u'<') << QString();
        QTest::newRow("open quote for ever") << u"<a x=\""_s + QString(100000, u'x') << QString();
    }

    void declaration()
    {
        QFETCH(QString, pagina);
        QFETCH(QString, nome);
        QCOMPARE(Codifiche::CodificaDichiarata(pagina), nome);
    }

    void choice_data()
    {
        Colonne<QByteArray, QString, QString>({"byte", "codifica", "testo"});

        const QString cp1252 = u"windows-1252"_s;
        QTest::newRow("empty") << QByteArray() << u"UTF-8"_s << QString();
        QTest::newRow("UTF-8 mark") << QByteArray("\xEF\xBB\xBF\xC3\xA8") << u"UTF-8"_s << u"è\r"_s;
        QTest::newRow("mark only") << QByteArray("\xEF\xBB\xBF") << u"UTF-8"_s << QString();
        QTest::newRow("second mark is text") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx") << u"UTF-8"_s << u"\uFEFFx\r"_s;
        QTest::newRow("mark before declaration")
            << QByteArray("\xEF\xBB\xBF<meta charset=big5>") << u"UTF-8"_s << u"<meta charset=big5>\r"_s;
        QTest::newRow("UTF-16LE") << QByteArray("\xFF\xFE\xE8\x00\r\x00\n\x00", 8) << u"UTF-16LE"_s << u"è\r"_s;
        QTest::newRow("UTF-16BE") << QByteArray("\xFE\xFF\x00\xE8", 4) << u"UTF-16BE"_s << u"è\r"_s;
        QTest::newRow("UTF-16 line end units only")
            << QByteArray("\xFF\xFE\x0A\x0D\x0D\x0A", 6) << u"UTF-16LE"_s << u"\u0D0A\u0A0D\r"_s;
        QTest::newRow("lone surrogate") << QByteArray("\xFF\xFE\x00\xD8", 4) << u"UTF-16LE"_s
                                        << QString(QChar(0xD800)) + u'\r';
        QTest::newRow("odd length") << QByteArray("\xFF\xFE\xE8\0\n", 5) << u"UTF-16LE"_s << u"è"_s;
        QTest::newRow("broken UTF-8") << QByteArray("\xC3\xA8 \xC3") << cp1252 << u"Ã¨ Ã\r"_s;
        QTest::newRow("broken UTF-8 after a mark") << QByteArray("\xEF\xBB\xBF\xFF") << cp1252 << u"ï»¿ÿ\r"_s;
        QTest::newRow("open bytes of 1252")
            << QByteArray("\x81\x8D\x8F\x90\x9D") << cp1252 << u"\u0081\u008D\u008F\u0090\u009D\r"_s;
        QTest::newRow("NUL") << QByteArray("a\0b", 3) << u"UTF-8"_s << QString::fromUtf16(u"a\0b", 3);
        QTest::newRow("declared utf-16 without a mark")
            << QByteArray("<meta charset=utf-16>\xC3\xA8") << u"UTF-8"_s << u"<meta charset=utf-16>è\r"_s;
        QTest::newRow("declared gbk, four bytes") << QByteArray("<meta charset=gb2312>\x81\x30\x81\x30") << u"gb18030"_s
                                                  << u"<meta charset=gb2312>\u0080\r"_s;
        QTest::newRow("backslash of Shift_JIS")
            << QByteArray("<meta charset=sjis>\\~\x95\x5C") << u"Shift_JIS"_s << u"<meta charset=sjis>\\~表\r"_s;
    }

    void choice()
    {
        QFETCH(QByteArray, byte);
        QFETCH(QString, codifica);
        QFETCH(QString, testo);
        FormatoPagina formato;
        QCOMPARE(Codifiche::TestoDaByte(byte, formato), testo);
        QCOMPARE(formato.codifica, codifica);
        if (testo.isEmpty())
            return;
        const QByteArray scritti = Codifiche::ByteDaTesto(testo, formato);
        QVERIFY2(scritti.startsWith(byte), scritti.toHex(' '));
        FormatoPagina riletto;
        QCOMPARE(Codifiche::TestoDaByte(scritti, riletto), testo);
    }

    void untouchedPageKeepsItsBytes_data()
    {
        QTest::addColumn<QByteArray>("etichetta");
        for (const QByteArray &nome : TutteLeCodifiche())
            QTest::newRow(nome.constData()) << nome;
    }

    // Good text and random byte sequences, line by line in one page: whatever is read is written again, byte for byte,
    // and as long as all lines are text of the encoding the page is read in it.
    void untouchedPageKeepsItsBytes()
    {
        QFETCH(QByteArray, etichetta);
        QRandomGenerator caso(5);
        const Codifiche::Convertitore convertitore(Codifiche::NomeCodifica(QString::fromLatin1(etichetta)));
        qsizetype daCodifica = 0;
        for (int giro = 0; giro < 300; ++giro) {
            QByteArray corpo;
            for (int riga = 0; riga < 6; ++riga) {
                qsizetype mancanti = 0;
                corpo += convertitore.Codifica(RigaCasuale(caso, convertitore), mancanti);
                for (int i = caso.bounded(giro % 3 * 3 + 1); i > 0; --i) {
                    const char c = char(caso.bounded(256));
                    corpo += c == '\r' || c == '\n' ? ' ' : c;
                }
                corpo += "\r\n";
            }
            const QByteArray byte = Pagina(etichetta, corpo);
            FormatoPagina formato;
            const QString testo = Codifiche::TestoDaByte(byte, formato);
            daCodifica += formato.codifica != u"windows-1252" ? 1 : 0;
            qsizetype sostituiti = 0;
            QCOMPARE(Codifiche::ByteDaTesto(testo, formato, &sostituiti), byte);
            QCOMPARE(sostituiti, 0);
        }
        if (Codifiche::NomeCodifica(QString::fromLatin1(etichetta)) != u"windows-1252")
            QVERIFY(daCodifica >= 100);
    }

    void editedPageStaysReadable_data() { untouchedPageKeepsItsBytes_data(); }

    // A line that is typed into a page, between others, is read again as it was typed; characters that the encoding
    // lacks as references.
    void editedPageStaysReadable()
    {
        QFETCH(QByteArray, etichetta);
        QRandomGenerator caso(6);
        const Codifiche::Convertitore convertitore(Codifiche::NomeCodifica(QString::fromLatin1(etichetta)));
        FormatoPagina formato;
        QString testo = Codifiche::TestoDaByte(Pagina(etichetta, "x\r\ny"), formato);
        for (int giro = 0; giro < 50; ++giro)
            testo.insert(testo.indexOf(u"y\r"), RigaCasuale(caso, convertitore) + u"\r\n"_s);
        qsizetype sostituiti = 0;
        FormatoPagina riletto;
        QCOMPARE(Codifiche::TestoDaByte(Codifiche::ByteDaTesto(testo, formato, &sostituiti), riletto), testo);
        QCOMPARE(sostituiti, 0);
        QCOMPARE(riletto.codifica, formato.codifica);

        if (formato.codifica.startsWith(u"UTF") || formato.codifica == u"gb18030")
            return;
        testo.insert(testo.indexOf(u"y\r"), u"\U0001F600\u00AD\u2060\r\n"_s);
        const QString letto = Codifiche::TestoDaByte(Codifiche::ByteDaTesto(testo, formato, &sostituiti), riletto);
        QVERIFY2(letto.contains(u"&#128512;"), qUtf8Printable(letto));
        QVERIFY2(letto.contains(u"&#8288;"), qUtf8Printable(letto));
        QVERIFY(letto.contains(u"\u00AD") || letto.contains(u"&#173;"));
    }

    void anyBytesSurvive()
    {
        QRandomGenerator caso(7);
        const QList<QByteArray> pezzi{"\xEF\xBB\xBF",
                                      "\xFF\xFE",
                                      "\xFE\xFF",
                                      "<meta charset=",
                                      "gb2312>",
                                      "iso-2022-jp>",
                                      "\x1b$B",
                                      "\x1b(B",
                                      "\x1b$)C",
                                      "\x0e",
                                      "\x0f",
                                      "~{",
                                      "~}",
                                      "utf-8>",
                                      "\xE4\xBD\xA0",
                                      "hz-gb-2312>",
                                      "iso-2022-kr>",
                                      "\xD8\x00",
                                      "<!--",
                                      "\"",
                                      "shift_jis>",
                                      "big5>",
                                      "\r\n",
                                      "\r",
                                      "\n",
                                      QByteArray("\r\0\n\0", 4),
                                      QByteArray("\0\r\0\n", 4),
                                      QByteArray("\xFF\xFE\0\0", 4),
                                      QByteArray("\0\0\xFE\xFF", 4)};
        for (int giro = 0; giro < 20000; ++giro) {
            QByteArray byte;
            for (int i = caso.bounded(14); i >= 0; --i) {
                if (caso.bounded(2))
                    byte += pezzi[caso.bounded(int(pezzi.size()))];
                else
                    byte += char(caso.bounded(256));
            }
            FormatoPagina formato;
            const QString testo = Codifiche::TestoDaByte(byte, formato);
            const bool doppia = formato.codifica.startsWith(u"UTF-16");
            QCOMPARE(formato.esatta, doppia ? testo.contains(u'\0') || byte.size() % 2 : byte.contains('\0'));
            const QByteArray attesi = Attesi(byte, formato);
            const QByteArray scritti = Codifiche::ByteDaTesto(testo, formato);
            QVERIFY2(scritti == attesi, (byte + " -> " + scritti).toHex(' '));
        }
    }

    void lineEnds_data()
    {
        Colonne<QByteArray, QString, QByteArray>({"byte", "testo", "scritti"});

        QTest::newRow("two lines") << QByteArray("a\r\nb\r\n") << u"a\r\nb\r"_s << QByteArray("a\r\nb\r\n");
        QTest::newRow("no end") << QByteArray("a\r\nb") << u"a\r\nb\r"_s << QByteArray("a\r\nb\r\n");
        QTest::newRow("lone CR and LF") << QByteArray("a\rb\nc\n\rd") << u"a\r\nb\r\nc\r\n\r\nd\r"_s
                                        << QByteArray("a\r\nb\r\nc\r\n\r\nd\r\n");
        QTest::newRow("CR CR LF") << QByteArray("a\r\r\n") << u"a\r\n\r"_s << QByteArray("a\r\n\r\n");
    }

    void lineEnds()
    {
        QFETCH(QByteArray, byte);
        QFETCH(QString, testo);
        QFETCH(QByteArray, scritti);
        for (const QByteArray &etichetta : {QByteArrayLiteral("utf-8"), QByteArrayLiteral("shift_jis")}) {
            const QByteArray testa = "<meta charset=" + etichetta + ">\r\n";
            FormatoPagina formato;
            const QString letto = Codifiche::TestoDaByte(testa + byte, formato);
            QCOMPARE(letto, QString::fromLatin1(testa) + testo);
            QCOMPARE(Codifiche::ByteDaTesto(letto, formato), testa + scritti);
            // Ends within the text are the user's and stay.
            QCOMPARE(Codifiche::ByteDaTesto(QString::fromLatin1(testa) + u"x\ny\rz\r\n"_s, formato),
                     testa + "x\ny\rz\r\n\r\n");
        }
    }

    void oddSpellingStaysWithItsLine()
    {
        // NEC's and IBM's codes for the same character, and the usual one, in lines of the same text.
        const QByteArray usuale = "\x87\x90";
        const QByteArray nec = "\x81\xE0";
        const QByteArray byte = Pagina("shift_jis", usuale + "\r\n" + nec + "\r\n" + usuale + "\r\n" + nec + nec);
        FormatoPagina formato;
        QString testo = Codifiche::TestoDaByte(byte, formato);
        QCOMPARE(testo, u"<meta charset=\"shift_jis\">\r\n≒\r\n≒\r\n≒\r\n≒≒\r"_s);
        QVERIFY(!formato.righeInsolite.isEmpty());
        QCOMPARE(Codifiche::ByteDaTesto(testo, formato), byte);
        testo.replace(u"≒≒"_s, u"≒a≒"_s); // the edited line is spelt the usual way, the others as they were
        const QByteArray scritti = Codifiche::ByteDaTesto(testo, formato);
        QVERIFY(scritti.contains(usuale + "\r\n" + nec + "\r\n" + usuale + "\r\n"));
        FormatoPagina riletto;
        QCOMPARE(Codifiche::TestoDaByte(scritti, riletto), testo);

        // An odd spelling of nothing, in the last line.
        const QByteArray vuota = Pagina("hz-gb-2312", "x\r\n~}~");
        QCOMPARE(Codifiche::ByteDaTesto(Codifiche::TestoDaByte(vuota, formato), formato), vuota);
    }

    void lackingCharactersBecomeReferences_data()
    {
        Colonne<QString, QString, QByteArray, qsizetype>({"codifica", "testo", "byte", "sostituiti"});

        const QString solitario(QChar(0xDC00));
        QTest::newRow("pair is one") << u"windows-1252"_s << u"\U0001F600!"_s << QByteArray("&#128512;!")
                                     << qsizetype(1);
        QTest::newRow("library, pair is one")
            << u"KOI8-R"_s << u"\U0001F600ж"_s << QByteArray("&#128512;\xD6") << qsizetype(1);
        QTest::newRow("lone surrogate, 1252")
            << u"windows-1252"_s << solitario << QByteArray("&#65533;") << qsizetype(1);
        QTest::newRow("lone surrogate, UTF-8") << u"UTF-8"_s << solitario << QByteArray("\xEF\xBF\xBD") << qsizetype(1);
        QTest::newRow("invisible ones too")
            << u"EUC-JP"_s << u"\u200B\u00AD"_s << QByteArray("&#8203;&#173;") << qsizetype(2);
        QTest::newRow("reference between shifted text")
            << u"ISO-2022-JP"_s << u"日\U0001F600本"_s << QByteArray("\x1b$BF|\x1b(B&#128512;\x1b$BK\\\x1b(B")
            << qsizetype(1);
        QTest::newRow("every line ends in ASCII")
            << u"HZ-GB-2312"_s << u"你\r\n好"_s << QByteArray("~{Dc~}\r\n~{:C~}") << qsizetype(0);
    }

    void lackingCharactersBecomeReferences()
    {
        QFETCH(QString, codifica);
        QFETCH(QString, testo);
        QFETCH(QByteArray, byte);
        QFETCH(qsizetype, sostituiti);
        FormatoPagina formato;
        formato.codifica = codifica;
        qsizetype contati = -1;
        QCOMPARE(Codifiche::ByteDaTesto(testo, formato, &contati), byte + "\r\n");
        QCOMPARE(contati, sostituiti);
    }

    void changedDeclarationWins_data()
    {
        Colonne<QByteArray, QString, QByteArray>({"letti", "testo", "scritti"});

        QTest::newRow("new page, nothing declared") << QByteArray() << u"è"_s << QByteArray("\xC3\xA8\r\n");
        QTest::newRow("new page, declared")
            << QByteArray() << u"<meta charset=latin1>è"_s << QByteArray("<meta charset=latin1>\xE8\r\n");
        QTest::newRow("other declaration") << QByteArray("<meta charset=latin1>\xE8") << u"<meta charset=utf-8>è"_s
                                           << QByteArray("<meta charset=utf-8>\xC3\xA8\r\n");
        QTest::newRow("declaration removed")
            << QByteArray("<meta charset=latin1>\xE8") << u"è"_s << QByteArray("\xE8\r\n");
        QTest::newRow("mark goes with the old encoding") << QByteArray("\xEF\xBB\xBFx") << u"<meta charset=latin1>è"_s
                                                         << QByteArray("<meta charset=latin1>\xE8\r\n");
        QTest::newRow("mark stays") << QByteArray("\xEF\xBB\xBFx") << u"<meta charset=utf-8>è"_s
                                    << QByteArray("\xEF\xBB\xBF<meta charset=utf-8>\xC3\xA8\r\n");
        QTest::newRow("wrong from the start and unchanged")
            << QByteArray("<meta charset=utf-8>\xE8") << u"<meta charset=utf-8>èé"_s
            << QByteArray("<meta charset=utf-8>\xE8\xE9\r\n");
        QTest::newRow("utf-16 is no choice")
            << QByteArray("x\xE8") << u"<meta charset=utf-16>è"_s << QByteArray("<meta charset=utf-16>\xE8\r\n");
    }

    void changedDeclarationWins()
    {
        QFETCH(QByteArray, letti);
        QFETCH(QString, testo);
        QFETCH(QByteArray, scritti);
        FormatoPagina formato;
        if (!letti.isEmpty())
            Codifiche::TestoDaByte(letti, formato).clear();
        QCOMPARE(Codifiche::ByteDaTesto(testo, formato), scritti);
    }

    void koreanHeader()
    {
        const QByteArray byte = "\x1b$)C<meta charset=iso-2022-kr>\r\n\x0e\x30\x21\x0f\r\n";
        FormatoPagina formato;
        QString testo = Codifiche::TestoDaByte(byte, formato);
        QCOMPARE(testo, u"<meta charset=iso-2022-kr>\r\n가\r"_s);
        QCOMPARE(Codifiche::ByteDaTesto(testo, formato), byte);
        testo.prepend(u"<html>\r\n"_s);
        QCOMPARE(Codifiche::ByteDaTesto(testo, formato).first(10), QByteArray("\x1b$)C<html>"));
        FormatoPagina nuova;
        QVERIFY(Codifiche::ByteDaTesto(u"<meta charset=iso-2022-kr>가", nuova).startsWith("\x1b$)C"));
    }
};

QTEST_GUILESS_MAIN(TstCodifica)
#include "tst_codifica.moc"
