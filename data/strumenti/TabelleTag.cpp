#include "TabelleTag.h"

#include <QFile>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringDecoder>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace TabelleTag
{
namespace
{

constexpr int LunghezzaMassima = 255;

enum Tipo { Testo, Parola, Booleano, Numero, Lunghezza, Colore, Indirizzo, Nome, Elenco, Codice, Script };
const QStringList Tipi = {u"testo"_s,     u"parola"_s, u"booleano"_s, u"numero"_s, u"lunghezza"_s, u"colore"_s,
                          u"indirizzo"_s, u"nome"_s,   u"elenco"_s,   u"codice"_s, u"script"_s};
const QStringList Categorie = {u"attuale"_s, u"superato"_s, u"estensione"_s}; // counted from 1 in the base

struct Riga {
    int numero = 0;
    QStringList campi;
};

/// A row of tag.tsv or a group, with the attributes that stand under its own name.
struct Voce {
    QList<Attributo> attributi;
    QHash<QString, qsizetype> indice; ///< lower-case attribute name to its place in attributi
    int riga = 0;                     ///< where its first attribute stands
    bool usata = false;
};

class Lettore
{
public:
    explicit Lettore(QString cartella) : m_cartella(std::move(cartella)) {}

    Esito Leggi()
    {
        const QList<Riga> tag = Apri(u"tag.tsv"_s, 3, 4);
        for (const Riga &riga : tag)
            m_noti.insert(riga.campi[0]);
        LeggiAttributi();
        LeggiValori();
        ControllaValori();
        m_file = u"tag.tsv"_s;
        for (const Riga &riga : tag)
            AggiungiTag(riga);
        ControllaGruppi();
        std::sort(m_esito.tag.begin(), m_esito.tag.end(), [](const Tag &a, const Tag &b) { return a.nome < b.nome; });
        if (m_esito.tag.isEmpty())
            Errore(1, u"no tag"_s);
        if (m_esito.tag.size() > std::numeric_limits<qint16>::max())
            Errore(1, u"more tags than the base can number"_s);
        return std::move(m_esito);
    }

private:
    void Errore(int riga, const QString &testo)
    {
        m_esito.errori += u"%1/%2:%3: %4"_s.arg(m_cartella, m_file).arg(riga).arg(testo);
    }

    QList<Riga> Apri(const QString &nome, int minimo, int massimo)
    {
        m_file = nome;
        QList<Riga> righe;
        QFile file(m_cartella + u'/' + nome);
        if (!file.open(QIODevice::ReadOnly)) {
            Errore(1, file.errorString());
            return righe;
        }
        QStringDecoder utf8(QStringDecoder::Utf8);
        const QString testo = utf8(file.readAll());
        if (utf8.hasError())
            Errore(1, u"not UTF-8"_s);
        int numero = 0;
        for (QString riga : testo.split(u'\n')) {
            ++numero;
            if (riga.endsWith(u'\r'))
                riga.chop(1);
            if (riga.isEmpty() || riga.startsWith(u'#'))
                continue;
            const QStringList campi = riga.split(u'\t');
            if (campi.size() < minimo || campi.size() > massimo)
                Errore(numero, u"%1 fields, expected %2"_s.arg(campi.size()).arg(minimo));
            else if (CampiBuoni(campi, numero))
                righe += Riga{numero, campi};
        }
        return righe;
    }

    bool CampiBuoni(const QStringList &campi, int numero)
    {
        for (const QString &campo : campi) {
            const bool illeggibile =
                std::any_of(campo.begin(), campo.end(), [](QChar c) { return c < u' ' || c == u'\x7f'; });
            if (campo.isEmpty() || illeggibile || campo.size() > LunghezzaMassima || campo != campo.trimmed()) {
                Errore(numero,
                       u"field \"%1\" is empty, too long, or has blanks at its ends or control characters"_s.arg(
                           campo.left(40)));
                return false;
            }
        }
        return true;
    }

    static bool NomeBuono(QStringView nome)
    {
        return std::all_of(nome.begin(), nome.end(), [](QChar c) {
            return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'-';
        });
    }

    void LeggiAttributi()
    {
        for (const Riga &riga : Apri(u"attributi.tsv"_s, 4, 4)) {
            const QString &chi = riga.campi[0], &nome = riga.campi[1];
            const auto tipo = Tipi.indexOf(riga.campi[2]), categoria = Categorie.indexOf(riga.campi[3]);
            if (!chi.startsWith(u'@') && !m_noti.contains(chi))
                Errore(riga.numero, u"unknown tag \"%1\""_s.arg(chi));
            if (tipo < 0)
                Errore(riga.numero, u"unknown Type \"%1\""_s.arg(riga.campi[2]));
            if (categoria < 0)
                Errore(riga.numero, u"unknown Category \"%1\""_s.arg(riga.campi[3]));
            if (!NomeBuono(nome))
                Errore(riga.numero, u"\"%1\" is no attribute name"_s.arg(nome));
            if (nome.startsWith("on"_L1, Qt::CaseInsensitive) != (tipo == Script))
                Errore(riga.numero, u"names that begin with \"On\" and Type script belong together"_s);
            if (tipo == Script && nome != u"On"_s + nome.mid(2, 1).toUpper() + nome.mid(3).toLower())
                Errore(riga.numero,
                       u"event attribute \"%1\" is not written \"On\" and the capitalised name"_s.arg(nome));

            Voce &voce = m_voci[chi];
            if (voce.riga == 0)
                voce.riga = riga.numero;
            const QString chiave = nome.toLower();
            if (voce.indice.contains(chiave)) {
                Errore(riga.numero, u"attribute \"%1\" of \"%2\" stands twice"_s.arg(nome, chi));
                continue;
            }
            voce.indice.insert(chiave, voce.attributi.size());
            voce.attributi += Attributo{nome, int(tipo), int(categoria) + 1, {}, riga.numero};
        }
    }

    void LeggiValori()
    {
        for (const Riga &riga : Apri(u"valori.tsv"_s, 3, 3)) {
            const QString &chi = riga.campi[0], &nome = riga.campi[1], &valore = riga.campi[2];
            const auto voce = m_voci.find(chi);
            const qsizetype dove = voce == m_voci.end() ? -1 : voce->indice.value(nome.toLower(), -1);
            if (dove < 0 || voce->attributi[dove].nome != nome) {
                Errore(riga.numero, u"\"%1\" has no row for the attribute \"%2\""_s.arg(chi, nome));
                continue;
            }
            QStringList &valori = voce->attributi[dove].valori;
            if (valori.contains(valore))
                Errore(riga.numero, u"value \"%1\" stands twice"_s.arg(valore));
            valori += valore;
        }
    }

    void ControllaValori()
    {
        m_file = u"attributi.tsv"_s;
        for (const auto &voce : m_voci) {
            for (const Attributo &a : voce.attributi) {
                if (a.tipo == Parola && a.valori.isEmpty())
                    Errore(a.riga, u"\"%1\" is of Type parola and has no value"_s.arg(a.nome));
                else if (a.tipo == Booleano && a.valori != QStringList(a.nome.toLower()))
                    Errore(a.riga, u"\"%1\" is of Type booleano: its own name is its one value"_s.arg(a.nome));
                else if (a.tipo != Parola && a.tipo != Booleano && !a.valori.isEmpty())
                    Errore(a.riga, u"\"%1\" is of an open Type and has values"_s.arg(a.nome));
            }
        }
    }

    void AggiungiTag(const Riga &riga)
    {
        Tag tag{riga.campi[0], riga.campi[1] == "true"_L1, {}};
        if (tag.nome != tag.nome.toUpper() || !NomeBuono(tag.nome))
            Errore(riga.numero, u"\"%1\" is no upper-case tag name"_s.arg(tag.nome));
        if (m_visti.contains(tag.nome))
            Errore(riga.numero, u"tag \"%1\" stands twice"_s.arg(tag.nome));
        m_visti.insert(tag.nome);
        if (!tag.chiusura && riga.campi[1] != "false"_L1)
            Errore(riga.numero, u"CloseTag \"%1\" is neither true nor false"_s.arg(riga.campi[1]));

        tag.attributi = m_voci.value(tag.nome).attributi;
        if (riga.campi[2] != "-"_L1) {
            for (const QString &gruppo : riga.campi[2].split(u' ')) {
                const auto voce = m_voci.find(gruppo);
                if (!gruppo.startsWith(u'@') || voce == m_voci.end()) {
                    Errore(riga.numero, u"unknown group \"%1\""_s.arg(gruppo));
                    continue;
                }
                voce->usata = true;
                tag.attributi += voce->attributi;
            }
        }
        if (tag.attributi.size() > std::numeric_limits<qint16>::max())
            Errore(riga.numero, u"more attributes than the base can number"_s);
        std::sort(tag.attributi.begin(), tag.attributi.end(),
                  [](const Attributo &a, const Attributo &b) { return a.nome.toLower() < b.nome.toLower(); });
        for (qsizetype i = 1; i < tag.attributi.size(); ++i) {
            if (tag.attributi[i].nome.compare(tag.attributi[i - 1].nome, Qt::CaseInsensitive) == 0)
                Errore(riga.numero, u"\"%1\" gets the attribute \"%2\" twice: lines %3 and %4 of attributi.tsv"_s
                                        .arg(tag.nome, tag.attributi[i].nome)
                                        .arg(tag.attributi[i - 1].riga)
                                        .arg(tag.attributi[i].riga));
        }
        m_esito.tag += std::move(tag);
    }

    void ControllaGruppi()
    {
        m_file = u"attributi.tsv"_s;
        for (auto voce = m_voci.cbegin(); voce != m_voci.cend(); ++voce) {
            if (voce.key().startsWith(u'@') && !voce->usata)
                Errore(voce->riga, u"no tag takes the group \"%1\""_s.arg(voce.key()));
        }
        m_file = u"tag.tsv"_s;
    }

    const QString m_cartella;
    QString m_file; ///< the table that messages name
    QSet<QString> m_noti;
    QSet<QString> m_visti;
    QMap<QString, Voce> m_voci;
    Esito m_esito;
};

} // namespace

Esito Leggi(const QString &cartella)
{
    return Lettore(cartella).Leggi();
}

} // namespace TabelleTag
