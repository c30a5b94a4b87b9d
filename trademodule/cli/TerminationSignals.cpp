#include "trademodule/cli/TerminationSignals.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h> // pipes and signals: POSIX, the same on Linux and macOS

namespace TradeModule {

namespace {

// written by the signal handler, which may do nothing more
int wakeDescriptor = -1;

void wake(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(wakeDescriptor, &byte, 1);
    const itimerval patience{{}, {1, 700000}}; // seconds and microseconds
    setitimer(ITIMER_REAL, &patience, nullptr);
}

/// What was not committed is dropped with the process; what was, is in the ledger.
void endAtOnce(int)
{
    constexpr char reason[] = "trademodule: ended while something did not answer\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, reason, sizeof reason - 1);
    _exit(1);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw Error(translated("no pipe for signals can be made"));
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    wakeDescriptor = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    QObject::connect(notifier, &QSocketNotifier::activated, this, &QCoreApplication::quit);
    std::signal(SIGALRM, &endAtOnce);
    std::signal(SIGTERM, &wake);
    std::signal(SIGINT, &wake);
}

} // namespace TradeModule
