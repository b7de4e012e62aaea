#include "html/SeguitoPagina.h"

#include "app/ModuloDichiarazioni.h"
#include "platform/RichTextBox.h"

#include <utility>

namespace
{

constexpr qsizetype Nuova = 65'536; // units; so much new text is looked at by the check alone

} // namespace

SeguitoPagina::SeguitoPagina(const RichTextBox &editor, ElencoRisultati &elenco) : m_editor(&editor), m_elenco(elenco)
{
    elenco.ImpostaPagina(this);
    m_attesa.setSingleShot(true);
    connect(&m_attesa, &QTimer::timeout, this, &SeguitoPagina::Aggiorna);
    connect(&editor, &RichTextBox::TestoCambiato, this, [this](int da, int tolti, int aggiunti) {
        m_cambiamento.Unisci({da, tolti, aggiunti});
        m_attesa.start(0);
    });
    connect(&editor, &QObject::destroyed, this, [this] { m_elenco.ImpostaPagina(nullptr); });
}

SeguitoPagina::~SeguitoPagina()
{
    m_elenco.ImpostaPagina(nullptr);
}

void SeguitoPagina::Aggiorna()
{
    // The end of a check takes in what happened during it.
    if (m_editor && !ModuloDichiarazioni::Stato().ControlloInCorso)
        m_elenco.Aggiorna(std::exchange(m_cambiamento, {}));
}

void SeguitoPagina::Controllata(int da, int quanti)
{
    const int toccate = std::min(quanti, m_editor->Lunghezza() - da);
    m_cambiamento.Unisci({da, toccate, toccate});
}

void SeguitoPagina::Prepara()
{
    const auto cambiamento = std::exchange(m_cambiamento, {});
    if (cambiamento.aggiunti > Nuova)
        m_elenco.Svuota();
    else
        m_elenco.Aggiorna(cambiamento);
}

void SeguitoPagina::Concludi(ElencoRisultati::Falli trovati, qsizetype fino)
{
    // What has changed since the check began has ended it.
    if (const auto cambiamento = std::exchange(m_cambiamento, {}); !cambiamento.Nullo()) {
        m_elenco.Aggiorna(cambiamento);
        ElencoRisultati::Sposta(trovati, cambiamento);
        fino = std::min(fino, cambiamento.da);
        std::erase_if(trovati, [fino](const auto &fallo) { return fallo.posizione >= fino; });
    }
    m_elenco.Imposta(std::move(trovati), fino);
}

qsizetype SeguitoPagina::Lunghezza() const
{
    return m_editor->Lunghezza();
}

QChar SeguitoPagina::Unita(qsizetype posizione) const
{
    return m_editor->Unita(int(posizione));
}

QString SeguitoPagina::Parte(qsizetype da, qsizetype quanti) const
{
    return m_editor->Parte(int(da), int(quanti));
}

bool SeguitoPagina::Segnata(qsizetype posizione) const
{
    return m_editor->AspettoIn(int(posizione)).onda;
}

int SeguitoPagina::Riga(qsizetype posizione) const
{
    return m_editor->GetLineFromChar(int(posizione)) + 1;
}

std::pair<qsizetype, qsizetype> SeguitoPagina::LimitiRiga(qsizetype posizione) const
{
    const int riga = m_editor->GetLineFromChar(int(posizione));
    return {m_editor->InizioRiga(riga), m_editor->InizioRiga(riga + 1)};
}

int SeguitoPagina::NumeroRighe() const
{
    return m_editor->NumeroRighe();
}
