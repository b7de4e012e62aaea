#include "app/TabellaLingua.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ModuloPrincipale;

namespace
{

constexpr auto DatiSorgente = CARTELLA_SORGENTI "/data";

QByteArray leggi(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString percorsoDati(const QString &nome)
{
    return QString::fromUtf8(DatiSorgente) + u'/' + nome;
}

QStringList segnaposto(const QString &testo)
{
    static const QRegularExpression forma(u"%\\d"_s);
    QStringList trovati;
    for (const QRegularExpressionMatch &uno : forma.globalMatch(testo))
        trovati += uno.captured();
    trovati.sort();
    return trovati;
}

} // namespace

// The language files as they are shipped: complete, alike in what is put into them, and really translated.
class TstLingue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QSet<QStringView> nomi;
        QSet<quint8> codici;
        for (const auto &[codice, nome, file, locale] : Lingue()) {
            QVERIFY(QLocale(locale.toString()).language() != QLocale::C && !codici.contains(codice) &&
                    !nomi.contains(nome));
            codici += codice;
            nomi += nome;
            QCOMPARE(CaricaLingua(QString::fromUtf8(DatiSorgente), codice).errore, QString());
            QStringList testi;
            for (qint16 numero = 0; numero <= UltimoMessaggio; ++numero)
                testi += Messaggio(numero);
            m_lingue += {FileLingua(codice), testi};
        }
        QCOMPARE(LinguaDaImpostazioni(QString::fromUtf8(leggi(percorsoDati(u"GlobalSetting.dat"_s)))), LinguaItaliano);
    }

    void sameNumbersInEveryLanguage()
    {
        QStringList mancanti;
        for (int numero = 1; numero <= UltimoMessaggio; ++numero) {
            for (const Lingua &lingua : m_lingue) {
                if (lingua.testi[numero].isEmpty() != m_lingue.first().testi[numero].isEmpty())
                    mancanti += u"%1 %2"_s.arg(lingua.nome).arg(numero);
                else if (lingua.testi[numero].trimmed() != lingua.testi[numero])
                    mancanti += u"%1 %2: blanks at its ends"_s.arg(lingua.nome).arg(numero);
            }
        }
        QVERIFY2(mancanti.isEmpty(), qPrintable(mancanti.join(u", ")));
    }

    // Whoever edits a file goes by the number at the start of the line, the program by the line.
    void lineNumbersAreRight()
    {
        for (const Lingua &lingua : std::as_const(m_lingue)) {
            const QByteArray contenuto = leggi(percorsoDati(lingua.nome));
            QVERIFY2(contenuto.startsWith("0001=") && contenuto.endsWith('\n'), qPrintable(lingua.nome));
            QVERIFY2(!QString::fromUtf8(contenuto).contains(QChar::ReplacementCharacter), qPrintable(lingua.nome));
            const QList<QByteArray> righe = contenuto.chopped(1).split('\n');
            for (qsizetype i = 0; i < righe.size(); ++i)
                QCOMPARE(righe[i].first(5), QByteArray::number(i + 1).rightJustified(4, '0') + '=');
        }
    }

    void samePlaceholdersAndMnemonics()
    {
        for (int numero = 1; numero <= UltimoMessaggio; ++numero) {
            const QString &italiano = m_lingue.first().testi[numero];
            for (const Lingua &lingua : std::as_const(m_lingue)) {
                const QByteArray dove = u"%1 %2"_s.arg(lingua.nome).arg(numero).toUtf8();
                QVERIFY2(segnaposto(lingua.testi[numero]) == segnaposto(italiano), dove);
                QVERIFY2(lingua.testi[numero].count(u'&') == italiano.count(u'&'), dove);
            }
        }
    }

    void chineseIsTranslated()
    {
        static const QRegularExpression ideogramma(u"\\p{Han}"_s);
        // Characters that the other script writes differently: one of them shows a text copied across.
        const QList<QString> altraScrittura{u"頁編碼擊開關顯標籤動選擇為單還這個會檢語覽圖體鏈貼轉誤讀寫無須請軟"_s,
                                            u"页编码击开关显标签动选择为单还这个会检语览图体链贴转误读写无须请软"_s};
        for (int i = 0; i < 2; ++i) {
            const Lingua &lingua = m_lingue[2 + i];
            QStringList sbagliati;
            for (int numero = 1; numero <= UltimoMessaggio; ++numero) {
                const QString &testo = lingua.testi[numero];
                const bool estraneo =
                    std::any_of(testo.begin(), testo.end(), [&](QChar c) { return altraScrittura[i].contains(c); });
                if (!testo.isEmpty() && (!testo.contains(ideogramma) || estraneo))
                    sbagliati += QString::number(numero) + u' ' + testo;
            }
            QVERIFY2(sbagliati.isEmpty(), qPrintable(lingua.nome + u": "_s + sbagliati.join(u", ")));
        }
    }

    // Tool tips and message boxes would show such a text as formatted text, without its angle brackets.
    void noTextLooksLikeMarkup()
    {
        for (const Lingua &lingua : std::as_const(m_lingue)) {
            for (int numero = 1; numero <= UltimoMessaggio; ++numero)
                QVERIFY2(!lingua.testi[numero].contains(u'<'), qPrintable(lingua.nome + QString::number(numero)));
        }
    }

private:
    struct Lingua {
        QString nome;
        QStringList testi; // by number, up to UltimoMessaggio
    };
    QList<Lingua> m_lingue;
};

QTEST_GUILESS_MAIN(TstLingue)
#include "tst_lingue.moc"
