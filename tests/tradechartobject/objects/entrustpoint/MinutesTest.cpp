#include "tests/support/ByName.h"
#include "tests/support/TimeZone.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

struct Minute
{
    const char *name;
    const char *time; ///< as sent
    int days;         ///< from today
    std::uint32_t shown;
};

class EntrustPointMinutesEach : public EntrustPointTest, public ::testing::WithParamInterface<Minute>
{
};

TEST_P(EntrustPointMinutesEach, IsOneOfTheChart)
{
    const std::vector<std::uint32_t> all = {925,  930,  931,  1000, 1130, 1131, 1200,
                                            1300, 1301, 1302, 1459, 1500, 1501};
    create();
    calc(shanghai, minutes(all), Korvane::IntradayPeriod);
    const QByteArray date = QByteArray::number(dayFromToday(GetParam().days));
    hearOrders({SentOrder{"0B", "2", "10", GetParam().time, date}});
    ASSERT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(all[static_cast<std::size_t>(painter.calls[0].ints[1])], GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Times, EntrustPointMinutesEach,
    ::testing::Values(
        Minute{"BeforeTheFirstSecond", "9300099", 0, 931}, Minute{"FirstSecond", "9300100", 0, 930},
        Minute{"LastOfTheFirstMinute", "9305999", 0, 930}, Minute{"WithLeadingZero", "09300100", 0, 930},
        Minute{"SecondMinute", "9310000", 0, 931}, Minute{"Auction", "9150000", 0, 931},
        Minute{"Midmorning", "10005999", 0, 1000}, Minute{"EndOfTheMorning", "11300000", 0, 1130},
        Minute{"MinuteAfterTheMorning", "11310000", 0, 1131},
        Minute{"LastBeforeNoonsBreak", "11310099", 0, 1131}, Minute{"Break", "11310100", 0, 1301},
        Minute{"Noon", "12000000", 0, 1301}, Minute{"LastOfTheBreak", "13005999", 0, 1301},
        Minute{"EndOfTheBreak", "13009999", 0, 1301}, Minute{"Afternoon", "13010000", 0, 1301},
        Minute{"SecondOfTheAfternoon", "13020000", 0, 1302}, Minute{"LastMinute", "14595999", 0, 1459},
        Minute{"Close", "15000000", 0, 1500}, Minute{"BeforeTheEnd", "15000099", 0, 1500},
        Minute{"TheEnd", "15000100", 0, 1500}, Minute{"Evening", "20000000", 0, 1500},
        Minute{"Largest", "2147483647", 0, 1500}, Minute{"Smallest", "-2147483648", 0, 931},
        Minute{"TooLargeToRead", "2147483648", 0, 931}, Minute{"Empty", "", 0, 931},
        Minute{"Words", "noon", 0, 931}, Minute{"Yesterday", "10000000", -1, 931},
        Minute{"YesterdayEvening", "20000000", -1, 931}, Minute{"LongAgo", "10000000", -4000, 931},
        Minute{"Tomorrow", "10000000", 1, 1000}),
    ByName());

class EntrustPointMinutes : public EntrustPointTest
{
};

TEST_F(EntrustPointMinutes, ShowsAnOrderWithoutADateAtTheFirstMinute)
{
    createOnThreeMinutes();
    hearOrders({with(SentOrder{"0B", "2", "10", "9330000"}, "operdate", QJsonValue::Undefined)});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_F(EntrustPointMinutes, KeepsTheOwnTimeOfAnOrderInItsText)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9150759"}});
    listAt(0, yOfTen());
    EXPECT_TRUE(axis.popups.front().front().contains(QStringLiteral("委托时间:09:15:07\n")));
}

TEST_F(EntrustPointMinutes, ShowsOrdersOfAPastDayOnTodaysMinutesOnly)
{
    axis.mode = Korvane::PastDayChart;
    create();
    calc(shanghai, {makeMinuteBar(20240105, 931), makeMinuteBar(today, 931)}, Korvane::IntradayPeriod);
    hearOrders({SentOrder{"0B", "2", "10", "10000000", "20240105"}}, "EntrustHistoryTrade");
    EXPECT_THAT(drawn(), ElementsAre("1 20 10"));
}

TEST_F(EntrustPointMinutes, ShowsOrdersOnTheDayOfTheirAnswerWhenADayHasPassed)
{
    TimeZone zone(westernmostZone);
    const Korvane::AnalyData earlier = makeMinuteBar(dayFromToday(0), 931);
    zone.set(easternmostZone);
    const Korvane::AnalyData later = makeMinuteBar(dayFromToday(0), 931);
    const SentOrder order{"0B", "2", "10", "9310000", "29991231"};

    zone.set(westernmostZone);
    create();
    calc(shanghai, {earlier, later}, Korvane::IntradayPeriod);
    hearOrders({order});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    zone.set(easternmostZone);
    hearOrders({order});
    EXPECT_THAT(drawn(), ElementsAre("1 20 10"));
}

} // namespace
