#include "html/VerificaSintassi.h"

#include "html/Avanzamento.h"
#include "html/FrmControlloSintassi.h"
#include "html/PausaControllo.h"
#include "html/Risultati.h"
#include "html/SchemaColori.h"

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
    /// \a mantieni: colours leave underlines as they are. \a pausa may be null: no events.
    Coloritore(RichTextBox &editor, bool mantieni, PausaControllo *pausa)
        : m_editor(editor), m_mantieni(mantieni), m_pausa(pausa)
    {
    }

    bool Prosegui(qsizetype fine) override { return !m_pausa || fine % 100 != 0 || m_pausa->Passa(fine); }

    void Segna(Segno segno, qsizetype da, qsizetype quanti) override
    {
        m_editor.Colora(int(da), int(quanti), Colore(segno));
        if (segno == Segno::Errore)
            m_editor.Sottolinea(int(da), int(quanti), true);
        else if (segno != Segno::Commento && !m_mantieni)
            m_editor.Sottolinea(int(da), int(quanti) + 2, false);
    }

    void Trova(const Riscontro &riscontro) override { m_nuovi |= RegistroPagina().Aggiungi(riscontro); }

    [[nodiscard]] bool Nuovi() const { return m_nuovi; }

private:
    [[nodiscard]] static ColoreBgr Colore(Segno segno)
    {
        switch (segno) {
        case Segno::Tag:
            return SchemaColori::Tag;
        case Segno::Attributo:
            return SchemaColori::Attributo;
        case Segno::Valore:
            return SchemaColori::Valore;
        case Segno::Commento:
        case Segno::Errore:
            break;
        }
        return SchemaColori::Commento;
    }

    RichTextBox &m_editor;
    bool m_mantieni;
    PausaControllo *m_pausa;
    bool m_nuovi = false;
};

class LettoreControllo : public LettorePagina
{
public:
    explicit LettoreControllo(const RichTextBox &editor) : m_editor(editor) {}
    [[nodiscard]] qsizetype Lunghezza() const override { return m_editor.Lunghezza(); }
    [[nodiscard]] QString Parte(qsizetype da, qsizetype quanti) const override
    {
        return m_editor.Parte(int(da), int(quanti));
    }
    [[nodiscard]] QString Tutta() const override { return m_editor.Text(); }

private:
    const RichTextBox &m_editor;
};

/// What has become of the text of one control since the findings were listed for it.
class CambiamentiDi : public QObject
{
public:
    explicit CambiamentiDi(const RichTextBox &editor)
    {
        connect(&editor, &RichTextBox::TestoCambiato, this, [this](int da, int tolti, int aggiunti) {
            m_cambiamento.Unisci({da, tolti, aggiunti});
        });
    }
    [[nodiscard]] Cambiamento Preleva() { return std::exchange(m_cambiamento, {}); }

private:
    Cambiamento m_cambiamento;
};

/// Nothing when the findings were not listed for this control the last time.
std::optional<Cambiamento> Dopo(const RichTextBox &editor)
{
    static QPointer<const RichTextBox> ultimo;
    static std::unique_ptr<CambiamentiDi> cambiamenti;
    if (ultimo == &editor)
        return cambiamenti->Preleva();
    ultimo = &editor;
    cambiamenti = std::make_unique<CambiamentiDi>(editor);
    return std::nullopt;
}

} // namespace

void ImpostaAvanzamento(CreaAvanzamento crea)
{
    Creatore() = std::move(crea);
}

void VerificaSintassi(RichTextBox &editor, int primaFine, bool mostraAvanzamento)
{
    if (ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    const ControlloAttivo attivo;
    const QPointer<RichTextBox> vivo(&editor);
    const QString testo = editor.Text();
    bool nuovi = false;
    {
        std::unique_ptr<Avanzamento> avanzamento;
        std::optional<PausaControllo> pausa;
        if (mostraAvanzamento) {
            if (Creatore())
                avanzamento = Creatore()(ModuloPrincipale::Messaggio(85), testo.size());
            pausa.emplace(editor, avanzamento.get());
        }
        Coloritore coloritore(editor, mostraAvanzamento, pausa ? &*pausa : nullptr);
        if (!pausa || pausa->Passa(0))
            Scandisci(testo, {.primaFine = primaFine}, coloritore);
        nuovi = coloritore.Nuovi();
    }
    if (!vivo)
        return;
    if (editor.isVisible())
        editor.setFocus();
    if (nuovi)
        AggiornaElencoErrori(editor);
}

void VerificaFrammento(RichTextBox &editor, int da, int quanti, int primaFine)
{
    if (ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    const ControlloAttivo attivo;
    const QString testo = editor.Parte(da, quanti);
    Coloritore coloritore(editor, false, nullptr);
    Scandisci(testo, {.primaFine = primaFine, .scarto = da, .riga = editor.GetLineFromChar(da) + 1}, coloritore);
    if (editor.isVisible())
        editor.setFocus();
    if (coloritore.Nuovi())
        AggiornaElencoErrori(editor);
}

void AggiornaElencoErrori(const RichTextBox &editor)
{
    FrmControlloSintassi *finestra = FrmControlloSintassi::Aperta();
    if (!finestra)
        return;
    if (ArrayRisultati().size() == 1)
        finestra->Svuota();
    else
        finestra->Elenca(RegistroPagina().Visibili(LettoreControllo(editor), Dopo(editor)));
}

} // namespace ModuloVerificaSintassi
