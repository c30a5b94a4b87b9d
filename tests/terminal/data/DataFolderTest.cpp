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

TEST_F(DataFolderOfExamples, TellsNothingOfADayThatHasNotComeYet)
{
    const auto code = QStringLiteral("000001");
    const auto close = m_folder.closeBefore(code, onDay(20180109));
    m_folder.endBefore(onDay(20180109));
    EXPECT_EQ(m_folder.minuteDays(code).back(), onDay(20180108));
    EXPECT_FALSE(m_folder.load(code, ChartPeriod::Minute, onDay(20180109)));
    for (const ChartPeriod period : chartPeriods) {
        const ChartData shown = m_folder.load(code, period, {}, PriceView::Adjusted).value();
        EXPECT_EQ(shown.bars.back().date, 20180108);
        EXPECT_EQ(shown.adjustment.factorOn(onDay(20180108)), 1) << "later actions are not known";
    }
    EXPECT_EQ(m_folder.closeBefore(code, onDay(20180109)), close);
}

TEST_F(DataFolderOfExamples, SaysSoWhereNoBarHasComeYet)
{
    m_folder.endBefore(onDay(19800101));
    const auto days = m_folder.load(QStringLiteral("000001"), ChartPeriod::Day);
    EXPECT_THAT(days.error().toStdString(), ::testing::HasSubstr("1980-01-01"));
    EXPECT_FALSE(m_folder.load(QStringLiteral("000001"), ChartPeriod::Minute));
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("000001"), onDay(20180109)), std::nullopt);
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

/// A share of 20.00 pays 1.00 on Wednesday 20240103, and of one become two on Monday 20240108.
class DataFolderWithActions : public DataFiles
{
protected:
    void SetUp() override
    {
        write(QStringLiteral("securities.csv"), "code,market,name\n600519,SH,MT\n");
        write(QStringLiteral("daily/600519.csv"), "date,open,high,low,close,volume\n"
                                                  "20240102,19.8,20.4,19.6,20,1000\n"
                                                  "20240103,19.2,19.4,18.8,19.19,1100\n"
                                                  "20240105,19,19.6,18.9,19.5,1200\n"
                                                  "20240108,9.8,10,9.7,9.75,2400\n");
        write(QStringLiteral("actions/600519.csv"), "exdate,dividend,bonus\n20240103,1,\n20240108,,1\n");
    }

    Loaded<ChartData> load(PriceView view, ChartPeriod period = ChartPeriod::Day,
                           std::optional<Trading::TradingDate> day = {}) const
    {
        return opened().load(QStringLiteral("600519"), period, day, view);
    }

    std::optional<double> closeBefore(int day) const
    {
        return opened().closeBefore(QStringLiteral("600519"), onDay(day));
    }

    DataFolder opened() const { return DataFolder::open(folder()).value(); }
};

double changeOf(const ChartData &data, size_t bar)
{
    return data.bars[bar].close / data.priceBefore(bar) - 1;
}

TEST_F(DataFolderWithActions, ShowsRawPricesUnlessItIsAskedForOthers)
{
    const ChartData data = opened().load(QStringLiteral("600519"), ChartPeriod::Day).value();
    EXPECT_EQ(data.view, PriceView::Raw);
    EXPECT_EQ(data.bars.front().close, 20);
    EXPECT_EQ(data.shownPrice(20, onDay(20240102)), 20);
}

/// 20.00 × 0.95 × 0.5 = 9.50; 19.19 × 0.5 = 9.595; the latest bar stays.
TEST_F(DataFolderWithActions, ShowsAdjustedPricesOnDemand)
{
    const ChartData data = load(PriceView::Adjusted).value();
    EXPECT_EQ(data.view, PriceView::Adjusted);
    EXPECT_DOUBLE_EQ(data.bars[0].close, 9.5);
    EXPECT_DOUBLE_EQ(data.bars[1].close, 9.595);
    EXPECT_EQ(data.bars[3].close, 9.75);
    EXPECT_EQ(data.bars[3].volume, 2400);
    EXPECT_DOUBLE_EQ(data.shownPrice(20, onDay(20240102)), 9.5);
    EXPECT_EQ(data.priceDecimals, 2); // of the raw ones: nobody pays a part of a cent
}

