#include "trading/ClockTime.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(ClockTime, IsTheTimeOfItsNumber)
{
    const ClockTime time = ClockTime::ofNumber(9301542).value();

    EXPECT_EQ(time.number(), 9301542);
    EXPECT_EQ(time.text(), QStringLiteral("09301542"));
    EXPECT_EQ(time.colonText(), QStringLiteral("09:30:15"));
    EXPECT_EQ(time.minute(), 9 * 60 + 30);
}

TEST(ClockTime, IsMidnightAtFirst)
{
    EXPECT_EQ(ClockTime(), ClockTime::of(0, 0));
    EXPECT_EQ(ClockTime().text(), QStringLiteral("00000000"));
}

TEST(ClockTime, IsMadeOfEachOfTheWidths)
{
    const ClockTime halfPastNine = ClockTime::of(9, 30).value();

    EXPECT_EQ(ClockTime::ofNumber(9300000), halfPastNine);
    EXPECT_EQ(ClockTime::ofMinute(570), halfPastNine);
    EXPECT_EQ(ClockTime::ofClock(QTime(9, 30)), halfPastNine);
    EXPECT_EQ(ClockTime::ofClock(QTime(9, 30, 15, 429)), ClockTime::of(9, 30, 15, 42));
}

TEST(ClockTime, IsNotMadeOfWhatNoClockShows)
{
    for (const int number : {-1, 24000000, 9600000, 9306000, 100000000}) {
        EXPECT_EQ(ClockTime::ofNumber(number), std::nullopt) << number;
    }
    EXPECT_EQ(ClockTime::ofMinute(1440), std::nullopt);
    EXPECT_EQ(ClockTime::ofMinute(-1), std::nullopt);
    EXPECT_EQ(ClockTime::of(9, 30, 15, 100), std::nullopt);
    EXPECT_EQ(ClockTime::ofClock(QTime()), std::nullopt);
}

TEST(ClockTime, IsReadFromDigits)
{
    for (const char *const text : {"0930", "093000", "09300000", "930", "93000", "9300000"}) {
        EXPECT_EQ(ClockTime::ofText(QLatin1String(text)), ClockTime::of(9, 30)) << text;
    }
    EXPECT_EQ(ClockTime::ofText(QStringLiteral("14563599")), ClockTime::of(14, 56, 35, 99));
}

TEST(ClockTime, IsNotReadFromAnythingElse)
{
    for (const char *const text :
         {"", "9", "09", "09:30", "0.5", "2400", "0960", "093060", "-930", "+930", "093000000", " 0930"}) {
        EXPECT_EQ(ClockTime::ofText(QLatin1String(text)), std::nullopt) << text;
    }
}

TEST(ClockTime, IsComparedByTime)
{
    const ClockTime early = ClockTime::of(9, 59, 59, 99).value();
    const ClockTime late = ClockTime::of(10, 0).value();

    EXPECT_TRUE(early < late && late > early && early <= late && late >= early && early != late);
    EXPECT_TRUE(early == early && early <= early && early >= early && !(early < early));
}

} // namespace Trading
