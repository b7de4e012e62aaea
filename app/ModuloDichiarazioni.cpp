#include "app/ModuloDichiarazioni.h"

#include <QCoreApplication>
#include <QDir>

namespace ModuloDichiarazioni
{

namespace
{
QString cartellaImposta;
}

StatoProgramma &Stato()
{
    static StatoProgramma stato;
    return stato;
}

QString PostoPagina()
{
    return Stato().FileSalvato.isEmpty() ? Stato().FileCorrente : Stato().FileSalvato;
}

QString CartellaProgramma()
{
    return cartellaImposta.isEmpty() ? QCoreApplication::applicationDirPath() : cartellaImposta;
}

void ImpostaCartellaProgramma(const QString &cartella)
{
    cartellaImposta = cartella;
}

QString PercorsoIn(const QString &cartella, QStringView nome)
{
    const bool separata = cartella.endsWith(QDir::separator()) || cartella.endsWith(u'/');
    return QDir::toNativeSeparators((separata ? cartella : cartella + u'/') + nome.toString());
}

} // namespace ModuloDichiarazioni
