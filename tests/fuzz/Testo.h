#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>

/// Fuzz data as text: UTF-16 as it stands when the first byte is odd, else UTF-8.
inline QString TestoDa(const uint8_t *dati, size_t quanti)
{
    if (quanti == 0)
        return {};
    const char *resto = reinterpret_cast<const char *>(dati + 1);
    if (dati[0] % 2 == 0)
        return QString::fromUtf8(resto, qsizetype(quanti - 1));
    QString testo(qsizetype((quanti - 1) / 2), Qt::Uninitialized);
    if (!testo.isEmpty())
        memcpy(testo.data(), resto, size_t(testo.size()) * 2);
    return testo;
}

/// A fault that the sanitizers cannot see.
inline void Esigi(bool vero)
{
    if (!vero)
        abort();
}

/// Puts the data where a reader that wants a file finds them: the file \a nome in a folder of this process.
inline QString FileDa(const uint8_t *dati, size_t quanti, const QString &nome)
{
    static const QTemporaryDir cartella;
    const QString percorso = cartella.filePath(nome);
    QFile file(percorso);
    Esigi(file.open(QIODevice::WriteOnly) &&
          file.write(reinterpret_cast<const char *>(dati), qint64(quanti)) == qint64(quanti));
    return percorso;
}
