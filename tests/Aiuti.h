#pragma once

#include <QApplication>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <functional>

/// What several tests need: files in one line, and answers to windows that wait for one.
namespace Aiuti
{

/// "?" when the file cannot be read.
inline QByteArray Contenuto(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("?");
}

inline void Scrivi(const QString &percorso, const QByteArray &byte)
{
    QFile file(percorso);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(byte) == byte.size());
}

/// Answers the next modal window of type T once it is on the screen; \a contesto ends the wait.
template <typename T>
void Rispondi(QObject *contesto, std::function<void(T *)> risposta)
{
    auto *attesa = new QTimer(contesto);
    QObject::connect(attesa, &QTimer::timeout, contesto, [attesa, risposta] {
        if (auto *finestra = qobject_cast<T *>(QApplication::activeModalWidget())) {
            attesa->deleteLater();
            attesa->stop();
            risposta(finestra);
        }
    });
    attesa->start(0);
}

} // namespace Aiuti
