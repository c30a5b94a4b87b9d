#include "trademodule/ledger/FillKey.h"

#include "tests/trademodule/support/LedgerFixture.h"

namespace TradeModule {

namespace {

Execution dealt(const char *dealNo)
{
    return fill(Side::Buy, bank(), 20240102, 10, 100, QLatin1String(dealNo));
}

} // namespace

TEST(FillKey, IsTheSameForTheSameDealWhateverElseAStatementTells)
{
    const Execution one = dealt("7");
    Execution other = one;
    other.time = ClockTime();
    other.orderNo = QStringLiteral("4711");
    other.fee = Money();

    EXPECT_TRUE(FillKey(one) == FillKey(other));
    EXPECT_EQ(qHash(FillKey(one)), qHash(FillKey(other)));
}

TEST(FillKey, CountsNumbersWithoutTheZerosThatTheyStartWith)
{
    EXPECT_TRUE(FillKey(dealt("007")) == FillKey(dealt("7")));
}

TEST(FillKey, TellsDealsApart)
{
    EXPECT_FALSE(FillKey(dealt("7")) == FillKey(dealt("8")));
}

TEST(FillKey, GoesByTimeAndOrderWithoutADeal)
{
    const Execution one = dealt("");
    Execution later = one;
    later.time = at(1001);
    Execution ofAnotherOrder = one;
    ofAnotherOrder.orderNo = QStringLiteral("4711");

    EXPECT_TRUE(FillKey(one) == FillKey(dealt("")));
    EXPECT_FALSE(FillKey(one) == FillKey(later));
    EXPECT_FALSE(FillKey(one) == FillKey(ofAnotherOrder));
}

TEST(FillKey, TellsApartWhatWasDealt)
{
    const Execution one = dealt("7");
    for (const Execution &other : {fill(Side::Sell, bank(), 20240102, 10, 100, QStringLiteral("7")),
                                   fill(Side::Buy, liquor(), 20240102, 10, 100, QStringLiteral("7")),
                                   fill(Side::Buy, bank(), 20240103, 10, 100, QStringLiteral("7")),
                                   fill(Side::Buy, bank(), 20240102, 10.01, 100, QStringLiteral("7")),
                                   fill(Side::Buy, bank(), 20240102, 10, 200, QStringLiteral("7"))}) {
        EXPECT_FALSE(FillKey(one) == FillKey(other));
    }
}

} // namespace TradeModule
