// What the program does with the control's page: undo, check, the tag at the caret.

#include "bench/BancoControllo.h"

#include "bench/Misura.h"
#include "editor/ModuloColori.h"
#include "editor/clsUndo.h"
#include "html/ContestoTag.h"
#include "html/FrmControlloSintassi.h"
#include "html/Risultati.h"
#include "html/SeguitoPagina.h"
#include "html/VerificaDaRiga.h"
#include "html/VerificaSintassi.h"
#include "platform/RichTextBox.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Pausa = 250; // ms

} // namespace

// One record; the letter that is put in may be the one that stood there, and then it takes another.
void BancoControllo::Registra(clsUndo &undo)
{
    do
        CambiaUnaRiga();
    while (!undo.TakeUndoSnapShot());
}

double BancoControllo::Registrazione()
{
    clsUndo undo;
    undo.Attach(&undo, m_controllo.get(), Pausa);
    Registra(undo);
    return Mediana(
        5, 50, [this] { CambiaUnaRiga(); },
        [&undo] {
            if (!undo.TakeUndoSnapShot())
                qFatal("the change was not recorded");
        });
}

double BancoControllo::Annullamento()
{
    clsUndo undo;
    undo.Attach(&undo, m_controllo.get(), Pausa);
    return Mediana(
        5, 50,
        [&] {
            Registra(undo);
            FinoAlDisegno();
        },
        [&] {
            if (!undo.Undo(1))
                qFatal("nothing was undone");
            FinoAlDisegno();
        });
}

double BancoControllo::Ripristino()
{
    clsUndo undo;
    undo.Attach(&undo, m_controllo.get(), Pausa);
    return Mediana(
        5, 50,
        [&] {
            Registra(undo);
            undo.Undo(1);
            FinoAlDisegno();
        },
        [&] {
            if (!undo.Redo(1))
                qFatal("nothing was redone");
            FinoAlDisegno();
        });
}

double BancoControllo::Scansione()
{
    const QString pagina = m_controllo->Text();
    qsizetype lunghezza = 0;
    return Mediana(
        3, 25, [] {}, [&] { lunghezza += VerificaDaRiga::InRighe(QString(), pagina).size(); });
}

double BancoControllo::Verifica()
{
    return Mediana(
        3, 25, [] { ModuloVerificaSintassi::AzzeraRisultati(); },
        [this] { ModuloVerificaSintassi::VerificaSintassi(*m_controllo, 1, false); });
}

void BancoControllo::ControllaAlCaretto()
{
    if (ContestoTag::DentroCommento(m_controllo.get()) || !ContestoTag::DentroTag(m_controllo.get()))
        qFatal("the caret is not inside a tag");
    (void)ContestoTag::LeggiTagAttributo(m_controllo.get());
    ModuloColori::ControllaTagCorrente(*m_controllo);
    ModuloVerificaSintassi::AggiornaElencoErrori(*m_controllo);
}

void BancoControllo::VaiInUnTag()
{
    int minore = m_controllo->CercaAvanti(u'<', m_controllo->Lunghezza() / 2);
    while (!m_controllo->Unita(minore + 1).isLetter())
        minore = m_controllo->CercaAvanti(u'<', minore + 1);
    m_controllo->ImpostaSelStart(minore + 1);
}

double BancoControllo::VerificaTag()
{
    VaiInUnTag();
    return Mediana(
        5, 50, [] {}, [this] { ControllaAlCaretto(); });
}

double BancoControllo::VerificaTagConElenco()
{
    using namespace ModuloVerificaSintassi;
    constexpr int Quanti = 20'000;
    constexpr int Nome = 8;
    FrmControlloSintassi elenco;
    elenco.resize(300, 400);
    elenco.show();
    ElencoRisultati::Falli falli;
    for (int i = 0; i < Quanti; ++i) {
        const int dove = int(qint64(m_controllo->Lunghezza() - Nome) * i / Quanti);
        falli.push_back({.posizione = dove, .nome = m_controllo->Parte(dove, Nome)});
    }
    elenco.Seguito(*m_controllo).Concludi(std::move(falli), m_controllo->Lunghezza());
    VaiInUnTag();
    ControllaAlCaretto();
    const double tempo = Mediana(
        5, 50,
        [this] {
            QCoreApplication::processEvents();
            const int caretto = m_controllo->SelStart();
            m_controllo->ImpostaSelText(u"b"_s);
            m_controllo->ImpostaSelStart(caretto);
        },
        [this] { ControllaAlCaretto(); });
    return tempo;
}
