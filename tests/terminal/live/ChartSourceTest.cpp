// The charts that can be shown while a day is replayed, or under way.
#include "terminal/live/ChartSource.h"
#include "terminal/live/Today.h"
#include "terminal/replay/Replay.h"
#include "tests/terminal/support/DataFiles.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/SomeQuotes.h"

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
    Today m_today{&m_replay};
    ChartSource m_source{m_folder, &m_today};
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

TEST_F(ChartSourceTest, KeepsRoomForTheMinutesToComeAndTheCloseBefore)
{
    open();
    m_replay.playTo(atTime(1130));
    const ChartData shown = m_source.load(QStringLiteral("000001"), ChartPeriod::Minute).value();
    EXPECT_EQ(shown.bars.size(), 121U);
    ASSERT_EQ(shown.ahead.size(), 120U);
    EXPECT_EQ(shown.ahead.front(), 13 * 60 + 1);
    EXPECT_EQ(shown.ahead.back(), 15 * 60);
    EXPECT_EQ(shown.previousClose, 13.30);
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

/// The chart of each period of the security, while its day is practised.
class ChartSourceOfAPractice : public ChartSourceTest
{
protected:
    ChartSourceOfAPractice()
    {
        open();
        m_source.practise(onDay(20180108));
    }

    ChartData shown(ChartPeriod period, PriceView view = PriceView::Raw) const
    {
        return m_source.load(QStringLiteral("000001"), period, {}, view).value();
    }
};

TEST_F(ChartSourceOfAPractice, EndsItsLongerChartsWithWhatWasPlayed)
{
    m_replay.playTo(atTime(1000));
    const Bars played = shown(ChartPeriod::Minute).bars;
    ASSERT_EQ(played.size(), 31U);
    const Bars days = shown(ChartPeriod::Day).bars;
    EXPECT_EQ(days.back().date, 20180108);
    EXPECT_EQ(days.back().open, played.front().open);
    EXPECT_EQ(days.back().close, played.back().close);
    EXPECT_EQ(days[days.size() - 2].date, 20180105);
    for (const ChartPeriod period : {ChartPeriod::Week, ChartPeriod::Month}) {
        EXPECT_EQ(shown(period).bars.back().date, 20180108);
        EXPECT_EQ(shown(period).bars.back().close, played.back().close);
    }
    EXPECT_EQ(shown(ChartPeriod::Day, PriceView::Adjusted).bars.back(), days.back()) << "the latest is raw";
}

TEST_F(ChartSourceOfAPractice, TellsNothingLaterAlsoOnceItWasPlayedToItsEnd)
{
    m_replay.playTo(atTime(1500));
    EXPECT_EQ(shown(ChartPeriod::Day).bars.back().date, 20180108);
    EXPECT_EQ(shown(ChartPeriod::Day).bars.back().close, m_day.bars.back().close);
    EXPECT_THAT(m_source.minuteDays(QStringLiteral("000001")),
                ::testing::Each(::testing::AnyOf(::testing::Lt(onDay(20180108)), today)));
    EXPECT_FALSE(m_source.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180115)));
    EXPECT_FALSE(m_source.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108)))
        << "its whole day";
    EXPECT_LT(dayOf(*m_source.lastBar(QStringLiteral("600519"))), onDay(20180108)) << "of another security";
}

TEST_F(ChartSourceOfAPractice, HidesWhatIsLaterInAnotherFolderToo)
{
    m_source.setFolder(m_folder);
    EXPECT_EQ(shown(ChartPeriod::Day).bars.back().date, 20180108);
}

TEST_F(ChartSourceOfAPractice, HasAShownChartOfDaysGrowWithTheMinutesThatArePlayed)
{
    const ChartData before = shown(ChartPeriod::Day);
    m_replay.playTo(atTime(1000));
    EXPECT_FALSE(m_source.isOfAnEarlierDay(before));
    const std::optional<Bar> now = m_source.barOfToday(before);
    ASSERT_TRUE(now);
    EXPECT_EQ(now->date, before.bars.back().date);
    EXPECT_EQ(now->close, m_day.bars[30].close);
}

/// A data folder of a test's own, and quotes of today.
class ChartSourceOfTheMarket : public DataFiles
{
protected:
    ChartSourceOfTheMarket()
    {
        write(QStringLiteral("securities.csv"), "code,market,name\n600519,SH,A\n");
        writeDays("20231229,10,11,9,10,1000\n");
    }

