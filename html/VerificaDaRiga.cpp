#include "html/VerificaDaRiga.h"

#include "html/Risultati.h"

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
    void Trova(const Riscontro &riscontro) override
    {
        if (!registro.Aggiungi(riscontro))
            return;
        colonne.append(int(riscontro.colonna));
        nomi.append(riscontro.nome.first(std::min(riscontro.nome.size(), MassimoNome)).toString());
    }

    Registro registro;
    QList<int> colonne{0}; ///< per slot of the records
    QStringList nomi{QString()};
};

} // namespace

QString InRighe(const QString &file, const QString &testo)
{
    Raccolta raccolta;
    Scandisci(testo, {}, raccolta);
    QString righe;
    for (const Registro::Voce &voce : raccolta.registro.Visibili(testo))
        righe += file + u':' + voce.testo + u'\n';
    return righe;
}

QJsonArray InJson(const QString &file, const QString &testo)
{
    Raccolta raccolta;
    Scandisci(testo, {}, raccolta);
    QJsonArray oggetti;
    for (const Registro::Voce &voce : raccolta.registro.Visibili(testo)) {
        const RisultatoControllo &risultato = raccolta.registro.Risultati()[voce.risultato];
        oggetti.append(QJsonObject{{u"file"_s, file},
                                   {u"line"_s, risultato.Riga},
                                   {u"column"_s, raccolta.colonne[voce.risultato]},
                                   {u"position"_s, risultato.Posizione},
                                   {u"type"_s, risultato.Tipo},
                                   {u"name"_s, raccolta.nomi[voce.risultato]},
                                   {u"message"_s, voce.testo}});
    }
    return oggetti;
}

} // namespace VerificaDaRiga
