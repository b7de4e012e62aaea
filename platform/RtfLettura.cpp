#include "platform/Rtf.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

// Deeper groups share the state of this depth: no writer nests so far, and a hostile text must not take the memory.
constexpr size_t ProfonditaMassima = 1000;

constexpr char16_t Alti1252[32] = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                   0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};

class Lettore
{
public:
    explicit Lettore(QStringView rtf) : m_rtf(rtf) { m_gruppi.emplace_back(); }

    Rtf::Contenuto contenuto;

    void Leggi()
    {
        // The outer group is the document's own: what follows its end is not read.
        do {
            Passo();
        } while (m_dove < m_rtf.size() && m_gruppi.size() > 1);
    }

    /// Reads \a righe as if they followed what was read so far; true when they leave the groups as they found them.
    bool LeggiAncora(QStringView righe)
    {
        const size_t gruppi = m_gruppi.size();
        m_rtf = righe;
        m_dove = 0;
        contenuto = {};
        while (m_dove < m_rtf.size() && m_gruppi.size() >= gruppi)
            Passo();
        return m_gruppi.size() == gruppi;
    }

private:
    struct Gruppo {
        Aspetto aspetto;
        int unitaDopoU = 1;  ///< characters that stand in for a \u
        bool muto = false;   ///< a destination whose text is not the document's
        bool colori = false; ///< the colour table
    };

    void Passo()
    {
        const char16_t c = m_rtf[m_dove++].unicode();
        switch (c) {
        case u'{':
            if (m_gruppi.size() < ProfonditaMassima)
                m_gruppi.push_back(m_gruppi.back());
            else
                ++m_oltre;
            m_daSaltare = 0;
            break;
        case u'}':
            if (m_oltre > 0)
                --m_oltre;
            else
                m_gruppi.pop_back();
            m_daSaltare = 0;
            break;
        case u'\\':
            Comando();
            break;
        case u'\r':
        case u'\n':
            break;
        default:
            if (m_gruppi.back().colori && c == u';')
                ChiudiColore();
            else
                Metti(c);
        }
    }

