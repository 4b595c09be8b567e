#include "app/shutdownsignals.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace {

// Written by the signal handler, read by the event loop: the only thing a
// handler may safely do is write a byte.
int signalPipe[2] = {-1, -1};
constexpr int HandledSignals[] = {SIGTERM, SIGHUP, SIGINT};

void onSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[0], &byte, 1);
}

} // namespace

ShutdownSignals::ShutdownSignals(QObject *parent)
    : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte;
        [[maybe_unused]] const auto read = ::read(signalPipe[1], &byte, 1);
        emit shutdownRequested();
    });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signalNumber : HandledSignals)
        ::sigaction(signalNumber, &action, nullptr);
}

ShutdownSignals::~ShutdownSignals()
{
    for (int signalNumber : HandledSignals)
        ::signal(signalNumber, SIG_DFL);
    for (int &fd : signalPipe) {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
}

#else

ShutdownSignals::ShutdownSignals(QObject *parent)
    : QObject(parent)
{
}

ShutdownSignals::~ShutdownSignals() = default;

#endif
