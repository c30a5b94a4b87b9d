#include "trading/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h> // pipes and signals: POSIX, the same on Linux and macOS

namespace Trading {

namespace {

// read by the signal handler, which may do nothing more
int wakeDescriptor = -1;
itimerval timeToEnd{};

void wake(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(wakeDescriptor, &byte, 1);
    setitimer(ITIMER_REAL, &timeToEnd, nullptr);
}

/// What is begun and not confirmed is dropped with the process.
void endAtOnce(int)
{
    constexpr char reason[] = "ended while something did not answer\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, reason, sizeof reason - 1);
    _exit(1);
}

itimerval onceAfter(std::chrono::microseconds time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    return {{}, {static_cast<time_t>(seconds.count()), static_cast<suseconds_t>((time - seconds).count())}};
}

} // namespace

TerminationSignals::TerminationSignals(std::optional<std::chrono::microseconds> patience)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        qFatal("no pipe for signals can be made");
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    wakeDescriptor = ends[1];
    timeToEnd = patience ? onceAfter(*patience) : itimerval{};
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    QObject::connect(notifier, &QSocketNotifier::activated, this, &QCoreApplication::quit);
    std::signal(SIGALRM, &endAtOnce);
    std::signal(SIGTERM, &wake);
    std::signal(SIGINT, &wake);
}

TerminationSignals::~TerminationSignals()
{
    for (const int number : {SIGALRM, SIGTERM, SIGINT}) {
        std::signal(number, SIG_DFL);
    }
}

} // namespace Trading
