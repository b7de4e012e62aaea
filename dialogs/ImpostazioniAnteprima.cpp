#include "dialogs/ImpostazioniAnteprima.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QSaveFile>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto NomeScript = "ScriptOn"_L1;
constexpr auto NomeRete = "RemoteOn"_L1;
constexpr qint64 MassimoLetto = qint64{1} << 20; // bytes; far more than any settings file

std::optional<QByteArray> Contenuto(const QString &percorso)
{
    QFile file(percorso);
    // A pipe would be waited for without end.
    if (!QFileInfo(percorso).isFile() || file.size() > MassimoLetto || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

void Leggi(const QByteArray &testo, PermessiAnteprima &permessi)
{
    for (const QByteArray &byte : QByteArray(testo).replace('\r', '\n').split('\n')) {
        const QString riga = QString::fromUtf8(byte);
        if (const auto valore = ModuloPrincipale::NumeroDaRiga(riga, QString(NomeScript)))
            permessi.script = *valore != 0;
        if (const auto valore = ModuloPrincipale::NumeroDaRiga(riga, QString(NomeRete)))
            permessi.rete = *valore != 0;
    }
}

/// Sets the last line of that name, which is the one that counts, or adds one.
void Imposta(QList<QByteArray> &righe, QLatin1StringView nome, bool acceso)
{
    const QByteArray riga = QByteArray(nome.data(), nome.size()) + " = " + (acceso ? '1' : '0');
    const auto vecchia = std::find_if(righe.rbegin(), righe.rend(), [nome](const QByteArray &una) {
        return una.startsWith(QByteArrayView(nome.data(), nome.size()));
    });
    if (vecchia != righe.rend()) {
        *vecchia = riga + (vecchia->endsWith('\r') ? "\r" : "");
        return;
    }
    righe.insert(righe.size() - (righe.constLast().isEmpty() ? 1 : 0), riga);
}

} // namespace

PermessiAnteprima ImpostazioniAnteprima::Leggi()
{
    PermessiAnteprima permessi;
    const QString programma =
        ModuloDichiarazioni::PercorsoIn(ModuloDichiarazioni::CartellaProgramma(), u"GlobalSetting.dat");
    for (const QString &percorso : {programma, ModuloPrincipale::ImpostazioniUtente()})
        ::Leggi(Contenuto(percorso).value_or(QByteArray()), permessi);
    return permessi;
}

bool ImpostazioniAnteprima::Scrivi(const PermessiAnteprima &permessi)
{
    const QString percorso = ModuloPrincipale::ImpostazioniUtente();
    const std::optional<QByteArray> vecchio = Contenuto(percorso);
    if (!vecchio && QFileInfo::exists(percorso))
        return false;
    QList<QByteArray> righe = vecchio.value_or(QByteArray()).split('\n');
    Imposta(righe, NomeScript, permessi.script);
    Imposta(righe, NomeRete, permessi.rete);
    if (!righe.constLast().isEmpty())
        righe.append(QByteArray());
    QDir().mkpath(QFileInfo(percorso).path());
    QSaveFile file(percorso);
    const QByteArray byte = righe.join('\n');
    return file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size() && file.commit();
}
