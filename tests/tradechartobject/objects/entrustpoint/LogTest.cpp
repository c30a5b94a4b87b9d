#include "tests/tradechartobject/objects/entrustpoint/EntrustPointCancelTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace TradeChart;

namespace {

class EntrustPointLog : public EntrustPointTest
{
};

TEST_F(EntrustPointLog, WritesNoDebugLineWhenTheDebugLogIsOff)
{
    const LogCapture log(LogCapture::Debug::Off);
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0F"}});
    choose(-1);
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(log.all(), IsEmpty());
}

class EntrustPointLogOfQuestions : public EntrustPointCancelTest
{
};

TEST_F(EntrustPointLogOfQuestions, LogsItsQuestions)
{
    const QString id = objectId();
    const LogCapture log;
    overlay->sendQueryTodayEntrustInfoReq();
    overlay->sendQueryHistoryEntrustInfoReq(20240102);
    EntrustInfo order{};
    order.orderDate = 20240102;
    order.orderNo = 5;
    overlay->sendCancelOrderReq(order);
    EXPECT_THAT(
        log.lines(QtDebugMsg),
        ElementsAre(
            QStringLiteral(
                R"(send sendQueryTodayEntrustInfoReq: "{\"cmd\":\"EntrustTodayTrade\",\"market\":\"SH\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")"),
            QStringLiteral(
                R"(send sendQueryHistoryEntrustInfoReq: "{\"cmd\":\"EntrustHistoryTrade\",\"date\":20240102,\"market\":\"SH\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")"),
            QStringLiteral(
                R"(send sendCancelOrderReq: "{\"cmd\":\"EntrustCancel\",\"market\":\"SH\",\"objectId\":\"%1\",\"orderdate\":\"20240102\",\"ordersno\":\"5\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")")
                .arg(id)));
}

} // namespace
