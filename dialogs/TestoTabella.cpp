#include "dialogs/TestoTabella.h"

#include "dialogs/TestoHtml.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using TestoHtml::Attributo;

namespace
{

constexpr double MassimoConteggio = 1e9; // the product of two of them fits

} // namespace

qint64 TestoTabella::Conta(const QString &testo)
{
    bool riuscito = false;
    const double numero = QString(testo).replace(u',', u'.').toDouble(&riuscito);
    if (!riuscito || std::isnan(numero) || std::isinf(numero))
        return 0;
    return qint64(std::clamp(std::floor(numero), 0.0, MassimoConteggio));
}

qint64 TestoTabella::Celle(const Campi &campi)
{
    return Conta(campi.righe) * std::max<qint64>(1, Conta(campi.colonne));
}

QString TestoTabella::InPercento(QString testo)
{
    return testo.remove(u'%') + u'%';
}

QString TestoTabella::Html(const Campi &campi, const QString &parola)
{
    Q_ASSERT(Celle(campi) <= MassimoCelle);
    QString riga = u"\r\n  <TR>"_s;
    const qint64 colonne = Conta(campi.righe) > 0 ? Conta(campi.colonne) : 0;
    for (qint64 c = 1; c <= colonne; ++c)
        riga += u"\r\n    <TD> "_s + parola + u' ' + QString::number(c) + u"</TD>"_s;
    riga += u"\r\n  </TR>"_s;
    return u"<TABLE"_s + Attributo(u"width", campi.larghezza) + Attributo(u"height", campi.altezza) +
           Attributo(u"border", campi.bordo) + Attributo(u"cellspacing", campi.spaziatura) +
           Attributo(u"cellpadding", campi.margine) + u'>' + riga.repeated(qsizetype(Conta(campi.righe))) +
           u"\r\n</TABLE>"_s;
}
