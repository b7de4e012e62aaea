#pragma once

#include <QList>
#include <QString>

#include "app/TabellaLingua.h"
#include "html/ModuloTag.h"
#include "platform/Aspetto.h"

/// The check written down step by step on a plain array of looks with a caret that moves, as slowly as can be. The
/// program must agree with it in every look and every result.
class ModelloControllo
{
public:
    struct Risultato {
        int posizione = 0, riga = 0, tipo = 0;
        QString testo;
    };

    explicit ModelloControllo(const QString &testo) : testo(testo), aspetti(testo.size()) {}

    QString testo;
    QList<Aspetto> aspetti;
    QList<Risultato> risultati;

    /// The whole page.
    void Verifica(int fine)
    {
        for (Aspetto &aspetto : aspetti)
            aspetto.onda = false;
        Cammina(testo, fine);
    }

    /// What releasing Space with the caret at \a caretto does to the tag around it.
    void VerificaTagCorrente(int caretto)
    {
        const int p1 = caretto < 1 ? 0 : int(testo.lastIndexOf(u'<', caretto - 1)) + 1;
        if (p1 < 1)
            return;
        int p2 = Cerca(p1, testo, u">");
        if (p2 == 0)
            p2 = caretto;
        if (p2 < 1)
            return;
        Seleziona(p1 - 1, p2 - p1 + 1);
        Onda(false);
        Cammina(QString(p1 - 1, u' ') + testo.mid(p1 - 1, p2 - p1 + 2), 2);
    }

    [[nodiscard]] int Limita(int p) const
    {
        p = std::clamp(p, 0, int(testo.size()));
        return p > 0 && p < testo.size() && testo[p] == u'\n' && testo[p - 1] == u'\r' ? p - 1 : p;
    }
    [[nodiscard]] int Riga(int p) const
    {
        int riga = 1;
        for (int i = 0; i < p; ++i)
            riga += testo[i] == u'\n' || (testo[i] == u'\r' && (i + 1 == testo.size() || testo[i + 1] != u'\n'));
        return riga;
    }

private:
    int m_selStart = 0, m_selLength = 0;

    /// \a controllato is the text that is walked: the page's, or a fragment padded to stand at its place in it.
    void Cammina(const QString &controllato, int fine)
    {
        const auto tabella = ModuloTag::ArrayTag();
        bool script = false;
        for (;;) {
            QString testoTag, nome;
            const int inizio = ProssimoTag(controllato, fine, testoTag, nome);
            if (inizio < 1 || fine < 1)
                return;
            if (testoTag.toUpper() == u"/SCRIPT")
                script = false;
            if (!nome.isEmpty()) {
                QString maiuscolo = nome.toUpper();
                const auto casella = ModuloTag::CercaTag(tabella, maiuscolo);
                if (!QStringView(u"!?%").contains(nome[0]) && !script) {
                    UnTag(inizio, testoTag, nome, int(casella));
                } else if (nome.startsWith(u"!--")) {
                    Seleziona(inizio - 1, int(testoTag.size()) + 1);
                    Colore(0x808080);
                }
            }
            if (nome.toUpper() == u"SCRIPT" && testoTag.toUpper() != u"/SCRIPT")
                script = true;
        }
    }

    void Seleziona(int da, int quanti)
    {
        m_selStart = Limita(da);
        m_selLength = Limita(m_selStart + quanti) - m_selStart;
    }
    void Colore(ColoreBgr colore)
    {
        for (int i = 0; i < m_selLength; ++i)
            aspetti[m_selStart + i].colore = colore;
    }
    void Onda(bool onda)
    {
        for (int i = 0; i < m_selLength; ++i)
            aspetti[m_selStart + i].onda = onda;
    }
    void ColoraParola(int lunghezza, ColoreBgr colore)
    {
        Seleziona(m_selStart, lunghezza);
        Colore(colore);
        Seleziona(m_selStart, 0);
    }
    void SegnaErrore(int lunghezza)
    {
        Seleziona(m_selStart, lunghezza);
        Colore(0x808080);
        Onda(true);
        Seleziona(m_selStart, 0);
    }

    // Searches and pieces with 1-based positions; 0 is "not found".
    static int Cerca(int da, const QString &dove, QStringView cosa)
    {
        return da > dove.size() ? 0 : int(dove.indexOf(cosa, da - 1)) + 1;
    }
    static QString Pezzo(const QString &di, int da, int quanti) { return di.mid(da - 1, quanti); }

