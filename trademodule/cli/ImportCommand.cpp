#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/TellCharts.h"
#include "trademodule/import/SecurityOfRow.h"
#include "trademodule/import/StatementImport.h"

#include <QFileInfo>

namespace TradeModule {

namespace {

ImportOptions importOptions(const Invocation &invocation)
{
    ImportOptions options;
    options.reading.date = invocation.date(QStringLiteral("date"));
    if (invocation.isSet(QStringLiteral("securities"))) {
        options.reading.securitiesByName = readSecurityList(invocation.value(QStringLiteral("securities")));
    }
    options.skipsBadRows = invocation.isSet(QStringLiteral("skip-bad"));
    options.mode = invocation.isSet(QStringLiteral("dry-run")) ? Ledger::Mode::DryRun : Ledger::Mode::Keep;
    return options;
}

/// A dry run makes no new ledger.
QString ledgerLocation(const Invocation &invocation, const ImportOptions &options)
{
    const QString location = invocation.ledger();
    const bool isNewFile =
        Database::kindOf(location) == Database::Kind::Sqlite && !QFileInfo::exists(location);
    return isNewFile && options.mode == Ledger::Mode::DryRun ? QStringLiteral(":memory:") : location;
}

int import(const Invocation &invocation)
{
    const QString path = invocation.arguments(1, translated("one FILE to import")).constFirst();
    const ImportOptions options = importOptions(invocation);
    Ledger ledger(ledgerLocation(invocation, options), options.mode);
    ProgressBar bar(translated("Importing"));
    const ImportReport report =
        importStatement(path, options, &ledger, [&bar](int done, int total) { bar.show(done, total); });
    print(describe(report, path, options).join(QLatin1Char('\n')) + QLatin1Char('\n'));
    if (report.isRefused) {
        return Failed;
    }
    if (options.mode == Ledger::Mode::Keep) {
        QVector<QJsonObject> notifications;
        for (const Execution &newest : report.booked.lastAdded) {
            notifications.append(changeNotification(newest));
        }
        tellCharts(invocation, notifications);
    }
    return Succeeded;
}

} // namespace

Command importCommand()
{
    return {QStringLiteral("import"),
            translated("Reads a broker's statement of executed trades into the ledger."),
            QStringLiteral("FILE"),
            {{QStringLiteral("dry-run"), translated("Shows what would happen and changes nothing.")},
             {QStringLiteral("skip-bad"),
              translated("Imports the other rows when some cannot be read; else nothing is imported.")},
             {QStringLiteral("date"), translated("Day of the trades, for a statement without dates."),
              QStringLiteral("yyyymmdd")},
             {QStringLiteral("securities"),
              translated("List code,market,name of securities, for a statement without codes."),
              QStringLiteral("LIST")}},
            &import};
}

} // namespace TradeModule
