// Several windows of the built program at once, each with the broker and the trading module that it starts.
#include "terminal/services/BusInstance.h"
#include "terminal/services/ModuleWatch.h"
#include "terminal/trade/OrderDesk.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/TerminalProgramFixture.h"
#include "trading/ModuleVocabulary.h"

#include <gmock/gmock.h>

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>
#include <memory>

#ifdef TRADEMODULE

namespace Terminal {
namespace {

using ::testing::HasSubstr;

const Security moutai{QStringLiteral("600519"), Market::Shanghai, {}};

/// Windows on a screen that nobody sees.
class WindowsProgram : public Program
{
protected:
    WindowsProgram()
    {
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("minimal"));
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
        m_environment.remove(QStringLiteral("TRADEBUS_INSTANCE"));
        qputenv("XDG_RUNTIME_DIR", m_runtime.path().toUtf8());
    }

    ~WindowsProgram() override
    {
        for (const auto &window : m_windows) {
            window->terminate();
        }
        for (const auto &window : m_windows) {
            EXPECT_TRUE(window->state() == QProcess::NotRunning || window->waitForFinished(20000));
        }
        // What the windows have started ends after them.
        EXPECT_TRUE(waitUntil([this] { return m_runtime.remove() && m_folder.remove(); }));
        qunsetenv("TRADEBUS_INSTANCE");
        qputenv("XDG_RUNTIME_DIR", m_runtimeBefore);
    }

    QString ledgerCalled(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QStringList onLedger(const QString &ledger, const QStringList &more = {}) const
    {
        return QStringList({QStringLiteral("--data"), QStringLiteral(TRADECHART_EXAMPLES),
                            QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE),
                            QStringLiteral("--module"), QStringLiteral(TRADEMODULE), QStringLiteral("--lang"),
                            QStringLiteral("en"), QStringLiteral("--ledger"), ledger}) +
               more;
    }

    QProcess *openWindow(const QStringList &arguments)
    {
        m_windows.push_back(std::make_unique<QProcess>());
        QProcess *const window = m_windows.back().get();
        window->setProcessEnvironment(m_environment);
        window->setProcessChannelMode(QProcess::MergedChannels);
        window->start(m_program, arguments);
        EXPECT_TRUE(window->waitForStarted());
        return window;
    }

    /// True when the module of the window waits for the one that serves the ledger.
    static bool comesToStandBy(QProcess *window)
    {
        QByteArray said;
        const bool doesSo = waitUntil([&] {
            said += window->readAll();
            return said.contains("standing by");
        });
        EXPECT_TRUE(doesSo) << said.toStdString();
        return doesSo;
    }

    /// A desk on the bus of a ledger, that is answered.
    std::unique_ptr<OrderDesk> deskOn(const QString &ledger)
    {
        qputenv("TRADEBUS_INSTANCE", ledgerPlace(ledger).toUtf8());
        auto desk = std::make_unique<OrderDesk>();
        desk->show(moutai, std::nullopt);
        desk->start(m_folder.path());
        desk->watch();
        EXPECT_TRUE(waitUntil([&desk] { return desk->isAnswering() && desk->account(); }));
        return desk;
    }

    /// Places an order and waits for its answer.
    static void placeOn(OrderDesk *desk)
    {
        bool isPlaced = false;
        const QObject until; // it is heard no longer
        QObject::connect(desk, &OrderDesk::placed, &until,
                         [&isPlaced](const OrderRequest &, const DeskOutcome &outcome) {
                             isPlaced = outcome.kind == DeskOutcome::Kind::Accepted;
                         });
        desk->place({moutai, Direction::Buy, 1400, 100});
        ASSERT_TRUE(waitUntil([&isPlaced] { return isPlaced; }));
    }

    /// How many orders the ledger has, by its own word.
    static int ordersIn(const QString &ledger)
    {
        QProcess orders;
        orders.start(QStringLiteral(TRADEMODULE), {QStringLiteral("--ledger"), ledger,
                                                   QStringLiteral("orders"), QStringLiteral("--json")});
        EXPECT_TRUE(orders.waitForFinished());
        EXPECT_EQ(orders.exitCode(), 0) << orders.readAllStandardError().toStdString();
        return QJsonDocument::fromJson(orders.readAllStandardOutput()).array().size();
    }

