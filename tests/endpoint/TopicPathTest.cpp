#include "endpoint/TopicPath_p.h"

#include <gmock/gmock.h>

#include <ostream>

using LocalCommunication::topicPath;

namespace {

struct Row
{
    const char *name;
    QByteArray channel;
    QByteArray topic;
    QByteArray path;
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.name;
}

class TopicPath : public ::testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(TopicPath, IsEncodedLevelByLevel)
{
    EXPECT_EQ(topicPath(QByteArray(), {GetParam().channel, GetParam().topic}), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(
    Names, TopicPath,
    ::testing::Values(Row{"Plain", "Global", "TradeQuery", "Global/TradeQuery"},
                      Row{"Unreserved", "a-b_c.d~e", "Z9", "a-b_c.d~e/Z9"},
                      Row{"Slash", "a/b", "c", "a%2Fb/c"}, Row{"Wildcards", "+", "#", "%2B/%23"},
                      Row{"Reserved", "$SYS", "$share", "%24SYS/%24share"},
                      Row{"Percent", "%2F", "%", "%252F/%25"}, Row{"Blank", "screen 1", "t", "screen%201/t"},
                      Row{"Chinese", "持仓", "t", "%E6%8C%81%E4%BB%93/t"},
                      Row{"Nul", QByteArray("a\0b", 3), "t", "a%00b/t"}, Row{"NotUtf8", "\xFF", "t", "%FF/t"},
                      Row{"EmptyChannel", "", "t", ""}, Row{"EmptyTopic", "c", "", ""}),
    [](const auto &row) { return row.param.name; });

TEST(TopicPathLength, IsLimitedAfterTheEncoding)
{
    const QByteArray longest(65535 - 2, 'x');
    EXPECT_FALSE(topicPath(QByteArray(), {longest, "t"}).isEmpty());
    EXPECT_TRUE(topicPath(QByteArray(), {longest + 'x', "t"}).isEmpty());
    EXPECT_TRUE(topicPath(QByteArray(), {QByteArray(22000, '/'), "t"}).isEmpty());
    EXPECT_TRUE(topicPath("desk/", {longest, "t"}).isEmpty());
}
