// Every state of bus, trading module and overlays in the program's own window, with a picture of each for a
// person to look at.
#include "endpoint/Announcement.h"
#include "endpoint/BusAddress.h"
#include "endpoint/LocalBroker.h"
#include "terminal/TerminalProgram.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/session/TradingSession.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/MessageBar.h"
#include "terminal/ui/StateStrip.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/support/SettingsFixture.h"
#include "trading/Presence.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QSysInfo>
#include <QTimer>

#include <csignal>
#include <memory>

namespace Terminal {

using namespace std::chrono_literals;
using LocalCommunication::Announcement;
using LocalCommunication::LocalBroker;

namespace {

QString words(const char *text)
{
    return QString::fromUtf8(text);
}

/// A run of the terminal on the bus of this program's folder.
class StatesProgram : public Settings
{
protected:
    StatesProgram() { QApplication::setApplicationVersion(words(TRADETERMINAL_VERSION)); }

    /// Runs the terminal with these options until `story` is told.
    void run(const QStringList &options, const std::function<void()> &story)
    {
        const auto parsed =
            parseOptions(QStringList({words("tradeterminal"), words("--data"), words(TRADECHART_EXAMPLES),
                                      words("--plugin"), words(PLUGIN_FILE), words("--code"), words("600519"),
                                      words("--lang"), words("en"), words("--size"), words("1280x720"),
                                      words("--no-broker")}) +
                             options,
                         words("/nowhere/bin"));
        ASSERT_TRUE(parsed) << qPrintable(parsed.error());
        TerminalOptions taken = parsed.value().options;
        taken.startsBroker = m_startsBroker;
        TerminalProgram program(taken, address());
        QTimer::singleShot(0, qApp, [this, &story] {
            findWindow();
            story();
            m_window->close();
        });
        EXPECT_EQ(program.run(), 0);
    }

    QStringList withOverlays(const QStringList &more = {}) const
    {
        return QStringList({words("--overlays"), words("cost,trades,orders")}) + more;
    }
    QStringList onLedger(const char *program = TRADEMODULE) const
    {
        return withOverlays({words("--ledger"), ledger(), words("--module"), words(program)});
    }

    static QString address() { return QApplication::applicationDirPath(); }
    QString ledger() const { return m_folder.filePath(words("account.db")); }

    void importStatement() const
    {
        ASSERT_EQ(QProcess::execute(words(TRADEMODULE), {words("--ledger"), ledger(), words("import"),
                                                         words(TRADECHART_EXAMPLES "/statement.csv")}),
                  0);
    }

