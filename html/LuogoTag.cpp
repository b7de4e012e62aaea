#include "html/LuogoTag.h"

#include "html/Scansione.h"

using ModuloVerificaSintassi::Bianco;

namespace LetturaTag
{
namespace
{

constexpr int TagPrima = 8; ///< tags before the last one that may hold it in a quoted value

class Lettore
{
public:
    explicit Lettore(QStringView tratto) : m_tratto(tratto) {}

    Luogo Leggi()
    {
        if (!LeggiNome())
            return m_luogo;
        while (m_i < m_tratto.size() && m_luogo.InTag()) {
            const QChar c = m_tratto[m_i];
            if (c == u'>' || c == u'<')
                m_luogo.stato = Stato::Testo;
            else if (Bianco(c) || c == u'/')
                Avanza(Stato::Fuori);
            else
                LeggiAttributo();
        }
        return m_luogo;
    }

private:
    [[nodiscard]] bool Fine() const { return m_i >= m_tratto.size(); }
    void Avanza(Stato stato)
    {
        ++m_i;
        m_luogo.stato = stato;
    }
    template <typename Fermo>
    QStringView Fino(Fermo fermo)
    {
        const qsizetype da = m_i;
        while (!Fine() && !Bianco(m_tratto[m_i]) && !fermo(m_tratto[m_i]))
            ++m_i;
        return m_tratto.sliced(da, m_i - da);
    }

    /// False when the text ends here, or no tag begins.
    bool LeggiNome()
    {
        m_i = 1;
        if (!Fine() && m_tratto[m_i] == u'/') {
            m_luogo.chiusura = true;
            ++m_i;
        }
        if (!Fine() && !m_tratto[m_i].isLetter())
            return false;
        m_luogo.stato = Stato::Nome;
        m_luogo.nome = Fino([](QChar c) { return c == u'/' || c == u'>' || c == u'<'; }).toString();
        return !Fine();
    }

    void LeggiAttributo()
    {
        m_luogo.inizioNome = int(m_i);
        ++m_i; // also a stray "=" or quote
        (void)Fino([](QChar c) { return c == u'=' || c == u'/' || c == u'>' || c == u'<'; });
        m_luogo.attributo = m_tratto.sliced(m_luogo.inizioNome, m_i - m_luogo.inizioNome).toString();
        m_luogo.stato = Fine() ? Stato::Attributo : Stato::Fuori;
        qsizetype uguale = m_i;
        while (uguale < m_tratto.size() && Bianco(m_tratto[uguale]))
            ++uguale;
        if (uguale >= m_tratto.size() || m_tratto[uguale] != u'=')
            return;
        m_i = uguale;
        Avanza(Stato::Uguale);
        LeggiValore();
    }

    void LeggiValore()
    {
        while (!Fine() && Bianco(m_tratto[m_i]))
            ++m_i;
        if (Fine())
            return;
        const QChar primo = m_tratto[m_i];
        if (primo != u'"' && primo != u'\'') {
            m_luogo.inizioValore = int(m_i);
            (void)Fino([](QChar c) { return c == u'>' || c == u'<'; });
            m_luogo.stato = Fine() ? Stato::Valore : Stato::Fuori;
            return;
        }
        m_luogo.inizioValore = int(m_i) + 1;
        m_luogo.virgoletta = primo;
        const qsizetype chiusa = m_tratto.indexOf(primo, m_i + 1);
        m_luogo.stato = chiusa < 0 ? Stato::Virgolette : Stato::Fuori;
        m_i = chiusa < 0 ? m_tratto.size() : chiusa + 1;
    }

    QStringView m_tratto;
    qsizetype m_i = 0;
    Luogo m_luogo;
};

Luogo Spostato(Luogo luogo, qsizetype di)
{
    luogo.apertura += int(di);
    luogo.inizioNome += int(di);
    luogo.inizioValore += int(di);
    return luogo;
}

} // namespace

Luogo LeggiLuogo(QStringView tratto)
{
    return Lettore(tratto).Leggi();
}

Luogo LuogoInFondo(QStringView prima)
{
    Luogo ultimo;
    qsizetype p = prima.lastIndexOf(u'<');
    const qsizetype ultimaApertura = p;
    for (int quanti = 0; p >= 0 && quanti <= TagPrima; ++quanti) {
        Luogo luogo = Spostato(LeggiLuogo(prima.sliced(p)), p);
        if (quanti == 0)
            ultimo = luogo;
        else if (luogo.stato == Stato::Virgolette && luogo.inizioValore <= ultimaApertura)
            return luogo;
        p = p > 0 ? prima.lastIndexOf(u'<', p - 1) : -1;
    }
    return ultimo;
}

} // namespace LetturaTag
