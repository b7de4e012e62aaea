#include "bench/BancoBattitura.h"

#include "bench/Misura.h"
#include "bench/Spia.h"
#include "editor/FrmPaginaHTML.h"
#include "editor/clsUndo.h"
#include "html/FrmComplete.h"
#include "html/FrmControlloSintassi.h"
#include "html/VerificaSintassi.h"
#include "platform/RichTextBox.h"

#include <QKeyEvent>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

constexpr int PausaLunga = 600'000; // ms; the undo record of a pause has a row of its own
constexpr int Minimo = 20;
constexpr int Massimo = 200;

} // namespace

const std::vector<BancoBattitura::Prova> &BancoBattitura::Prove()
{
    static const QString immagine = u"<img src=\"foto/12.jpg\" alt=\"una"_s;
    static const std::vector<Prova> prove{
        {u"typed: first letter"_s},
        {u"typed: letter in text"_s, u"una storia"_s, {Qt::Key_E, u"e"_s}},
        {u"typed: letter in a tag's name"_s, u"<tab"_s, {Qt::Key_L, u"l"_s}},
        {u"typed: letter in an attribute's name"_s, immagine + u"\" wid"_s, {Qt::Key_T, u"t"_s}},
        {u"typed: letter in a quoted value"_s, immagine, {Qt::Key_E, u"e"_s}},
        {u"typed: > that brings an end tag"_s, u"<b"_s, {Qt::Key_Greater, u">"_s}},
        {u"typed: > of an end tag that was brought"_s, u"<b"_s, {Qt::Key_Greater, u">"_s}, u">"_s, u"storia</b"_s},
        {u"typed: Enter on an indented line"_s, u"        una storia"_s, {Qt::Key_Return, u"\r"_s}},
        {u"typed: letter while a list is open"_s, u"<img"_s, {Qt::Key_I, u"i"_s}, {}, {}, true},
    };
    return prove;
}

BancoBattitura::BancoBattitura(const QString &pagina)
    : m_risultati(std::make_unique<FrmControlloSintassi>()), m_finestra(std::make_unique<FrmPaginaHTML>()),
      m_undo(std::make_unique<clsUndo>()), m_spia(std::make_unique<Spia>()), m_pad(m_finestra->RichPad())
{
    m_risultati->resize(300, 400);
    m_risultati->show();
    m_finestra->resize(1000, 700);
    m_finestra->show();
    m_finestra->activateWindow();
    m_pad->ImpostaText(pagina);
    ModuloVerificaSintassi::VerificaSintassi(*m_pad, 1, false);
    m_undo->Attach(m_finestra.get(), m_pad, PausaLunga);
    m_pad->setFocus();
    m_pad->viewport()->installEventFilter(m_spia.get());
    m_posto = m_pad->CercaAvanti(u'\n', m_pad->Lunghezza() / 2) + 1;
    m_resto = m_pad->Lunghezza() - m_posto;
    m_pad->ImpostaSelStart(m_posto);
    m_spia->Quiete();
    const double inizio = Orologio::Adesso();
    Misurato({Qt::Key_E, u"e"_s});
    m_prima = Orologio::Adesso() - inizio;
}

BancoBattitura::~BancoBattitura() = default;

void BancoBattitura::FinoAlDisegno()
{
    m_spia->Aspetta();
    QCoreApplication::processEvents();
}

void BancoBattitura::Batti(const Tasto &tasto)
{
    for (const auto tipo : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent evento(tipo, tasto.codice, Qt::NoModifier, tasto.testo);
        QCoreApplication::sendEvent(m_pad, &evento);
    }
}

// A function of its own, so that a profiler can be told to count what happens in it and nothing else.
void BancoBattitura::Misurato(const Tasto &tasto)
{
    Batti(tasto);
    FinoAlDisegno();
}

void BancoBattitura::Prepara(const Prova &prova)
{
    const int vecchia = m_pad->Lunghezza() - m_resto - m_posto;
    m_pad->Sostituisci(m_posto, vecchia, prova.riga + u"\r\n"_s);
    m_pad->ImpostaSelStart(m_posto + int(prova.riga.size()));
    if (!prova.portato.isEmpty())
        Batti({Qt::Key_Greater, prova.portato});
    if (!prova.dopo.isEmpty()) {
        const int caretto = m_pad->SelStart();
        m_pad->Sostituisci(caretto, 0, prova.dopo);
        m_pad->ImpostaSelStart(caretto + int(prova.dopo.size()));
    }
    m_spia->Quiete();
}

double BancoBattitura::Misura(const Prova &prova)
{
    if (prova.riga.isEmpty())
        return m_prima;
    if (prova.lista)
        return InLista(prova);
    return Mediana(
        Minimo, Massimo, [&] { Prepara(prova); }, [&] { Misurato(prova.tasto); });
}

// A list waits inside the key that opened it.
double BancoBattitura::InLista(const Prova &prova)
{
    Prepara(prova);
    double tempo = 0;
    bool primo = true;
    QTimer::singleShot(0, m_pad, [&] {
        Batti({Qt::Key_W, u"w"_s});
        tempo = Mediana(
            Minimo, Massimo,
            [&] {
                if (!primo)
                    Batti({Qt::Key_Backspace, u"\b"_s});
                primo = false;
                m_spia->Quiete();
                if (!FrmComplete::Corrente() || !FrmComplete::Corrente()->isVisible())
                    qFatal("the list is gone");
            },
            [&] { Misurato(prova.tasto); });
        Batti({Qt::Key_Escape, {}});
    });
    Batti({Qt::Key_Space, u" "_s});
    return tempo;
}
