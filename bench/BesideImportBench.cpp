// How long questions take while another process imports 1,000,000 rows into the same ledger: 600 questions
// for the trades of today a second over 500 securities, each at its time whether or not the one before is
// answered, and none with an answer that is kept. What stands beside the figure is no floor but what a user
// does not notice. With
// --json it is told to programs; a location names another ledger than a new SQLite file, which must be empty.

#include "bench/support/RawPeers.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/ledger/Ledger.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace TradeModule;
using Clock = std::chrono::steady_clock;

constexpr int securities = 500;
constexpr int tradesOfToday = 20; // of each security
constexpr int importedRows = 1000000;
constexpr int questionsASecond = 600;
constexpr double allowed = 20000; // microseconds

SecurityId security(int number)
{
    return {QString::number(600000 + number % securities), Market::Shanghai};
}

Execution trade(int number, TradingDate date)
{
    const int minute = number / securities % 200;
    Execution execution{
        security(number),          Side::Buy, date, ClockTime::of(9 + minute / 60, minute % 60).value(),
        Money::ofYuan(10).value(), 100};
    execution.amount = Money::ofYuan(1000).value();
    execution.fee = Money::ofYuan(5).value();
    execution.dealNo = QString::number(number);
    return execution;
}

Statement statement(int rows, TradingDate first)
{
    Statement statement{QStringLiteral("statement.csv"), {}, {}};
    statement.executions.reserve(rows);
    constexpr int rowsOfADay = 50000;
    for (int i = 0; i < rows; ++i) {
        statement.executions.append(trade(i, first.plusDays(i / rowsOfADay)));
    }
    return statement;
}

/// Another process: books when it is told to, and says when it is done by ending.
void import(const QString &location, int told)
{
    int count = 1;
    char name[] = "import";
    char *arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    const Statement many = statement(importedRows, TradingDate::of(2020, 1, 1).value());
    char go = 0;
    if (::read(told, &go, 1) == 1) {
        Ledger(location).book(many, Ledger::Mode::Keep);
        if (::write(told, &go, 1) != 1) {
            std::abort();
        }
    }
}

double microsecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

QJsonObject question(int number)
{
    return {{QStringLiteral("cmd"), QStringLiteral("TodayTrade")},
            {QStringLiteral("stkcode"), security(number).code},
            {QStringLiteral("market"), QStringLiteral("SH")},
            {QStringLiteral("number"), number}};
}

/// What each of the questions took from the time at which it was due, until `isOver`.
template <typename IsOver>
std::vector<double> ask(TradeAnswers *answers, IsOver isOver)
{
    std::vector<double> times;
    const Clock::time_point start = Clock::now();
    for (int i = 0; !isOver(); ++i) {
        const auto due = start + std::chrono::microseconds(1000000LL * i / questionsASecond);
        std::this_thread::sleep_until(due);
        if (answers->answer(question(i)).size() < tradesOfToday * 100) {
            std::fputs("a question was not answered\n", stderr);
            std::exit(EXIT_FAILURE);
        }
        times.push_back(microsecondsSince(due));
    }
    return times;
}

bool isDone(int descriptor)
{
    pollfd entry{descriptor, POLLIN, 0};
    return ::poll(&entry, 1, 0) != 0;
}

double percentile(std::vector<double> *times, double share)
{
    const auto place =
        times->begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(times->size() - 1));
    std::nth_element(times->begin(), place, times->end());
    return *place;
}

void print(const char *when, std::vector<double> times)
{
    std::printf("  %-12s %6zu questions   p50 %7.0f   p99 %7.0f   longest %7.0f us\n", when, times.size(),
                percentile(&times, 0.5), percentile(&times, 0.99), percentile(&times, 1));
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    const bool isForPrograms = argc > 1 && qstrcmp(argv[1], "--json") == 0;
    const bool hasLocation = argc > 1 && !isForPrograms;
    const QString location =
        hasLocation ? QString::fromLocal8Bit(argv[1]) : directory.filePath(QStringLiteral("account.db"));
    Raw::Pair pair;
    const Raw::Process importing([&] {
        pair.near.close();
        import(location, pair.far.number());
    });
    pair.far.close();

    const QCoreApplication application(argc, argv);
    Ledger ledger(location);
    ledger.book(statement(securities * tradesOfToday, TradingDate::today()), Ledger::Mode::Keep);
    PaperExchange exchange(&ledger);
    TradeAnswers answers(&ledger, &exchange);
    constexpr int questionsAlone = 5 * questionsASecond;
    int asked = 0;
    const std::vector<double> alone = ask(&answers, [&asked] { return asked++ == questionsAlone; });
    if (::write(pair.near.number(), "g", 1) != 1) {
        return EXIT_FAILURE;
    }
    const Clock::time_point begun = Clock::now();
    std::vector<double> beside = ask(&answers, [&pair] { return isDone(pair.near.number()); });
    const double p99 = percentile(&beside, 0.99);
    if (isForPrograms) {
        std::printf(
            "{\"benchmarks\":[{\"name\":\"TodayTrade, 600 a second beside an import, 99 of 100 within\","
            "\"real_time\":%.3f,\"time_unit\":\"us\",\"median_us\":%.3f,\"floor_us\":%.3f,"
            "\"ratio\":%.4f}]}\n",
            p99, p99, allowed, p99 / allowed);
        return EXIT_SUCCESS;
    }
    std::printf("%d questions a second over %d securities\n", questionsASecond, securities);
    print("alone", alone);
    print("beside", beside);
    std::printf("  the import of %d rows took %.1f s\n", importedRows, microsecondsSince(begun) / 1e6);
    return EXIT_SUCCESS;
}
