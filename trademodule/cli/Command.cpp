#include "trademodule/cli/Command.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/UsageError.h"
#include "trading/HiddenPasswords.h"
#include "trading/MachineLanguage.h"

#include <QCoreApplication>

#include <algorithm>

namespace TradeModule {

QString Invocation::ledger() const
{
    const bool isGiven = isSet(QStringLiteral("ledger"));
    if (!isGiven && qEnvironmentVariableIsEmpty(Trading::ledgerVariable)) {
        throw UsageError(translated("give the ledger with --ledger FILE or --ledger postgresql://..."));
    }
    const QString location =
        isGiven ? value(QStringLiteral("ledger")) : qEnvironmentVariable(Trading::ledgerVariable);
    if (!Database::keeps(location)) {
        throw UsageError(translated("--ledger is \"%1\": nothing would be kept").arg(location));
    }
    return location;
}

QString Invocation::existingLedger() const
{
    const QString location = ledger();
    if (!Ledger::isThere(location)) {
        throw Error(
            translated("there is no ledger %1; \"import FILE\" makes one of a statement, \"open\" of a "
                       "holding, \"serve\" or \"account --cash\" an empty one")
                .arg(Database::shownLocation(location)));
    }
    return location;
}

QString Invocation::ledgerOrNew() const
{
    const QString location = ledger();
    if (!Ledger::isThere(location)) {
        printError(translated("a new ledger is made: %1").arg(Database::shownLocation(location)));
    }
    return location;
}

std::optional<TradingDate> Invocation::date(const QString &option) const
{
    if (!isSet(option)) {
        return std::nullopt;
    }
    const QString text = value(option);
    const std::optional<TradingDate> date = TradingDate::ofText(text);
    if (!date) {
        throw UsageError(
            translated("--%1 is \"%2\", but must be a date of the form yyyymmdd").arg(option, text));
    }
    return date;
}

DateRange Invocation::days() const
{
    DateRange days;
    days.first = date(QStringLiteral("from")).value_or(days.first);
    days.last = date(QStringLiteral("to")).value_or(days.last);
    if (days.last < days.first) {
        throw UsageError(translated("--from is later than --to"));
    }
    return days;
}

QCommandLineOption Invocation::firstDayOption()
{
    return {QStringLiteral("from"), translated("First day."), QStringLiteral("yyyymmdd")};
}

QCommandLineOption Invocation::lastDayOption()
{
    return {QStringLiteral("to"), translated("Last day."), QStringLiteral("yyyymmdd")};
}

QStringList Invocation::arguments(int count, const QString &what) const
{
    if (arguments().size() != count) {
        throw UsageError(translated("give %1").arg(what));
    }
    return arguments();
}

const std::vector<Command> &commands()
{
    static const std::vector<Command> all = {
        serveCommand(),   importCommand(), placeCommand(),     cancelCommand(),
        ordersCommand(),  tradesCommand(), positionsCommand(), accountCommand(),
        resultsCommand(), costCommand(),   importsCommand(),   undoCommand(),
        openCommand(),    moneyCommand(),  practiceCommand(),  statusCommand(),
    };
    return all;
}

namespace {

const Command *findCommand(const QString &name)
{
    const auto found = std::find_if(commands().begin(), commands().end(),
                                    [&name](const Command &command) { return command.name == name; });
    return found == commands().end() ? nullptr : &*found;
}

QString commandList()
{
    QStringList lines{translated("Commands, each with --help:")};
    for (const Command &command : commands()) {
        lines.append(QStringLiteral("  %1 %2").arg(command.name, -10).arg(command.summary));
    }
    return lines.join(QLatin1Char('\n'));
}

void addCommonOptions(QCommandLineParser *parser)
{
    parser->addOption({QStringLiteral("bus"), translated("Directory of the terminal whose bus is joined."),
                       QStringLiteral("DIR")});
    parser->addOption({QStringLiteral("ledger"),
                       translated("The account's ledger: a SQLite file, or postgresql://user@host/database."),
                       QStringLiteral("FILE-OR-URL")});
    parser->addOption({QStringLiteral("lang"),
                       translated("Language of the texts: zh or en; that of the locale if left out."),
                       QStringLiteral("LANGUAGE")});
    parser->addHelpOption();
}

/// The locale speaks, unless --lang stands somewhere, also after options that only a command knows.
void chooseLanguage(ProgramLanguage *language, const QStringList &arguments)
{
    language->set(Trading::machineLanguage());
    QCommandLineParser parser;
    addCommonOptions(&parser);
    parser.parse(arguments);
    const QString word = parser.value(QStringLiteral("lang"));
    if (parser.isSet(QStringLiteral("lang")) && !language->set(word)) {
        throw UsageError(translated("--lang is \"%1\", but must be zh or en").arg(word));
    }
}

/// The name of the command: the first argument that is neither an option nor an option's value.
QString commandName(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    addCommonOptions(&parser);
    parser.addVersionOption();
    parser.parse(arguments);
    return parser.positionalArguments().value(0);
}

int showHelp(const QCommandLineParser &parser)
{
    print(parser.helpText());
    return Succeeded;
}

int runWithoutCommand(const QStringList &arguments, ProgramLanguage *language)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        translated("Trading module: keeps an account's trades and answers charts.") + QStringLiteral("\n\n") +
        commandList());
    addCommonOptions(&parser);
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("command"), translated("What to do; serve if left out."),
                                 QStringLiteral("[command]"));
    if (!parser.parse(arguments)) {
        throw UsageError(parser.errorText());
    }
    if (parser.isSet(QStringLiteral("help"))) {
        return showHelp(parser);
    }
    if (parser.isSet(QStringLiteral("version"))) {
        print(QCoreApplication::applicationName() + QLatin1Char(' ') +
              QCoreApplication::applicationVersion() + QLatin1Char('\n'));
        return Succeeded;
    }
    return commands().front().run(Invocation(&parser, language));
}

