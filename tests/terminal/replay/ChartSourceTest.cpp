// The charts that can be shown while a day is replayed.
#include "terminal/replay/ChartSource.h"
#include "terminal/replay/Replay.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

#include <optional>

namespace Terminal {
namespace {

constexpr Trading::TradingDate today = onDay(20240105);

class ChartSourceTest : public ::testing::Test
{
protected:
    void open() { m_replay.open(m_day, today); }

    DataFolder m_folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value();
    ChartData m_day = m_folder.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108)).value();
    Replay m_replay{nullptr};
    const ChartSource m_source{m_folder, &m_replay};
};

TEST_F(ChartSourceTest, IsTheLastDayOfItsSecurityWhileItIsReplayed)
{
    EXPECT_EQ(m_source.minuteDays(QStringLiteral("000001")).back(), onDay(20180115));
    open();
    EXPECT_EQ(m_source.minuteDays(QStringLiteral("000001")).back(), today);
    EXPECT_EQ(m_source.minuteDays(QStringLiteral("600519")).back(), onDay(20260327));
    for (const auto day : {std::optional<Trading::TradingDate>(), std::optional(today)}) {
        const auto loaded = m_source.load(QStringLiteral("000001"), ChartPeriod::Minute, day);
        ASSERT_TRUE(loaded) << qPrintable(loaded.error());
        EXPECT_EQ(loaded.value().bars.size(), 1U);
    }
}

TEST_F(ChartSourceTest, GivesTheReplayedDayInRawPricesAlways)
{
    open();
    EXPECT_EQ(
        m_source.load(QStringLiteral("000001"), ChartPeriod::Minute, {}, PriceView::Adjusted).value().view,
        PriceView::Raw);
    EXPECT_EQ(m_source.load(QStringLiteral("000001"), ChartPeriod::Day, {}, PriceView::Adjusted).value().view,
              PriceView::Adjusted);
}

TEST_F(ChartSourceTest, BringsRawPricesOfAnAdjustedChart)
{
    const auto adjusted =
        m_source.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108), PriceView::Adjusted)
            .value();
    const ChartData raw = m_source.raw(adjusted);
    EXPECT_EQ(raw.view, PriceView::Raw);
    EXPECT_EQ(raw.bars.front().date, 20180108);
    EXPECT_EQ(raw.bars.size(), adjusted.bars.size());
}

TEST_F(ChartSourceTest, LeavesOtherChartsToTheFolder)
{
    open();
    const auto lastDate = [this](const char *code, ChartPeriod period,
                                 std::optional<Trading::TradingDate> day = {}) {
        return m_source.load(QLatin1String(code), period, day).value().bars.back().date;
    };
    EXPECT_EQ(lastDate("000001", ChartPeriod::Minute, onDay(20180108)), 20180108);
    EXPECT_EQ(lastDate("600519", ChartPeriod::Minute), 20260327);
    EXPECT_EQ(lastDate("000001", ChartPeriod::Day), 20250905);
}

TEST_F(ChartSourceTest, HasTheCloseBeforeItAlsoAsToday)
{
    const auto closeBefore = [this](int day) {
        return m_source.closeBefore(QStringLiteral("000001"), onDay(day));
    };
    m_replay.open(m_day, onDay(20991231));
    EXPECT_EQ(closeBefore(20991231), 13.30);
    EXPECT_EQ(closeBefore(20180108), 13.30);
    EXPECT_EQ(closeBefore(20991230), std::nullopt);
}

} // namespace
} // namespace Terminal
