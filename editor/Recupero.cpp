#include "editor/Recupero.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUuid>

#include "app/ModuloDichiarazioni.h"
#include "platform/RichTextBox.h"

using namespace Qt::StringLiterals;

namespace
{

const QString Estensione = u".recupero"_s;
const QString EstensioneGuasto = u".guasto"_s;
const QString EstensioneChiave = u".lock"_s;

QString Cartella(const QString &cartella)
{
    return cartella.isEmpty() ? Recupero::CartellaUtente() : cartella;
}

// The old file or the new one, never half of one.
bool Scrivi(const QString &file, const PaginaRecuperata &pagina)
{
    QSaveFile scritto(file);
    if (!scritto.open(QIODevice::WriteOnly))
        return false;
    scritto.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    // A disk that fills up while the last bytes leave the buffer shows here and not in commit().
    return FileRecupero::Scrivi(scritto, pagina) && scritto.flush() && scritto.commit();
}

/// The page without its text; a file that is not whole goes out of the way.
std::optional<PaginaRecuperata> Esamina(const QString &base)
{
    QFile letto(base + Estensione);
    if (!letto.open(QIODevice::ReadOnly))
        return std::nullopt;
    PaginaRecuperata pagina;
    switch (FileRecupero::LeggiTestata(letto, pagina)) {
    case FileRecupero::Stato::Intero:
        return pagina;
    case FileRecupero::Stato::Guasto:
        letto.close();
        QFile::rename(base + Estensione, base + EstensioneGuasto);
        break;
    case FileRecupero::Stato::Altrui:
        break;
    }
    return std::nullopt;
}

std::unique_ptr<QLockFile> Chiave(const QString &base)
{
    auto chiave = std::make_unique<QLockFile>(base + EstensioneChiave);
    // Only the death of its owner frees a lock, not its age.
    chiave->setStaleLockTime(0);
    return chiave->tryLock(0) ? std::move(chiave) : nullptr;
}

// The lock of a program that no longer runs. The system frees what a dead program held, so a lock that it lets be taken
// away is free whatever stands in it; not so while its owner may just be making it, before there is a file.
std::unique_ptr<QLockFile> ChiaveDiUnMorto(const QString &base, bool haFile)
{
    auto chiave = Chiave(base);
    if (!chiave && haFile && QLockFile(base + EstensioneChiave).removeStaleLockFile())
        chiave = Chiave(base);
    return chiave;
}

// What a program killed in the middle of writing leaves beside its recovery file.
void RimuoviResti(const QDir &cartella, const QString &base)
{
    for (const QString &resto : cartella.entryList({base + Estensione + u".*"_s}, QDir::Files | QDir::Hidden))
        QFile::remove(cartella.filePath(resto));
}

} // namespace

// --- Files left behind ----------------------------------------------------------------------------------------------

VoceRecupero::VoceRecupero(QString file, std::unique_ptr<QLockFile> chiave, QString fileCorrente, QDateTime quando)
    : file(std::move(file)), FileCorrente(std::move(fileCorrente)), quando(std::move(quando)),
      m_chiave(std::move(chiave))
{
}

VoceRecupero::VoceRecupero(VoceRecupero &&) noexcept = default;
VoceRecupero &VoceRecupero::operator=(VoceRecupero &&) noexcept = default;
VoceRecupero::~VoceRecupero() = default;

QString Recupero::CartellaUtente()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/recupero"_s;
}

std::vector<VoceRecupero> Recupero::DaOffrire(const QString &cartella)
{
    std::vector<VoceRecupero> voci;
    const QDir dove(Cartella(cartella));
    QStringList basi;
    for (const QString &file : dove.entryList({u'*' + Estensione, u'*' + EstensioneChiave}, QDir::Files))
        basi.append(file.left(file.lastIndexOf(u'.')));
    basi.removeDuplicates();
    for (const QString &base : std::as_const(basi)) {
        const QString file = dove.filePath(base + Estensione);
        auto chiave = ChiaveDiUnMorto(dove.filePath(base), QFile::exists(file));
        if (!chiave)
            continue;
        RimuoviResti(dove, base);
        if (auto pagina = Esamina(dove.filePath(base)))
            voci.emplace_back(file, std::move(chiave), pagina->FileCorrente, pagina->quando);
    }
    std::sort(voci.begin(), voci.end(),
              [](const VoceRecupero &a, const VoceRecupero &b) { return a.quando > b.quando; });
    return voci;
}

std::optional<PaginaRecuperata> Recupero::Leggi(const VoceRecupero &voce)
{
    QFile letto(voce.file);
    if (!letto.open(QIODevice::ReadOnly))
        return std::nullopt;
    return FileRecupero::Leggi(letto);
}

void Recupero::Scarta(VoceRecupero voce)
{
    QFile::remove(voce.file);
}

