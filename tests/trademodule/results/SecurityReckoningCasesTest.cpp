// Cases reckoned by hand. Each row's comment is the reckoning, in yuan; "→" is what a sale's shares had cost.
#include "tests/trademodule/results/ReckoningTest.h"

namespace TradeModule {

namespace {

constexpr CostMethod average = CostMethod::Average;
constexpr CostMethod diluted = CostMethod::Diluted;
constexpr CostMethod fifo = CostMethod::Fifo;

/// What is held in the end.
struct Held
{
    qint64 quantity;
    const char *cost;
    const char *price; ///< the cost of a share as charts are told it; "nan" when nothing is held
};

struct Case
{
    const char *name;
    CostMethod method;
    AccountEvents events;
    std::vector<std::string> profits; ///< of each sale
    Held held;
    const char *total; ///< of everything earned
    qint64 unexplained = 0;
};

const Case cases[] = {
    // 100 × 10 + 5 = 1005
    {"AverageBuyWithFee", average, {buy(100, 10, 5)}, {}, {100, "1005.00", "10.050"}, "0.00"},
    // 1005 + (200 × 13 + 5) = 3610; / 300 = 12.0333
    {"AverageTwoBuys", average, {buy(100, 10, 5), buy(200, 13, 5)}, {}, {300, "3610.00", "12.033"}, "0.00"},
    // 3005 / 300 = 10.016667; 200 stay: 2003.3333 = 2003.33 → 1001.67; 1200 - 5.60 - 1001.67 = 192.73
    {"AverageSellOfAThird",
     average,
     {buy(300, 10, 5), sell(100, 12, 5.6)},
     {"192.73"},
     {200, "2003.33", "10.017"},
     "192.73"},
    // 1100 - 5.55 - 1005 = 89.45
    {"AverageSellOfAll",
     average,
     {buy(100, 10, 5), sell(100, 11, 5.55)},
     {"89.45"},
     {0, "0.00", "nan"},
     "89.45"},
    // 900 - 1000 = -100; then 100 × 20
    {"AverageStartsAnew",
     average,
     {buy(100, 10), sell(100, 9), buy(100, 20)},
     {"-100.00"},
     {100, "2000.00", "20.000"},
     "-100.00"},
    // stay 2003.3333 = 2003.33, 1001.6667 = 1001.67, 0 → 1001.67, 1001.66, 1001.67; each brings 1000; in all
    // 3000 - 3005
    {"AverageThreeThirds",
     average,
     {buy(300, 10, 5), sell(100, 10), sell(100, 10), sell(100, 10)},
     {"-1.67", "-1.66", "-1.67"},
     {0, "0.00", "nan"},
     "-5.00"},
    // 100.01 / 2 = 50.005 stays, as 50.01 → 50.00; 60 - 50 = 10
    {"AverageHalfACent",
     average,
     {buy(200, 0.5, 0.01), sell(100, 0.6)},
     {"10.00"},
     {100, "50.01", "0.500"},
     "10.00"},
    // (20000 + 10) / 2000 = 10.005 → 10005; 11000 - 8 - 10005 = 987
    {"AverageBonusShares",
     average,
     {buy(1000, 20, 10), bonus(1000), sell(1000, 11, 8)},
     {"987.00"},
     {1000, "10005.00", "10.005"},
     "987.00"},
    // 10005 for 1300, + 5605 for 700 = 15610 for 2000, 7.805 → 3902.50; 4500 - 5 - 3902.50 = 592.50
    {"AverageBonusThenBuy",
     average,
     {buy(1000, 10, 5), bonus(300), buy(700, 8, 5), sell(500, 9, 5)},
     {"592.50"},
     {1500, "11707.50", "7.805"},
     "592.50"},
    // free shares → 0; 500 - 5
    {"AverageBonusAlone", average, {bonus(100), sell(100, 5, 5)}, {"495.00"}, {0, "0.00", "nan"}, "495.00"},
    // the cost stays 1005; 50 - 5 = 45 earned
    {"AverageDividend",
     average,
     {buy(100, 10, 5), dividend(50), tax(5)},
     {},
     {100, "1005.00", "10.050"},
     "45.00"},
    // 3600 - 6 = 3594, for 100 of 300: 1198 → 1005; 193
    {"AverageSellOfMoreThanCameIn",
     average,
     {buy(100, 10, 5), sell(300, 12, 6)},
     {"193.00"},
     {0, "0.00", "nan"},
     "193.00",
     200},
    // nobody knows what they had cost
    {"AverageSellOfNothing", average, {sell(100, 10, 5)}, {"0.00"}, {0, "0.00", "nan"}, "0.00", 100},
    // 2005 for 100 that are left of 1000; 2100 - 5 - 2005 = 90
    {"AverageMerger",
     average,
     {buy(1000, 2, 5), merger(900), sell(100, 21, 5)},
     {"90.00"},
     {0, "0.00", "nan"},
     "90.00"},
    // 4000 / 500 = 8 → 1600; 1800 - 5 - 1600 = 195
    {"AverageTransferIn",
     average,
     {in(500, 4000), sell(200, 9, 5)},
     {"195.00"},
     {300, "2400.00", "8.000"},
     "195.00"},
    // a quarter of 4005, 1001.25, leaves; 3150 - 5 - 3003.75 = 141.25
    {"AverageTransferOut",
     average,
     {buy(400, 10, 5), out(100), sell(300, 10.5, 5)},
     {"141.25"},
     {0, "0.00", "nan"},
     "141.25"},
    // 1234.50 + 0.10 = 1234.60; 700 stay: 864.22 → 370.38; 390.30 - 0.10 - 370.38 = 19.82
    {"AverageFundOfFourDecimals",
     average,
     {buy(1000, 1.2345, 0.1), sell(300, 1.301, 0.1)},
     {"19.82"},
     {700, "864.22", "1.235"},
     "19.82"},
    // 2005 / 2 → 1002.50; 795 - 1002.50 = -207.50; 1002.50 + 2105 = 3107.50; 3194 - 3107.50 = 86.50; 3989 -
    // 4110 = -121
    {"AverageLossThenGain",
     average,
     {buy(200, 10, 5), sell(100, 8, 5), buy(300, 7, 5), sell(400, 8, 6)},
     {"-207.50", "86.50"},
     {0, "0.00", "nan"},
     "-121.00"},
    // 3107.50 / 400 = 7.76875
    {"AverageBuyAfterSell",
     average,
     {buy(200, 10, 5), sell(100, 8, 5), buy(300, 7, 5)},
     {"-207.50"},
     {400, "3107.50", "7.769"},
     "-207.50"},

    // 1005 and 1205; all of the first and half of the second → 1607.50; 1650 - 5 - 1607.50 = 37.50
    {"FifoLotAndAHalf",
     fifo,
     {buy(100, 10, 5), buy(100, 12, 5), sell(150, 11, 5)},
     {"37.50"},
     {50, "602.50", "12.050"},
     "37.50"},
    // 1100 - 5 - 1005 = 90
    {"FifoOneLot",
     fifo,
     {buy(100, 10, 5), buy(100, 12, 5), sell(100, 11, 5)},
     {"90.00"},
     {100, "1205.00", "12.050"},
     "90.00"},
    // like the average: there is one lot
    {"FifoThreeThirdsOfALot",
     fifo,
     {buy(300, 10, 5), sell(100, 10), sell(100, 10), sell(100, 10)},
     {"-1.67", "-1.66", "-1.67"},
     {0, "0.00", "nan"},
     "-5.00"},
    // 100 + 50 shares for 1000, 200 + 100 for 2600; 150 × 8 - 1000 = 200; 2600 / 300
    {"FifoBonusInProportion",
     fifo,
     {buy(100, 10), buy(200, 13), bonus(150), sell(150, 8)},
     {"200.00"},
     {300, "2600.00", "8.667"},
     "200.00"},
    // of 221 shares the first 101 of 201 get 111 (111.05), the others 110; 1110 - 1010 = 100; 2000 / 110
    {"FifoBonusOfOddShares",
     fifo,
     {buy(101, 10), buy(100, 20), bonus(20), sell(111, 10)},
     {"100.00"},
     {110, "2000.00", "18.182"},
     "100.00"},
    // 50 shares for 1000, 150 for 3600; 50 × 21 - 1000 = 50
    {"FifoMerger",
     fifo,
     {buy(100, 10), buy(300, 12), merger(200), sell(50, 21)},
     {"50.00"},
     {150, "3600.00", "24.000"},
     "50.00"},
    // the single share vanishes, its 10 go to the others: 10 shares for 1000; 550 - 500 = 50
    {"FifoMergerOfALotWithoutAShareLeft",
     fifo,
     {buy(1, 10), buy(99, 10), merger(90), sell(5, 110)},
     {"50.00"},
     {5, "500.00", "100.000"},
     "50.00"},
    // 1000 + 600 leave with the oldest; 650 - 600 = 50
    {"FifoTransferOut",
     fifo,
     {buy(100, 10), buy(100, 12), out(150), sell(50, 13)},
     {"50.00"},
     {0, "0.00", "nan"},
     "50.00"},
    // 2740 for 200 of 250: 2192 → 1005 + 1205; -18
    {"FifoSellOfMoreThanCameIn",
     fifo,
     {buy(100, 10, 5), buy(100, 12, 5), sell(250, 11, 10)},
     {"-18.00"},
     {0, "0.00", "nan"},
     "-18.00",
     50},
    // 900 - 1000; then 100 × 20
    {"FifoStartsAnew",
     fifo,
     {buy(100, 10), sell(100, 9), buy(100, 20)},
     {"-100.00"},
     {100, "2000.00", "20.000"},
     "-100.00"},
    // the average would be -207.50, 86.50: 2005 / 2 → 1002.50 first; the rest → 1002.50 + 2105; the same sum
    {"FifoLossThenGain",
     fifo,
     {buy(200, 10, 5), sell(100, 8, 5), buy(300, 7, 5), sell(100, 8), sell(300, 8, 6)},
     {"-207.50", "-202.50", "289.00"},
     {0, "0.00", "nan"},
     "-121.00"},

    // 3005 - (1200 - 5.60) = 1810.60; / 200 = 9.053
    {"DilutedSellOfAThird",
     diluted,
     {buy(300, 10, 5), sell(100, 12, 5.6)},
     {"0.00"},
     {200, "1810.60", "9.053"},
     "0.00"},
    // 2005 - (2500 - 6) = -489
    {"DilutedBelowNothing",
     diluted,
     {buy(200, 10, 5), sell(100, 25, 6)},
     {"0.00"},
     {100, "-489.00", "-4.890"},
     "0.00"},
    // 2394 + 489 = 2883 = 2494 + 2394 - 2005
    {"DilutedRoundTrip",
     diluted,
     {buy(200, 10, 5), sell(100, 25, 6), sell(100, 24, 6)},
     {"0.00", "2883.00"},
     {0, "0.00", "nan"},
     "2883.00"},
    // nothing of the trip before is left; 100 × 20 + 5
    {"DilutedStartsAnew",
     diluted,
     {buy(200, 10, 5), sell(200, 25, 6), buy(100, 20, 5)},
     {"2989.00"},
     {100, "2005.00", "20.050"},
     "2989.00"},
    // 2000 - 800 = 1200 for 100: a loss makes the rest dearer
    {"DilutedSellAtALoss",
     diluted,
     {buy(200, 10), sell(100, 8)},
     {"0.00"},
     {100, "1200.00", "12.000"},
     "0.00"},
    // 10005 - 500 + 50 = 9555 is shown; 450 are earned
    {"DilutedDividend",
     diluted,
     {buy(1000, 10, 5), dividend(500), tax(50)},
     {},
     {1000, "10005.00", "9.555"},
     "450.00"},
    // the sale loses 10, the dividends are not counted twice: -10 + 500 - 50
    {"DilutedDividendThenSell",
     diluted,
     {buy(1000, 10, 5), dividend(500), tax(50), sell(1000, 10, 5)},
     {"-10.00"},
     {0, "0.00", "nan"},
     "440.00"},
    // 5 taken and given back: 1000 - 50
    {"DilutedTaxGivenBack",
     diluted,
     {buy(100, 10), dividend(50), tax(5), tax(-5)},
     {},
     {100, "1000.00", "9.500"},
     "50.00"},
    // it belongs to shares that are sold; the new ones have cost 800
    {"DilutedDividendOfTheTripBefore",
     diluted,
     {buy(100, 10), sell(100, 11), dividend(20), buy(100, 8)},
     {"100.00"},
     {100, "800.00", "8.000"},
     "120.00"},
    // 20010 - 5495 = 14515; / 1500
    {"DilutedBonusShares",
     diluted,
     {buy(1000, 20, 10), bonus(1000), sell(500, 11, 5)},
     {"0.00"},
     {1500, "14515.00", "9.677"},
     "0.00"},
    // 1198 for 100 of 300, - 1005
    {"DilutedSellOfMoreThanCameIn",
     diluted,
     {buy(100, 10, 5), sell(300, 12, 6)},
     {"193.00"},
     {0, "0.00", "nan"},
     "193.00",
     200},
    // 2005 - 1195 = 810; half of it leaves
    {"DilutedTransferOut",
     diluted,
     {buy(200, 10, 5), sell(100, 12, 5), out(50)},
     {"0.00"},
     {50, "405.00", "8.100"},
     "0.00"},
    // 2005 - 1195 = 810, + 905 = 1715; / 200
    {"DilutedBuyAfterSell",
     diluted,
     {buy(200, 10, 5), sell(100, 12, 5), buy(100, 9, 5)},
     {"0.00"},
     {200, "1715.00", "8.575"},
     "0.00"},
};

std::string shown(std::optional<double> price)
{
    return price ? QString::number(*price, 'f', 3).toStdString() : "nan";
}

void PrintTo(const Case &row, std::ostream *stream)
{
    *stream << row.name;
}

class SecurityReckoningCases : public ::testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(SecurityReckoningCases, AreReckonedAsByHand)
{
    const Case &expected = GetParam();

    const Reckoned reckoned(expected.method, expected.events);

    const CostBasis &basis = reckoned.reckoning.shares().basis();
    EXPECT_EQ(reckoned.profits(), expected.profits);
    EXPECT_EQ(basis.quantity(), expected.held.quantity);
    EXPECT_EQ(basis.cost().digits(), expected.held.cost);
    EXPECT_EQ(shown(basis.costPrice()), expected.held.price);
    EXPECT_EQ(reckoned.booked.total().digits(), expected.total);
    EXPECT_EQ(reckoned.reckoning.shares().unexplained(), expected.unexplained);
}

INSTANTIATE_TEST_SUITE_P(ByHand, SecurityReckoningCases, ::testing::ValuesIn(cases),
                         [](const ::testing::TestParamInfo<Case> &row) {
                             return std::string(row.param.name);
                         });

} // namespace TradeModule
