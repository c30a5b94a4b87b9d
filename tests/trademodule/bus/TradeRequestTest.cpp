#include "trademodule/bus/TradeRequest.h"

#include "tests/support/ByName.h"
#include "trademodule/Error.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

#include <functional>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

TradeRequest request(const char *text)
{
    return TradeRequest(QJsonDocument::fromJson(text).object());
}

} // namespace

TEST(TradeRequest, ReadsWhatIsAskedOfWhichSecurity)
{
    const TradeRequest read = request(R"({"cmd":"TodayTrade","stkcode":"600519","market":"SH"})");

    EXPECT_EQ(read.command(), QStringLiteral("TodayTrade"));
    EXPECT_EQ(read.security(), (SecurityId{QStringLiteral("600519"), Market::Shanghai}));
}

TEST(TradeRequest, ReadsTheDaysThatAreAskedAbout)
{
    const DateRange days = request(R"({"start":"20240102","end":"20240105"})").days();

    EXPECT_EQ(days.first.number(), 20240102);
    EXPECT_EQ(days.last.number(), 20240105);
    EXPECT_EQ(request(R"({"date":20240102})").day().number(), 20240102);
}

TEST(TradeRequest, ReadsTheOrderThatIsMeant)
{
    const TradeRequest read = request(R"({"orderdate":"20240102","ordersno":"4711"})");

    EXPECT_EQ(read.orderDate().number(), 20240102);
    EXPECT_EQ(read.orderNumber(), 4711);
}

TEST(TradeRequest, ReadsTheOrderThatIsToBePlaced)
{
    const TradeRequest read = request(R"({"bsflag2":"0S","orderprice":"10.50","orderqty":"300"})");

    EXPECT_EQ(read.direction(), Direction::Sell);
    EXPECT_EQ(read.orderPrice(), Money::ofCents(1050));
    EXPECT_EQ(read.orderQuantity(), 300);
}

TEST(TradeRequest, TakesTheLargestOrderThatThereMayBe)
{
    const TradeRequest read = request(R"({"orderprice":"1000000.00","orderqty":"1000000000"})");

    EXPECT_EQ(read.orderPrice(), Money::ofCents(100000000));
    EXPECT_EQ(read.orderQuantity(), 1000000000);
}

namespace {

struct WrongField
{
    std::string name;
    const char *text;
    std::function<void(const TradeRequest &)> read;
    std::string said;
};

class TradeRequestOfAWrongField : public ::testing::TestWithParam<WrongField>
{
};

} // namespace

TEST_P(TradeRequestOfAWrongField, NamesItAndWhatItMustBe)
{
    try {
        GetParam().read(request(GetParam().text));
        FAIL() << "no refusal";
    } catch (const Error &error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().said));
    }
}

INSTANTIATE_TEST_SUITE_P(
    As, TradeRequestOfAWrongField,
    ::testing::Values(
        WrongField{"NoCommand", "{}", [](const auto &read) { read.command(); }, "\"cmd\" must be a text"},
        WrongField{"OtherMarket", R"({"stkcode":"00700","market":"HK"})",
                   [](const auto &read) { read.security(); }, "\"market\" is \"HK\", but must be SH or SZ"},
        WrongField{"DayAsText", R"({"date":"20240102"})", [](const auto &read) { read.day(); },
                   "\"date\" is \"20240102\", but must be a date, a number yyyymmdd"},
        WrongField{"NoSuchDay", R"({"orderdate":"20240231"})", [](const auto &read) { read.orderDate(); },
                   "\"orderdate\" is \"20240231\""},
        WrongField{"OrderZero", R"({"ordersno":"0"})", [](const auto &read) { read.orderNumber(); },
                   "\"ordersno\" is \"0\", but must be a whole number greater than 0"},
        WrongField{"NoSide", R"({"bsflag2":"0X"})", [](const auto &read) { read.direction(); },
                   "\"bsflag2\" is \"0X\", but must be 0B or 0S"},
        WrongField{"PriceBeyondAll", R"({"orderprice":"1000000.01"})",
                   [](const auto &read) { read.orderPrice(); }, "must be a price in yuan"},
        WrongField{"QuantityBeyondAll", R"({"orderqty":"1000000001"})",
                   [](const auto &read) { read.orderQuantity(); }, "must be at most 1000000000"}),
    ByName());

} // namespace TradeModule
