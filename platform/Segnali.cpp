#include "platform/Segnali.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

#ifdef Q_OS_UNIX

namespace
{

int scrittura = -1;

// Only what is safe in a signal handler: the event loop does the rest.
void Annota(int)
{
    const char segno = 1;
    [[maybe_unused]] const ssize_t scritti = ::write(scrittura, &segno, 1);
}

} // namespace

void Segnali::AllaFine(QObject *contesto, std::function<void()> azione)
{
    int estremi[2];
    if (::pipe2(estremi, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    scrittura = estremi[1];
    auto *avviso = new QSocketNotifier(estremi[0], QSocketNotifier::Read, contesto);
    QObject::connect(avviso, &QSocketNotifier::activated, contesto, [azione = std::move(azione), avviso] {
        avviso->setEnabled(false);
        azione();
    });
    struct sigaction gestore = {};
    gestore.sa_handler = Annota;
    for (const int segnale : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(segnale, &gestore, nullptr);
}

#else

void Segnali::AllaFine(QObject *, std::function<void()>) {}

#endif
