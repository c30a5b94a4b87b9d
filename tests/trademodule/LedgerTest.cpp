#include "tests/trademodule/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/ledger/LedgerQueries_p.h"
#include "trademodule/ledger/LedgerSchema.h"
#include "trademodule/ledger/Transaction.h"

#include <QElapsedTimer>

#include <cmath>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using LedgerOfAnAccount = LedgerFixture;

const DateRange always;

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

TEST_F(LedgerOfAnAccount, AddsNothingWhenAStatementComesTwice)
{
    const Executions statement{fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1")),
                               fill(Side::Buy, bank(), 20240102, 10, 100)};
    book(statement);

    const Booked again = book(statement);

    EXPECT_EQ(again.added, 0);
    EXPECT_EQ(again.alreadyThere, 2);
    EXPECT_THAT(again.lastAdded, IsEmpty());
    EXPECT_THAT(ledger().trades(always), SizeIs(2));
}

TEST_F(LedgerOfAnAccount, TakesTheNewPartOfAnOverlappingStatement)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 10, 100)});

    const Booked next =
        book({fill(Side::Buy, bank(), 20240103, 10, 100), fill(Side::Buy, bank(), 20240104, 10, 100)});

    EXPECT_EQ(next.added, 1);
    EXPECT_THAT(ledger().trades(always), SizeIs(3));
}

TEST_F(LedgerOfAnAccount, CountsEqualFillsWithoutDealNumbers)
{
    const Execution equal = fill(Side::Buy, bank(), 20240102, 10, 100);
    book({equal, equal});

    EXPECT_EQ(book({equal}).added, 0);
    EXPECT_EQ(book({equal, equal, equal}).added, 1);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 300);
}

TEST_F(LedgerOfAnAccount, KnowsADealByItsNumberWhateverElseAFormOfExportTells)
{
    Execution detailed = fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("77"));
    detailed.orderNo = QStringLiteral("5");
    Execution sparse = detailed;
    sparse.time = ClockTime();
    sparse.orderNo.clear();
    book({detailed});

    EXPECT_EQ(book({sparse}).added, 0);
}

TEST_F(LedgerOfAnAccount, TellsDealsOfTheSameNumberOnOtherDaysApart)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("77"))});

    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240103, 10, 100, QStringLiteral("77"))}).added, 1);
}

TEST_F(LedgerOfAnAccount, ChangesNothingInADryRun)
{
    const Booked would = book({fill(Side::Buy, bank(), 20240102, 10, 100)}, Ledger::Mode::DryRun);

    EXPECT_EQ(would.added, 1);
    EXPECT_THAT(ledger().trades(always), IsEmpty());
    EXPECT_THAT(ledger().positions(), IsEmpty());
}

TEST_F(LedgerOfAnAccount, KeepsNothingOfAStatementThatFails)
{
    Execution impossible = fill(Side::Buy, bank(), 20240103, 10, 100);
    impossible.quantity = 0; // the database refuses it

    EXPECT_THROW(book({fill(Side::Buy, bank(), 20240102, 10, 100), impossible}), LedgerError);

    EXPECT_THAT(ledger().trades(always), IsEmpty());
    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240102, 10, 100)}).added, 1);
}

TEST_F(LedgerOfAnAccount, TellsTheNewestEntryOfEverySecurityItChanged)
{
    const Booked booked =
        book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100),
              fill(Side::Sell, bank(), 20240104, 11, 100)});

    ASSERT_THAT(booked.lastAdded, SizeIs(2));
    for (const Execution &execution : booked.lastAdded) {
        EXPECT_EQ(execution.date, execution.security == bank() ? day(20240104) : day(20240103));
    }
}

TEST_F(LedgerOfAnAccount, ListsTradesOfARangeOfDaysBothEndsIncluded)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 10, 100),
          fill(Side::Buy, bank(), 20240104, 10, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100)});

    EXPECT_THAT(ledger().trades(bank(), {day(20240103), day(20240104)}), SizeIs(2));
    EXPECT_THAT(ledger().trades(bank().code, {day(20240102), day(20240103)}), SizeIs(2));
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

TEST_F(LedgerOfAnAccount, ComputesTheCostAnewWhenOlderStatementsComeLater)
{
    const Booked first =
        book({fill(Side::Sell, bank(), 20240103, 12, 100), fill(Side::Buy, bank(), 20240104, 11, 100)});
    EXPECT_THAT(first.unexplained, ElementsAre(bank()));
    EXPECT_DOUBLE_EQ(costPrice(bank()), 11.05);

    const Booked second = book({fill(Side::Buy, bank(), 20240102, 10, 200)});

    EXPECT_THAT(second.unexplained, IsEmpty());
    EXPECT_EQ(ledger().holding(bank()).quantity(), 200);
    EXPECT_DOUBLE_EQ(costPrice(bank()), ((10.0 * 200 + 5) / 2 + 1105) / 200);
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

TEST_F(LedgerOfAnAccount, IsReadWhileAnotherProcessWritesIt)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    Database writer(location());
    Transaction transaction(&writer);
    writer.run(QStringLiteral("DELETE FROM execution"));

    EXPECT_THAT(ledger().trades(always), SizeIs(1));
}

TEST_F(LedgerOfAnAccount, RefusesWhatRefersToNothing)
{
    Database database(location());

    EXPECT_THROW(database.run(QStringLiteral("INSERT INTO holding (security_id, quantity, cost, unexplained) "
                                             "VALUES (4711, 1, 1, 0)")),
                 LedgerError);
}

