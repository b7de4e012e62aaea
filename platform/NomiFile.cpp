#include "platform/NomiFile.h"

#include <QDir>
#include <QStringConverter>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr char16_t PrimoByte = 0xDC80;
constexpr char16_t UltimoByte = 0xDCFF;

/// Whether the unit at \a i stands for a byte: it is then no half of a pair.
bool Byte(QStringView testo, qsizetype i)
{
    const char16_t c = testo[i].unicode();
    return c >= PrimoByte && c <= UltimoByte && (i == 0 || !testo[i - 1].isHighSurrogate());
}

/// Bytes of the character that begins with \a primo, were it valid.
qsizetype Lunghezza(uchar primo)
{
    return primo >= 0xF0 ? 4 : primo >= 0xE0 ? 3 : primo >= 0xC0 ? 2 : 1;
}

bool Nascosto(char16_t c)
{
    return c < u' ' || (c >= 0x7F && c < 0xA0) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

QString Scritto(char16_t c)
{
    switch (c) {
    case u'\n':
        return u"\\n"_s;
    case u'\r':
        return u"\\r"_s;
    case u'\t':
        return u"\\t"_s;
    default:
        return c <= 0xFF ? u"\\x%1"_s.arg(c, 2, 16, QChar(u'0')).toUpper().replace(u'X', u'x')
                         : u"\\u"_s + QString::number(c, 16).rightJustified(4, u'0').toUpper();
    }
}

} // namespace

QString NomiFile::DaOspite(QByteArrayView byte)
{
    if (byte.isValidUtf8())
        return QString::fromUtf8(byte);
    QString percorso;
    for (qsizetype i = 0; i < byte.size();) {
        const qsizetype quanti = Lunghezza(uchar(byte[i]));
        const QByteArrayView carattere = byte.sliced(i, std::min(quanti, byte.size() - i));
        if (carattere.isValidUtf8()) {
            percorso += QString::fromUtf8(carattere);
            i += carattere.size();
        } else {
            percorso += QChar(char16_t(0xDC00 + uchar(byte[i++])));
        }
    }
    return percorso;
}

QByteArray NomiFile::PerOspite(const QString &percorso)
{
    QByteArray byte;
    qsizetype inizio = 0;
    for (qsizetype i = 0; i <= percorso.size(); ++i) {
        if (i < percorso.size() && !Byte(percorso, i))
            continue;
        byte += QStringView(percorso).sliced(inizio, i - inizio).toUtf8();
        if (i < percorso.size())
            byte += char(percorso[i].unicode() - 0xDC00);
        inizio = i + 1;
    }
    return byte;
}

bool NomiFile::SoloTesto(QStringView percorso)
{
    return percorso.isValidUtf16();
}

std::optional<QString> NomiFile::DaIndirizzo(const QString &indirizzo)
{
    if (!indirizzo.startsWith("file:/"_L1, Qt::CaseInsensitive))
        return std::nullopt;
    QStringView resto = QStringView(indirizzo).sliced(5);
    if (resto.startsWith("//"_L1)) {
        const qsizetype barra = resto.indexOf(u'/', 2);
        const QStringView ospite = resto.sliced(2, std::max<qsizetype>(barra - 2, 0));
        if (barra < 0 || (!ospite.isEmpty() && ospite.compare("localhost"_L1, Qt::CaseInsensitive) != 0))
            return std::nullopt;
        resto = resto.sliced(barra);
    }
    const auto fine = std::find_if(resto.begin(), resto.end(), [](QChar c) { return c == u'#' || c == u'?'; });
    const QByteArray byte = QByteArray::fromPercentEncoding(PerOspite(resto.first(fine - resto.begin()).toString()));
    // The host would take the name up to the NUL: another file.
    return byte.contains('\0') ? std::nullopt : std::optional(DaOspite(byte));
}

QString NomiFile::Assoluto(const QString &percorso)
{
    if (QDir::isAbsolutePath(percorso))
        return QDir::cleanPath(percorso);
    const std::unique_ptr<char, decltype(&std::free)> cartella(getcwd(nullptr, 0), &std::free);
    return QDir::cleanPath(DaOspite(QByteArrayView(cartella ? cartella.get() : "")) + u'/' + percorso);
}

bool NomiFile::Esiste(const QString &percorso)
{
    struct stat dati = {};
    return !percorso.isEmpty() && stat(PerOspite(percorso).constData(), &dati) == 0;
}

bool NomiFile::Consentito(const QString &percorso)
{
    return faccessat(AT_FDCWD, PerOspite(percorso).constData(), R_OK, AT_EACCESS) == 0 || errno != EACCES;
}

QStringList NomiFile::NonTesto(const QString &cartella)
{
    QStringList nomi;
    const std::unique_ptr<DIR, int (*)(DIR *)> aperta(opendir(PerOspite(cartella).constData()), &closedir);
    while (const dirent *voce = aperta ? readdir(aperta.get()) : nullptr) {
        const QByteArrayView nome(voce->d_name);
        struct stat dati = {};
        if (!nome.isValidUtf8() && fstatat(dirfd(aperta.get()), voce->d_name, &dati, 0) == 0 && S_ISREG(dati.st_mode))
            nomi += DaOspite(nome);
    }
    std::sort(nomi.begin(), nomi.end());
    return nomi;
}

QString NomiFile::Leggibile(const QString &testo)
{
    QString leggibile;
    leggibile.reserve(testo.size());
    for (qsizetype i = 0; i < testo.size(); ++i) {
        const QChar c = testo[i];
        if (c.isHighSurrogate() && i + 1 < testo.size() && testo[i + 1].isLowSurrogate())
            leggibile.append(c).append(testo[++i]);
        else if (Byte(testo, i))
            leggibile += Scritto(char16_t(c.unicode() - 0xDC00));
        else if (Nascosto(c.unicode()) || c.isSurrogate())
            leggibile += Scritto(c.unicode());
        else
            leggibile += c;
    }
    return leggibile;
}
