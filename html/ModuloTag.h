#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include "html/DatiTag.h"

/// The tag knowledge base: which tags there are, their attributes and the allowed values. Needs no application object
/// and no widgets. Load and read it from one thread.
namespace ModuloTag
{

/// How a load went.
struct EsitoCaricamento {
    QString messaggio; ///< for the user; empty when the whole file was read
    QString motivo;    ///< what the database engine said, English, for a log
    [[nodiscard]] bool Riuscito() const { return messaggio.isEmpty(); }
};

/// Fills ArrayTag from the SQLite file \a percorso. On a fault the table keeps what was loaded before it: nothing new
/// when the file cannot be opened. Never creates or changes a file; memory and time are bounded whatever it holds.
[[nodiscard]] EsitoCaricamento CaricaTag(const QString &percorso);

/// All tags in binary order of their names, from slot 1; slot 0 is empty. Empty until a base is loaded.
[[nodiscard]] const QList<DatiTag> &ArrayTag();

/// Replaces the table, so that lookups can run on data from elsewhere.
void ImpostaArrayTag(const QList<DatiTag> &tabella);

/// Binary search of \a tabella for the slot whose Tag equals \a nome exactly; -1 when there is none. Callers pass
/// \a nome in upper case; on a hit it becomes the stored string.
[[nodiscard]] qsizetype CercaTag(const QList<DatiTag> &tabella, QString &nome);

/// The slot of the tag \a nome (any case) in ArrayTag, or 0. Like all that follow: takes constant time, and allocates
/// only for names beyond ASCII.
[[nodiscard]] int CasellaTag(QStringView nome);

/// False for the empty name.
[[nodiscard]] bool EsisteTag(QStringView nome);

/// 1: the attribute belongs to the tag. 3: the tag is known, and the attribute belongs to another one only. 2: the tag
/// or the attribute is unknown.
[[nodiscard]] quint8 VerificaAttributo(QStringView tag, QStringView attributo);

/// 1: the tag's list for the attribute has the value, or there is no list. 3: the tag is known, the value is not in
/// the list or the attribute belongs to another tag only. 2: the tag or the attribute is unknown.
[[nodiscard]] quint8 VerificaValore(QStringView tag, QStringView attributo, QStringView valore);

/// The attribute belongs to the tag and stands without a value.
[[nodiscard]] bool SenzaValore(QStringView tag, QStringView attributo);

/// The tag's list for the attribute is not empty and has the value.
[[nodiscard]] bool ValoreInLista(QStringView tag, QStringView attributo, QStringView valore);

} // namespace ModuloTag
