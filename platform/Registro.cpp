#include "platform/Registro.h"

#include "platform/RegistroAlbero.h"
#include "platform/RegistroFile.h"
#include "platform/RegistroOspite.h"

#include <QCoreApplication>
#include <QHash>

#include <cstring>
#include <optional>

using namespace Qt::StringLiterals;

namespace Registro
{

namespace
{

struct ChiaveAperta {
    QString percorso;
    quint32 accesso = 0;
};

struct Stato {
    std::optional<Albero> albero; ///< none before the first use
    QHash<HKey, ChiaveAperta> aperte;
    HKey ultima = 0;
};

Stato &stato()
{
    static Stato unico;
    return unico;
}

const Albero &albero()
{
    if (!stato().albero)
        Carica(Sorgenti::DelloOspite());
    return *stato().albero;
}

std::optional<ChiaveAperta> chiaveDi(HKey handle)
{
    if (handle == HKEY_LOCAL_MACHINE)
        return ChiaveAperta{u"hkey_local_machine"_s, KEY_READ};
    if (handle == HKEY_CURRENT_USER)
        return ChiaveAperta{u"hkey_current_user"_s, KEY_READ};
    const auto trovata = stato().aperte.constFind(handle);
    return trovata == stato().aperte.cend() ? std::nullopt : std::optional(*trovata);
}

} // namespace

Sorgenti Sorgenti::DelloOspite()
{
    return {{QCoreApplication::applicationDirPath() + u"/registro.dat"_s, u"/etc/velloro/registro.dat"_s},
            u"/etc/machine-info"_s,
            {}};
}

void Carica(const Sorgenti &sorgenti)
{
    stato() = {};
    Albero &nuovo = stato().albero.emplace();
    AggiungiFatti(nuovo, sorgenti);
    for (const QString &file : sorgenti.file)
        LeggiFile(file, nuovo);
}

Esito RegOpenKey(HKey radice, QStringView chiave, HKey &aperta)
{
    return RegOpenKeyEx(radice, chiave, KEY_READ, aperta);
}

Esito RegOpenKeyEx(HKey radice, QStringView chiave, quint32 accesso, HKey &aperta)
{
    const Albero &tutto = albero();
    const std::optional<ChiaveAperta> sopra = chiaveDi(radice);
    if (!sopra)
        return HandleNonValido;
    const QString sotto = Albero::Percorso(chiave);
    const QString percorso = sotto.isEmpty() ? sopra->percorso : sopra->percorso + u'\\' + sotto;
    if (!sotto.isEmpty() && !tutto.Esiste(percorso))
        return NonTrovato;
    aperta = ++stato().ultima;
    stato().aperte.insert(aperta, {percorso, accesso});
    return Successo;
}

Esito RegQueryValueEx(HKey chiave, QStringView nome, quint32 *tipo, void *dati, quint32 *byte)
{
    const Albero &tutto = albero();
    const std::optional<ChiaveAperta> aperta = chiaveDi(chiave);
    if (!aperta)
        return HandleNonValido;
    if (!(aperta->accesso & KEY_QUERY_VALUE))
        return AccessoNegato;
    if (dati && !byte)
        return ParametroErrato;
    const Valore *valore = tutto.Trova(aperta->percorso, nome);
    if (!valore)
        return NonTrovato;
    if (tipo)
        *tipo = valore->tipo;
    const quint32 posto = byte ? *byte : 0;
    const auto misura = static_cast<quint32>(valore->dati.size());
    if (byte)
        *byte = misura;
    if (!dati)
        return Successo;
    if (posto < misura)
        return AltriDati;
    std::memcpy(dati, valore->dati.constData(), misura);
    return Successo;
}

Esito RegCloseKey(HKey chiave)
{
    if (chiave == HKEY_LOCAL_MACHINE || chiave == HKEY_CURRENT_USER)
        return Successo;
    return stato().aperte.remove(chiave) ? Successo : HandleNonValido;
}

qsizetype ChiaviAperte()
{
    return stato().aperte.size();
}

} // namespace Registro
