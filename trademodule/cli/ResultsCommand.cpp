#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/ResultTables.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/results/SecurityReckoning.h"

namespace TradeModule {

namespace {

RowStream::Format formatOf(const Invocation &invocation)
{
    const bool isJson = invocation.isSet(QStringLiteral("json"));
    const bool isCsv = invocation.isSet(QStringLiteral("csv"));
    if (isJson && isCsv) {
        throw UsageError(translated("give --json or --csv, not both"));
    }
    return isJson ? RowStream::Format::Json : isCsv ? RowStream::Format::Csv : RowStream::Format::Table;
}

DateRange daysOf(const Invocation &invocation)
{
    DateRange days;
    days.first = invocation.date(QStringLiteral("from")).value_or(days.first);
    days.last = invocation.date(QStringLiteral("to")).value_or(days.last);
    if (days.first > days.last) {
        throw UsageError(translated("--from is later than --to"));
    }
    return days;
}

std::unique_ptr<ResultTable> tableOf(const Invocation &invocation, const ResultOptions &options)
{
    const QString word = invocation.isSet(QStringLiteral("by")) ? invocation.value(QStringLiteral("by"))
                                                                : QStringLiteral("security");
    std::unique_ptr<ResultTable> table = resultTable(word, options);
    if (!table) {
        throw UsageError(
            translated("--by is \"%1\", but must be sale, trip, security, month or year").arg(word));
    }
    return table;
}

QVector<KnownSecurity> securitiesOf(const QString &code, AccountHistory *history)
{
    QVector<KnownSecurity> securities = history->securities(code);
    if (securities.isEmpty() && !code.isEmpty()) {
        throw Error(translated("the ledger knows no security %1").arg(code));
    }
    return securities;
}

void warnOfUnexplained(const KnownSecurity &security, const HeldShares &shares)
{
    if (shares.unexplained() > 0) {
        printError(translated("warning: %1 shares of %2 left that never came in; what they earned is not "
                              "counted. Import the earlier statements, too")
                       .arg(shares.unexplained())
                       .arg(security.security.code));
    }
}

/// What happened after the last of the days is left out: the books are those of that day's evening.
void reckon(const ResultOptions &options, const QString &code, AccountHistory *history, ResultTable *table)
{
    for (const KnownSecurity &security : securitiesOf(code, history)) {
        table->begin(security);
        SecurityReckoning reckoning(options.method, table);
        history->visit(security, [&](const AccountEvent &event) {
            if (event.date <= options.days.last) {
                reckoning.add(event);
            }
        });
        reckoning.finish();
        table->end(reckoning.shares());
        warnOfUnexplained(security, reckoning.shares());
    }
}

void reckonOtherMoney(const ResultOptions &options, AccountHistory *history, ResultTable *table)
{
    table->begin({});
    SecurityReckoning reckoning(options.method, table);
    history->visitOtherMoney([&reckoning](const AccountEvent &event) { reckoning.add(event); });
    table->end(reckoning.shares());
}

int results(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    ResultOptions options;
    options.days = daysOf(invocation);
    options.format = formatOf(invocation);
    Ledger ledger(invocation.existingLedger());
    options.method = ledger.costMethod();
    const QString code = invocation.value(QStringLiteral("code"));
    AccountHistory history(ledger.database());
    const std::unique_ptr<ResultTable> table = tableOf(invocation, options);
    reckon(options, code, &history, table.get());
    if (code.isEmpty()) {
        reckonOtherMoney(options, &history, table.get());
    }
    table->finish();
    if (options.format == RowStream::Format::Table) {
        print(translated("Cost: %1").arg(nameOf(options.method)) + QLatin1Char('\n'));
    }
    return Succeeded;
}

} // namespace

Command resultsCommand()
{
    return {QStringLiteral("results"),
            translated("Lists what sales earned, with fees, dividends and taxes."),
            {},
            {{QStringLiteral("by"),
              translated(
                  "A row for each sale, trip (round trip), security, month or year; security if left out."),
              QStringLiteral("WHAT")},
             Listing::jsonOption(),
             {QStringLiteral("csv"), translated("Writes CSV instead of a table.")},
             {QStringLiteral("code"), translated("Only this security."), QStringLiteral("CODE")},
             {QStringLiteral("from"), translated("First day."), QStringLiteral("yyyymmdd")},
             {QStringLiteral("to"), translated("Last day."), QStringLiteral("yyyymmdd")}},
            &results};
}

} // namespace TradeModule
