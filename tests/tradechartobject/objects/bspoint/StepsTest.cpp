// The steps of the buy/sell points, each alone: rows become trades of a day, days become marks, trades become
// lines.
#include "tests/support/SentTrade.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/objects/BSPoint_p.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

constexpr trade_cj aBuy{true, 20240103093015, 10.5, 300};
constexpr trade_cj aSell{false, 20240103093016, 11.0, 200};

/// Marks of so many bars, as one letter per bar: b, s, B for both, a point for none.
class Marks
{
public:
    explicit Marks(std::size_t bars) : m_buys(bars, unmarked), m_sells(m_buys), m_both(m_buys) {}

    TradeMarks borrowed() { return {m_buys, m_sells, m_both}; }

    std::string text()
    {
        std::string letters;
        for (std::size_t bar = 0; bar < m_buys.size(); ++bar) {
            switch (markerOn(borrowed(), static_cast<int>(bar))) {
            case TradeMarker::None:
                letters += '.';
                break;
            case TradeMarker::Buys:
                letters += 'b';
                break;
            case TradeMarker::Sells:
                letters += 's';
                break;
            case TradeMarker::Both:
                letters += 'B';
                break;
            }
        }
        return letters;
    }

private:
    std::vector<double> m_buys;
    std::vector<double> m_sells;
    std::vector<double> m_both;
};

std::vector<std::int64_t> barsOf(const std::vector<std::uint32_t> &days)
{
    std::vector<std::int64_t> times;
    for (const std::uint32_t day : days) {
        times.push_back(dayBarTime(day));
    }
    return times;
}

std::string marked(const std::vector<DaySides> &days, const std::vector<std::uint32_t> &bars)
{
    Marks marks(bars.size());
    markDays(days, barsOf(bars), marks.borrowed());
    return marks.text();
}

const std::vector<DaySides> threeDays = {
    {20240102, true, false}, {20240103, false, true}, {20240105, true, true}};

TEST(BSPointStepsRows, OfTodayAllStandUnderTheDayOfTheLast)
{
    SentTrade first;
    first.date = "20240102";
    const TodaysTrades today =
        readTodaysTrades(AnswerRows(QJsonArray{first.in(todaysTrades), SentTrade().in(todaysTrades)}));
    EXPECT_EQ(today.day, 20240103);
    ASSERT_THAT(today.trades, SizeIs(2));
    EXPECT_EQ(today.trades[0].matchTime, 20240102093015);
    EXPECT_EQ(today.trades[1].matchTime, 20240103093015);
}

TEST(BSPointStepsRows, OfTodayThatAreNoneHaveNoDay)
{
    EXPECT_EQ(readTodaysTrades(AnswerRows(QJsonArray())).day, -1);
}

TEST(BSPointStepsRows, OfThePastAreAddedToTheirDays)
{
    TradesByDay trades{{20240103, {aSell}}};
    SentTrade earlier;
    earlier.date = "20240102";
    addPastTrades(AnswerRows(QJsonArray{SentTrade().in(pastTrades), earlier.in(pastTrades),
                                        SentTrade().in(pastTrades)}),
                  trades);
    ASSERT_THAT(trades, SizeIs(2));
    EXPECT_THAT(trades[20240102], SizeIs(1));
    EXPECT_THAT(trades[20240103], SizeIs(3));
    EXPECT_FALSE(trades[20240103][0].isBuy) << "what was held stays in front";
}

TEST(BSPointStepsDays, AreSummedUpInTheirOrderWithTheirSides)
{
    const auto days = sumUpDays({{20240105, {aBuy, aSell}}, {20240102, {aBuy}}, {20240103, {aSell}}});
    ASSERT_THAT(days, SizeIs(3));
    EXPECT_EQ(days[0].day, 20240102);
    EXPECT_TRUE(days[0].hasBuys && !days[0].hasSells);
    EXPECT_TRUE(!days[1].hasBuys && days[1].hasSells);
    EXPECT_TRUE(days[2].hasBuys && days[2].hasSells);
}

TEST(BSPointStepsMarks, StandOnTheBarsOfTheirDays)
{
    EXPECT_EQ(marked(threeDays, {20240101, 20240102, 20240103, 20240104, 20240105, 20240106}), ".bs.B.");
}

TEST(BSPointStepsMarks, StandOnEveryBarOfADay)
{
    EXPECT_EQ(marked(threeDays, {20240102, 20240102, 20240103, 20240103}), "bbss");
}

TEST(BSPointStepsMarks, StandWhereALookUpOfEachBarWouldPutThemWhateverTheTimesAre)
{
    const std::vector<DaySides> days = {
        {-3, true, false}, {-1, false, true}, {0, true, false}, {1, false, true}, {4, true, true}};
    std::mt19937 random(20240102);
    std::uniform_int_distribution<std::int64_t> anyTime(-6'000'000, 6'000'000);
    std::vector<std::int64_t> times(3000);
    std::generate(times.begin(), times.end(), [&] { return anyTime(random); });
    std::sort(times.begin(), times.begin() + 1500); // as hosts mostly bring them
    std::string expected;
    for (const std::int64_t time : times) {
        const auto sides = std::find_if(days.begin(), days.end(),
                                        [time](const DaySides &one) { return one.day == tradingDay(time); });
        expected += sides == days.end() ? '.' : !sides->hasBuys ? 's' : sides->hasSells ? 'B' : 'b';
    }
    Marks marks(times.size());
    markDays(days, times, marks.borrowed());
    EXPECT_EQ(marks.text(), expected);
}

TEST(BSPointStepsMarks, AreFoundWhereTheBarsStepBack)
{
    EXPECT_EQ(marked(threeDays, {20240105, 20240102, 20240103, 20240102}), "Bbsb");
}

TEST(BSPointStepsMarks, AreFoundBehindALongGap)
{
    EXPECT_EQ(marked(threeDays, {20240105}), "B");
    EXPECT_EQ(marked(threeDays, {20230101, 20250101}), "..");
}

TEST(BSPointStepsMarks, AreNoneWithoutDays)
{
    EXPECT_EQ(marked({}, {20240102, 20240103}), "..");
}

TEST(BSPointStepsLines, NameTheMarkersSideUnlessItStandsForBoth)
{
    const std::vector<trade_cj> trades = {aBuy, aSell};
    EXPECT_THAT(
        listTrades(trades, TradeMarker::Both),
        ElementsAre("买入\t09:30:15\t成交价:10.50\t成交量:300", "卖出\t09:30:16\t成交价:11.00\t成交量:200"));
    EXPECT_THAT(listTrades({aSell}, TradeMarker::Buys),
                ElementsAre("买入\t09:30:16\t成交价:11.00\t成交量:200"));
    EXPECT_THAT(listTrades({aBuy}, TradeMarker::Sells),
                ElementsAre("卖出\t09:30:15\t成交价:10.50\t成交量:300"));
    EXPECT_THAT(listTrades(trades, TradeMarker::None), IsEmpty());
}

} // namespace
