#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <utility>
#include <vector>

class QDialog;
class QKeyEvent;
class QWidget;

/// Whoever types on at once while a dialog closes means the page behind it, but the display sends the keys to the
/// dialog's window as long as that is there. The page gets those keys in their order: from a modal dialog when it goes,
/// after what it leaves behind was put into the page; from any other at once.
class TastiDopoDialogo : public QObject
{
    Q_OBJECT

public:
    /// Make it before \a dialogo closes; the dialog owns it and may open and close many times.
    TastiDopoDialogo(QDialog *dialogo, QWidget *destinatario);
    ~TastiDopoDialogo() override;

    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void AscoltaFinestra();
    bool PerLaPagina(const QKeyEvent &tasto);
    void Consegna();

    QDialog *m_dialogo;
    QPointer<QWidget> m_destinatario;
    std::vector<int> m_premuti;
    std::vector<std::unique_ptr<QEvent>> m_tasti;
};
