// A practice in a window of this process, begun again from nothing.
#include "terminal/TerminalRuns.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/practice/PractisedLedger.h"
#include "terminal/trade/OrderDesk.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trades/ChartTrades.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/ReplayBar.h"
#include "tests/terminal/practice/SomePractice.h"
#include "tests/terminal/support/WhenOpen.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

namespace Terminal {
namespace {

class PracticeInAWindow : public SomePractice
{
protected:
    void SetUp() override
    {
        qputenv("XDG_DATA_HOME", m_folder.filePath(QStringLiteral("share")).toUtf8());
        qputenv("XDG_RUNTIME_DIR", m_runtime.path().toUtf8());
        QApplication::setOrganizationName(QStringLiteral("tradechart"));
        QApplication::setApplicationName(QStringLiteral("tradeterminal"));
        importStatement();
        m_session = begin(wish());
        ASSERT_TRUE(m_session) << m_problem;
    }

    ~PracticeInAWindow() override
    {
        qunsetenv("XDG_DATA_HOME");
        qputenv("XDG_RUNTIME_DIR", m_runtimeBefore);
    }

    TerminalOptions options() const
    {
        TerminalOptions options;
        options.practice = m_session->name;
        options.language = QStringLiteral("en");
        options.pluginFile = QStringLiteral(PLUGIN_FILE);
        options.moduleProgram = QStringLiteral(TRADEMODULE);
        options.given = QStringList(QStringLiteral("practice"));
        options.size = QSize(1280, 720);
        options.replaySpeed = 600;
        options.asksBeforeSending = false;
        options.orders = m_orders;
        return options;
    }

    /// Runs the terminal and does each of `acts` on a window of its own, the last of which is closed then.
    void run(const std::vector<std::function<void(MainWindow *)>> &acts)
    {
        size_t next = 0;
        MainWindow *seen = nullptr;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            MainWindow *const window = shownWindow();
            if (window == nullptr || window == seen || next == acts.size()) {
                return;
            }
            seen = window;
            const size_t number = next++;
            acts[number](window);
            if (number + 1 == acts.size() || ::testing::Test::HasFatalFailure()) {
                QApplication::quit();
            }
        });
        poll.start(5);
        EXPECT_EQ(TerminalRuns(options(), m_folder.path()).run(), 0);
        EXPECT_EQ(next, acts.size());
    }

    static MainWindow *shownWindow()
    {
        for (QWidget *const widget : QApplication::topLevelWidgets()) {
            if (auto *const window = qobject_cast<MainWindow *>(widget);
                window != nullptr && window->isVisible()) {
                return window;
            }
        }
        return nullptr;
    }

    /// The account as the module tells it.
    static bool isTold(MainWindow *window)
    {
        OrderDesk *const desk = window->trade()->desk();
        return waitUntil([=] { return desk->isAnswering() && desk->account() && desk->isUpToDate(); },
                         std::chrono::seconds(20));
    }

    static void trigger(MainWindow *window, const char *text)
    {
        for (QAction *const action : window->findChild<ReplayBar *>()->actions()) {
            if (action->text() == QLatin1String(text)) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no action " << text;
    }

    const QByteArray m_runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
    std::optional<PracticeSession> m_session;
    OrderPlan m_orders;
};

TEST_F(PracticeInAWindow, BeginsAgainWithTheAccountAsItWasAndWithoutAMark)
{
    double cash = 0;
    qint64 shares = 0;
    const auto buyAndRestart = [&](MainWindow *window) {
        ASSERT_TRUE(isTold(window));
        OrderDesk *const desk = window->trade()->desk();
        const Security security = window->chart()->data().security;
        cash = desk->account()->cash;
        const Position *const held = desk->account()->find(security);
        shares = held == nullptr ? 0 : held->quantity;
        desk->place({security, Direction::Buy, 51.50, 300});
        ASSERT_TRUE(waitUntil([=] { return window->trades()->layer()->trades().size() == 1; },
                              std::chrono::seconds(20)))
            << "it plays by itself";
        EXPECT_TRUE(waitUntil([&] { return desk->account()->cash < cash; }));
        whenOpen<QMessageBox>([](QMessageBox *question) {
            for (QAbstractButton *const button : question->buttons()) {
                if (question->buttonRole(button) == QMessageBox::DestructiveRole) {
                    button->click();
                }
            }
        });
        trigger(window, "Restart");
    };
    const auto lookAgain = [&](MainWindow *window) {
        ASSERT_TRUE(isTold(window));
        OrderDesk *const desk = window->trade()->desk();
        const Position *const held = desk->account()->find(window->chart()->data().security);
        EXPECT_EQ(desk->account()->cash, cash);
        EXPECT_EQ(held == nullptr ? 0 : held->quantity, shares);
        EXPECT_TRUE(desk->orders().empty());
        EXPECT_TRUE(waitUntil([=] { return window->trades()->desk()->isUpToDate(); }));
        EXPECT_TRUE(window->trades()->layer()->trades().empty());
        const auto *const strip = window->findChild<QLabel *>(QStringLiteral("practiceStrip"));
        EXPECT_TRUE(strip->isVisible());
        EXPECT_THAT(strip->text().toStdString(), ::testing::HasSubstr("2023-07-11"));
    };
    run({buyAndRestart, lookAgain});
}

TEST_F(PracticeInAWindow, TakesTheOrdersOfItsOwnPlanForNoneOfAFormerRun)
{
    m_orders = {readPlannedOrder(QStringLiteral("0935 buy 100 46.50")).value()};
    const auto look = [](MainWindow *window) {
        OrderDesk *const desk = window->trade()->desk();
        ASSERT_TRUE(waitUntil([=] { return desk->workingOrders() && desk->workingOrders()->size() == 1; },
                              std::chrono::seconds(20)));
        const auto *const message = window->findChild<QLabel *>(QStringLiteral("messageBar"));
        EXPECT_THAT(message->text().toStdString(), ::testing::Not(::testing::HasSubstr("Orders of before")));
    };
    run({look});
}

} // namespace
} // namespace Terminal
