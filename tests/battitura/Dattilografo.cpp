#include "Dattilografo.h"

#include "Brani.h"

#include "editor/FrmPaginaHTML.h"
#include "editor/clsUndo.h"
#include "html/FrmComplete.h"
#include "html/ModuloTag.h"
#include "platform/RichTextBox.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QListView>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

int Codice(QChar c)
{
    return c == u'\n' ? int(Qt::Key_Return) : c == u'\t' ? int(Qt::Key_Tab) : c.toUpper().unicode();
}

QString Testo(QChar c)
{
    return c == u'\n' ? u"\r"_s : QString(c);
}

} // namespace

Dattilografo::Dattilografo() : m_finestra(std::make_unique<FrmPaginaHTML>()), m_undo(std::make_unique<clsUndo>())
{
    m_finestra->resize(900, 400);
    m_finestra->show();
    m_finestra->activateWindow();
    m_pad = m_finestra->RichPad();
    m_pad->setFocus();
    m_undo->Attach(m_finestra.get(), m_pad, 400);
}

Dattilografo::~Dattilografo() = default;

QString Dattilografo::NomeDi(Ritmo ritmo)
{
    switch (ritmo) {
    case Ritmo::Lento:
        return u"slow"_s;
    case Ritmo::Rapido:
        return u"quick"_s;
    case Ritmo::Accavallato:
        return u"overlapping"_s;
    case Ritmo::Elenchi:
        break;
    }
    return u"lists"_s;
}

void Dattilografo::Manda(QEvent::Type tipo, QChar c)
{
    QCoreApplication::postEvent(m_pad, new QKeyEvent(tipo, Codice(c), Qt::NoModifier, Testo(c)));
}

// A list waits inside the event of the key that opened it, so every key comes from the loop that runs then.
void Dattilografo::FinoAllaQuiete()
{
    QEventLoop ciclo;
    QTimer::singleShot(0, &ciclo, [&ciclo] { QTimer::singleShot(0, &ciclo, &QEventLoop::quit); });
    ciclo.exec();
}

void Dattilografo::Batti(QChar c)
{
    Manda(QEvent::KeyPress, c);
    Manda(QEvent::KeyRelease, c);
}

bool Dattilografo::Mostrato(const QString &nome) const
{
    const FrmComplete *lista = FrmComplete::Corrente();
    if (!lista || !lista->isVisible())
        return false;
    const auto *elenco = lista->findChild<QListView *>(u"LstView"_s);
    return elenco->currentIndex().data().toString().compare(nome, Qt::CaseInsensitive) == 0;
}

namespace
{

/// The keys of one piece, one after the other, each from the event loop that runs when it is due.
class Corsa : public QObject
{
public:
    using Passo = std::function<bool()>; ///< presses the next key; false: none is left

    explicit Corsa(Passo passo) : m_passo(std::move(passo)) { Prosegui(); }
    [[nodiscard]] bool Finita() const { return m_finita; }

private:
    void Prosegui()
    {
        QTimer::singleShot(0, this, [this] {
            // A list that has closed gives way to its caller first.
            if (FrmComplete::Corrente() && !FrmComplete::Corrente()->isVisible()) {
                Prosegui();
                return;
            }
            m_finita = !m_passo();
            if (!m_finita)
                Prosegui();
        });
    }
    Passo m_passo;
    bool m_finita = false;
};

} // namespace

QString Dattilografo::Scrivi(const QString &brano, Ritmo ritmo, const QString &prima, const QString &dopo)
{
    m_pad->ImpostaText(prima + dopo);
    m_pad->ImpostaSelStart(int(prima.size()));
    m_undo->Reset();
    m_inizio = m_pad->Text();
    qsizetype i = 0;
    const QList<Brani::Nome> nomi = ritmo == Ritmo::Elenchi ? Brani::Nomi(brano) : QList<Brani::Nome>();
    qsizetype quale = 0;
    qsizetype chiudi = -1; // where the value ends whose quotes came with its name
    const Corsa corsa([&] {
        if (i >= brano.size() && chiudi < 0)
            return false;
        if (ritmo == Ritmo::Rapido) {
            for (const QChar c : brano)
                Batti(c);
            i = brano.size();
            return true;
        }
        if (ritmo == Ritmo::Accavallato) {
            const QChar c = brano[i++];
            const QChar precedente = i > 1 ? brano[i - 2] : QChar();
            const bool stesso = !precedente.isNull() && Codice(precedente) == Codice(c);
            if (stesso)
                Manda(QEvent::KeyRelease, precedente);
            Manda(QEvent::KeyPress, c);
            if (!precedente.isNull() && !stesso)
                Manda(QEvent::KeyRelease, precedente);
            if (i == brano.size())
                Manda(QEvent::KeyRelease, c);
            return true;
        }
        if (chiudi >= 0 && i == chiudi) {
            chiudi = -1;
            Batti(u'"');
            i += i < brano.size() && (brano[i] == u'"') ? 1 : 0;
            return true;
        }
        while (quale < nomi.size() && nomi[quale].da + 2 < i)
            ++quale;
        if (quale < nomi.size() && nomi[quale].da + 2 == i && nomi[quale].lunghezza > 2) {
            const Brani::Nome &nome = nomi[quale];
            const bool conValore =
                nome.valore >= 0 && nome.virgoletta != u'\'' && brano[nome.da + nome.lunghezza] == u'=';
            const QString scritto = brano.sliced(nome.da, nome.lunghezza);
            if (Mostrato(scritto) && (!nome.attributo || conValore)) {
                Batti(u'\t');
                i = nome.attributo ? nome.valore : nome.da + nome.lunghezza;
                chiudi = nome.attributo ? nome.fineValore : -1;
                ++quale;
                return true;
            }
        }
        Batti(brano[i++]);
        return true;
    });
    const QDeadlineTimer limite(20'000);
    while (!(corsa.Finita() && !FrmComplete::Corrente()) && !limite.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        if (corsa.Finita() && FrmComplete::Corrente() && FrmComplete::Corrente()->isVisible()) {
            QKeyEvent su(QEvent::KeyRelease, Qt::Key_Escape, Qt::NoModifier);
            QCoreApplication::sendEvent(m_pad, &su);
        }
    }
    FinoAllaQuiete();
    const QString testo = m_pad->Text();
    if (!testo.startsWith(prima) || !testo.endsWith(dopo) || testo.size() < prima.size() + dopo.size())
        return u"(the page around it changed) "_s + testo;
    return testo.sliced(prima.size(), testo.size() - prima.size() - dopo.size());
}

QString Dattilografo::AnnullaERipristina()
{
    const QString fine = m_pad->Text();
    int passi = 0;
    while (m_undo->AnnullaComando())
        ++passi;
    if (m_pad->Text() != m_inizio)
        return u"undo gave "_s + m_pad->Text();
    while (m_undo->RipristinaComando())
        --passi;
    return m_pad->Text() == fine ? QString() : u"redo gave "_s + m_pad->Text();
}
