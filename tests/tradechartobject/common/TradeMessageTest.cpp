#include "tests/support/ByName.h"
#include "tests/support/FakeHost.h"
#include "tests/support/ReadingWay.h"

#include "tradechartobject/common/TradeMessage.h"

#include <gtest/gtest.h>

using namespace TradeChart;

namespace {

TEST(TradeMessageCommand, IsForCertainAnotherWhereItsWordIsNowhere)
{
    EXPECT_FALSE(TradeMessage::mayBeCommand(R"({"cmd":"HistoryTrade","data":[]})", {"TodayTrade"}));
    EXPECT_FALSE(TradeMessage::mayBeCommand("", {"TodayTrade"}));
}

TEST(TradeMessageCommand, MayBeAnyOfThoseWhoseWordsAreInTheMessage)
{
    EXPECT_TRUE(TradeMessage::mayBeCommand(R"({"data":[],"cmd":"TodayTrade"})", {"TodayTrade"}));
    EXPECT_TRUE(TradeMessage::mayBeCommand(R"({"cmd":"TodayTrade"})", {"HistoryTrade", "TodayTrade"}));
}

TEST(TradeMessageCommand, MayBeAnyWhereACharacterIsEscaped)
{
    EXPECT_TRUE(TradeMessage::mayBeCommand(R"({"cmd":"\u0054odayTrade"})", {"TodayTrade"}));
}

/// What a message says, read in either way.
class TradeMessageSays : public ::testing::TestWithParam<ReadingWay>
{
protected:
    static TradeMessage message(const char *json)
    {
        return TradeMessage::parse(readIn(GetParam(), json)).value();
    }
};

struct NoMessage
{
    const char *name;
    const char *payload;
};

class TradeMessageThatSaysNothing : public ::testing::TestWithParam<NoMessage>
{
};

TEST_P(TradeMessageThatSaysNothing, IsNone)
{
    EXPECT_FALSE(TradeMessage::parse(GetParam().payload));
}

INSTANTIATE_TEST_SUITE_P(Payloads, TradeMessageThatSaysNothing,
                         ::testing::Values(NoMessage{"Nothing", ""}, NoMessage{"NoJson", "cmd"},
                                           NoMessage{"CutOff", R"({"cmd":)"}, NoMessage{"AList", "[]"},
                                           NoMessage{"ANumber", "1"}, NoMessage{"AnEmptyObject", "{}"}),
                         ByName());

TEST(TradeMessage, IsAReplyEvenWhenItIsEmpty)
{
    EXPECT_TRUE(TradeMessage::parseReply("{}"));
    EXPECT_FALSE(TradeMessage::parseReply(""));
    EXPECT_FALSE(TradeMessage::parseReply("[]"));
}

TEST_P(TradeMessageSays, IsOfACommandLetterCaseIncluded)
{
    EXPECT_TRUE(message(R"({"cmd":"TodayTrade"})").isCommand("TodayTrade"));
    EXPECT_FALSE(message(R"({"cmd":"todaytrade"})").isCommand("TodayTrade"));
    EXPECT_FALSE(message(R"({"cmd":7})").isCommand("TodayTrade"));
}

TEST_P(TradeMessageSays, IsAboutASecurityInEitherLetterCase)
{
    const auto security = makeSecurity(1, "60053A", 1);
    EXPECT_TRUE(message(R"({"stkcode":"60053a"})").isAbout(security));
    EXPECT_FALSE(message(R"({"stkcode":"600536"})").isAbout(security));
    EXPECT_FALSE(message(R"({"stkcode":600536})").isAbout(makeSecurity(1, "600536", 1)));
}

TEST_P(TradeMessageSays, ReadsWhatIsMissingOrOfAnotherTypeAsNothing)
{
    const TradeMessage odd = message(R"({"msg":1,"success":"true","data":{}})");
    EXPECT_TRUE(message(R"({"data":"rows"})").rows().isEmpty());
    EXPECT_FALSE(message(R"({"data":[{"costprice":"1"}]})").record().has("costprice"));
    EXPECT_EQ(odd.text("msg"), QString());
    EXPECT_FALSE(odd.isTrue("success"));
    EXPECT_TRUE(odd.rows().isEmpty());
    EXPECT_EQ(odd.text("objectId"), QString());
}

TEST_P(TradeMessageSays, ReadsTextsTruthsRowsAndARecord)
{
    const TradeMessage answer = message(R"({"msg":"m","success":true,"data":[{},{}]})");
    EXPECT_EQ(answer.text("msg"), QStringLiteral("m"));
    EXPECT_TRUE(answer.isTrue("success"));
    EXPECT_EQ(answer.rows().size(), 2);
    const TradeMessage holding = message(R"({"data":{"costprice":null}})").record();
    EXPECT_TRUE(holding.has("costprice")) << "of whatever type";
    EXPECT_FALSE(holding.has("stkcode"));
}

INSTANTIATE_TEST_SUITE_P(Ways, TradeMessageSays, bothWays, nameOfWay);

} // namespace
