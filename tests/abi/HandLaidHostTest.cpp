// Every slot and record of the border, driven as a terminal does that has no header of ours.
#include "tests/abi/HandLaidHost.h"
#include "tests/support/LogCapture.h"

#include <QDate>
#include <QJsonObject>
#include <QVariant>

#include <algorithm>
#include <cfloat>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace HandLaid;

namespace {

TEST_F(HandLaidHost, DrivesTheCostLineThroughItsSlots)
{
    ASSERT_NE(create(R"({"type":0,"auto_refresh_time":600})"), nullptr);
    EXPECT_EQ(call<int>(overlay, 2), 3);
    EXPECT_FALSE((call<bool>(overlay, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(overlay, 6, &untouched), DBL_MIN);
    EXPECT_EQ(call<double>(overlay, 7, &untouched), DBL_MAX);
    EXPECT_EQ(untouched, 42);

    EXPECT_TRUE(calcIt(security(1, "600536", 77), 4));
    ASSERT_THAT(RecordedBus::instance().sent, SizeIs(1));
    EXPECT_EQ(RecordedBus::instance().sent[0].payload,
              R"({"cmd":"HolderCostPrice","market":"SH","screenId":"by-hand","stkcode":"600536"})");

    RecordedBus::instance().deliver(
        "TradeQuery",
        R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"12.5"}})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay)) << "the overlay names itself as the host knows it";

    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("line 0 12.500000 1.000000",
                                           "label 持仓成本:12.500 at 12.500000 -1", "endPaint"));

    EXPECT_EQ((call<int>(overlay, 9, 0.0, 1000.0 - 12.5 + 5.0)), 0);
    EXPECT_EQ((call<int>(overlay, 9, 0.0, 1000.0 - 12.5 + 5.5)), -1);
    for (int mouse = 10; mouse <= 14; ++mouse) {
        call<void>(overlay, mouse, 1.0, 1.0);
    }
    EXPECT_THAT(axis.calls, ElementsAre("updateObject", "visiblePriceRange", "priceToY", "priceToY"));
}

TEST_F(HandLaidHost, DrivesTheBuySellPointsThroughTheirSlots)
{
    ASSERT_NE(create(R"({"type":1,"auto_refresh_time":600})"), nullptr);
    EXPECT_EQ(call<int>(overlay, 2), 3);
    EXPECT_TRUE((call<bool>(overlay, 5, 1, 2)));
    EXPECT_FALSE(calcIt(security(0, "000001", 78), 21));
    EXPECT_TRUE(calcIt(security(0, "000001", 78), 4));
    ASSERT_THAT(RecordedBus::instance().sent, SizeIs(1));
    EXPECT_EQ(
        RecordedBus::instance().sent[0].payload,
        R"({"cmd":"HistoryTrade","end":"20240103","market":"SZ","screenId":"by-hand","start":"20240102","stkcode":"000001"})");

    RecordedBus::instance().deliver(
        "TradeQuery",
        R"({"cmd":"HistoryTrade","stkcode":"000001","data":[{"bsflag2":"S","bizdate":"20240103","matchtime":"9301500","matchprice":"15.5","matchqty":"300"}]})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay));

    int untouched = 42;
    EXPECT_EQ(call<double>(overlay, 6, &untouched), DBL_MIN);
    EXPECT_EQ(call<double>(overlay, 7, &untouched), DBL_MAX);
    EXPECT_EQ(untouched, 42);

    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("markers 0 off 16.000000 0 1", "markers 0 on 16.000000 2 1",
                                           "markers 0 off 16.000000 4 1"));
    EXPECT_EQ((call<int>(overlay, 9, 1.0, 1000.0 - 16.0)), 0);
    EXPECT_EQ((call<int>(overlay, 9, 0.0, 1000.0 - 16.0)), -1);

    EXPECT_THAT(axis.calls, ElementsAre("updateObject", "xToBar", "priceToY", "markerSize", "xToBar"));

    axis.calls.clear();
    for (int mouse = 11; mouse <= 14; ++mouse) {
        call<void>(overlay, mouse, 1.0, 1.0);
    }
    EXPECT_THAT(axis.calls, SizeIs(0));
    call<void>(overlay, 10, 1.0, 1.0);
    EXPECT_THAT(axis.calls, ElementsAre("xToBar", "barAt 1", "priceToY", "popupMenu"));
    EXPECT_THAT(axis.popupLines, ElementsAre("卖出\t09:30:15\t成交价:15.50\t成交量:300"));
}

