#include "terminal/TerminalOptions.h"

#include "terminal/TerminalPaths.h"
#include "terminal/data/TradingHours.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/replay/Replay.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("TerminalOptions", source);
}

/// One option of the command line: its help, and how its value gets into the options. `take` returns
/// what is allowed when the value is not.
struct OptionRow
{
    QString name;
    QString valueName;
    QString help;
    std::function<QString(const QString &, TerminalOptions *)> take;
};

std::function<QString(const QString &, TerminalOptions *)> into(QString TerminalOptions::*member)
{
    return [member](const QString &value, TerminalOptions *options) {
        options->*member = value;
        return value.isEmpty() ? text("a text that is not empty") : QString();
    };
}

template <typename Value>
using Choices = std::vector<std::pair<QString, Value>>;

template <typename Value>
QString wordsOf(const Choices<Value> &choices)
{
    QStringList words;
    for (const auto &choice : choices) {
        words.append(choice.first);
    }
    return words.join(QStringLiteral(", "));
}

template <typename Value>
std::function<QString(const QString &, TerminalOptions *)> oneOf(const Choices<Value> &choices,
                                                                 Value TerminalOptions::*member)
{
    return [choices, member](const QString &value, TerminalOptions *options) {
        for (const auto &choice : choices) {
            if (choice.first == value) {
                options->*member = choice.second;
                return QString();
            }
        }
        return wordsOf(choices);
    };
}

Choices<ChartPeriod> periodChoices()
{
    Choices<ChartPeriod> choices;
    for (const ChartPeriod period : chartPeriods) {
        choices.emplace_back(periodWord(period), period);
    }
    return choices;
}

QString takeDay(const QString &value, TerminalOptions *options)
{
    const QDate date = QDate::fromString(value, QStringLiteral("yyyyMMdd"));
    options->day = value.toInt();
    return date.isValid() ? QString() : text("a date of the form yyyymmdd");
}

QString takeOverlays(const QString &value, TerminalOptions *options)
{
    options->overlays = value.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &word : qAsConst(options->overlays)) {
        if (findOverlayKind(word) == nullptr) {
            return text("a list, separated by commas, of %1").arg(overlayWords().join(QStringLiteral(", ")));
        }
    }
    return {};
}

