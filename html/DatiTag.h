#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace ModuloTag
{

/// One attribute of a tag.
struct DatiProprieta {
    QString Property; ///< the name as completion inserts it; empty when the base has none
    qint32 Type = 0;
    QStringList Valori; ///< from slot 1; slot 0 is empty. An empty list: any value is allowed.
    quint8 Category = 0;
};

/// One tag of the knowledge base.
struct DatiTag {
    QList<DatiProprieta> Proprieta; ///< from slot 1; slot 0 is empty
    QString Tag;                    ///< upper case, without angle brackets
    bool CloseTag = false;          ///< the tag needs a closing tag
};

} // namespace ModuloTag

Q_DECLARE_TYPEINFO(ModuloTag::DatiProprieta, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(ModuloTag::DatiTag, Q_RELOCATABLE_TYPE);