TEST_F(HandLaidHostConstructs, TheCombinedCostLine)
{
    construct(R"({"type":0})");
    EXPECT_EQ(call<int>(constructed, 2), 3);
    RecordedBus::instance().answerRequest = [](const RecordedBus::Message &) {
        return QByteArray(R"({"costprice":"12.5"})");
    };
    EXPECT_TRUE(calcItOnTwoDays());
    ASSERT_THAT(RecordedBus::instance().requests, SizeIs(1));
    EXPECT_EQ(RecordedBus::instance().requests[0].payload,
              "{\n    \"cmd\": \"HolderCostPrice\",\n    \"market\": \"SH\",\n    \"stkcode\": "
              "\"600536\"\n}\n");

    EXPECT_TRUE((call<bool>(constructed, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(constructed, 6, &untouched), 12.5);
    EXPECT_EQ(call<double>(constructed, 7, &untouched), 12.5);
    EXPECT_EQ(untouched, 42);

    EXPECT_TRUE(paintCombined());
    EXPECT_THAT(painter.calls,
                ElementsAre("line 0 12.500000 1.000000", "label 持仓成本:12.50 at 12.500000 -1", "endPaint"));
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 12.5 + 5.0)), 0);
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 12.5 + 5.5)), -1);
    for (int mouse = 11; mouse <= 14; ++mouse) {
        call<void>(constructed, mouse, 1.0, 1.0);
    }
    EXPECT_THAT(axis.calls, ElementsAre("xToBar", "priceToY", "xToBar", "priceToY"));
}

TEST_F(HandLaidHostConstructs, ACombinedOverlayWithoutAJob)
{
    construct("{}");
    EXPECT_EQ(call<int>(constructed, 2), 3);
    EXPECT_TRUE(calcItOnTwoDays());
    EXPECT_TRUE((call<bool>(constructed, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(constructed, 6, &untouched), DBL_MIN);
    EXPECT_EQ(call<double>(constructed, 7, &untouched), DBL_MAX);
    EXPECT_TRUE(paintCombined());
    EXPECT_THAT(painter.calls, ElementsAre("endPaint"));
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 15.0)), -1);
    EXPECT_THAT(RecordedBus::instance().sent, SizeIs(0));
    EXPECT_THAT(RecordedBus::instance().requests, SizeIs(0));
}

TEST_F(HandLaidHostConstructs, ACombinedOverlayThatGetsNoBars)
{
    construct(R"({"type":1})");
    const Record code = security(1, "600536", 77);
    const bool isTaken = call<bool, const void *, const void *, int, int, int, int>(
        constructed, 4, code.data(), nullptr, 0, 4, 7, 8);
    EXPECT_TRUE(isTaken);
    EXPECT_THAT(RecordedBus::instance().sent, SizeIs(0));
}

TEST_F(HandLaidHostConstructs, ACombinedOverlayThatItEndsInsideTheQuestionForTodaysTrades)
{
    construct(R"({"type":1})");
    EXPECT_TRUE(calcItOnTwoDays());
    RecordedBus::instance().answerRequest = [this](const RecordedBus::Message &) {
        call<void>(std::exchange(constructed, nullptr), 0);
        return QByteArray(R"({"data":[{"buy":true,"price":15.5,"vol":300}]})");
    };
    RecordedBus::instance().deliver("TradeNotify", R"({"stkcode":"600536"})");
    EXPECT_THAT(RecordedBus::instance().requests, SizeIs(1));
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
}

