#include "terminal/options/OptionTable.h"

#include "terminal/options/TerminalOptions.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/replay/Replay.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Terminal {

namespace {

/// In the language that the program was started in: the table is made once.
QString text(const char *source)
{
    return QCoreApplication::translate("TerminalOptions", source);
}

TakeOption into(QString TerminalOptions::*member)
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
TakeOption oneOf(const Choices<Value> &choices, Value TerminalOptions::*member)
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

/// The word of the choice that the options have.
template <typename Value>
OptionWord wordIn(const Choices<Value> &choices, Value TerminalOptions::*member)
{
    return [choices, member](const TerminalOptions &options) {
        const auto choice =
            std::find_if(choices.begin(), choices.end(), [&options, member](const auto &candidate) {
                return candidate.second == options.*member;
            });
        return choice == choices.end() ? QString() : choice->first;
    };
}

Choices<bool> switches()
{
    return {{QStringLiteral("on"), true}, {QStringLiteral("off"), false}};
}

/// An option that is one of a few words, and is remembered.
template <typename Value>
OptionRow choiceRow(const QString &name, const QString &valueName, const QString &help,
                    const Choices<Value> &choices, Value TerminalOptions::*member)
{
    return {name, valueName, help, oneOf(choices, member), wordIn(choices, member)};
}

Choices<ChartPeriod> periods()
{
    Choices<ChartPeriod> choices;
    for (const ChartPeriod period : chartPeriods) {
        choices.emplace_back(periodWord(period), period);
    }
    return choices;
}

Choices<ThemeKind> themes()
{
    return {{QStringLiteral("light"), ThemeKind::Light}, {QStringLiteral("dark"), ThemeKind::Dark}};
}

Choices<RiseColour> riseColours()
{
    return {{QStringLiteral("red"), RiseColour::Red}, {QStringLiteral("green"), RiseColour::Green}};
}

Choices<QString> languages()
{
    return {{QStringLiteral("zh"), QStringLiteral("zh")}, {QStringLiteral("en"), QStringLiteral("en")}};
}

QString takeDay(const QString &value, TerminalOptions *options)
{
    options->day = Trading::TradingDate::ofText(value);
    return options->day ? QString() : text("a date of the form yyyymmdd");
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

QString takeResults(const QString &value, TerminalOptions *options)
{
    options->results = Trading::resultGroupOf(value);
    return options->results ? QString() : text("security, month, year, sale or trip");
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
    const int seconds = value.toInt(); // 0 when it is no number
    options->timeout = std::chrono::seconds(seconds);
    return seconds >= 1 && seconds <= 600 ? QString() : text("a number of seconds from 1 to 600");
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
    return options->replayTo ? QString() : text("a trading minute as hhmm, e.g. 1000");
}

QString takeOrder(const QString &value, TerminalOptions *options)
{
    const auto order = readPlannedOrder(value);
    options->orders.push_back(order.value());
    return order.error();
}

} // namespace

const std::vector<OptionRow> &optionTable()
{
    static const std::vector<OptionRow> table = {
        {QStringLiteral("data"), QStringLiteral("DIR"),
         text("Folder with securities.csv, daily/ and minute/."), into(&TerminalOptions::dataFolder)},
        {QStringLiteral("code"), QStringLiteral("CODE"), text("Security to show, e.g. 600519."),
         into(&TerminalOptions::code), [](const TerminalOptions &options) { return options.code; }},
        choiceRow(QStringLiteral("period"), QStringLiteral("PERIOD"), text("day, week, month or minute."),
                  periods(), &TerminalOptions::period),
        {QStringLiteral("day"), QStringLiteral("YYYYMMDD"),
         text("Day of a minute chart; else the last recorded."), takeDay},
        {QStringLiteral("overlays"), QStringLiteral("LIST"),
         text("Overlays to show, separated by commas: %1.").arg(overlayWords().join(QStringLiteral(", "))),
         takeOverlays,
         [](const TerminalOptions &options) { return options.overlays.join(QLatin1Char(',')); }},
        choiceRow(QStringLiteral("trades"), QStringLiteral("SWITCH"),
                  text("on or off: every trade at its minute and price, and open orders; a picture has them "
                       "when this says on."),
                  switches(), &TerminalOptions::showsTrades),
        {QStringLiteral("results"), QStringLiteral("WHAT"),
         text("Opens the list of results: by security, month, year, sale or trip."), takeResults},
        {QStringLiteral("plugin"), QStringLiteral("PATH"), text("File of the overlay library."),
         into(&TerminalOptions::pluginFile)},
        {QStringLiteral("ledger"), QStringLiteral("FILE"),
         text("Ledger to serve; starts the trading module on it."), into(&TerminalOptions::ledger)},
        {QStringLiteral("module"), QStringLiteral("PATH"), text("Program of the trading module."),
         into(&TerminalOptions::moduleProgram)},
        choiceRow(QStringLiteral("theme"), QStringLiteral("THEME"), text("light or dark."), themes(),
                  &TerminalOptions::theme),
        choiceRow(QStringLiteral("rise"), QStringLiteral("COLOUR"),
                  text("Colour of rising bars: red or green."), riseColours(), &TerminalOptions::riseColour),
        choiceRow(QStringLiteral("lang"), QStringLiteral("LANGUAGE"), text("zh or en."), languages(),
                  &TerminalOptions::language),
        {QStringLiteral("snapshot"), QStringLiteral("FILE.png"),
         text("Writes a picture instead of opening a window; needs no display."),
         into(&TerminalOptions::snapshotFile)},
        {QStringLiteral("size"), QStringLiteral("WxH"), text("Size of the window or picture in pixels."),
         takeSize},
        {QStringLiteral("timeout"), QStringLiteral("SECONDS"),
         text("How long a snapshot waits for the overlays' data."), takeTimeout},
        {QStringLiteral("practice"), QStringLiteral("NAME"),
         text("Goes on with a practice, a recorded day with an account of its own; --replay is its speed."),
         into(&TerminalOptions::practice)},
        {QStringLiteral("replay"), QStringLiteral("SPEED"),
         text("Plays a recorded day as today, 1 to 600 times as fast; for --period minute, which it implies. "
              "A --ledger must be one that practises the day."),
         takeReplay},
        {QStringLiteral("replay-to"), QStringLiteral("HHMM"),
         text("Plays the day at once up to this minute; a snapshot stops there, else at the end."),
         takeReplayTo},
        {QStringLiteral("order"), QStringLiteral("ORDER"),
         text(
             "\"HHMM buy|sell QUANTITY PRICE\": placed when the replay has come to that minute; may be given "
             "several times."),
         takeOrder},
    };
    return table;
}

const OptionRow *findOption(const QString &name)
{
    const auto &table = optionTable();
    const auto row = std::find_if(table.begin(), table.end(),
                                  [&name](const OptionRow &candidate) { return candidate.name == name; });
    return row == table.end() ? nullptr : &*row;
}

} // namespace Terminal
