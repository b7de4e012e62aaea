#include "dialogs/TestoHtml.h"

using namespace Qt::StringLiterals;

QString TestoHtml::Attributo(QStringView nome, QString valore)
{
    return u' ' + nome.toString() + u"=\""_s + valore.replace(u'"', u"&quot;"_s) + u'"';
}
