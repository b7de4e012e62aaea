#include "bench/Pagine.h"

#include <array>
#include <random>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array Parole{
    u"il",     u"di",          u"per",      u"una",    u"con",          u"che",        u"città",      u"perché",
    u"storia", u"pagina",      u"immagine", u"giorno", u"montagna",     u"biblioteca", u"fotografia", u"orario",
    u"aperto", u"visita",      u"mercato",  u"più",    u"collegamento", u"redazione",  u"archivio",   u"università",
    u"nuovo",  u"antico",      u"stazione", u"treno",  u"ricetta",      u"farina",     u"olio",       u"così",
    u"vento",  u"passeggiata", u"è",        u"caffè",  u"riga",         u"tabella",    u"elenco",     u"primavera"};

class Autore
{
public:
    explicit Autore(qsizetype unita) : m_misura(unita) { m_pagina.reserve(unita + 256); }

    QString Scrivi()
    {
        Riga(uR"(<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01 Transitional//EN">)"_s);
        Riga(u"<html lang=\"it\">"_s);
        Riga(u"<head><title>"_s + Frase(5) + u"</title>"_s);
        Riga(uR"(<meta http-equiv="Content-Type" content="text/html; charset=utf-8">)"_s);
        Riga(uR"(</head><body bgcolor="#FFFFFF" text="#000000" link="#0000CC">)"_s);
        while (m_pagina.size() < m_misura - 40) {
            switch (Caso(6)) {
            case 0:
                Tabella();
                break;
            case 1:
                Elenco();
                break;
            case 2:
                Riga(u"<!-- "_s + Frase(4 + Caso(8)) + u" -->"_s);
                break;
            default:
                Paragrafo();
            }
        }
        Riga(u"</body></html>"_s);
        return m_pagina;
    }

private:
    // Not std::uniform_int_distribution: each library has its own idea of it.
    int Caso(int limite) { return int(m_caso() % std::uint32_t(limite)); }

    bool Piena() const { return m_pagina.size() >= m_misura - 40; }

    void Riga(const QString &testo)
    {
        m_pagina += testo;
        m_pagina += u"\r\n"_s;
    }

    QString Frase(int parole)
    {
        QString frase;
        for (int i = 0; i < parole; ++i) {
            if (i > 0)
                frase += u' ';
            frase += QStringView(Parole[size_t(Caso(int(Parole.size())))]);
        }
        return frase;
    }

    QString Frammento()
    {
        switch (Caso(5)) {
        case 0:
            return u"<a href=\"pagina%1.html\">%2</a>"_s.arg(Caso(900)).arg(Frase(2));
        case 1:
            return u"<b>%1</b>"_s.arg(Frase(2));
        case 2:
            return u"<font color=\"#%1\" size=2><i>%2</i></font>"_s.arg(Caso(0xFFFFFF), 6, 16, QChar(u'0'))
                .arg(Frase(2));
        case 3:
            return u"<img src=\"foto/%1.jpg\" alt=\"%2\" width=320 height=240>"_s.arg(Caso(900)).arg(Frase(2));
        default:
            return Frase(4 + Caso(4)) + u"&nbsp;&egrave; "_s;
        }
    }

    void Paragrafo()
    {
        Riga(u"<p align=\"justify\" class=\"testo\">"_s);
        for (int riga = 2 + Caso(6); riga > 0 && !Piena(); --riga) {
            const qsizetype lunghezza = 20 + Caso(60);
            QString testo = Caso(3) > 0 ? Frammento() : Frase(3);
            while (testo.size() < lunghezza)
                testo += u' ' + Frase(1);
            Riga(testo);
        }
        Riga(u"</p><hr noshade size=\"1\">"_s);
    }

    void Tabella()
    {
        Riga(u"<table border=\"1\" cellpadding=\"4\" width=\"100%\"><tbody>"_s);
        for (int riga = 1 + Caso(5); riga > 0 && !Piena(); --riga) {
            Riga(u"  <tr valign=\"top\" bgcolor=\"#EEEEEE\">"_s);
            Riga(u"    <td nowrap>%1</td><td align=right>%2</td>"_s.arg(Frase(3)).arg(Caso(10000)));
            Riga(u"    <td colspan=2><div id=\"cella%1\">%2</div></td>"_s.arg(Caso(9999)).arg(Frase(3)));
            Riga(u"  </tr>                "_s);
        }
        Riga(u"</tbody></table><br>"_s);
    }

    void Elenco()
    {
        Riga(u"<ul type=\"disc\" class=\"elenco\">"_s);
        for (int voce = 2 + Caso(5); voce > 0 && !Piena(); --voce)
            Riga(u"  <li title='%1'>%2</li>"_s.arg(Frase(1), Frase(3 + Caso(6))));
        Riga(u"</ul><br clear=\"all\">"_s);
    }

    qsizetype m_misura;
    QString m_pagina;
    std::mt19937 m_caso{20};
};

} // namespace

QString Pagine::Html(qsizetype unita)
{
    return Autore(unita).Scrivi();
}

QString Pagine::RigaSola(qsizetype unita)
{
    QString riga = Html(unita + unita / 8 + 256);
    riga.replace(u"\r\n"_s, u" "_s);
    riga.truncate(unita);
    return riga;
}

std::vector<Pagine::Parte> Pagine::PartiDeiTag(QStringView pagina)
{
    std::vector<Parte> parti;
    const auto aggiungi = [&parti](qsizetype da, qsizetype fine, Parte::Genere genere) {
        if (fine > da)
            parti.push_back({int(da), int(fine - da), genere});
    };
    for (qsizetype i = pagina.indexOf(u'<'); i >= 0; i = pagina.indexOf(u'<', i)) {
        if (pagina.sliced(i).startsWith(u"<!")) {
            const qsizetype chiusura = pagina.indexOf(u'>', i);
            const qsizetype fine = chiusura < 0 ? pagina.size() : chiusura + 1;
            aggiungi(i, fine, Parte::Commento);
            i = fine;
            continue;
        }
        Parte::Genere genere = Parte::Nome;
        qsizetype inizio = i;
        QChar apice;
        for (++i; i < pagina.size(); ++i) {
            const QChar c = pagina[i];
            if (!apice.isNull() ? c == apice : c == u'"' || c == u'\'')
                apice = apice.isNull() ? c : QChar();
            if (!apice.isNull())
                continue;
            if (c == u'>' || c == u' ' || c == u'=') {
                aggiungi(inizio, i, genere);
                genere = c == u'=' ? Parte::Valore : Parte::Attributo;
                inizio = i + 1;
            }
            if (c == u'>') {
                aggiungi(i, i + 1, Parte::Nome);
                ++i;
                break;
            }
        }
    }
    return parti;
}
