// The control's looks: one byte per character beside the text; Qt sees those of the visible blocks only.

#include "platform/RichTextBox.h"

#include "platform/Disposizione.h"

#include <QResizeEvent>
#include <QTextBlock>

#include <algorithm>
#include <array>

namespace
{

constexpr int RigheSingole = 8; ///< changes of looks whose lines are asked for one by one before all are

/// As it was laid out; 0 when it was not yet.
qreal AltezzaRiga(const QTextBlock &blocco)
{
    return blocco.layout()->lineCount() > 0 ? blocco.layout()->lineAt(0).height() : 0;
}

} // namespace

template <typename Cambia>
void RichTextBox::CambiaAspetti(int da, int quanti, Cambia cambia)
{
    const int inizio = Limita(da);
    const int fine = Limita(int(std::min<qsizetype>(qsizetype(inizio) + std::max(0, quanti), Lunghezza())));
    if (fine <= inizio)
        return;
    int primo = fine; // what is as it is asked for counts as untouched
    int ultimo = inizio;
    for (int i = inizio; i < fine;) {
        const quint8 vecchio = m_aspetti.at(i);
        int j = i + 1;
        while (j < fine && m_aspetti.at(j) == vecchio)
            ++j;
        Aspetto aspetto = m_tabella[vecchio];
        cambia(aspetto);
        if (const quint8 nuovo = m_tabella.Indice(aspetto); nuovo != vecchio) {
            m_aspetti.fill(i, j - i, nuovo);
            primo = std::min(primo, i);
            ultimo = j;
        }
        i = j;
    }
    if (primo < ultimo)
        AspettiCambiati(primo, ultimo - primo);
}

void RichTextBox::Colora(int da, int quanti, ColoreBgr colore)
{
    CambiaAspetti(da, quanti, [colore](Aspetto &aspetto) { aspetto.colore = colore; });
}

void RichTextBox::Sottolinea(int da, int quanti, bool onda)
{
    CambiaAspetti(da, quanti, [onda](Aspetto &aspetto) { aspetto.onda = onda; });
}

void RichTextBox::ImpostaAspetto(int da, int quanti, const Aspetto &aspetto)
{
    const int inizio = Limita(da);
    const int fine = Limita(int(std::min<qsizetype>(qsizetype(inizio) + std::max(0, quanti), Lunghezza())));
    if (fine <= inizio)
        return;
    m_aspetti.fill(inizio, fine - inizio, m_tabella.Indice(aspetto));
    AspettiCambiati(inizio, fine - inizio);
}

void RichTextBox::AspettiCambiati(int da, int quanti)
{
    SegnaRtf(da, Lunghezza() - da - quanti);
    if (m_ridisegnoChiesto || (m_righeChieste++ < RigheSingole && RidisegnaRiga(da, quanti)))
        return;
    m_ridisegnoChiesto = true;
    viewport()->update();
}

// A letter that gets its colour is one line of the view; all of them cost ten times as much.
bool RichTextBox::RidisegnaRiga(int da, int quanti)
{
    const QTextBlock blocco = document()->findBlock(InDocumento(da));
    if (da + quanti > InizioBlocco(blocco) + blocco.length())
        return false;
    const int riga = blocco.blockNumber() - firstVisibleBlock().blockNumber();
    if (riga >= 0 && riga <= RigheInVista()) {
        const QRectF area = blockBoundingGeometry(blocco).translated(contentOffset());
        viewport()->update(QRect(0, int(area.top()) - 1, viewport()->width(), int(area.height()) + 3));
    }
    return true;
}

int RichTextBox::RigheInVista() const
{
    return viewport()->height() / std::max(1, fontMetrics().height()) + 2;
}

quint8 RichTextBox::AspettoBattitura(int posizione) const
{
    if (m_battitura && m_battitura->first == posizione)
        return const_cast<TabellaAspetti &>(m_tabella).Indice(m_battitura->second);
    if (posizione == 0 || (m_ricomincia && m_ricomincia(posizione)))
        return 0;
    return m_aspetti.at(posizione - 1);
}

Aspetto RichTextBox::AspettoSelezione() const
{
    const int inizio = SelStart();
    return SelLength() > 0 ? m_tabella[m_aspetti.at(inizio)] : m_tabella[AspettoBattitura(inizio)];
}

template <typename Cambia>
void RichTextBox::CambiaSelezione(Cambia cambia)
{
    const int inizio = SelStart();
    if (const int quanti = SelLength(); quanti > 0) {
        CambiaAspetti(inizio, quanti, cambia);
    } else {
        Aspetto aspetto = m_tabella[AspettoBattitura(inizio)];
        cambia(aspetto);
        m_battitura.emplace(inizio, aspetto);
    }
}

