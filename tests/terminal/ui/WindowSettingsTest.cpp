// What the terminal remembers from one run to the next.
#include "tests/support/ByName.h"
#include "tests/support/LogCapture.h"
#include "tests/terminal/support/SettingsFixture.h"

#include <gmock/gmock.h>

#include <QDockWidget>
#include <QFile>
#include <QScreen>
#include <memory>

namespace Terminal {
namespace {

using WindowSettingsTest = Settings;

TEST_F(WindowSettingsTest, BringBackChartOverlaysAndLook)
{
    TerminalOptions options;
    options.code = QStringLiteral("000001");
    options.period = ChartPeriod::Week;
    options.overlays = QStringList({QStringLiteral("cost"), QStringLiteral("combined-trades")});
    options.theme = ThemeKind::Light;
    options.riseColour = RiseColour::Green;
    options.language = QStringLiteral("en");
    options.hidesAmounts = true;
    options.prices = PriceView::Adjusted;
    remember(options);
    const TerminalOptions back = WindowSettings().over({});
    EXPECT_EQ(back.code, options.code);
    EXPECT_EQ(back.period, options.period);
    EXPECT_EQ(back.overlays, options.overlays);
    EXPECT_EQ(back.theme, options.theme);
    EXPECT_EQ(back.riseColour, options.riseColour);
    EXPECT_EQ(back.language, options.language);
    EXPECT_TRUE(back.hidesAmounts);
    EXPECT_EQ(back.prices, PriceView::Adjusted);
}

TEST_F(WindowSettingsTest, BringBackWhetherTheWindowAsksBeforeAnOrderIsSent)
{
    EXPECT_TRUE(WindowSettings().over({}).asksBeforeSending) << "it does so at first";
    TerminalOptions options;
    options.asksBeforeSending = false;
    remember(options);
    EXPECT_FALSE(WindowSettings().over({}).asksBeforeSending);
}

TEST_F(WindowSettingsTest, BringBackThatNoOverlayWasShown)
{
    remember({});
    TerminalOptions options;
    options.overlays = QStringList(QStringLiteral("cost"));
    EXPECT_EQ(WindowSettings().over(options).overlays, QStringList());
}

TEST_F(WindowSettingsTest, ChangeNothingTheFirstTime)
{
    const LogCapture log;
    const TerminalOptions back = WindowSettings().over({});
    EXPECT_EQ(back.theme, ThemeKind::Dark);
    EXPECT_EQ(back.period, ChartPeriod::Day);
    EXPECT_FALSE(back.hidesAmounts);
    EXPECT_EQ(back.prices, PriceView::Raw);
    EXPECT_TRUE(log.lines(QtWarningMsg).empty());
}

TEST_F(WindowSettingsTest, YieldToTheCommandLine)
{
    set(QStringLiteral("theme"), QStringLiteral("light"));
    set(QStringLiteral("rise"), QStringLiteral("green"));
    const auto parsed = parseOptions({QStringLiteral("tradeterminal"), QStringLiteral("--data"),
                                      QStringLiteral("D"), QStringLiteral("--theme"), QStringLiteral("dark")},
                                     QStringLiteral("/nowhere/bin"));
    ASSERT_TRUE(parsed) << qPrintable(parsed.error());
    const TerminalOptions options = WindowSettings().over(parsed.value().options);
    EXPECT_EQ(options.theme, ThemeKind::Dark);
    EXPECT_EQ(options.riseColour, RiseColour::Green);
}

TEST_F(WindowSettingsTest, LeaveThePeriodToAReplay)
{
    set(QStringLiteral("period"), QStringLiteral("week"));
    TerminalOptions options;
    options.period = ChartPeriod::Minute;
    options.given = QStringList(QStringLiteral("replay"));
    EXPECT_EQ(WindowSettings().over(options).period, ChartPeriod::Minute);
}

struct BadValue
{
    const char *name;
    const char *value;
    const char *allowed;
};

class WindowSettingsBadValue : public Settings, public ::testing::WithParamInterface<BadValue>
{
};

TEST_P(WindowSettingsBadValue, IsTheDefaultAndIsToldWithWhatIsAllowed)
{
    set(QLatin1String(GetParam().name), QLatin1String(GetParam().value));
    const LogCapture log;
    const TerminalOptions options = WindowSettings().over({});
    EXPECT_EQ(options.period, ChartPeriod::Day);
    EXPECT_EQ(options.theme, ThemeKind::Dark);
    EXPECT_EQ(options.riseColour, RiseColour::Red);
    EXPECT_EQ(options.language, QStringLiteral("zh"));
    EXPECT_EQ(options.overlays, QStringList());
    const std::vector<QString> warnings = log.lines(QtWarningMsg);
    ASSERT_EQ(warnings.size(), 1U);
    for (const QString &named :
         {file(), QString(QLatin1String(GetParam().name)), QString(QLatin1String(GetParam().allowed))}) {
        EXPECT_TRUE(warnings.front().contains(named)) << qPrintable(warnings.front());
    }
}

INSTANTIATE_TEST_SUITE_P(Values, WindowSettingsBadValue,
                         ::testing::Values(BadValue{"period", "year", "week"},
                                           BadValue{"theme", "blue", "light, dark"},
                                           BadValue{"rise", "up", "red, green"},
                                           BadValue{"lang", "fr", "zh, en"},
                                           BadValue{"overlays", "cost,dreams", "combined-cost"}),
                         ByName());

TEST_F(WindowSettingsTest, AreTheDefaultsAndToldWhenTheFileIsBroken)
{
    remember({});
    QFile broken(file());
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("theme=light\nwhat is this\n[window\n");
    broken.close();
    const LogCapture log;
    const TerminalOptions options = WindowSettings().over({});
    EXPECT_EQ(options.period, ChartPeriod::Day);
    ASSERT_EQ(log.lines(QtWarningMsg).size(), 1U);
    EXPECT_TRUE(log.lines(QtWarningMsg).front().contains(file()));
}

TEST_F(WindowSettingsTest, BringBackSizeAndDocks)
{
    const auto window = [] {
        auto made = std::make_unique<QMainWindow>();
        auto *const dock = new QDockWidget(made.get());
        dock->setObjectName(QStringLiteral("orders"));
        made->addDockWidget(Qt::BottomDockWidgetArea, dock);
        made->resize(640, 480);
        return made;
    };
    const auto area = [](QMainWindow *of) { return of->dockWidgetArea(of->findChild<QDockWidget *>()); };
    const auto first = window();
    first->resize(500, 400);
    first->addDockWidget(Qt::LeftDockWidgetArea, first->findChild<QDockWidget *>());
    WindowSettings().remember({}, *first);

    const auto second = window();
    WindowSettings().restoreLayout(second.get(), {});
    EXPECT_EQ(second->size(), QSize(500, 400));
    EXPECT_EQ(area(second.get()), Qt::LeftDockWidgetArea);

    TerminalOptions sized;
    sized.given = QStringList(QStringLiteral("size"));
    const auto third = window();
    WindowSettings().restoreLayout(third.get(), sized);
    EXPECT_EQ(third->size(), QSize(640, 480)) << "the command line has named it";
}

TEST_F(WindowSettingsTest, OpenNoWindowLargerThanItsScreen)
{
    QMainWindow first;
    const QSize screen = first.screen()->availableSize();
    const QSize larger = screen + QSize(400, 300);
    first.resize(larger);
    WindowSettings().restoreLayout(&first, {});
    EXPECT_EQ(first.size(), screen) << "the first time";

    first.resize(larger);
    WindowSettings().remember({}, first);
    QMainWindow second;
    WindowSettings().restoreLayout(&second, {});
    EXPECT_EQ(second.size(), second.size().boundedTo(screen)) << "as it was on a larger screen";
}

} // namespace
} // namespace Terminal