TEST_F(HandLaidHostConstructs, TheCombinedTradeMarkers)
{
    construct(R"({"type":1})");
    EXPECT_TRUE(calcItOnTwoDays());
    ASSERT_THAT(RecordedBus::instance().sent, SizeIs(1));
    RecordedBus::instance().deliver(
        "TradeQuery",
        R"({"cmd":"HistoryTrade","stkcode":"600536","data":[{"buy":true,"price":15.5,"vol":300}]})");
    EXPECT_TRUE(calcItOnTwoDays());

    EXPECT_TRUE((call<bool>(constructed, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(constructed, 6, &untouched), 17.0);
    EXPECT_EQ(call<double>(constructed, 7, &untouched), 14.0);

    EXPECT_TRUE(paintCombined());
    EXPECT_THAT(painter.calls,
                ElementsAre("markers 0 off 17.000000 0 1", "markers 0 off 17.000000 2 1",
                            "markers 0 off 17.000000 4 1", "markers 0 off 15.000000 1 0",
                            "markers 0 off 15.000000 3 0", "markers 0 off 15.000000 5 0", "endPaint"))
        << "the trade stands on the bar before";
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 15.0)), 0);
    EXPECT_EQ((call<int>(constructed, 9, 1.0, 1000.0 - 16.0)), -1);

    axis.calls.clear();
    axis.linesWithoutEnd = 1;
    for (int mouse = 10; mouse <= 14; ++mouse) {
        call<void>(constructed, mouse, 0.0, 1000.0 - 15.5);
    }
    EXPECT_THAT(axis.calls, ElementsAre("xToBar", "barAt 0", "priceToY", "popupMenu"));
    EXPECT_THAT(axis.popupLines, ElementsAre("买入\t00:00:00\t成交价:15.50\t成交量:300"));
    const auto *const object = reinterpret_cast<const QObject *>(memory.data());
    EXPECT_EQ(object->property("popupLineCount"), QVariant(1));
}

/// Terminals that load the file lay aside so much memory.
TEST_F(HandLaidHostConstructs, TheCombinedOverlayInAThousandAndTwentyFourBytes)
{
    construct(R"({"type":1})");
    EXPECT_TRUE(calcItOnTwoDays());
    const unsigned char *const end = memory.data() + memory.size();
    const unsigned char *const rest = end - memory.size() + 1024;
    EXPECT_EQ(std::find_if(rest, end, [](unsigned char byte) { return byte != 0xEE; }), end);
}