    QString writeProgram(const QByteArray &script) const
    {
        QFile file(m_folder.filePath(words("module")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName();
    }

    void startBus()
    {
        m_broker.start(address());
        ASSERT_TRUE(waitUntil([this] { return m_broker.state() == LocalBroker::State::Running; }));
    }

    /// A trading module of nobody's window, on the ledger.
    void startModule()
    {
        m_module = std::make_unique<QProcess>();
        m_module->setProcessChannelMode(QProcess::ForwardedChannels);
        m_module->start(words(TRADEMODULE),
                        {words("--bus"), address(), words("--ledger"), ledger(), words("serve")});
        ASSERT_TRUE(m_module->waitForStarted());
    }
    void signalModule(int signal) const { ::kill(static_cast<pid_t>(m_module->processId()), signal); }

    /// A trading module that does as it is told, and says this of itself.
    void script(const Trading::TradePresence &presence)
    {
        m_scripted = std::make_unique<ScriptedModule>(address());
        ASSERT_TRUE(waitUntil([this] { return m_scripted->isReady(); }));
        m_scripted->setAnswer(words("HolderCostPrice"),
                              {{words("market"), words("1")},
                               {words("data"), QJsonObject{{words("stkcode"), words("600519")},
                                                           {words("market"), words("1")},
                                                           {words("costprice"), words("1890.058")}}}});
        for (const char *const command : {"HistoryTrade", "TodayTrade"}) {
            m_scripted->setAnswer(words(command), {{words("data"), QJsonArray()}});
        }
        m_announcement.start(address(),
                             {"Global", "TradePresence", presence.toJson(), presence.ended().toJson()});
    }
    static Trading::TradePresence presenceOf(const QString &ledger)
    {
        Trading::TradePresence presence;
        presence.instance = words("scripted");
        presence.isOnline = true;
        presence.host = QSysInfo::machineHostName();
        presence.ledger = ledger;
        return presence;
    }

    QStringList said() const { return m_window->findChild<StateStrip *>()->texts(); }
    bool says(const QString &text, std::chrono::milliseconds patience = 20s) const
    {
        const bool isSaid = waitUntil([=] { return said().contains(text); }, patience);
        EXPECT_TRUE(isSaid) << qPrintable(text) << " is not in: " << qPrintable(said().join(words(" | ")));
        return isSaid;
    }
    bool begins(const QString &text, std::chrono::milliseconds patience = 20s) const
    {
        const bool isSaid = waitUntil(
            [=] {
                const QStringList all = said();
                return std::any_of(all.begin(), all.end(),
                                   [&text](const QString &one) { return one.startsWith(text); });
            },
            patience);
        EXPECT_TRUE(isSaid) << qPrintable(text)
                            << " begins none of: " << qPrintable(said().join(words(" | ")));
        return isSaid;
    }
    QString tipOf(const char *part) const
    {
        return m_window->findChild<QLabel *>(words("state-") + words(part))->toolTip();
    }
    QString message() const
    {
        auto *const bar = m_window->findChild<MessageBar *>();
        return bar->isVisible() ? bar->text() : QString();
    }
    /// As the window is now, for a person to look at.
    void picture(const char *name) const
    {
        QDir().mkpath(words(STATE_PICTURES));
        QApplication::processEvents();
        EXPECT_TRUE(waitUntil([this] { return !isCut(); })) << "the line has room for its texts";
        EXPECT_TRUE(m_window->grab().save(QDir(words(STATE_PICTURES)).filePath(words(name) + words(".png"))));
    }

    bool isCut() const
    {
        const auto labels = m_window->findChild<StateStrip *>()->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
            return label->isVisible() && label->width() < label->sizeHint().width();
        });
    }

    void findWindow()
    {
        for (QWidget *const widget : QApplication::topLevelWidgets()) {
            if (auto *const window = qobject_cast<MainWindow *>(widget)) {
                m_window = window;
            }
        }
    }

    bool m_startsBroker = false;
    MainWindow *m_window = nullptr;
    LocalBroker m_broker;
    std::unique_ptr<QProcess> m_module;
    std::unique_ptr<ScriptedModule> m_scripted;
    Announcement m_announcement;
};

TEST_F(StatesProgram, SaysWhatIsInView)
{
    importStatement();
    m_startsBroker = true;
    run(onLedger(), [this] {
        EXPECT_TRUE(begins(words("Cost: 1890.058")));
        EXPECT_TRUE(begins(words("Trades: in view: ")));
        EXPECT_TRUE(says(words("Orders: not on this chart")));
        EXPECT_TRUE(says(words("Bus: joined")));
        EXPECT_TRUE(says(words("Trading module: answers")));
        picture("all-is-well");
        m_window->chart()->setSpan({0, 40}); // before the account's first trade
        EXPECT_TRUE(says(words("Trades: none in view")));
        EXPECT_TRUE(begins(words(u8"Cost: 1890.058 ↑")));
        picture("beyond-the-view");
    });
}

TEST_F(StatesProgram, SaysThatThereIsNothing)
{
    m_startsBroker = true;
    run(onLedger(), [this] {
        EXPECT_TRUE(says(words("Cost: nothing there")));
        EXPECT_TRUE(says(words("Trades: nothing there")));
        picture("nothing-there");
    });
}

TEST_F(StatesProgram, IsRightAfterAReplay)
{
    importStatement();
    m_startsBroker = true;
    run(onLedger() + QStringList({words("--period"), words("minute")}), [this] {
        ASSERT_TRUE(says(words("Trading module: answers")));
        ASSERT_EQ(m_window->setReplaying(true), QString());
        EXPECT_TRUE(says(words("Orders: nothing there")));
        EXPECT_TRUE(begins(words("Cost: 1890.058")));
        picture("replay");
        ASSERT_EQ(m_window->setReplaying(false), QString());
        EXPECT_TRUE(says(words("Orders: nothing there")));
        EXPECT_TRUE(begins(words("Cost: 1890.058")));
        EXPECT_TRUE(says(words("Trades: not on this chart")));
        picture("after-a-replay");
    });
}

TEST_F(StatesProgram, IsRightInAWindowThatJoinsLate)
{
    importStatement();
    startBus();
    startModule();
    run(withOverlays(), [this] {
        EXPECT_TRUE(begins(words("Cost: 1890.058")));
        EXPECT_TRUE(begins(words("Trades: in view: ")));
        picture("joined-late");
    });
    m_module->terminate();
    EXPECT_TRUE(m_module->waitForFinished());
}

TEST_F(StatesProgram, IsRightWhenBusAndModuleComeLater)
{
    importStatement();
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Bus: joining")));
        EXPECT_TRUE(says(words("Cost: no bus")));
        EXPECT_TRUE(says(words("Trading module: no bus")));
        picture("no-bus");
        startBus();
        EXPECT_TRUE(says(words("Bus: joined")));
        EXPECT_TRUE(says(words("Trading module: none answers")));
        EXPECT_TRUE(says(words("Cost: no trading module")));
        EXPECT_TRUE(says(words("Trades: no trading module")));
        picture("no-module");
        startModule();
        EXPECT_TRUE(begins(words("Cost: 1890.058")));
        EXPECT_TRUE(begins(words("Trades: in view: ")));
        picture("came-later");
    });
    m_module->terminate();
    EXPECT_TRUE(m_module->waitForFinished());
}

