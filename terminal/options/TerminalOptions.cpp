#include "terminal/options/TerminalOptions.h"

#include "terminal/data/TradingHours.h"
#include "terminal/options/OptionTable.h"
#include "terminal/options/TerminalPaths.h"
#include "trading/MachineLanguage.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("TerminalOptions", source);
}

QString adjustedOption()
{
    return QStringLiteral("adjusted");
}

TerminalOptions defaultOptions(const QString &programFolder)
{
    TerminalOptions options;
    options.dataFolder = sampleDataFolder(programFolder);
    options.pluginFile = defaultPluginFile(programFolder);
    options.language = Trading::machineLanguage();
    options.moduleProgram = QDir(programFolder).filePath(QStringLiteral("trademodule"));
    return options;
}

Loaded<ParsedOptions> failure(const QString &reason)
{
    return Loaded<ParsedOptions>::failure(reason);
}

QString takeValues(const QCommandLineParser &parser, TerminalOptions *options)
{
    for (const OptionRow &row : optionTable()) {
        const QStringList values = parser.values(row.name);
        options->given += values.isEmpty() ? QStringList() : QStringList(row.name);
        for (const QString &value : values) {
            const QString allowed = row.take(value, options);
            if (!allowed.isEmpty()) {
                return text("--%1 is \"%2\", but must be %3").arg(row.name, value, allowed);
            }
        }
    }
    return {};
}

QString hoursAndMinutes(Trading::ClockTime time)
{
    return time.colonText().left(5);
}

/// A picture is taken where the replay stops: returns which order that leaves out.
QString lateOrder(const TerminalOptions &options)
{
    if (options.snapshotFile.isEmpty()) {
        return {};
    }
    const auto late =
        std::find_if(options.orders.begin(), options.orders.end(), [&options](const PlannedOrder &order) {
            return order.time.minute() > options.replayTo->minute();
        });
    return late == options.orders.end()
               ? QString()
               : text("the --order of %1 would never be placed: the picture of --snapshot is taken at %2, "
                      "where the "
                      "replay stops; see --replay-to")
                     .arg(hoursAndMinutes(late->time), hoursAndMinutes(*options.replayTo));
}

/// A practice is what it was begun as; returns which option would make it another.
QString settlePractice(TerminalOptions *options)
{
    if (options->practice.isEmpty()) {
        return {};
    }
    for (const auto &other : {QStringLiteral("data"), QStringLiteral("ledger"), QStringLiteral("code"),
                              QStringLiteral("period"), QStringLiteral("day"), QStringLiteral("replay-to")}) {
        if (options->given.contains(other)) {
            return text("--practice says itself what --%1 would: leave that out").arg(other);
        }
    }
    return {};
}

/// Settles what options mean for one another; returns what contradicts.
QString settleReplay(const QCommandLineParser &parser, TerminalOptions *options)
{
    const QString replay = QStringLiteral("replay");
    for (const auto &dependent : {QStringLiteral("replay-to"), QStringLiteral("order")}) {
        if (parser.isSet(dependent) && !parser.isSet(replay) && options->practice.isEmpty()) {
            return text("--%1 needs --replay").arg(dependent);
        }
    }
    if (!parser.isSet(replay) || !options->practice.isEmpty()) {
        return {};
    }
    if (parser.isSet(QStringLiteral("period")) && options->period != ChartPeriod::Minute) {
        return text("--replay plays minutes: --period must be minute or be left out");
    }
    options->period = ChartPeriod::Minute;
    if (!options->replayTo && !options->snapshotFile.isEmpty()) {
        options->replayTo = Trading::ClockTime::ofMinute(lastTradingMinute);
    }
    return lateOrder(*options);
}

void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(text("Chart terminal with the account's cost, trades and orders.\n"
                                           "To bring bars of your own: tradeterminal bars import --help."));
    for (const OptionRow &row : optionTable()) {
        parser->addOption(QCommandLineOption(row.name, row.help, row.valueName));
    }
    parser->addOption(QCommandLineOption(
        adjustedOption(),
        text("Shows prices before ex-dates adjusted, by actions/CODE.csv of the data folder.")));
    parser->addOption(
        QCommandLineOption(QStringLiteral("no-broker"), text("Does not start a message broker.")));
    parser->addOption(
        QCommandLineOption(QStringLiteral("hide-amounts"), text("Hides the account's cost and quantities.")));
    parser->addHelpOption();
    parser->addVersionOption();
}

} // namespace

Loaded<ParsedOptions> parseOptions(const QStringList &arguments, const QString &programFolder)
{
    QCommandLineParser parser;
    addOptions(&parser);
    if (!parser.parse(arguments)) {
        return failure(parser.errorText());
    }
    ParsedOptions parsed;
    parsed.options = defaultOptions(programFolder);
    parsed.helpText = parser.helpText();
    if (parser.isSet(QStringLiteral("help"))) {
        parsed.end = OptionsEnd::ShowHelp;
        return parsed;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        parsed.end = OptionsEnd::ShowVersion;
        return parsed;
    }
    if (!parser.positionalArguments().isEmpty()) {
        return failure(
            text("\"%1\" is no option; see --help").arg(parser.positionalArguments().constFirst()));
    }
    parsed.options.startsBroker = !parser.isSet(QStringLiteral("no-broker"));
    parsed.options.hidesAmounts = parser.isSet(QStringLiteral("hide-amounts"));
    if (parser.isSet(adjustedOption())) {
        parsed.options.prices = PriceView::Adjusted;
        parsed.options.given.append(adjustedOption());
    }
    QString error = takeValues(parser, &parsed.options);
    if (error.isEmpty()) {
        error = settlePractice(&parsed.options);
    }
    if (error.isEmpty()) {
        error = settleReplay(parser, &parsed.options);
    }
    if (error.isEmpty() && parsed.options.dataFolder.isEmpty() && parsed.options.practice.isEmpty() &&
        nameAChart(parsed.options)) {
        error = text("--data must name a folder with securities.csv, daily/ and minute/");
    }
    return error.isEmpty() ? Loaded<ParsedOptions>(parsed) : failure(error);
}

bool nameAChart(const TerminalOptions &options)
{
    static const QStringList names = {
        QStringLiteral("data"),   QStringLiteral("ledger"),   QStringLiteral("code"),
        QStringLiteral("period"), QStringLiteral("day"),      QStringLiteral("overlays"),
        QStringLiteral("replay"), QStringLiteral("snapshot"), QStringLiteral("practice")};
    return std::any_of(names.begin(), names.end(),
                       [&options](const QString &name) { return options.given.contains(name); });
}

QString takeOption(const QString &name, const QString &value, TerminalOptions *options)
{
    TerminalOptions changed = *options;
    const QString allowed = findOption(name)->take(value, &changed);
    if (allowed.isEmpty()) {
        *options = changed;
    }
    return allowed;
}

QMap<QString, QString> rememberedWords(const TerminalOptions &options)
{
    QMap<QString, QString> words;
    for (const OptionRow &row : optionTable()) {
        if (row.word) {
            words.insert(row.name, row.word(options));
        }
    }
    return words;
}

} // namespace Terminal