TEST_F(HandLaidHost, DrivesTheOrderPointsThroughTheirSlots)
{
    RecordedBus &bus = RecordedBus::instance();
    ASSERT_NE(create(R"({"type":2,"auto_refresh_time":600})"), nullptr);
    EXPECT_EQ(call<int>(overlay, 2), 3);
    EXPECT_TRUE((call<bool>(overlay, 5, 1, 2)));
    EXPECT_FALSE(calcIt(security(1, "600536", 79), 4));
    const Record code = security(1, "600536", 79);
    const std::vector<Record> bars = {minuteBar(571), minuteBar(572)};
    EXPECT_TRUE((call<bool, const void *, const void *, int, int, int, int>(overlay, 4, code.data(),
                                                                            bars.data(), 2, 21, 7, 8)));
    ASSERT_THAT(bus.sent, SizeIs(1));
    EXPECT_EQ(bus.sent[0].payload,
              R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"by-hand","stkcode":"600536"})");

    const QByteArray today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd")).toLatin1();
    bus.deliver(
        "TradeQuery",
        R"({"cmd":"EntrustTodayTrade","stkcode":"600536","data":[{"market":"1","bsflag2":"0B","orderstatus":"2","ordersno":"5","operdate":")" +
            today +
            R"(","opertime":"9320500","orderprice":"9.5","orderqty":"300"},{"market":"1","bsflag2":"0B","orderstatus":"2","operdate":")" +
            today + R"(","opertime":"9310000","orderprice":"15"}]})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay));

    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("marker 0 0 20 0 15.000000", "marker 0 1 20 1 10.000000"))
        << "the second is held at the bottom edge";
    EXPECT_EQ((call<int>(overlay, 9, 107.9, 1000.0 - 10.0 - 16.0)), 0);
    EXPECT_EQ((call<int>(overlay, 9, 108.0, 1000.0 - 10.0)), -1);

    axis.calls.clear();
    axis.chosenLine = 0;
    call<void>(overlay, 10, 100.0, 1000.0 - 10.0);
    const std::string text =
        "买入[NAME]\n状态:未成交\n编号:5\n委托时间:09:32:05\n委托价格:9.500\n委托数量:300\n委托日期:" +
        today.toStdString();
    EXPECT_THAT(axis.popupLines, ElementsAre(text));
    EXPECT_THAT(axis.calls, ElementsAre("barToX 0", "barToX 1", "visiblePriceRange", "priceToY", "popupMenu",
                                        "confirmBox 撤单?\n" + text));

    axis.calls.clear();
    for (int mouse = 11; mouse <= 14; ++mouse) {
        call<void>(overlay, mouse, 100.0, 1000.0 - 10.0);
    }
    EXPECT_THAT(axis.calls, IsEmpty());

    ASSERT_THAT(bus.sent, SizeIs(2));
    QByteArray answer = bus.sent[1].payload;
    EXPECT_TRUE(answer.startsWith(R"({"cmd":"EntrustCancel","market":"SH","objectId":"{)"));
    axis.calls.clear();
    bus.deliver("TradeQuery", answer.replace("{\"cmd\"", R"({"msg":"too late","cmd")"));
    EXPECT_THAT(axis.calls, ElementsAre("showMessage too late"));
}

class HandLaidHostEnds : public HandLaidHost, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(HandLaidHostEnds, AnOverlayThroughSlotsThreeAndOne)
{
    ASSERT_NE(create(GetParam()), nullptr);
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 1);
    EXPECT_TRUE(call<bool>(overlay, 3));
    call<void>(overlay, 1);
    overlay = nullptr;
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0)
        << "the whole object is gone, its bus client with it";
}

INSTANTIATE_TEST_SUITE_P(Types, HandLaidHostEnds,
                         ::testing::Values(R"({"type":0})", R"({"type":1})", R"({"type":2})"));

TEST_F(HandLaidHost, GetsNullAndOneCriticalLineForAnUnknownType)
{
    const LogCapture log;
    EXPECT_EQ(create(R"({"type":3})"), nullptr);
    EXPECT_THAT(
        log.lines(QtCriticalMsg),
        ElementsAre(QStringLiteral("Unknown algorithmType in CreateChartObject(), algorithmType is : 3")));
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
}

// The names by which a C++ compiler knows what a terminal may use of the library beside the factory. They
// stand here a second time, beside the list that the library is linked by: a name that is lost there would
// be missed by nobody else.

struct Word
{
    const char *symbol;
    const char *text;
};

