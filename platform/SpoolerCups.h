#pragma once

#include <QHash>

#include "platform/OpzioniStampante.h"
#include "platform/Spooler.h"

/// The spooler over CUPS. A printer's stored settings are the user's own default options, those that the command
/// lpoptions shows and sets; options that a record cannot tell of are never touched. A record that was read here and
/// is written again brings the very options back that it was read from.
class SpoolerCups : public Spooler
{
public:
    /// Waits for the printing service, AttesaServizio at most. One that does not answer is not asked again as long as
    /// the object lives, not by Qt's own dialogs either, which would wait much longer.
    SpoolerCups();
    ~SpoolerCups() override;
    Q_DISABLE_COPY_MOVE(SpoolerCups)

    static constexpr int AttesaServizio = 2000; ///< ms

    [[nodiscard]] QStringList Stampanti() override;
    [[nodiscard]] Maniglia ApriStampante(const QString &nome, quint32 accesso) override;
    void ChiudiStampante(Maniglia stampante) override;
    [[nodiscard]] qint32 ProprietaDocumento(Maniglia stampante, const QString &nome, QByteArray *uscita,
                                            const QByteArray *ingresso, quint32 modo) override;
    [[nodiscard]] quint32 DimensioneInformazioni(Maniglia stampante) override;
    [[nodiscard]] bool LeggiInformazioni(Maniglia stampante, quint32 spazio,
                                         InformazioniStampante &informazioni) override;
    [[nodiscard]] bool ImpostaStampante(Maniglia stampante, const InformazioniStampante &informazioni) override;
    [[nodiscard]] quint32 UltimoErrore() const override { return m_errore; }
    void TrattieniLavori(bool trattieni) override;
    [[nodiscard]] QString RifiutoLavoro() const override;

private:
    struct Aperta {
        QByteArray nome;
        quint32 accesso = 0;
        OpzioniStampante::Opzioni opzioni; ///< as they were when it was opened
    };
    struct Letta {
        DevMode record;
        OpzioniStampante::Opzioni opzioni;
    };
    [[nodiscard]] OpzioniStampante::Opzioni Unite(const Aperta &stampante, const DevMode &record) const;

    QHash<Maniglia, Aperta> m_aperte;
    QHash<QByteArray, Letta> m_lette; ///< by printer, as first read
    bool m_risponde = false;
    Maniglia m_ultima = 0;
    quint32 m_errore = NessunErrore;
};