    static int ProssimoTag(const QString &dove, int &fine, QString &testoTag, QString &nome)
    {
        const int inizio = Cerca(fine + 1, dove, u"<");
        if (inizio == 0)
            return 0;
        fine = Cerca(inizio, dove, u">");
        if (fine == 0)
            fine = int(dove.size());
        if (fine - inizio - 1 > 0) {
            testoTag = Pezzo(dove, inizio + 1, fine - inizio - 1);
            int lunghezza = int(testoTag.size());
            for (const QStringView c : {QStringView(u" "), QStringView(u"\r")}) {
                if (const int p = Cerca(1, testoTag, c); p > 0)
                    lunghezza = std::min(lunghezza, p - 1);
            }
            nome = testoTag.left(lunghezza).remove(u'/');
        }
        return inizio;
    }
    static int InizioAttributo(const QString &tag, int uguale)
    {
        int inizio = 1;
        for (const char16_t c : {8, 9, 10, 13, 32})
            inizio = std::max(inizio, int(tag.left(uguale).lastIndexOf(QChar(c))) + 1);
        return inizio;
    }
    static int FineValore(const QString &tag, int uguale)
    {
        const QString primo = Pezzo(tag, uguale + 1, 1);
        if (primo == QStringView(u"\"") || primo == QStringView(u"'")) {
            const int chiusura = Cerca(uguale + 2, tag, primo);
            return chiusura == 0 ? 0 : chiusura + 1;
        }
        int fine = int(tag.size());
        for (const char16_t c : {8, 9, 10, 13, 32, int('>'), int('<')}) {
            if (const int p = Cerca(uguale, tag, QString(QChar(c))); p > 0)
                fine = std::min(fine, p);
        }
        for (const QStringView c : {QStringView(u"\""), QStringView(u"'")}) {
            if (const int p = Cerca(uguale + 2, tag, c); p > 0)
                fine = std::min(fine, p);
        }
        return fine + 1;
    }

    void Aggiungi(int posizione, int tipo, const QString &prima, const QString &nome, const QString &dopo)
    {
        const int riga = Riga(m_selStart);
        const QString messaggio = QStringLiteral("%1: %2 '%3' %4").arg(QString::number(riga), prima, nome, dopo);
        for (const Risultato &r : risultati) {
            if (r.testo == messaggio)
                return;
        }
        risultati.append({posizione, riga, tipo, messaggio});
    }

    void UnTag(int inizio, const QString &testoTag, const QString &nome, int casella)
    {
        using ModuloPrincipale::Messaggio;
        Seleziona(inizio, 0);
        if (casella < 1) {
            SegnaErrore(int(nome.size()) + 1);
            Aggiungi(inizio, 1, QStringLiteral("Il tag"), nome, QStringLiteral("non esiste."));
            return;
        }
        ColoraParola(int(nome.size()) + 1, 0xC00000);
        if (testoTag == nome)
            return;
        int p = 2;
        while (const int e = Cerca(p, testoTag, u"=")) {
            const int s = InizioAttributo(testoTag, e);
            const QString attributo = Pezzo(testoTag, s + 1, e - s - 1);
            Seleziona(inizio + s, 0);
            const bool esente = attributo.startsWith(u"xmlns") || attributo.startsWith(u"xml:") ||
                                attributo.toUpper() == u"SRC" || attributo.toUpper() == u"HREF";
            if (!esente) {
                const QString cercato = attributo.endsWith(u'"') ? attributo.chopped(1) : attributo;
                if (ModuloTag::VerificaAttributo(nome, cercato) == 1) {
                    ColoraParola(int(cercato.size()), 0xFF00FF);
                } else {
                    SegnaErrore(int(cercato.size()));
                    Aggiungi(inizio + s, 2, Messaggio(81), attributo, Messaggio(82));
                }
            }
            const int v = FineValore(testoTag, e);
            if (v - 2 <= testoTag.size() && v > e) {
                const QString primo = Pezzo(testoTag, e + 1, 1);
                QString valore;
                if (primo == QStringView(u"\"") || primo == QStringView(u"'")) {
                    valore = Pezzo(testoTag, e + 2, v - e - 3);
                    Seleziona(inizio + e + 1, 0);
                } else {
                    valore = Pezzo(testoTag, e + 1, v - e - 1);
                    if (!valore.isEmpty() && QStringView(u"\b\t\n\r <").contains(valore.back()))
                        valore.chop(1);
                    Seleziona(inizio + e, 0);
                }
                if (!esente && !valore.isEmpty() && !attributo.isEmpty()) {
                    if (ModuloTag::VerificaValore(nome, attributo, valore) == 1) {
                        ColoraParola(int(valore.size()), 0xFF);
                    } else {
                        SegnaErrore(int(valore.size()));
                        Aggiungi(inizio + e, 3, Messaggio(83), valore, Messaggio(84));
                    }
                }
            }
            p = v >= 1 ? v : e + 1;
        }
    }
};
