#include "trademodule/check/CheckProgram.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/check/CheckTable.h"
#include "trademodule/check/Checkup.h"
#include "trademodule/check/EndPointBus.h"
#include "trademodule/check/TranscriptBus.h"
#include "trademodule/cli/Command.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/UsageError.h"
#include "trading/MachineLanguage.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QUuid>

#include <algorithm>

namespace TradeModule {

using namespace Trading;

namespace {

// The command line

void addOptions(QCommandLineParser *parser)
{
    parser->addOption({QStringLiteral("bus"), translated("Directory of the terminal whose bus is joined."),
                       QStringLiteral("DIR")});
    parser->addOption({QStringLiteral("security"),
                       translated("Security to ask about, best one with trades; 600000.SH if left out."),
                       QStringLiteral("CODE.MARKET")});
    parser->addOption({QStringLiteral("from"), translated("First day."), QStringLiteral("yyyymmdd")});
    parser->addOption({QStringLiteral("to"), translated("Last day."), QStringLiteral("yyyymmdd")});
    parser->addOption(
        {QStringLiteral("orders"),
         translated("Places orders, too: buys 100 shares at this price and cancels them. Choose one at "
                    "which nothing is dealt."),
         QStringLiteral("PRICE")});
    parser->addOption({QStringLiteral("only"), translated("Runs only the cases whose name begins so."),
                       QStringLiteral("NAME")});
    parser->addOption({QStringLiteral("list"), translated("Lists the cases and asks nothing.")});
    parser->addOption({QStringLiteral("transcript"),
                       translated("Writes every message into a file, a JSON object per line."),
                       QStringLiteral("FILE")});
    parser->addOption({QStringLiteral("lang"),
                       translated("Language of the texts: zh or en; that of the locale if left out."),
                       QStringLiteral("LANGUAGE")});
}

void chooseLanguage(ProgramLanguage *language, const QStringList &arguments)
{
    language->set(machineLanguage());
    QCommandLineParser parser;
    addOptions(&parser);
    parser.parse(arguments);
    const QString word = parser.value(QStringLiteral("lang"));
    if (parser.isSet(QStringLiteral("lang")) && !language->set(word)) {
        throw UsageError(translated("--lang is \"%1\", but must be zh or en").arg(word));
    }
}

TradingDate dayOf(const QCommandLineParser &parser, const QString &option, TradingDate ifLeftOut)
{
    if (!parser.isSet(option)) {
        return ifLeftOut;
    }
    const auto day = TradingDate::ofText(parser.value(option));
    if (!day) {
        throw UsageError(translated("--%1 is \"%2\", but must be a date of the form yyyymmdd")
                             .arg(option, parser.value(option)));
    }
    return *day;
}

SecurityId securityOf(const QString &text)
{
    const QStringList parts = text.split(u'.');
    const auto market = marketOfLetters(parts.value(1));
    if (parts.size() != 2 || !market || !isExchangeCode(parts[0])) {
        throw UsageError(
            translated("--security is \"%1\", but must be like 600000.SH or 000001.SZ").arg(text));
    }
    return {parts[0], *market};
}

Money priceOf(const QString &text)
{
    bool isNumber = false;
    const double yuan = text.toDouble(&isNumber);
    const auto price = isNumber && yuan > 0 ? Money::ofExactYuan(yuan) : std::nullopt;
    if (!price) {
        throw UsageError(translated("--orders is \"%1\", but must be a price in yuan").arg(text));
    }
    return *price;
}

CheckSettings settingsOf(const QCommandLineParser &parser)
{
    CheckSettings settings;
    if (parser.isSet(QStringLiteral("security"))) {
        settings.security = securityOf(parser.value(QStringLiteral("security")));
    }
    settings.to = dayOf(parser, QStringLiteral("to"), settings.to);
    settings.from = dayOf(parser, QStringLiteral("from"), std::min(settings.from, settings.to));
    if (settings.to < settings.from) {
        throw UsageError(translated("--from is later than --to"));
    }
    if (parser.isSet(QStringLiteral("orders"))) {
        settings.orderPrice = priceOf(parser.value(QStringLiteral("orders")));
    }
    settings.mark = QStringLiteral("check-") + QUuid::createUuid().toString(QUuid::Id128).left(8);
    return settings;
}

CheckCases chosenCases(const QCommandLineParser &parser, bool placesOrders)
{
    CheckCases cases = placesOrders ? allCases() : readOnlyCases();
    const QByteArray beginning = parser.value(QStringLiteral("only")).toUtf8();
    const auto isOther = [&beginning](const CheckCase &checked) {
        return !QByteArray(checked.id).startsWith(beginning);
    };
    cases.erase(std::remove_if(cases.begin(), cases.end(), isOther), cases.end());
    if (cases.empty()) {
        throw UsageError(
            translated("no case's name begins with \"%1\"; see --list").arg(QString::fromUtf8(beginning)));
    }
    return cases;
}

// What is told

QStringList describe(const CheckCase &checked)
{
    return {QStringLiteral("    ") + translated("asked: %1").arg(translated(checked.asks)),
            QStringLiteral("    ") + translated("must come: %1").arg(translated(checked.mustCome)),
            QStringLiteral("    ") + translated("guide: %1").arg(QLatin1String(checked.guide))};
}

QString shortened(const QByteArray &message)
{
    constexpr int longest = 400;
    const QString text = QString::fromUtf8(message);
    return text.size() > longest ? text.left(longest) + QStringLiteral(" …") : text;
}

void tellWrong(const CaseResult &result)
{
    printLines({QStringLiteral("%1 %2").arg(translated("WRONG"), QLatin1String(result.checked->id))});
    for (const QString &fault : result.faults) {
        printLines({QStringLiteral("    ") + fault});
    }
    printLines(
        describe(*result.checked) +
        QStringList{QStringLiteral("    ") + translated("question: %1").arg(shortened(result.question)),
                    QStringLiteral("    ") + translated("answer: %1").arg(shortened(result.answer))});
}

void tell(const CaseResult &result)
{
    if (!result.faults.isEmpty()) {
        tellWrong(result);
    } else if (!result.skipped.isEmpty()) {
        printLines({QStringLiteral("%1 %2: %3")
                        .arg(translated("not seen"), QLatin1String(result.checked->id), result.skipped)});
    }
}

/// True when nothing is wrong.
bool tellEnd(const Checkup::Report &report)
{
    const auto isWrong = [](const CaseResult &result) { return !result.faults.isEmpty(); };
    const auto isUnseen = [](const CaseResult &result) {
        return result.faults.isEmpty() && !result.skipped.isEmpty();
    };
    if (!report.leftOut.isEmpty()) {
        printLines(QStringList{translated("Left out, as the guide allows, with what comes of it:")} +
                   report.leftOut);
    }
    const auto wrong = std::count_if(report.results.begin(), report.results.end(), isWrong);
    const auto unseen = std::count_if(report.results.begin(), report.results.end(), isUnseen);
    printLines(
        {translated("%1 cases: %2 wrong, %3 not seen").arg(report.results.size()).arg(wrong).arg(unseen)});
    return wrong == 0;
}

int list(const QCommandLineParser &parser)
{
    for (const CheckCase &checked : chosenCases(parser, true)) {
        printLines(QStringList{QLatin1String(checked.id)} + describe(checked));
    }
    return Succeeded;
}

int check(const QCommandLineParser &parser)
{
    const CheckSettings settings = settingsOf(parser);
    const CheckCases cases = chosenCases(parser, settings.orderPrice.has_value());
    if (!parser.isSet(QStringLiteral("bus"))) {
        throw UsageError(translated("give the directory of the terminal with --bus DIR"));
    }
    EndPointBus bus(settings.patience);
    if (!bus.join(parser.value(QStringLiteral("bus")))) {
        throw Error(translated("there is no bus of %1").arg(parser.value(QStringLiteral("bus"))));
    }
    QFile file(parser.value(QStringLiteral("transcript")));
    if (parser.isSet(QStringLiteral("transcript")) &&
        !file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw Error(QStringLiteral("%1: %2").arg(file.fileName(), reasonOf(file)));
    }
    TranscriptBus transcript(&bus, &file);
    Checkup checkup(file.isOpen() ? static_cast<CheckedBus *>(&transcript) : &bus, settings);
    if (!checkup.isAnswered()) {
        throw Error(translated("no trading module answers on the bus of %1")
                        .arg(parser.value(QStringLiteral("bus"))));
    }
    return tellEnd(checkup.run(cases, tell)) ? Succeeded : Failed;
}

int dispatch(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(translated(
        "Asks a trading module what it must answer, and tells what is wrong and where the guides say so. "
        "Nothing is changed without --orders."));
    addOptions(&parser);
    parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments)) {
        throw UsageError(parser.errorText());
    }
    if (!parser.positionalArguments().isEmpty()) {
        throw UsageError(
            translated("\"%1\" is too much; see --help").arg(parser.positionalArguments().first()));
    }
    if (parser.isSet(QStringLiteral("help"))) {
        print(parser.helpText());
        return Succeeded;
    }
    if (parser.isSet(version)) {
        print(QCoreApplication::applicationName() + QLatin1Char(' ') +
              QCoreApplication::applicationVersion() + QLatin1Char('\n'));
        return Succeeded;
    }
    return parser.isSet(QStringLiteral("list")) ? list(parser) : check(parser);
}

} // namespace

int runCheckProgram(const QStringList &arguments, bool hasExchangeTime)
{
    ProgramLanguage language;
    try {
        chooseLanguage(&language, arguments);
        if (!hasExchangeTime) {
            throw Error(translated("this machine does not know the time zone Asia/Shanghai, by which the "
                                   "exchange counts its days: install its time-zone data (package tzdata)"));
        }
        return dispatch(arguments);
    } catch (const UsageError &error) {
        printError(error.reason());
        return WrongUsage;
    } catch (const Error &error) {
        printError(error.reason());
        return Failed;
    }
}

} // namespace TradeModule
