// The table of the market's rules: what holds on which day.
#include "trading/MarketRules.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QRegularExpression>

namespace Trading {
namespace {

using MarketRules::stateOnTradingDay;

constexpr TradingDate on(int yyyymmdd)
{
    return TradingDate::ofNumber(yyyymmdd).value();
}

constexpr ClockTime at(int hhmm, int second = 0)
{
    return ClockTime::of(hhmm / 100, hhmm % 100, second).value();
}

const SecurityId moutai{QStringLiteral("600519"), Market::Shanghai};
const SecurityId bank{QStringLiteral("000001"), Market::Shenzhen};
const SecurityId star{QStringLiteral("688981"), Market::Shanghai};
const SecurityId growth{QStringLiteral("300750"), Market::Shenzhen};

/// In percent, where it is the same up and down.
std::optional<int> limitOf(const SecurityId &security, int day, const char *name = "")
{
    const auto limit = MarketRules::of(security, on(day), QString::fromUtf8(name)).limit;
    EXPECT_TRUE(!limit || limit->down == limit->up);
    return limit ? std::optional(limit->up / 10) : std::nullopt;
}

TEST(MarketRulesOfADay, HaveNoLimitBeforeThereWasOne)
{
    EXPECT_EQ(limitOf(moutai, 19961215), std::nullopt);
    EXPECT_EQ(limitOf(moutai, 19961216), 10);
}

TEST(MarketRulesOfADay, WidenTheLimitOfTheGrowthBoardWithItsReform)
{
    EXPECT_EQ(limitOf(growth, 20200823), 10);
    EXPECT_EQ(limitOf(growth, 20200824), 20);
}

TEST(MarketRulesOfADay, WidenTheLimitOfSharesUnderSpecialTreatment)
{
    EXPECT_EQ(limitOf(moutai, 20260705, "*ST茅台"), 5);
    EXPECT_EQ(limitOf(moutai, 20260706, "*ST茅台"), 10);
    EXPECT_TRUE(MarketRules::of(moutai, on(20260706), QStringLiteral("*ST茅台")).areReported);
    EXPECT_FALSE(MarketRules::of(moutai, on(20260706)).areReported);
}

TEST(MarketRulesOfADay, LimitConvertibleBondsSinceTheirRules)
{
    const SecurityId bond{QStringLiteral("113050"), Market::Shanghai};
    EXPECT_EQ(limitOf(bond, 20220731), std::nullopt);
    EXPECT_EQ(limitOf(bond, 20220801), 20);
    EXPECT_EQ(MarketRules::of(bond, on(20220731)).decimals(), 2);
    EXPECT_EQ(MarketRules::of(bond, on(20220801)).decimals(), 3);
}

TEST(MarketRulesOfADay, LetBeijingGoFarthest)
{
    EXPECT_EQ(limitOf({QStringLiteral("920002"), Market::Beijing}, 20260105), 30);
}

TEST(MarketRulesOfADay, KnowNoLimitInTheFirstFiveDaysOfAShareThatIsRegistered)
{
    EXPECT_EQ(limitOf(star, 20190722, "N中芯"), std::nullopt);
    EXPECT_EQ(limitOf(star, 20190726, "C中芯"), std::nullopt);
    EXPECT_EQ(limitOf(growth, 20200824, "C宁德"), std::nullopt);
    EXPECT_EQ(limitOf(growth, 20200821, "C宁德"), 10) << "before its reform";
    EXPECT_EQ(limitOf(moutai, 20230410, "C茅台"), std::nullopt);
    EXPECT_EQ(limitOf(moutai, 20230407, "C茅台"), 10);
    EXPECT_EQ(limitOf(moutai, 20230410, "贵州茅台"), 10);
}

TEST(MarketRulesOfADay, LetANewShareOfBeijingGoFreeOnItsFirstDayAlone)
{
    const SecurityId beijing{QStringLiteral("920002"), Market::Beijing};
    EXPECT_EQ(limitOf(beijing, 20260105, "N万达"), std::nullopt);
    EXPECT_EQ(limitOf(beijing, 20260105, "C万达"), 30);
}

TEST(MarketRulesOfADay, HaveOtherLimitsUpThanDownOnSomeFirstDays)
{
    const SecurityId bond{QStringLiteral("113050"), Market::Shanghai};
    EXPECT_EQ(MarketRules::of(bond, on(20220801), QStringLiteral("N南银转债")).limit, (LimitShare{433, 573}));
    EXPECT_EQ(MarketRules::of(moutai, on(20230407), QStringLiteral("N茅台")).limit, (LimitShare{360, 440}));
    const DayLimits limits =
        MarketRules::of(moutai, on(20230407), QStringLiteral("N茅台")).limits(Money::ofCents(1000)).value();
    EXPECT_EQ(limits.lowest, Money::ofCents(640));
    EXPECT_EQ(limits.highest, Money::ofCents(1440));
}

TEST(MarketRulesOfADay, HoldOrdersToTheLargestOfTheBoard)
{
    EXPECT_EQ(MarketRules::of(moutai, on(20260105)).mostQuantity, 1000000);
    EXPECT_EQ(MarketRules::of(star, on(20260105)).mostQuantity, 100000);
    EXPECT_EQ(MarketRules::of(growth, on(20200821)).mostQuantity, 1000000);
    EXPECT_EQ(MarketRules::of(growth, on(20200824)).mostQuantity, 300000);
    EXPECT_EQ(MarketRules::of({QStringLiteral("920002"), Market::Beijing}, on(20260105)).mostQuantity,
              1000000);
}

TEST(MarketRulesDecimals, AreThoseOfTheFinestTickOfWhateverDay)
{
    EXPECT_EQ(MarketRules::decimals(moutai), 2);
    EXPECT_EQ(MarketRules::decimals({QStringLiteral("113050"), Market::Shanghai}), 3) << "2 until 2022";
    EXPECT_EQ(MarketRules::decimals({QStringLiteral("510300"), Market::Shanghai}), 3);
    EXPECT_EQ(MarketRules::decimals({QStringLiteral("900901"), Market::Shanghai}), 3);
    EXPECT_EQ(MarketRules::decimals({QStringLiteral("200002"), Market::Shenzhen}), 2);
}

struct TimeOfDay
{
    std::string name;
    int hhmm;
    DayState state;
};

class MarketRulesState : public ::testing::TestWithParam<TimeOfDay>
{
};

TEST_P(MarketRulesState, IsOfTheTime)
{
    EXPECT_EQ(stateOnTradingDay(bank, on(20260105), at(GetParam().hhmm)), GetParam().state);
}

INSTANTIATE_TEST_SUITE_P(At, MarketRulesState,
                         ::testing::Values(TimeOfDay{"Night", 0, DayState::BeforeOpen},
                                           TimeOfDay{"Early", 914, DayState::BeforeOpen},
                                           TimeOfDay{"TheFirstOrders", 915, DayState::OpeningAuction},
                                           TimeOfDay{"TheOpeningPrice", 925, DayState::OpeningAuction},
                                           TimeOfDay{"BeforeTheMorning", 926, DayState::BeforeMorning},
                                           TimeOfDay{"TheBeginOfTheMorning", 930, DayState::Morning},
                                           TimeOfDay{"TheEndOfTheMorning", 1130, DayState::Morning},
                                           TimeOfDay{"Noon", 1200, DayState::NoonBreak},
                                           TimeOfDay{"TheBeginOfTheAfternoon", 1300, DayState::Afternoon},
                                           TimeOfDay{"TheAfternoon", 1456, DayState::Afternoon},
                                           TimeOfDay{"TheClosingAuction", 1457, DayState::ClosingAuction},
                                           TimeOfDay{"TheClose", 1500, DayState::ClosingAuction},
                                           TimeOfDay{"AfterTheClose", 1501, DayState::Closed},
                                           TimeOfDay{"Evening", 2359, DayState::Closed}),
                         ByName());

TEST(MarketRulesHours, EndAMinuteAtItsLastSecond)
{
    EXPECT_EQ(stateOnTradingDay(bank, on(20260105), at(1130, 1)), DayState::NoonBreak);
    EXPECT_EQ(stateOnTradingDay(bank, on(20260105), at(914, 59)), DayState::BeforeOpen);
}

TEST(MarketRulesHours, CloseByAnAuctionInShanghaiSinceItHasOne)
{
    EXPECT_EQ(stateOnTradingDay(moutai, on(20180817), at(1458)), DayState::Afternoon);
    EXPECT_EQ(stateOnTradingDay(moutai, on(20180820), at(1458)), DayState::ClosingAuction);
}

TEST(MarketRulesHours, GoOnAtTheClosingPriceWhereTheBoardDoes)
{
    EXPECT_EQ(stateOnTradingDay(star, on(20260105), at(1503)), DayState::AfterClose);
    EXPECT_EQ(stateOnTradingDay(star, on(20260105), at(1505)), DayState::AfterHours);
    EXPECT_EQ(stateOnTradingDay(star, on(20260105), at(1530)), DayState::AfterHours);
    EXPECT_EQ(stateOnTradingDay(star, on(20260105), at(1531)), DayState::Closed);
    EXPECT_EQ(stateOnTradingDay(growth, on(20200821), at(1510)), DayState::Closed);
    EXPECT_EQ(stateOnTradingDay(growth, on(20200824), at(1510)), DayState::AfterHours);
    EXPECT_EQ(stateOnTradingDay(moutai, on(20260703), at(1510)), DayState::Closed);
    EXPECT_EQ(stateOnTradingDay(moutai, on(20260706), at(1510)), DayState::AfterHours);
}

TEST(MarketRulesHours, AreNoneOnADayWithoutTrading)
{
    const TradingCalendar calendar = TradingCalendar::shipped();
    EXPECT_EQ(MarketRules::stateAt(moutai, on(20261001), at(1000), calendar), DayState::Closed);
    EXPECT_EQ(MarketRules::stateAt(on(20261122), at(1000), calendar), DayState::Closed);
    EXPECT_EQ(MarketRules::stateAt(on(20261123), at(1000), calendar), DayState::Morning);
    EXPECT_EQ(MarketRules::stateAt(on(20261123), at(1510), calendar), DayState::AfterHours);
}

TEST(MarketRulesHours, TakeOrdersFromTheAuctionToTheCloseButAtNoon)
{
    for (const int time : {915, 927, 930, 1130, 1300, 1458, 1500}) {
        EXPECT_TRUE(takesOrders(stateOnTradingDay(star, on(20260105), at(time)))) << time;
    }
    for (const int time : {914, 1131, 1259, 1502, 1510, 1600}) {
        EXPECT_FALSE(takesOrders(stateOnTradingDay(star, on(20260105), at(time)))) << time;
    }
}

/// The page has a row of the table for each of the code's, and no other one.
TEST(MarketRulesPage, HasTheRowsOfTheCode)
{
    QFile file(QStringLiteral(TRADECHART_SOURCE_DIR "/docs/market-rules.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    std::string onPage;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    static const QRegularExpression ruleRow(QStringLiteral("^\\| (price limit|tick and quantity|hours) \\|"));
    for (const QString &line : lines) {
        if (ruleRow.match(line).hasMatch()) {
            onPage += line.toStdString() + '\n';
        }
    }
    std::string inCode;
    for (const MarketRules::Row &row : MarketRules::rows()) {
        const QString from = row.from == TradingDate::first() ? QString() : row.from.dashedText();
        const QString until = row.until == TradingDate::last() ? QString() : row.until.dashedText();
        const bool isChecked = row.evidence == MarketRules::Evidence::Checked;
        inCode += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 |\n")
                      .arg(row.about, row.kinds, row.market, from, until, row.rule, row.source,
                           isChecked ? QStringLiteral("checked") : QStringLiteral("reported"))
                      .toStdString();
    }
    EXPECT_EQ(onPage, inCode) << "the code has these rows:\n" << inCode;
}

} // namespace
} // namespace Trading
