#include "trading/TradingDate.h"

#include "tests/support/TimeZone.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(TradingDate, IsTheDayOfItsNumber)
{
    const TradingDate date = TradingDate::ofNumber(20240131).value();

    EXPECT_EQ(date.number(), 20240131);
    EXPECT_EQ(date.text(), QStringLiteral("20240131"));
    EXPECT_EQ(date.dashedText(), QStringLiteral("2024-01-31"));
    EXPECT_EQ(date.calendarDate(), QDate(2024, 1, 31));
}

TEST(TradingDate, IsMadeOfWhatTheCalendarHas)
{
    for (const int number : {10101, 20240229, 20000229, 20231231, 99991231}) {
        EXPECT_TRUE(TradingDate::ofNumber(number)) << number;
    }
}

TEST(TradingDate, IsNotMadeOfWhatNoCalendarHas)
{
    for (const int number :
         {0, -20240102, 1231, 20230229, 19000229, 20240100, 20240431, 20241301, 20240001, 100000101, 45293}) {
        EXPECT_EQ(TradingDate::ofNumber(number), std::nullopt) << number;
    }
}

TEST(TradingDate, AgreesWithTheCalendarOnEveryDay)
{
    for (int year : {1900, 1999, 2000, 2023, 2024, 2100}) {
        for (int monthAndDay = 0; monthAndDay < 1400; ++monthAndDay) {
            const int month = monthAndDay / 100;
            const int day = monthAndDay % 100;
            EXPECT_EQ(TradingDate::of(year, month, day).has_value(), QDate::isValid(year, month, day))
                << year << '-' << month << '-' << day;
        }
    }
}

TEST(TradingDate, IsReadFromEightDigitsOnly)
{
    EXPECT_EQ(TradingDate::ofText(QStringLiteral("20240131")), TradingDate::of(2024, 1, 31));
    for (const char *const text : {"", "45293", "2024-1-31", "2024013", "202401310", "20240231", "+2024013",
                                   " 20240131", "2024013a"}) {
        EXPECT_EQ(TradingDate::ofText(QLatin1String(text)), std::nullopt) << text;
    }
    EXPECT_EQ(TradingDate::ofText(QString::fromUtf8("２０２４０１３１")), std::nullopt);
}

TEST(TradingDate, IsWrittenWithAllItsZeros)
{
    EXPECT_EQ(TradingDate::of(987, 6, 5)->text(), QStringLiteral("09870605"));
}

TEST(TradingDate, IsComparedByTime)
{
    const TradingDate early = TradingDate::of(2023, 12, 31).value();
    const TradingDate late = TradingDate::of(2024, 1, 1).value();

    EXPECT_TRUE(early < late && late > early && early <= late && late >= early && early != late);
    EXPECT_TRUE(early == early && early <= early && early >= early && !(early < early));
}

TEST(TradingDate, CountsDaysOverMonthsAndYears)
{
    const TradingDate day = TradingDate::of(2024, 3, 1).value();

    EXPECT_EQ(day.plusDays(-1), TradingDate::of(2024, 2, 29));
    EXPECT_EQ(day.plusDays(366), TradingDate::of(2025, 3, 2));
    EXPECT_EQ(TradingDate::first().plusDays(-1), TradingDate::first());
    EXPECT_EQ(TradingDate::last().plusDays(1), TradingDate::last());
}

TEST(TradingDate, OfTodayIsThatOfTheClock)
{
    const TimeZone west(westernmostZone);
    const QDate before = QDate::currentDate();
    const TradingDate today = TradingDate::today();
    const QDate after = QDate::currentDate();

    EXPECT_TRUE(today.calendarDate() == before || today.calendarDate() == after);
    const TimeZone east(easternmostZone);
    EXPECT_GT(TradingDate::today(), today);
}

} // namespace Trading
