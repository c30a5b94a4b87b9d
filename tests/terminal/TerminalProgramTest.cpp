// Runs of the terminal, one after the other.
#include "terminal/TerminalProgram.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/MessageBar.h"
#include "tests/support/LogCapture.h"
#include "tests/terminal/support/Drag.h"
#include "tests/terminal/support/SettingsFixture.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QSplitter>
#include <QTimer>

namespace Terminal {
namespace {

/// A run of the terminal's window without services, closed by its user.
class TerminalProgramWithSettings : public Settings
{
protected:
    static int run(const QStringList &arguments, std::function<void(MainWindow *)> act)
    {
        const auto parsed =
            parseOptions(QStringList({QStringLiteral("tradeterminal"), QStringLiteral("--data"),
                                      QStringLiteral(TRADECHART_EXAMPLES), QStringLiteral("--plugin"),
                                      QStringLiteral("/nowhere/lib.so"), QStringLiteral("--no-broker")}) +
                             arguments,
                         QStringLiteral("/nowhere/bin"));
        EXPECT_TRUE(parsed) << qPrintable(parsed.error());
        TerminalProgram program(parsed.value().options, QStringLiteral("/nowhere/bin"));
        QTimer::singleShot(0, qApp, [act = std::move(act)] {
            for (QWidget *const widget : QApplication::topLevelWidgets()) {
                if (auto *const window = qobject_cast<MainWindow *>(widget)) {
                    act(window);
                    window->close();
                }
            }
        });
        return program.run();
    }
    static void toggle(MainWindow *window, const QString &text)
    {
        for (QAction *const action : window->findChildren<QAction *>()) {
            if (action->text() == text) {
                action->trigger();
            }
        }
    }
};

TEST_F(TerminalProgramWithSettings, OpensTheWindowAsItWasClosed)
{
    EXPECT_EQ(run({QStringLiteral("--lang"), QStringLiteral("en")},
                  [](MainWindow *window) {
                      toggle(window, QStringLiteral("Dark"));
                      toggle(window, QStringLiteral("Green rises"));
                      toggle(window, QStringLiteral("Hide amounts"));
                      EXPECT_TRUE(window->load(QStringLiteral("600519"), ChartPeriod::Month));
                  }),
              0);
    bool opened = false;
    EXPECT_EQ(run({},
                  [&opened](MainWindow *window) {
                      opened = true;
                      const TerminalOptions shown = window->shownOptions();
                      EXPECT_EQ(shown.theme, ThemeKind::Light);
                      EXPECT_EQ(window->chart()->theme().kind, ThemeKind::Light);
                      EXPECT_EQ(shown.riseColour, RiseColour::Green);
                      EXPECT_EQ(shown.language, QStringLiteral("en"));
                      EXPECT_TRUE(shown.hidesAmounts);
                      EXPECT_EQ(window->chart()->data().security.code, QStringLiteral("600519"));
                      EXPECT_EQ(window->chart()->data().period, ChartPeriod::Month);
                  }),
              0);
    EXPECT_TRUE(opened);
}

TEST_F(TerminalProgramWithSettings, SharesTheWidthOfThePanelAsItsUserDid)
{
    const auto halves = [](MainWindow *window) {
        QApplication::processEvents(); // it is laid out
        return window->trade()->panel()->findChild<QSplitter *>();
    };
    const QStringList large{QStringLiteral("--size"), QStringLiteral("1600x900")}; // both halves have room
    QList<int> chosen;
    EXPECT_EQ(run(large,
                  [&](MainWindow *window) {
                      window->trade()->setShown(true);
                      const QList<int> before = halves(window)->sizes();
                      drag(halves(window)->handle(1), -60);
                      chosen = halves(window)->sizes();
                      EXPECT_EQ(chosen.first(), before.first() - 60);
                  }),
              0);
    QList<int> shown;
    EXPECT_EQ(run(large, [&](MainWindow *window) { shown = halves(window)->sizes(); }), 0);
    EXPECT_EQ(shown, chosen);
}

TEST_F(TerminalProgramWithSettings, OpensAnotherChartWhenTheRememberedOneIsGone)
{
    set(QStringLiteral("code"), QStringLiteral("999999"));
    QString shown;
    EXPECT_EQ(run({}, [&shown](MainWindow *window) { shown = window->chart()->data().security.code; }), 0);
    EXPECT_EQ(shown, QStringLiteral("000001"));
}

TEST_F(TerminalProgramWithSettings, OpensInRawPricesWhenTheRememberedOnesCannotBeHad)
{
    const QTemporaryDir data;
    for (const char *const folder : {"daily", "actions"}) {
        ASSERT_TRUE(QDir(data.path()).mkdir(QLatin1String(folder)));
    }
    for (const char *const file : {"securities.csv", "daily/000001.csv"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TRADECHART_EXAMPLES "/") + QLatin1String(file),
                                data.filePath(QLatin1String(file))));
    }
    QFile actions(data.filePath(QStringLiteral("actions/000001.csv")));
    ASSERT_TRUE(actions.open(QIODevice::WriteOnly) && actions.write("exdate,dividend\n20130620,x\n") > 0);
    actions.close();
    set(QStringLiteral("adjusted"), QStringLiteral("true"));
    const QStringList withData = {QStringLiteral("--data"), data.path()};
    const LogCapture log;
    PriceView shown = PriceView::Adjusted;
    EXPECT_EQ(run(withData, [&shown](MainWindow *window) { shown = window->chart()->data().view; }), 0);
    EXPECT_EQ(shown, PriceView::Raw);
    EXPECT_EQ(run(withData + QStringList(QStringLiteral("--adjusted")), [](MainWindow *) {}), 1)
        << "they were asked for";
}

TEST_F(TerminalProgramWithSettings, TellsWhichLineOfTheUsersHolidaysIsWrongAndWhatItMustBe)
{
    QFile holidays(m_folder.filePath(QStringLiteral("holidays.csv")));
    ASSERT_TRUE(holidays.open(QIODevice::WriteOnly) && holidays.write("2027-01-01,new year\nspring\n") > 0);
    holidays.close();
    qputenv("TRADING_HOLIDAYS", QFile::encodeName(holidays.fileName()));
    const LogCapture log;
    QString shown;
    EXPECT_EQ(run({QStringLiteral("--lang"), QStringLiteral("en")},
                  [&shown](MainWindow *window) {
                      for (const MessageBar *const bar : window->findChildren<MessageBar *>()) {
                          shown += bar->text();
                      }
                  }),
              0);
    qunsetenv("TRADING_HOLIDAYS");
    for (const QString &part :
         {holidays.fileName(), QStringLiteral("line 2"), QStringLiteral("2027-01-01")}) {
        EXPECT_TRUE(shown.contains(part)) << shown.toStdString();
        EXPECT_TRUE(log.has(part));
    }
}

TEST_F(TerminalProgramWithSettings, OpensNoOtherChartThanTheCommandLineNames)
{
    EXPECT_EQ(run({QStringLiteral("--code"), QStringLiteral("999999")}, [](MainWindow *) {}), 1);
}

TEST_F(TerminalProgramWithSettings, OpensWithoutTheRememberedOverlaysWhenTheirLibraryIsGone)
{
    set(QStringLiteral("overlays"), QStringLiteral("cost"));
    const LogCapture log;
    EXPECT_EQ(run({}, [](MainWindow *) {}), 0);
    ASSERT_FALSE(log.lines(QtWarningMsg).empty());
    EXPECT_TRUE(log.lines(QtWarningMsg).front().contains(QStringLiteral("/nowhere/lib.so")));
}

} // namespace
} // namespace Terminal
