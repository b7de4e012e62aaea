#include "html/IndiceTag.h"

#include "html/ModuloTag.h"

#include <QHash>

#include <algorithm>
#include <bit>
#include <utility>

namespace ModuloTag
{
namespace
{

constexpr quint8 Bene = 1;
constexpr quint8 Sconosciuto = 2;
constexpr quint8 Altrove = 3;

[[nodiscard]] constexpr quint64 Chiave(int a, int b)
{
    return quint64(quint32(a)) << 32 | quint32(b);
}

/// Upper-cases and numbers strings. The loader lets equal strings share their text, and then the text's address is
/// enough to know one again; it stays valid as long as the table does.
class Numeratore
{
public:
    explicit Numeratore(TabellaParole &parole) : m_parole(parole) {}
    int operator()(const QString &testo)
    {
        const auto noto = m_noti.constFind(testo.constData());
        if (noto != m_noti.cend())
            return *noto;
        return m_noti.insert(testo.constData(), m_parole.Aggiungi(testo.toUpper())).value();
    }

private:
    TabellaParole &m_parole;
    QHash<const void *, int> m_noti;
};

} // namespace

IndiceTag::IndiceTag(const QList<DatiTag> &tabella)
{
    Numeratore attributo(m_attributi), valore(m_valori);
    qsizetype proprieta = 0, valori = 0;
    for (const DatiTag &tag : tabella) {
        proprieta += tag.Proprieta.size();
        for (const DatiProprieta &p : tag.Proprieta)
            valori += p.Valori.size();
    }
    m_proprieta.Allarga(size_t(proprieta));
    m_ammessi.Allarga(size_t(valori));
    m_liberi.reserve(size_t(proprieta));
    for (qsizetype t = 1; t < tabella.size(); ++t) {
        const DatiTag &tag = tabella[t];
        QString nome = tag.Tag;
        // In a table that is out of order the search misses some names; the index then must miss them, too.
        if (const qsizetype casella = CercaTag(tabella, nome); casella >= 1) {
            if (size_t(m_tag.Aggiungi(nome)) == m_caselle.size())
                m_caselle.push_back(int(casella));
        }
        for (qsizetype p = 1; p < tag.Proprieta.size(); ++p) {
            const DatiProprieta &proprieta = tag.Proprieta[p];
            const int coppia = m_proprieta.Aggiungi(int(t), attributo(proprieta.Property));
            if (size_t(coppia) == m_liberi.size())
                m_liberi.push_back(false);
            if (proprieta.Valori.isEmpty())
                m_liberi[size_t(coppia)] = true;
            for (qsizetype v = 1; v < proprieta.Valori.size(); ++v)
                m_ammessi.Aggiungi(coppia, valore(proprieta.Valori[v]));
        }
    }
}

int IndiceTag::Tag(QStringView nome) const
{
    const int numero = m_tag.Cerca(nome);
    return numero == TabellaParole::Assente ? 0 : m_caselle[size_t(numero)];
}

quint8 IndiceTag::VerificaAttributo(QStringView tag, QStringView attributo) const
{
    const int casella = Tag(tag);
    const int numero = casella < 1 ? TabellaParole::Assente : m_attributi.Cerca(attributo);
    if (numero == TabellaParole::Assente)
        return Sconosciuto;
    return m_proprieta.Cerca(casella, numero) != Coppie::Assente ? Bene : Altrove;
}

quint8 IndiceTag::VerificaValore(QStringView tag, QStringView attributo, QStringView valore) const
{
    const int casella = Tag(tag);
    const int numero = casella < 1 ? TabellaParole::Assente : m_attributi.Cerca(attributo);
    if (numero == TabellaParole::Assente)
        return Sconosciuto;
    const int coppia = m_proprieta.Cerca(casella, numero);
    if (coppia == Coppie::Assente)
        return Altrove;
    if (m_liberi[size_t(coppia)])
        return Bene;
    const int voce = m_valori.Cerca(valore);
    return voce != TabellaParole::Assente && m_ammessi.Cerca(coppia, voce) != Coppie::Assente ? Bene : Altrove;
}

int IndiceTag::Coppie::Aggiungi(int a, int b)
{
    if (m_posti.size() < (size_t(m_quante) + 1) * 2)
        Allarga(size_t(m_quante) + 1);
    const quint64 chiave = Chiave(a, b);
    size_t posto = PrimoPosto(chiave);
    while (m_posti[posto].numero != Assente) {
        if (m_posti[posto].chiave == chiave)
            return m_posti[posto].numero;
        posto = (posto + 1) & (m_posti.size() - 1);
    }
    m_posti[posto] = {chiave, m_quante};
    return m_quante++;
}

int IndiceTag::Coppie::Cerca(int a, int b) const
{
    if (m_posti.empty())
        return Assente;
    const quint64 chiave = Chiave(a, b);
    for (size_t posto = PrimoPosto(chiave);; posto = (posto + 1) & (m_posti.size() - 1)) {
        if (m_posti[posto].numero == Assente || m_posti[posto].chiave == chiave)
            return m_posti[posto].numero;
    }
}

size_t IndiceTag::Coppie::PrimoPosto(quint64 chiave) const
{
    return size_t((chiave * 0x9e3779b97f4a7c15u) >> 32) & (m_posti.size() - 1);
}

void IndiceTag::Coppie::Allarga(size_t coppie)
{
    const std::vector<Posto> vecchi =
        std::exchange(m_posti, std::vector<Posto>(std::bit_ceil(std::max<size_t>(32, coppie) * 2)));
    for (const Posto &p : vecchi) {
        if (p.numero == Assente)
            continue;
        size_t posto = PrimoPosto(p.chiave);
        while (m_posti[posto].numero != Assente)
            posto = (posto + 1) & (m_posti.size() - 1);
        m_posti[posto] = p;
    }
}

} // namespace ModuloTag
