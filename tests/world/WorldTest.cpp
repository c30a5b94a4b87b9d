// Worlds from seeds. What goes wrong in one goes wrong in it every time:
//
//     TRADE_WORLD_SEED=7 build/debug/bin/world_test
//
// docs/testing.md tells of the other variables.
#include "tests/world/World.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace World {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int defaultWorlds = 15; // each takes longer, and what a sanitizer finds is not rare
#else
constexpr int defaultWorlds = 200;
#endif

std::uint64_t numberIn(const char *variable, std::uint64_t otherwise)
{
    if (!qEnvironmentVariableIsSet(variable)) {
        return otherwise;
    }
    const std::uint64_t number = qgetenv(variable).toULongLong();
    if (number == 0) {
        qFatal("%s is no number above 0", variable);
    }
    return number;
}

std::string textOf(const Report &report, Promise promise)
{
    std::string text;
    for (const Finding &finding : report.findings) {
        if (finding.promise == promise) {
            text += "seed " + std::to_string(report.seed) + ", step " + std::to_string(finding.step) + ": " +
                    finding.text + '\n';
        }
    }
    return text.empty() ? text
                        : text + report.tail + "again with: TRADE_WORLD_SEED=" + std::to_string(report.seed) +
                              " world_test\n";
}

Report lived(std::uint64_t seed)
{
    return World(seed, numberIn("TRADE_WORLD_TAIL", World::defaultTail)).live();
}

void add(const Report &report, Report *sum)
{
    sum->bus.messages += report.bus.messages;
    sum->bus.lostConnections += report.bus.lostConnections;
    sum->bus.repeated += report.bus.repeated;
    sum->bus.restarts += report.bus.restarts;
    sum->killedModules += report.killedModules;
    sum->killedTerminals += report.killedTerminals;
    sum->frozen += report.frozen;
    sum->days += report.days;
    sum->wishes += report.wishes;
    sum->events += report.events;
    sum->lived += report.lived;
    sum->longestWait = std::max(sum->longestWait, report.longestWait);
}

void print(const Report &sum, std::uint64_t worlds)
{
    std::printf(
        "%llu worlds, %lld s simulated, %lld events, %lld messages; %d wishes; lost connections %d, repeated "
        "messages %d, broker restarts %d, killed modules %d, killed terminals %d, frozen %d, days %d; "
        "longest wait %lld ms\n",
        static_cast<unsigned long long>(worlds),
        static_cast<long long>(std::chrono::duration_cast<std::chrono::seconds>(sum.lived).count()),
        static_cast<long long>(sum.events), static_cast<long long>(sum.bus.messages), sum.wishes,
        sum.bus.lostConnections, sum.bus.repeated, sum.bus.restarts, sum.killedModules, sum.killedTerminals,
        sum.frozen, sum.days,
        static_cast<long long>(
            std::chrono::duration_cast<std::chrono::milliseconds>(sum.longestWait).count()));
}

/// Each world lives once, whatever is asked of it.
const std::vector<Report> &worlds()
{
    static const std::vector<Report> reports = [] {
        const std::uint64_t only = numberIn("TRADE_WORLD_SEED", 0);
        const std::uint64_t first = only > 0 ? only : numberIn("TRADE_FIRST_WORLD", 1);
        const std::uint64_t count = only > 0 ? 1 : numberIn("TRADE_WORLDS", defaultWorlds);
        std::vector<Report> lives;
        Report sum;
        for (std::uint64_t seed = first; seed < first + count; ++seed) {
            lives.push_back(lived(seed));
            add(lives.back(), &sum);
        }
        print(sum, count);
        return lives;
    }();
    return reports;
}

void expectEverywhere(Promise promise)
{
    for (const Report &report : worlds()) {
        const std::string found = textOf(report, promise);
        EXPECT_TRUE(found.empty()) << found;
    }
}

TEST(World, HasBooksThatAgreeAfterEveryStep)
{
    expectEverywhere(Promise::BooksAgree);
}

TEST(World, HasEachConfirmedOrderOnceAndNoOther)
{
    expectEverywhere(Promise::WishesAreKept);
}

TEST(World, LetsNobodyWaitForTheOutcomeForEver)
{
    expectEverywhere(Promise::WishesEnd);
}

TEST(World, ShowsOnDesksWhatTheLedgerHoldsOnceAllIsQuiet)
{
    expectEverywhere(Promise::DesksAgree);
}

TEST(World, ShowsOnOldChartsWhatNewOnesShowOnceAllIsQuiet)
{
    expectEverywhere(Promise::ChartsAgree);
}

TEST(World, KeepsNoCallWaitingBeyondItsBound)
{
    expectEverywhere(Promise::CallsReturn);
}

TEST(World, GoesTheSameWayTwiceFromOneSeed)
{
    const size_t count = std::min<size_t>(worlds().size(), 3);
    for (size_t place = 0; place < count; ++place) {
        const Report &first = worlds()[place];
        const Report second = lived(first.seed);
        EXPECT_EQ(first.traceHash, second.traceHash) << first.seed;
        EXPECT_EQ(first.events, second.events) << first.seed;
    }
}

TEST(World, GoesAnotherWayFromAnotherSeed)
{
    EXPECT_NE(lived(1).traceHash, lived(2).traceHash);
}

} // namespace
} // namespace World
