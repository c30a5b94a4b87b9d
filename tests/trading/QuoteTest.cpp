#include "trading/Quote.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace Trading {
namespace {

QJsonObject goodQuote()
{
    return QJsonDocument::fromJson(R"({"stkcode":"000001","market":"2","date":"20240102","time":"1001",
        "open":"10.01","high":"10.05","low":"9.98","close":"10.02","volume":12300})")
        .object();
}

TEST(Quote, IsReadAlsoWhereNumbersStandInPlaceOfTexts)
{
    const QuoteReading reading = readQuote(goodQuote());
    ASSERT_FALSE(reading.fault);
    EXPECT_EQ(reading.quote.volume, 12300);
    EXPECT_EQ(reading.quote.security, (SecurityId{QStringLiteral("000001"), Market::Shenzhen}));
    EXPECT_EQ(reading.quote.recorded, std::nullopt);
}

TEST(Quote, NamesTheFirstKeyThatIsWrong)
{
    QJsonObject message = goodQuote();
    message[QStringLiteral("high")] = QStringLiteral("ten");
    message.remove(QStringLiteral("low"));
    const QuoteReading reading = readQuote(message);
    ASSERT_TRUE(reading.fault);
    EXPECT_STREQ(reading.fault->key, "high");
    EXPECT_EQ(reading.fault->value, QStringLiteral("ten"));
}

TEST(Quote, NamesNoKeyWhenThePricesDoNotAgree)
{
    QJsonObject message = goodQuote();
    message[QStringLiteral("close")] = QStringLiteral("10.06");
    const QuoteReading reading = readQuote(message);
    ASSERT_TRUE(reading.fault);
    EXPECT_EQ(reading.fault->key, nullptr);
}

TEST(Quote, IsOfAReplayAlsoWhenItsDayCannotBeRead)
{
    QJsonObject message = goodQuote();
    message[QStringLiteral("recorded")] = QStringLiteral("20180108");
    EXPECT_EQ(readQuote(message).quote.recorded, TradingDate::of(2018, 1, 8));
    message[QStringLiteral("recorded")] = true;
    EXPECT_TRUE(readQuote(message).quote.recorded);
}

} // namespace
} // namespace Trading
