#include "app/RigaComando.h"

#include "app/TabellaLingua.h"

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

RigaComando RigaComando::Leggi(const QStringList &argomenti)
{
    RigaComando riga;
    bool opzioni = true;
    for (const QString &argomento : argomenti) {
        if (opzioni && argomento == u"--"_s) {
            opzioni = false;
        } else if (opzioni && (argomento == u"--help"_s || argomento == u"-h"_s)) {
            riga.aiuto = true;
        } else if (opzioni && (argomento == u"--version"_s || argomento == u"-v"_s)) {
            riga.versione = true;
        } else if (opzioni && argomento.size() > 1 && argomento.startsWith(u'-')) {
            riga.errore = Messaggio(238).arg(argomento);
        } else if (!riga.pagina.isEmpty()) {
            riga.errore = Messaggio(239);
        } else {
            riga.pagina = argomento;
        }
    }
    return riga;
}

QString RigaComando::Aiuto(const QString &programma)
{
    const auto opzione = [](const QString &nome, qint16 messaggio) {
        return u"  %1 %2\n"_s.arg(nome, -14).arg(Messaggio(messaggio));
    };
    return Messaggio(230).arg(programma) + u"\n"_s + Messaggio(217) + u"\n\n"_s + opzione(u"FILE"_s, 231) + u"\n"_s +
           Messaggio(237) + u"\n"_s + opzione(u"-h, --help"_s, 232) + opzione(u"-v, --version"_s, 233);
}