const Word words[] = {
    {"_ZN10TradeChart5Topic11TRADENOTIFYE", "TradeNotify"},
    {"_ZN10TradeChart5Topic10TRADEQUERYE", "TradeQuery"},
    {"_ZN10TradeChart5Topic12ENTRUSTQUERYE", "EntrustQuery"},
    {"_ZN10TradeChart7CmdType12HISTORYTRADEE", "HistoryTrade"},
    {"_ZN10TradeChart7CmdType10TODAYTRADEE", "TodayTrade"},
    {"_ZN10TradeChart7CmdType15HOLDERCOSTPRICEE", "HolderCostPrice"},
    {"_ZN10TradeChart7CmdType17ENTRUSTTODAYTRADEE", "EntrustTodayTrade"},
    {"_ZN10TradeChart7CmdType19ENTRUSTHISTORYTRADEE", "EntrustHistoryTrade"},
    {"_ZN10TradeChart7CmdType13ENTRUSTCANCELE", "EntrustCancel"},
    {"_ZN10TradeChart14TradeKeyFields13ALGORITHMTYPEE", "type"},
    {"_ZN10TradeChart14TradeKeyFields15AUTOREFRESHTIMEE", "auto_refresh_time"},
    {"_ZN10TradeChart14TradeKeyFields5PARAME", "param"},
    {"_ZN10TradeChart14TradeKeyFields3CMDE", "cmd"},
    {"_ZN10TradeChart14TradeKeyFields8SCREENIDE", "screenId"},
    {"_ZN10TradeChart14TradeKeyFields7STKCODEE", "stkcode"},
    {"_ZN10TradeChart14TradeKeyFields4DATAE", "data"},
    {"_ZN10TradeChart14TradeKeyFields6MARKETE", "market"},
    {"_ZN10TradeChart14TradeKeyFields8OBJECTIDE", "objectId"},
    {"_ZN10TradeChart14TradeKeyFields5STARTE", "start"},
    {"_ZN10TradeChart14TradeKeyFields3ENDE", "end"},
    {"_ZN10TradeChart14TradeKeyFields3BUYE", "buy"},
    {"_ZN10TradeChart14TradeKeyFields4DATEE", "date"},
    {"_ZN10TradeChart14TradeKeyFields5PRICEE", "price"},
    {"_ZN10TradeChart14TradeKeyFields3VOLE", "vol"},
    {"_ZN10TradeChart14TradeKeyFields9COSTPRICEE", "costprice"},
    {"_ZN10TradeChart14TradeKeyFields7STKNAMEE", "stkname"},
    {"_ZN10TradeChart14TradeKeyFields9RTSBSFLAGE", "bsflag2"},
    {"_ZN10TradeChart14TradeKeyFields12RTSMATCHTIMEE", "matchtime"},
    {"_ZN10TradeChart14TradeKeyFields13RTSMATCHPRICEE", "matchprice"},
    {"_ZN10TradeChart14TradeKeyFields11RTSMATCHQTYE", "matchqty"},
    {"_ZN10TradeChart14TradeKeyFields11RTSMATCHAMTE", "matchamt"},
    {"_ZN10TradeChart14TradeKeyFields7RTSDATEE", "bizdate"},
    {"_ZN10TradeChart14TradeKeyFields10RTSORDERNOE", "ordersno"},
    {"_ZN10TradeChart14TradeKeyFields12RTSORDERDATEE", "orderdate"},
    {"_ZN10TradeChart14TradeKeyFields14RTSORDERSTATUSE", "orderstatus"},
    {"_ZN10TradeChart14TradeKeyFields12RTSCANCELQTYE", "cancelqty"},
    {"_ZN10TradeChart14TradeKeyFields13RTSCANCELFLAGE", "cancelflag"},
    {"_ZN10TradeChart14TradeKeyFields15RTSENTRUSTPRICEE", "orderprice"},
    {"_ZN10TradeChart14TradeKeyFields13RTSENTRUSTQTYE", "orderqty"},
    {"_ZN10TradeChart14TradeKeyFields9RTSFUNDIDE", "fundid"},
    {"_ZN10TradeChart14TradeKeyFields14RTSENTRUSTTIMEE", "opertime"},
    {"_ZN10TradeChart14TradeKeyFields14RTSENTRUSTDATEE", "operdate"},
    {"_ZN10TradeChart14TradeKeyFields7ERRCODEE", "errcode"},
    {"_ZN10TradeChart14TradeKeyFields7SUCCESSE", "success"},
    {"_ZN10TradeChart14TradeKeyFields3MSGE", "msg"},
    {"_ZN10TradeChart14TradeKeyFields5MSGOKE", "msgok "},
    {"_ZN10TradeChart6BSFlag3BUYE", "B"},
    {"_ZN10TradeChart6BSFlag4SELLE", "S"},
    {"_ZN10TradeChart11OrderStatus4NoneE", "0"},
    {"_ZN10TradeChart11OrderStatus7QuotingE", "1"},
    {"_ZN10TradeChart11OrderStatus6QuotedE", "2"},
    {"_ZN10TradeChart11OrderStatus20QuotedWaittingCancelE", "3"},
    {"_ZN10TradeChart11OrderStatus22PartDealWaittingCancelE", "4"},
    {"_ZN10TradeChart11OrderStatus12PartCanceledE", "5"},
    {"_ZN10TradeChart11OrderStatus8CanceledE", "6"},
    {"_ZN10TradeChart11OrderStatus8PartDealE", "7"},
    {"_ZN10TradeChart11OrderStatus6DealedE", "8"},
    {"_ZN10TradeChart11OrderStatus14AbolishedOrderE", "9"},
    {"_ZN10TradeChart11OrderStatus13WaittingQuoteE", "A"},
    {"_ZN10TradeChart11OrderStatus8QuotingBE", "B"},
    {"_ZN10TradeChart11OrderStatus9ConformedE", "G"},
};

