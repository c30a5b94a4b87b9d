#include "terminal/data/DataFolder.h"
#include "terminal/data/BarAggregation.h"
#include "terminal/data/TradingHours.h"
#include "tests/terminal/support/DataFiles.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class DataFolderOfExamples : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const auto folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES));
        ASSERT_TRUE(folder) << qPrintable(folder.error());
        m_folder = folder.value();
    }

    DataFolder m_folder;
};

TEST_F(DataFolderOfExamples, LoadsEveryPeriodOfEverySecurity)
{
    for (const Security &security : m_folder.securities()) {
        for (const ChartPeriod period : chartPeriods) {
            const auto loaded = m_folder.load(security.code, period);
            EXPECT_TRUE(loaded) << qPrintable(loaded.error());
        }
    }
}

TEST_F(DataFolderOfExamples, MakesEveryRecordedDayAFullDay)
{
    for (const Security &security : m_folder.securities()) {
        for (const Trading::TradingDate day : m_folder.minuteDays(security.code)) {
            const auto loaded = m_folder.load(security.code, ChartPeriod::Minute, day);
            ASSERT_TRUE(loaded) << qPrintable(loaded.error());
            EXPECT_EQ(loaded.value().bars.size(), static_cast<size_t>(minutesOfTradingDay)) << day.number();
        }
    }
}

TEST_F(DataFolderOfExamples, KeepsTheVolumeInWeeksAndMonths)
{
    const auto sum = [](const Bars &bars) {
        double volume = 0;
        for (const Bar &bar : bars) {
            volume += bar.volume;
        }
        return volume;
    };
    const Bars days = m_folder.load(QStringLiteral("600519"), ChartPeriod::Day).value().bars;
    EXPECT_DOUBLE_EQ(sum(toWeeks(days)), sum(days));
    EXPECT_DOUBLE_EQ(sum(toMonths(days)), sum(days));
}

TEST_F(DataFolderOfExamples, HasTheCloseBeforeARecordedDay)
{
    const auto close = [this](const char *code, int day) {
        return m_folder.closeBefore(QLatin1String(code), onDay(day));
    };
    EXPECT_EQ(close("000001", 20180108), 13.30);   // of the Friday before
    EXPECT_EQ(close("600519", 20260327), 1401.18); // the daily bars end years before
}

TEST_F(DataFolderOfExamples, BringsTheCloseBeforeWithTheMinutesOfADay)
{
    const auto broughtWith = [this](ChartPeriod period) {
        return m_folder.load(QStringLiteral("000001"), period, onDay(20180108)).value().previousClose;
    };
    EXPECT_EQ(broughtWith(ChartPeriod::Minute), 13.30);
    EXPECT_EQ(broughtWith(ChartPeriod::Day), std::nullopt);
}

TEST_F(DataFolderOfExamples, HasNoCloseFromLongBeforeARecordedDay)
{
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("600519"), onDay(20230201)), std::nullopt);
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("600519"), onDay(20100104)), std::nullopt);
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("999999"), onDay(20180108)), std::nullopt);
}

TEST_F(DataFolderOfExamples, NamesTheKnownCodesForAnUnknownOne)
{
    const auto loaded = m_folder.load(QStringLiteral("999999"), ChartPeriod::Day);
    EXPECT_TRUE(loaded.error().contains(QStringLiteral("999999")));
    EXPECT_TRUE(loaded.error().contains(QStringLiteral("600519")));
}

using DataFolderOfAPath = DataFiles;

TEST_F(DataFolderOfAPath, KnowsNoMinutesOfADayThatIsNotInTheCalendar)
{
    write(QStringLiteral("securities.csv"), "code,market,name\n600519,SH,MT\n");
    write(QStringLiteral("daily/600519.csv"), "date,open,high,low,close,volume\n20240102,1,1,1,1,1\n");
    for (const char *const day : {"20240230", "00000000", "20240229"}) {
        write(QStringLiteral("minute/600519_%1.csv").arg(QLatin1String(day)),
              "time,open,high,low,close,volume\n931,1,1,1,1,1\n");
    }
    const DataFolder opened = DataFolder::open(folder()).value();
    EXPECT_THAT(opened.minuteDays(QStringLiteral("600519")), ::testing::ElementsAre(onDay(20240229)));
    EXPECT_TRUE(opened.load(QStringLiteral("600519"), ChartPeriod::Minute));
    EXPECT_FALSE(opened.load(QStringLiteral("600519"), ChartPeriod::Minute, onDay(20240228)));
}

TEST_F(DataFolderOfAPath, NamesAFolderThatIsNotThere)
{
    EXPECT_TRUE(DataFolder::open(folder() + QStringLiteral("/none"))
                    .error()
                    .contains(QStringLiteral("no such folder")));
}

} // namespace
} // namespace Terminal
