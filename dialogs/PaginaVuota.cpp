#include "dialogs/PaginaVuota.h"

#include <QStringList>

using namespace Qt::StringLiterals;

QString PaginaVuota::Testo()
{
    return QStringList{
        u"<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">"_s,
        u"<HTML>"_s,
        u"<HEAD>"_s,
        u"<TITLE>Documento senza titolo</TITLE>"_s,
        u"<META http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\">"_s,
        u"</HEAD>"_s,
        u"<BODY>"_s,
        QString(),
        QString(),
        u"</BODY>"_s,
        u"</HTML>"_s,
    }
        .join(u"\r\n"_s);
}
