#include "dialogs/PostoAnteprima.h"

#include "app/ModuloDichiarazioni.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::PercorsoIn;

namespace
{

constexpr QStringView NomePagina = u"test.html";
constexpr auto EstensioneChiave = ".lock"_L1;
constexpr int MassimoProgrammi = 100;

/// The lock of that page when it is free or its owner is dead; else null.
std::unique_ptr<QLockFile> Chiave(const QString &percorso)
{
    auto chiave = std::make_unique<QLockFile>(percorso + EstensioneChiave);
    chiave->setStaleLockTime(0); // age says nothing: a program may run for days
    return chiave->tryLock(0) ? std::move(chiave) : nullptr;
}

/// Deletes the pages of programs that were killed. A page without a lock beside it is somebody's own file.
void TogliResti(const QString &cartella)
{
    const QStringList chiavi =
        QDir(cartella).entryList({u"test-*.html"_s + EstensioneChiave}, QDir::Files | QDir::NoSymLinks);
    for (const QString &nome : chiavi) {
        const QString pagina = PercorsoIn(cartella, nome.chopped(EstensioneChiave.size()));
        if (const auto chiave = Chiave(pagina))
            QFile::remove(pagina);
    }
}

/// Also by a link that leads nowhere.
bool Presa(const QString &percorso)
{
    const QFileInfo info(percorso);
    return info.exists() || info.isSymLink();
}

bool Scrivibile(const QString &cartella)
{
    return !cartella.isEmpty() && QDir().mkpath(cartella) && QFileInfo(cartella).isWritable();
}

} // namespace

PostoAnteprima::PostoAnteprima()
    : PostoAnteprima({ModuloDichiarazioni::CartellaProgramma(),
                      QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)})
{
    if (!m_chiave)
        Prendi(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
}

PostoAnteprima::PostoAnteprima(const QStringList &cartelle)
{
    if (std::none_of(cartelle.begin(), cartelle.end(), [this](const QString &c) { return Prendi(c); }))
        m_percorso = PercorsoIn(cartelle.value(0), NomePagina);
}

PostoAnteprima::~PostoAnteprima()
{
    if (m_chiave)
        QFile::remove(m_percorso);
}

bool PostoAnteprima::Prendi(const QString &cartella)
{
    if (!Scrivibile(cartella))
        return false;
    TogliResti(cartella);
    if (Prova(PercorsoIn(cartella, NomePagina)))
        return true;
    for (int numero = 2; numero <= MassimoProgrammi; ++numero) {
        const QString percorso = PercorsoIn(cartella, u"test-%1.html"_s.arg(numero));
        if (!Presa(percorso) && Prova(percorso))
            return true;
    }
    return false;
}

bool PostoAnteprima::Prova(const QString &percorso)
{
    auto chiave = Chiave(percorso);
    // What lies at a free place was left behind; what cannot be deleted cannot be written either.
    if (!chiave || (Presa(percorso) && !QFile::remove(percorso)))
        return false;
    m_chiave = std::move(chiave);
    m_percorso = percorso;
    return true;
}
