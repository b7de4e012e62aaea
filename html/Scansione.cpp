#include "html/Scansione.h"

#include "html/ModuloTag.h"

namespace ModuloVerificaSintassi
{
namespace
{

void TrovaNome(Tag &tag)
{
    // One pass for the usual short name; what it needs to know of the slashes comes with it.
    QStringView nome = tag.testo;
    qsizetype barre = 0;
    for (qsizetype i = 0; i < nome.size(); ++i) {
        if (nome[i] == u' ' || nome[i] == u'\r') {
            nome.truncate(i);
            break;
        }
        barre += nome[i] == u'/';
    }
    if (barre > 0 && nome.front() == u'/') {
        nome = nome.sliced(1);
        --barre;
    }
    if (barre > 0 && nome.back() == u'/') {
        nome.chop(1);
        --barre;
    }
    if (barre > 0) {
        tag.senzaBarre = nome.toString().remove(u'/');
        nome = tag.senzaBarre;
    }
    tag.nome = nome;
}

bool Uguali(QStringView testo, QStringView altro)
{
    return testo.size() == altro.size() && testo.compare(altro, Qt::CaseInsensitive) == 0;
}

/// Line numbers of growing positions: each unit of the text is looked at once, and only when somebody asks.
class ContaRighe
{
public:
    ContaRighe(QStringView testo, qsizetype riga) : m_testo(testo), m_riga(riga) {}

    void Avanza(qsizetype fino)
    {
        const qsizetype dopo = m_testo.size() - 1;
        const char16_t *unita = m_testo.utf16();
        qsizetype fini = 0;
        const qsizetype fine = std::min(fino, dopo);
        for (qsizetype i = m_fin; i < fine; ++i)
            fini += unita[i] == u'\n' || (unita[i] == u'\r' && unita[i + 1] != u'\n');
        if (fino > dopo && m_fin <= dopo)
            fini += unita[dopo] == u'\n' || unita[dopo] == u'\r';
        if (fini > 0) {
            m_riga += fini;
            m_inizioRiga = fino;
            while (unita[m_inizioRiga - 1] != u'\n' && unita[m_inizioRiga - 1] != u'\r')
                --m_inizioRiga;
        }
        m_fin = std::max(m_fin, fino);
    }
    [[nodiscard]] qsizetype Riga() const { return m_riga; }
    [[nodiscard]] qsizetype InizioRiga() const { return m_inizioRiga; }

private:
    QStringView m_testo;
    qsizetype m_riga;
    qsizetype m_inizioRiga = 0;
    qsizetype m_fin = 0; ///< counted up to here
};

class Percorso
{
public:
    Percorso(QStringView testo, const Partenza &partenza, Ricevitore &ricevitore)
        : m_testo(testo), m_scarto(partenza.scarto), m_righe(testo, partenza.riga), m_ricevitore(ricevitore),
          m_dopo(std::max<qsizetype>(0, partenza.primaFine - partenza.scarto))
    {
    }

    bool Cammina()
    {
        for (;;) {
            const Tag tag = ProssimoTag(m_testo, m_dopo);
            if (tag.inizio < 1)
                return true;
            m_dopo = tag.fine;
            if (!m_ricevitore.Prosegui(m_scarto + tag.fine))
                return false;
            EsaminaTag(tag);
        }
    }

private:
    void EsaminaTag(const Tag &tag)
    {
        if (tag.nome.isEmpty())
            return;
        const bool chiudeScript = Uguali(tag.testo, u"/SCRIPT");
        if (chiudeScript)
            m_script = false;
        const QChar primo = tag.nome.front();
        if (primo != u'!' && primo != u'?' && primo != u'%' && !m_script)
            ControllaTag(tag);
        else if (tag.nome.startsWith(u"!--"))
            m_ricevitore.Segna(Segno::Commento, m_scarto + tag.inizio - 1, tag.testo.size() + 1);
        if (!chiudeScript && Uguali(tag.nome, u"SCRIPT"))
            m_script = true;
    }

    void ControllaTag(const Tag &tag)
    {
        const qsizetype dove = m_scarto + tag.inizio;
        const bool noto = ModuloTag::CasellaTag(tag.nome) >= 1;
        m_ricevitore.Segna(noto ? Segno::Tag : Segno::Errore, dove, tag.nome.size() + 1);
        if (!noto)
            Trova(TagSconosciuto, tag.inizio, tag.inizio, tag.nome);
        else if (tag.testo.size() != tag.nome.size())
            ControllaAttributi(tag);
    }

    void ControllaAttributi(const Tag &tag)
    {
        qsizetype bianco = 1;
        qsizetype noto = 0;
        m_inizioErrore = m_fineErrore = -1;
        for (qsizetype p = 2;;) {
            const qsizetype uguale = tag.testo.indexOf(u'=', p - 1) + 1;
            if (uguale < 1)
                return;
            bianco = InizioAttributo(tag.testo, uguale, noto, bianco);
            noto = uguale;
            const QStringView nome = tag.testo.sliced(bianco, std::max<qsizetype>(0, uguale - 1 - bianco));
            const bool esente = AttributoEsente(nome);
            if (!esente)
                ControllaAttributo(tag, nome, bianco, uguale);
            const qsizetype fine = FineValore(tag.testo, uguale);
            if (!esente && fine > uguale)
                ControllaValore(tag, nome, uguale, fine);
            p = fine >= 1 ? fine : uguale + 1;
        }
    }

