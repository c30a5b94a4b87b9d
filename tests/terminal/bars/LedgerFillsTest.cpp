#include "terminal/bars/LedgerFills.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const Trading::SecurityId security{QStringLiteral("600519"), Trading::Market::Shanghai};

TEST(LedgerFills, AreTheTradesOfTheSecurity)
{
    const auto fills = fillsIn(
        R"([{"date":"2024-01-02","code":"600519","market":"SH","side":"buy","price":"1700.5","quantity":"200"},
            {"date":"2024-01-03","code":"600519","market":"SZ","side":"buy","price":"1","quantity":"1"},
            {"date":"2024-01-03","code":"000001","market":"SZ","side":"buy","price":"1","quantity":"1"}])");
    ASSERT_TRUE(fills.has_value());
    EXPECT_EQ(fills->size(), 3) << "one for each security";
    const std::vector<Fill> ofOne = fills->value(security);
    ASSERT_EQ(ofOne.size(), 1U);
    EXPECT_EQ(ofOne.front().day, onDay(20240102));
    EXPECT_DOUBLE_EQ(ofOne.front().price, 1700.5);
    EXPECT_EQ(ofOne.front().quantity, 200);
}

TEST(LedgerFills, AreNoBonusShares)
{
    const auto fills =
        fillsIn(R"([{"date":"2024-01-02","code":"600519","market":"SH","price":"0.00","quantity":"200"}])");
    ASSERT_TRUE(fills.has_value());
    EXPECT_TRUE(fills->empty());
}

TEST(LedgerFills, AreNothingInAnotherText)
{
    EXPECT_FALSE(fillsIn("trademodule: no such ledger").has_value());
    EXPECT_FALSE(fillsIn("{}").has_value());
    EXPECT_FALSE(fillsIn("[\n{}").has_value());
    EXPECT_TRUE(fillsIn("[\n]\n").has_value());
}

TEST(LedgerFills, AreLookedForInADatabaseByTheModule)
{
    EXPECT_EQ(missingLedger(QStringLiteral("postgresql://me@host/account")), QString());
    EXPECT_NE(missingLedger(QStringLiteral("/nowhere/a.db")), QString());
}

TEST(LedgerFills, NameTheLedgerThatCannotBeRead)
{
    const auto fills = ledgerFills(QStringLiteral("/nowhere/trademodule"), QStringLiteral("/nowhere/a.db"),
                                   security.code, [] { return true; });
    ASSERT_FALSE(fills);
    EXPECT_THAT(fills.error().toStdString(), ::testing::HasSubstr("/nowhere/a.db"));
}

} // namespace
} // namespace Terminal
