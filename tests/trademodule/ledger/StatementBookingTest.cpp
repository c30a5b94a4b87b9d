#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/OrderBook.h"

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using StatementBookingTest = LedgerFixture;

} // namespace

TEST_F(StatementBookingTest, AddsNothingWhenAStatementComesTwice)
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

TEST_F(StatementBookingTest, TakesTheNewPartOfAnOverlappingStatement)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 10, 100)});

    const Booked next =
        book({fill(Side::Buy, bank(), 20240103, 10, 100), fill(Side::Buy, bank(), 20240104, 10, 100)});

    EXPECT_EQ(next.added, 1);
    EXPECT_THAT(ledger().trades(always), SizeIs(3));
}

TEST_F(StatementBookingTest, CountsEqualFillsWithoutDealNumbers)
{
    const Execution equal = fill(Side::Buy, bank(), 20240102, 10, 100);
    book({equal, equal});

    EXPECT_EQ(book({equal}).added, 0);
    EXPECT_EQ(book({equal, equal, equal}).added, 1);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 300);
}

TEST_F(StatementBookingTest, KnowsADealByItsNumberWhateverElseAFormOfExportTells)
{
    Execution detailed = fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("77"));
    detailed.orderNo = QStringLiteral("5");
    Execution sparse = detailed;
    sparse.time = ClockTime();
    sparse.orderNo.clear();
    book({detailed});

    EXPECT_EQ(book({sparse}).added, 0);
}

TEST_F(StatementBookingTest, TellsDealsOfTheSameNumberOnOtherDaysApart)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("77"))});

    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240103, 10, 100, QStringLiteral("77"))}).added, 1);
}

TEST_F(StatementBookingTest, ChangesNothingInADryRun)
{
    const Booked would = book({fill(Side::Buy, bank(), 20240102, 10, 100)}, Ledger::Mode::DryRun);

    EXPECT_EQ(would.added, 1);
    EXPECT_THAT(ledger().trades(always), IsEmpty());
    EXPECT_THAT(ledger().positions(), IsEmpty());
}

TEST_F(StatementBookingTest, KeepsNothingOfAStatementThatFails)
{
    Execution impossible = fill(Side::Buy, bank(), 20240103, 10, 100);
    impossible.quantity = 0; // the database refuses it

    EXPECT_THROW(book({fill(Side::Buy, bank(), 20240102, 10, 100), impossible}), LedgerError);

    EXPECT_THAT(ledger().trades(always), IsEmpty());
    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240102, 10, 100)}).added, 1);
}

TEST_F(StatementBookingTest, TellsTheNewestEntryOfEverySecurityItChanged)
{
    const Booked booked =
        book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100),
              fill(Side::Sell, bank(), 20240104, 11, 100)});

    ASSERT_THAT(booked.lastAdded, SizeIs(2));
    for (const Execution &execution : booked.lastAdded) {
        EXPECT_EQ(execution.date, execution.security == bank() ? day(20240104) : day(20240103));
    }
}

TEST_F(StatementBookingTest, ComputesTheCostAnewWhenOlderStatementsComeLater)
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

TEST_F(StatementBookingTest, KnowsAFillAgainThatAnotherFormToldWithoutItsNumber)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("77"))});
    Execution sparse = fill(Side::Buy, bank(), 20240102, 10, 100);
    sparse.time = ClockTime();

    const Booked booked = book({sparse});

    EXPECT_EQ(booked.added, 0);
    EXPECT_EQ(booked.inAnotherForm, 1);
}

TEST_F(StatementBookingTest, TakesFillsAtOtherTimesForOtherFills)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("77"))});
    Execution later = fill(Side::Buy, bank(), 20240102, 10, 200);
    later.time = at(1400);

    EXPECT_EQ(book({later}).added, 1);
}

TEST_F(StatementBookingTest, AsksBeforeItBooksADayOnceMoreInOtherPieces)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1")),
          fill(Side::Buy, bank(), 20240102, 10, 200, QStringLiteral("2"))});
    Statement ofOrders = statementOf({fill(Side::Buy, bank(), 20240102, 10, 300)});

    EXPECT_THAT(ledger().book(ofOrders, Ledger::Mode::Keep).doubtful, SizeIs(1));
    EXPECT_EQ(ledger().holding(bank()).quantity(), 300);

    ofOrders.doubt = Doubt::Same;
    EXPECT_EQ(ledger().book(ofOrders, Ledger::Mode::Keep).added, 0);

    ofOrders.doubt = Doubt::New;
    EXPECT_EQ(ledger().book(ofOrders, Ledger::Mode::Keep).added, 1);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 600);
}

TEST_F(StatementBookingTest, FindsAnImportByItsMarkUntilItIsTakenBack)
{
    Statement marked = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    marked.mark = QStringLiteral("m1");
    EXPECT_FALSE(ledger().importOfMark(QStringLiteral("m1")));

    const qint64 number = ledger().book(marked, Ledger::Mode::Keep).number;

    ASSERT_TRUE(ledger().importOfMark(QStringLiteral("m1")));
    EXPECT_EQ(ledger().importOfMark(QStringLiteral("m1"))->number, number);
    EXPECT_FALSE(ledger().importOfMark(QStringLiteral("m2")));
    ledger().undoImport(number);
    EXPECT_FALSE(ledger().importOfMark(QStringLiteral("m1")));
}