    void writeDays(const QByteArray &rows)
    {
        write(QStringLiteral("daily/600519.csv"), "date,open,high,low,close,volume\n" + rows);
    }

    void writeMinutes(const QByteArray &rows)
    {
        write(QStringLiteral("minute/600519_%1.csv").arg(m_day.text()),
              "time,open,high,low,close,volume\n" + rows);
    }

    ChartSource source() { return {DataFolder::open(folder()).value(), &m_today}; }
    Bars bars(ChartPeriod period)
    {
        const auto loaded = source().load(QStringLiteral("600519"), period);
        EXPECT_TRUE(loaded) << qPrintable(loaded.error());
        return loaded.value().bars;
    }

    const Trading::TradingDate m_day = quotedDay;
    Replay m_replay{nullptr};
    Today m_today{&m_replay, [] { return quotedDay; }};
};

TEST_F(ChartSourceOfTheMarket, HasTheMinutesThatQuotesTell)
{
    m_today.take(quoteAt(1000, 12));
    const auto loaded = source().load(QStringLiteral("600519"), ChartPeriod::Minute);
    ASSERT_TRUE(loaded) << "the folder has no minutes at all";
    EXPECT_EQ(loaded.value().bars.size(), 1U);
    EXPECT_EQ(loaded.value().ahead.front(), 10 * 60 + 1);
    EXPECT_EQ(source().minuteDays(QStringLiteral("600519")), std::vector<Trading::TradingDate>{m_day});
}

TEST_F(ChartSourceOfTheMarket, FillsMinutesThatNoQuoteToldFromTheFolder)
{
    writeMinutes("0930,10,10,10,10,100\n0931,10,11,10,11,200\n");
    m_today.take(quoteAt(933, 12));
    const Bars shown = bars(ChartPeriod::Minute);
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(shown[1].close, 11);
    EXPECT_EQ(shown[2].close, 12);
    EXPECT_EQ(source().minuteDays(QStringLiteral("600519")).size(), 1U) << "today is one day";
}

TEST_F(ChartSourceOfTheMarket, EndsChartsOfDaysWithToday)
{
    m_today.take(quoteAt(930, 12, 100));
    m_today.take(quoteAt(931, 14, 50));
    const Bars days = bars(ChartPeriod::Day);
    ASSERT_EQ(days.size(), 2U);
    EXPECT_EQ(days.back(), (Bar{m_day.number(), 0, 12, 14, 12, 14, 150}));
    EXPECT_EQ(bars(ChartPeriod::Week).size(), 2U);
    EXPECT_EQ(bars(ChartPeriod::Month).back().close, 14);
}

TEST_F(ChartSourceOfTheMarket, CountsTodaysRowOfTheFolderOnce)
{
    const QByteArray day = m_day.text().toLatin1();
    writeDays("20231229,10,11,9,10,1000\n" + day + ",11,15,11,12,900\n");
    m_today.take(quoteAt(930, 12, 100));
    const Bars days = bars(ChartPeriod::Day);
    ASSERT_EQ(days.size(), 2U);
    EXPECT_EQ(days.back().open, 11);
    EXPECT_EQ(days.back().high, 15);
    EXPECT_EQ(days.back().volume, 900);
    const Bars weeks = bars(ChartPeriod::Week);
    EXPECT_EQ(weeks.size(), 2U);
    EXPECT_EQ(weeks.back().volume, 900);
}

TEST_F(ChartSourceOfTheMarket, HasTheCloseBeforeThatQuotesTell)
{
    Trading::Quote quote = quoteAt(930, 12);
    quote.previousClose = Trading::Money::ofCents(1150);
    m_today.take(quote);
    EXPECT_EQ(source().closeBefore(QStringLiteral("600519"), m_day), 11.5);
}

TEST_F(ChartSourceOfTheMarket, ChangesItsStampsWhenAFileGrows)
{
    writeMinutes("0930,10,10,10,10,100\n");
    const auto before = source().stamps(QStringLiteral("600519"));
    EXPECT_EQ(source().stamps(QStringLiteral("600519")), before);
    writeMinutes("0930,10,10,10,10,100\n0931,10,11,10,11,200\n");
    EXPECT_NE(source().stamps(QStringLiteral("600519")), before);
}

} // namespace
} // namespace Terminal
