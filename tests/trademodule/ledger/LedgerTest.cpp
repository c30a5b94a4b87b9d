#include "tests/trademodule/support/LedgerFixture.h"

namespace TradeModule {

namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

using LedgerOfAnAccount = LedgerFixture;

} // namespace

TEST_F(LedgerOfAnAccount, IsEmptyAtFirst)
{
    EXPECT_THAT(ledger().trades(always), IsEmpty());
    EXPECT_THAT(ledger().positions(), IsEmpty());
    EXPECT_EQ(ledger().holding(bank()).costPrice(), std::nullopt);
}

TEST_F(LedgerOfAnAccount, GivesBackWhatWasBooked)
{
    Execution trade = fill(Side::Sell, bank(), 20240102, 10.345, 300, QStringLiteral("deal"));
    trade.time = ClockTime::of(14, 56, 35, 99).value();
    trade.orderNo = QStringLiteral("order");
    book({trade});

    const Executions trades = ledger().trades(bank(), always);

    ASSERT_THAT(trades, SizeIs(1));
    EXPECT_EQ(trades[0].security, bank());
    EXPECT_EQ(trades[0].side, Side::Sell);
    EXPECT_EQ(trades[0].date, day(20240102));
    EXPECT_EQ(trades[0].time, ClockTime::of(14, 56, 35, 99));
    EXPECT_EQ(trades[0].price.text(), QStringLiteral("10.345"));
    EXPECT_EQ(trades[0].quantity, 300);
    EXPECT_EQ(trades[0].amount.text(), QStringLiteral("3103.50"));
    EXPECT_EQ(trades[0].fee.text(), QStringLiteral("5.00"));
    EXPECT_EQ(trades[0].orderNo, QStringLiteral("order"));
    EXPECT_EQ(trades[0].dealNo, QStringLiteral("deal"));
}

TEST_F(LedgerOfAnAccount, KeepsItsTradesWhenOpenedAgain)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});

    EXPECT_THAT(Ledger(location()).trades(bank(), always), SizeIs(1));
}

TEST_F(LedgerOfAnAccount, ListsTradesOfARangeOfDaysBothEndsIncluded)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 10, 100),
          fill(Side::Buy, bank(), 20240104, 10, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100)});

    EXPECT_THAT(ledger().trades(bank(), {day(20240103), day(20240104)}), SizeIs(2));
    int ofTheCode = 0;
    ledger().visitTrades(bank().code, {day(20240102), day(20240103)},
                         [&ofTheCode](const Execution &) { ++ofTheCode; });
    EXPECT_EQ(ofTheCode, 2);
    EXPECT_THAT(ledger().trades({day(20240103), day(20240103)}), SizeIs(2));
    EXPECT_THAT(ledger().trades({QStringLiteral("000001"), Market::Shanghai}, always), IsEmpty());
}

TEST_F(LedgerOfAnAccount, ListsTradesOldestFirstHoweverTheyCame)
{
    book({fill(Side::Buy, bank(), 20240104, 10, 100)});
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 10, 100)});

    const Executions trades = ledger().trades(bank(), always);

    ASSERT_THAT(trades, SizeIs(3));
    EXPECT_EQ(trades[0].date, day(20240102));
    EXPECT_EQ(trades[2].date, day(20240104));
}

TEST_F(LedgerOfAnAccount, DoesNotListBonusSharesAsTrades)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Bonus, bank(), 20240103, 0, 100)});

    EXPECT_THAT(ledger().trades(bank(), always), SizeIs(1));
    EXPECT_EQ(ledger().holding(bank()).quantity(), 200);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 5.025);
}

TEST_F(LedgerOfAnAccount, ListsPositionsThatAreOpen)
{
    Statement statement = statementOf({fill(Side::Buy, liquor(), 20240102, 1700, 100),
                                       fill(Side::Buy, bank(), 20240102, 10, 100),
                                       fill(Side::Sell, bank(), 20240103, 11, 100)});
    statement.names.insert(liquor(), QStringLiteral("贵州茅台"));
    ledger().book(statement, Ledger::Mode::Keep);

    const QVector<Position> positions = ledger().positions();

    ASSERT_THAT(positions, SizeIs(1));
    EXPECT_EQ(positions[0].security, liquor());
    EXPECT_EQ(positions[0].name, QStringLiteral("贵州茅台"));
    EXPECT_EQ(positions[0].holding.quantity(), 100);
}

/// A ledger as an older program made it: the parameter is its version.

} // namespace TradeModule