/// What begins with a dash is an option to the parser: "-100" would be told as three unknown ones.
[[noreturn]] void refuseCommandLine(const QCommandLineParser &parser, const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        bool isNumber = false;
        argument.toDouble(&isNumber);
        if (isNumber && argument.startsWith(QLatin1Char('-'))) {
            throw UsageError(translated("%1 is negative: only numbers above zero are taken").arg(argument));
        }
    }
    throw UsageError(parser.errorText());
}

int runCommand(const Command &command, const QStringList &arguments, ProgramLanguage *language)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(command.summary);
    addCommonOptions(&parser);
    parser.addOptions(command.options);
    parser.addPositionalArgument(command.name, command.summary, command.name);
    if (!command.argumentSyntax.isEmpty()) {
        parser.addPositionalArgument(command.argumentSyntax, QString(), command.argumentSyntax);
    }
    if (!parser.parse(arguments)) {
        refuseCommandLine(parser, arguments);
    }
    return parser.isSet(QStringLiteral("help")) ? showHelp(parser)
                                                : command.run(Invocation(&parser, language));
}

int dispatch(const QStringList &arguments, ProgramLanguage *language)
{
    const QString name = commandName(arguments);
    if (name.isEmpty()) {
        return runWithoutCommand(arguments, language);
    }
    const Command *command = findCommand(name);
    if (command == nullptr) {
        throw UsageError(translated("\"%1\" is no command; see --help").arg(name));
    }
    return runCommand(*command, arguments, language);
}

} // namespace

int runProgram(const QStringList &arguments, bool hasExchangeTime)
{
    ProgramLanguage language;
    try {
        chooseLanguage(&language, arguments);
        if (!hasExchangeTime) {
            throw Error(translated("this machine does not know the time zone Asia/Shanghai, by which the "
                                   "exchange counts its days: install its time-zone data (package tzdata)"));
        }
        return dispatch(arguments, &language);
    } catch (const UsageError &error) {
        printError(error.reason());
        return WrongUsage;
    } catch (const Error &error) {
        printError(error.reason());
        return Failed;
    }
}

} // namespace TradeModule
