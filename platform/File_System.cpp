#include "platform/File_System.h"

#include "platform/NomiFile.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace File_System
{

/// The folder being walked and the pattern that its names must match; for a literal name only that one file.
class StatoRicerca
{
public:
    StatoRicerca(const QString &percorso, Stile stile) : m_stile(stile)
    {
        const qsizetype barra = percorso.lastIndexOf(u'/');
        m_modello = percorso.mid(barra + 1);
        const QFileInfo letterale(percorso);
        if (letterale.exists()) {
            m_letterale = letterale;
        } else if (m_modello.contains(u'*') || m_modello.contains(u'?')) {
            const QString cartella = barra < 0 ? u"."_s : percorso.first(std::max<qsizetype>(barra, 1));
            QDir::Filters filtri = QDir::AllEntries | QDir::Hidden | QDir::System;
            if (stile == Stile::Posix)
                filtri |= QDir::NoDotAndDotDot;
            m_iteratore = std::make_unique<QDirIterator>(cartella, filtri);
        }
    }

    /// False when nothing more matches.
    bool Prossimo(QFileInfo &trovato)
    {
        if (m_letterale) {
            trovato = *std::exchange(m_letterale, std::nullopt);
            return true;
        }
        while (m_iteratore && m_iteratore->hasNext()) {
            m_iteratore->next();
            if (Corrisponde(m_iteratore->fileName())) {
                trovato = m_iteratore->fileInfo();
                return true;
            }
        }
        return false;
    }

private:
    /// "*.*" means every name, also one without a dot.
    [[nodiscard]] bool Corrisponde(QStringView nome) const
    {
        if (m_modello == "*.*"_L1)
            return true;
        const auto uguali = [this](QChar a, QChar b) {
            return a == b || (m_stile == Stile::Windows && a.toCaseFolded() == b.toCaseFolded());
        };
        qsizetype n = 0;
        qsizetype m = 0;
        qsizetype asterisco = -1;
        qsizetype ripresa = 0;
        while (n < nome.size()) {
            if (m < m_modello.size() && m_modello[m] == u'*') {
                asterisco = m++;
                ripresa = n;
            } else if (m < m_modello.size() && (m_modello[m] == u'?' || uguali(m_modello[m], nome[n]))) {
                ++m;
                ++n;
            } else if (asterisco >= 0) {
                m = asterisco + 1;
                n = ++ripresa;
            } else {
                return false;
            }
        }
        while (m < m_modello.size() && m_modello[m] == u'*')
            ++m;
        return m == m_modello.size();
    }

    Stile m_stile;
    QString m_modello;
    std::optional<QFileInfo> m_letterale;
    std::unique_ptr<QDirIterator> m_iteratore;
};

void ChiudiStato::operator()(StatoRicerca *stato) const
{
    delete stato;
}

namespace
{

void Riempi(DatiRicerca &dati, const QFileInfo &info)
{
    dati.attributi = (info.isDir() ? DatiRicerca::Cartella : 0U) | (info.isHidden() ? DatiRicerca::Nascosto : 0U) |
                     (info.isWritable() ? 0U : DatiRicerca::SolaLettura);
    dati.creazione = info.birthTime();
    dati.accesso = info.lastRead();
    dati.modifica = info.lastModified();
    dati.dimensione = info.size();
    dati.nome = info.fileName();
}

QString NomeTrovato(const DatiRicerca &dati, qint16 tipo, Stile stile)
{
    QString nome = dati.nome;
    // A name may end with blanks on a POSIX host; on Windows it cannot, there blanks are only filling.
    while (stile == Stile::Windows && nome.endsWith(u' '))
        nome.chop(1);
    if (tipo == TipoFtp)
        nome.replace(u'\\', u'/');
    return nome;
}

} // namespace

qint16 TipoPercorso(QStringView percorso, Stile stile)
{
    if (percorso.isEmpty())
        return TipoVuoto;
    if (percorso.startsWith("\\\\"_L1))
        return TipoRete;
    if (stile == Stile::Windows && percorso.startsWith(u'/'))
        return TipoFtp;
    return percorso.startsWith("ftp"_L1, Qt::CaseInsensitive) ? TipoFtp : TipoLocale;
}

QString NomeFile(QStringView percorso, Stile stile)
{
    const bool barra = stile == Stile::Posix || TipoPercorso(percorso, stile) == TipoFtp;
    return percorso.sliced(percorso.lastIndexOf(barra ? u'/' : u'\\') + 1).toString();
}

void CercaFile(QString &risultato, HandleRicerca &handle, DatiRicerca &dati, const QString &percorso, bool soloPrimo,
               Stile stile)
{
    risultato.clear();
    qint16 tipo = dati.nomeBreve.isEmpty() ? TipoLocale : qint16(dati.nomeBreve[0].unicode());
    if (!percorso.isEmpty()) {
        tipo = TipoPercorso(percorso, stile);
        dati = {};
        QString cercato = percorso;
        if (stile == Stile::Windows)
            cercato.replace(u'\\', u'/');
        handle.reset(tipo == TipoFtp ? nullptr : new StatoRicerca(cercato, stile));
    }
    dati.nomeBreve = QChar(char16_t(tipo));
    if (tipo == TipoFtp || !handle)
        return;
    QFileInfo trovato;
    do {
        if (!handle->Prossimo(trovato)) {
            ChiudiRicerca(handle);
            risultato.clear();
            return;
        }
        Riempi(dati, trovato);
        risultato = NomeTrovato(dati, tipo, stile);
    } while (!soloPrimo);
}

void ChiudiRicerca(HandleRicerca &handle)
{
    handle.reset();
}

bool FileEsiste(const QString &percorso, Stile stile)
{
    if (percorso.isEmpty())
        return false;
    if (!NomiFile::SoloTesto(percorso))
        return NomiFile::Esiste(percorso);
    QString trovato;
    HandleRicerca handle;
    DatiRicerca dati;
    CercaFile(trovato, handle, dati, percorso, true, stile);
    ChiudiRicerca(handle);
    // "/" and a path that ends with "/" name a folder and yet have an empty last name.
    return !trovato.isEmpty() || (stile == Stile::Posix && percorso.endsWith(u'/') && QFileInfo(percorso).isDir() &&
                                  TipoPercorso(percorso, stile) != TipoFtp);
}

} // namespace File_System