TEST_F(LedgerOfAnAccount, KnowsItsVersion)
{
    Database database(location());

    EXPECT_EQ(schemaVersion(&database), currentSchemaVersion());
}

TEST_F(LedgerOfAnAccount, MadeByANewerProgramIsLeftAlone)
{
    Database(location()).run(QStringLiteral("UPDATE ledger_version SET version = 999"));

    try {
        Ledger again(location());
        FAIL() << "opened";
    } catch (const Error &error) {
        EXPECT_THAT(error.what(), HasSubstr("newer program"));
    }
}

/// A ledger as an older program made it: the parameter is its version.
class OlderLedger : public ::testing::TestWithParam<int>
{
protected:
    void SetUp() override
    {
        if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
            GTEST_SKIP() << reason.toStdString();
        }
        m_home.emplace();
        Database database(location());
        migrateSchema(&database, GetParam());
        database.run(QStringLiteral("INSERT INTO security (id, code, market) VALUES (1, '000001', 'SZ')"));
        database.run(QStringLiteral("INSERT INTO holding VALUES (1, 100, 1005.0, 0)"));
        database.run(QStringLiteral(
            "INSERT INTO execution (security_id, side, trade_date, trade_time, price, quantity, amount, fee, "
            "order_no, deal_no) VALUES (1, 'B', 20240102, 0, 100000, 100, 10000000, 50000, '', '')"));
    }

    QString location() const { return m_home->location(); }

private:
    std::optional<TestLedger> m_home;
};

TEST_P(OlderLedger, IsBroughtUpToDateWithAllItHolds)
{
    {
        Database old(location());
        ASSERT_EQ(schemaVersion(&old), GetParam());
    }

    Ledger ledger(location());

    EXPECT_EQ(schemaVersion(ledger.database()), currentSchemaVersion());
    EXPECT_THAT(ledger.trades(bank(), always), SizeIs(1));
    EXPECT_EQ(ledger.holding(bank()).quantity(), 100);
}

TEST_P(OlderLedger, TakesOrdersAndQuotesAfterwards)
{
    Ledger ledger(location());
    PaperExchange exchange(&ledger);
    Quote quote{bank(), TradingDate::today(), at(1000)};
    quote.open = quote.high = quote.low = quote.close = Money::ofYuan(10).value();
    quote.volume = 100000;
    exchange.take(quote);

    exchange.place(bank(), Direction::Buy, quote.close, 200);
    exchange.take(quote);

    EXPECT_EQ(ledger.holding(bank()).quantity(), 300);
}

INSTANTIATE_TEST_SUITE_P(OfVersion, OlderLedger, ::testing::Range(1, currentSchemaVersion()),
                         ::testing::PrintToStringParamName());

TEST_F(LedgerOfAnAccount, GivesAChangeUpThatAnotherProgramKeepsWaiting)
{
    Database other(location());
    ledger().setPatience(std::chrono::milliseconds(50));
    std::optional<Transaction> change(std::in_place, &other);

    try {
        book({fill(Side::Buy, bank(), 20240102, 10, 100)});
        FAIL() << "nobody waited";
    } catch (const LedgerUnavailable &error) {
        EXPECT_THAT(error.what(), HasSubstr("the ledger is busy"));
    }
    EXPECT_THAT(ledger().trades(always), IsEmpty());

    change.reset();
    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240102, 10, 100)}).added, 1);
}

TEST_F(LedgerOfAnAccount, WaitsInVainOnlyOnce)
{
    constexpr std::chrono::milliseconds patience(2000);
    Database other(location());
    ledger().setPatience(patience);
    const Transaction change(&other);
    EXPECT_THROW(Transaction{ledger().database()}, LedgerUnavailable);

    QElapsedTimer clock;
    clock.start();
    EXPECT_THROW(Transaction{ledger().database()}, LedgerUnavailable);
    EXPECT_LT(clock.elapsed(), patience.count() / 2);
}

TEST_F(LedgerOfAnAccount, AnswersAYearOfASecurityFromAnIndex)
{
    Executions many;
    for (int i = 0; i < 20000; ++i) {
        const SecurityId security{QString::number(600000 + i % 200), Market::Shanghai};
        many.append(fill(Side::Buy, security, 20100101 + i / 2000 * 10000, 10, 100, QString::number(i)));
    }
    book(many);
    Database database(location());
    const bool isSqlite = database.kind() == Database::Kind::Sqlite;
    database.run(QStringLiteral("ANALYZE"));

    QString question = LedgerQueries::tradesOfSecurity();
    for (const char *value : {"'600007'", "'SH'", "20120101", "20121231"}) {
        question.replace(question.indexOf(QLatin1Char('?')), 1, QLatin1String(value));
    }
    QSqlQuery rows = database.run(
        (isSqlite ? QStringLiteral("EXPLAIN QUERY PLAN ") : QStringLiteral("EXPLAIN ")) + question);
    std::string plan;
    while (rows.next()) {
        plan += rows.value(isSqlite ? 3 : 0).toString().toStdString() + "\n";
    }

    EXPECT_THAT(plan, HasSubstr(isSqlite ? "COVERING INDEX execution_by_time" : "execution_by_time"));
    EXPECT_THAT(plan, ::testing::Not(HasSubstr("Seq Scan on execution")));
}

} // namespace TradeModule
