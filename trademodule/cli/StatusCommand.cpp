#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/StatusQuestion.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/JsonReply.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/StatusMetrics.h"
#include "trademodule/cli/StatusWords.h"
#include "trademodule/cli/UsageError.h"

namespace TradeModule {

using Trading::ModuleStatus;

namespace {

QString timeText(const QDateTime &time)
{
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString quoteText(const ModuleStatus &status)
{
    if (!status.lastQuote) {
        return translated("none");
    }
    const ModuleStatus::LastQuote &quote = *status.lastQuote;
    return translated("%1.%2, bar of %3 %4, heard %5")
        .arg(quote.security.code, marketLetters(quote.security.market), quote.date.dashedText(),
             quote.time.colonText(), timeText(quote.heard));
}

QString millisecondsText(double microseconds)
{
    return QString::number(microseconds / 1000, 'f', 3);
}

/// A table without a header: what, and how it is.
void printRows(const QVector<QStringList> &rows)
{
    const QVector<int> widths = columnWidths(rows);
    for (const QStringList &row : rows) {
        print(alignedLine(row, widths));
    }
}

void printModule(const Trading::TradePresence &module)
{
    const QString version = module.version.isEmpty() ? translated("not told") : module.version;
    printRows({{translated("version"), version},
               {translated("process"), translated("%1 on %2").arg(module.process).arg(module.host)},
               {translated("serves since"), timeText(module.since)},
               {translated("ledger"), module.ledger},
               {translated("fence"), QString::number(module.fence)},
               {translated("orders"), module.isReadOnly ? translated("not taken: the ledger can only be read")
                                                        : translated("taken")}});
}

void printMarket(const ModuleStatus &status)
{
    const QString open = status.ledgerTrouble.isEmpty()
                             ? QString::number(status.openOrders)
                             : translated("not known: %1").arg(status.ledgerTrouble);
    printRows(
        {{translated("open orders"), open},
         {translated("last quote"), quoteText(status)},
         {translated("quotes"),
          translated("%1, of which %2 wait for the ledger").arg(status.quotes).arg(status.waitingQuotes)}});
}

void printAnswers(const QVector<ModuleStatus::Answers> &answers)
{
    Listing listing({QT_TR_NOOP("answers to"), QT_TR_NOOP("count"), QT_TR_NOOP("failures"),
                     QT_TR_NOOP("mean ms"), QT_TR_NOOP("longest ms")},
                    false);
    for (const ModuleStatus::Answers &row : answers) {
        const auto mean =
            static_cast<double>(row.taken.count()) / static_cast<double>(std::max(row.count, 1LL));
        listing.add({row.command, QString::number(row.count), QString::number(row.failures),
                     millisecondsText(mean), millisecondsText(static_cast<double>(row.longest.count()))});
    }
    listing.finish();
}

void printForPeople(const BusStatus &found, const QString &bus)
{
    print(translated("bus of %1: %2").arg(bus, translated(wordsOf(found.standing).sentence)) +
          QLatin1Char('\n'));
    if (found.status) {
        printModule(found.status->module);
    }
    if (found.status && found.isTold) {
        printMarket(*found.status);
        printAnswers(found.status->answers);
    }
}

QJsonObject jsonOf(const BusStatus &found, const QString &bus)
{
    QJsonObject object{{QStringLiteral("bus"), bus},
                       {QStringLiteral("standing"), QLatin1String(wordsOf(found.standing).word)}};
    if (found.status) {
        object[QStringLiteral("status")] = found.status->toJson();
    }
    return object;
}

int showStatus(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    const QString bus = invocation.bus();
    if (bus.isEmpty()) {
        throw UsageError(translated("give the directory of the terminal with --bus DIR"));
    }
    const BusStatus found = askStatus(bus);
    if (invocation.isSet(QStringLiteral("json"))) {
        JsonReply::write(jsonOf(found, bus));
    } else if (!invocation.isSet(QStringLiteral("metrics"))) {
        printForPeople(found, bus);
    }
    if (invocation.isSet(QStringLiteral("metrics"))) {
        writeMetrics(invocation.value(QStringLiteral("metrics")), metricsOf(found, bus));
    }
    return wordsOf(found.standing).exitCode;
}

} // namespace

Command statusCommand()
{
    return {
        QStringLiteral("status"),
        translated("Tells how things stand on a bus; ends with 3: ledger away, 4: module does not answer, "
                   "5: nobody serves, 6: no bus."),
        {},
        {Listing::jsonOption(),
         {QStringLiteral("metrics"),
          translated("Writes it into a file for Prometheus's collector of text files, in one step."),
          QStringLiteral("FILE")}},
        &showStatus};
}

} // namespace TradeModule