QString takeSize(const QString &value, TerminalOptions *options)
{
    const auto match = QRegularExpression(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$")).match(value);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    options->size = size;
    const bool fits = match.hasMatch() && size.width() >= 640 && size.height() >= 360 &&
                      size.width() <= 8192 && size.height() <= 8192;
    return fits ? QString() : text("WIDTHxHEIGHT between 640x360 and 8192x8192, e.g. 1600x900");
}

QString takeTimeout(const QString &value, TerminalOptions *options)
{
    bool isNumber = false;
    options->timeoutSeconds = value.toInt(&isNumber);
    return isNumber && options->timeoutSeconds > 0 && options->timeoutSeconds <= 600
               ? QString()
               : text("a number of seconds from 1 to 600");
}

QString takeReplay(const QString &value, TerminalOptions *options)
{
    options->replaySpeed = value.toInt();
    return options->replaySpeed >= Replay::slowest && options->replaySpeed <= Replay::fastest
               ? QString()
               : text("a speed from %1 to %2").arg(Replay::slowest).arg(Replay::fastest);
}

QString takeReplayTo(const QString &value, TerminalOptions *options)
{
    options->replayTo = readTradingMinute(value);
    return options->replayTo != 0 ? QString() : text("a trading minute as hhmm, e.g. 1000");
}

QString takeOrder(const QString &value, TerminalOptions *options)
{
    const auto order = readPlannedOrder(value);
    options->orders.push_back(order.value());
    return order.error();
}

std::vector<OptionRow> optionRows()
{
    return {
        {QStringLiteral("data"), QStringLiteral("DIR"),
         text("Folder with securities.csv, daily/ and minute/."), into(&TerminalOptions::dataFolder)},
        {QStringLiteral("code"), QStringLiteral("CODE"), text("Security to show, e.g. 600519."),
         into(&TerminalOptions::code)},
        {QStringLiteral("period"), QStringLiteral("PERIOD"), text("day, week, month or minute."),
         oneOf(periodChoices(), &TerminalOptions::period)},
        {QStringLiteral("day"), QStringLiteral("YYYYMMDD"),
         text("Day of a minute chart; else the last recorded."), takeDay},
        {QStringLiteral("overlays"), QStringLiteral("LIST"),
         text("Overlays to show, separated by commas: %1.").arg(overlayWords().join(QStringLiteral(", "))),
         takeOverlays},
        {QStringLiteral("plugin"), QStringLiteral("PATH"), text("File of the overlay library."),
         into(&TerminalOptions::pluginFile)},
        {QStringLiteral("ledger"), QStringLiteral("FILE"),
         text("Ledger to serve; starts the trading module on it."), into(&TerminalOptions::ledger)},
        {QStringLiteral("module"), QStringLiteral("PATH"), text("Program of the trading module."),
         into(&TerminalOptions::moduleProgram)},
        {QStringLiteral("theme"), QStringLiteral("THEME"), text("light or dark."),
         oneOf<ThemeKind>(
             {{QStringLiteral("light"), ThemeKind::Light}, {QStringLiteral("dark"), ThemeKind::Dark}},
             &TerminalOptions::theme)},
        {QStringLiteral("rise"), QStringLiteral("COLOUR"), text("Colour of rising bars: red or green."),
         oneOf<RiseColour>(
             {{QStringLiteral("red"), RiseColour::Red}, {QStringLiteral("green"), RiseColour::Green}},
             &TerminalOptions::riseColour)},
        {QStringLiteral("lang"), QStringLiteral("LANGUAGE"), text("zh or en."),
         oneOf<QString>(
             {{QStringLiteral("zh"), QStringLiteral("zh")}, {QStringLiteral("en"), QStringLiteral("en")}},
             &TerminalOptions::language)},
        {QStringLiteral("snapshot"), QStringLiteral("FILE.png"),
         text("Writes a picture instead of opening a window; needs no display."),
         into(&TerminalOptions::snapshotFile)},
        {QStringLiteral("size"), QStringLiteral("WxH"), text("Size of the window or picture in pixels."),
         takeSize},
        {QStringLiteral("timeout"), QStringLiteral("SECONDS"),
         text("How long a snapshot waits for the overlays' data."), takeTimeout},
        {QStringLiteral("replay"), QStringLiteral("SPEED"),
         text(
             "Plays a recorded day as today, 1 to 600 times as fast; for --period minute, which it implies."),
         takeReplay},
        {QStringLiteral("replay-to"), QStringLiteral("HHMM"),
         text("Plays the day at once up to this minute; a snapshot stops there, else at the end."),
         takeReplayTo},
        {QStringLiteral("order"), QStringLiteral("HHMM buy|sell QUANTITY PRICE"),
         text("Places an order when the replay has come to that minute; may be given several times."),
         takeOrder},
    };
}

TerminalOptions defaultOptions(const QString &programFolder)
{
    TerminalOptions options;
    options.dataFolder = sampleDataFolder(programFolder);
    options.pluginFile = defaultPluginFile(programFolder);
    options.moduleProgram = QDir(programFolder).filePath(QStringLiteral("trademodule"));
    return options;
}

Loaded<ParsedOptions> failure(const QString &reason)
{
    return Loaded<ParsedOptions>::failure(reason);
}

QString takeValues(const QCommandLineParser &parser, const std::vector<OptionRow> &rows,
                   TerminalOptions *options)
{
    for (const OptionRow &row : rows) {
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

/// Settles what options mean for one another; returns what contradicts.
QString settleReplay(const QCommandLineParser &parser, TerminalOptions *options)
{
    const QString replay = QStringLiteral("replay");
    for (const auto &dependent : {QStringLiteral("replay-to"), QStringLiteral("order")}) {
        if (parser.isSet(dependent) && !parser.isSet(replay)) {
            return text("--%1 needs --replay").arg(dependent);
        }
    }
    if (!parser.isSet(replay)) {
        return {};
    }
    if (parser.isSet(QStringLiteral("period")) && options->period != ChartPeriod::Minute) {
        return text("--replay plays minutes: --period must be minute or be left out");
    }
    options->period = ChartPeriod::Minute;
    if (options->replayTo == 0 && !options->snapshotFile.isEmpty()) {
        options->replayTo = lastTradingMinute;
    }
    return {};
}

void addOptions(QCommandLineParser *parser, const std::vector<OptionRow> &rows)
{
    parser->setApplicationDescription(text("Chart terminal with the account's cost, trades and orders."));
    for (const OptionRow &row : rows) {
        parser->addOption(QCommandLineOption(row.name, row.help, row.valueName));
    }
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
    const std::vector<OptionRow> rows = optionRows();
    QCommandLineParser parser;
    addOptions(&parser, rows);
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
    QString error = takeValues(parser, rows, &parsed.options);
    if (error.isEmpty()) {
        error = settleReplay(parser, &parsed.options);
    }
    if (error.isEmpty() && parsed.options.dataFolder.isEmpty()) {
        error = text("--data must name a folder with securities.csv, daily/ and minute/");
    }
    return error.isEmpty() ? Loaded<ParsedOptions>(parsed) : failure(error);
}

QString takeOption(const QString &name, const QString &value, TerminalOptions *options)
{
    const std::vector<OptionRow> rows = optionRows();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&name](const OptionRow &candidate) { return candidate.name == name; });
    TerminalOptions changed = *options;
    const QString allowed = row->take(value, &changed);
    if (allowed.isEmpty()) {
        *options = changed;
    }
    return allowed;
}

} // namespace Terminal
