#include "html/IndiceGrezzi.h"

#include "html/IndiceCommenti.h"
#include "html/Scansione.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int LunghezzaSegno = 11; ///< "</textarea" and what ends the name
constexpr int SegniGuardati = 64;
constexpr int TagLetto = 4096; ///< units of a start tag that are looked at for its end
constexpr QStringView Nomi[] = {u"script", u"style", u"textarea"};

/// Whether \a resto, which begins behind a "<" or "</", names one of the elements whose content is no HTML.
bool NomeGrezzo(QStringView resto)
{
    for (const QStringView nome : Nomi) {
        if (!resto.startsWith(nome, Qt::CaseInsensitive))
            continue;
        const QChar dopo = resto.size() > nome.size() ? resto[nome.size()] : u' ';
        // "<" follows an end tag that is being typed in front of another.
        return dopo == u'>' || dopo == u'/' || dopo == u'<' || ModuloVerificaSintassi::Bianco(dopo);
    }
    return false;
}

bool Servente(QChar c)
{
    return c == u'?' || c == u'%';
}

bool Segno(QStringView testo)
{
    if (testo.size() < 2)
        return false;
    if (testo.front() != u'<')
        return Servente(testo.front()) && testo[1] == u'>';
    return Servente(testo[1]) || NomeGrezzo(testo.sliced(testo[1] == u'/' ? 2 : 1));
}

void CercaSegni(QStringView testo, qsizetype a, const std::function<void(qsizetype)> &segno)
{
    for (qsizetype i = 0; i < a; ++i) {
        const QChar c = testo[i];
        if ((c == u'<' || Servente(c)) && Segno(testo.sliced(i)))
            segno(i);
    }
}

} // namespace

IndiceGrezzi &IndiceGrezzi::Di(RichTextBox *editor)
{
    for (QObject *figlio : editor->children()) {
        if (auto *indice = dynamic_cast<IndiceGrezzi *>(figlio))
            return *indice;
    }
    return *new IndiceGrezzi(editor);
}

IndiceGrezzi::IndiceGrezzi(RichTextBox *editor) : IndiceSegni(editor, LunghezzaSegno, CercaSegni)
{
    (void)IndiceCommenti::Di(editor);
}

bool IndiceGrezzi::Contiene(int posizione) const
{
    const RichTextBox &editor = Editor();
    const IndiceCommenti &commenti = IndiceCommenti::Di(&const_cast<RichTextBox &>(editor));
    bool dopoServente = false; // a "?>" was met: what lies before it up to "<?" is passed over
    int segno = UltimoDa(posizione - 2);
    for (int quanti = 0; segno >= 0 && quanti < SegniGuardati; segno = UltimoDa(segno - 1), ++quanti) {
        const QString inizio = editor.Parte(segno, 2);
        if (inizio[0] != u'<') {
            dopoServente = true;
        } else if (Servente(inizio[1])) {
            if (!dopoServente)
                return !commenti.ApertoPrimaDi(segno);
            dopoServente = false;
        } else if (!dopoServente && inizio[1] == u'/') {
            return false;
        } else if (!dopoServente && !commenti.ApertoPrimaDi(segno)) {
            const QString tag = editor.Parte(segno, std::min(posizione - segno, TagLetto));
            const qsizetype fine = tag.indexOf(u'>');
            return fine > 0 && tag[fine - 1] != u'/';
        }
    }
    return false;
}
