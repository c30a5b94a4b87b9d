#include "trademodule/report/KeptResults.h"
#include "tests/trademodule/support/ExchangeFixture.h"

#include <QElapsedTimer>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class KeptResultsTest : public PaperExchangeOfADay
{
protected:
    void SetUp() override
    {
        PaperExchangeOfADay::SetUp();
        if (!IsSkipped()) {
            m_results.emplace(&ledger());
        }
    }

    KeptResults &results() { return *m_results; }

    KeptResults::Part part(const KeptResults::Wish &wish, qint64 first = 0, qint64 count = 1000)
    {
        results().bringUpToDate();
        return results().part(wish, first, count);
    }

    /// What a column says, in the order of the lines.
    std::vector<std::string> column(ResultField field, const KeptResults::Wish &wish)
    {
        std::vector<std::string> texts;
        for (const ResultLine &line : part(wish).lines) {
            texts.push_back(line.text(field).toStdString());
        }
        return texts;
    }

    /// The bank's first round trip earns 1095 - 1005 = 90, half of its next one 47.50; the liquor loses 10.
    void bookTrades()
    {
        book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 11, 100),
              fill(Side::Buy, bank(), 20240201, 10, 200, QStringLiteral("1")),
              fill(Side::Sell, bank(), 20250201, 10.55, 100), fill(Side::Buy, liquor(), 20240103, 1700, 100),
              fill(Side::Sell, liquor(), 20240204, 1700, 100)});
    }

private:
    std::optional<KeptResults> m_results;
};

} // namespace

TEST_F(KeptResultsTest, AreEmptyOfAnEmptyLedger)
{
    const KeptResults::Part none = part({ResultGroup::Sale});

    EXPECT_THAT(none.lines, IsEmpty());
    EXPECT_EQ(none.count, 0);
    EXPECT_EQ(none.sum.profit, Money());
}

TEST_F(KeptResultsTest, ListWhatTheCommandLists)
{
    bookTrades();

    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Security}), ElementsAre("137.50", "-10.00"));
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Sale}), ElementsAre("90.00", "47.50", "-10.00"));
    EXPECT_THAT(column(ResultField::Closed, {ResultGroup::Trip}),
                ElementsAre("2024-01-03", "", "2024-02-04"));
    EXPECT_THAT(column(ResultField::Month, {ResultGroup::Month}),
                ElementsAre("2024-01", "2024-02", "2025-02"));
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Month}), ElementsAre("90.00", "-10.00", "47.50"));
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Year}), ElementsAre("80.00", "47.50"));
}

TEST_F(KeptResultsTest, AreInTheOrderOfAColumn)
{
    bookTrades();

    const KeptResults::Wish rising{ResultGroup::Sale, {}, ResultField::Profit, false};
    const KeptResults::Wish falling{ResultGroup::Sale, {}, ResultField::Profit, true};
    const KeptResults::Wish byCode{ResultGroup::Sale, {}, ResultField::Code, true};

    EXPECT_THAT(column(ResultField::Profit, rising), ElementsAre("-10.00", "47.50", "90.00"));
    EXPECT_THAT(column(ResultField::Profit, falling), ElementsAre("90.00", "47.50", "-10.00"));
    EXPECT_THAT(column(ResultField::Profit, byCode), ElementsAre("-10.00", "90.00", "47.50"));
}

TEST_F(KeptResultsTest, PutWhatIsNotThereFirst)
{
    bookTrades();

    EXPECT_THAT(column(ResultField::Closed, {ResultGroup::Trip, {}, ResultField::Closed}),
                ElementsAre("", "2024-01-03", "2024-02-04"));
    EXPECT_THAT(column(ResultField::CostPrice, {ResultGroup::Security, {}, ResultField::CostPrice}),
                ElementsAre("", "10.025"));
}

