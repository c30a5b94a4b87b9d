#include "tests/support/FakeHost.h"

#include "tradechartobject/common/BarTime.h"

#include <gmock/gmock.h>

using namespace TradeChart;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

Korvane::Period period(int number)
{
    return static_cast<Korvane::Period>(number);
}

std::int64_t barTime(std::uint32_t timeWord, Korvane::Period period)
{
    Korvane::AnalyData bar{};
    bar.time = timeWord;
    std::vector<std::int64_t> times;
    decodeBarTimes(&bar, 1, period, times);
    return times.at(0);
}

enum class Kind { Minute, Day, Neither };

Kind kindOf(int number)
{
    switch (number) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 7:
    case 21:
        return Kind::Minute;
    case 4:
    case 5:
    case 6:
    case 10:
    case 11:
        return Kind::Day;
    default:
        return Kind::Neither;
    }
}

class BarTimeOfPeriod : public ::testing::TestWithParam<int>
{
};

TEST_P(BarTimeOfPeriod, FollowsTheKindOfThePeriod)
{
    const Korvane::Period tested = period(GetParam());
    const Kind kind = kindOf(GetParam());
    EXPECT_EQ(isMinutePeriod(tested), kind == Kind::Minute);
    EXPECT_EQ(isDayPeriod(tested), kind == Kind::Day);

    const std::uint32_t minuteStamp = makeMinuteBar(20240105, 1459).time;
    EXPECT_EQ(barTime(minuteStamp, tested) == 20240105145900, kind == Kind::Minute);
    EXPECT_EQ(barTime(20240105, tested) == 20240105235959, kind == Kind::Day);
    EXPECT_EQ(barTime(minuteStamp, tested) == 0, kind == Kind::Neither);
}

INSTANTIATE_TEST_SUITE_P(Periods, BarTimeOfPeriod,
                         ::testing::Values(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18,
                                           19, 20, 21, 22, 23, 31, 32, 36, 53, 64, 1000, -1, -28,
                                           -2147483647));

TEST(BarTime, UnpacksEveryFieldOfTheMinuteStamp)
{
    EXPECT_EQ(barTime(0, period(0)), 20040000000000);
    EXPECT_EQ(barTime(0xFFFFFFFF, period(21)),
              (2004 + 31) * 10000000000LL + 2047 * 1000000LL + 65535 / 60 * 10000LL + 65535 % 60 * 100);
    EXPECT_EQ(barTime((20U << 27U) | (102U << 16U) | (9U * 60 + 31), period(7)), 20240102093100);
}

TEST(BarTime, ReadsADayWordAsASignedDate)
{
    EXPECT_EQ(barTime(20240102, period(4)), 20240102235959);
    EXPECT_EQ(barTime(static_cast<std::uint32_t>(-1), period(4)), -1000000 + 235959);
}

TEST(BarTime, DecodesAllBarsInTheirOrder)
{
    std::vector<std::int64_t> times = {1, 2, 3};
    const std::vector<Korvane::AnalyData> bars = {makeDayBar(20240102), makeDayBar(20240103)};
    decodeBarTimes(bars.data(), 2, period(4), times);
    EXPECT_THAT(times, ElementsAre(20240102235959, 20240103235959));
    decodeBarTimes(bars.data(), 2, period(8), times);
    EXPECT_THAT(times, ElementsAre(0, 0));
    const std::vector<Korvane::AnalyData> minutes = {makeMinuteBar(20240102, 930),
                                                     makeMinuteBar(20240102, 1500)};
    decodeBarTimes(minutes.data(), 2, period(21), times);
    EXPECT_THAT(times, ElementsAre(20240102093000, 20240102150000));
}

TEST(BarTime, TakesImpossibleBarsAsNone)
{
    std::vector<std::int64_t> times = {1};
    decodeBarTimes(nullptr, 5, period(4), times);
    EXPECT_THAT(times, IsEmpty());
    const Korvane::AnalyData bar = makeDayBar(20240102);
    times = {1};
    decodeBarTimes(&bar, -5, period(4), times);
    EXPECT_THAT(times, IsEmpty());
}

TEST(BarTime, GivesTheTradingDayOfADateTime)
{
    EXPECT_EQ(tradingDay(20240102093100), 20240102);
}

} // namespace
