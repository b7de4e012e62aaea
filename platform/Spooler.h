#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

/// A printer's level-2 information, as far as it is used.
struct InformazioniStampante {
    QString nome;
    QByteArray impostazioni;         ///< the device settings: a DevMode, then what the driver adds
    QByteArray descrittoreSicurezza; ///< empty: stays as it is
};

/// The host's print spooler. Calls may take as long as the host's printing service takes to answer. None throws; one
/// that fails leaves its error in UltimoErrore.
class Spooler
{
public:
    using Maniglia = quint32; ///< an open printer; 0 is none

    static constexpr quint32 AccessoLettura = 0x8;      ///< use the printer
    static constexpr quint32 AccessoCompleto = 0xF000C; ///< everything, writing its settings included

    static constexpr quint32 NessunErrore = 0;
    static constexpr quint32 AccessoNegato = 5;
    static constexpr quint32 ServizioAssente = 1722;
    static constexpr quint32 NomeNonValido = 1801;

    /// What ProprietaDocumento is to do, added.
    enum Modo : quint32 { Dimensione = 0, Uscita = 2, Ingresso = 8 };

    virtual ~Spooler() = default;

    /// Names of the installed printers, in the host's order.
    [[nodiscard]] virtual QStringList Stampanti() = 0;
    /// 0 when it cannot be opened.
    [[nodiscard]] virtual Maniglia ApriStampante(const QString &nome, quint32 accesso) = 0;
    virtual void ChiudiStampante(Maniglia stampante) = 0;
    /// Dimensione: the bytes that the driver's device settings take. Uscita: writes them into \a uscita, which must be
    /// large enough. Uscita + Ingresso: merges \a ingresso into them first; both may be the same buffer. Negative:
    /// failed.
    [[nodiscard]] virtual qint32 ProprietaDocumento(Maniglia stampante, const QString &nome, QByteArray *uscita,
                                                    const QByteArray *ingresso, quint32 modo) = 0;
    /// Bytes that the level-2 information takes; 0 when there is none.
    [[nodiscard]] virtual quint32 DimensioneInformazioni(Maniglia stampante) = 0;
    /// Reads it, given room for \a spazio bytes.
    [[nodiscard]] virtual bool LeggiInformazioni(Maniglia stampante, quint32 spazio,
                                                 InformazioniStampante &informazioni) = 0;
    /// Makes the device settings in \a informazioni the printer's stored ones for this user.
    [[nodiscard]] virtual bool ImpostaStampante(Maniglia stampante, const InformazioniStampante &informazioni) = 0;
    /// Of the last call that failed.
    [[nodiscard]] virtual quint32 UltimoErrore() const = 0;

    /// Whether print jobs of this program are kept from the printers; a painter hands its job over when it ends, also
    /// when the user gave the print up. While they are kept back no other call succeeds.
    virtual void TrattieniLavori(bool trattieni) = 0;
    /// Why the job that was handed over just now was not taken; empty when it was. Ask right after the painter's end.
    [[nodiscard]] virtual QString RifiutoLavoro() const = 0;
};

/// The spooler of this host.
[[nodiscard]] std::unique_ptr<Spooler> SpoolerDelSistema();
