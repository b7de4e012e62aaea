#include "html/LettoreBaseTag.h"

#include "platform/LetturaFile.h"

#include <QFile>

#include <fcntl.h>
#include <sqlite3.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

using namespace Qt::StringLiterals;

namespace ModuloTag
{
namespace
{

// What a sound base never reaches, so that a hostile one costs at most a second and some 100 MB.
constexpr int MassimoTesto = 4096;           // bytes of a text
constexpr qint64 MassimoCaselle = 500'000;   // slots made, of tags, attributes and values together
constexpr int PassiPerControllo = 1'000'000; // steps of the database engine
constexpr int MassimoControlli = 60;
constexpr qint64 MassimoFile = 64 << 20; // bytes

// The rows wanted are those of
//   SELECT * FROM (TAG INNER JOIN Property ON Tag.IDtag = Property.IDTag) left outer join PropValue
//   ON Property.IDTag = PropValue.IDTag and Property.IDProperty = PropValue.IDProp
//   ORDER BY TAG.Tag, Property.IDProperty, PropValue.IDPropValue
// Since IDtag ascends with the names, three ordered reads side by side give them in that order, in less than half of
// the time that the engine's own join takes.
constexpr char DomandaTag[] = "SELECT * FROM TAG ORDER BY Tag";
constexpr char DomandaProperty[] = "SELECT * FROM Property ORDER BY IDTag, IDProperty";
constexpr char DomandaPropValue[] = "SELECT * FROM PropValue ORDER BY IDTag, IDProp, IDPropValue";

constexpr int ColonneTag = 3; ///< TAG has exactly these; IDtag, and in Property IDProperty, is the first

/// Whether a program that writes the base holds the lock which the engine has for that.
bool InScrittura(const QFile &file)
{
    constexpr off_t Blocco = 0x40000000; // where the file format places its locks
    struct flock chiave = {};
    chiave.l_type = F_RDLCK;
    chiave.l_whence = SEEK_SET;
    chiave.l_start = Blocco;
    chiave.l_len = 512;
    return fcntl(file.handle(), F_OFD_GETLK, &chiave) == 0 && chiave.l_type != F_UNLCK;
}

/// The rows of one query, one after the other.
class Cursore
{
public:
    bool Prepara(sqlite3 *base, const char *sql)
    {
        sqlite3_stmt *domanda = nullptr;
        const bool pronta = sqlite3_prepare_v2(base, sql, -1, &domanda, nullptr) == SQLITE_OK;
        m_domanda.reset(domanda);
        return pronta;
    }

    /// False when the engine fails; Finito tells the end of the rows.
    bool Avanza()
    {
        const int passo = sqlite3_step(m_domanda.get());
        m_finito = passo != SQLITE_ROW;
        return passo == SQLITE_ROW || passo == SQLITE_DONE;
    }
    [[nodiscard]] bool Finito() const { return m_finito; }

    [[nodiscard]] int Colonne() const { return sqlite3_column_count(m_domanda.get()); }
    [[nodiscard]] int Colonna(const char *nome) const
    {
        for (int i = 0; i < Colonne(); ++i) {
            if (qstricmp(sqlite3_column_name(m_domanda.get(), i), nome) == 0)
                return i;
        }
        return -1;
    }

    [[nodiscard]] bool Nulla(int colonna) const { return sqlite3_column_type(m_domanda.get(), colonna) == SQLITE_NULL; }

    template <typename Intero>
    [[nodiscard]] std::optional<Intero> Numero(int colonna) const
    {
        sqlite3_value *valore = sqlite3_column_value(m_domanda.get(), colonna);
        if (sqlite3_value_type(valore) != SQLITE_INTEGER)
            return std::nullopt;
        const qint64 numero = sqlite3_value_int64(valore);
        if (numero < std::numeric_limits<Intero>::min() || numero > std::numeric_limits<Intero>::max())
            return std::nullopt;
        return Intero(numero);
    }

    /// The bytes live until the next step.
    [[nodiscard]] std::optional<std::string_view> Testo(int colonna) const
    {
        sqlite3_value *valore = sqlite3_column_value(m_domanda.get(), colonna);
        if (sqlite3_value_type(valore) == SQLITE_BLOB)
            return std::nullopt;
        const auto *testo = reinterpret_cast<const char *>(sqlite3_value_text(valore));
        if (!testo)
            return std::nullopt;
        return std::string_view(testo, size_t(sqlite3_value_bytes(valore)));
    }

private:
    std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> m_domanda{nullptr, &sqlite3_finalize};
    bool m_finito = false;
};

class LettoreBaseTag
{
public:
    explicit LettoreBaseTag(QList<DatiTag> &tabella) : m_tabella(tabella) {}

