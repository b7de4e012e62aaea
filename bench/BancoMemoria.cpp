// What the control's page and its undo records take of memory. Each is measured in a process of its own.

#include "bench/BancoControllo.h"

#include "editor/clsUndo.h"
#include "platform/RichTextBox.h"

#include <fstream>
#include <malloc.h>
#include <string>

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Registrazioni = 10'000;
constexpr int ParolePerRiga = 10;
constexpr int Pausa = 250; // ms

double Residente()
{
    std::ifstream stato("/proc/self/status");
    for (std::string parola; stato >> parola;) {
        double valore = 0;
        if (parola == "VmRSS:" && stato >> valore)
            return valore / 1024;
    }
    return 0;
}

} // namespace

double BancoControllo::Memoria(int colonna)
{
    BancoControllo banco;
    malloc_trim(0);
    const double prima = Residente();
    // The control shares the page's string, so only it holds one afterwards.
    banco.Prepara(PaginaDi(Colonne()[size_t(colonna)]));
    banco.m_pagina.clear();
    banco.m_parti = {};
    malloc_trim(0);
    return Residente() - prima;
}

// A word at a time, as the pauses of typing make records.
void BancoControllo::ScriviParole(clsUndo &undo, bool sparse)
{
    QRandomGenerator caso(1);
    int posto = m_controllo->Lunghezza() / 2;
    for (int i = 1; i <= Registrazioni; ++i) {
        if (sparse)
            posto = caso.bounded(m_controllo->Lunghezza());
        const QString parola = i % ParolePerRiga == 0 && !sparse ? u"parola\r\n"_s : u"parola "_s;
        m_controllo->Sostituisci(posto, 0, parola);
        posto += int(parola.size());
        if (!undo.TakeUndoSnapShot())
            qFatal("the change was not recorded");
    }
}

double BancoControllo::MemoriaRegistrazioni(int colonna, bool sparse)
{
    BancoControllo banco;
    banco.Prepara(PaginaDi(Colonne()[size_t(colonna)]));
    clsUndo undo;
    undo.Attach(&undo, banco.m_controllo.get(), Pausa);
    // The first round makes the control lay out what is visited and its text find its place; what the second one
    // takes is the records.
    banco.ScriviParole(undo, sparse);
    undo.Reset();
    malloc_trim(0);
    const double prima = Residente();
    banco.ScriviParole(undo, sparse);
    malloc_trim(0);
    return Residente() - prima;
}
