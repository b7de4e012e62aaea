#include "app/RigaComando.h"

#include "app/TabellaLingua.h"

#include <QFile>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr qint16 OpzioneSconosciuta = 238;
constexpr qint16 UnaPaginaSola = 239;

std::optional<quint8> CodiceLingua(QStringView nome)
{
    static constexpr std::pair<QStringView, quint8> Lingue[] = {{u"ita", ModuloPrincipale::LinguaItaliano},
                                                                {u"eng", ModuloPrincipale::LinguaInglese},
                                                                {u"chi", ModuloPrincipale::LinguaCinese},
                                                                {u"ch2", ModuloPrincipale::LinguaCineseTrad}};
    for (const auto &[lingua, codice] : Lingue) {
        if (lingua == nome)
            return codice;
    }
    return std::nullopt;
}

} // namespace

QStringList RigaComando::Argomenti(int argc, char **argv)
{
    QStringList argomenti;
    for (int i = 1; i < argc; ++i)
        argomenti += QFile::decodeName(argv[i]);
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
            riga.pagine += argomento;
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
        } else {
            sbaglia(OpzioneSconosciuta, argomento);
        }
    }
    if (riga.json && !riga.verifica)
        sbaglia(OpzioneSconosciuta, u"--json"_s);
    // Without a file there is nothing to check: the help tells how.
    if (riga.verifica && riga.pagine.isEmpty())
        riga.aiuto = true;
    if (!riga.verifica && riga.pagine.size() > 1)
        sbaglia(UnaPaginaSola, {});
    return riga;
}

QString RigaComando::Aiuto(const QString &programma)
{
    const auto opzione = [](const QString &nome, qint16 messaggio) {
        return u"  %1 %2\n"_s.arg(nome, -16).arg(Messaggio(messaggio));
    };
    return Messaggio(230).arg(programma) + u"\n"_s + Messaggio(217) + u"\n\n"_s + opzione(u"FILE"_s, 231) + u"\n"_s +
           Messaggio(237) + u"\n"_s + opzione(u"-h, --help"_s, 232) + opzione(u"-v, --version"_s, 233) +
           opzione(u"--lingua LINGUA"_s, 235) + opzione(u"--verifica"_s, 234) + opzione(u"--json"_s, 236);
}