    const QByteArray m_runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
    std::vector<std::unique_ptr<QProcess>> m_windows;
};

TEST_F(WindowsProgram, OnOneLedgerPlaceAnOrderOnce)
{
    ASSERT_TRUE(QFile::link(ledger(), ledgerCalled("link.db")));
    openWindow(onLedger(ledger()));
    const auto desk = deskOn(ledger());
    ASSERT_TRUE(comesToStandBy(openWindow(onLedger(ledgerCalled("link.db"))))) << "the same by another name";
    placeOn(desk.get());
    EXPECT_EQ(ordersIn(ledger()), 1);
}

TEST_F(WindowsProgram, OnTwoLedgersNeverMeet)
{
    importStatement();
    ASSERT_TRUE(QFile::copy(ledger(), ledgerCalled("copy.db")));
    openWindow(onLedger(ledger()));
    openWindow(onLedger(ledgerCalled("copy.db")));
    const auto original = deskOn(ledger());
    const auto copy = deskOn(ledgerCalled("copy.db"));
    placeOn(copy.get());
    EXPECT_EQ(ordersIn(ledgerCalled("copy.db")), 1);
    EXPECT_EQ(ordersIn(ledger()), 0);
    EXPECT_EQ(original->account()->available, original->account()->cash);
    EXPECT_TRUE(waitUntil([&copy] { return copy->account()->available < copy->account()->cash; }))
        << "the order claims its cash here alone";
}

TEST_F(WindowsProgram, GoOnWhenTheOneThatServedTheLedgerIsGone)
{
    QProcess *const first = openWindow(onLedger(ledger()));
    const auto desk = deskOn(ledger());
    ModuleWatch watch(nullptr);
    watch.start(m_folder.path());
    ASSERT_TRUE(waitUntil([&watch] { return watch.presence().has_value(); }));
    const QString served = watch.presence()->instance;
    ASSERT_TRUE(comesToStandBy(openWindow(onLedger(ledger()))));
    placeOn(desk.get());
    ::kill(static_cast<pid_t>(first->processId()), SIGKILL);
    ASSERT_TRUE(first->waitForFinished());
    m_windows.erase(m_windows.begin());
    ASSERT_TRUE(waitUntil([&] { return watch.presence() && watch.presence()->instance != served; }));
    ASSERT_TRUE(waitUntil([&desk] { return desk->endPoint()->isConnected() && desk->isAnswering(); }));
    placeOn(desk.get());
    EXPECT_EQ(ordersIn(ledger()), 2);
}

TEST_F(WindowsProgram, PlaceAnOrderOnceThatIsAskedForAgainWhileTheModuleStandsStill)
{
    openWindow(onLedger(ledger()));
    const auto desk = deskOn(ledger());
    ModuleWatch watch(nullptr);
    watch.start(m_folder.path());
    ASSERT_TRUE(waitUntil([&watch] { return watch.presence().has_value(); }));
    desk->setModule([&watch] {
        const auto presence = watch.presence();
        return DeskModule{presence && presence->knows(Trading::Capability::CLIENTNO), {}, {}};
    });
    desk->setTimeout(std::chrono::milliseconds(500));
    const auto module = static_cast<pid_t>(watch.presence()->process);
    bool isAskedAgain = false;
    QObject::connect(desk.get(), &OrderDesk::askedAgain, desk.get(), [&isAskedAgain, module] {
        isAskedAgain = true;
        ::kill(module, SIGCONT); // it finds both questions
    });
    ::kill(module, SIGSTOP);
    placeOn(desk.get());
    EXPECT_TRUE(isAskedAgain);
    placeOn(desk.get());
    EXPECT_EQ(ordersIn(ledger()), 2) << "each one once";
}

TEST_F(WindowsProgram, ReplayOneAtATimeOnALedger)
{
    const QStringList replay{QStringLiteral("--code"),   QStringLiteral("600536"),   QStringLiteral("--day"),
                             QStringLiteral("20230711"), QStringLiteral("--replay"), QStringLiteral("1")};
    makePractice(practice());
    QProcess *const first = openWindow(onLedger(practice(), replay));
    const auto desk = deskOn(practice());
    const QStringList toPicture{QStringLiteral("--snapshot"), picture(), QStringLiteral("--timeout"),
                                QStringLiteral("40")};
    makePractice(ledgerCalled("other.db"));
    const Outcome refused = run(m_program, onLedger(practice(), replay + toPicture), m_environment);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.messages.toStdString(), HasSubstr(std::to_string(first->processId())));
    EXPECT_EQ(run(m_program, onLedger(ledgerCalled("other.db"), replay + toPicture), m_environment).exitCode,
              0)
        << "another account is free";

    ::kill(static_cast<pid_t>(first->processId()), SIGKILL);
    ASSERT_TRUE(first->waitForFinished());
    m_windows.clear();
    const Outcome after = run(m_program, onLedger(practice(), replay + toPicture), m_environment);
    EXPECT_EQ(after.exitCode, 0) << qPrintable(after.messages);
}

TEST_F(WindowsProgram, KeepTheirSettingsWhenTheSessionEnds)
{
    QProcess *const window =
        openWindow(onLedger(ledger(), {QStringLiteral("--code"), QStringLiteral("600536")}));
    const auto desk = deskOn(ledger());
    window->terminate();
    ASSERT_TRUE(window->waitForFinished(20000));
    EXPECT_EQ(window->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(window->exitCode(), 0);
    m_windows.clear();
    QString settings;
    for (QDirIterator files(m_folder.filePath(QStringLiteral("config")), QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        settings += file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    EXPECT_THAT(settings.toStdString(), ::testing::AllOf(HasSubstr("code=600536"), HasSubstr("geometry=")));
}

} // namespace
} // namespace Terminal

#endif
