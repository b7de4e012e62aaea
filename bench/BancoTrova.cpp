// Find and replace as the dialog does it, with the undo record that the main window takes of it.

#include "bench/BancoControllo.h"

#include "bench/Misura.h"
#include "dialogs/FrmTrova.h"
#include "editor/clsUndo.h"
#include "platform/RichTextBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Pausa = 250; // ms

// Presses the button and sends away the message that says how many.
void Premi(FrmTrova &trova)
{
    QTimer congedo;
    QObject::connect(&congedo, &QTimer::timeout, &trova, [] {
        if (QWidget *messaggio = QApplication::activeModalWidget())
            messaggio->close();
    });
    congedo.start(0);
    trova.findChild<QPushButton *>(u"CmdSostituisci"_s)->click();
}

} // namespace

// \a prepara and \a passo get the dialog and the undo manager.
template <typename Prima, typename Azione>
double BancoControllo::ConTrova(Prima prepara, Azione passo)
{
    clsUndo undo;
    undo.Attach(&undo, m_controllo.get(), Pausa);
    FrmTrova trova;
    QObject::connect(&trova, &FrmTrova::SostituzioneImminente, &undo, &clsUndo::TakeUndoSnapShot);
    QObject::connect(&trova, &FrmTrova::SostituzioneFatta, &undo, &clsUndo::TakeUndoSnapShot);
    trova.Init(m_controllo.get(), FrmTrova::Sostituisci);
    trova.findChild<QLineEdit *>(u"TxtFind"_s)->setText(u"e"_s);
    trova.findChild<QLineEdit *>(u"TxtReplace"_s)->setText(u"é·"_s);
    trova.findChild<QCheckBox *>(u"ChkReplaceAll"_s)->setChecked(true);
    FrmTrova::PosizioneRicerca = 0;
    const double tempo = Mediana(
        3, 15, [&] { prepara(trova, undo); },
        [&] {
            passo(trova, undo);
            // The message may have had it painted already.
            m_controllo->viewport()->update();
            FinoAlDisegno();
        });
    // The page is left as it was.
    undo.Undo(int(undo.UndoList().size()));
    return tempo;
}

double BancoControllo::SostituisciTutto()
{
    return ConTrova([](FrmTrova &, clsUndo &undo) { undo.Undo(1); },
                    [](FrmTrova &trova, clsUndo &undo) {
                        Premi(trova);
                        if (!undo.CanUndo())
                            qFatal("nothing was replaced");
                    });
}

double BancoControllo::AnnullaSostituisciTutto()
{
    return ConTrova([](FrmTrova &trova, clsUndo &) { Premi(trova); },
                    [](FrmTrova &, clsUndo &undo) {
                        if (!undo.Undo(1))
                            qFatal("nothing was undone");
                    });
}