    void Comando()
    {
        if (m_dove >= m_rtf.size())
            return;
        const char16_t c = m_rtf[m_dove].unicode();
        if (!EMinuscola(c)) {
            ++m_dove;
            Simbolo(c);
            return;
        }
        const qsizetype inizio = m_dove;
        while (m_dove < m_rtf.size() && EMinuscola(m_rtf[m_dove].unicode()))
            ++m_dove;
        const QStringView parola = m_rtf.sliced(inizio, m_dove - inizio);
        const bool negativo = m_dove < m_rtf.size() && m_rtf[m_dove] == u'-';
        qsizetype cifra = m_dove + (negativo ? 1 : 0);
        bool numero = false;
        qint64 valore = 0;
        for (; cifra < m_rtf.size() && m_rtf[cifra] >= u'0' && m_rtf[cifra] <= u'9'; ++cifra) {
            valore = std::min<qint64>(valore * 10 + (m_rtf[cifra].unicode() - u'0'), 1'000'000'000);
            numero = true;
        }
        if (numero)
            m_dove = cifra;
        if (m_dove < m_rtf.size() && m_rtf[m_dove] == u' ')
            ++m_dove;
        Parola(parola, numero, int(negativo ? -valore : valore));
    }

    void Simbolo(char16_t c)
    {
        switch (c) {
        case u'\\':
        case u'{':
        case u'}':
            Metti(c);
            break;
        case u'~':
            Metti(0xA0);
            break;
        case u'_':
            Metti(0x2011);
            break;
        case u'\r':
        case u'\n':
            Metti(u'\r');
            Metti(u'\n');
            break;
        case u'\'':
            Esadecimale();
            break;
        case u'*':
            m_ignorabile = true;
            return;
        default:
            break;
        }
        m_ignorabile = false;
    }

    void Esadecimale()
    {
        bool giusto = false;
        const uint valore =
            m_rtf.sliced(m_dove).first(std::min<qsizetype>(2, m_rtf.size() - m_dove)).toUInt(&giusto, 16);
        m_dove = std::min(m_dove + 2, m_rtf.size());
        if (giusto)
            Metti(valore >= 0x80 && valore < 0xA0 ? Alti1252[valore - 0x80] : char16_t(valore));
    }

    void Parola(QStringView parola, bool numero, int valore)
    {
        Gruppo &gruppo = m_gruppi.back();
        const bool acceso = !numero || valore != 0;
        if (m_ignorabile) {
            m_ignorabile = false;
            if (parola == u"vlrcr")
                m_fineRiga = u'\r';
            else if (parola == u"vlrlf")
                m_fineRiga = u'\n';
            else if (parola == u"vlrc" && m_gruppi.size() > 1)
                m_gruppi[m_gruppi.size() - 2].aspetto.colore = ColoreBgr(std::clamp(valore, 0, 0xFFFFFF));
            gruppo.muto = true;
            return;
        }
        if (parola == u"u") {
            Metti(char16_t(valore));
            m_daSaltare = gruppo.unitaDopoU;
            return;
        }
        m_daSaltare = std::max(0, m_daSaltare - 1);
        if (parola == u"par" || parola == u"line") {
            FineRiga();
        } else if (parola == u"tab") {
            Metti(u'\t');
        } else if (parola == u"cf") {
            gruppo.aspetto.colore =
                valore > 0 && size_t(valore) < m_colori.size() ? m_colori[size_t(valore)] : ColoreBgr(0);
        } else if (parola == u"b") {
            gruppo.aspetto.grassetto = acceso;
        } else if (parola == u"i") {
            gruppo.aspetto.corsivo = acceso;
        } else if (parola == u"ulwave") {
            gruppo.aspetto.onda = acceso;
        } else if (parola == u"ulnone" || (parola == u"ul" && !acceso)) {
            gruppo.aspetto.onda = false;
        } else if (parola == u"plain") {
            gruppo.aspetto = {};
        } else if (parola == u"uc") {
            gruppo.unitaDopoU = std::clamp(valore, 0, 100);
        } else if (parola == u"colortbl") {
            gruppo.colori = true;
            gruppo.muto = true;
            m_colori.clear();
        } else if (gruppo.colori && (parola == u"red" || parola == u"green" || parola == u"blue")) {
            const int posto = parola == u"red" ? 0 : parola == u"green" ? 8 : 16;
            m_colore |= ColoreBgr(std::clamp(valore, 0, 255)) << posto;
        } else if (parola == u"bin") {
            m_dove = std::min<qsizetype>(m_dove + std::max(0, valore), m_rtf.size());
        } else if (parola == u"fonttbl" || parola == u"stylesheet" || parola == u"info" || parola == u"pict" ||
                   parola == u"object" || parola == u"header" || parola == u"footer" || parola == u"footnote") {
            gruppo.muto = true;
        } else {
            Segno(parola);
        }
    }

    void Segno(QStringView parola)
    {
        static constexpr std::pair<QStringView, char16_t> Segni[] = {
            {u"lquote", 0x2018},    {u"rquote", 0x2019},  {u"ldblquote", 0x201C},
            {u"rdblquote", 0x201D}, {u"emdash", 0x2014},  {u"endash", 0x2013},
            {u"bullet", 0x2022},    {u"emspace", 0x2003}, {u"enspace", 0x2002}};
        for (const auto &[nome, carattere] : Segni) {
            if (parola == nome)
                Metti(carattere);
        }
    }

    void FineRiga()
    {
        if (m_fineRiga != 0) {
            Metti(m_fineRiga);
            m_fineRiga = 0;
        } else {
            Metti(u'\r');
            Metti(u'\n');
        }
    }

    void Metti(char16_t c)
    {
        if (m_daSaltare > 0) {
            --m_daSaltare;
            return;
        }
        if (m_gruppi.back().muto)
            return;
        contenuto.testo += QChar(c);
        contenuto.aspetti.push_back(m_gruppi.back().aspetto);
    }

    void ChiudiColore()
    {
        m_colori.push_back(m_colore);
        m_colore = 0;
    }

    static bool EMinuscola(char16_t c) { return c >= u'a' && c <= u'z'; }

    QStringView m_rtf;
    qsizetype m_dove = 0;
    std::vector<Gruppo> m_gruppi;
    size_t m_oltre = 0;
    std::vector<ColoreBgr> m_colori;
    ColoreBgr m_colore = 0;
    int m_daSaltare = 0;
    bool m_ignorabile = false;
    char16_t m_fineRiga = 0;
};

} // namespace

std::optional<Rtf::Contenuto> Rtf::Leggi(QStringView rtf)
{
    if (!rtf.startsWith(u"{\\rtf"_s))
        return std::nullopt;
    Lettore lettore(rtf);
    lettore.contenuto.testo.reserve(rtf.size());
    lettore.Leggi();
    return std::move(lettore.contenuto);
}

std::optional<Rtf::Contenuto> Rtf::LeggiRighe(QStringView righe)
{
    const QString testata = Testata();
    Lettore lettore(testata);
    lettore.Leggi();
    if (!lettore.LeggiAncora(righe))
        return std::nullopt;
    return std::move(lettore.contenuto);
}
