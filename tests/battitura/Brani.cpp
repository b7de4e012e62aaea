#include "Brani.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype Minima = 60;
constexpr qsizetype Massima = 260;

bool Bianco(QChar c)
{
    return c == u' ' || c == u'\n' || c == u'\t' || c == u'\r';
}

qsizetype FineNome(const QString &testo, qsizetype da, QStringView oltre)
{
    while (da < testo.size() && !Bianco(testo[da]) && !oltre.contains(testo[da]))
        ++da;
    return da;
}

/// Where the comment, script or style that begins at \a da ends; \a da when there is none.
qsizetype FineGrezzo(const QString &testo, qsizetype da)
{
    static const QRegularExpression Apre(u"<(script|style|textarea)\\b[^>]*>"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    if (QStringView(testo).sliced(da).startsWith(u"<!--")) {
        const qsizetype fine = testo.indexOf(u"-->"_s, da);
        return fine < 0 ? testo.size() : fine + 3;
    }
    const auto trovato =
        Apre.match(testo, da, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    if (!trovato.hasMatch())
        return da;
    const qsizetype fine = testo.indexOf(u"</"_s + trovato.captured(1), da, Qt::CaseInsensitive);
    return fine < 0 ? testo.size() : fine;
}

/// The names of the tag that begins at \a da; \a fine goes behind its ">".
QList<Brani::Nome> NomiDelTag(const QString &testo, qsizetype da, qsizetype &fine)
{
    QList<Brani::Nome> nomi;
    qsizetype i = FineNome(testo, da + 1, u"/>");
    nomi.append({.da = da + 1, .lunghezza = i - da - 1});
    while (i < testo.size() && testo[i] != u'>') {
        if (Bianco(testo[i]) || testo[i] == u'/') {
            ++i;
            continue;
        }
        Brani::Nome nome{.da = i, .attributo = true};
        i = FineNome(testo, i + 1, u"=/>");
        nome.lunghezza = i - nome.da;
        qsizetype uguale = i;
        while (uguale < testo.size() && Bianco(testo[uguale]))
            ++uguale;
        if (uguale < testo.size() && testo[uguale] == u'=') {
            i = uguale + 1;
            while (i < testo.size() && Bianco(testo[i]))
                ++i;
            const QChar primo = i < testo.size() ? testo[i] : QChar();
            const bool tra = primo == u'"' || primo == u'\'';
            nome.virgoletta = tra ? primo : QChar();
            nome.valore = tra ? i + 1 : i;
            const qsizetype chiusa = tra ? testo.indexOf(primo, i + 1) : FineNome(testo, i, u">");
            nome.fineValore = chiusa < 0 ? testo.size() : chiusa;
            i = std::min(testo.size(), nome.fineValore + (tra ? 1 : 0));
        }
        nomi.append(nome);
    }
    fine = std::min(testo.size(), i + 1);
    return nomi;
}

/// Where the element that begins at \a da ends; -1: nowhere near.
qsizetype FineElemento(const QString &pagina, qsizetype da)
{
    const qsizetype fineNome = FineNome(pagina, da + 1, u"/>");
    const QStringView nome = QStringView(pagina).sliced(da + 1, fineNome - da - 1);
    static const QRegularExpression Tag(u"<(/?)([A-Za-z][A-Za-z0-9]*)"_s);
    int profondi = 0;
    for (qsizetype i = da; i >= 0 && i < std::min(pagina.size(), da + Massima);) {
        const auto trovato = Tag.match(pagina, i);
        if (!trovato.hasMatch())
            return -1;
        if (trovato.capturedView(2).compare(nome, Qt::CaseInsensitive) == 0)
            profondi += trovato.capturedLength(1) > 0 ? -1 : 1;
        qsizetype fine = 0;
        (void)NomiDelTag(pagina, trovato.capturedStart(), fine);
        if (profondi == 0)
            return fine;
        i = fine;
    }
    return -1;
}

} // namespace

QStringList Brani::DaPagina(const QString &pagina, int quanti)
{
    QString testo = pagina;
    testo.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    static const QRegularExpression Inizio(u"<[A-Za-z][A-Za-z0-9]*"_s);
    QStringList brani;
    const qsizetype passo = std::max<qsizetype>(1, testo.size() / std::max(1, quanti));
    qsizetype i = testo.indexOf(u"<body"_s, 0, Qt::CaseInsensitive) + 5;
    while (brani.size() < quanti) {
        const auto trovato = Inizio.match(testo, i);
        if (!trovato.hasMatch())
            break;
        const qsizetype da = trovato.capturedStart();
        const qsizetype fine = FineElemento(testo, da);
        if (fine - da >= Minima && fine - da <= Massima) {
            brani += testo.sliced(da, fine - da);
            i = std::max(fine, da + passo);
        } else {
            const qsizetype grezzo = FineGrezzo(testo, da);
            i = std::max(grezzo, da + 1);
        }
    }
    return brani;
}

QList<Brani::Nome> Brani::Nomi(const QString &testo)
{
    QList<Nome> nomi;
    for (qsizetype i = testo.indexOf(u'<'); i >= 0; i = testo.indexOf(u'<', i)) {
        if (const qsizetype fine = FineGrezzo(testo, i); fine > i && testo[i + 1] == u'!') {
            i = fine;
            continue;
        }
        if (i + 1 >= testo.size() || !testo[i + 1].isLetter()) {
            ++i;
            continue;
        }
        qsizetype fine = 0;
        nomi += NomiDelTag(testo, i, fine);
        i = std::max(fine, FineGrezzo(testo, i));
    }
    return nomi;
}

QString Brani::Uguagliato(const QString &testo)
{
    QString uguale = testo;
    uguale.replace(u"\r\n"_s, u"\n"_s);
    const QList<Nome> nomi = Nomi(uguale);
    for (auto nome = nomi.rbegin(); nome != nomi.rend(); ++nome) {
        if (nome->valore >= 0 && nome->virgoletta.isNull()) {
            uguale.insert(nome->fineValore, u'"');
            uguale.insert(nome->valore, u'"');
        }
        uguale.replace(nome->da, nome->lunghezza, uguale.sliced(nome->da, nome->lunghezza).toLower());
    }
    static const QRegularExpression FineTag(u"</[A-Za-z][A-Za-z0-9]*"_s);
    for (auto trovati = FineTag.globalMatch(uguale); trovati.hasNext();) {
        const auto trovato = trovati.next();
        uguale.replace(trovato.capturedStart(), trovato.capturedLength(), trovato.captured().toLower());
    }
    return uguale;
}
