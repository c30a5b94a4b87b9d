// The program itself, on a real database and a real bus.
#include "tests/trademodule/support/ProgramFixture.h"

#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/exchange/PaperExchange.h"

#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class AccountCommandTest : public Program
{
};

} // namespace

TEST_F(AccountCommandTest, ShowsAndSetsTheCashOfTheAccount)
{
    EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output, HasSubstr("1000000.00  1000000.00"));

    const Ended set = runOnLedger({QStringLiteral("account"), QStringLiteral("--cash"),
                                   QStringLiteral("5000.5"), QStringLiteral("--json")});

    EXPECT_EQ(set.exitCode, 0) << set.errors;
    const QJsonArray rows = QJsonDocument::fromJson(QByteArray::fromStdString(set.output)).array();
    EXPECT_EQ(rows, (QJsonArray{QJsonObject{{QStringLiteral("cash"), QStringLiteral("5000.50")},
                                            {QStringLiteral("available"), QStringLiteral("5000.50")}}}));
    EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output, HasSubstr("5000.50"));
}

/// Nobody has served the ledger since: the end of the order is not written yet.
TEST_F(AccountCommandTest, KeepsNothingForOrdersOfPastDays)
{
    PaperExchange(&ledger()).place(bank(), Direction::Buy, Money::ofYuan(10).value(), 1000);
    EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output, HasSubstr("1000000.00  989994.90"));

    Database(location()).run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));

    EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output, HasSubstr("1000000.00  1000000.00"));
    PaperExchange exchange(&ledger());
    const QJsonObject answer = jsonOf(
        TradeAnswers(&ledger(), &exchange).answer({{QStringLiteral("cmd"), QStringLiteral("AccountInfo")}}));
    EXPECT_EQ(answer[QStringLiteral("data")].toObject()[QStringLiteral("available")].toString(),
              QStringLiteral("1000000.00"));
}

/// A fill's fee is the order's in all less what was paid before, to the cent: commission 0.025 %, transfer
/// fee 0.001 %.
TEST_F(AccountCommandTest, AgreesWithTheAnswersAfterEachPartOfAnOrder)
{
    PaperExchange exchange(&ledger());
    Quote quote{bank(), TradingDate::today(), at(1000)};
    quote.open = quote.high = quote.low = quote.close = Money::ofYuan(33.33).value();
    quote.volume = 4 * 300;
    exchange.take(quote);
    exchange.place(bank(), Direction::Buy, quote.close, 1000);
    const auto told = [&](const char *key) {
        const QJsonObject answer =
            jsonOf(TradeAnswers(&ledger(), &exchange)
                       .answer({{QStringLiteral("cmd"), QStringLiteral("AccountInfo")}}));
        return answer[QStringLiteral("data")].toObject()[QLatin1String(key)].toString();
    };
    // fees of 9,999, 19,998, 29,997 and 33,330: 5 + 0.10, 5 + 0.20, 7.50 + 0.30, 8.33 + 0.33
    for (const char *const cash : {"989995.90", "979996.80", "969995.20", "966661.34"}) {
        quote.time = ClockTime::of(10, quote.time.number() / 10000 % 100 + 1).value();
        exchange.take(quote);
        EXPECT_EQ(told("cash"), QLatin1String(cash));
        EXPECT_EQ(told("available"), QStringLiteral("966661.34"));
        EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output,
                    HasSubstr(std::string(cash) + "  966661.34"));
    }
}

} // namespace TradeModule
