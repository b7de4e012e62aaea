#include "Passo.h"

#include <QKeySequence>
#include <QRegularExpression>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array<QStringView, Passo::Fine + 1> Parole{
    u"page",   u"press",   u"repeat", u"release",   u"compose", u"click",   u"doubleclick", u"drag",
    u"wheel",  u"command", u"check",  u"control",   u"file",    u"close",   u"clipboard",   u"drop",
    u"resize", u"wait",    u"type",   u"typeafter", u"choose",  u"history", u"end"};

QString Protetto(const QString &testo)
{
    QString riga;
    for (const QChar c : testo) {
        if (c < u' ' || c > u'~' || c == u'"' || c == u'\\')
            riga += u"\\%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
        else
            riga += c;
    }
    return riga;
}

QString Scoperto(const QString &riga)
{
    QString testo;
    for (qsizetype i = 0; i < riga.size(); ++i) {
        if (riga[i] == u'\\') {
            testo += QChar(riga.sliced(i + 1).first(4).toUShort(nullptr, 16));
            i += 4;
        } else {
            testo += riga[i];
        }
    }
    return testo;
}

} // namespace

QString Passo::Riga() const
{
    QString riga = u"%1%2 %3 %4 %5 \"%6\""_s.arg(subito ? u"+"_s : QString(), Parole[size_t(tipo)])
                       .arg(a)
                       .arg(b)
                       .arg(c)
                       .arg(Protetto(testo));
    if (tipo == Premi || tipo == Ripeti || tipo == Rilascia || tipo == ScriviDopo)
        riga += u" # "_s + QKeySequence(b | a).toString(QKeySequence::PortableText);
    return riga;
}

std::optional<Passo> Passo::LeggiRiga(const QString &riga)
{
    static const QRegularExpression forma(
        u"^(\\+?)([a-z]+) (-?\\d+) (-?\\d+) (-?\\d+) \"((?:[^\"\\\\]|\\\\[0-9a-f]{4})*)\""_s);
    const auto parti = forma.match(riga.trimmed());
    const auto parola = std::find(Parole.begin(), Parole.end(), parti.capturedView(2));
    if (!parti.hasMatch() || parola == Parole.end())
        return {};
    return Passo{Tipo(parola - Parole.begin()), parti.captured(3).toInt(),   parti.captured(4).toInt(),
                 parti.captured(5).toInt(),     Scoperto(parti.captured(6)), !parti.captured(1).isEmpty()};
}