TEST_F(KeptResultsTest, GiveAPartAndTheCountAndSumOfAll)
{
    bookTrades();

    const KeptResults::Part second = part({ResultGroup::Sale}, 1, 1);

    ASSERT_EQ(second.lines.size(), 1U);
    EXPECT_EQ(second.lines[0].figures.profit, yuan(47.50));
    EXPECT_EQ(second.count, 3);
    EXPECT_EQ(second.sum.profit, yuan(127.50));
    EXPECT_EQ(second.sum.fees, yuan(15));
    EXPECT_THAT(part({ResultGroup::Sale}, 3, 10).lines, IsEmpty());
}

TEST_F(KeptResultsTest, AreOfOneSecurityWhereACodeIsAskedFor)
{
    bookTrades();

    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Sale, liquor().code}), ElementsAre("-10.00"));
    EXPECT_EQ(part({ResultGroup::Year, liquor().code}).sum.profit, yuan(-10));
}

TEST_F(KeptResultsTest, KeepTheirNumberWhileTheLedgerStays)
{
    bookTrades();
    const qint64 number = results().bringUpToDate();

    exchange().take(bar(1001, 10, 10, 10)); // a quote changes the ledger's clock, and nothing that was earned

    EXPECT_EQ(results().bringUpToDate(), number);
}

TEST_F(KeptResultsTest, FollowATradeOfThePaperExchange)
{
    bookTrades();
    const qint64 number = results().bringUpToDate();

    sell(11, 100);
    exchange().take(bar(1001, 11, 11, 11));

    EXPECT_NE(results().bringUpToDate(), number);
    // 1100 - 5 commission - 0.55 stamp duty - 0.01 transfer - 1002.50
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Sale}),
                ElementsAre("90.00", "47.50", "91.94", "-10.00"));
}

TEST_F(KeptResultsTest, FollowAnImportAndItsUndoing)
{
    bookTrades();
    results().bringUpToDate();

    book({fill(Side::Sell, bank(), 20250202, 11, 100)});
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Security}), ElementsAre("230.00", "-10.00"));

    ledger().undoImport(2);
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Security}), ElementsAre("137.50", "-10.00"));

    book({fill(Side::Sell, bank(), 20250202, 12, 100)}); // it gets the number of the one that went
    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Security}), ElementsAre("330.00", "-10.00"));
}

TEST_F(KeptResultsTest, FollowTheMethod)
{
    bookTrades();
    results().bringUpToDate();

    ledger().setCostMethod(CostMethod::Diluted);

    EXPECT_THAT(column(ResultField::Profit, {ResultGroup::Security}), ElementsAre("90.00", "-10.00"));
    EXPECT_THAT(column(ResultField::Method, {ResultGroup::Security}), ElementsAre("diluted", "diluted"));
    EXPECT_EQ(results().method(), CostMethod::Diluted);
}

TEST_F(KeptResultsTest, NameTheSecuritiesOfWhichStatementsAreMissing)
{
    book({fill(Side::Sell, bank(), 20240103, 11, 100)});
    results().bringUpToDate();

    EXPECT_EQ(results().incompleteCodes(), QStringList(bank().code));
}

/// Beside the reckoning itself, a question costs next to nothing.
TEST_F(KeptResultsTest, AnswerFurtherQuestionsOffTheSameReckoning)
{
    Executions many;
    for (int i = 0; i < 3000; ++i) {
        many.append(fill(i % 2 == 0 ? Side::Buy : Side::Sell, bank(), day(20100101).plusDays(i), 10, 100));
    }
    book(many);
    const auto timeOf = [](const std::function<void()> &work) {
        QElapsedTimer clock;
        clock.start();
        work();
        return clock.nsecsElapsed();
    };
    const KeptResults::Wish wish{ResultGroup::Sale, {}, ResultField::Profit, true};

    const qint64 first = timeOf([&] { part(wish, 0, 10); });
    const qint64 again = timeOf([&] { part(wish, 100, 10); });

    EXPECT_EQ(part(wish, 0, 10).count, 1500);
    EXPECT_LT(again * 3, first);
}

} // namespace TradeModule
