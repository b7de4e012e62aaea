#include "dialogs/PaginaAnteprima.h"

#include "app/ModuloDichiarazioni.h"
#include "platform/CodificaPagina.h"
#include "platform/FilePagina.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString PaginaAnteprima::Percorso()
{
    const QString programma = ModuloDichiarazioni::CartellaProgramma();
    if (QFileInfo(programma).isWritable())
        return ModuloDichiarazioni::PercorsoIn(programma, u"test.html");
    const QString dati = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(dati);
    return ModuloDichiarazioni::PercorsoIn(dati, u"test.html");
}

QString PaginaAnteprima::Scrivi(QStringView testo, FormatoPagina formato)
{
    if (testo.isEmpty())
        return {};
    QFile file(ModuloDichiarazioni::Stato().FileAnteprima);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    const QByteArray byte = Codifiche::ByteDaTesto(testo, formato);
    if (file.write(byte) != byte.size() || !file.flush())
        return file.errorString();
    return {};
}

void PaginaAnteprima::Rimuovi()
{
    const QString &percorso = ModuloDichiarazioni::Stato().FileAnteprima;
    if (!percorso.isEmpty() && QFile::exists(percorso))
        QFile::remove(percorso);
}
