#include "terminal/data/BarAggregation.h"
#include "terminal/data/BarFile.h"
#include "terminal/data/DataFolder.h"
#include "terminal/data/TradingHours.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

namespace Terminal {
namespace {

class DataFiles : public ::testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &content)
    {
        QDir(m_dir.path()).mkpath(QFileInfo(name).path());
        QFile file(m_dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QString folder() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

const QByteArray dailyHeader = "date,open,high,low,close,volume\n";
const QByteArray minuteHeader = "time,open,high,low,close,volume\n";

using BarFile = DataFiles;

TEST_F(BarFile, GivesEveryDayInOrder)
{
    const auto bars = readDailyBars(write(QStringLiteral("a.csv"), dailyHeader + "20240102,10,12,9,11,500\n"
                                                                                 "20240103,11,11,11,11,0\n"));
    ASSERT_TRUE(bars) << qPrintable(bars.error());
    ASSERT_EQ(bars.value().size(), 2U);
    const Bar &first = bars.value().front();
    EXPECT_EQ(first.date, 20240102);
    EXPECT_DOUBLE_EQ(first.open, 10);
    EXPECT_DOUBLE_EQ(first.high, 12);
    EXPECT_DOUBLE_EQ(first.low, 9);
    EXPECT_DOUBLE_EQ(first.close, 11);
    EXPECT_DOUBLE_EQ(first.volume, 500);
}

TEST_F(BarFile, TakesWindowsLineEndsAndAByteOrderMark)
{
    const auto bars = readDailyBars(write(QStringLiteral("a.csv"), "\xEF\xBB\xBF"
                                                                   "date,open,high,low,close,volume\r\n"
                                                                   "20240102,10,12,9,11,500\r\n"));
    EXPECT_TRUE(bars) << qPrintable(bars.error());
}

TEST_F(BarFile, TakesAdjustedPricesBelowZero)
{
    EXPECT_TRUE(readDailyBars(write(QStringLiteral("a.csv"), dailyHeader + "20240102,-2,-1,-3,-2,5\n")));
}

TEST_F(BarFile, SaysWhichFileIsMissing)
{
    const auto bars = readDailyBars(folder() + QStringLiteral("/none.csv"));
    EXPECT_FALSE(bars);
    EXPECT_TRUE(bars.error().contains(QStringLiteral("none.csv: cannot be read")))
        << qPrintable(bars.error());
}

TEST_F(BarFile, ReadsMinutesOfItsDay)
{
    const auto bars = readMinuteBars(
        write(QStringLiteral("m.csv"), minuteHeader + "930,9,9,9,9,1\n1301,9,9,9,9,1\n"), 20240102);
    ASSERT_TRUE(bars) << qPrintable(bars.error());
    EXPECT_EQ(bars.value()[0].minute, 570);
    EXPECT_EQ(bars.value()[1].minute, 781);
    EXPECT_EQ(bars.value()[1].date, 20240102);
}

struct BadLine
{
    const char *name;
    const char *line;
    const char *reason;
};

class BadDailyLine : public DataFiles, public ::testing::WithParamInterface<BadLine>
{
};

TEST_P(BadDailyLine, StopsTheFileAndIsNamed)
{
    const QString path = write(QStringLiteral("bad.csv"), dailyHeader + "20240102,10,12,9,11,500\n" +
                                                              GetParam().line + "\n20240105,1,1,1,1,1\n");
    const auto bars = readDailyBars(path);
    ASSERT_FALSE(bars);
    EXPECT_TRUE(bars.error().startsWith(path + QStringLiteral(":3: "))) << qPrintable(bars.error());
    EXPECT_TRUE(bars.error().contains(QLatin1String(GetParam().reason))) << qPrintable(bars.error());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BadDailyLine,
    ::testing::Values(BadLine{"empty", "", "1 fields"},
                      BadLine{"tooFewFields", "20240103,1,1,1,1", "5 fields"},
                      BadLine{"tooManyFields", "20240103,1,1,1,1,1,1", "7 fields"},
                      BadLine{"noDate", "2024-01-03,1,1,1,1,1", "not a date"},
                      BadLine{"signedDate", "+20240103,1,1,1,1,1", "not a date"},
                      BadLine{"emptyDate", ",1,1,1,1,1", "not a date"},
                      BadLine{"dayThatIsNot", "20240230,1,1,1,1,1", "not a date"},
                      BadLine{"sameDay", "20240102,1,1,1,1,1", "not later"},
                      BadLine{"earlierDay", "20231229,1,1,1,1,1", "not later"},
                      BadLine{"wordAsPrice", "20240103,x,1,1,1,1", "\"x\" is not a number"},
                      BadLine{"emptyPrice", "20240103,1,1,1,,1", "is not a number"},
                      BadLine{"nan", "20240103,nan,1,1,1,1", "\"nan\" is not a number"},
                      BadLine{"infinite", "20240103,1,inf,1,1,1", "\"inf\" is not a number"},
                      BadLine{"highBelowLow", "20240103,2,1,3,2,1", "high is below the low"},
                      BadLine{"openOutside", "20240103,5,4,3,4,1", "open is outside"},
                      BadLine{"closeOutside", "20240103,4,4,3,2,1", "close is outside"},
                      BadLine{"negativeVolume", "20240103,4,4,3,4,-1", "volume is negative"}),
    ByName());

class BadMinuteLine : public DataFiles, public ::testing::WithParamInterface<BadLine>
{
};

TEST_P(BadMinuteLine, StopsTheFileAndIsNamed)
{
    const QString path =
        write(QStringLiteral("bad.csv"), minuteHeader + "931,10,12,9,11,500\n" + GetParam().line + "\n");
    const auto bars = readMinuteBars(path, 20240102);
    ASSERT_FALSE(bars);
    EXPECT_TRUE(bars.error().startsWith(path + QStringLiteral(":3: "))) << qPrintable(bars.error());
    EXPECT_TRUE(bars.error().contains(QLatin1String(GetParam().reason))) << qPrintable(bars.error());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BadMinuteLine,
    ::testing::Values(BadLine{"noTime", "9:32,1,1,1,1,1", "not a time"},
                      BadLine{"sixtyMinutes", "960,1,1,1,1,1", "not a time"},
                      BadLine{"lateHour", "2500,1,1,1,1,1", "not a time"},
                      BadLine{"beforeOpening", "929,1,1,1,1,1", "outside of the trading hours"},
                      BadLine{"lunch", "1300,1,1,1,1,1", "outside of the trading hours"},
                      BadLine{"afterClose", "1501,1,1,1,1,1", "outside of the trading hours"},
                      BadLine{"sameMinute", "931,1,1,1,1,1", "not later"},
                      BadLine{"wordAsPrice", "932,1,1,1,x,1", "is not a number"}),
    ByName());

TEST_F(BarFile, RefusesAnotherHeader)
{
    const QString path = write(QStringLiteral("a.csv"), "date,close\n20240102,1\n");
    EXPECT_TRUE(readDailyBars(path).error().startsWith(path + QStringLiteral(":1: the first line")));
}

TEST_F(BarFile, RefusesAFileWithoutBars)
{
    EXPECT_TRUE(readDailyBars(write(QStringLiteral("a.csv"), dailyHeader))
                    .error()
                    .contains(QStringLiteral("no bars")));
}

using SecuritiesFile = DataFiles;

TEST_F(SecuritiesFile, NamesTheSecurities)
{
    const auto securities = readSecurities(
        write(QStringLiteral("s.csv"),
              QStringLiteral(u"code,market,name\n000001,SZ,平安银行\n600519,SH,贵州茅台\n").toUtf8()));
    ASSERT_TRUE(securities) << qPrintable(securities.error());
    const Security *const security = findSecurity(securities.value(), QStringLiteral("000001"));
    ASSERT_NE(security, nullptr);
    EXPECT_EQ(security->market, Market::Shenzhen);
    EXPECT_EQ(security->name, QStringLiteral(u"平安银行"));
    EXPECT_EQ(findSecurity(securities.value(), QStringLiteral("1")), nullptr);
}

class BadSecurityLine : public DataFiles, public ::testing::WithParamInterface<BadLine>
{
};

TEST_P(BadSecurityLine, StopsTheFileAndIsNamed)
{
    const QString path = write(QStringLiteral("s.csv"),
                               QByteArray("code,market,name\n000001,SZ,One\n") + GetParam().line + "\n");
    const auto securities = readSecurities(path);
    ASSERT_FALSE(securities);
    EXPECT_TRUE(securities.error().startsWith(path + QStringLiteral(":3: ")))
        << qPrintable(securities.error());
    EXPECT_TRUE(securities.error().contains(QLatin1String(GetParam().reason)))
        << qPrintable(securities.error());
}

INSTANTIATE_TEST_SUITE_P(Lines, BadSecurityLine,
                         ::testing::Values(BadLine{"noCode", ",SH,Name", "not a security code"},
                                           BadLine{"codeWithBlank", "60 1,SH,Name", "not a security code"},
                                           BadLine{"twice", "000001,SH,Name", "second time"},
                                           BadLine{"unknownMarket", "600519,HK,Name", "neither SH nor SZ"},
                                           BadLine{"noName", "600519,SH, ", "name is missing"}),
                         ByName());

Bar day(std::int32_t date, double open, double high, double low, double close, double volume)
{
    return {date, 0, open, high, low, close, volume};
}

TEST(BarAggregation, JoinsTheDaysOfAWeek)
{
    // 20240105 was a Friday, 20240108 the Monday after.
    const Bars weeks = toWeeks(
        {day(20240104, 10, 12, 9, 11, 5), day(20240105, 11, 15, 10, 14, 7), day(20240108, 14, 14, 8, 9, 1)});
    ASSERT_EQ(weeks.size(), 2U);
    EXPECT_EQ(weeks[0].date, 20240105);
    EXPECT_DOUBLE_EQ(weeks[0].open, 10);
    EXPECT_DOUBLE_EQ(weeks[0].high, 15);
    EXPECT_DOUBLE_EQ(weeks[0].low, 9);
    EXPECT_DOUBLE_EQ(weeks[0].close, 14);
    EXPECT_DOUBLE_EQ(weeks[0].volume, 12);
    EXPECT_EQ(weeks[1].date, 20240108);
}

TEST(BarAggregation, KeepsAWeekTogetherAcrossNewYear)
{
    // Monday 20191230 to Friday 20200103.
    EXPECT_EQ(toWeeks({day(20191230, 1, 1, 1, 1, 1), day(20200103, 1, 1, 1, 1, 1)}).size(), 1U);
}

TEST(BarAggregation, StartsANewWeekAfterALongHoliday)
{
    // The same weekday of two weeks.
    EXPECT_EQ(toWeeks({day(20240103, 1, 1, 1, 1, 1), day(20240110, 1, 1, 1, 1, 1)}).size(), 2U);
}

TEST(BarAggregation, JoinsTheDaysOfAMonth)
{
    const Bars months =
        toMonths({day(20231229, 1, 2, 1, 2, 1), day(20240102, 2, 3, 2, 3, 1), day(20240131, 3, 4, 1, 1, 2)});
    ASSERT_EQ(months.size(), 2U);
    EXPECT_EQ(months[1].date, 20240131);
    EXPECT_DOUBLE_EQ(months[1].volume, 3);
    EXPECT_DOUBLE_EQ(months[1].low, 1);
}

TEST(TradingHours, MakesABarForTheOpeningAuction)
{
    const Bars minutes = withAuctionBar({{20240102, 571, 10, 12, 9, 11, 500}});
    ASSERT_EQ(minutes.size(), 2U);
    const Bar &auction = minutes.front();
    EXPECT_EQ(auction.minute, 570);
    EXPECT_EQ(auction.date, 20240102);
    EXPECT_DOUBLE_EQ(auction.open, 10);
    EXPECT_DOUBLE_EQ(auction.high, 10);
    EXPECT_DOUBLE_EQ(auction.low, 10);
    EXPECT_DOUBLE_EQ(auction.close, 10);
    EXPECT_DOUBLE_EQ(auction.volume, 0);
}

TEST(TradingHours, KeepsARecordedAuction)
{
    const Bars minutes = withAuctionBar({{20240102, 570, 10, 10, 10, 10, 27300}});
    ASSERT_EQ(minutes.size(), 1U);
    EXPECT_DOUBLE_EQ(minutes.front().volume, 27300);
}

TEST(TradingHours, HasTwoHundredAndFortyOneMinutes)
{
    int minutes = 0;
    for (int minute = 0; minute < 24 * 60; ++minute) {
        minutes += isTradingMinute(minute) ? 1 : 0;
    }
    EXPECT_EQ(minutes, minutesOfTradingDay);
}

class RealData : public ::testing::Test
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

TEST_F(RealData, LoadsEveryPeriodOfEverySecurity)
{
    for (const Security &security : m_folder.securities()) {
        for (const ChartPeriod period : chartPeriods) {
            const auto loaded = m_folder.load(security.code, period, 0);
            EXPECT_TRUE(loaded) << qPrintable(loaded.error());
        }
    }
}

TEST_F(RealData, MakesEveryRecordedDayAFullDay)
{
    for (const Security &security : m_folder.securities()) {
        for (const std::int32_t date : m_folder.minuteDays(security.code)) {
            const auto loaded = m_folder.load(security.code, ChartPeriod::Minute, date);
            ASSERT_TRUE(loaded) << qPrintable(loaded.error());
            EXPECT_EQ(loaded.value().bars.size(), static_cast<size_t>(minutesOfTradingDay)) << date;
        }
    }
}

TEST_F(RealData, KeepsTheVolumeInWeeksAndMonths)
{
    const auto sum = [](const Bars &bars) {
        double volume = 0;
        for (const Bar &bar : bars) {
            volume += bar.volume;
        }
        return volume;
    };
    const Bars days = m_folder.load(QStringLiteral("600519"), ChartPeriod::Day, 0).value().bars;
    EXPECT_DOUBLE_EQ(sum(toWeeks(days)), sum(days));
    EXPECT_DOUBLE_EQ(sum(toMonths(days)), sum(days));
}

TEST_F(RealData, HasTheCloseBeforeARecordedDay)
{
    const auto close = [this](const char *code, std::int32_t day) {
        return m_folder.closeBefore(QLatin1String(code), day);
    };
    EXPECT_EQ(close("000001", 20180108), 13.30);   // of the Friday before
    EXPECT_EQ(close("600519", 20260327), 1401.18); // the daily bars end years before
}

TEST_F(RealData, BringsTheCloseBeforeWithTheMinutesOfADay)
{
    const auto broughtWith = [this](ChartPeriod period) {
        return m_folder.load(QStringLiteral("000001"), period, 20180108).value().previousClose;
    };
    EXPECT_EQ(broughtWith(ChartPeriod::Minute), 13.30);
    EXPECT_EQ(broughtWith(ChartPeriod::Day), std::nullopt);
}

TEST_F(RealData, HasNoCloseFromLongBeforeARecordedDay)
{
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("600519"), 20230201), std::nullopt);
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("600519"), 20100104), std::nullopt);
    EXPECT_EQ(m_folder.closeBefore(QStringLiteral("999999"), 20180108), std::nullopt);
}

TEST_F(RealData, NamesTheKnownCodesForAnUnknownOne)
{
    const auto loaded = m_folder.load(QStringLiteral("999999"), ChartPeriod::Day, 0);
    EXPECT_TRUE(loaded.error().contains(QStringLiteral("999999")));
    EXPECT_TRUE(loaded.error().contains(QStringLiteral("600519")));
}

TEST_F(DataFiles, NamesAFolderThatIsNotThere)
{
    EXPECT_TRUE(DataFolder::open(folder() + QStringLiteral("/none"))
                    .error()
                    .contains(QStringLiteral("no such folder")));
}

} // namespace
} // namespace Terminal
