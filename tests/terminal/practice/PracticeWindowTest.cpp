// A practice in a window of the built program, with the broker and the trading module that it starts.
#include "tests/terminal/practice/SomePractice.h"
#include "tests/trademodule/support/LedgerAudit.h"
#include "trademodule/ledger/OrderBook.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>
#include <memory>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

class PracticeWindow : public SomePractice
{
protected:
    PracticeWindow() { m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("minimal")); }

    void SetUp() override
    {
        importStatement();
        m_session = begin(wish());
        ASSERT_TRUE(m_session) << m_problem;
    }

    ~PracticeWindow() override
    {
        close();
        EXPECT_TRUE(waitUntil([this] { return m_runtime.remove() && m_folder.remove(); }));
    }

    QStringList arguments(const QStringList &more) const
    {
        return QStringList({QStringLiteral("--practice"), QStringLiteral("morning"),
                            QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE),
                            QStringLiteral("--module"), QStringLiteral(TRADEMODULE), QStringLiteral("--lang"),
                            QStringLiteral("en")}) +
               more;
    }

    void open(const QStringList &more = {})
    {
        m_window = std::make_unique<QProcess>();
        m_window->setProcessEnvironment(m_environment);
        m_window->setProcessChannelMode(QProcess::MergedChannels);
        m_window->start(m_program, arguments(more));
        ASSERT_TRUE(m_window->waitForStarted());
    }

    /// As a crash would end it.
    void close()
    {
        if (m_window) {
            m_window->kill();
            EXPECT_TRUE(m_window->waitForFinished());
            m_window.reset();
        }
    }

    QJsonArray told(const QStringList &command) const
    {
        QProcess module;
        module.start(QStringLiteral(TRADEMODULE),
                     QStringList({QStringLiteral("--ledger"), m_session->ledger()}) + command +
                         QStringList(QStringLiteral("--json")));
        EXPECT_TRUE(module.waitForFinished());
        return QJsonDocument::fromJson(module.readAllStandardOutput()).array();
    }

    QString reached() const
    {
        return told({QStringLiteral("practice")})[0].toObject().value(QStringLiteral("time")).toString();
    }

    bool comesTo(const char *time)
    {
        const bool isThere =
            waitUntil([this, time] { return reached() >= QLatin1String(time); }, std::chrono::seconds(30));
        EXPECT_TRUE(isThere) << m_window->readAll().toStdString();
        return isThere;
    }

    std::optional<PracticeSession> m_session;
    std::unique_ptr<QProcess> m_window;
};

/// The script buys and sells while the day is played; then everything is added up anew.
TEST_F(PracticeWindow, PlaysAMorningWhoseBooksAddUpAndLeavesTheAccountAsItWas)
{
    const QByteArray account = contentsOf(ledger());
    TradeModule::Money cash;
    {
        TradeModule::Ledger begun(m_session->ledger());
        cash = TradeModule::OrderBook(&begun).cash();
    }
    open({QStringLiteral("--replay"), QStringLiteral("600"), QStringLiteral("--order"),
          QStringLiteral("0931 buy 3000 51.50"), QStringLiteral("--order"),
          QStringLiteral("0933 buy 15000 51.00"), QStringLiteral("--order"),
          QStringLiteral("0935 sell 300 51.00"), QStringLiteral("--order"),
          QStringLiteral("0936 buy 100 47.00"), QStringLiteral("--order"),
          QStringLiteral("1010 buy 1000 50.86"), QStringLiteral("--order"),
          QStringLiteral("1045 sell 500 50.20")});
    ASSERT_TRUE(comesTo("11:30:00"));
    close();

    TradeModule::Ledger ledger(m_session->ledger());
    EXPECT_THAT(TradeModule::audit(&ledger, cash), ::testing::IsEmpty());
    EXPECT_EQ(ledger.today(), onDay(20230711));
    const auto trades = ledger.trades({onDay(20230711), onDay(20230711)});
    EXPECT_GE(trades.size(), 3);
    for (const TradeModule::Execution &trade : trades) {
        EXPECT_GE(trade.time, atTime(932));
    }
    EXPECT_THAT(TradeModule::OrderBook(&ledger).ofDay(onDay(20230711)), SizeIs(6));
    EXPECT_EQ(contentsOf(this->ledger()), account);
}

TEST_F(PracticeWindow, GoesOnWhereItWasKilledAndWaitsThere)
{
    open({QStringLiteral("--replay"), QStringLiteral("600"), QStringLiteral("--order"),
          QStringLiteral("0931 buy 100 51.50")});
    ASSERT_TRUE(comesTo("09:35:00"));
    close();
    const QString before = reached();
    const QJsonArray orders = told({QStringLiteral("orders")});
    const Outcome picture =
        run(m_program,
            arguments({QStringLiteral("--snapshot"), this->picture(), QStringLiteral("--overlays"),
                       QStringLiteral("orders"), QStringLiteral("--timeout"), QStringLiteral("40")}),
            m_environment);
    EXPECT_EQ(picture.exitCode, 0) << qPrintable(picture.messages);
    EXPECT_EQ(reached(), before);
    EXPECT_EQ(told({QStringLiteral("orders")}), orders);
}

TEST_F(PracticeWindow, IsTheOnlyOneOnItsPractice)
{
    open();
    ASSERT_TRUE(comesTo("09:30:00"));
    const Outcome second = run(m_program, arguments({}), m_environment);
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.messages.toStdString(), HasSubstr("another window"));
}

TEST_F(PracticeWindow, IsNotOpenedOnAPracticeThatIsNotThere)
{
    m_session->name.clear();
    EXPECT_EQ(sessions().remove(*sessions().find(QStringLiteral("morning"))), QString());
    const Outcome outcome = run(m_program, arguments({}), m_environment);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.messages.toStdString(), HasSubstr("no practice \"morning\""));
}

} // namespace
} // namespace Terminal