/// 19.19 against 19.00 is +1 %, and 9.75 against 19.50 ÷ 2 is 0 %, whichever prices are shown.
TEST_F(DataFolderWithActions, MeasuresTheChangeOfAnExDateFromTheAdjustedCloseInBothViews)
{
    for (const PriceView view : {PriceView::Raw, PriceView::Adjusted}) {
        const ChartData data = load(view).value();
        EXPECT_NEAR(changeOf(data, 1), 0.01, 1e-14);
        EXPECT_NEAR(changeOf(data, 2), 19.5 / 19.19 - 1, 1e-14); // of another day, from its close before
        EXPECT_NEAR(changeOf(data, 3), 0, 1e-14);
    }
    EXPECT_EQ(load(PriceView::Raw).value().priceBefore(1), 19);
    EXPECT_DOUBLE_EQ(load(PriceView::Adjusted).value().priceBefore(1), 9.5);
}

/// The week of 20240102: open 19.80 × 0.475, high 20.40 × 0.475 = 9.69 or 19.60 × 0.5 = 9.80, low 19.60 ×
/// 0.475 = 9.31, 18.80 × 0.5 = 9.40 or 18.90 × 0.5 = 9.45.
TEST_F(DataFolderWithActions, MakesWeeksAndMonthsOfAdjustedDays)
{
    const ChartData weeks = load(PriceView::Adjusted, ChartPeriod::Week).value();
    ASSERT_EQ(weeks.bars.size(), 2U);
    EXPECT_DOUBLE_EQ(weeks.bars[0].open, 19.8 * 0.475);
    EXPECT_DOUBLE_EQ(weeks.bars[0].high, 9.8);
    EXPECT_DOUBLE_EQ(weeks.bars[0].low, 19.6 * 0.475);
    EXPECT_DOUBLE_EQ(weeks.bars[0].close, 9.75);
    EXPECT_NEAR(changeOf(weeks, 1), 0, 1e-14);
    const ChartData months = load(PriceView::Adjusted, ChartPeriod::Month).value();
    ASSERT_EQ(months.bars.size(), 1U);
    EXPECT_DOUBLE_EQ(months.bars[0].low, 19.6 * 0.475);
    EXPECT_EQ(months.bars[0].high, 10);
    EXPECT_EQ(months.bars[0].volume, 5700);
}

TEST_F(DataFolderWithActions, MeasuresTheChangeOfARawWeekOverAnExDate)
{
    const ChartData weeks = load(PriceView::Raw, ChartPeriod::Week).value();
    EXPECT_EQ(weeks.bars[0].high, 20.4);
    EXPECT_EQ(weeks.priceBefore(1), 9.75);
}

TEST_F(DataFolderWithActions, AdjustsTheMinutesOfAPastDay)
{
    write(QStringLiteral("minute/600519_20240103.csv"), "time,open,high,low,close,volume\n"
                                                        "931,19,19.4,19,19.2,10\n");
    const ChartData raw = load(PriceView::Raw, ChartPeriod::Minute, onDay(20240103)).value();
    EXPECT_EQ(raw.previousClose, 19); // 20.00 less the dividend
    EXPECT_EQ(raw.bars.back().close, 19.2);
    const ChartData adjusted = load(PriceView::Adjusted, ChartPeriod::Minute, onDay(20240103)).value();
    EXPECT_DOUBLE_EQ(*adjusted.previousClose, 9.5);
    EXPECT_DOUBLE_EQ(adjusted.bars.back().close, 9.6);
    EXPECT_DOUBLE_EQ(adjusted.bars.front().open, 9.5); // the minute of the auction
}

TEST_F(DataFolderWithActions, ClosesBeforeAnExDateAtTheReferencePriceOfTheExchange)
{
    EXPECT_EQ(closeBefore(20240103), 19);
    EXPECT_EQ(closeBefore(20240104), 19.19);
    EXPECT_EQ(closeBefore(20240108), 9.75);
    EXPECT_EQ(closeBefore(20240109), 9.75);
}

/// The price limits of a day that has no bar yet.
TEST_F(DataFolderWithActions, ClosesAtTheReferencePriceBeforeAnExDateThatIsToCome)
{
    write(QStringLiteral("actions/600519.csv"), "exdate,dividend\n20240109,0.15\n");
    EXPECT_EQ(closeBefore(20240109), 9.6);
    EXPECT_EQ(load(PriceView::Adjusted).value().bars.back().close, 9.75);
}

Trading::TradingDate lastWeekday(Trading::TradingDate day)
{
    return isClosedWeekend(day) ? lastWeekday(day.plusDays(-1)) : day;
}

