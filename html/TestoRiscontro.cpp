#include "html/TestoRiscontro.h"

#include "app/TabellaLingua.h"
#include "platform/NomiFile.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace ModuloVerificaSintassi
{

QString TestoRiscontro(qsizetype riga, TipoRisultato tipo, QStringView nome)
{
    QString messaggio = QString::number(riga);
    const auto intorno = [&](const QString &prima, const QString &dopo) {
        messaggio.append(u": ");
        messaggio.append(prima);
        messaggio.append(u" '");
        messaggio.append(nome.first(std::min(nome.size(), MassimoNome)));
        messaggio.append(u"' ");
        messaggio.append(dopo);
    };
    switch (tipo) {
    case TagSconosciuto:
        intorno(u"Il tag"_s, u"non esiste."_s);
        break;
    case AttributoErrato:
        intorno(Messaggio(81), Messaggio(82));
        break;
    case ValoreErrato:
        intorno(Messaggio(83), Messaggio(84));
        break;
    }
    return messaggio;
}

QString SuUnaRiga(QStringView testo)
{
    return NomiFile::Leggibile(testo.toString().remove(u'\n').remove(u'\r'));
}

} // namespace ModuloVerificaSintassi
