#include "dialogs/CicloAnteprima.h"

#include <utility>

CicloAnteprima::Azione CicloAnteprima::Richiesta()
{
    if (m_inCorso) {
        m_ancora = true;
        return Azione::Niente;
    }
    m_inCorso = true;
    m_riprovata = false;
    return Azione::Naviga;
}

CicloAnteprima::Azione CicloAnteprima::Finita()
{
    return m_inCorso ? Concludi() : Azione::Niente;
}

CicloAnteprima::Azione CicloAnteprima::Lenta()
{
    return m_inCorso ? Concludi() : Azione::Niente;
}

CicloAnteprima::Azione CicloAnteprima::Muta()
{
    if (!m_inCorso)
        return Azione::Niente;
    if (std::exchange(m_ancora, false) || !std::exchange(m_riprovata, true))
        return Azione::Rinnova;
    m_inCorso = false;
    return Azione::Rinuncia;
}

CicloAnteprima::Azione CicloAnteprima::Concludi()
{
    m_riprovata = false;
    m_inCorso = std::exchange(m_ancora, false);
    return m_inCorso ? Azione::Naviga : Azione::Niente;
}
