#pragma once

#include <QTimer>

/// Looks after the memory of this process while a page is shown: what a page's scripts store (data for addresses of
/// their own, messages, histories) the engine keeps here and not in the process that draws the page.
class GuardiaMemoria : public QObject
{
    Q_OBJECT

public:
    explicit GuardiaMemoria(QObject *parent);

    /// Another page begins: what is there now is not hers.
    void Riparti();

signals:
    /// The process has grown by more than Limite since the least that it had for this page.
    void Superata();

private:
    static constexpr qint64 Limite = qint64{384} << 20; // bytes; a page of 10 MB takes some 150 MB

    void Guarda();

    QTimer m_orologio;
    qint64 m_minimo = 0;
};
