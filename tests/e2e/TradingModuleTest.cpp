// The whole road: a ledger, the trading module on it, a real broker, the plug-in, and a host.
#include "tests/e2e/TradingModule.h"

#include <cmath>

namespace {

TEST_F(TradingModule, PutsTheCostOfTheLedgerOnTheChart)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n"
           "20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return std::isfinite(paintedCost(*costLine)); }));
    EXPECT_DOUBLE_EQ(paintedCost(*costLine), 31.0);
}

TEST_F(TradingModule, FollowsAnImportIntoTheRunningModule)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return paintedCost(*costLine) == 30.0; }));
    import("20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n");
    EXPECT_TRUE(redrawUntil(*costLine, [&] { return paintedCost(*costLine) == 31.0; }));
}

TEST_F(TradingModule, DrawsNoLineForWhatIsNotHeld)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return std::isfinite(paintedCost(*costLine)); }));
    import("20240104,09:30:15,600536,中国软件,卖出,31.00,200,6200.00,3,13\n");
    EXPECT_TRUE(redrawUntil(*costLine, [&] { return std::isnan(paintedCost(*costLine)); }));
}

TEST_F(TradingModule, MarksTheTradesOfTheLedgerAndListsADay)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n"
           "20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n"
           "20240103,10:30:00,600536,中国软件,卖出,34.50,100,3450.00,3,13\n"
           "20240104,14:56:59,600536,中国软件,卖出,31.00,100,3100.00,4,14\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return !axis.updated.empty(); })) << "the module answers";
    const Overlay points = create(1);
    ASSERT_TRUE(waitUntil([&] {
        // Refused until the overlay has joined; another range of days asks again.
        calc(*points, chinaSoft, {makeDayBar(20240105)});
        return calc(*points, chinaSoft, bars);
    }));
    ASSERT_TRUE(waitUntil([&] { return paintedMarks(*points) != "   "; }));
    EXPECT_EQ(paintedMarks(*points), "BTS");
    points->handleMousePress(10.0, 0.0);
    ASSERT_FALSE(axis.popups.empty());
    EXPECT_EQ(axis.popups.back().value(0), QStringLiteral("买入\t10:00:00\t成交价:33.00\t成交量:100"));
    EXPECT_EQ(axis.popups.back().value(1), QStringLiteral("卖出\t10:30:00\t成交价:34.50\t成交量:100"));
}

} // namespace
