#include "platform/Cercatore.h"

#include <algorithm>

namespace
{

constexpr char16_t Minuscola(char16_t unita)
{
    return unita >= u'A' && unita <= u'Z' ? char16_t(unita + 32) : unita;
}

} // namespace

Cercatore::Cercatore(QStringView testo, Qt::CaseSensitivity caso) : m_caso(caso), m_testo(testo.toString())
{
    for (qsizetype i = 0; i < testo.size(); ++i)
        m_testo[i] = QChar(Unita(testo, i));
    m_ripiego.resize(size_t(m_testo.size()));
    for (qsizetype i = 1, uguali = 0; i < m_testo.size(); ++i) {
        while (uguali > 0 && m_testo[i] != m_testo[uguali])
            uguali = m_ripiego[size_t(uguali) - 1];
        if (m_testo[i] == m_testo[uguali])
            ++uguali;
        m_ripiego[size_t(i)] = uguali;
    }
}

char16_t Cercatore::Unita(QStringView testo, qsizetype i) const
{
    const QChar c = testo[i];
    if (m_caso == Qt::CaseSensitive)
        return c.unicode();
    if (c.unicode() < 0x80)
        return Minuscola(c.unicode());
    if (!c.isSurrogate())
        return c.toCaseFolded().unicode();
    if (c.isHighSurrogate() && i + 1 < testo.size() && testo[i + 1].isLowSurrogate())
        return QChar::highSurrogate(QChar::toCaseFolded(QChar::surrogateToUcs4(c, testo[i + 1])));
    if (c.isLowSurrogate() && i > 0 && testo[i - 1].isHighSurrogate())
        return QChar::lowSurrogate(QChar::toCaseFolded(QChar::surrogateToUcs4(testo[i - 1], c)));
    return c.unicode();
}

qsizetype Cercatore::Prossimo(QStringView campo, qsizetype da) const
{
    const qsizetype lunghezza = m_testo.size();
    if (lunghezza == 0)
        return -1;
    const char16_t primo = m_testo.front().unicode();
    const char16_t *unitaDelCampo = campo.utf16();
    qsizetype uguali = 0;
    for (qsizetype i = std::max<qsizetype>(0, da); i < campo.size(); ++i) {
        if (uguali == 0 && m_caso == Qt::CaseSensitive) {
            i = campo.indexOf(m_testo.front(), i);
            if (i < 0)
                return -1;
        } else if (uguali == 0) {
            // Most of a page is ASCII that cannot be the first unit; the rest goes the long way.
            while (i < campo.size() && unitaDelCampo[i] < 0x80 && Minuscola(unitaDelCampo[i]) != primo)
                ++i;
            if (i == campo.size())
                return -1;
        }
        const char16_t unita = Unita(campo, i);
        while (uguali > 0 && unita != m_testo[uguali].unicode())
            uguali = m_ripiego[size_t(uguali) - 1];
        if (unita == m_testo[uguali].unicode())
            ++uguali;
        if (uguali == lunghezza)
            return i - lunghezza + 1;
    }
    return -1;
}
