// The ledger's own choice of how costs are reckoned.
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/ledger/Transaction.h"

namespace TradeModule {

namespace {

using LedgerCostMethod = LedgerFixture;

/// 100 × 10 + 5 = 1005 and 100 × 12 + 5 = 1205; a half of them sold for 1100 - 5 = 1095.
Executions twoBuysAndASale()
{
    return {fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 12, 100),
            fill(Side::Sell, bank(), 20240104, 11, 100)};
}

MoneyEntry moneyOf(const char *kind, double amount, int date, const char *currency = "CNY")
{
    MoneyEntry entry;
    entry.date = day(date);
    entry.kind = QLatin1String(kind);
    entry.amount = Money::ofYuan(amount).value();
    entry.currency = QLatin1String(currency);
    entry.code = bank().code;
    return entry;
}

} // namespace

TEST_F(LedgerCostMethod, IsTheMovingAverageAtFirst)
{
    EXPECT_EQ(ledger().costMethod(), CostMethod::Average);
}

TEST_F(LedgerCostMethod, IsKeptWithTheLedger)
{
    ledger().setCostMethod(CostMethod::Diluted);

    EXPECT_EQ(Ledger(location()).costMethod(), CostMethod::Diluted);
    EXPECT_EQ(ledger().holding(liquor()).method(), CostMethod::Diluted);
}

TEST_F(LedgerCostMethod, ReckonsWhatIsHeldAnew)
{
    book(twoBuysAndASale());
    EXPECT_DOUBLE_EQ(costPrice(bank()), 11.05);

    ledger().setCostMethod(CostMethod::Diluted);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 11.15); // 2210 - 1095

    ledger().setCostMethod(CostMethod::Fifo);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 12.05);

    ledger().setCostMethod(CostMethod::Average);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 11.05);
}

TEST_F(LedgerCostMethod, ReckonsWhatIsBookedAfterwards)
{
    for (const auto &[method, price] :
         {std::pair(CostMethod::Diluted, 11.15), std::pair(CostMethod::Fifo, 12.05)}) {
        ledger().setCostMethod(method);
        book(twoBuysAndASale());
        EXPECT_DOUBLE_EQ(costPrice(bank()), price);
        ledger().undoImport(ledger().imports().constLast().number);
    }
}

TEST_F(LedgerCostMethod, ReckonsTradesThatComeOneByOne)
{
    for (const auto &[method, price] :
         {std::pair(CostMethod::Average, 11.05), std::pair(CostMethod::Diluted, 11.15),
          std::pair(CostMethod::Fifo, 12.05)}) {
        const SecurityId security{wordOf(method), Market::Shenzhen};
        ledger().setCostMethod(method);
        for (Execution execution : twoBuysAndASale()) {
            execution.security = security;
            Transaction transaction(ledger().database());
            ledger().add(execution);
            transaction.commit();
        }
        EXPECT_DOUBLE_EQ(costPrice(security), price) << wordOf(method).toStdString();
    }
}

TEST_F(LedgerCostMethod, LowersTheDilutedCostByDividendsOfAStatement)
{
    ledger().setCostMethod(CostMethod::Diluted);
    book(twoBuysAndASale());
    Statement statement = statementOf({});
    statement.money = {moneyOf("dividends", 40, 20240110), moneyOf("dividend tax", -4, 20240110),
                       moneyOf("dividends", 1000, 20240110, "HKD"),
                       moneyOf("bank transfers", 1000, 20240110)};

    ledger().book(statement, Ledger::Mode::Keep);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 10.79); // (2210 - 1095 - 40 + 4) / 100

    ledger().undoImport(ledger().imports().constLast().number);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 11.15);
}

TEST_F(LedgerCostMethod, LowersTheDilutedCostByDividendsThatWereToldBeforeTheTrades)
{
    ledger().setCostMethod(CostMethod::Diluted);
    Statement statement = statementOf({});
    statement.money = {moneyOf("dividends", 40, 20240110)};
    ledger().book(statement, Ledger::Mode::Keep);

    book(twoBuysAndASale());

    EXPECT_DOUBLE_EQ(costPrice(bank()), 10.75); // (2210 - 1095 - 40) / 100
}

TEST_F(LedgerCostMethod, LeavesTheAverageAsItIsWhateverIsPaidOut)
{
    book(twoBuysAndASale());
    Statement statement = statementOf({});
    statement.money = {moneyOf("dividends", 40, 20240110)};

    ledger().book(statement, Ledger::Mode::Keep);

    EXPECT_DOUBLE_EQ(costPrice(bank()), 11.05);
}

TEST_F(LedgerCostMethod, TellsEntriesAndMoneyInOrderOfTime)
{
    Statement statement = statementOf(twoBuysAndASale());
    statement.money = {moneyOf("dividends", 40, 20240104), moneyOf("dividend tax", -4, 20240105)};
    ledger().book(statement, Ledger::Mode::Keep);
    AccountHistory history(ledger().database());

    std::vector<EventKind> kinds;
    for (const KnownSecurity &security : history.securities()) {
        history.visit(security, [&kinds](const AccountEvent &event) { kinds.push_back(event.kind); });
    }

    EXPECT_EQ(kinds, (std::vector{EventKind::Buy, EventKind::Buy, EventKind::Dividend, EventKind::Sell,
                                  EventKind::Tax}));
}

TEST_F(LedgerCostMethod, CountsTheMoneyOfACodeOfTwoMarketsOnce)
{
    const SecurityId index{bank().code, Market::Shanghai};
    Statement statement = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    statement.money = {moneyOf("dividends", 40, 20240104)};
    ledger().book(statement, Ledger::Mode::Keep);
    book({fill(Side::Buy, index, 20240102, 10, 100)});
    AccountHistory history(ledger().database());

    int dividends = 0;
    for (const KnownSecurity &security : history.securities(bank().code)) {
        history.visit(security, [&](const AccountEvent &event) {
            dividends += event.kind == EventKind::Dividend ? 1 : 0;
            EXPECT_TRUE(event.kind == EventKind::Buy || security.security == bank());
        });
    }

    EXPECT_EQ(dividends, 1);
}

TEST_F(LedgerCostMethod, HandsOutMoneyOfNoSecurity)
{
    Statement statement = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    statement.money = {moneyOf("interest", 1.23, 20240104), moneyOf("dividends", 40, 20240104)};
    statement.money[0].code.clear();
    ledger().book(statement, Ledger::Mode::Keep);
    AccountHistory history(ledger().database());

    std::vector<AccountEvent> events;
    history.visitOtherMoney([&events](const AccountEvent &event) { events.push_back(event); });

    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].kind, EventKind::Interest);
    EXPECT_EQ(events[0].amount.digits(), "1.23");
}

} // namespace TradeModule
