#pragma once

#include "chrome/FrmProgressBar.h"
#include "html/Avanzamento.h"

/// The progress window, as the check drives it.
class AvanzamentoFinestra : public ModuloVerificaSintassi::Avanzamento
{
public:
    /// \a padre: the window that the progress window stands over.
    AvanzamentoFinestra(QWidget *padre, const QString &etichetta, qsizetype massimo);

    void Mostra() override;
    void ImpostaValore(qsizetype valore) override;
    [[nodiscard]] bool Annullato() const override { return m_finestra.Annullato(); }

private:
    FrmProgressBar m_finestra;
};
