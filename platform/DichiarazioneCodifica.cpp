#include "platform/DichiarazioneCodifica.h"

#include "platform/Codifiche.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Codifiche
{
namespace
{

bool Spazio(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

bool Lettera(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

void SaltaSpazi(QStringView testo, qsizetype &dove)
{
    while (dove < testo.size() && Spazio(testo[dove]))
        ++dove;
}

QString Riconosciuta(QStringView etichetta)
{
    const QString nome = NomeCodifica(etichetta);
    return nome == Utf16LE || nome == Utf16BE ? QString() : nome;
}

struct Attributo {
    QStringView nome; ///< empty: no further attribute in this tag
    QStringView valore;
};

/// The next attribute of the tag in which \a dove stands; \a dove moves past it, at the end of the tag onto its ">".
Attributo ProssimoAttributo(QStringView testo, qsizetype &dove)
{
    while (dove < testo.size() && (Spazio(testo[dove]) || testo[dove] == u'/'))
        ++dove;
    Attributo attributo;
    qsizetype inizio = dove;
    while (dove < testo.size() && !Spazio(testo[dove]) && testo[dove] != u'/' && testo[dove] != u'>' &&
           (testo[dove] != u'=' || dove == inizio))
        ++dove;
    attributo.nome = testo.sliced(inizio, dove - inizio);
    qsizetype uguale = dove;
    SaltaSpazi(testo, uguale);
    if (attributo.nome.isEmpty() || uguale == testo.size() || testo[uguale] != u'=')
        return attributo;
    dove = uguale + 1;
    SaltaSpazi(testo, dove);
    if (dove == testo.size())
        return attributo;
    const QChar virgolette = testo[dove];
    if (virgolette == u'"' || virgolette == u'\'') {
        inizio = dove + 1;
        const qsizetype chiusura = testo.indexOf(virgolette, inizio);
        const qsizetype fine = chiusura < 0 ? testo.size() : chiusura;
        attributo.valore = testo.sliced(inizio, fine - inizio);
        dove = std::min(fine + 1, testo.size());
        return attributo;
    }
    inizio = dove;
    while (dove < testo.size() && !Spazio(testo[dove]) && testo[dove] != u'>')
        ++dove;
    attributo.valore = testo.sliced(inizio, dove - inizio);
    return attributo;
}

/// The label in a content such as "text/html; charset=koi8-r".
QStringView EtichettaDelContenuto(QStringView contenuto)
{
    qsizetype dove = 0;
    while ((dove = contenuto.indexOf("charset"_L1, dove, Qt::CaseInsensitive)) >= 0) {
        dove += 7;
        SaltaSpazi(contenuto, dove);
        if (dove == contenuto.size() || contenuto[dove] != u'=')
            continue;
        ++dove;
        SaltaSpazi(contenuto, dove);
        QStringView resto = contenuto.sliced(dove);
        if (resto.startsWith(u'"') || resto.startsWith(u'\'')) {
            const qsizetype chiusura = resto.indexOf(resto[0], 1);
            return chiusura < 0 ? QStringView() : resto.sliced(1, chiusura - 1);
        }
        const auto fine =
            std::find_if(resto.begin(), resto.end(), [](QChar c) { return Spazio(c) || c == u';' || c == u','; });
        return resto.first(fine - resto.begin());
    }
    return {};
}

/// Reads the META element whose attributes start at \a dove.
QString CodificaDelMeta(QStringView testo, qsizetype &dove)
{
    bool tipoContenuto = false;
    QStringView charset;
    QStringView contenuto;
    for (Attributo a = ProssimoAttributo(testo, dove); !a.nome.isEmpty(); a = ProssimoAttributo(testo, dove)) {
        // Of an attribute written twice the first counts.
        if (charset.isNull() && a.nome.compare("charset"_L1, Qt::CaseInsensitive) == 0)
            charset = a.valore;
        else if (contenuto.isNull() && a.nome.compare("content"_L1, Qt::CaseInsensitive) == 0)
            contenuto = a.valore;
        else if (a.nome.compare("http-equiv"_L1, Qt::CaseInsensitive) == 0)
            tipoContenuto |= a.valore.trimmed().compare("content-type"_L1, Qt::CaseInsensitive) == 0;
    }
    if (!charset.isEmpty())
        return Riconosciuta(charset);
    return tipoContenuto ? Riconosciuta(EtichettaDelContenuto(contenuto)) : QString();
}

QString CodificaDelPrologo(QStringView pagina)
{
    if (!pagina.startsWith("<?xml"_L1))
        return {};
    const QStringView prologo = pagina.first(std::max<qsizetype>(pagina.indexOf(u'>'), 0));
    qsizetype dove = prologo.indexOf("encoding"_L1);
    if (dove < 0)
        return {};
    dove += 8;
    SaltaSpazi(prologo, dove);
    if (dove == prologo.size() || prologo[dove] != u'=')
        return {};
    ++dove;
    SaltaSpazi(prologo, dove);
    if (dove == prologo.size() || (prologo[dove] != u'"' && prologo[dove] != u'\''))
        return {};
    const qsizetype chiusura = prologo.indexOf(prologo[dove], dove + 1);
    return chiusura < 0 ? QString() : Riconosciuta(prologo.sliced(dove + 1, chiusura - dove - 1));
}

QStringView NomeTag(QStringView testo, qsizetype dove)
{
    const qsizetype inizio = dove;
    while (dove < testo.size() && !Spazio(testo[dove]) && testo[dove] != u'/' && testo[dove] != u'>')
        ++dove;
    return testo.sliced(inizio, dove - inizio);
}

/// The place after the first \a cosa from \a dove on; the end when there is none.
qsizetype Dopo(QStringView testo, QLatin1StringView cosa, qsizetype dove)
{
    const qsizetype trovato = testo.indexOf(cosa, dove);
    return trovato < 0 ? testo.size() : trovato + cosa.size();
}

QString CodificaDeiMeta(QStringView testo)
{
    qsizetype dove = 0;
    while ((dove = testo.indexOf(u'<', dove)) >= 0) {
        const QStringView qui = testo.sliced(dove);
        if (qui.startsWith("<!--"_L1)) {
            dove = Dopo(testo, "-->"_L1, dove + 2); // "<!-->" is a whole comment
            continue;
        }
        const bool chiude = qui.startsWith("</"_L1);
        const qsizetype nomeDa = dove + (chiude ? 2 : 1);
        if (nomeDa >= testo.size() || !Lettera(testo[nomeDa])) {
            const bool istruzione = chiude || qui.startsWith("<!"_L1) || qui.startsWith("<?"_L1);
            dove = istruzione ? Dopo(testo, ">"_L1, dove) : dove + 1;
            continue;
        }
        const QStringView nome = NomeTag(testo, nomeDa);
        const bool fineTesta = nome.compare(chiude ? "head"_L1 : "body"_L1, Qt::CaseInsensitive) == 0;
        if (fineTesta && dove > FinestraMinima)
            return {};
        dove = nomeDa + nome.size();
        if (!chiude && nome.compare("meta"_L1, Qt::CaseInsensitive) == 0) {
            QString codifica = CodificaDelMeta(testo, dove);
            if (!codifica.isEmpty())
                return codifica;
        } else {
            while (!ProssimoAttributo(testo, dove).nome.isEmpty()) {
            }
        }
    }
    return {};
}

} // namespace

QString CodificaDichiarata(QStringView pagina)
{
    const QStringView inizio = pagina.first(std::min(pagina.size(), FinestraDichiarazione));
    const QString codifica = CodificaDeiMeta(inizio);
    return codifica.isEmpty() ? CodificaDelPrologo(inizio) : codifica;
}

} // namespace Codifiche
