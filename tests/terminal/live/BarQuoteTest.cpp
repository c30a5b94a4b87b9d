// Bars as they are published, and as they are heard.
#include "terminal/live/BarQuote.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(BarQuote, TellsABarInTexts)
{
    const Security security{QStringLiteral("000001"), Market::Shenzhen, QStringLiteral("PA")};
    const Bar bar{20240105, 9 * 60 + 31, 13.35, 13.39, 13.3, 13.38, 2003635};
    const QJsonObject expected{
        {QStringLiteral("stkcode"), QStringLiteral("000001")},
        {QStringLiteral("market"), QStringLiteral("SZ")},
        {QStringLiteral("date"), QStringLiteral("20240105")},
        {QStringLiteral("time"), QStringLiteral("09310000")},
        {QStringLiteral("open"), QStringLiteral("13.35")},
        {QStringLiteral("high"), QStringLiteral("13.39")},
        {QStringLiteral("low"), QStringLiteral("13.3")},
        {QStringLiteral("close"), QStringLiteral("13.38")},
        {QStringLiteral("volume"), QStringLiteral("2003635")},
        {QStringLiteral("preclose"), QStringLiteral("13.3")},
    };
    EXPECT_EQ(quoteOf(security, bar, 13.30), expected);
}

TEST(BarQuote, SaysWhichDayIsReplayedAndNothingOfOneThatIsNot)
{
    const Security security{QStringLiteral("600519"), Market::Shanghai, {}};
    const Bar bar{20240105, 571, 1, 1, 1, 1, 1};
    const QString key = QStringLiteral("recorded");
    EXPECT_EQ(quoteOf(security, bar, {}, onDay(20180108)).value(key), QStringLiteral("20180108"));
    EXPECT_FALSE(quoteOf(security, bar, {}).contains(key));
}

TEST(BarQuote, SaysNothingOfACloseThatIsNotKnown)
{
    const QJsonObject quote = quoteOf({QStringLiteral("600519"), Market::Shanghai, {}},
                                      {20240105, 15 * 60, 1400, 1400, 1400, 1400, 0}, std::nullopt);
    EXPECT_FALSE(quote.contains(QStringLiteral("preclose")));
    EXPECT_EQ(quote.value(QStringLiteral("time")), QStringLiteral("15000000"));
}

TEST(BarQuote, IsHeardAsTheBarThatItTells)
{
    const Bar bar{20240105, 9 * 60 + 31, 13.35, 13.39, 13.3, 13.38, 2003635};
    const auto reading =
        Trading::readQuote(quoteOf({QStringLiteral("000001"), Market::Shenzhen, {}}, bar, 13.3));
    ASSERT_FALSE(reading.fault);
    EXPECT_EQ(barOf(reading.quote), bar);
    EXPECT_EQ(reading.quote.previousClose, Trading::Money::ofCents(1330));
}

TEST(BarQuote, IsNoBarAtATimeOfNone)
{
    EXPECT_EQ(barOf(quoteAt(1200, 10)), std::nullopt);
}

} // namespace
} // namespace Terminal