TEST_F(StatesProgram, SaysThatItsModuleStarts)
{
    startBus();
    const QString sleeping = writeProgram("exec sleep 60\n");
    run(onLedger(qPrintable(sleeping)), [this] {
        EXPECT_TRUE(says(words("Trading module: starting")));
        EXPECT_TRUE(says(words("Cost: waits for the trading module")));
        picture("module-starting");
    });
}

TEST_F(StatesProgram, SaysWhichProgramIsMissing)
{
    startBus();
    run(onLedger("/nowhere/trademodule"), [this] {
        EXPECT_TRUE(says(words("Trading module: does not run")));
        EXPECT_TRUE(says(words("Cost: the trading module does not run")));
        EXPECT_EQ(tipOf("module"), message());
        EXPECT_TRUE(message().contains(words("/nowhere/trademodule, is not there")));
        picture("module-missing");
    });
}

TEST_F(StatesProgram, SaysWhyItsLedgerCannotBeServed)
{
    startBus();
    QFile file(ledger());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    run(onLedger(), [this] {
        EXPECT_TRUE(says(words("Trading module: does not run")));
        EXPECT_TRUE(tipOf("module").contains(words("file is not a database\nThe file is no ledger")))
            << qPrintable(tipOf("module"));
        picture("ledger-damaged");
    });
}

TEST_F(StatesProgram, SaysSinceWhenAModuleHangsAndThatItAnswersAgain)
{
    importStatement();
    startBus();
    startModule();
    run(withOverlays(), [this] {
        ASSERT_TRUE(begins(words("Cost: 1890.058")));
        signalModule(SIGSTOP);
        EXPECT_TRUE(begins(words("Trading module: no answer since "), 5s));
        picture("module-late");
        EXPECT_TRUE(begins(words("Cost: 1890.058; no answer since "), 10s));
        EXPECT_TRUE(says(words("Trading module: does not answer any more"), 10s));
        EXPECT_TRUE(tipOf("module").startsWith(words("No answer since ")));
        picture("module-silent");
        signalModule(SIGCONT);
        EXPECT_TRUE(says(words("Trading module: answers")));
        EXPECT_TRUE(says(words("Cost: 1890.058 (moving average)")));
        picture("module-answers-again");
    });
    m_module->terminate();
    EXPECT_TRUE(m_module->waitForFinished());
}

