#include "html/VerificaDaRiga.h"

#include "html/Risultati.h"
#include "platform/NomiFile.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace VerificaDaRiga
{
namespace
{

using namespace ModuloVerificaSintassi;

/// Keeps of each finding what its record does not hold.
class Raccolta : public Ricevitore
{
public:
    bool Prosegui(qsizetype) override { return !soloPrimo || ++m_tag == 1; }
    void Trova(const Riscontro &riscontro) override
    {
        if (!registro.Aggiungi(riscontro))
            return;
        colonne.append(int(riscontro.colonna));
        nomi.append(riscontro.nome.first(std::min(riscontro.nome.size(), MassimoNome)).toString());
    }

    bool soloPrimo = false; ///< end the walk after the first tag
    Registro registro;
    QList<int> colonne{0}; ///< per slot of the records
    QStringList nomi{QString()};

private:
    int m_tag = 0;
};

/// Every fault. The walk of an opened page passes over a tag with which the page begins, which may hold others.
void Raccogli(QStringView testo, Raccolta &raccolta)
{
    if (testo.startsWith(u'<')) {
        raccolta.soloPrimo = true;
        Scandisci(testo, {.primaFine = 0}, raccolta);
        raccolta.soloPrimo = false;
    }
    Scandisci(testo, {}, raccolta);
}

} // namespace

QString InRighe(const QString &file, const QString &testo)
{
    Raccolta raccolta;
    Raccogli(testo, raccolta);
    const QString inizio = NomiFile::Leggibile(file) + u':';
    QString righe;
    for (const RisultatoControllo &risultato : raccolta.registro.Risultati().sliced(1))
        righe += inizio + NomiFile::Leggibile(risultato.Testo) + u'\n';
    return righe;
}

QJsonArray InJson(const QString &file, const QString &testo)
{
    Raccolta raccolta;
    Raccogli(testo, raccolta);
    const auto &risultati = raccolta.registro.Risultati();
    QJsonArray oggetti;
    for (qsizetype i = 1; i < risultati.size(); ++i) {
        oggetti.append(QJsonObject{{u"file"_s, file},
                                   {u"line"_s, risultati[i].Riga},
                                   {u"column"_s, raccolta.colonne[i]},
                                   {u"position"_s, risultati[i].Posizione},
                                   {u"type"_s, risultati[i].Tipo},
                                   {u"name"_s, raccolta.nomi[i]},
                                   {u"message"_s, risultati[i].Testo}});
    }
    return oggetti;
}

} // namespace VerificaDaRiga
