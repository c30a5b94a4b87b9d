// Questions to a ledger of 1,000,000 executions on SQLite. The floor of reading is the same database
// handing over the same rows from a table that holds nothing else; the floor of an answer is reading.
#include "bench/support/Paired.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/results/SecurityReckoning.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace TradeModule;

constexpr int allExecutions = 1000000;
constexpr int securities = 100;
constexpr int years = 10;
constexpr int rowsOfAYear = allExecutions / securities / years;

/// The ledger, filled once: every security is traded every year.
class FullLedger
{
public:
    FullLedger()
        : m_ledger(location()),
          m_raw(location()),
          m_exchange(&m_ledger),
          m_answers(&m_ledger, &m_exchange)
    {
        fill();
        if (m_ledger.trades(security(), year()).size() != rowsOfAYear || readYearAlone() != rowsOfAYear) {
            std::fputs("the ledger was not filled as it should be\n", stderr);
            std::exit(1);
        }
    }

    static FullLedger &instance()
    {
        static FullLedger ledger;
        return ledger;
    }

    static SecurityId security() { return {QStringLiteral("600050"), Market::Shanghai}; }

    static DateRange year()
    {
        return {TradingDate::of(2020, 1, 1).value(), TradingDate::of(2020, 12, 31).value()};
    }

    Ledger &ledger() { return m_ledger; }
    TradeAnswers &answers() { return m_answers; }

    /// The floor: every value of the year's rows, and nothing looked for.
    int readYearAlone()
    {
        Rows rows = m_raw.run(QStringLiteral("SELECT * FROM year_alone"));
        int count = 0;
        while (rows.next()) {
            for (int column = 0; column < 11; ++column) {
                benchmark::DoNotOptimize(rows.value(column));
            }
            ++count;
        }
        return count;
    }

    /// The floor of a holding: one row by its key.
    void readHoldingAlone()
    {
        Rows row = m_raw.run(QStringLiteral("SELECT quantity, cost FROM holding WHERE security_id = 51"));
        benchmark::DoNotOptimize(row.next());
        benchmark::DoNotOptimize(row.value(1));
    }

    /// The floor of results: what they are reckoned from, in order, and nothing reckoned.
    void readAllAlone()
    {
        Rows rows =
            m_raw.run(QStringLiteral("SELECT side, trade_date, trade_time, price, quantity, amount, fee "
                                     "FROM execution ORDER BY security_id, trade_date, trade_time, id"));
        while (rows.next()) {
            for (int column = 0; column < 7; ++column) {
                benchmark::DoNotOptimize(rows.value(column));
            }
        }
    }

    /// The profit of everything.
    Money reckonAll(CostMethod method)
    {
        Profit profit;
        AccountHistory history(m_ledger.database());
        for (const KnownSecurity &security : history.securities()) {
            SecurityReckoning reckoning(method, &profit);
            history.visit(security, [&reckoning](const AccountEvent &event) { reckoning.add(event); });
            reckoning.finish();
        }
        return profit.sum.profit;
    }

private:
    struct Profit : ResultsVisitor
    {
        void book(TradingDate /*day*/, const Figures &figures) override { sum += figures; }

        Figures sum;
    };

    QString location() const { return m_directory.filePath(QStringLiteral("account.db")); }

    void fill()
    {
        Transaction transaction(&m_raw);
        for (const char *statement : {
                 "WITH RECURSIVE n (i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 99) "
                 "INSERT INTO security (id, code, market) SELECT i + 1, 600000 + i, 'SH' FROM n",
                 "WITH RECURSIVE n (i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 999999) "
                 "INSERT INTO execution (security_id, side, trade_date, trade_time, price, quantity, amount, "
                 "fee, "
                 "order_no, deal_no) SELECT i % 100 + 1, CASE i / 100 % 2 WHEN 0 THEN 'B' ELSE 'S' END, "
                 "20150101 + i / 100000 * 10000 + i % 1200 / 100 * 100 + i % 28, 10000000 + i % 1000, "
                 "100000, 100, "
                 "10000000, 50000, i, i FROM n",
                 "INSERT INTO holding SELECT id, 1000000, 10050000, 0 FROM security",
                 "CREATE TABLE year_alone AS SELECT s.code, s.market, e.side, e.trade_date, e.trade_time, "
                 "e.price, "
                 "e.quantity, e.amount, e.fee, e.order_no, e.deal_no FROM security s JOIN execution e "
                 "ON e.security_id = s.id WHERE s.code = '600050' AND e.trade_date BETWEEN 20200101 AND "
                 "20201231",
             }) {
            m_raw.run(QString::fromLatin1(statement));
        }
        transaction.commit();
    }

