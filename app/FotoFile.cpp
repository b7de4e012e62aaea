#include "app/FotoFile.h"

#include "platform/DatiFile.h"
#include "platform/FilePagina.h"

#include <QDateTime>

#include <algorithm>

namespace
{

/// Some file systems count time in steps of two seconds: a change that soon after another one may have its time.
constexpr qint64 Grana = 2'000'000'000; // ns

} // namespace

FotoFile FotoFile::Scatta(const QString &percorso)
{
    FotoFile foto;
    foto.scattata = QDateTime::currentMSecsSinceEpoch() * 1'000'000;
    const DatiFile dati = DatiFile::Di(percorso);
    if (!dati.leggibile)
        return foto;
    foto.specie = dati.regolare ? Specie::Regolare : Specie::Altro;
    if (foto.specie == Specie::Altro)
        return foto;
    foto.dimensione = dati.dimensione;
    foto.modificata = dati.modificata;
    foto.cambiata = dati.cambiata;
    foto.protetta = dati.protetto;
    return foto;
}

FotoFile FotoFile::Scatta(const QString &percorso, std::initializer_list<const FotoFile *> note)
{
    FotoFile foto = Scatta(percorso);
    if (foto.specie != Specie::Regolare)
        return foto;
    const auto nota =
        std::find_if(note.begin(), note.end(), [&foto](const FotoFile *n) { return n->Certamente(foto); });
    foto.impronta = nota == note.end() ? ModuloPrincipale::ImprontaFile(percorso) : (*nota)->impronta;
    return foto;
}

bool FotoFile::StessiDati(const FotoFile &altra) const
{
    return specie == altra.specie && dimensione == altra.dimensione && modificata == altra.modificata &&
           cambiata == altra.cambiata;
}

bool FotoFile::Certamente(const FotoFile &ora) const
{
    return StessiDati(ora) && !impronta.isEmpty() && scattata - std::max(modificata, cambiata) > Grana;
}

Mutamento Confronta(const FotoFile &prima, const FotoFile &ora)
{
    using Specie = FotoFile::Specie;
    if (ora.specie == Specie::Assente)
        return prima.specie == Specie::Assente ? Mutamento::Nessuno : Mutamento::Sparito;
    if (ora.specie == Specie::Altro)
        return prima.specie == Specie::Altro ? Mutamento::Nessuno : Mutamento::NonRegolare;
    if (prima.specie != Specie::Regolare || prima.dimensione != ora.dimensione || prima.impronta != ora.impronta)
        return Mutamento::Contenuto;
    return ora.protetta && !prima.protetta ? Mutamento::SolaLettura : Mutamento::Nessuno;
}
