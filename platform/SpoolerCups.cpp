#include "platform/SpoolerCups.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <future>
#include <string>
#include <thread>

#include <cups/cups.h>

using namespace Qt::StringLiterals;

namespace
{

using OpzioniStampante::Opzioni;

/// The printers that CUPS knows, with the user's options; freed with the object.
class Destinazioni
{
public:
    Destinazioni() : m_quante(cupsGetDests2(CUPS_HTTP_DEFAULT, &m_prima)) {}
    ~Destinazioni() { cupsFreeDests(m_quante, m_prima); }
    Q_DISABLE_COPY_MOVE(Destinazioni)

    [[nodiscard]] int Quante() const { return m_quante; }
    [[nodiscard]] cups_dest_t *Prima() const { return m_prima; }
    [[nodiscard]] cups_dest_t *begin() const { return m_prima; }
    [[nodiscard]] cups_dest_t *end() const { return m_prima + m_quante; }

private:
    cups_dest_t *m_prima = nullptr; ///< before m_quante, whose making sets it
    int m_quante;
};

/// "printer" or "printer/instance".
QByteArray NomeIntero(const cups_dest_t &destinazione)
{
    QByteArray nome = destinazione.name;
    if (destinazione.instance)
        nome += '/' + QByteArray(destinazione.instance);
    return nome;
}

Opzioni OpzioniDi(const cups_dest_t &destinazione)
{
    Opzioni opzioni;
    for (int i = 0; i < destinazione.num_options; ++i)
        opzioni.insert(destinazione.options[i].name, destinazione.options[i].value);
    return OpzioniStampante::Note(opzioni);
}

quint32 ErroreCups()
{
    switch (cupsLastError()) {
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
        return Spooler::AccessoNegato;
    case IPP_STATUS_ERROR_INTERNAL:
    case IPP_STATUS_ERROR_SERVICE_UNAVAILABLE:
        return Spooler::ServizioAssente;
    default:
        return Spooler::NomeNonValido;
    }
}

/// The file in which CUPS keeps the user's options.
QString FileOpzioni()
{
    return QDir::homePath() + u"/.cups/lpoptions"_s;
}

bool Scrivibile(const QString &file)
{
    QFileInfo informazioni(file);
    // What does not exist yet is written where its nearest folder is.
    while (!informazioni.exists() && !informazioni.isRoot())
        informazioni = QFileInfo(informazioni.path());
    return informazioni.isWritable();
}

/// The printer that the user's own file makes the default one; empty when it leaves that to the server.
QByteArray PredefinitaUtente()
{
    QFile file(FileOpzioni());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    while (!file.atEnd()) {
        const QList<QByteArray> parole = file.readLine().simplified().split(' ');
        if (parole.size() > 1 && parole.first().compare("Default", Qt::CaseInsensitive) == 0)
            return parole.at(1);
    }
    return {};
}

/// Whether the printing service takes a connection and answers a request.
bool Risponde(const std::string &servizio, int porta, http_encryption_t cifratura)
{
    http_t *http =
        httpConnect2(servizio.c_str(), porta, nullptr, AF_UNSPEC, cifratura, 1, SpoolerCups::AttesaServizio, nullptr);
    if (!http)
        return false;
    httpSetTimeout(
        http, SpoolerCups::AttesaServizio / 1000.0, [](http_t *, void *) { return 0; }, nullptr);
    // Any answer will do, also that there is no default printer.
    ippDelete(cupsDoRequest(http, ippNewRequest(IPP_OP_CUPS_GET_DEFAULT), "/"));
    const ipp_status_t esito = cupsLastError();
    httpClose(http);
    return esito != IPP_STATUS_ERROR_SERVICE_UNAVAILABLE && esito != IPP_STATUS_ERROR_INTERNAL &&
           esito != IPP_STATUS_ERROR_TIMEOUT;
}

/// The same within AttesaServizio. Finding the server's address has no time limit of its own, so it happens aside.
bool RispondeInTempo()
{
    std::packaged_task<bool()> domanda([servizio = std::string(cupsServer()), porta = ippPort(),
                                        cifratura = cupsEncryption()] { return Risponde(servizio, porta, cifratura); });
    std::future<bool> risposta = domanda.get_future();
    std::thread(std::move(domanda)).detach();
    return risposta.wait_for(std::chrono::milliseconds(SpoolerCups::AttesaServizio)) == std::future_status::ready &&
           risposta.get();
}

/// Has this thread's calls of CUPS, Qt's own among them, fail at once; false: back to the server of the settings.
void Isola(bool isolato)
{
    cupsSetServer(isolato ? "/dev/null/cups" : nullptr);
}

void CambiaOpzioni(cups_dest_t &destinazione, const Opzioni &nuove)
{
    const Opzioni vecchie = OpzioniDi(destinazione);
    for (auto opzione = vecchie.cbegin(); opzione != vecchie.cend(); ++opzione) {
        if (!nuove.contains(opzione.key()))
            destinazione.num_options =
                cupsRemoveOption(opzione.key().constData(), destinazione.num_options, &destinazione.options);
    }
    for (auto opzione = nuove.cbegin(); opzione != nuove.cend(); ++opzione)
        destinazione.num_options = cupsAddOption(opzione.key().constData(), opzione.value().constData(),
                                                 destinazione.num_options, &destinazione.options);
}

} // namespace

std::unique_ptr<Spooler> SpoolerDelSistema()
{
    return std::make_unique<SpoolerCups>();
}

SpoolerCups::SpoolerCups() : m_risponde(RispondeInTempo())
{
    // The library's own way to ask for a password waits for the terminal.
    cupsSetPasswordCB2(
        [](const char *, http_t *, const char *, const char *, void *) -> const char * { return nullptr; }, nullptr);
    if (!m_risponde)
        Isola(true);
}

