// What messages to everybody mean to combined overlays.
#include "terminal/services/SharedChannel.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

struct SharedMessage
{
    const char *name;
    const char *topic;
    const char *payload;
    SharedNews::Kind kind;
};

class SharedChannelMessage : public ::testing::TestWithParam<SharedMessage>
{
};

TEST_P(SharedChannelMessage, IsReadAsCombinedOverlaysReadIt)
{
    const SharedNews news = readSharedNews(GetParam().topic, GetParam().payload);
    EXPECT_EQ(news.kind, GetParam().kind);
    EXPECT_EQ(news.code, GetParam().kind == SharedNews::None ? news.code : QStringLiteral("600519"));
}

INSTANTIATE_TEST_SUITE_P(
    Messages, SharedChannelMessage,
    ::testing::Values(
        SharedMessage{"answer", "TradeQuery", R"({"cmd":"HistoryTrade","stkcode":"600519","data":[{}]})",
                      SharedNews::Data},
        SharedMessage{"emptyAnswer", "TradeQuery", R"({"cmd":"HistoryTrade","stkcode":"600519","data":[]})",
                      SharedNews::Data},
        SharedMessage{"ownQuestion", "TradeQuery",
                      R"({"cmd":"HistoryTrade","stkcode":"600519","start":"20240102"})", SharedNews::None},
        SharedMessage{"questionOfAScreen", "TradeQuery",
                      R"({"cmd":"HistoryTrade","stkcode":"600519","screenId":"s"})", SharedNews::Spoilt},
        SharedMessage{"otherCommand", "TradeQuery", R"({"cmd":"TodayTrade","stkcode":"600519","data":[{}]})",
                      SharedNews::None},
        SharedMessage{"notification", "TradeNotify", R"({"stkcode":"600519","ordersno":"7"})",
                      SharedNews::Data},
        SharedMessage{"noJson", "TradeQuery", "HistoryTrade", SharedNews::None}),
    ByName());

} // namespace
} // namespace Terminal
