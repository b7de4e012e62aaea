#include "platform/Rtf.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

// The colours of the page's colouring stand in every header, so that the first use of one does not change it.
constexpr std::array<ColoreBgr, 5> ColoriFissi{0x000000, 0xC00000, 0xFF00FF, 0x0000FF, 0x808080};

std::vector<ColoreBgr> Colori(const TabellaAspetti &tabella)
{
    std::vector<ColoreBgr> colori(ColoriFissi.begin(), ColoriFissi.end());
    for (int i = 0; i < tabella.Quanti(); ++i) {
        const ColoreBgr colore = tabella[quint8(i)].colore;
        if (std::find(colori.begin(), colori.end(), colore) == colori.end())
            colori.push_back(colore);
    }
    return colori;
}

void Apri(QString &rtf, const Aspetto &aspetto, const TabellaAspetti &tabella)
{
    rtf += u'{';
    if (aspetto.colore != 0) {
        auto posto = std::find(ColoriFissi.begin(), ColoriFissi.end(), aspetto.colore);
        qsizetype indice = posto - ColoriFissi.begin() + 1;
        if (posto == ColoriFissi.end()) {
            const std::vector<ColoreBgr> colori = Colori(tabella);
            indice = std::find(colori.begin(), colori.end(), aspetto.colore) - colori.begin() + 1;
        }
        rtf += u"\\cf"_s;
        rtf += QString::number(indice);
    }
    if (aspetto.grassetto)
        rtf += u"\\b"_s;
    if (aspetto.corsivo)
        rtf += u"\\i"_s;
    if (aspetto.onda)
        rtf += u"\\ulwave"_s;
    rtf += u' ';
}

void Carattere(QString &rtf, char16_t unita)
{
    if (unita == u'\\' || unita == u'{' || unita == u'}') {
        rtf += u'\\';
        rtf += QChar(unita);
    } else if (unita == u'\t') {
        rtf += u"\\tab "_s;
    } else if (unita >= 0x20 && unita < 0x7F) {
        rtf += QChar(unita);
    } else {
        rtf += u"\\u"_s;
        rtf += QString::number(qint16(unita));
        rtf += u'?';
    }
}

} // namespace

QString Rtf::Testata(const TabellaAspetti &tabella)
{
    QString testata = u"{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}{\\colortbl ;"_s;
    for (const ColoreBgr colore : Colori(tabella)) {
        testata += u"\\red%1\\green%2\\blue%3;"_s.arg(colore & 0xFF).arg(colore >> 8 & 0xFF).arg(colore >> 16 & 0xFF);
    }
    return testata + u"}\\pard\\plain\\f0\\fs20\r\n"_s;
}

QString Rtf::Coda()
{
    return u"}\r\n"_s;
}

void Rtf::ScriviRiga(QString &rtf, QStringView riga, const quint8 *aspetti, const TabellaAspetti &tabella)
{
    qsizetype fine = riga.size();
    const bool lf = fine > 0 && riga[fine - 1] == u'\n';
    fine -= lf ? 1 : 0;
    const bool cr = fine > 0 && riga[fine - 1] == u'\r';
    fine -= cr ? 1 : 0;

    quint8 corrente = 0;
    const auto passaA = [&](quint8 aspetto) {
        if (aspetto == corrente)
            return;
        if (corrente != 0)
            rtf += u'}';
        if (aspetto != 0)
            Apri(rtf, tabella[aspetto], tabella);
        corrente = aspetto;
    };
    for (qsizetype i = 0; i < fine; ++i) {
        passaA(aspetti[i]);
        Carattere(rtf, riga[i].unicode());
    }
    if (cr || lf) {
        passaA(aspetti[fine]);
        if (!lf)
            rtf += u"{\\*\\vlrcr}"_s;
        else if (!cr)
            rtf += u"{\\*\\vlrlf}"_s;
        rtf += u"\\par"_s;
    }
    passaA(0);
    if (cr || lf)
        rtf += u"\r\n"_s;
}