SpoolerCups::~SpoolerCups()
{
    if (!m_risponde)
        Isola(false);
}

void SpoolerCups::TrattieniLavori(bool trattieni)
{
    if (m_risponde)
        Isola(trattieni);
}

QString SpoolerCups::RifiutoLavoro() const
{
    return cupsLastError() <= IPP_STATUS_OK_EVENTS_COMPLETE ? QString() : QString::fromUtf8(cupsLastErrorString());
}

QStringList SpoolerCups::Stampanti()
{
    QStringList nomi;
    for (const cups_dest_t &destinazione : Destinazioni())
        nomi.append(QString::fromUtf8(NomeIntero(destinazione)));
    return nomi;
}

Spooler::Maniglia SpoolerCups::ApriStampante(const QString &nome, quint32 accesso)
{
    const QByteArray intero = nome.toUtf8();
    const qsizetype barra = intero.indexOf('/');
    const QByteArray stampante = barra < 0 ? intero : intero.left(barra);
    const QByteArray istanza = barra < 0 ? QByteArray() : intero.mid(barra + 1);
    // No name at all would mean the default printer.
    cups_dest_t *destinazione = stampante.isEmpty() ? nullptr
                                                    : cupsGetNamedDest(CUPS_HTTP_DEFAULT, stampante.constData(),
                                                                       barra < 0 ? nullptr : istanza.constData());
    if (!destinazione) {
        m_errore = !m_risponde ? ServizioAssente : stampante.isEmpty() ? NomeNonValido : ErroreCups();
        return 0;
    }
    const Opzioni opzioni = OpzioniDi(*destinazione);
    cupsFreeDests(1, destinazione);
    if (accesso == AccessoCompleto && !Scrivibile(FileOpzioni())) {
        m_errore = AccessoNegato;
        return 0;
    }
    m_aperte.insert(++m_ultima, {intero, accesso, opzioni});
    return m_ultima;
}

void SpoolerCups::ChiudiStampante(Maniglia stampante)
{
    m_aperte.remove(stampante);
}

Opzioni SpoolerCups::Unite(const Aperta &stampante, const DevMode &record) const
{
    if (const auto letta = m_lette.constFind(stampante.nome); letta != m_lette.cend() && letta->record == record)
        return letta->opzioni;
    return OpzioniStampante::Unisci(stampante.opzioni, record);
}

qint32 SpoolerCups::ProprietaDocumento(Maniglia stampante, const QString &, QByteArray *uscita,
                                       const QByteArray *ingresso, quint32 modo)
{
    const auto aperta = m_aperte.constFind(stampante);
    if (aperta == m_aperte.cend())
        return -1;
    Opzioni opzioni = aperta->opzioni;
    if (modo & Ingresso) {
        if (!ingresso)
            return -1;
        opzioni = Unite(*aperta, DevMode::DaByte(*ingresso));
    }
    const QByteArray impostazioni =
        OpzioniStampante::InRecord(aperta->nome, opzioni).Byte() + OpzioniStampante::InByte(opzioni);
    if (modo == Dimensione)
        return qint32(impostazioni.size());
    if (!uscita)
        return -1;
    // Merged settings may be longer than those that were asked for; the buffer is the caller's and grows.
    uscita->replace(0, std::min(uscita->size(), impostazioni.size()), impostazioni);
    return 1;
}

quint32 SpoolerCups::DimensioneInformazioni(Maniglia stampante)
{
    const qint32 dimensione = ProprietaDocumento(stampante, {}, nullptr, nullptr, Dimensione);
    return dimensione < 0 ? 0 : quint32(dimensione);
}

bool SpoolerCups::LeggiInformazioni(Maniglia stampante, quint32 spazio, InformazioniStampante &informazioni)
{
    const auto aperta = m_aperte.constFind(stampante);
    if (aperta == m_aperte.cend() || spazio < DimensioneInformazioni(stampante))
        return false;
    const DevMode record = OpzioniStampante::InRecord(aperta->nome, aperta->opzioni);
    if (!m_lette.contains(aperta->nome))
        m_lette.insert(aperta->nome, {record, aperta->opzioni});
    informazioni.nome = QString::fromUtf8(aperta->nome);
    informazioni.impostazioni = record.Byte() + OpzioniStampante::InByte(aperta->opzioni);
    return true;
}

bool SpoolerCups::ImpostaStampante(Maniglia stampante, const InformazioniStampante &informazioni)
{
    const auto aperta = m_aperte.constFind(stampante);
    if (aperta == m_aperte.cend() || aperta->accesso != AccessoCompleto) {
        m_errore = AccessoNegato;
        return false;
    }
    const Opzioni nuove = OpzioniStampante::DaByte(informazioni.impostazioni.mid(DevMode::Lunghezza));
    const Destinazioni destinazioni;
    const QByteArray predefinita = PredefinitaUtente();
    bool trovata = false;
    for (cups_dest_t &destinazione : destinazioni) {
        // Only a default that the user chose is kept as the user's; the server's own may change later.
        destinazione.is_default = NomeIntero(destinazione) == predefinita;
        if (NomeIntero(destinazione) != aperta->nome)
            continue;
        CambiaOpzioni(destinazione, nuove);
        trovata = true;
    }
    if (trovata && cupsSetDests2(CUPS_HTTP_DEFAULT, destinazioni.Quante(), destinazioni.Prima()) == 0)
        return true;
    m_errore = trovata ? AccessoNegato : ErroreCups();
    return false;
}
