#include "html/Portati.h"

#include "platform/RichTextBox.h"

#include <algorithm>

namespace
{

constexpr size_t PezziTenuti = 512;

} // namespace

Portati &Portati::Di(RichTextBox *editor)
{
    for (QObject *figlio : editor->children()) {
        if (auto *portati = dynamic_cast<Portati *>(figlio))
            return *portati;
    }
    return *new Portati(editor);
}

Portati::Portati(RichTextBox *editor) : QObject(editor), m_editor(editor)
{
    connect(editor, &RichTextBox::TestoCambiato, this, &Portati::Segui);
}

void Portati::Metti(Genere genere, const QString &testo, int origine)
{
    const int da = m_editor->SelStart();
    m_editor->ImpostaSelText(testo);
    m_editor->ImpostaSelStart(da);
    Ricorda({genere, da, testo, origine});
}

void Portati::Ricorda(const Pezzo &pezzo)
{
    if (m_pezzi.size() >= PezziTenuti)
        m_pezzi.erase(m_pezzi.begin());
    m_pezzi.push_back(pezzo);
}

const Portati::Pezzo *Portati::CheComincia(Genere genere, int da) const
{
    const auto trovato =
        std::find_if(m_pezzi.begin(), m_pezzi.end(), [=](const Pezzo &p) { return p.genere == genere && p.da == da; });
    return trovato == m_pezzi.end() ? nullptr : &*trovato;
}

const Portati::Pezzo *Portati::CheFinisce(Genere genere, int fine) const
{
    const auto trovato = std::find_if(m_pezzi.begin(), m_pezzi.end(),
                                      [=](const Pezzo &p) { return p.genere == genere && p.Fine() == fine; });
    return trovato == m_pezzi.end() ? nullptr : &*trovato;
}

const Portati::Pezzo *Portati::FineTagDi(QStringView nome) const
{
    const auto trovato = std::find_if(m_pezzi.rbegin(), m_pezzi.rend(), [nome](const Pezzo &p) {
        return p.genere == Genere::FineTag &&
               QStringView(p.testo).sliced(2).chopped(1).compare(nome, Qt::CaseInsensitive) == 0;
    });
    return trovato == m_pezzi.rend() ? nullptr : &*trovato;
}

void Portati::Dimentica(Genere genere, int da)
{
    std::erase_if(m_pezzi, [=](const Pezzo &p) { return p.genere == genere && p.da == da; });
}

bool Portati::Togli(Genere genere, int da)
{
    const Pezzo *pezzo = CheComincia(genere, da);
    if (!pezzo)
        return false;
    const int caretto = m_editor->SelStart();
    const int quanti = int(pezzo->testo.size());
    m_editor->Sostituisci(da, quanti, QString());
    m_editor->ImpostaSelStart(caretto > da ? std::max(da, caretto - quanti) : caretto);
    return true;
}

void Portati::Segui(int da, int tolti, int aggiunti)
{
    const int scarto = aggiunti - tolti;
    std::erase_if(m_pezzi, [&](Pezzo &pezzo) {
        if (pezzo.origine >= da + tolti)
            pezzo.origine += scarto;
        else if (pezzo.origine > da)
            pezzo.origine = da;
        if (da >= pezzo.Fine())
            return false;
        if (da + tolti <= pezzo.da) {
            pezzo.da += scarto;
            return false;
        }
        // Undo puts whole lines back: what stands there again, as far from their end as before, is the same piece.
        const int ora = pezzo.da + scarto;
        const bool intero = pezzo.da >= da && pezzo.Fine() <= da + tolti && ora >= da;
        if (!intero || m_editor->Parte(ora, int(pezzo.testo.size())) != pezzo.testo)
            return true;
        pezzo.da = ora;
        return false;
    });
}