    EsitoLettura Leggi(const QString &percorso)
    {
        if (!Apri(percorso) || !TrovaColonne() || !LeggiRighe()) {
            if (m_esito.motivo.isEmpty())
                m_esito.motivo = QString::fromUtf8(sqlite3_errmsg(m_base.get()));
        }
        return m_esito;
    }

private:
    bool Fallito(const QString &motivo)
    {
        m_esito.motivo = motivo;
        return false;
    }
    bool NonSta() { return Fallito(u"the row after row %1 does not fit"_s.arg(m_esito.righe)); }

    bool Apri(const QString &percorso)
    {
        // The engine itself would wait for a pipe, and could be given another file than the one looked at.
        QFile file;
        auto letto = ModuloPrincipale::ApriInLettura(percorso, file, MassimoFile);
        if (letto && InScrittura(file))
            return Fallito(u"the file is being written"_s);
        if (letto)
            letto = ModuloPrincipale::LeggiTutto(file, m_byte, MassimoFile);
        if (!letto)
            return Fallito(letto.motivo.isEmpty() ? u"it is no regular file of a bounded size"_s : letto.motivo);
        sqlite3 *base = nullptr;
        const int esito = sqlite3_open_v2(":memory:", &base, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        m_base.reset(base);
        if (esito != SQLITE_OK ||
            sqlite3_deserialize(base, "main", reinterpret_cast<unsigned char *>(m_byte.data()), m_byte.size(),
                                m_byte.size(), SQLITE_DESERIALIZE_READONLY) != SQLITE_OK)
            return false;
        sqlite3_limit(base, SQLITE_LIMIT_LENGTH, MassimoTesto);
        sqlite3_db_config(base, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
        sqlite3_db_config(base, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_progress_handler(
            base, PassiPerControllo,
            [](void *controlli) { return int(++*static_cast<int *>(controlli) > MassimoControlli); }, &m_controlli);
        return m_tag.Prepara(base, DomandaTag) && m_proprieta.Prepara(base, DomandaProperty) &&
               m_valori.Prepara(base, DomandaPropValue);
    }

    bool TrovaColonne()
    {
        m_nomeTag = m_tag.Colonna("Tag");
        m_closeTag = m_tag.Colonna("CloseTag");
        m_idTagProprieta = m_proprieta.Colonna("IDTag");
        m_nomeProprieta = m_proprieta.Colonna("Property");
        m_type = m_proprieta.Colonna("Type");
        m_category = m_proprieta.Colonna("Category");
        m_idTagValore = m_valori.Colonna("IDTag");
        m_idProp = m_valori.Colonna("IDProp");
        m_idPropValue = m_valori.Colonna("IDPropValue");
        m_propValue = m_valori.Colonna("PropValue");
        const bool tutte = m_nomeTag > 0 && m_closeTag > 0 && m_idTagProprieta > 0 && m_nomeProprieta > 0 &&
                           m_type > 0 && m_category > 0 && m_idTagValore >= 0 && m_idProp >= 0 && m_idPropValue >= 0 &&
                           m_propValue >= 0;
        if (!tutte || m_tag.Colonne() != ColonneTag || m_tag.Colonna("IDtag") != 0 ||
            m_proprieta.Colonna("IDProperty") != 0)
            return Fallito(u"the tables have other columns"_s);
        return true;
    }

    bool LeggiRighe()
    {
        if (!m_proprieta.Avanza() || !m_valori.Avanza())
            return false;
        int prima = -1;
        while (m_tag.Avanza()) {
            if (m_tag.Finito())
                return true;
            const std::optional<qint16> t = m_tag.Numero<qint16>(0);
            if (!t || *t <= prima)
                return NonSta();
            prima = *t;
            if (!LeggiTag(*t))
                return false;
        }
        return false;
    }

    /// What the tag's rows in Property and PropValue say; a tag without any is not loaded at all.
    bool LeggiTag(qint16 t)
    {
        while (!m_proprieta.Finito()) {
            const std::optional<qint64> diChi = m_proprieta.Numero<qint64>(m_idTagProprieta);
            if (diChi > t)
                return true;
            if (diChi == t && !LeggiAttributo(t))
                return false;
            if (!m_proprieta.Avanza())
                return false;
        }
        return true;
    }

    bool LeggiAttributo(qint16 t)
    {
        const std::optional<qint16> p = m_proprieta.Numero<qint16>(0);
        const std::optional<qint32> tipo = m_proprieta.Numero<qint32>(m_type);
        const std::optional<quint8> categoria = m_proprieta.Numero<quint8>(m_category);
        const QString *nome = Stringa(m_proprieta, m_nomeProprieta);
        if (!p || !tipo || !categoria || (!nome && !m_proprieta.Nulla(m_nomeProprieta)))
            return NonSta();
        if (t >= m_tabella.size() && !ApriTag(t))
            return NonSta();
        DatiTag &tag = m_tabella[t];
        if (!Arriva(tag.Proprieta, *p))
            return NonSta();
        DatiProprieta &proprieta = tag.Proprieta[*p];
        if (nome)
            proprieta.Property = *nome;
        proprieta.Type = *tipo;
        proprieta.Category = *categoria;
        ++m_esito.righe;
        return LeggiValori(t, *p, proprieta.Valori);
    }

    bool ApriTag(qint16 t)
    {
        const QString *nome = Stringa(m_tag, m_nomeTag);
        const std::optional<qint64> chiusura = m_tag.Numero<qint64>(m_closeTag);
        if (!nome || !chiusura || !Arriva(m_tabella, t))
            return false;
        DatiTag &tag = m_tabella[t];
        tag.Tag = *nome;
        tag.CloseTag = *chiusura != 0;
        return true;
    }

    bool LeggiValori(qint16 t, qint16 p, QStringList &valori)
    {
        using Chiave = std::pair<std::optional<qint64>, std::optional<qint64>>;
        const Chiave cercata{t, p};
        while (!m_valori.Finito()) {
            const Chiave chiave{m_valori.Numero<qint64>(m_idTagValore), m_valori.Numero<qint64>(m_idProp)};
            if (chiave > cercata)
                return true;
            if (chiave == cercata) {
                const std::optional<qint16> v = m_valori.Numero<qint16>(m_idPropValue);
                const QString *valore = Stringa(m_valori, m_propValue);
                if (!v || !valore || !Arriva(valori, *v))
                    return NonSta();
                valori[*v] = *valore;
            }
            if (!m_valori.Avanza())
                return false;
        }
        return true;
    }

    /// Makes sure that the slot  ultimo is there.
    template <typename Lista>
    bool Arriva(Lista &lista, qint16 ultimo)
    {
        if (ultimo < 0)
            return false;
        if (ultimo < lista.size())
            return true;
        m_caselle += ultimo + 1 - lista.size();
        if (m_caselle > MassimoCaselle)
            return false;
        lista.resize(ultimo + 1);
        return true;
    }

    /// Equal texts share one string: a base has tens of thousands of them and a few hundred different ones. Null when
    /// the column holds no text; valid as long as the reader.
    const QString *Stringa(const Cursore &cursore, int colonna)
    {
        const std::optional<std::string_view> testo = cursore.Testo(colonna);
        if (!testo)
            return nullptr;
        auto noto = m_testi.find(*testo);
        if (noto == m_testi.end())
            noto = m_testi.emplace(*testo, QString::fromUtf8(testo->data(), qsizetype(testo->size()))).first;
        return &noto->second;
    }

    struct Impronta : std::hash<std::string_view> {
        using is_transparent = void;
    };

    QList<DatiTag> &m_tabella;
    EsitoLettura m_esito;
    QByteArray m_byte; ///< the file; before the connection that reads it
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> m_base{nullptr, &sqlite3_close};
    Cursore m_tag, m_proprieta, m_valori; ///< after the connection, so that they end before it
    std::unordered_map<std::string, QString, Impronta, std::equal_to<>> m_testi;
    qint64 m_caselle = 0;
    int m_controlli = 0;
    int m_nomeTag = -1, m_closeTag = -1;
    int m_idTagProprieta = -1, m_nomeProprieta = -1, m_type = -1, m_category = -1;
    int m_idTagValore = -1, m_idProp = -1, m_idPropValue = -1, m_propValue = -1;
};

} // namespace

EsitoLettura LeggiBaseTag(const QString &percorso, QList<DatiTag> &tabella)
{
    return LettoreBaseTag(tabella).Leggi(percorso);
}

} // namespace ModuloTag
