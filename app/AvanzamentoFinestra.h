#pragma once

#include <QObject>

#include <optional>

#include "chrome/FrmProgressBar.h"
#include "html/Avanzamento.h"

/// As long as it lives, what the user does counts only in one window. The others can still be closed.
class SoloUna : public QObject
{
public:
    explicit SoloUna(const QWidget &finestra);
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    const QWidget &m_finestra;
};

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
    std::optional<SoloUna> m_solo;
};
