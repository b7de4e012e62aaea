#include "bench/BancoControllo.h"

#include "bench/Misura.h"
#include "bench/Spia.h"
#include "platform/RichTextBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace
{

const auto Niente = [] {};

} // namespace

const std::vector<Colonna> &Colonne()
{
    static const std::vector<Colonna> colonne{{u"10 kB"_s, 10'000, false},        {u"100 kB"_s, 100'000, false},
                                              {u"1 MB"_s, 1'000'000, false},      {u"10 MB"_s, 10'000'000, false},
                                              {u"line 64 kB"_s, 64 * 1024, true}, {u"line 256 kB"_s, 256 * 1024, true},
                                              {u"line 1 MB"_s, 1024 * 1024, true}};
    return colonne;
}

QString PaginaDi(const Colonna &colonna)
{
    return colonna.rigaSola ? Pagine::RigaSola(colonna.unita) : Pagine::Html(colonna.unita);
}

BancoControllo::BancoControllo() : m_controllo(std::make_unique<RichTextBox>()), m_spia(std::make_unique<Spia>())
{
    m_controllo->setFont(QFont(u"Courier New"_s, 10));
    m_controllo->resize(1000, 700);
    m_controllo->viewport()->installEventFilter(m_spia.get());
    m_controllo->show();
    FinoAlDisegno();
    m_controllo->activateWindow();
    m_controllo->setFocus();
    QCoreApplication::processEvents();
}

BancoControllo::~BancoControllo() = default;

void BancoControllo::FinoAlDisegno()
{
    m_spia->Aspetta();
}

void BancoControllo::Colora()
{
    constexpr ColoreBgr colori[] = {0x800000, 0x0000C0, 0x008000, 0x808080};
    for (const Pagine::Parte &parte : m_parti)
        m_controllo->ImpostaAspetto(parte.da, parte.quanti, {colori[parte.genere], false, false, false});
}

void BancoControllo::Prepara(const QString &pagina)
{
    m_pagina = pagina;
    m_parti = Pagine::PartiDeiTag(pagina);
    m_controllo->ImpostaText(pagina);
    Colora();
    FinoAlDisegno();
}

double BancoControllo::Apertura()
{
    const double tempo = Mediana(
        3, 25,
        [this] {
            // A new string each time, as a reader of files gives it; and the page before is gone.
            m_controllo->ImpostaText(QString());
            FinoAlDisegno();
            m_pagina.detach();
        },
        [this] {
            m_controllo->ImpostaText(m_pagina);
            FinoAlDisegno();
        });
    Colora();
    FinoAlDisegno();
    return tempo;
}

double BancoControllo::Colori()
{
    return Mediana(3, 25, Niente, [this] {
        Colora();
        FinoAlDisegno();
    });
}

double BancoControllo::Preme(Tasto tasto, Posto posto)
{
    const int lunghezza = m_controllo->Lunghezza();
    m_controllo->ImpostaSelStart(posto == Inizio ? 0 : posto == Mezzo ? lunghezza / 2 : lunghezza);
    FinoAlDisegno();
    const auto preme = [this](int codice, const QString &testo) {
        QKeyEvent giu(QEvent::KeyPress, codice, Qt::NoModifier, testo);
        QCoreApplication::sendEvent(m_controllo.get(), &giu);
        QKeyEvent su(QEvent::KeyRelease, codice, Qt::NoModifier, testo);
        QCoreApplication::sendEvent(m_controllo.get(), &su);
        FinoAlDisegno();
    };
    switch (tasto) {
    case Lettera:
        return Mediana(20, 100, Niente, [&] { preme(Qt::Key_E, u"e"_s); });
    case Invio:
        return Mediana(20, 100, Niente, [&] { preme(Qt::Key_Return, u"\r"_s); });
    case Cancella:
        return Mediana(
            20, 100,
            [&] {
                // At the start of the page there is nothing to take away but what is typed first.
                preme(Qt::Key_E, u"e"_s);
            },
            [&] { preme(Qt::Key_Backspace, u"\b"_s); });
    case Freccia:
        return Mediana(20, 100, Niente, [&] {
            const bool indietro = posto == Fine;
            preme(indietro ? Qt::Key_Left : Qt::Key_Right, QString());
        });
    }
    return 0;
}

double BancoControllo::TestoDopoUnTasto()
{
    return Mediana(
        5, 50, [this] { CambiaUnaRiga(); },
        [this] {
            if (m_controllo->Text().isEmpty())
                qFatal("the page is gone");
        });
}

double BancoControllo::Ricerca()
{
    return Mediana(3, 25, Niente, [this] {
        if (m_controllo->Find(u"<qui non è>"_s, 0, -1, RichTextBox::SenzaEvidenza) >= 0)
            qFatal("a text was found that the page does not have");
    });
}

void BancoControllo::CambiaUnaRiga()
{
    const int mezzo = m_controllo->Lunghezza() / 2;
    m_controllo->Sostituisci(mezzo, 1, QString(QChar(u'a' + m_passo++ % 26)));
}

double BancoControllo::RtfIntero()
{
    const QString pagina = m_controllo->Text();
    return Mediana(
        3, 15,
        [&] {
            m_controllo->ImpostaText(pagina);
            Colora();
            FinoAlDisegno();
        },
        [this] {
            if (m_controllo->TextRTF().isEmpty())
                qFatal("no RTF");
        });
}

double BancoControllo::RtfDopoUnaRiga()
{
    return Mediana(
        5, 25, [this] { CambiaUnaRiga(); },
        [this] {
            if (m_controllo->TextRTF().isEmpty())
                qFatal("no RTF");
        });
}

double BancoControllo::ImpostaRtfDiUnaRiga()
{
    QString rtf;
    return Mediana(
        5, 25,
        [&] {
            rtf = m_controllo->TextRTF();
            CambiaUnaRiga();
            FinoAlDisegno();
        },
        [&] {
            if (!m_controllo->ImpostaTextRTF(rtf))
                qFatal("the control's own RTF was refused");
            FinoAlDisegno();
        });
}
