#include "app/Impostazioni.h"

#include "app/ModuloDichiarazioni.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace Impostazioni
{
namespace
{

constexpr qint64 MassimoLetto = 1 << 20; ///< bytes; no settings file is larger

struct Valori {
    Lettere lettere = Lettere::Predefinite;
    bool rientri = true;
};

Valori &Correnti()
{
    static Valori valori;
    return valori;
}

/// The number of a line "NAME = number"; nothing for other lines. It begins four units after the name's first blank.
std::optional<int> Numero(QStringView riga, QStringView nome)
{
    if (!riga.startsWith(nome))
        return std::nullopt;
    const QStringView valore = riga.mid(nome.size() + 3).trimmed();
    qsizetype cifre = 0;
    while (cifre < std::min<qsizetype>(valore.size(), 9) && valore[cifre] >= u'0' && valore[cifre] <= u'9')
        ++cifre;
    return valore.first(cifre).toInt();
}

QString Contenuto(const QString &percorso)
{
    QFile file(percorso);
    if (!QFileInfo(percorso).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(MassimoLetto));
}

QString ConLettereDi(const QString &voce, const QString &scritto)
{
    const auto maiuscola = [](QChar c) { return c.isUpper(); };
    return std::any_of(scritto.begin(), scritto.end(), maiuscola) ? voce.toUpper() : voce.toLower();
}

} // namespace

Lettere LettereNomi()
{
    return Correnti().lettere;
}

bool Rientri()
{
    return Correnti().rientri;
}

void Leggi(QStringView testo)
{
    for (const QStringView riga : testo.tokenize(u'\n')) {
        if (const auto lettere = Numero(riga, u"LetterCase"))
            Correnti().lettere = *lettere >= 1 && *lettere <= 3 ? Lettere(*lettere) : Lettere::Predefinite;
        if (const auto rientri = Numero(riga, u"Indentation"))
            Correnti().rientri = *rientri != 0;
    }
}

void Carica(const QString &cartella, const QString &utente)
{
    Correnti() = {};
    Leggi(Contenuto(ModuloDichiarazioni::PercorsoIn(cartella, u"GlobalSetting.dat")));
    Leggi(Contenuto(utente));
}

QString NomeScelto(const QString &voce, const QString &scritto)
{
    switch (LettereNomi()) {
    case Lettere::Minuscole:
        return voce.toLower();
    case Lettere::ComeScritte:
        return scritto.isEmpty() ? voce : ConLettereDi(voce, scritto);
    case Lettere::Predefinite:
        return voce.compare(scritto, Qt::CaseInsensitive) == 0 ? scritto : voce;
    case Lettere::Base:
        break;
    }
    return voce;
}

QString NomeIntero(const QString &voce, const QString &scritto)
{
    switch (LettereNomi()) {
    case Lettere::Minuscole:
        return scritto.toLower();
    case Lettere::Base:
        return voce;
    case Lettere::Predefinite:
    case Lettere::ComeScritte:
        break;
    }
    return scritto;
}

} // namespace Impostazioni