// --- The running program's own file ---------------------------------------------------------------------------------

Recupero::Recupero(RichTextBox *controllo, const QString &cartella, int pausa, QObject *genitore)
    : QObject(genitore), m_pad(controllo), m_cartella(Cartella(cartella)), m_pausa(pausa)
{
    m_scrittore.setMaxThreadCount(1);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Recupero::AlTick);
    if (controllo) {
        m_revisioneSalvata = controllo->Revisione();
        connect(controllo, &RichTextBox::Change, this, &Recupero::AlCambio);
    }
}

Recupero::~Recupero()
{
    Chiudi();
}

void Recupero::AlCambio()
{
    if (m_chiuso)
        return;
    if (!m_daScrivere.isValid())
        m_daScrivere.start();
    // Whoever types without a pause is not left without a copy.
    const int resto = int(std::max<qint64>(0, AttesaMax - m_daScrivere.elapsed()));
    m_timer.start(m_pausa < AttesaMax ? std::min(m_pausa, resto) : m_pausa);
}

void Recupero::AlTick()
{
    m_daScrivere.invalidate();
    if (!m_pad || m_chiuso)
        return;
    if (DaSalvare())
        Accoda();
    else
        AccodaRimozione();
}

bool Recupero::DaSalvare() const
{
    if (!m_pad || m_pad->Revisione() == m_revisioneSalvata)
        return false;
    // Not the text that the page was opened with: after a save, an undo back to that text is not on the disk.
    return m_pad->Text() != m_testoSalvato.value_or(ModuloDichiarazioni::Stato().TestoSalvato);
}

bool Recupero::Prenota()
{
    if (m_chiave)
        return true;
    if (!QDir().mkpath(m_cartella))
        return false;
    const QString base = m_cartella + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_chiave = Chiave(base);
    if (m_chiave)
        m_file = base + Estensione;
    return m_chiave != nullptr;
}

void Recupero::Accoda()
{
    if (m_pad->Revisione() == m_revisioneScritta || !Prenota())
        return;
    m_revisioneScritta = m_pad->Revisione();
    PaginaRecuperata pagina{m_conFile ? ModuloDichiarazioni::Stato().FileCorrente : QString(), m_codifica,
                            m_pad->Text(), QDateTime::currentDateTime()};
    // A text still waiting to be written is overtaken by this one.
    m_scrittore.clear();
    m_scrittore.start([file = m_file, pagina = std::move(pagina)] { (void)Scrivi(file, pagina); });
}

void Recupero::AccodaRimozione()
{
    m_revisioneScritta = -1;
    m_scrittore.clear();
    if (!m_file.isEmpty())
        m_scrittore.start([file = m_file] { QFile::remove(file); });
}

void Recupero::Salvata()
{
    m_timer.stop();
    m_daScrivere.invalidate();
    if (m_pad) {
        m_revisioneSalvata = m_pad->Revisione();
        // A page that was just opened is kept by the program already: no second copy of it.
        const QString &aperto = ModuloDichiarazioni::Stato().TestoSalvato;
        const QString testo = m_pad->Text();
        m_testoSalvato = testo == aperto ? aperto : testo;
        TogliDeposti(testo);
    }
    AccodaRimozione();
}

void Recupero::ImpostaSalvato(const QString &testo)
{
    m_testoSalvato = testo;
    m_revisioneSalvata = -1;
    AlCambio();
}

void Recupero::Deponi()
{
    if (m_chiuso || !DaSalvare() || m_pad->Text().trimmed().isEmpty())
        return;
    ScriviOra();
    if (!m_chiave)
        return;
    m_deposti.push_back({std::exchange(m_file, {}), std::move(m_chiave), m_pad->Text()});
    m_revisioneScritta = -1;
}

void Recupero::Riprendi()
{
    if (!m_pad)
        return;
    TogliDeposti(m_pad->Text());
    AlCambio();
}

void Recupero::TogliDeposti(const QString &testo)
{
    std::erase_if(m_deposti,
                  [&testo](const Deposto &deposto) { return deposto.testo == testo && QFile::remove(deposto.file); });
}

void Recupero::ScriviOra()
{
    m_timer.stop();
    AlTick();
    m_scrittore.waitForDone();
}

void Recupero::Lascia()
{
    if (m_chiuso)
        return;
    ScriviOra();
    m_chiuso = true;
    m_file.clear();
    m_chiave.reset();
    m_deposti.clear();
}

void Recupero::Chiudi()
{
    if (m_chiuso)
        return;
    m_chiuso = true;
    m_timer.stop();
    AccodaRimozione();
    m_scrittore.waitForDone();
    m_chiave.reset();
    if (m_pad)
        TogliDeposti(m_pad->Text());
    m_deposti.clear();
}
