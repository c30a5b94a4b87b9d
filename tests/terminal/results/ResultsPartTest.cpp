#include "terminal/results/ResultsPart.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

namespace Terminal {
namespace {

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

TEST(ResultsPart, IsAskedForWithItsListItsRowsAndItsOrder)
{
    const RowsAsked asked{{ResultGroup::Trip, ResultField::Total, true}, 400, 200};

    EXPECT_EQ(QJsonDocument::fromJson(asked.question().toJson()).object(),
              json(R"({"cmd":"Results","by":"trip","first":"400","most":"200","order":"total",
                       "descending":true})"));
}

TEST(ResultsPart, HasATextForEachColumnOfItsList)
{
    const QJsonObject answer =
        json(R"({"costmethod":"fifo","data":{"first":"200","count":"1200","state":"7","incomplete":["000001"],
                 "sum":{"profit":"5.00"},"rows":[{"year":"2024","profit":"3.00","sales":"2"}]}})");

    const ResultsPart part = readPart(answer, {{ResultGroup::Year}, 200, 200});

    EXPECT_EQ(part.first, 200);
    EXPECT_EQ(part.count, 1200);
    EXPECT_EQ(part.state, QStringLiteral("7"));
    EXPECT_EQ(part.costMethod, QStringLiteral("fifo"));
    EXPECT_EQ(part.incomplete, QStringList(QStringLiteral("000001")));
    ASSERT_EQ(part.rows.size(), 1U);
    EXPECT_EQ(part.rows[0].size(), static_cast<int>(Trading::fieldsOf(ResultGroup::Year).size()));
    EXPECT_EQ(part.rows[0].mid(0, 2), (QStringList{QStringLiteral("2024"), QStringLiteral("2")}));
    EXPECT_EQ(part.sum.filter(QStringLiteral("5.00")).size(), 1);
}

TEST(ResultsPart, HasNoRowsWhereTheirNumberIsNone)
{
    for (const char *const count : {"-5", "9223372036854775807", "99999999999999999999", "many"}) {
        const QJsonObject data{{QStringLiteral("first"), QLatin1String(count)},
                               {QStringLiteral("count"), QLatin1String(count)}};

        const ResultsPart part = readPart({{QStringLiteral("data"), data}}, {{ResultGroup::Sale}, 0, 200});

        EXPECT_EQ(part.first, 0) << count;
        EXPECT_EQ(part.count, 0) << count;
    }
}

TEST(ResultsPart, IsEmptyOfAnAnswerThatIsNone)
{
    const ResultsPart part = readPart({}, {{ResultGroup::Sale}, 0, 200});

    EXPECT_TRUE(part.rows.empty());
    EXPECT_EQ(part.count, 0);
}

} // namespace
} // namespace Terminal
