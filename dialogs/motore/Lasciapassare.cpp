#include "Lasciapassare.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <chrono>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto Durata = 20s; // from the permission to the last moment at which the engine opens the file
constexpr rlim_t Descrittori = 8192;
constexpr qsizetype Massimo = 4096; // of files given at a time

constexpr auto Prefisso = "velloro-"_L1;
constexpr int Recente = 60; // seconds in which a folder may be without its lock yet

/// Where the folders are made: a name that tells nothing, as that of the user's temporary folder may hold the user's.
QString Comune()
{
    const QString comune = u"/tmp"_s;
    return QFileInfo(comune).isWritable() ? comune : QDir::tempPath();
}

QString NomeChiave(const QString &cartella)
{
    return cartella + u"/chiave.lock"_s;
}

/// Takes away the folders of programs that were killed.
void TogliResti()
{
    const QFileInfoList resti = QDir(Comune()).entryInfoList({Prefisso + u"??????"_s}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo &resto : resti) {
        if (resto.ownerId() != ::getuid() || resto.lastModified().secsTo(QDateTime::currentDateTime()) < Recente)
            continue;
        QLockFile chiave(NomeChiave(resto.filePath()));
        chiave.setStaleLockTime(0);
        if (!chiave.tryLock(0))
            continue;
        chiave.unlock();
        QDir(resto.filePath()).removeRecursively();
    }
}

/// The name by which this program opens what \a descrittore has open, once more.
QString Aperto(int descrittore)
{
    return u"/proc/self/fd/%1"_s.arg(descrittore);
}

/// A page can name some thousand pictures, which are all asked for at once.
void PermettiDescrittori()
{
    rlimit limite{};
    if (getrlimit(RLIMIT_NOFILE, &limite) != 0 || limite.rlim_cur >= Descrittori)
        return;
    limite.rlim_cur = std::min(limite.rlim_max, Descrittori);
    setrlimit(RLIMIT_NOFILE, &limite);
}

} // namespace

Lasciapassare::Lasciapassare()
    : m_cartella(Comune() + u'/' + Prefisso + u"XXXXXX"_s), m_chiave(NomeChiave(m_cartella.path()))
{
    TogliResti();
    m_chiave.setStaleLockTime(0);
    if (m_cartella.isValid() && m_chiave.tryLock(0))
        m_radice = QFileInfo(m_cartella.path()).canonicalFilePath();
    PermettiDescrittori();
    m_pulizia.setInterval(Durata / 2);
    QObject::connect(&m_pulizia, &QTimer::timeout, &m_pulizia, [this] { TogliScadute(); });
}

Lasciapassare::~Lasciapassare()
{
    for (const Voce &voce : std::as_const(m_voci))
        ::close(voce.descrittore);
}

int Lasciapassare::Apri(const QString &percorso)
{
    const int descrittore =
        ::open(QFile::encodeName(percorso).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    struct stat stato {
    };
    if (descrittore >= 0 && ::fstat(descrittore, &stato) == 0 && S_ISREG(stato.st_mode))
        return descrittore;
    if (descrittore >= 0)
        ::close(descrittore);
    return -1;
}

QString Lasciapassare::Vero(int descrittore)
{
    return QFile::symLinkTarget(Aperto(descrittore));
}

QUrl Lasciapassare::Concedi(int descrittore, const QString &nome)
{
    if (m_voci.size() >= Massimo)
        TogliScadute();
    const QString parola = QUuid::createUuid().toString(QUuid::Id128);
    const Voce voce{descrittore, m_radice + nome, QDeadlineTimer(Durata)};
    const QByteArray legame = QFile::encodeName(voce.legame);
    ::unlink(legame.constData());
    const bool fatto = !m_radice.isEmpty() && m_voci.size() < Massimo && QDir().mkpath(QFileInfo(voce.legame).path()) &&
                       ::symlink(QFile::encodeName(Aperto(descrittore)).constData(), legame.constData()) == 0;
    if (!fatto) {
        ::close(descrittore);
        return {};
    }
    m_voci.insert(parola, voce);
    if (!m_pulizia.isActive())
        m_pulizia.start();
    QUrl indirizzo = QUrl::fromLocalFile(voce.legame);
    indirizzo.setQuery(parola);
    return indirizzo;
}

bool Lasciapassare::Riscuoti(const QUrl &indirizzo)
{
    const auto voce = m_voci.find(indirizzo.query());
    return voce != m_voci.end() && voce->legame == indirizzo.toLocalFile() && !std::exchange(voce->riscossa, true);
}

void Lasciapassare::Togli(const Voce &voce) const
{
    // Another file may have taken its place.
    if (QFile::symLinkTarget(voce.legame) == Aperto(voce.descrittore))
        QFile::remove(voce.legame);
    ::close(voce.descrittore);
}

void Lasciapassare::TogliScadute()
{
    m_voci.removeIf([this](const auto &coppia) {
        const bool scaduta = coppia.value().scadenza.hasExpired();
        if (scaduta)
            Togli(coppia.value());
        return scaduta;
    });
    if (m_voci.isEmpty())
        m_pulizia.stop();
}