TEST_F(StatesProgram, SaysThatABrokenBusIsJoinedAgain)
{
    importStatement();
    startBus();
    run(onLedger(), [this] {
        ASSERT_TRUE(says(words("Trading module: answers")));
        m_broker.stop();
        EXPECT_TRUE(says(words("Bus: gone, joining again")));
        EXPECT_TRUE(says(words("Trading module: no bus")));
        picture("bus-gone");
        startBus();
        EXPECT_TRUE(says(words("Bus: joined")));
        EXPECT_TRUE(says(words("Trading module: answers")));
    });
}

TEST_F(StatesProgram, SaysWhyItsBrokerDoesNotRun)
{
    const QString folder =
        QFileInfo(LocalCommunication::BusAddress::ofDirectory(address()).socketPath).path();
    ASSERT_TRUE(QDir().mkpath(folder));
    const auto ofAll = QFile::Permissions(0x7777);
    ASSERT_TRUE(QFile::setPermissions(folder, ofAll));
    m_startsBroker = true;
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Bus: does not run")));
        EXPECT_TRUE(tipOf("bus").contains(words("chmod 700"))) << qPrintable(tipOf("bus"));
        picture("bus-does-not-run");
    });
    run(withOverlays({words("--lang"), words("zh")}), [this] {
        EXPECT_TRUE(says(words(u8"总线：未运行")));
        EXPECT_TRUE(message().contains(words(u8"对其他用户开放"))) << qPrintable(message());
        picture("bus-does-not-run-zh");
    });
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(StatesProgram, SaysThatAModuleTakesNoOrders)
{
    startBus();
    Trading::TradePresence presence = presenceOf(ledger());
    presence.isReadOnly = true;
    script(presence);
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Trading module: answers, takes no orders")));
        picture("module-read-only");
    });
}

TEST_F(StatesProgram, SaysThatAModuleServesAnotherLedger)
{
    startBus();
    script(presenceOf(words("/home/me/another.db")));
    run(onLedger(qPrintable(writeProgram("exec sleep 60\n"))), [this] {
        EXPECT_TRUE(says(words("Trading module: of another ledger")));
        EXPECT_TRUE(tipOf("module").contains(words("/home/me/another.db")));
        picture("module-of-another-ledger");
    });
}

TEST_F(StatesProgram, SaysThatAModuleIsOfAnotherVersion)
{
    startBus();
    Trading::TradePresence presence = presenceOf(ledger());
    presence.version = words("9.9");
    script(presence);
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Trading module: answers, of another version")));
        EXPECT_TRUE(tipOf("module").contains(words("Version 9.9")));
        picture("module-of-another-version");
    });
}

TEST_F(StatesProgram, SaysWhyAModuleRefuses)
{
    startBus();
    script(presenceOf(ledger()));
    m_scripted->setAnswer(words("HolderCostPrice"),
                          {{words("success"), false}, {words("msg"), words("the ledger is busy")}});
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Trading module: refuses")));
        EXPECT_TRUE(says(words("Cost: refused")));
        EXPECT_EQ(tipOf("module"), words("the ledger is busy"));
        EXPECT_EQ(message(), words("HolderCostPrice: refused: the ledger is busy"));
        picture("refused");
    });
}

TEST_F(StatesProgram, SaysThatAnAnswerIsWrong)
{
    startBus();
    script(presenceOf(ledger()));
    m_scripted->setAnswer(words("HistoryTrade"),
                          {{words("data"), QJsonArray{QJsonObject{{words("stkcode"), words("600519")},
                                                                  {words("bizdate"), 20211203}}}}});
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Trades: wrong answer")));
        EXPECT_TRUE(message().contains(words("HistoryTrade: \"bizdate\""))) << qPrintable(message());
        picture("wrong-answer");
    });
}

TEST_F(StatesProgram, SaysSinceWhenAnOverlayWaits)
{
    startBus();
    script(presenceOf(ledger()));
    m_scripted->setSilent(words("HistoryTrade"));
    m_scripted->setSilent(words("TodayTrade"));
    run(withOverlays(), [this] {
        EXPECT_TRUE(says(words("Trades: asked, no answer yet")));
        picture("asked");
        EXPECT_TRUE(begins(words("Trades: no answer since ")));
        EXPECT_TRUE(says(words("Trading module: answers")));
        picture("unanswered");
    });
}

} // namespace
} // namespace Terminal
