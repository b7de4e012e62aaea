#include "platform/RegistroOspite.h"

#include "platform/Registro.h"
#include "platform/RegistroFile.h"
#include "platform/Utente.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace Registro
{

namespace
{

struct Strumento {
    QStringView programma;
    QStringView argomenti;
};

constexpr Strumento Strumenti[] = {
    {u"kinfocenter", u""},
    {u"hardinfo2", u""},
    {u"hardinfo", u""},
    {u"gnome-control-center", u" info-overview"},
};

QString comandoStrumento(const QString &cartella)
{
    for (const Strumento &strumento : Strumenti) {
        const QString percorso = QStandardPaths::findExecutable(
            strumento.programma.toString(), cartella.isEmpty() ? QStringList() : QStringList{cartella});
        if (!percorso.isEmpty())
            return u'"' + percorso + u'"' + strumento.argomenti.toString();
    }
    return {};
}

QString senzaVirgolette(QStringView valore)
{
    QString testo;
    QChar aperta;
    for (qsizetype i = 0; i < valore.size(); ++i) {
        const QChar c = valore[i];
        if (aperta.isNull() && (c == u'"' || c == u'\''))
            aperta = c;
        else if (!aperta.isNull() && c == aperta)
            aperta = QChar();
        else if (c == u'\\' && aperta != u'\'' && i + 1 < valore.size())
            testo += valore[++i];
        else
            testo += c;
    }
    return testo;
}

} // namespace

QString CampoMacchina(QStringView testo, QStringView nome)
{
    QString trovato;
    for (QStringView riga : testo.tokenize(u'\n')) {
        riga = riga.trimmed();
        if (riga.size() > nome.size() && riga.startsWith(nome) && riga[nome.size()] == u'=')
            trovato = senzaVirgolette(riga.sliced(nome.size() + 1));
    }
    return trovato;
}

void AggiungiFatti(Albero &albero, const Sorgenti &sorgenti)
{
    const QString versione = u"HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion"_s;
    const auto aggiungi = [&albero](const QString &chiave, const QString &nome, const QString &testo) {
        if (!testo.isEmpty())
            albero.ImpostaTesto(chiave, nome, testo);
    };
    aggiungi(versione, u"RegisteredOwner"_s, Utente::NomeCompleto());
    aggiungi(versione, u"RegisteredOrganization"_s,
             CampoMacchina(QString::fromUtf8(Contenuto(sorgenti.macchina)), u"ORGANIZATION"));
    aggiungi(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, u"PATH"_s,
             comandoStrumento(sorgenti.cartellaProgrammi));
}

} // namespace Registro
