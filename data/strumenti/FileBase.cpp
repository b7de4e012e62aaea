#include "FileBase.h"

#include <QFile>

#include <sqlite3.h>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace FileBase
{
namespace
{

using Base = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;
using Comando = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

Base Apri(const QString &percorso, int modo)
{
    sqlite3 *base = nullptr;
    sqlite3_open_v2(QFile::encodeName(percorso).constData(), &base, modo, nullptr);
    return {base, &sqlite3_close};
}

Comando Prepara(const Base &base, const char *sql)
{
    sqlite3_stmt *comando = nullptr;
    sqlite3_prepare_v2(base.get(), sql, -1, &comando, nullptr);
    return {comando, &sqlite3_finalize};
}

// Tables without row ids are their own index: what the program reads in order of the keys is one plain scan.
constexpr char Schema[] = R"(
PRAGMA page_size = 16384;
PRAGMA journal_mode = OFF;
PRAGMA synchronous = OFF;
BEGIN;
CREATE TABLE TAG (
    IDtag INTEGER PRIMARY KEY,
    Tag TEXT NOT NULL UNIQUE,
    CloseTag BOOLEAN NOT NULL CHECK (CloseTag IN (0, 1)));
CREATE TABLE Property (
    IDProperty INTEGER NOT NULL CHECK (IDProperty BETWEEN 1 AND 32767),
    IDTag INTEGER NOT NULL REFERENCES TAG (IDtag),
    Property TEXT,
    Type INTEGER NOT NULL,
    Category INTEGER NOT NULL CHECK (Category BETWEEN 0 AND 255),
    PRIMARY KEY (IDTag, IDProperty)) WITHOUT ROWID;
CREATE TABLE PropValue (
    IDTag INTEGER NOT NULL,
    IDProp INTEGER NOT NULL,
    IDPropValue INTEGER NOT NULL CHECK (IDPropValue BETWEEN 1 AND 32767),
    PropValue TEXT NOT NULL,
    PRIMARY KEY (IDTag, IDProp, IDPropValue),
    FOREIGN KEY (IDTag, IDProp) REFERENCES Property (IDTag, IDProperty)) WITHOUT ROWID;
)";

/// One prepared INSERT; the arguments are bound from left to right, a null QString as NULL.
class Inserimento
{
public:
    Inserimento(const Base &base, const char *sql) : m_comando(Prepara(base, sql)) {}

    template <typename... Valori>
    bool operator()(const Valori &...valori)
    {
        if (!m_comando)
            return false;
        int posto = 0;
        (Lega(++posto, valori), ...);
        const bool fatto = sqlite3_step(m_comando.get()) == SQLITE_DONE;
        sqlite3_reset(m_comando.get());
        return fatto;
    }

private:
    void Lega(int posto, qsizetype numero) { sqlite3_bind_int64(m_comando.get(), posto, numero); }
    void Lega(int posto, const QString &testo)
    {
        if (testo.isNull())
            sqlite3_bind_null(m_comando.get(), posto);
        else
            sqlite3_bind_text(m_comando.get(), posto, testo.toUtf8().constData(), -1, SQLITE_TRANSIENT);
    }

    Comando m_comando;
};

bool Riempi(const Base &base, const QList<TabelleTag::Tag> &elenco)
{
    Inserimento tag(base, "INSERT INTO TAG VALUES (?, ?, ?)");
    Inserimento attributo(base, "INSERT INTO Property VALUES (?, ?, ?, ?, ?)");
    Inserimento valore(base, "INSERT INTO PropValue VALUES (?, ?, ?, ?)");
    bool bene = true;
    for (qsizetype t = 1; t <= elenco.size() && bene; ++t) {
        const TabelleTag::Tag &voce = elenco[t - 1];
        bene = tag(t, voce.nome, qsizetype(voce.chiusura));
        if (voce.attributi.isEmpty()) // the loader's inner join drops a tag without any row
            bene = bene && attributo(qsizetype(1), t, QString(), qsizetype(0), qsizetype(0));
        for (qsizetype p = 1; p <= voce.attributi.size() && bene; ++p) {
            const TabelleTag::Attributo &a = voce.attributi[p - 1];
            bene = attributo(p, t, a.nome, qsizetype(a.tipo), qsizetype(a.categoria));
            for (qsizetype v = 1; v <= a.valori.size() && bene; ++v)
                bene = valore(t, p, v, a.valori[v - 1]);
        }
    }
    return bene;
}

} // namespace

