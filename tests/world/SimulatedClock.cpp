#include "tests/world/SimulatedClock.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace World {

namespace {

using namespace std::chrono;

/// A machine has been on for a while when a world begins: a steady clock that stands at zero is a case of its
/// own.
constexpr Instant sinceStart = hours(1);

struct Clock
{
    bool isRunning = false;
    Instant now{};
    nanoseconds timeOfDayAtStart{};
    SimulatedClock::Waiter *waiter = nullptr;
    std::function<void()> endServer{};

    nanoseconds timeOfDay() const { return timeOfDayAtStart + now; }
};

Clock &clock()
{
    static Clock theClock;
    return theClock;
}

timespec timespecOf(nanoseconds time)
{
    const auto whole = duration_cast<seconds>(time);
    return {static_cast<time_t>(whole.count()), static_cast<long>((time - whole).count())};
}

nanoseconds durationOf(const timespec &time)
{
    return seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

bool isOfDay(clockid_t id)
{
    return id == CLOCK_REALTIME || id == CLOCK_REALTIME_COARSE;
}

} // namespace

void SimulatedClock::begin(system_clock::time_point timeOfDay, Waiter *waiter)
{
    clock() = {true, {}, timeOfDay.time_since_epoch(), waiter, {}};
}

void SimulatedClock::setEndServer(std::function<void()> end)
{
    clock().endServer = std::move(end);
}

void SimulatedClock::end()
{
    clock() = {};
}

Instant SimulatedClock::now()
{
    return clock().now;
}

void SimulatedClock::moveTo(Instant instant)
{
    clock().now = std::max(clock().now, instant);
}

void SimulatedClock::moveTimeOfDay(seconds forward)
{
    clock().timeOfDayAtStart += forward;
}

} // namespace World

// The system's own functions. What a program defines counts before what its libraries have.
extern "C" {

Q_DECL_EXPORT int clock_gettime(clockid_t id, timespec *time)
{
    const World::Clock &clock = World::clock();
    if (!clock.isRunning) {
        return static_cast<int>(::syscall(SYS_clock_gettime, id, time));
    }
    *time = World::timespecOf(World::isOfDay(id) ? clock.timeOfDay() : World::sinceStart + clock.now);
    return 0;
}

Q_DECL_EXPORT int gettimeofday(timeval *time, void * /*zone*/)
{
    timespec exact{};
    clock_gettime(CLOCK_REALTIME, &exact);
    constexpr long nanosecondsPerMicrosecond = 1000;
    *time = {exact.tv_sec, exact.tv_nsec / nanosecondsPerMicrosecond};
    return 0;
}

Q_DECL_EXPORT time_t time(time_t *result)
{
    timespec exact{};
    clock_gettime(CLOCK_REALTIME, &exact);
    if (result != nullptr) {
        *result = exact.tv_sec;
    }
    return exact.tv_sec;
}

Q_DECL_EXPORT int nanosleep(const timespec *requested, timespec *remaining)
{
    const World::Clock &clock = World::clock();
    if (!clock.isRunning) {
        return static_cast<int>(::syscall(SYS_nanosleep, requested, remaining));
    }
    World::SimulatedClock::moveTo(clock.now + World::durationOf(*requested));
    return 0;
}

Q_DECL_EXPORT int poll(pollfd *sockets, nfds_t count, int limit)
{
    const World::Clock &clock = World::clock();
    if (clock.isRunning) {
        return clock.waiter->wait(sockets, count, std::chrono::milliseconds(limit));
    }
    const timespec time{limit / 1000, limit % 1000 * 1000000L};
    // not every machine has a call of the system's for poll()
    return static_cast<int>(::syscall(SYS_ppoll, sockets, count, limit < 0 ? nullptr : &time, nullptr, 0));
}

/// One that stands by ends the module that stands still. Here both are of this process.
Q_DECL_EXPORT int kill(pid_t process, int signal)
{
    const World::Clock &clock = World::clock();
    if (clock.endServer && process == ::getpid() && signal == SIGKILL) {
        clock.endServer();
        return 0;
    }
    return static_cast<int>(::syscall(SYS_kill, process, signal));
}

/// The sign of life of a module that serves is the time of a file.
Q_DECL_EXPORT int futimens(int descriptor, const timespec times[2])
{
    const World::Clock &clock = World::clock();
    const timespec now = World::timespecOf(clock.timeOfDay());
    const timespec simulated[2] = {now, now};
    const bool isNow = times == nullptr && clock.isRunning;
    return static_cast<int>(::syscall(SYS_utimensat, descriptor, nullptr, isNow ? simulated : times, 0));
}

} // extern "C"
