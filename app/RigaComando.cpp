#include "app/RigaComando.h"

#include "app/TabellaLingua.h"

#include "platform/NomiFile.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr qint16 OpzioneSconosciuta = 238;
constexpr qint16 UnaPaginaSola = 239;
constexpr qint16 NienteDaVerificare = 401;

/// Whether \a argomento is an option that Qt itself takes off the line, \a conValore: one that the next argument
/// belongs to. One or two hyphens are the same to it.
bool DiQt(QStringView argomento, bool conValore)
{
    static constexpr QStringView ConValore[] = {u"display",
                                                u"fn",
                                                u"geometry",
                                                u"icon",
                                                u"name",
                                                u"platform",
                                                u"platformpluginpath",
                                                u"platformtheme",
                                                u"plugin",
                                                u"qwindowgeometry",
                                                u"qwindowicon",
                                                u"qwindowtitle",
                                                u"session",
                                                u"style",
                                                u"stylesheet",
                                                u"title"};
    static constexpr QStringView Sole[] = {u"dograb", u"nograb", u"reverse", u"sync", u"widgetcount"};
    const QStringView nome = argomento.sliced(argomento.startsWith(u"--") ? 2 : 1);
    if (conValore)
        return std::find(std::begin(ConValore), std::end(ConValore), nome) != std::end(ConValore);
    return nome.startsWith(u"style=") || nome.startsWith(u"stylesheet=") ||
           std::find(std::begin(Sole), std::end(Sole), nome) != std::end(Sole);
}

std::optional<quint8> CodiceLingua(QStringView nome)
{
    for (const ModuloPrincipale::Lingua &lingua : ModuloPrincipale::Lingue()) {
        if (lingua.nome == nome)
            return lingua.codice;
    }
    return std::nullopt;
}

} // namespace

QStringList RigaComando::Argomenti(int argc, char **argv)
{
    QStringList argomenti;
    for (int i = 1; i < argc; ++i)
        argomenti += NomiFile::DaOspite(QByteArrayView(argv[i]));
    return argomenti;
}

RigaComando RigaComando::Leggi(const QStringList &argomenti)
{
    RigaComando riga;
    const auto sbaglia = [&riga](qint16 messaggio, const QString &oggetto) {
        if (riga.errore == 0) {
            riga.errore = messaggio;
            riga.oggettoErrore = oggetto;
        }
    };
    bool opzioni = true;
    for (qsizetype i = 0; i < argomenti.size(); ++i) {
        const QString &argomento = argomenti[i];
        if (!opzioni || argomento.size() < 2 || !argomento.startsWith(u'-')) {
            riga.pagine += NomiFile::DaIndirizzo(argomento).value_or(argomento);
        } else if (argomento == u"--"_s) {
            opzioni = false;
        } else if (argomento == u"--help"_s || argomento == u"-h"_s) {
            riga.aiuto = true;
        } else if (argomento == u"--version"_s || argomento == u"-v"_s) {
            riga.versione = true;
        } else if (argomento == u"--verifica"_s) {
            riga.verifica = true;
        } else if (argomento == u"--json"_s) {
            riga.json = true;
        } else if (argomento == u"--lingua"_s || argomento.startsWith(u"--lingua="_s)) {
            const QString nome = argomento.size() > 8 ? argomento.sliced(9) : argomenti.value(++i);
            riga.lingua = CodiceLingua(nome);
            if (!riga.lingua)
                sbaglia(OpzioneSconosciuta, u"--lingua "_s + nome);
        } else if (DiQt(argomento, true)) {
            ++i;
        } else if (!DiQt(argomento, false)) {
            sbaglia(OpzioneSconosciuta, argomento);
        }
    }
    if (riga.json && !riga.verifica)
        sbaglia(OpzioneSconosciuta, u"--json"_s);
    if (riga.verifica && riga.pagine.isEmpty() && !riga.aiuto && !riga.versione)
        sbaglia(NienteDaVerificare, {});
    if (!riga.verifica && riga.pagine.size() > 1)
        sbaglia(UnaPaginaSola, {});
    return riga;
}

QString RigaComando::Aiuto(const QString &programma)
{
    const auto opzione = [](const QString &nome, qint16 messaggio) {
        return u"  %1 %2\n"_s.arg(nome, -16).arg(Messaggio(messaggio));
    };
    QStringList lingue;
    for (const ModuloPrincipale::Lingua &lingua : ModuloPrincipale::Lingue())
        lingue += lingua.nome.toString();
    return Messaggio(230).arg(programma) + u"\n"_s + Messaggio(217) + u"\n\n"_s + opzione(u"FILE"_s, 231) + u"\n"_s +
           Messaggio(237) + u"\n"_s + opzione(u"-h, --help"_s, 232) + opzione(u"-v, --version"_s, 233) +
           opzione(u"--lingua LINGUA"_s, 235).arg(lingue.join(u", "_s)) + opzione(u"--verifica"_s, 234) +
           opzione(u"--json"_s, 236);
}
