#include "platform/Testi.h"

QString ModuloPrincipale::TagliaAlNullo(const QString &testo)
{
    return testo.left(testo.indexOf(QChar(u'\0')));
}

QString ModuloPrincipale::EstraiPrimo(QString &testo, QStringView separatore)
{
    const qsizetype dove = testo.indexOf(separatore);
    if (dove < 0)
        return {};
    QString primo = testo.first(dove);
    testo.remove(0, dove + separatore.size());
    return primo;
}
