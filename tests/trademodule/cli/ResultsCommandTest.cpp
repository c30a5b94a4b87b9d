// The program itself, on a real database.
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/Transaction.h"

#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class ResultsCommandTest : public Program
{
protected:
    /// The bank's round trip earns 1095 - 1005 = 90 in January, a half of its next one 47.50; the liquor
    /// loses 10.
    void bookTrades()
    {
        book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 11, 100),
              fill(Side::Buy, bank(), 20240201, 10, 200, QStringLiteral("1")),
              fill(Side::Sell, bank(), 20250201, 10.55, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100),
              fill(Side::Sell, liquor(), 20240204, 1700, 100)});
    }

    Ended results(const QStringList &options)
    {
        return runOnLedger(QStringList{QStringLiteral("results")} + options);
    }

    QJsonArray rows(QStringList options)
    {
        const Ended ended = results(options << QStringLiteral("--json"));
        EXPECT_EQ(ended.exitCode, 0) << ended.errors;
        return QJsonDocument::fromJson(QByteArray::fromStdString(ended.output)).array();
    }

    /// The texts of a column.
    QStringList column(const char *name, const QStringList &options)
    {
        QStringList texts;
        const QJsonArray found = rows(options);
        for (const QJsonValue &row : found) {
            texts.append(row.toObject()[QLatin1String(name)].toString());
        }
        return texts;
    }
};

QStringList by(const char *what)
{
    return {QStringLiteral("--by"), QLatin1String(what)};
}

QStringList texts(std::initializer_list<const char *> words)
{
    QStringList list;
    for (const char *const word : words) {
        list.append(QLatin1String(word));
    }
    return list;
}

} // namespace

TEST_F(ResultsCommandTest, AreThoseOfTheSample)
{
    ASSERT_EQ(import(QStringLiteral(EXAMPLES_DIR) + QStringLiteral("/statement.csv")).exitCode, 0);

    EXPECT_EQ(column("code", {}), texts({"000001", "600519", "600536"}));
    EXPECT_EQ(column("profit", {}), texts({"18907.98", "347629.53", "147314.64"}));
    EXPECT_EQ(column("stampduty", {}), texts({"1221.69", "8942.21", "1946.06"}));
}

TEST_F(ResultsCommandTest, ListEachSecurity)
{
    bookTrades();

    EXPECT_EQ(column("profit", {}), texts({"137.50", "-10.00"})); // 90 + 47.50
    EXPECT_EQ(column("held", {}), texts({"100", "0"}));
    EXPECT_EQ(column("heldcost", {}), texts({"1002.50", "0.00"}));
    EXPECT_EQ(column("method", {}), texts({"average", "average"}));
}

TEST_F(ResultsCommandTest, ListEachSale)
{
    bookTrades();

    EXPECT_EQ(column("date", by("sale")), texts({"2024-01-03", "2025-02-01", "2024-02-04"}));
    EXPECT_EQ(column("soldcost", by("sale")), texts({"1005.00", "1002.50", "170005.00"}));
    EXPECT_EQ(column("profit", by("sale")), texts({"90.00", "47.50", "-10.00"})); // 1055 - 5 - 1002.50
    EXPECT_EQ(column("percent", by("sale")), texts({"8.96", "4.74", "-0.01"}));
}

TEST_F(ResultsCommandTest, ListEachRoundTrip)
{
    bookTrades();

    EXPECT_EQ(column("opened", by("trip")), texts({"2024-01-02", "2024-02-01", "2024-01-03"}));
    EXPECT_EQ(column("closed", by("trip")), texts({"2024-01-03", "", "2024-02-04"}));
    EXPECT_EQ(column("total", by("trip")), texts({"90.00", "47.50", "-10.00"}));
}

TEST_F(ResultsCommandTest, ListEachMonthAndYear)
{
    bookTrades();

    EXPECT_EQ(column("month", by("month")), texts({"2024-01", "2024-02", "2025-02"}));
    EXPECT_EQ(column("profit", by("month")), texts({"90.00", "-10.00", "47.50"}));
    EXPECT_EQ(column("fees", by("month")), texts({"15.00", "10.00", "5.00"}));
    EXPECT_EQ(column("year", by("year")), texts({"2024", "2025"}));
    EXPECT_EQ(column("profit", by("year")), texts({"80.00", "47.50"}));
}

TEST_F(ResultsCommandTest, AreOfTheDaysAndTheSecurityThatAreAskedFor)
{
    bookTrades();

    EXPECT_EQ(column("profit", by("sale") + texts({"--code", "600519"})), texts({"-10.00"}));
    EXPECT_EQ(column("profit", by("sale") + texts({"--from", "20240104"})), texts({"47.50", "-10.00"}));
    EXPECT_EQ(column("profit", by("trip") + texts({"--to", "20240131"})), texts({"90.00", "0.00"}));
    EXPECT_EQ(column("held", texts({"--to", "20240102"})), texts({"100"}));
}

