#include "trademodule/exchange/QuoteMessage.h"
#include "tests/support/ByName.h"
#include "trademodule/Error.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

QJsonObject goodQuote()
{
    return QJsonDocument::fromJson(R"({"stkcode":"000001","market":"SZ","date":"20240102","time":"100130",
        "open":"10.01","high":"10.05","low":"9.98","close":"10.02","volume":"12300","preclose":"9.90"})")
        .object();
}

} // namespace

TEST(QuoteMessage, IsReadFromItsTexts)
{
    const Quote quote = readQuote(goodQuote());

    EXPECT_EQ(quote.security, (SecurityId{QStringLiteral("000001"), Market::Shenzhen}));
    EXPECT_EQ(quote.date, TradingDate::of(2024, 1, 2));
    EXPECT_EQ(quote.time, ClockTime::of(10, 1, 30));
    EXPECT_EQ(quote.open, Money::ofYuan(10.01));
    EXPECT_EQ(quote.high, Money::ofYuan(10.05));
    EXPECT_EQ(quote.low, Money::ofYuan(9.98));
    EXPECT_EQ(quote.close, Money::ofYuan(10.02));
    EXPECT_EQ(quote.volume, 12300);
    EXPECT_EQ(quote.previousClose, Money::ofYuan(9.90));
}

TEST(QuoteMessage, NeedsNoCloseBefore)
{
    QJsonObject object = goodQuote();
    object.remove(QStringLiteral("preclose"));

    EXPECT_TRUE(readQuote(object).previousClose.isZero());
}

struct WrongField
{
    std::string name;
    const char *key;
    QJsonValue value; ///< undefined: the key is left out
};

class QuoteMessageWithAWrongField : public ::testing::TestWithParam<WrongField>
{
};

TEST_P(QuoteMessageWithAWrongField, IsRefusedWithTheNameOfTheField)
{
    QJsonObject object = goodQuote();
    object[QLatin1String(GetParam().key)] = GetParam().value;

    try {
        readQuote(object);
        FAIL() << "read";
    } catch (const Error &error) {
        EXPECT_THAT(error.what(), HasSubstr("\"" + std::string(GetParam().key) + "\""));
    }
}

INSTANTIATE_TEST_SUITE_P(
    With, QuoteMessageWithAWrongField,
    ::testing::Values(WrongField{"NoCode", "stkcode", QJsonValue::Undefined},
                      WrongField{"OtherMarket", "market", QStringLiteral("HK")},
                      WrongField{"NoDate", "date", QJsonValue::Undefined},
                      WrongField{"DateThatIsNone", "date", QStringLiteral("20240231")},
                      WrongField{"NoTime", "time", QJsonValue::Undefined},
                      WrongField{"TimeThatIsNone", "time", QStringLiteral("2561")},
                      WrongField{"OpenOfZero", "open", QStringLiteral("0")},
                      WrongField{"HighInWords", "high", QStringLiteral("ten")},
                      WrongField{"LowThatIsNoNumber", "low", QStringLiteral("nan")},
                      WrongField{"OpenOfMoreThanAnyPrice", "open", QStringLiteral("99999999999")},
                      WrongField{"HighOfMoreThanAnyPrice", "high", QStringLiteral("1000000.01")},
                      WrongField{"NoClose", "close", QJsonValue::Undefined},
                      WrongField{"NoVolume", "volume", QJsonValue::Undefined},
                      WrongField{"NegativeVolume", "volume", QStringLiteral("-1")},
                      WrongField{"NegativeCloseBefore", "preclose", QStringLiteral("-9.90")}),
    ByName());

} // namespace TradeModule