void RichTextBox::ImpostaSelColor(ColoreBgr colore)
{
    CambiaSelezione([colore](Aspetto &aspetto) { aspetto.colore = colore; });
}

void RichTextBox::ImpostaSelBold(bool grassetto)
{
    CambiaSelezione([grassetto](Aspetto &aspetto) { aspetto.grassetto = grassetto; });
}

void RichTextBox::ImpostaSelItalic(bool corsivo)
{
    CambiaSelezione([corsivo](Aspetto &aspetto) { aspetto.corsivo = corsivo; });
}

// What a block's looks amount to, small enough to be kept as the block's own state: comparing it costs no formats.
int RichTextBox::ImprontaAspetti(const QTextBlock &blocco) const
{
    const int inizio = InizioBlocco(blocco);
    const int fine = inizio + blocco.length() - 1;
    quint32 impronta = 2166136261u;
    for (int i = inizio; i < fine;) {
        const quint8 aspetto = m_aspetti.at(i);
        int j = i + 1;
        while (j < fine && m_aspetti.at(j) == aspetto)
            ++j;
        impronta = ((impronta ^ quint32(j - i)) * 16777619u ^ aspetto) * 16777619u;
        i = j;
    }
    return int(impronta >> 1);
}

QList<QTextLayout::FormatRange> RichTextBox::Formati(const QTextBlock &blocco) const
{
    QList<QTextLayout::FormatRange> formati;
    const int inizio = InizioBlocco(blocco);
    const int lunghezza = blocco.length() - 1;
    for (int i = 0; i < lunghezza;) {
        const quint8 aspetto = m_aspetti.at(inizio + i);
        int j = i + 1;
        while (j < lunghezza && m_aspetti.at(inizio + j) == aspetto)
            ++j;
        if (aspetto != 0)
            formati.append({i, j - i, m_formati[aspetto]});
        i = j;
    }
    return formati;
}

void RichTextBox::AggiornaBlocchiVisibili()
{
    while (int(m_formati.size()) < m_tabella.Quanti()) {
        const Aspetto &aspetto = m_tabella[quint8(m_formati.size())];
        QTextCharFormat formato;
        formato.setForeground(ColoreQt(aspetto.colore));
        if (aspetto.grassetto)
            formato.setFontWeight(QFont::Bold);
        if (aspetto.corsivo)
            formato.setFontItalic(true);
        if (aspetto.onda) {
            formato.setUnderlineStyle(QTextCharFormat::WaveUnderline);
            formato.setUnderlineColor(QColor(240, 86, 53));
        }
        m_formati.push_back(formato);
    }
    QTextBlock blocco = firstVisibleBlock();
    m_disposizione->Trattieni(blocco.blockNumber(), blocco.blockNumber() + RigheInVista());
    qreal cima = blockBoundingGeometry(blocco).translated(contentOffset()).top();
    while (blocco.isValid() && cima < viewport()->height()) {
        // A block in which an input method composes carries formats of its own until the text is committed.
        if (blocco.layout()->preeditAreaText().isEmpty()) {
            const int impronta = ImprontaAspetti(blocco);
            if (blocco.userState() != impronta) {
                blocco.setUserState(impronta);
                const QList<QTextLayout::FormatRange> formati = Formati(blocco);
                if (blocco.layout()->formats() != formati) {
                    const qreal altezza = AltezzaRiga(blocco);
                    m_disposizione->ImpostaFormati(blocco, formati);
                    // A bold letter of a higher font moves the lines below.
                    (void)blockBoundingRect(blocco);
                    if (altezza > 0 && AltezzaRiga(blocco) != altezza)
                        viewport()->update();
                }
            }
        }
        cima += blockBoundingRect(blocco).height();
        blocco = blocco.next();
    }
}

void RichTextBox::paintEvent(QPaintEvent *evento)
{
    m_ridisegnoChiesto = false;
    m_righeChieste = 0;
    AggiornaBlocchiVisibili();
    QPlainTextEdit::paintEvent(evento);
}

// To Qt the width stays the same: for a new one it would lay out every line, though none wraps (see Disposizione).
void RichTextBox::resizeEvent(QResizeEvent *evento)
{
    QResizeEvent inAltezza(evento->size(), {evento->size().width(), evento->oldSize().height()});
    QPlainTextEdit::resizeEvent(&inAltezza);
}
