#include "platform/FiltriDialogo.h"

#include "platform/Testi.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ModuloPrincipale
{
namespace
{

constexpr QChar Nullo = u'\0';
/// Shorter rests of the buffer hold no name.
constexpr qsizetype RestoMinimo = 4;

/// "*.html;*.htm" for a dialog that may tell upper from lower case. "*.*" means every file, also one without a dot.
QStringList Modelli(const QString &testo)
{
    QStringList modelli;
    for (const QString &parte : testo.split(u';', Qt::SkipEmptyParts)) {
        const QString modello = parte.trimmed();
        if (modello.isEmpty())
            continue;
        modelli << (modello == "*.*"_L1 ? u"*"_s : modello);
#ifndef Q_OS_WIN
        modelli << modelli.last().toUpper();
#endif
    }
    modelli.removeDuplicates();
    return modelli;
}

} // namespace

QStringList FiltriQt(const QString &filtro)
{
    QStringList filtri;
    bool tutti = false;
    const QStringList parti = filtro.split(Nullo);
    for (qsizetype i = 0; i + 1 < parti.size() && !parti[i].isEmpty(); i += 2) {
        const QStringList modelli = Modelli(parti[i + 1]);
        if (modelli.isEmpty())
            continue;
        tutti = tutti || modelli.contains(u"*"_s);
        filtri << parti[i] + u" ("_s + modelli.join(u' ') + u')';
    }
    if (!tutti)
        filtri << u"All Files (*)"_s;
    return filtri;
}

QStringList ElencoDaBuffer(QString buffer)
{
    buffer.chop(2);
    const auto vuoto = [](QChar c) { return c == u' '; };
    while (!buffer.isEmpty() && vuoto(buffer.back()))
        buffer.chop(1);
    buffer.remove(0, std::find_if_not(buffer.cbegin(), buffer.cend(), vuoto) - buffer.cbegin());

    QString resto = buffer;
    QString primo = EstraiPrimo(resto, QStringView(&Nullo, 1));
    if (!buffer.contains(Nullo))
        primo = std::exchange(resto, QString());
    const QChar separatore = primo.startsWith(u'/') ? u'/' : u'\\';
    const QString intero = primo;
    if (primo.endsWith(separatore))
        primo.chop(1);
    QStringList elenco;
    while (resto.size() >= RestoMinimo) {
        const bool ultimo = !resto.contains(Nullo);
        const QString nome = ultimo ? std::exchange(resto, QString()) : EstraiPrimo(resto, QStringView(&Nullo, 1));
        // Filling after the last name, not a file.
        if (!nome.trimmed().isEmpty())
            elenco << primo + separatore + nome;
    }
    if (elenco.isEmpty())
        elenco << (primo.isEmpty() ? intero : primo);
    return elenco;
}

QString BufferDaElenco(const QStringList &percorsi)
{
    QString buffer;
    if (percorsi.size() == 1) {
        buffer = QDir::toNativeSeparators(percorsi.first());
    } else if (!percorsi.isEmpty()) {
        const QDir cartella = QFileInfo(percorsi.first()).absoluteDir();
        buffer = QDir::toNativeSeparators(cartella.path());
        for (const QString &percorso : percorsi)
            buffer += Nullo + QDir::toNativeSeparators(cartella.relativeFilePath(percorso));
    }
    // Three, so that a last name of one letter is still long enough to count, and the two that end every buffer.
    return buffer.isEmpty() ? QString(2, Nullo) : buffer + QString(3 + 2, Nullo);
}

} // namespace ModuloPrincipale
