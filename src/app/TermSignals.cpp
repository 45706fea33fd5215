#include "app/TermSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int caught[] = {SIGTERM, SIGINT};

/// Write end of the pipe; the handler may touch nothing else.
volatile std::sig_atomic_t writeEnd = -1;

void passOn(int signalNumber)
{
    const auto byte = static_cast<unsigned char>(signalNumber);
    const int interrupted = errno;
    // A full pipe holds signals enough: the result does not count.
    const ssize_t written = write(writeEnd, &byte, 1);
    static_cast<void>(written);
    errno = interrupted;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signalNumber : caught)
        sigaction(signalNumber, &action, nullptr);
}

} // namespace

TermSignals::TermSignals(QObject* parent)
    : QObject(parent)
{
    if (pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writeEnd = pipe_[1];
    const auto* notifier = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &TermSignals::readSignal);
    setHandler(&passOn);
}

TermSignals::~TermSignals()
{
    if (pipe_[0] < 0)
        return;
    setHandler(SIG_DFL);
    writeEnd = -1;
    close(pipe_[0]);
    close(pipe_[1]);
}

void TermSignals::readSignal()
{
    unsigned char byte = 0;
    while (read(pipe_[0], &byte, 1) == 1)
        Q_EMIT received(byte);
}
