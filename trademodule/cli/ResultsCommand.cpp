#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/ResultTables.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/report/LedgerReckoning.h"

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

ResultGroup groupOf(const Invocation &invocation)
{
    if (!invocation.isSet(QStringLiteral("by"))) {
        return ResultGroup::Security;
    }
    const QString word = invocation.value(QStringLiteral("by"));
    const std::optional<ResultGroup> group = Trading::resultGroupOf(word);
    if (!group) {
        throw UsageError(
            translated("--by is \"%1\", but must be sale, trip, security, month or year").arg(word));
    }
    return *group;
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

void reckonSecurities(const ResultOptions &options, const QString &code, AccountHistory *history,
                      ResultTable *table)
{
    for (const KnownSecurity &security : securitiesOf(code, history)) {
        table->begin(security);
        const HeldShares shares = reckon(history, security, options.method, options.days.last, table);
        table->end(shares);
        warnOfUnexplained(security, shares);
    }
}

void reckonMoneyOfNone(const ResultOptions &options, AccountHistory *history, ResultTable *table)
{
    table->begin({});
    reckonOtherMoney(history, options.days.last, table);
    table->end(HeldShares(options.method));
}

int results(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    ResultOptions options;
    options.days = invocation.days();
    options.format = formatOf(invocation);
    const ResultGroup group = groupOf(invocation);
    Ledger ledger(invocation.existingLedger());
    options.method = ledger.costMethod();
    const QString code = invocation.value(QStringLiteral("code"));
    AccountHistory history(ledger.database());
    const std::unique_ptr<ResultTable> table = resultTable(group, options);
    reckonSecurities(options, code, &history, table.get());
    if (code.isEmpty()) {
        reckonMoneyOfNone(options, &history, table.get());
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
             Invocation::firstDayOption(),
             Invocation::lastDayOption()},
            &results};
}

} // namespace TradeModule
