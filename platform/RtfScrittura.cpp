#include "platform/Rtf.h"

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{

// The colours of every header: those of the page's colouring, then the sixteen basic ones. Any other colour is written
// as the nearest of these, for other word processors, with its exact value in a destination of our own.
constexpr std::array<ColoreBgr, 19> ColoriTestata{0x000000, 0xC00000, 0xFF00FF, 0x0000FF, 0x808080, 0xC0C0C0, 0xFFFFFF,
                                                  0x000080, 0x008080, 0x00FFFF, 0x008000, 0x00FF00, 0x808000, 0xFFFF00,
                                                  0x800000, 0xFF0000, 0x800080, 0x0080FF, 0x004080};

int Distanza(ColoreBgr a, ColoreBgr b)
{
    int somma = 0;
    for (int bit = 0; bit < 24; bit += 8)
        somma += std::abs(int(a >> bit & 0xFF) - int(b >> bit & 0xFF));
    return somma;
}

void Apri(QString &rtf, const Aspetto &aspetto)
{
    rtf += u'{';
    bool esatto = true;
    if (aspetto.colore != 0) {
        const auto *posto = std::find(ColoriTestata.begin(), ColoriTestata.end(), aspetto.colore);
        esatto = posto != ColoriTestata.end();
        if (!esatto)
            posto = std::min_element(ColoriTestata.begin(), ColoriTestata.end(), [&](ColoreBgr a, ColoreBgr b) {
                return Distanza(a, aspetto.colore) < Distanza(b, aspetto.colore);
            });
        rtf += u"\\cf"_s;
        rtf += QString::number(posto - ColoriTestata.begin() + 1);
    }
    if (aspetto.grassetto)
        rtf += u"\\b"_s;
    if (aspetto.corsivo)
        rtf += u"\\i"_s;
    if (aspetto.onda)
        rtf += u"\\ulwave"_s;
    if (esatto) {
        rtf += u' ';
    } else {
        rtf += u"{\\*\\vlrc"_s;
        rtf += QString::number(aspetto.colore);
        rtf += u'}';
    }
}

/// Whether RTF writes the unit as it is.
bool Letterale(char16_t unita)
{
    return unita >= 0x20 && unita < 0x7F && unita != u'\\' && unita != u'{' && unita != u'}';
}

void Altro(QString &rtf, char16_t unita)
{
    if (unita == u'\\' || unita == u'{' || unita == u'}') {
        rtf += u'\\';
        rtf += QChar(unita);
    } else if (unita == u'\t') {
        rtf += u"\\tab "_s;
    } else {
        rtf += u"\\u"_s;
        rtf += QString::number(qint16(unita));
        rtf += u'?';
    }
}

} // namespace

QString Rtf::Testata()
{
    QString testata = u"{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}{\\colortbl ;"_s;
    for (const ColoreBgr colore : ColoriTestata)
        testata += u"\\red%1\\green%2\\blue%3;"_s.arg(colore & 0xFF).arg(colore >> 8 & 0xFF).arg(colore >> 16 & 0xFF);
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
            Apri(rtf, tabella[aspetto]);
        corrente = aspetto;
    };
    for (qsizetype i = 0; i < fine;) {
        passaA(aspetti[i]);
        qsizetype letterali = i;
        while (letterali < fine && aspetti[letterali] == corrente && Letterale(riga[letterali].unicode()))
            ++letterali;
        rtf += riga.sliced(i, letterali - i);
        if (letterali == i)
            Altro(rtf, riga[letterali++].unicode());
        i = letterali;
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