TEST_F(HandLaidHost, FindsEveryWordOfTheVocabularyAsADataSymbol)
{
    for (const Word &word : words) {
        if (const QFunctionPointer symbol = find(word.symbol)) {
            const char *text = nullptr;
            std::memcpy(&text, reinterpret_cast<const void *>(symbol), sizeof text);
            EXPECT_STREQ(text, word.text) << word.symbol;
        }
    }
}

TEST_F(HandLaidHost, CallsTheHelpersOfTheVocabularyByName)
{
    const auto statusText =
        function<const char *(QString)>("_ZN10TradeChart11OrderStatus17getOrderStatusTxtE7QString");
    const auto marketId = function<QString(short)>("_ZN10TradeChart11getMarketIdEs");
    const auto today = function<std::int64_t()>("_ZN10TradeChart11currentDateEv");
    const auto rounded = function<double(double, unsigned int)>("_ZN10TradeChart5roundIdEET_S1_j");
    const auto side = function<QString(QString)>("_ZN10TradeChart8toBsFlagE7QString");
    const auto globalSide = function<QString(QString)>("_Z8toBsFlag7QString");
    ASSERT_TRUE(statusText && marketId && today && rounded && side && globalSide);
    EXPECT_STREQ(statusText(QStringLiteral("a")), "待报");
    EXPECT_EQ(marketId(24), QStringLiteral("OIL"));
    EXPECT_GE(today(), 20240101);
    EXPECT_EQ(rounded(1.23456, 3), 1.235);
    EXPECT_EQ(side(QStringLiteral("0b")), QStringLiteral("B"));
    EXPECT_EQ(globalSide(QStringLiteral("0f")), QStringLiteral("S"));
}

/// A terminal that constructs an overlay of the factory by its constructor's name.
class HandLaidHostConstructsAlone : public HandLaidHostConstructs,
                                    public ::testing::WithParamInterface<const char *>
{
};

TEST_P(HandLaidHostConstructsAlone, AnOverlayOfTheFactory)
{
    constructBy<QJsonObject, QObject *>(GetParam(), {{QStringLiteral("auto_refresh_time"), 600}}, nullptr);
    ASSERT_NE(constructed, nullptr);
    EXPECT_EQ(call<int>(constructed, 2), 3);
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, HandLaidHostConstructsAlone,
    ::testing::Values("_ZN12PositionCostC1ERN7Korvane10IChartAxisE11QJsonObjectP7QObject",
                      "_ZN7BSPointC1ERN7Korvane10IChartAxisE11QJsonObjectP7QObject",
                      "_ZN12EntrustPointC1ERN7Korvane10IChartAxisE11QJsonObjectP7QObject"));

} // namespace