TEST_F(ResultsCommandTest, CountDividendsTaxesAndInterest)
{
    Statement statement = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    statement.money = {MoneyEntry{day(20240104),
                                  {},
                                  QStringLiteral("dividends"),
                                  Money::ofCents(4000),
                                  QStringLiteral("CNY"),
                                  bank().code,
                                  {},
                                  {}},
                       MoneyEntry{day(20240105),
                                  {},
                                  QStringLiteral("dividend tax"),
                                  Money::ofCents(-400),
                                  QStringLiteral("CNY"),
                                  bank().code,
                                  {},
                                  {}},
                       MoneyEntry{day(20240321),
                                  {},
                                  QStringLiteral("interest"),
                                  Money::ofCents(123),
                                  QStringLiteral("CNY"),
                                  {},
                                  {},
                                  {}}};
    ledger().book(statement, Ledger::Mode::Keep);

    EXPECT_EQ(column("code", {}), texts({"000001", ""}));
    EXPECT_EQ(column("dividends", {}), texts({"40.00", "0.00"}));
    EXPECT_EQ(column("taxes", {}), texts({"4.00", "0.00"}));
    EXPECT_EQ(column("interest", {}), texts({"0.00", "1.23"}));
    EXPECT_EQ(column("total", by("year")), texts({"37.23"}));
}

TEST_F(ResultsCommandTest, AreATableWithASumAndTheNameOfTheMethod)
{
    bookTrades();

    const Ended ended = results({});

    EXPECT_THAT(ended.output, HasSubstr("sum"));
    EXPECT_THAT(ended.output, HasSubstr("127.50"));
    EXPECT_THAT(ended.output, HasSubstr("Cost: moving average\n"));
}

TEST_F(ResultsCommandTest, AreCsvWithoutASum)
{
    bookTrades();

    const Ended ended = results(by("year") + texts({"--csv"}));

    EXPECT_EQ(ended.output,
              "year,sales,bought,sold,fees,stampduty,soldcost,profit,percent,dividends,taxes,interest,total,"
              "method\n"
              "2024,2,173000.00,171100.00,25.00,0.00,171010.00,80.00,0.05,0.00,0.00,0.00,80.00,average\n"
              "2025,1,0.00,1055.00,5.00,0.00,1002.50,47.50,4.74,0.00,0.00,0.00,47.50,average\n");
}

TEST_F(ResultsCommandTest, QuoteInCsvWhatHoldsACommaOrAQuotationMark)
{
    Statement statement = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    statement.names.insert(bank(), QStringLiteral("a \"b\", c"));
    ledger().book(statement, Ledger::Mode::Keep);

    EXPECT_THAT(results(texts({"--csv"})).output, HasSubstr("000001,SZ,\"a \"\"b\"\", c\",0,"));
}

TEST_F(ResultsCommandTest, OfAnEmptyLedgerAreNone)
{
    EXPECT_EQ(results(texts({"--json"})).output, "[]\n");
    EXPECT_EQ(results({}).exitCode, 0);
}

TEST_F(ResultsCommandTest, FollowTheMethodOfTheLedger)
{
    bookTrades();
    ledger().setCostMethod(CostMethod::Diluted);

    EXPECT_EQ(column("profit", {}), texts({"90.00", "-10.00"}));
    EXPECT_EQ(column("costprice", {}), texts({"9.550", ""})); // 2005 - 1050 = 955
    EXPECT_EQ(column("method", {}), texts({"diluted", "diluted"}));
    EXPECT_THAT(results({}).output, HasSubstr("Cost: diluted"));
}

TEST_F(ResultsCommandTest, WarnOfSharesThatNeverCameIn)
{
    book({fill(Side::Sell, bank(), 20240103, 11, 100)});

    const Ended ended = results({});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_THAT(ended.errors, HasSubstr("100 shares of 000001 left that never came in"));
}

TEST_F(ResultsCommandTest, SayWhatIsWrongWithTheCommandLine)
{
    book({fill(Side::Buy, bank(), 20240103, 11, 100)});

    EXPECT_THAT(results(by("week")).errors, HasSubstr("--by is \"week\""));
    EXPECT_EQ(results(by("week")).exitCode, 2);
    EXPECT_EQ(results(texts({"--json", "--csv"})).exitCode, 2);
    EXPECT_EQ(results(texts({"--from", "20240102", "--to", "20240101"})).exitCode, 2);
    const Ended unknown = results(texts({"--code", "SH600519"}));
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_THAT(unknown.errors, HasSubstr("the ledger knows no security SH600519"));
}

TEST_F(ResultsCommandTest, AlignALongTableByItsFirstThousandRows)
{
    Executions trades;
    for (int i = 0; i < 1500; ++i) {
        trades.append(fill(Side::Buy, bank(), 20240102, 10, 100));
        trades.append(fill(Side::Sell, bank(), 20240102, i < 1200 ? 11 : 1100000, 100));
        trades[trades.size() - 2].time = trades.back().time =
            ClockTime::of(10 + i / 600, i % 600 / 10, i % 10).value();
    }
    book(trades);

    const Ended ended = results(by("sale"));

    EXPECT_EQ(std::count(ended.output.begin(), ended.output.end(), '\n'), 1503);
    EXPECT_THAT(ended.output, HasSubstr("2024-01-02  12:24:09"));
}

} // namespace TradeModule