    void ControllaAttributo(const Tag &tag, QStringView nome, qsizetype bianco, qsizetype uguale)
    {
        const QStringView cercato = nome.endsWith(u'"') ? nome.chopped(1) : nome;
        if (ModuloTag::VerificaAttributo(tag.nome, cercato) == 1) {
            m_inizioErrore = -1;
            m_ricevitore.Segna(Segno::Attributo, m_scarto + tag.inizio + bianco, cercato.size());
            return;
        }
        // Without white space between attributes each name holds all those before it. What is marked stays marked, so
        // that a tag full of them costs no more than its length.
        const qsizetype fine = bianco + cercato.size();
        const qsizetype da = m_inizioErrore == bianco ? std::min(m_fineErrore, fine) : bianco;
        m_inizioErrore = bianco;
        m_fineErrore = fine;
        m_ricevitore.Segna(Segno::Errore, m_scarto + tag.inizio + da, fine - da);
        Trova(AttributoErrato, tag.inizio + bianco, tag.inizio + uguale, nome);
    }

    void ControllaValore(const Tag &tag, QStringView attributo, qsizetype uguale, qsizetype fine)
    {
        QStringView valore = tag.testo.sliced(uguale, fine - uguale - 1);
        qsizetype dove = uguale;
        if (valore.startsWith(u'"') || valore.startsWith(u'\'')) {
            valore = valore.sliced(1).chopped(1);
            ++dove;
        } else if (!valore.isEmpty() && (Bianco(valore.back()) || valore.back() == u'<')) {
            valore.chop(1);
        }
        if (valore.isEmpty() || attributo.isEmpty())
            return;
        const bool ammesso = ModuloTag::VerificaValore(tag.nome, attributo, valore) == 1;
        m_ricevitore.Segna(ammesso ? Segno::Valore : Segno::Errore, m_scarto + tag.inizio + dove, valore.size());
        if (!ammesso)
            Trova(ValoreErrato, tag.inizio + uguale, tag.inizio + uguale, valore);
    }

    /// \a posizione and \a finDove are caret positions of the text on one line; the second never goes back.
    void Trova(TipoRisultato tipo, qsizetype posizione, qsizetype finDove, QStringView nome)
    {
        m_righe.Avanza(finDove);
        m_ricevitore.Trova({m_scarto + posizione, m_righe.Riga(), posizione - m_righe.InizioRiga() + 1, tipo, nome});
    }

    QStringView m_testo;
    qsizetype m_scarto;
    ContaRighe m_righe;
    Ricevitore &m_ricevitore;
    qsizetype m_dopo;
    bool m_script = false;
    qsizetype m_inizioErrore = -1; ///< attribute of this tag that was marked last, as indices of the tag's text
    qsizetype m_fineErrore = -1;
};

} // namespace

Tag ProssimoTag(QStringView pagina, qsizetype dopo)
{
    Tag tag;
    if (dopo >= pagina.size())
        return tag;
    tag.inizio = pagina.indexOf(u'<', std::max<qsizetype>(0, dopo)) + 1;
    if (tag.inizio < 1)
        return tag;
    const qsizetype chiusura = pagina.indexOf(u'>', tag.inizio);
    // A "<" that is never closed takes the rest of the page, so that the page gets its colours while it is typed; the
    // page's last character stands for the ">".
    tag.fine = chiusura < 0 ? pagina.size() : chiusura + 1;
    if (tag.fine - tag.inizio - 1 > 0) {
        tag.testo = pagina.sliced(tag.inizio, tag.fine - tag.inizio - 1);
        TrovaNome(tag);
    }
    return tag;
}

qsizetype InizioAttributo(QStringView testoTag, qsizetype uguale, qsizetype noto, qsizetype prima)
{
    for (qsizetype i = std::min(uguale, testoTag.size()); i > noto; --i) {
        if (Bianco(testoTag[i - 1]))
            return i;
    }
    return prima;
}

qsizetype FineValore(QStringView testoTag, qsizetype uguale)
{
    const qsizetype lunghezza = testoTag.size();
    if (uguale >= lunghezza)
        return lunghezza + 1;
    const QChar primo = testoTag[uguale];
    if (primo == u'"' || primo == u'\'') {
        const qsizetype chiusura = testoTag.indexOf(primo, uguale + 1);
        return chiusura < 0 ? 0 : chiusura + 2;
    }
    for (qsizetype i = uguale; i < lunghezza; ++i) {
        const QChar c = testoTag[i];
        if (Bianco(c) || c == u'>' || c == u'<' || c == u'"' || c == u'\'')
            return i + 2;
    }
    return lunghezza + 1;
}

bool AttributoEsente(QStringView nome)
{
    return nome.startsWith(u"xmlns") || nome.startsWith(u"xml:") || Uguali(nome, u"SRC") || Uguali(nome, u"HREF");
}

bool Scandisci(QStringView testo, const Partenza &partenza, Ricevitore &ricevitore)
{
    return Percorso(testo, partenza, ricevitore).Cammina();
}

} // namespace ModuloVerificaSintassi
