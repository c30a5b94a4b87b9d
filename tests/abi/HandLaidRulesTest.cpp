// What a terminal sees at the border of rules that no slot shows: how often is asked, in which order, and
// what ends.
#include "tests/abi/HandLaidHost.h"
#include "tests/support/LogCapture.h"
#include "tests/support/WaitUntil.h"

#include <QDate>
#include <QTimer>

#include <utility>

using namespace std::chrono_literals;

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace HandLaid;

namespace {

constexpr char costAnswer[] =
    R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"12.5"}})";

class HandLaidRules : public HandLaidHost
{
protected:
    static RecordedBus &bus() { return RecordedBus::instance(); }

    bool calcItOnMinutes()
    {
        const std::vector<Record> bars = {minuteBar(571), minuteBar(572)};
        const Record code = security(1, "600536", 79);
        return call<bool, const void *, const void *, int, int, int, int>(overlay, 4, code.data(),
                                                                          bars.data(), 2, 21, 7, 8);
    }
};

TEST_F(HandLaidRules, EveryNotificationLeadsToOneQuestion)
{
    create(R"({"type":2,"auto_refresh_time":600})");
    ASSERT_TRUE(calcItOnMinutes());
    bus().sent.clear();
    QObject context;
    for (int i = 0; i < 20; ++i) {
        QTimer::singleShot(5 * i, &context, [] { bus().deliver("TradeNotify", R"({"stkcode":"600536"})"); });
    }
    ASSERT_TRUE(waitUntil([] { return bus().sent.size() == 20; }));
    // longer than the second after which one more would come
    EXPECT_FALSE(waitUntil([] { return bus().sent.size() > 20; }, 1500ms));
}

TEST_F(HandLaidRules, ANegativeRefreshIntervalRefreshesNothing)
{
    const LogCapture log; // Qt says that it refuses the interval
    for (const char *json :
         {R"({"type":0,"auto_refresh_time":-1})", R"({"type":1,"auto_refresh_time":-1})"}) {
        create(json);
        ASSERT_TRUE(calcIt(security(1, "600536", 77), 4));
        bus().sent.clear();
        // an interval of nothing would have asked in the first turn of the loop
        EXPECT_FALSE(waitUntil([] { return !bus().sent.empty(); }, 100ms));
        call<bool>(overlay, 3);
        call<void>(std::exchange(overlay, nullptr), 1);
    }
}

TEST_F(HandLaidRules, TheCostIsAskedBeforeTheBarsAreRead)
{
    create(R"({"type":0,"auto_refresh_time":600})");
    bus().duringSend = [this] {
        bus().deliver("TradeQuery", costAnswer);
        EXPECT_TRUE(paintIt());
        EXPECT_THAT(painter.calls, ElementsAre("endPaint")) << "there are no bars yet to draw across";
    };
    ASSERT_TRUE(calcIt(security(1, "600536", 77), 4));
    bus().duringSend = nullptr;
    painter.calls.clear();
    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, SizeIs(3));
}

TEST_F(HandLaidRules, TheHostSaysWhereAnUnknownCostStands)
{
    create(R"({"type":0,"auto_refresh_time":600})");
    ASSERT_TRUE(calcIt(security(1, "600536", 77), 4));
    axis.calls.clear();
    EXPECT_EQ((call<int>(overlay, 9, 0.0, 0.0)), -1);
    EXPECT_THAT(axis.calls, ElementsAre("priceToY"));
}

TEST_F(HandLaidRules, TheEndOfTheCostLineStopsItsTimerAlone)
{
    create(R"({"type":0,"auto_refresh_time":0})");
    ASSERT_TRUE(calcIt(security(1, "600536", 77), 4));
    EXPECT_TRUE(call<bool>(overlay, 3));
    bus().sent.clear();
    bus().deliver("TradeQuery", costAnswer);
    EXPECT_THAT(axis.updated, ElementsAre(overlay));
    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, SizeIs(3));
    EXPECT_TRUE(calcIt(security(0, "000001", 78), 4));
    EXPECT_THAT(bus().sent, SizeIs(1)) << "another security";
    // its interval was 0: a running timer would have asked in the first turn of the loop
    EXPECT_FALSE(waitUntil([] { return bus().sent.size() > 1; }, 100ms));
}

TEST_F(HandLaidRules, TheEndOfTheBuySellPointsStopsTheirTimerAlone)
{
    create(R"({"type":1,"auto_refresh_time":600})");
    ASSERT_TRUE(calcIt(security(1, "600536", 77), 4));
    EXPECT_TRUE(call<bool>(overlay, 3));
    bus().sent.clear();
    bus().deliver("TradeNotify", R"({"stkcode":"600536"})");
    EXPECT_THAT(bus().sent, SizeIs(1));
    bus().deliver("TradeQuery",
                  R"({"cmd":"TodayTrade","stkcode":"600536","data":[{"bsflag2":"B",)"
                  R"("orderdate":"20240103","opertime":"9301500","matchprice":"15","matchqty":"3"}]})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay));
    EXPECT_TRUE(paintIt());
    EXPECT_EQ(painter.calls.front(), "markers 0 on 16.000000 0 1");
    call<void>(overlay, 10, 1.0, 1.0);
    EXPECT_THAT(axis.popupLines, ElementsAre("买入\t09:30:15\t成交价:15.00\t成交量:3"));
}

TEST_F(HandLaidRules, TheEndOfTheOrderPointsStopsTheirTimerAlone)
{
    create(R"({"type":2,"auto_refresh_time":600})");
    ASSERT_TRUE(calcItOnMinutes());
    EXPECT_TRUE(call<bool>(overlay, 3));
    bus().sent.clear();
    const QByteArray today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd")).toLatin1();
    bus().deliver("TradeQuery", R"({"cmd":"EntrustTodayTrade","stkcode":"600536","data":[{"market":"1",)"
                                R"("bsflag2":"0B","orderstatus":"2","ordersno":"5","operdate":")" +
                                    today +
                                    R"(","opertime":"9310000","orderprice":"15","orderqty":"300"}]})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay));
    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("marker 0 0 20 0 15.000000"));
    axis.chosenLine = 0;
    call<void>(overlay, 10, 0.0, 1000.0 - 15.0);
    ASSERT_THAT(bus().sent, SizeIs(1)) << "the cancellation";
    QByteArray answer = bus().sent[0].payload;
    bus().deliver("TradeQuery", answer.replace("{\"cmd\"", R"({"msg":"too late","cmd")"));
    EXPECT_EQ(axis.calls.back(), "showMessage too late");
    bus().deliver("TradeNotify", R"({"stkcode":"600536"})");
    EXPECT_THAT(bus().sent, SizeIs(2)) << "asked again a second later";
}

class HandLaidRulesIgnore : public HandLaidRules, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(HandLaidRulesIgnore, AnEmptyMessageBeforeThereIsASecurity)
{
    create(GetParam());
    bus().deliver("TradeNotify", "{}");
    bus().deliver("TradeQuery", "{}");
    EXPECT_THAT(bus().sent, IsEmpty());
    EXPECT_THAT(axis.updated, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Types, HandLaidRulesIgnore,
                         ::testing::Values(R"({"type":0})", R"({"type":1})", R"({"type":2})"));

} // namespace
