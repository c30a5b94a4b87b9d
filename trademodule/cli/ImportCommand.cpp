#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/ImportJson.h"
#include "trademodule/cli/ImportProgress.h"
#include "trademodule/cli/JsonReply.h"
#include "trademodule/cli/TellCharts.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/import/SecurityOfRow.h"
#include "trademodule/import/StatementImport.h"

#include <QFile>
#include <QFileInfo>

namespace TradeModule {

namespace {

ImportProfile readProfile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Error(translated("%1: cannot be read: %2").arg(path, reasonOf(file)));
    }
    return ImportProfile::ofText(QString::fromUtf8(file.readAll()));
}

Doubt doubtOf(const Invocation &invocation)
{
    const bool isSame = invocation.isSet(QStringLiteral("same"));
    const bool isNew = invocation.isSet(QStringLiteral("new"));
    if (isSame && isNew) {
        throw UsageError(translated("give --same or --new, not both"));
    }
    return isSame ? Doubt::Same : isNew ? Doubt::New : Doubt::Ask;
}

/// The day of --date, on which there must have been trades.
std::optional<TradingDate> dayOfTrades(const Invocation &invocation)
{
    const std::optional<TradingDate> date = invocation.date(QStringLiteral("date"));
    const bool isPossible = !date || (*date >= TradingDate::of(1990, 1, 1) && *date <= TradingDate::today());
    if (!isPossible) {
        throw UsageError(translated("--date is %1: no trade can be of that day").arg(date->number()));
    }
    return date;
}

ImportOptions importOptions(const Invocation &invocation)
{
    ImportOptions options;
    options.reading.date = dayOfTrades(invocation);
    if (invocation.isSet(QStringLiteral("securities"))) {
        options.reading.securitiesByName = readSecurityList(invocation.value(QStringLiteral("securities")));
    }
    if (invocation.isSet(QStringLiteral("profile"))) {
        options.reading.profile = readProfile(invocation.value(QStringLiteral("profile")));
    }
    if (invocation.isSet(QStringLiteral("account"))) {
        options.reading.accounts =
            invocation.value(QStringLiteral("account")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    }
    options.mark = invocation.value(QStringLiteral("mark"));
    options.skipsBadRows = invocation.isSet(QStringLiteral("skip-bad"));
    options.doubt = doubtOf(invocation);
    options.mode = invocation.isSet(QStringLiteral("dry-run")) ? Ledger::Mode::DryRun : Ledger::Mode::Keep;
    return options;
}

/// A dry run makes no new ledger.
QString ledgerLocation(const Invocation &invocation, const ImportOptions &options)
{
    if (options.mode == Ledger::Mode::Keep) {
        return invocation.ledgerOrNew();
    }
    const QString location = invocation.ledger();
    const bool isNewFile =
        Database::kindOf(location) == Database::Kind::Sqlite && !QFileInfo::exists(location);
    return isNewFile ? QStringLiteral(":memory:") : location;
}

/// Prints a profile to fill in, and needs no ledger.
int suggest(const QString &path, const ImportOptions &options)
{
    const StatementContents contents = readStatementFile(path, options.reading);
    print(ImportProfile::suggestion(contents.unknownColumns, contents.unknownWords));
    return Succeeded;
}

bool isForPrograms(const Invocation &invocation)
{
    const bool hasProgress = invocation.isSet(QStringLiteral("progress"));
    if (hasProgress && invocation.value(QStringLiteral("progress")) != QLatin1String("json")) {
        throw UsageError(translated("--progress is \"%1\", but must be json")
                             .arg(invocation.value(QStringLiteral("progress"))));
    }
    return hasProgress || invocation.isSet(QStringLiteral("json"));
}

ImportReport importShowing(ImportProgress *progress, const QString &path, const ImportOptions &options,
                           Ledger *ledger)
{
    static const char *const reading = QT_TR_NOOP("Reading");
    static const char *const booking = QT_TR_NOOP("Booking");
    return importStatement(
        path, options, ledger, [=](qint64 rows, qint64 of) { progress->show(reading, rows, of); },
        [=](int done, int total) { progress->show(booking, done, total); });
}

ImportReport importWithProgress(const Invocation &invocation, const QString &path,
                                const ImportOptions &options, Ledger *ledger)
{
    if (isForPrograms(invocation) && !invocation.isSet(QStringLiteral("progress"))) {
        return importStatement(path, options, ledger);
    }
    ImportProgress progress(isForPrograms(invocation) ? ImportProgress::Form::Json
                                                      : ImportProgress::Form::Bars);
    return importShowing(&progress, path, options, ledger);
}

QVector<QJsonObject> changesOf(const ImportReport &report)
{
    QVector<QJsonObject> notifications;
    for (const Execution &newest : report.booked.lastAdded) {
        if (isOnCharts(newest.security.market)) {
            notifications.append(changeNotification(newest));
        }
    }
    return notifications;
}

int import(const Invocation &invocation)
{
    const QString path = invocation.arguments(1, translated("one FILE to import")).constFirst();
    const ImportOptions options = importOptions(invocation);
    if (invocation.isSet(QStringLiteral("suggest"))) {
        return suggest(path, options);
    }
    Ledger ledger(ledgerLocation(invocation, options), options.mode);
    ledger.database()->mapNothing();
    const ImportReport report = importWithProgress(invocation, path, options, &ledger);
    const bool isKept = !report.isRefused && options.mode == Ledger::Mode::Keep;
    const QVector<QJsonObject> changes = isKept ? changesOf(report) : QVector<QJsonObject>();
    if (isForPrograms(invocation)) {
        JsonReply::write(importJson(report, path, options, whyNotTold(invocation, changes).isEmpty()));
    } else {
        printLines(describe(report, path, options));
        tellCharts(invocation, changes);
    }
    return report.isRefused ? Failed : Succeeded;
}

int importReplying(const Invocation &invocation)
{
    return isForPrograms(invocation) ? JsonReply::run([&invocation] { return import(invocation); })
                                     : import(invocation);
}

} // namespace

Command importCommand()
{
    return {
        QStringLiteral("import"),
        translated("Reads a broker's statement into the ledger."),
        QStringLiteral("FILE"),
        {{QStringLiteral("dry-run"), translated("Shows what would happen and changes nothing.")},
         {QStringLiteral("skip-bad"),
          translated("Imports the other rows when some cannot be read; else nothing is imported.")},
         {QStringLiteral("date"), translated("Day of the trades, for a statement without dates."),
          QStringLiteral("yyyymmdd")},
         {QStringLiteral("securities"),
          translated("List code,market,name of securities, for a statement without codes."),
          QStringLiteral("LIST")},
         {QStringLiteral("account"), translated("Of a statement of several accounts, this one."),
          QStringLiteral("ACCOUNT")},
         {QStringLiteral("profile"),
          translated("What the broker's own columns and words mean; kept with the ledger."),
          QStringLiteral("FILE")},
         {QStringLiteral("suggest"), translated("Prints a profile to fill in, and imports nothing.")},
         {QStringLiteral("same"), translated("Takes entries in doubt for those that the ledger has.")},
         {QStringLiteral("new"), translated("Adds entries in doubt.")},
         {QStringLiteral("mark"), translated("A word by which \"imports --mark\" finds this import again."),
          QStringLiteral("WORD")},
         {QStringLiteral("json"), translated("Writes the report as JSON, for programs.")},
         {QStringLiteral("progress"), translated("Writes lines of JSON meanwhile, too, with the word json."),
          QStringLiteral("json")}},
        &importReplying};
}

} // namespace TradeModule
