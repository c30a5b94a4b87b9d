// On which days the exchanges are open.
#include "trading/TradingCalendar.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace Trading {
namespace {

constexpr TradingDate on(int yyyymmdd)
{
    return TradingDate::ofNumber(yyyymmdd).value();
}

TEST(TradingCalendar, KnowsWeekendsAlone)
{
    const TradingCalendar calendar;
    EXPECT_TRUE(calendar.isTradingDay(on(20261120)));
    EXPECT_FALSE(calendar.isTradingDay(on(20261121)));
    EXPECT_FALSE(calendar.isTradingDay(on(20261122)));
    EXPECT_TRUE(calendar.isTradingDay(on(20261001)));
    EXPECT_FALSE(calendar.knowsYear(2026));
}

TEST(TradingCalendar, IsShippedWithTheHolidaysOfTwoYears)
{
    const TradingCalendar calendar = TradingCalendar::shipped();
    EXPECT_TRUE(calendar.knowsYear(2025));
    EXPECT_TRUE(calendar.knowsYear(2026));
    EXPECT_FALSE(calendar.knowsYear(2027));
    EXPECT_FALSE(calendar.isTradingDay(on(20260216)));
    EXPECT_FALSE(calendar.isTradingDay(on(20260223)));
    EXPECT_TRUE(calendar.isTradingDay(on(20260224)));
    EXPECT_FALSE(calendar.isTradingDay(on(20260228))) << "a Saturday of work is none of trading";
}

/// The exchanges say how many days a year has; a day that slipped would show.
TEST(TradingCalendar, HasTheTradingDaysOfTheYears)
{
    const TradingCalendar calendar = TradingCalendar::shipped();
    const auto daysOf = [&calendar](int year) {
        int days = 0;
        for (TradingDate day = *TradingDate::of(year, 1, 1); day.number() / 10000 == year;
             day = day.plusDays(1)) {
            days += calendar.isTradingDay(day) ? 1 : 0;
        }
        return days;
    };
    EXPECT_EQ(daysOf(2025), 243);
    EXPECT_EQ(daysOf(2026), 242);
}

TEST(TradingCalendar, TakesHolidaysOfOneDayOrMany)
{
    TradingCalendar calendar;
    EXPECT_FALSE(
        calendar.add("# ours\r\n2027-01-01,元旦\r\n\r\n20270208, 20270212 , 春节 # told\r\n2027-04-05", {}));
    for (const int day : {20270101, 20270208, 20270210, 20270212, 20270405}) {
        EXPECT_FALSE(calendar.isTradingDay(on(day))) << day;
    }
    EXPECT_TRUE(calendar.isTradingDay(on(20270215)));
    EXPECT_TRUE(calendar.knowsYear(2027));
}

TEST(TradingCalendar, NamesFileAndLineOfWhatIsNoHoliday)
{
    TradingCalendar calendar;
    const auto fault = calendar.add("2027-01-01\n2027-13-01,元旦\n", QStringLiteral("h.csv"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->path, QStringLiteral("h.csv"));
    EXPECT_EQ(fault->line, 2);
    EXPECT_EQ(fault->reason, CalendarFault::Reason::NoDays);
    EXPECT_EQ(fault->text, QStringLiteral("2027-13-01,元旦"));
    EXPECT_TRUE(calendar.isTradingDay(on(20270101))) << "nothing of a wrong file counts";
}

TEST(TradingCalendar, TakesNoSecondDayForAName)
{
    TradingCalendar calendar;
    EXPECT_EQ(calendar.add("2027-01-01,2027-1-3,元旦", {})->reason, CalendarFault::Reason::NoDays);
    EXPECT_EQ(calendar.add("2027-01-03,2027-01-01,元旦", {})->reason, CalendarFault::Reason::Backwards);
}

TEST(TradingCalendar, RefusesAHolidayThatLastsLongerThanAnyDoes)
{
    TradingCalendar calendar;
    EXPECT_EQ(calendar.add("2027-01-01,9999-12-31,元旦", {})->reason, CalendarFault::Reason::TooLong);
}

TEST(TradingCalendar, SaysThatAFileCannotBeRead)
{
    TradingCalendar calendar;
    EXPECT_EQ(calendar.addFile(QStringLiteral("/nowhere/holidays.csv"))->reason,
              CalendarFault::Reason::Unreadable);
}

class TradingCalendarOfUser : public ::testing::Test
{
protected:
    TradingCalendarOfUser() { qputenv("TRADING_HOLIDAYS", QFile::encodeName(path())); }
    ~TradingCalendarOfUser() override { qunsetenv("TRADING_HOLIDAYS"); }

    QString path() const { return m_folder.filePath(QStringLiteral("own.csv")); }
    void write(const QByteArray &text)
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir m_folder;
};

TEST_F(TradingCalendarOfUser, AddsToWhatIsShipped)
{
    write("2026-11-23,a day of our own\n");
    std::optional<CalendarFault> fault;
    const TradingCalendar calendar = TradingCalendar::ofUser(&fault);
    EXPECT_FALSE(fault);
    EXPECT_FALSE(calendar.isTradingDay(on(20261123)));
    EXPECT_FALSE(calendar.isTradingDay(on(20261001)));
}

TEST_F(TradingCalendarOfUser, KeepsWhatIsShippedWhenTheFileIsWrong)
{
    write("tomorrow\n");
    std::optional<CalendarFault> fault;
    const TradingCalendar calendar = TradingCalendar::ofUser(&fault);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->line, 1);
    EXPECT_EQ(fault->path, path());
    EXPECT_FALSE(calendar.isTradingDay(on(20261001)));
}

TEST_F(TradingCalendarOfUser, TellsThatTheNamedFileIsNotThere)
{
    std::optional<CalendarFault> fault;
    TradingCalendar::ofUser(&fault);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->reason, CalendarFault::Reason::Unreadable);
}

} // namespace
} // namespace Trading
