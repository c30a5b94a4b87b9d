#include "tests/fuzz/FastClock.h"

#include <cstdint>

#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h> // the functions that this file replaces
#include <unistd.h>

namespace {

constexpr std::int64_t nanosPerSecond = 1000000000;
constexpr std::int64_t begin = 1704160800 * nanosPerSecond; // 2024-01-02 10:00:00 in Shanghai
constexpr std::int64_t betweenLooks = 5000000;

bool isFast = false;
std::int64_t now = begin; // in nanoseconds since 1970

const void *libraryOf(const void *address)
{
    Dl_info info{};
    dladdr(address, &info);
    return info.dli_fbase;
}

/// Others look at the clock, too: a fuzzer at how long an input takes, a test at how long it took.
bool isQt(const void *caller)
{
    static const void *const qt = libraryOf(reinterpret_cast<const void *>(&qVersion));
    return libraryOf(caller) == qt;
}

timespec trueTime(clockid_t clock)
{
    timespec time{};
    syscall(SYS_clock_gettime, clock, &time);
    return time;
}

timespec look()
{
    now += betweenLooks;
    return {static_cast<time_t>(now / nanosPerSecond), static_cast<long>(now % nanosPerSecond)};
}

timespec timeFor(const void *caller, clockid_t clock)
{
    return isFast && isQt(caller) ? look() : trueTime(clock);
}

} // namespace

FastClock::FastClock()
{
    now = begin;
    isFast = true;
}

FastClock::~FastClock()
{
    isFast = false;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved to it
extern "C" {

Q_DECL_EXPORT int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    *time = timeFor(__builtin_return_address(0), clock);
    return 0;
}

Q_DECL_EXPORT int gettimeofday(timeval *__restrict time, void *__restrict) noexcept
{
    const timespec precise = timeFor(__builtin_return_address(0), CLOCK_REALTIME);
    *time = {precise.tv_sec, precise.tv_nsec / 1000};
    return 0;
}

Q_DECL_EXPORT int nanosleep(const timespec *duration, timespec *left)
{
    if (!isFast) {
        return static_cast<int>(syscall(SYS_nanosleep, duration, left));
    }
    now += duration->tv_sec * nanosPerSecond + duration->tv_nsec;
    return 0;
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