    QTemporaryDir m_directory;
    Ledger m_ledger;
    Database m_raw;
    PaperExchange m_exchange;
    TradeAnswers m_answers;
};

QJsonObject question(const char *command)
{
    return {{QStringLiteral("cmd"), QLatin1String(command)},
            {QStringLiteral("stkcode"), FullLedger::security().code},
            {QStringLiteral("market"), QStringLiteral("SH")},
            {QStringLiteral("start"), QStringLiteral("20200101")},
            {QStringLiteral("end"), QStringLiteral("20201231")}};
}

/// The question once more, but one that was not asked before: else the answer that is kept would be timed.
const QJsonObject &unasked(QJsonObject *question)
{
    static int number = 0;
    (*question)[QStringLiteral("number")] = ++number;
    return *question;
}

Executions readYear(FullLedger *full)
{
    return full->ledger().trades(FullLedger::security(), FullLedger::year());
}

void yearOfASecurity(benchmark::State &state)
{
    FullLedger &full = FullLedger::instance();
    Paired(state).run([&] { full.readYearAlone(); }, [&] { benchmark::DoNotOptimize(readYear(&full)); });
}

void historyAnswer(benchmark::State &state)
{
    FullLedger &full = FullLedger::instance();
    QJsonObject history = question("HistoryTrade");
    Paired(state).run([&] { benchmark::DoNotOptimize(readYear(&full)); },
                      [&] { benchmark::DoNotOptimize(full.answers().answer(unasked(&history))); });
}

/// After a change every window asks the same; its floor is the answer to one of them.
void historyAnswers(benchmark::State &state)
{
    constexpr int terminals = 100;
    FullLedger &full = FullLedger::instance();
    QJsonObject history = question("HistoryTrade");
    const auto answer = [&](int terminal) {
        history[QStringLiteral("screenId")] = QString::number(terminal);
        benchmark::DoNotOptimize(full.answers().answer(history));
    };
    Paired(state).run([&] { benchmark::DoNotOptimize(full.answers().answer(unasked(&history))); },
                      [&] {
                          unasked(&history);
                          for (int terminal = 0; terminal < terminals; ++terminal) {
                              answer(terminal);
                          }
                      });
}

void costAnswer(benchmark::State &state)
{
    FullLedger &full = FullLedger::instance();
    QJsonObject cost = question("HolderCostPrice");
    Paired(state).run([&] { full.readHoldingAlone(); },
                      [&] { benchmark::DoNotOptimize(full.answers().answer(unasked(&cost))); });
}

void results(benchmark::State &state)
{
    FullLedger &full = FullLedger::instance();
    const auto method = static_cast<CostMethod>(state.range(0));
    state.SetLabel(wordOf(method).toStdString());
    Paired(state).run([&] { full.readAllAlone(); },
                      [&] { benchmark::DoNotOptimize(full.reckonAll(method)); });
}

BENCHMARK(yearOfASecurity)->Name("rows of a year of a security, 1,000 of 1,000,000")->UseManualTime();
BENCHMARK(historyAnswer)->Name("HistoryTrade of that year, from question to text")->UseManualTime();
BENCHMARK(historyAnswers)->Name("HistoryTrade of that year, to 100 terminals at once")->UseManualTime();
BENCHMARK(costAnswer)->Name("HolderCostPrice")->UseManualTime();
BENCHMARK(results)
    ->Name("results of 1,000,000")
    ->DenseRange(static_cast<int>(CostMethod::Average), static_cast<int>(CostMethod::Fifo))
    ->UseManualTime();

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
