#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

#include <QCoreApplication>

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class CChartTradeObjectLife : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectLife, JoinsTheTerminalsBusListensAndSubscribesGlobalOnly)
{
    create(tradeMarkers);
    EXPECT_EQ(bus().operations,
              (QStringList{QStringLiteral("create"),
                           QStringLiteral("connect ") + QCoreApplication::applicationDirPath(),
                           QStringLiteral("listened to"),
                           QStringLiteral("subscribe list Global TradeNotify,TradeQuery")}));
}

TEST_F(CChartTradeObjectLife, AsksNothingWhenConstructed)
{
    create(costLine);
    create(tradeMarkers);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectLife, HasNoTimerAndNoParent)
{
    create(tradeMarkers);
    EXPECT_EQ(timer(), nullptr);
    EXPECT_EQ(overlay->parent(), nullptr);
}

TEST_F(CChartTradeObjectLife, HasNoSignalsSlotsOrPropertiesOfItsOwn)
{
    create(tradeMarkers);
    EXPECT_EQ(overlay->metaObject(), &QObject::staticMetaObject);
}

TEST_F(CChartTradeObjectLife, StartsNoTimerWhateverItHears)
{
    for (const char *json : {costLine, tradeMarkers}) {
        create(json);
        answerWith(todaysAnswer({buy(10)}));
        recalc();
        hearHistory({buy(10)});
        hearNotification();
        EXPECT_EQ(timer(), nullptr) << json;
    }
}

TEST_F(CChartTradeObjectLife, IsAPluginObjectForTheHost)
{
    EXPECT_EQ(create(costLine).type(), 3);
    EXPECT_EQ(create(tradeMarkers).type(), 3);
}

TEST_F(CChartTradeObjectLife, LeavesTheBusWhenDestroyed)
{
    create(tradeMarkers);
    bus().operations.clear();
    destroy();
    EXPECT_EQ(bus().operations, (QStringList{QStringLiteral("disconnect"), QStringLiteral("destroy")}));
}

TEST_F(CChartTradeObjectLife, EndsTheProcessWhenTheBusClientThrowsAtTheEnd)
{
    create(tradeMarkers);
    bus().duringDisconnect = [] { throw 1; };
    EXPECT_DEATH(destroy(), "");
    bus().duringDisconnect = nullptr;
}

TEST_F(CChartTradeObjectLife, HearsNothingMoreWhileItLeavesTheBus)
{
    createMarkers();
    bool isLeaving = false;
    bus().duringDisconnect = [&] {
        isLeaving = true;
        hearNotification();
    };
    destroy();
    EXPECT_TRUE(isLeaving);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectLife, WorksOnAfterDeleteObjectUntilItIsDestroyed)
{
    createMarkers();
    bus().operations.clear();
    EXPECT_TRUE(overlay->deleteObject());
    EXPECT_TRUE(overlay->deleteObject());
    EXPECT_THAT(bus().operations, IsEmpty());
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectLife, StaysUsableBeforeTheFirstBars)
{
    create(tradeMarkers);
    EXPECT_TRUE(overlay->calcRatio(0, 0));
    EXPECT_EQ(overlay->hitTest(0, 0), -1);
    overlay->handleMousePress(0, 0);
    overlay->calcTradeData(threeDays.data(), 3);
    overlay->calcTradeData(nullptr, 3);
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(7));
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectLife, NeedsNoScreenModeOrVisiblePrices)
{
    axis.hasScreenId = false;
    axis.hasPriceScale = false;
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_FALSE(bus().operations.join(QLatin1Char('\n')).contains(QString::fromUtf8(axis.screen)));
}

TEST_F(CChartTradeObjectLife, WritesNoLog)
{
    const LogCapture log;
    for (const char *json : {costLine, tradeMarkers, "no JSON"}) {
        create(json);
        recalc();
        hearNotification();
        hearHistory({buy(10)});
        recalc();
        listAt(0, 10.5, 1);
        overlay->deleteObject();
    }
    EXPECT_THAT(log.all(), IsEmpty());
}

} // namespace
