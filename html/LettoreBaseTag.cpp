#include "html/LettoreBaseTag.h"

#include <QByteArray>
#include <QFile>
#include <QHash>

#include <sqlite3.h>

#include <limits>
#include <memory>
#include <optional>

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
constexpr int AttesaMillisecondi = 100; // for a lock of somebody else

constexpr char Domanda[] =
    "SELECT * FROM (TAG INNER JOIN Property ON Tag.IDtag = Property.IDTag) left outer join PropValue ON "
    "Property.IDTag = PropValue.IDTag and Property.IDProperty = PropValue.IDProp ORDER BY TAG.Tag , "
    "Property.IDProperty , PropValue.IDPropValue ";

constexpr int ColonnaIDtag = 0;
constexpr int ColonnaIDProperty = 3;

class LettoreBaseTag
{
public:
    explicit LettoreBaseTag(QList<DatiTag> &tabella) : m_tabella(tabella) {}

    EsitoLettura Leggi(const QString &percorso)
    {
        if (Apri(percorso) && TrovaColonne())
            LeggiRighe();
        return m_esito;
    }

private:
    bool Fallito(const QString &motivo)
    {
        m_esito.motivo = motivo;
        return false;
    }
    bool FallitoMotore()
    {
        const QString motivo = QString::fromUtf8(sqlite3_errmsg(m_base.get()));
        return Fallito(motivo.isEmpty() ? u"no reason given"_s : motivo);
    }

