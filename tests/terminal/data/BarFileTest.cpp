#include "terminal/data/BarFile.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

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

class BarFileBadDailyLine : public DataFiles, public ::testing::WithParamInterface<BadLine>
{
};

TEST_P(BarFileBadDailyLine, StopsTheFileAndIsNamed)
{
    const QString path = write(QStringLiteral("bad.csv"), dailyHeader + "20240102,10,12,9,11,500\n" +
                                                              GetParam().line + "\n20240105,1,1,1,1,1\n");
    const auto bars = readDailyBars(path);
    ASSERT_FALSE(bars);
    EXPECT_TRUE(bars.error().startsWith(path + QStringLiteral(":3: "))) << qPrintable(bars.error());
    EXPECT_TRUE(bars.error().contains(QLatin1String(GetParam().reason))) << qPrintable(bars.error());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BarFileBadDailyLine,
    ::testing::Values(BadLine{"empty", "", "1 fields"},
                      BadLine{"tooFewFields", "20240103,1,1,1,1", "5 fields"},
                      BadLine{"tooManyFields", "20240103,1,1,1,1,1,1", "7 fields"},
                      BadLine{"noDate", "2024-01-03,1,1,1,1,1", "not a date"},
                      BadLine{"signedDate", "+20240103,1,1,1,1,1", "not a date"},
                      BadLine{"yearOfTwoDigits", "240103,1,1,1,1,1", "not a date"},
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

class BarFileBadMinuteLine : public DataFiles, public ::testing::WithParamInterface<BadLine>
{
};

TEST_P(BarFileBadMinuteLine, StopsTheFileAndIsNamed)
{
    const QString path =
        write(QStringLiteral("bad.csv"), minuteHeader + "931,10,12,9,11,500\n" + GetParam().line + "\n");
    const auto bars = readMinuteBars(path, 20240102);
    ASSERT_FALSE(bars);
    EXPECT_TRUE(bars.error().startsWith(path + QStringLiteral(":3: "))) << qPrintable(bars.error());
    EXPECT_TRUE(bars.error().contains(QLatin1String(GetParam().reason))) << qPrintable(bars.error());
}

INSTANTIATE_TEST_SUITE_P(Lines, BarFileBadMinuteLine,
                         ::testing::Values(BadLine{"noTime", "9:32,1,1,1,1,1", "not a time"},
                                           BadLine{"sixtyMinutes", "960,1,1,1,1,1", "not a time"},
                                           BadLine{"lateHour", "2500,1,1,1,1,1", "not a time"},
                                           BadLine{"beforeOpening", "929,1,1,1,1,1",
                                                   "outside of the trading hours"},
                                           BadLine{"lunch", "1300,1,1,1,1,1", "outside of the trading hours"},
                                           BadLine{"sameMinute", "931,1,1,1,1,1", "not later"},
                                           BadLine{"wordAsPrice", "932,1,1,1,x,1", "is not a number"}),
                         ByName());

TEST_F(BarFile, RefusesAnotherHeader)
{
    const QString path = write(QStringLiteral("a.csv"), "date,close\n20240102,1\n");
    EXPECT_TRUE(readDailyBars(path).error().startsWith(path + QStringLiteral(":1: the first line")));
}

TEST_F(BarFile, NamesAFileAsItIsCalled)
{
    const QString path = write(QStringLiteral("100%2 %1.csv"), dailyHeader + "20240102,x,1,1,1,1\n");
    EXPECT_TRUE(readDailyBars(path).error().startsWith(path + QStringLiteral(":2: \"x\" is not a number")))
        << qPrintable(readDailyBars(path).error());
}

TEST_F(BarFile, CountsTheFurtherLinesThatHaveAProblem)
{
    const QString path =
        write(QStringLiteral("a.csv"), dailyHeader + "20240102,x,1,1,1,1\n20240103,1,1,1,1\n");
    EXPECT_TRUE(readDailyBars(path).error().endsWith(QStringLiteral("; 1 more lines have a problem")))
        << qPrintable(readDailyBars(path).error());
}

TEST_F(BarFile, TakesNoBarsOfAnotherSecurity)
{
    const QString path =
        write(QStringLiteral("a.csv"),
              "code,date,open,high,low,close,volume (shares)\nsz.000001,20240102,1,1,1,1,1\n");
    EXPECT_TRUE(readDailyBars(path, QStringLiteral("000001")));
    EXPECT_TRUE(
        readDailyBars(path, QStringLiteral("600519")).error().contains(QStringLiteral("not of 600519")));
}

TEST_F(BarFile, TakesNoMinutesForDays)
{
    const QString path =
        write(QStringLiteral("a.csv"),
              "date,time,open,high,low,close,volume\n20240102,931,9,9,9,9,1\n20240102,932,9,9,9,9,1\n");
    EXPECT_TRUE(readDailyBars(path).error().contains(QStringLiteral("bars of minutes, not of days")));
    EXPECT_TRUE(readMinuteBars(path, 20240102));
    EXPECT_TRUE(readMinuteBars(path, 20240103).error().contains(QStringLiteral("another day")));
}

TEST_F(BarFile, TakesRowsOfZerosForNoBars)
{
    const auto bars = readDailyBars(write(QStringLiteral("a.csv"), dailyHeader + "20240102,0,0,0,0,0\n"
                                                                                 "20240103,9,9,9,9,1\n"));
    ASSERT_TRUE(bars) << qPrintable(bars.error());
    ASSERT_EQ(bars.value().size(), 1U);
    EXPECT_EQ(bars.value().front().date, 20240103);
}

TEST_F(BarFile, TakesNoYearsWithoutExchanges)
{
    for (const char *const day : {"00240102", "18991229", "21000104"}) {
        EXPECT_TRUE(readDailyBars(write(QStringLiteral("a.csv"), dailyHeader + day + ",9,9,9,9,1\n"))
                        .error()
                        .contains(QStringLiteral("is not a date")))
            << day;
    }
}

TEST_F(BarFile, LeavesTradesAfterTheCloseOut)
{
    const auto bars = readMinuteBars(
        write(QStringLiteral("m.csv"), minuteHeader + "1459,9,9,9,9,1\n1500,9,9,9,9,1\n1506,9,9,9,9,1\n"),
        20240102);
    ASSERT_TRUE(bars) << qPrintable(bars.error());
    EXPECT_EQ(bars.value().back().minute, 900);
}

TEST_F(BarFile, IsNotRefusedForAnyMinuteAfterTheClose)
{
    for (const char *const later :
         {"1501,9,9,9,9,1", "1515,9,9.5,9,9,1", "1531,9,9,9,9,1", "2359,9,9,9,9,1"}) {
        const auto bars = readMinuteBars(
            write(QStringLiteral("m.csv"), minuteHeader + "1459,9,9,9,9,1\n1500,9,9,9,9,1\n" + later + "\n"),
            20240102);
        ASSERT_TRUE(bars) << qPrintable(bars.error());
        EXPECT_EQ(bars.value().size(), 2U) << later;
    }
}

TEST_F(BarFile, MovesMinutesThatAreNamedByTheirBegin)
{
    const auto bars = readMinuteBars(
        write(QStringLiteral("m.csv"),
              minuteHeader + "930,9,9,9,9,1\n1129,9,9,9,9,1\n1300,9,9,9,9,1\n1459,9,9,9,9,1\n"),
        20240102);
    ASSERT_TRUE(bars) << qPrintable(bars.error());
    EXPECT_EQ(bars.value().front().minute, 571);
    EXPECT_EQ(bars.value().back().minute, 900);
}

TEST_F(BarFile, TakesOneDayOfAnyKindButAmongDaysNoSundays)
{
    const auto sunday =
        readMinuteBars(write(QStringLiteral("m.csv"), minuteHeader + "930,9,9,9,9,1\n"), 20261122);
    EXPECT_TRUE(sunday) << qPrintable(sunday.error());

    const auto days = readDailyBars(
        write(QStringLiteral("a.csv"), dailyHeader + "20261120,9,9,9,9,1\n20261122,9,9,9,9,1\n"));
    ASSERT_FALSE(days);
    EXPECT_TRUE(days.error().contains(QStringLiteral(":3: 2026-11-22"))) << qPrintable(days.error());
}

TEST_F(BarFile, RefusesAFileWithoutBars)
{
    EXPECT_TRUE(readDailyBars(write(QStringLiteral("a.csv"), dailyHeader))
                    .error()
                    .contains(QStringLiteral("no bars")));
}

} // namespace
} // namespace Terminal
