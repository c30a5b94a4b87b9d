#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointCancelTest.h"

#include <QCoreApplication>

#include <functional>

using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class EntrustPointHostEnds : public EntrustPointTest
{
};

TEST_F(EntrustPointHostEnds, BelongsToNobodyInQtsSense)
{
    QObject parent;
    owner.reset(overlay = new EntrustPoint(axis, {}, &parent));
    EXPECT_EQ(overlay->parent(), nullptr);
    EXPECT_EQ(bus().operations.front(), QStringLiteral("create")) << "nor does the bus client";
}

TEST_F(EntrustPointHostEnds, HearsNothingMoreWhileItIsDestroyed)
{
    createOnThreeMinutes();
    bus().duringDisconnect = [] { hearOrders({SentOrder()}); };
    destroy();
    EXPECT_THAT(axis.updated, IsEmpty());
}

struct Asking
{
    const char *name;
    std::function<void(EntrustPoint &, const Korvane::tagCodeWithName &, const Korvane::AnalyData &)> ask;
};

class EntrustPointHostEndsAsking : public EntrustPointTest, public ::testing::WithParamInterface<Asking>
{
};

TEST_P(EntrustPointHostEndsAsking, MayBeDestroyedWhileTheBusTakesTheQuestion)
{
    createOnThreeMinutes();
    bus().duringSend = [this] { destroy(); };
    GetParam().ask(*overlay, shenzhen, threeMinutes.front());
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    Questions, EntrustPointHostEndsAsking,
    ::testing::Values(
        Asking{"Security",
               [](auto &overlay, const auto &code, const auto &bar) {
                   EXPECT_TRUE(overlay.calcIt(code, &bar, 1, Korvane::IntradayPeriod, 0, 0));
               }},
        Asking{"Today", [](auto &overlay, auto &, auto &) { overlay.sendQueryTodayEntrustInfoReq(); }},
        Asking{"PastDay", [](auto &overlay, auto &,
                             auto &) { EXPECT_TRUE(overlay.sendQueryHistoryEntrustInfoReq(20240102)); }},
        Asking{"Cancellation",
               [](auto &overlay, auto &, auto &) {
                   EntrustInfo order{};
                   overlay.sendCancelOrderReq(order);
               }},
        Asking{"Notification",
               [](auto &, auto &, auto &) {
                   RecordedBus::instance().deliver(Topic::TRADENOTIFY, R"({"stkcode":"600536"})");
               }}),
    ByName());

TEST_F(EntrustPointHostEnds, MayBeDestroyedInsideTheQuestionOfItsTimer)
{
    createOnThreeMinutes();
    bus().duringSend = [this] { destroy(); };
    timer()->start(0);
    EXPECT_TRUE(waitUntil([] { return bus().endPointCount() == 0; }));
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(EntrustPointHostEnds, MayShowAnotherSecurityInsideARepaint)
{
    createOnThreeMinutes();
    axis.onUpdate = [this] { calc(shenzhen, threeMinutes, Korvane::IntradayPeriod); };
    hearOrders({SentOrder()});
    EXPECT_FALSE(paint()) << "the orders were the other security's";
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointHostEnds, MayBeDestroyedInsideARepaint)
{
    for (const char *command : {"EntrustTodayTrade", "EntrustHistoryTrade"}) {
        createOnThreeMinutes();
        axis.onUpdate = [this] { destroy(); };
        hearOrders({SentOrder()}, command);
        EXPECT_EQ(bus().endPointCount(), 0);
    }
}

TEST_F(EntrustPointHostEnds, MayBeDestroyedInsideTheWaitAlsoANestedOne)
{
    createOnThreeMinutes();
    QTimer::singleShot(50, overlay, [] { notify(); });
    QTimer::singleShot(100, qApp, [this] { destroy(); });
    notify();
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointHostEnds, MayBeEndedInsideARepaint)
{
    createOnThreeMinutes();
    axis.onUpdate = [this] { overlay->deleteObject(); };
    hearOrders({SentOrder()});
    EXPECT_EQ(timer(), nullptr);
}

TEST_F(EntrustPointHostEnds, MayBeEndedInsideTheWait)
{
    createOnThreeMinutes();
    QTimer::singleShot(100, overlay, [this] { overlay->deleteObject(); });
    notify();
    EXPECT_EQ(timer(), nullptr);
    EXPECT_EQ(todayQuestions(), 1) << "its end stops the timer alone";
}

class EntrustPointHostEndsCancelling : public EntrustPointCancelTest
{
};

TEST_F(EntrustPointHostEndsCancelling, MayBeDestroyedInsideThePopup)
{
    for (const int row : {-1, 1}) {
        SetUp();
        axis.onPopup = [this, row] {
            destroy();
            return row;
        };
        overlay->handleMousePress(0, yOfTen());
        EXPECT_EQ(bus().endPointCount(), 0);
    }
    EXPECT_THAT(axis.questions, IsEmpty());
}

TEST_F(EntrustPointHostEndsCancelling, MayBeDestroyedInsideTheQuestion)
{
    axis.onPopup = [] { return 1; };
    axis.onConfirm = [this] {
        destroy();
        return true;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointHostEndsCancelling, MayBeDestroyedInsideTheMessage)
{
    axis.onMessage = [this] { destroy(); };
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(EntrustPointHostEndsCancelling, MayBeEndedInsideThePopupTheQuestionAndTheMessage)
{
    const auto end = [this] { overlay->deleteObject(); };
    axis.onPopup = [end] {
        end();
        return 1;
    };
    axis.onConfirm = [end] {
        end();
        return true;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_EQ(countOf("EntrustCancel"), 1) << "the user has confirmed it";

    SetUp();
    axis.onMessage = end;
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_EQ(timer(), nullptr);
}

} // namespace