/// Before the first bar of the day is there.
TEST_F(DataFolderWithActions, AdjustsForAnExDateThatHasJustCome)
{
    const Trading::TradingDate exDate = lastWeekday(Trading::TradingDate::today());
    const Trading::TradingDate before = lastWeekday(exDate.plusDays(-1));
    write(QStringLiteral("daily/600519.csv"),
          "date,open,high,low,close,volume\n" + before.text().toLatin1() + ",20,20,20,20,1000\n");
    write(QStringLiteral("actions/600519.csv"), "exdate,dividend\n" + exDate.text().toLatin1() + ",1\n");
    EXPECT_DOUBLE_EQ(load(PriceView::Adjusted).value().bars.back().close, 19);
}

TEST_F(DataFolderWithActions, KnowsOfAnExDateByALaterMinuteToo)
{
    write(QStringLiteral("actions/600519.csv"), "exdate,bonus\n20240109,1\n");
    EXPECT_TRUE(load(PriceView::Adjusted).value().adjustment.isEmpty());
    write(QStringLiteral("minute/600519_20240109.csv"), "time,open,high,low,close,volume\n931,5,5,5,5,10\n");
    EXPECT_DOUBLE_EQ(load(PriceView::Adjusted).value().bars.back().close, 4.875);
    EXPECT_EQ(load(PriceView::Raw, ChartPeriod::Minute).value().previousClose, 4.88);
}

TEST_F(DataFolderWithActions, ReadsAChangedFileAnew)
{
    const DataFolder folder = opened();
    const auto firstClose = [&folder] {
        return folder.load(QStringLiteral("600519"), ChartPeriod::Day, {}, PriceView::Adjusted)
            .value()
            .bars.front()
            .close;
    };
    EXPECT_DOUBLE_EQ(firstClose(), 9.5);
    write(QStringLiteral("actions/600519.csv"), "exdate,dividend\n20240103,1\n");
    EXPECT_DOUBLE_EQ(firstClose(), 19);
}

TEST_F(DataFolderWithActions, RefusesTheAdjustedViewForAWrongFileAndTellsOfItInTheRawOne)
{
    const QString file = write(QStringLiteral("actions/600519.csv"), "exdate,dividend\n20240103,x\n");
    const auto adjusted = load(PriceView::Adjusted);
    EXPECT_FALSE(adjusted);
    EXPECT_TRUE(adjusted.error().startsWith(file + QStringLiteral(":2: "))) << qPrintable(adjusted.error());
    const auto raw = load(PriceView::Raw);
    ASSERT_TRUE(raw);
    EXPECT_EQ(raw.value().bars.front().close, 20);
    EXPECT_THAT(raw.value().remarks, ::testing::ElementsAre(adjusted.error()));
}

TEST_F(DataFolderWithActions, DoesNotAdjustPricesTwice)
{
    write(QStringLiteral("daily/600519.csv"), "600519 MT 前复权\n"
                                              "date,open,high,low,close,volume\n"
                                              "20240102,9.4,9.7,9.3,9.5,1000\n"
                                              "20240108,9.8,10,9.7,9.75,2400\n");
    const ChartData data = load(PriceView::Adjusted).value();
    EXPECT_EQ(data.bars.front().close, 9.5);
    ASSERT_EQ(data.remarks.size(), 1);
    EXPECT_TRUE(data.remarks.front().contains(QStringLiteral("adjusted already")));
}

using DataFolderWithForeignFiles = DataFiles;

TEST_F(DataFolderWithForeignFiles, SaysThatTradesDoNotLieOnAdjustedPrices)
{
    write(QStringLiteral("securities.csv"), "code,market,name\n000001,SZ,平安银行\n");
    write(QStringLiteral("daily/000001.csv"),
          "date,code,open,high,low,close,preclose,volume,amount,adjustflag\n"
          "2024-01-02,sz.000001,10.00,10.20,9.90,10.10,10.00,100000,1010000,2\n"
          "2024-01-03,sz.000001,10.10,10.30,10.00,10.20,10.10,100000,1020000,2\n");
    const auto folder = DataFolder::open(this->folder());
    ASSERT_TRUE(folder) << qPrintable(folder.error());

    const auto loaded = folder.value().load(QStringLiteral("000001"), ChartPeriod::Day);

    ASSERT_TRUE(loaded) << qPrintable(loaded.error());
    ASSERT_EQ(loaded.value().remarks.size(), 1);
    EXPECT_TRUE(loaded.value().remarks.front().contains(QStringLiteral("adjusted")));
}

} // namespace
} // namespace Terminal
