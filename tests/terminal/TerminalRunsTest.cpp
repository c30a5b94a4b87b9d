// What is shown when nothing is named.
#include "terminal/TerminalRuns.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/intake/IntakeDoor.h"
#include "terminal/intake/StartWindow.h"
#include "terminal/ui/MainWindow.h"
#include "tests/terminal/support/SettingsFixture.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTimer>

namespace Terminal {
namespace {

class TerminalRunsOfAUser : public Settings
{
protected:
    TerminalRunsOfAUser() { qputenv("XDG_DATA_HOME", m_folder.path().toUtf8()); }
    ~TerminalRunsOfAUser() override { qunsetenv("XDG_DATA_HOME"); }

    static TerminalOptions options(const QStringList &arguments = {})
    {
        const auto parsed =
            parseOptions(QStringList({QStringLiteral("tradeterminal"), QStringLiteral("--plugin"),
                                      QStringLiteral("/nowhere/lib.so"), QStringLiteral("--no-broker"),
                                      QStringLiteral("--lang"), QStringLiteral("en")}) +
                             arguments,
                         QStringLiteral("/nowhere/bin"));
        EXPECT_TRUE(parsed) << qPrintable(parsed.error());
        return parsed.value().options;
    }

    /// Runs and does `act` on each window that comes, from within its event loop.
    static int run(const TerminalOptions &options, std::function<void(QWidget *)> act)
    {
        QWidget *seen = nullptr;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            for (QWidget *const widget : QApplication::topLevelWidgets()) {
                const bool isWindow = qobject_cast<StartWindow *>(widget) != nullptr ||
                                      qobject_cast<MainWindow *>(widget) != nullptr;
                if (isWindow && widget->isVisible() && widget != seen) {
                    seen = widget;
                    act(widget);
                }
            }
        });
        poll.start(5);
        return TerminalRuns(options, QStringLiteral("/nowhere/bin")).run();
    }

    QString ledger()
    {
        QFile file(m_folder.filePath(QStringLiteral("account.db")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }
};

TEST_F(TerminalRunsOfAUser, BeginWithTheStartPage)
{
    bool isPage = false;
    EXPECT_EQ(run(options(),
                  [&isPage](QWidget *window) {
                      isPage = qobject_cast<StartWindow *>(window) != nullptr;
                      window->close();
                  }),
              0);
    EXPECT_TRUE(isPage);
}

TEST_F(TerminalRunsOfAUser, GoStraightToTheAccountOfTheLastTime)
{
    TerminalOptions last;
    last.dataFolder = QStringLiteral(TRADECHART_EXAMPLES);
    last.ledger = ledger();
    last.code = QStringLiteral("600519");
    remember(last);
    QString code;
    EXPECT_EQ(run(options(),
                  [&code](QWidget *window) {
                      if (auto *const chart = qobject_cast<MainWindow *>(window)) {
                          code = chart->chart()->data().security.code;
                      }
                      window->close();
                  }),
              0);
    EXPECT_EQ(code, QStringLiteral("600519"));
}

TEST_F(TerminalRunsOfAUser, SayOnThePageThatTheAccountOfTheLastTimeIsGone)
{
    TerminalOptions last;
    last.dataFolder = QStringLiteral(TRADECHART_EXAMPLES);
    last.ledger = m_folder.filePath(QStringLiteral("gone.db"));
    remember(last);
    QString notice;
    run(options(), [&notice](QWidget *window) {
        notice = window->findChild<QLabel *>(QStringLiteral("startNotice"))->text();
        window->close();
    });
    EXPECT_TRUE(notice.contains(QStringLiteral("gone.db"))) << qPrintable(notice);
}

TEST_F(TerminalRunsOfAUser, ShowTheDataThatTheCommandLineNames)
{
    bool isChart = false;
    run(options({QStringLiteral("--data"), QStringLiteral(TRADECHART_EXAMPLES)}),
        [&isChart](QWidget *window) {
            isChart = qobject_cast<MainWindow *>(window) != nullptr;
            window->close();
        });
    EXPECT_TRUE(isChart);
    EXPECT_EQ(WindowSettings().places(), AccountPlaces()) << "bars without a ledger are no account";
}

TEST_F(TerminalRunsOfAUser, GoFromTheChartToTheStartPage)
{
    QStringList seen;
    run(options({QStringLiteral("--data"), QStringLiteral(TRADECHART_EXAMPLES)}), [&seen](QWidget *window) {
        seen.append(QString::fromLatin1(window->metaObject()->className()));
        QAction *toPage = nullptr;
        for (QAction *const action : window->findChildren<QAction *>()) {
            toPage = action->text() == QLatin1String("Start page") ? action : toPage;
        }
        seen.size() == 1 && toPage != nullptr ? toPage->trigger() : static_cast<void>(window->close());
    });
    EXPECT_EQ(seen,
              QStringList({QStringLiteral("Terminal::MainWindow"), QStringLiteral("Terminal::StartWindow")}));
}

} // namespace
} // namespace Terminal
