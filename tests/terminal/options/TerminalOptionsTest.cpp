#include "terminal/options/TerminalOptions.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

#include <QRegularExpression>

namespace Terminal {
namespace {

Loaded<ParsedOptions> parse(QStringList arguments)
{
    arguments.prepend(QStringLiteral("tradeterminal"));
    return parseOptions(arguments, QStringLiteral("/nowhere/bin"));
}

TEST(TerminalOptions, AreReadFromTheCommandLine)
{
    const auto parsed =
        parse(QStringLiteral("--data D --code 600519 --period minute --day 20230201 --overlays cost,trades "
                             "--theme light --lang en --size 800x600 --snapshot a.png --ledger l.db "
                             "--rise green --no-broker --hide-amounts --adjusted --results trip --trades off")
                  .split(QLatin1Char(' ')));
    ASSERT_TRUE(parsed) << qPrintable(parsed.error());
    const TerminalOptions &options = parsed.value().options;
    EXPECT_EQ(options.code, QStringLiteral("600519"));
    EXPECT_EQ(options.period, ChartPeriod::Minute);
    EXPECT_EQ(options.day, onDay(20230201));
    EXPECT_EQ(options.overlays, QStringList({QStringLiteral("cost"), QStringLiteral("trades")}));
    EXPECT_EQ(options.theme, ThemeKind::Light);
    EXPECT_EQ(options.riseColour, RiseColour::Green);
    EXPECT_EQ(options.language, QStringLiteral("en"));
    EXPECT_EQ(options.size, QSize(800, 600));
    EXPECT_EQ(options.snapshotFile, QStringLiteral("a.png"));
    EXPECT_EQ(options.ledger, QStringLiteral("l.db"));
    EXPECT_FALSE(options.startsBroker);
    EXPECT_TRUE(options.hidesAmounts);
    EXPECT_EQ(options.prices, PriceView::Adjusted);
    EXPECT_EQ(options.results, Trading::ResultGroup::Trip);
    EXPECT_FALSE(options.showsTrades);
}

TEST(TerminalOptions, OfAReplayImplyAChartOfMinutes)
{
    const auto parsed = parse({QStringLiteral("--data"), QStringLiteral("D"), QStringLiteral("--replay"),
                               QStringLiteral("30"), QStringLiteral("--replay-to"), QStringLiteral("1000"),
                               QStringLiteral("--order"), QStringLiteral("0940 buy 500 13.60"),
                               QStringLiteral("--order"), QStringLiteral("0950 sell 100 14")});
    ASSERT_TRUE(parsed) << qPrintable(parsed.error());
    const TerminalOptions &options = parsed.value().options;
    EXPECT_EQ(options.period, ChartPeriod::Minute);
    EXPECT_EQ(options.replaySpeed, 30);
    EXPECT_EQ(options.replayTo, atTime(1000));
    ASSERT_EQ(options.orders.size(), 2U);
    EXPECT_EQ(options.orders.back().quantity, 100);
}

TEST(TerminalOptions, PlayTheWholeDayForASnapshot)
{
    const auto parsed =
        parse(QStringLiteral("--data D --replay 30 --snapshot a.png").split(QLatin1Char(' ')));
    ASSERT_TRUE(parsed) << qPrintable(parsed.error());
    EXPECT_EQ(parsed.value().options.replayTo, atTime(1500));
}

TEST(TerminalOptions, AskForTheDataFolderWhenThereIsNone)
{
    EXPECT_TRUE(parse({QStringLiteral("--code"), QStringLiteral("600519")})
                    .error()
                    .contains(QStringLiteral("--data")));
}

TEST(TerminalOptions, NameNoChartWhenTheyAreAboutTheWindowAlone)
{
    const auto none = parse({});
    ASSERT_TRUE(none) << qPrintable(none.error());
    EXPECT_FALSE(nameAChart(none.value().options));
    EXPECT_TRUE(none.value().options.showsTrades);
    EXPECT_FALSE(nameAChart(parse({QStringLiteral("--theme"), QStringLiteral("light")}).value().options));
    EXPECT_TRUE(nameAChart(parse({QStringLiteral("--data"), QStringLiteral("D")}).value().options));
}

TEST(TerminalOptions, LeadToTheHelpBeforeAnythingElse)
{
    const auto parsed = parse({QStringLiteral("--help"), QStringLiteral("--period"), QStringLiteral("year")});
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed.value().end, OptionsEnd::ShowHelp);
    EXPECT_TRUE(parsed.value().helpText.contains(QStringLiteral("--overlays")));
}

TEST(TerminalOptions, NameEveryOverlayInTheHelp)
{
    const QString help = parse({QStringLiteral("--help")}).value().helpText;
    for (const char *const word : {"cost", "trades", "orders", "combined-cost", "combined-trades"}) {
        const QRegularExpression listed(QStringLiteral("[:,]\\s+%1[,.]").arg(QLatin1String(word)));
        EXPECT_TRUE(help.contains(listed)) << word;
    }
}

QStringList replayWithAnOrderAt0941(const char *more)
{
    return QStringList({QStringLiteral("--data"), QStringLiteral("bars"), QStringLiteral("--replay"),
                        QStringLiteral("30"), QStringLiteral("--replay-to"), QStringLiteral("0940"),
                        QStringLiteral("--order"), QStringLiteral("0941 buy 100 10")}) +
           QString::fromLatin1(more).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

TEST(TerminalOptions, RefuseAnOrderThatAPictureComesTooEarlyFor)
{
    const auto parsed = parse(replayWithAnOrderAt0941("--snapshot a.png"));
    ASSERT_FALSE(parsed);
    EXPECT_TRUE(parsed.error().contains(QStringLiteral("the --order of 09:41")))
        << qPrintable(parsed.error());
    EXPECT_TRUE(parsed.error().contains(QStringLiteral("taken at 09:40"))) << qPrintable(parsed.error());
}

TEST(TerminalOptions, TakeAnOrderThatAWindowPlaysOnTo)
{
    EXPECT_TRUE(parse(replayWithAnOrderAt0941("")));
}

struct BadOption
{
    const char *name;
    const char *arguments;
    const char *named;
    const char *allowed;
};

class TerminalOptionsBadValue : public ::testing::TestWithParam<BadOption>
{
};

TEST_P(TerminalOptionsBadValue, IsNamedWithWhatIsAllowed)
{
    const auto parsed = parse(QString::fromLatin1(GetParam().arguments).split(QLatin1Char(' ')));
    ASSERT_FALSE(parsed);
    EXPECT_TRUE(parsed.error().contains(QLatin1String(GetParam().named))) << qPrintable(parsed.error());
    EXPECT_TRUE(parsed.error().contains(QLatin1String(GetParam().allowed))) << qPrintable(parsed.error());
}

INSTANTIATE_TEST_SUITE_P(
    Options, TerminalOptionsBadValue,
    ::testing::Values(BadOption{"period", "--period year", "--period", "day, week, month, minute"},
                      BadOption{"theme", "--theme blue", "--theme", "light, dark"},
                      BadOption{"language", "--lang fr", "--lang", "zh, en"},
                      BadOption{"rise", "--rise blue", "--rise", "red, green"},
                      BadOption{"size", "--size big", "--size", "1600x900"},
                      BadOption{"tinySize", "--size 1x1", "--size", "640x360"},
                      BadOption{"day", "--day 20240230", "--day", "yyyymmdd"},
                      BadOption{"results", "--results week", "--results", "security, month, year"},
                      BadOption{"trades", "--trades some", "--trades", "on, off"},
                      BadOption{"overlays", "--overlays cost,dreams", "--overlays", "cost, trades, orders"},
                      BadOption{"timeout", "--timeout soon", "--timeout", "1 to 600"},
                      BadOption{"replay", "--replay 0", "--replay", "1 to 600"},
                      BadOption{"replayTooFast", "--replay 601", "--replay", "1 to 600"},
                      BadOption{"replayTo", "--replay 30 --replay-to 1200", "--replay-to", "hhmm"},
                      BadOption{"order", "--replay 30 --order noon", "--order", "QUANTITY"},
                      BadOption{"orderAlone", "--replay-to 1000", "--replay-to", "--replay"},
                      BadOption{"replayOfDays", "--replay 30 --period day", "--period", "minute"},
                      BadOption{"unknown", "--colour red", "colour", ""},
                      BadOption{"stray", "--data D chart.png", "chart.png", "--help"}),
    ByName());

} // namespace
} // namespace Terminal