QString Scrivi(const QString &percorso, const QList<TabelleTag::Tag> &tag)
{
    const QString provvisorio = percorso + u".nuovo"_s;
    QFile::remove(provvisorio);
    {
        const Base base = Apri(provvisorio, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        const bool bene = sqlite3_exec(base.get(), Schema, nullptr, nullptr, nullptr) == SQLITE_OK &&
                          Riempi(base, tag) &&
                          sqlite3_exec(base.get(), "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK;
        if (!bene)
            return QString::fromUtf8(sqlite3_errmsg(base.get()));
    }
    if (std::rename(QFile::encodeName(provvisorio).constData(), QFile::encodeName(percorso).constData()) != 0)
        return u"cannot be put in place"_s;
    return {};
}

QStringList Verifica(const QString &percorso)
{
    struct Regola {
        const char *testo;
        const char *violazioni; ///< counts the rows that break the rule
    };
    static constexpr Regola regole[] = {
        {"TAG has exactly the columns IDtag, Tag, CloseTag",
         "SELECT (SELECT group_concat(name) FROM pragma_table_info('TAG')) IS NOT 'IDtag,Tag,CloseTag'"},
        {"IDProperty is the first column of Property",
         "SELECT (SELECT name FROM pragma_table_info('Property') WHERE cid = 0) IS NOT 'IDProperty'"},
        {"IDtag runs densely from 1", "SELECT count(*) = 0 OR min(IDtag) <> 1 OR max(IDtag) <> count(*) FROM TAG"},
        {"IDtag ascends in the binary order of the names",
         "SELECT count(*) FROM TAG a JOIN TAG b ON b.IDtag = a.IDtag + 1 WHERE NOT a.Tag < b.Tag"},
        {"tag names are unique, upper case and not empty", "SELECT (SELECT count(*) - count(DISTINCT upper(Tag)) FROM "
                                                           "TAG) + (SELECT count(*) FROM TAG WHERE Tag <> upper(Tag) "
                                                           "OR Tag = '')"},
        {"every tag has a Property row", "SELECT count(*) FROM TAG WHERE IDtag NOT IN (SELECT IDTag FROM Property)"},
        {"IDProperty counts from 1 within a tag", "SELECT count(*) FROM (SELECT 1 FROM Property GROUP BY IDTag HAVING "
                                                  "min(IDProperty) <> 1 OR max(IDProperty) <> "
                                                  "count(*))"},
        {"IDPropValue counts from 1 within an attribute",
         "SELECT count(*) FROM (SELECT 1 FROM PropValue GROUP BY IDTag, IDProp HAVING min(IDPropValue) <> 1 OR "
         "max(IDPropValue) <> count(*))"},
        {"attribute names are unique within a tag",
         "SELECT count(*) FROM (SELECT 1 FROM Property GROUP BY IDTag, upper(Property) HAVING count(*) > 1)"},
        {"every value belongs to an attribute, every attribute to a tag",
         "SELECT (SELECT count(*) FROM PropValue LEFT JOIN Property ON PropValue.IDTag = Property.IDTag AND IDProp = "
         "IDProperty WHERE IDProperty IS NULL) + (SELECT count(*) FROM Property WHERE IDTag NOT IN (SELECT IDtag FROM "
         "TAG))"},
    };
    QStringList errori;
    const Base base = Apri(percorso, SQLITE_OPEN_READONLY);
    for (const Regola &regola : regole) {
        const Comando domanda = Prepara(base, regola.violazioni);
        if (!domanda || sqlite3_step(domanda.get()) != SQLITE_ROW || sqlite3_column_int(domanda.get(), 0) != 0)
            errori += u"%1: broken rule: %2"_s.arg(percorso, QString::fromUtf8(regola.testo));
    }
    return errori;
}

} // namespace FileBase