    bool Apri(const QString &percorso)
    {
        sqlite3 *base = nullptr;
        const int esito = sqlite3_open_v2(QFile::encodeName(percorso).constData(), &base,
                                          SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        m_base.reset(base);
        if (esito != SQLITE_OK)
            return FallitoMotore();
        sqlite3_busy_timeout(base, AttesaMillisecondi);
        sqlite3_limit(base, SQLITE_LIMIT_LENGTH, MassimoTesto);
        sqlite3_db_config(base, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
        sqlite3_db_config(base, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_progress_handler(
            base, PassiPerControllo,
            [](void *controlli) { return int(++*static_cast<int *>(controlli) > MassimoControlli); }, &m_controlli);
        sqlite3_stmt *domanda = nullptr;
        const int pronta = sqlite3_prepare_v2(base, Domanda, -1, &domanda, nullptr);
        m_domanda.reset(domanda);
        return pronta == SQLITE_OK || FallitoMotore();
    }

    bool TrovaColonne()
    {
        const auto trova = [this](const char *nome) {
            const int quante = sqlite3_column_count(m_domanda.get());
            for (int i = 0; i < quante; ++i) {
                if (qstricmp(sqlite3_column_name(m_domanda.get(), i), nome) == 0)
                    return i;
            }
            return -1;
        };
        m_tag = trova("Tag");
        m_closeTag = trova("CloseTag");
        m_property = trova("Property");
        m_type = trova("Type");
        m_category = trova("Category");
        m_idPropValue = trova("IDPropValue");
        m_propValue = trova("PropValue");
        // A fourth column in TAG, or another column at the head of Property, would turn every slot number into noise.
        if (trova("IDtag") != ColonnaIDtag || trova("IDProperty") != ColonnaIDProperty || m_tag < 0 || m_closeTag < 0 ||
            m_property < 0 || m_type < 0 || m_category < 0 || m_idPropValue < 0 || m_propValue < 0)
            return Fallito(u"the tables have other columns"_s);
        return true;
    }

    void LeggiRighe()
    {
        int passo = SQLITE_ROW;
        while ((passo = sqlite3_step(m_domanda.get())) == SQLITE_ROW) {
            if (!LeggiRiga()) {
                Fallito(u"row %1 does not fit"_s.arg(m_esito.righe + 1));
                return;
            }
            ++m_esito.righe;
        }
        if (passo != SQLITE_DONE)
            FallitoMotore();
    }

    bool LeggiRiga()
    {
        const std::optional<qint16> t = Numero<qint16>(ColonnaIDtag), p = Numero<qint16>(ColonnaIDProperty);
        if (!t || !p || *t < 0 || *p < 0)
            return false;
        if (t != m_ultimoTag || p != m_ultimoAttributo) {
            if (!LeggiAttributo(*t, *p))
                return false;
            m_ultimoTag = t;
            m_ultimoAttributo = p;
        }
        if (Nulla(m_propValue))
            return true;
        const std::optional<qint16> v = Numero<qint16>(m_idPropValue);
        QStringList &valori = m_tabella[*t].Proprieta[*p].Valori;
        if (!v || !Ridimensiona(valori, *v))
            return false;
        const std::optional<QString> valore = Testo(m_propValue);
        if (valore)
            valori[*v] = *valore;
        return valore.has_value();
    }

    bool LeggiAttributo(qint16 t, qint16 p)
    {
        if (!Ridimensiona(m_tabella, t) || !Ridimensiona(m_tabella[t].Proprieta, p))
            return false;
        DatiTag &tag = m_tabella[t];
        if (t != m_ultimoTag) {
            const std::optional<QString> nome = Testo(m_tag);
            const std::optional<qint64> chiusura = Numero<qint64>(m_closeTag);
            if (!nome || !chiusura)
                return false;
            tag.Tag = *nome;
            tag.CloseTag = *chiusura != 0;
        }
        DatiProprieta &proprieta = tag.Proprieta[p];
        if (!Nulla(m_property)) {
            const std::optional<QString> nome = Testo(m_property);
            if (!nome)
                return false;
            proprieta.Property = *nome;
        }
        const std::optional<qint32> tipo = Numero<qint32>(m_type);
        const std::optional<quint8> categoria = Numero<quint8>(m_category);
        if (!tipo || !categoria)
            return false;
        proprieta.Type = *tipo;
        proprieta.Category = *categoria;
        return true;
    }

    /// Makes \a ultimo the last slot. Numbers that do not ascend take slots away again, so it is the slots made that
    /// are counted.
    template <typename Lista>
    bool Ridimensiona(Lista &lista, qint16 ultimo)
    {
        if (ultimo < 0)
            return false;
        const qsizetype nuove = ultimo + 1 - lista.size();
        if (nuove == 0)
            return true;
        m_caselle += std::max<qsizetype>(nuove, 0);
        if (m_caselle > MassimoCaselle)
            return false;
        lista.resize(ultimo + 1);
        return true;
    }

    [[nodiscard]] bool Nulla(int colonna) const { return sqlite3_column_type(m_domanda.get(), colonna) == SQLITE_NULL; }

    template <typename Intero>
    [[nodiscard]] std::optional<Intero> Numero(int colonna) const
    {
        if (sqlite3_column_type(m_domanda.get(), colonna) != SQLITE_INTEGER)
            return std::nullopt;
        const qint64 numero = sqlite3_column_int64(m_domanda.get(), colonna);
        if (numero < std::numeric_limits<Intero>::min() || numero > std::numeric_limits<Intero>::max())
            return std::nullopt;
        return Intero(numero);
    }

    /// Equal texts share one string: a base has tens of thousands of them and a few hundred different ones.
    [[nodiscard]] std::optional<QString> Testo(int colonna)
    {
        const int tipo = sqlite3_column_type(m_domanda.get(), colonna);
        if (tipo == SQLITE_NULL || tipo == SQLITE_BLOB)
            return std::nullopt;
        const auto *testo = reinterpret_cast<const char *>(sqlite3_column_text(m_domanda.get(), colonna));
        if (!testo)
            return std::nullopt;
        const QByteArray byte = QByteArray::fromRawData(testo, sqlite3_column_bytes(m_domanda.get(), colonna));
        const auto noto = m_testi.constFind(byte);
        if (noto != m_testi.cend())
            return *noto;
        return *m_testi.insert(QByteArray(byte.constData(), byte.size()), QString::fromUtf8(byte));
    }

    QList<DatiTag> &m_tabella;
    EsitoLettura m_esito;
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> m_base{nullptr, &sqlite3_close};
    std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> m_domanda{nullptr, &sqlite3_finalize};
    QHash<QByteArray, QString> m_testi;
    std::optional<qint16> m_ultimoTag, m_ultimoAttributo;
    qint64 m_caselle = 0;
    int m_controlli = 0;
    int m_tag = -1, m_closeTag = -1, m_property = -1, m_type = -1, m_category = -1, m_idPropValue = -1,
        m_propValue = -1;
};

} // namespace

EsitoLettura LeggiBaseTag(const QString &percorso, QList<DatiTag> &tabella)
{
    return LettoreBaseTag(tabella).Leggi(percorso);
}

} // namespace ModuloTag
