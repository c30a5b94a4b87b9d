#include "trademodule/import/StatementImport.h"

#include "trademodule/import/AccountCheck.h"

namespace TradeModule {

namespace {

/// The profile of the ledger with what the user says now.
ImportProfile profileFor(Ledger *ledger, const ImportOptions &options)
{
    ImportProfile profile = ImportProfile::ofText(ledger->importProfile());
    profile.add(options.reading.profile);
    return profile;
}

Statement statementOf(StatementContents *contents, const QString &path, Doubt doubt)
{
    Statement statement{path, contents->executions, contents->names};
    statement.money = contents->money;
    statement.account = contents->account;
    statement.holders = contents->holders;
    statement.cash = contents->cash;
    statement.doubt = doubt;
    return statement;
}

void refuseAnotherAccount(const StatementContents &contents, const QString &path, Ledger *ledger)
{
    try {
        AccountCheck::refuseAnother(contents, ledger->imports());
    } catch (const StatementRefused &refused) {
        Refusal refusal = refused.refusal();
        refusal.file = path;
        throw StatementRefused(refusal);
    }
}

} // namespace

ImportReport importStatement(const QString &path, const ImportOptions &options, Ledger *ledger,
                             const RowProgress &readProgress, const Ledger::Progress &progress)
{
    ReadOptions reading = options.reading;
    reading.profile = profileFor(ledger, options);
    ImportReport report;
    report.contents = readStatementFile(path, reading, readProgress);
    if (options.reading.accounts.isEmpty()) { // else the user has chosen
        refuseAnotherAccount(report.contents, path, ledger);
    }
    report.isRefused = report.contents.badRowCount > 0 && !options.skipsBadRows;
    if (report.isRefused) {
        return report;
    }
    report.holdingDisagreement =
        HoldingsCheck::of(report.contents, [ledger](const SecurityId &security, TradingDate day) {
            return ledger->heldBefore(security, day);
        });
    Statement statement = statementOf(&report.contents, path, options.doubt);
    statement.mark = options.mark;
    statement.profile = options.reading.profile.isEmpty() ? QString() : reading.profile.text();
    report.booked = ledger->book(statement, options.mode, progress);
    report.isRefused = !report.booked.doubtful.isEmpty();
    return report;
}

} // namespace TradeModule
