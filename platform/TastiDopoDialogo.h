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
/// dialog as long as it is there. From when this object is made, just before the dialog closes, it keeps those keys;
/// when it goes, together with the dialog, the page gets them in their order.
class TastiDopoDialogo : public QObject
{
    Q_OBJECT

public:
    /// \a dialogo, which is on the screen, owns the object.
    TastiDopoDialogo(QDialog *dialogo, QWidget *destinatario);
    ~TastiDopoDialogo() override;

    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    bool PerLaPagina(const QKeyEvent &tasto);

    QPointer<QWidget> m_destinatario;
    std::vector<int> m_premuti;
    std::vector<std::unique_ptr<QEvent>> m_tasti;
};