TEST_F(StatementBookingTest, LooksForAMarkOnlyWhenChangesThatWereBegunAreDone)
{
    Ledger writer(location());
    std::optional<Transaction> underWay(writer.database());
    ledger().setPatience(std::chrono::milliseconds(50));

    EXPECT_THROW(ledger().importOfMark(QStringLiteral("m1")), LedgerUnavailable);

    underWay.reset();
}

TEST_F(StatementBookingTest, KeepsTheProfileWithTheEntriesOrNeither)
{
    Statement told = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    told.profile = QStringLiteral("word 撮合 = buy\n");
    ledger().book(told, Ledger::Mode::DryRun);
    EXPECT_EQ(ledger().importProfile(), QString());

    ledger().book(told, Ledger::Mode::Keep);
    EXPECT_EQ(ledger().importProfile(), told.profile);

    book({fill(Side::Buy, bank(), 20240103, 10, 100)});
    EXPECT_EQ(ledger().importProfile(), told.profile) << "a statement without one leaves it";
}

TEST_F(StatementBookingTest, BooksNothingWhereTheProfileCannotBeKept)
{
    Statement told = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    told.profile = QStringLiteral("word 撮合 = buy\n");
    ledger().database()->run(QStringLiteral("ALTER TABLE import_profile RENAME TO gone"));

    EXPECT_THROW(ledger().book(told, Ledger::Mode::Keep), Error);

    EXPECT_THAT(ledger().trades(always), IsEmpty());
}

TEST_F(StatementBookingTest, CompletesAFeeThatWasNotKnownAndForgetsItWithTheImport)
{
    Execution bare = fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1"));
    bare.fee = Money();
    book({bare});

    const Booked booked = book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1"))});

    EXPECT_EQ(booked.completedFees, 1);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 10.05);
    ledger().undoImport(2);
    EXPECT_DOUBLE_EQ(costPrice(bank()), 10.00);
}

TEST_F(StatementBookingTest, CompletesTheStampDutyThatAnEarlierExportDidNotTellApart)
{
    Execution sale = fill(Side::Sell, bank(), 20240103, 11, 100, QStringLiteral("2"));
    book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1")), sale});

    sale.stampDuty = Money::ofCents(55);
    book({sale});

    const Executions trades = ledger().trades(always);
    ASSERT_EQ(trades.size(), 2);
    EXPECT_EQ(trades[1].stampDuty, Money::ofCents(55));
    EXPECT_EQ(trades[1].fee, Money::ofCents(500));
}

TEST_F(StatementBookingTest, TakesAnImportBackAsAWhole)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    book({fill(Side::Buy, bank(), 20240103, 12, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100)});

    ledger().undoImport(2);

    EXPECT_THAT(ledger().trades(always), SizeIs(1));
    EXPECT_EQ(ledger().holding(bank()).quantity(), 100);
    EXPECT_EQ(ledger().holding(liquor()).quantity(), 0);
    EXPECT_THAT(ledger().imports(), SizeIs(1));
    EXPECT_THROW(ledger().undoImport(2), Error);
}

TEST_F(StatementBookingTest, ListsNoEntriesAsTradesThatAreNone)
{
    book({fill(Side::Allotment, bank(), 20240102, 10, 100), fill(Side::In, bank(), 20240103, 12, 100),
          fill(Side::Out, bank(), 20240104, 0, 50)});

    EXPECT_THAT(ledger().trades(always), IsEmpty());
    EXPECT_EQ(ledger().holding(bank()).quantity(), 150);
}

TEST_F(StatementBookingTest, BooksAnAllotmentOnceThatTwoStatementsTellOnTwoDays)
{
    book({fill(Side::Allotment, bank(), 20240102, 10, 500)});

    EXPECT_EQ(book({fill(Side::Allotment, bank(), 20240109, 10, 500)}).added, 0);
    EXPECT_EQ(book({fill(Side::Allotment, bank(), 20240909, 10, 500)}).added, 1);
}

TEST_F(StatementBookingTest, KeepsOtherMarketsInTheBooksAndOffTheCharts)
{
    const SecurityId beijing{QStringLiteral("830799"), Market::Beijing};
    book({fill(Side::Buy, beijing, 20240102, 10, 100)});

    EXPECT_THAT(ledger().positions(), IsEmpty());
    ASSERT_THAT(ledger().allPositions(), SizeIs(1));
    EXPECT_EQ(ledger().allPositions()[0].security, beijing);
}

TEST_F(StatementBookingTest, TakesMoneyOnceAndTheCashOfTheNewestBalance)
{
    MoneyEntry transfer;
    transfer.date = day(20240102);
    transfer.kind = QStringLiteral("bank transfers");
    transfer.amount = Money::ofCents(500000);
    Statement statement = statementOf({});
    statement.money = {transfer};
    statement.cash = StatedCash{day(20240102), ClockTime(), Money::ofCents(500000)};

    EXPECT_EQ(ledger().book(statement, Ledger::Mode::Keep).moneyAdded, 1);
    EXPECT_EQ(ledger().book(statement, Ledger::Mode::Keep).moneyAlreadyThere, 1);

    EXPECT_THAT(ledger().money(), SizeIs(1));
    EXPECT_EQ(OrderBook(&ledger()).cash(), Money::ofCents(500000));
}

} // namespace TradeModule
