// Whole messages against the table of messages.
#include "trading/MessageCheck.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace Trading {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> placesIn(MessageRole role, const char *command, const char *json)
{
    std::vector<std::string> places;
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    for (const KeyFinding &finding : findingsIn(*findMessage(role, QLatin1String(command)), object)) {
        places.push_back(finding.place.toStdString());
    }
    return places;
}

TEST(MessageCheck, FindsNothingInAMessageAsItMustBe)
{
    EXPECT_THAT(placesIn(MessageRole::Answer, "HolderCostPrice",
                         R"({"cmd":"HolderCostPrice","stkcode":"600000","colour":"red",
                             "data":{"stkcode":"600000","market":"1"}})"),
                IsEmpty());
}

TEST(MessageCheck, TellsTheWayToWhatIsWrongInARow)
{
    EXPECT_THAT(placesIn(MessageRole::Answer, "EntrustTodayTrade",
                         R"({"cmd":"EntrustTodayTrade","stkcode":"600000","data":[
                             {"market":"1","bsflag2":"0B","orderstatus":"2","ordersno":"1","orderdate":"20240102",
                              "opertime":"09300000","orderprice":"10","orderqty":"100"},
                             {"market":"1","bsflag2":"B","orderstatus":"2","ordersno":"1","orderdate":"20240102",
                              "opertime":"09300000","orderprice":"10"}]})"),
                ElementsAre("data/1/bsflag2", "data/1/orderqty"));
}

TEST(MessageCheck, FindsEveryKeyMissingInARowThatIsNoObject)
{
    EXPECT_THAT(placesIn(MessageRole::Answer, "CorporateActions",
                         R"({"cmd":"CorporateActions","stkcode":"600000","data":["nonsense"]})"),
                ElementsAre("data/0/date", "data/0/held", "data/0/cash", "data/0/bonus"));
}

TEST(MessageCheck, WantsOfAFailureItsKindAndItsReason)
{
    EXPECT_THAT(placesIn(MessageRole::Answer, "TodayTrade", R"({"success":false,"errcode":"1"})"),
                ElementsAre("errcode", "msg"));
}

TEST(MessageCheck, LooksIntoListsOfTexts)
{
    EXPECT_THAT(
        placesIn(MessageRole::Presence, "", R"({"instance":"a","online":true,"fence":1,"can":["a",7]})"),
        ElementsAre("can"));
}

} // namespace
} // namespace Trading
