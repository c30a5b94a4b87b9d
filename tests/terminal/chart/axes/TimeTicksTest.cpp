#include "terminal/chart/axes/TimeTicks.h"
#include "terminal/data/TradingHours.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Terminal {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> labels(const std::vector<TimeTick> &ticks)
{
    std::vector<std::string> texts;
    for (const TimeTick &tick : ticks) {
        texts.push_back(tick.label.toStdString());
    }
    return texts;
}

Bars weekdays(const QDate &first, int count)
{
    Bars bars;
    for (QDate date = first; static_cast<int>(bars.size()) < count; date = date.addDays(1)) {
        if (date.dayOfWeek() <= 5) {
            bars.push_back({Trading::TradingDate::ofCalendar(date).value().number(), 0, 1, 1, 1, 1, 1});
        }
    }
    return bars;
}

Bars fullDay()
{
    Bars bars;
    for (int minute = 0; minute < 24 * 60; ++minute) {
        if (isTradingMinute(minute)) {
            bars.push_back({20240102, minute, 1, 1, 1, 1, 1});
        }
    }
    return bars;
}

TEST(TimeTicks, NamesTheMonthsOfHalfAYear)
{
    const Bars bars = weekdays(QDate(2023, 9, 15), 120);
    EXPECT_THAT(labels(timeTicks(bars, {-0.5, 119.5}, 15)),
                ElementsAre("2023-10", "2023-11", "2023-12", "2024", "2024-02"));
}

TEST(TimeTicks, PutsAMonthUnderItsFirstTradingDay)
{
    const Bars bars = weekdays(QDate(2023, 9, 15), 120);
    for (const TimeTick &tick : timeTicks(bars, {-0.5, 119.5}, 15)) {
        EXPECT_NE(bars[tick.bar].date / 100, bars[tick.bar - 1].date / 100) << bars[tick.bar].date;
    }
}

TEST(TimeTicks, NamesTheHalfHoursOfADayWithoutTheLunchBreak)
{
    EXPECT_THAT(
        labels(timeTicks(fullDay(), {-0.5, 240.5}, 18)),
        ElementsAre("09:30", "10:00", "10:30", "11:00", "11:30/13:00", "13:30", "14:00", "14:30", "15:00"));
}

TEST(TimeTicks, KeepTheirDistance)
{
    const Bars bars = weekdays(QDate(1991, 4, 3), 8000);
    for (const double width : {12.0, 60.0, 250.0, 1000.0, 7999.0}) {
        const std::vector<TimeTick> ticks = timeTicks(bars, {8000 - width, 7999.5}, width / 12);
        for (size_t i = 1; i < ticks.size(); ++i) {
            EXPECT_GE(static_cast<double>(ticks[i].bar - ticks[i - 1].bar), width / 12 * 0.8);
        }
        EXPECT_GE(ticks.size(), 2U) << width;
    }
}

TEST(TimeTicks, EndAlsoWhereAStepWouldBeginBeforeTheFirstYear)
{
    const Bars bars = weekdays(QDate(24, 1, 2), 600);
    for (const double spacing : {1.0, 15.0, 300.0, 3000.0, 30000.0}) {
        EXPECT_LE(timeTicks(bars, {-0.5, 599.5}, spacing).size(), 600U);
    }
}

TEST(TimeTicks, AreNoneWithoutBars)
{
    EXPECT_TRUE(timeTicks({}, {-0.5, 10}, 5).empty());
}

TEST(TimeTicks, NamesMonthsOnBothSidesOfALongGap)
{
    Bars bars = weekdays(QDate(2016, 9, 15), 60);
    const Bars later = weekdays(QDate(2023, 9, 15), 60);
    bars.insert(bars.end(), later.begin(), later.end());
    EXPECT_THAT(labels(timeTicks(bars, {-0.5, 119.5}, 15)),
                ElementsAre("2016-10", "2016-11", "2016-12", "2023", "2023-11", "2023-12"));
}

} // namespace
} // namespace Terminal
