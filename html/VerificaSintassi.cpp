#include "html/VerificaSintassi.h"

#include "html/Avanzamento.h"
#include "html/ColoraBattuta.h"
#include "html/FrmControlloSintassi.h"
#include "html/PausaControllo.h"
#include "html/Risultati.h"
#include "html/SeguitoPagina.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "platform/RichTextBox.h"

#include <QPointer>

#include <memory>
#include <utility>

namespace ModuloVerificaSintassi
{
namespace
{

CreaAvanzamento &Creatore()
{
    static CreaAvanzamento crea;
    return crea;
}

DopoVerifica &Ascoltatore()
{
    static DopoVerifica dopo;
    return dopo;
}

/// Says to the whole program that a check works.
class ControlloAttivo
{
public:
    ControlloAttivo() { ModuloDichiarazioni::Stato().ControlloInCorso = true; }
    ~ControlloAttivo() { ModuloDichiarazioni::Stato().ControlloInCorso = false; }
    Q_DISABLE_COPY_MOVE(ControlloAttivo)
};

/// Puts what a walk finds into the control and into the findings.
class Coloritore : public Ricevitore
{
public:
    explicit Coloritore(RichTextBox &editor) : m_editor(editor) {}

    void Segna(Segno segno, qsizetype da, qsizetype quanti) override
    {
        m_editor.Colora(int(da), int(quanti), ColoraTesto::ColoreDi(segno));
        if (segno == Segno::Errore)
            m_editor.Sottolinea(int(da), int(quanti), true);
    }

    void Trova(const Riscontro &riscontro) override { (void)RegistroPagina().Aggiungi(riscontro); }

private:
    RichTextBox &m_editor;
};

/// The same for a whole page: marks of faults that are none any more go as the walk passes them.
class ColoritorePagina : public Coloritore
{
public:
    /// \a pausa may be null: no events.
    ColoritorePagina(RichTextBox &editor, PausaControllo *pausa) : Coloritore(editor), m_editor(editor), m_pausa(pausa)
    {
    }

    bool Prosegui(qsizetype fine) override
    {
        if (m_pausa && fine % 100 == 0 && !m_pausa->Passa(fine))
            return false;
        Pulisci(fine);
        return true;
    }

    void Trova(const Riscontro &riscontro) override
    {
        Coloritore::Trova(riscontro);
        m_falli.push_back(ElencoRisultati::Da(riscontro));
    }

    /// The walk has come as far as \a fino.
    void Pulisci(qsizetype fino)
    {
        m_editor.Sottolinea(int(m_passati), int(fino - m_passati), false);
        m_passati = fino;
    }

    [[nodiscard]] qsizetype Passati() const { return m_passati; }
    [[nodiscard]] ElencoRisultati::Falli &&Falli() { return std::move(m_falli); }

private:
    RichTextBox &m_editor;
    PausaControllo *m_pausa;
    ElencoRisultati::Falli m_falli;
    qsizetype m_passati = 0; ///< units of the page
};

/// How far a walk has come and what it has found.
struct Cammino {
    bool finito = false;
    qsizetype passati = 0; ///< units of the page
    ElencoRisultati::Falli falli;
};

Cammino Cammina(RichTextBox &editor, int primaFine, bool mostraAvanzamento)
{
    const QString testo = editor.Text();
    std::unique_ptr<Avanzamento> avanzamento;
    std::optional<PausaControllo> pausa;
    if (mostraAvanzamento) {
        if (Creatore())
            avanzamento = Creatore()(ModuloPrincipale::Messaggio(85), testo.size());
        pausa.emplace(editor, avanzamento.get());
    }
    ColoritorePagina coloritore(editor, pausa ? &*pausa : nullptr);
    const bool finito = (!pausa || pausa->Passa(0)) && Scandisci(testo, {.primaFine = primaFine}, coloritore);
    if (finito)
        coloritore.Pulisci(testo.size());
    return {finito, coloritore.Passati(), coloritore.Falli()};
}

} // namespace

void ImpostaAvanzamento(CreaAvanzamento crea)
{
    Creatore() = std::move(crea);
}

void ImpostaDopoVerifica(DopoVerifica dopo)
{
    Ascoltatore() = std::move(dopo);
}

void VerificaSintassi(RichTextBox &editor, int primaFine, bool mostraAvanzamento)
{
    if (ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    if (FrmControlloSintassi *finestra = FrmControlloSintassi::Aperta())
        finestra->Seguito(editor).Prepara();
    Cammino cammino;
    {
        const ControlloAttivo attivo;
        const QPointer<RichTextBox> vivo(&editor);
        cammino = Cammina(editor, primaFine, mostraAvanzamento);
        if (!vivo)
            return;
        if (editor.isVisible())
            editor.setFocus();
    }
    int falli = int(cammino.falli.size());
    if (FrmControlloSintassi *finestra = FrmControlloSintassi::Aperta()) {
        finestra->Seguito(editor).Concludi(std::move(cammino.falli), cammino.passati);
        falli = finestra->ListCount();
    }
    if (Ascoltatore())
        Ascoltatore()(cammino.finito, falli);
}

void VerificaFrammento(RichTextBox &editor, int da, int quanti, int primaFine)
{
    if (ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    {
        const ControlloAttivo attivo;
        const QString testo = editor.Parte(da, quanti);
        editor.Sottolinea(da, quanti - 1, false); // what stands there was marked before; the last unit is not the tag's
        Coloritore coloritore(editor);
        Scandisci(testo, {.primaFine = primaFine, .scarto = da, .riga = editor.GetLineFromChar(da) + 1}, coloritore);
        if (editor.isVisible())
            editor.setFocus();
    }
    if (FrmControlloSintassi *finestra = FrmControlloSintassi::Aperta())
        finestra->Seguito(editor).Controllata(da, quanti);
    AggiornaElencoErrori(editor);
}

void AggiornaElencoErrori(const RichTextBox &editor)
{
    if (FrmControlloSintassi *finestra = FrmControlloSintassi::Aperta())
        finestra->Seguito(editor).Aggiorna();
}

} // namespace ModuloVerificaSintassi
