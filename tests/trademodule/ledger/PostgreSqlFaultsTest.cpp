// The connection to a ledger's server meets each fault at each message of a change in turn: nothing is
// changed by halves, nothing is told to be done that is not, and the change can be made, once, when the
// server can be reached again.
//
//     TRADE_FAULTS=all ledger_postgresql_test --gtest_filter='*PostgreSqlFaults*'     every message; 7: each
//     seventh
#include "tests/support/ByName.h"
#include "tests/trademodule/support/CommitProxy.h"
#include "tests/trademodule/support/LedgerDeeds.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "tests/trademodule/support/MessageProxy.h"
#include "tests/trademodule/support/ServerSocket.h"
#include "trademodule/Error.h"

#include <QElapsedTimer>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>
#include <map>
#include <memory>

namespace TradeModule {

namespace {

using Fault = MessageProxy::Fault;

struct Kind
{
    const char *name;
    Fault fault;
};

struct Trouble
{
    std::string name;
    Deed deed;
    Kind kind;
};

constexpr Kind kinds[] = {
    {"ThatIsCut", Fault::Cut},      {"ThatIsCutForLong", Fault::CutForLong}, {"ThatIsSlow", Fault::Delay},
    {"ThatFreezes", Fault::Freeze}, {"ThatLosesOneWay", Fault::LoseWay},
};

std::vector<Trouble> troubles()
{
    std::vector<Trouble> all;
    for (const Deed &deed : ledgerDeeds()) {
        for (const Kind &kind : kinds) {
            all.push_back({std::string(deed.name) + "OverAConnection" + kind.name, deed, kind});
        }
    }
    return all;
}

/// How many messages of a walk lie from one that fails to the next; in daily work one of each walk fails.
int stride(int messages)
{
    const QString wanted = qEnvironmentVariable("TRADE_FAULTS");
    if (wanted == QLatin1String("all")) {
        return 1;
    }
    return wanted.isEmpty() ? messages : std::max(1, wanted.toInt());
}

/// A copy of a database of the server's, for one fault.
class CopiedLedger
{
public:
    explicit CopiedLedger(const QString &of)
    {
        Database(administration(of))
            .run(QStringLiteral("CREATE DATABASE copied STRATEGY file_copy TEMPLATE ") + databaseOf(of));
        m_location = QString(of).replace(databaseOf(of), QStringLiteral("copied"));
    }
    ~CopiedLedger()
    {
        Database(administration(m_location)).run(QStringLiteral("DROP DATABASE copied WITH (FORCE)"));
    }
    Q_DISABLE_COPY_MOVE(CopiedLedger)

    const QString &location() const { return m_location; }

private:
    static QString databaseOf(const QString &location) { return QUrl(location).path().mid(1); }
    static QString administration(const QString &location)
    {
        return QString(location).replace(databaseOf(location), QStringLiteral("postgres"));
    }

    QString m_location;
};

/// A deed over a connection whose messages can fail, from the same ledger each time.
class DeedOverAProxy
{
public:
    explicit DeedOverAProxy(const Deed &deed)
        : m_deed(deed),
          m_proxy(ServerSocket::directoryOf(m_fresh.location()))
    {
        m_deed.before(m_fresh.location());
        const CopiedLedger copy(m_fresh.location());
        m_states.before = contentOf(copy.location());
        m_proxy.failAt(0, Fault::Cut);
        EXPECT_EQ(endThroughProxy(copy), End::Done);
        m_messages = m_proxy.messages();
        m_states.after = contentOf(copy.location());
        expectToAddUp(copy.location());
    }

    /// When nothing fails.
    int messages() const { return m_messages; }

    /// Not each try has as many messages: where there is none of this number, the last one fails.
    bool failAtOrBefore(int message, Fault fault)
    {
        while (message > 0 && !failAt(message, fault)) {
            --message;
        }
        return message > 0;
    }

private:
    /// Fails at a message and does it again. False when there was no such message.
    bool failAt(int message, Fault fault)
    {
        const CopiedLedger copy(m_fresh.location());
        m_proxy.failAt(message, fault);
        const End end = endThroughProxy(copy);
        const bool hasFailed = m_proxy.hasFailed();
        m_proxy.mend();
        EXPECT_TRUE(fault != Fault::Delay || end == End::Done);
        EXPECT_THAT(contentOf(copy.location()), m_states.afterAnEnd(end));
        EXPECT_EQ(endThroughProxy(copy), End::Done);
        EXPECT_EQ(contentOf(copy.location()), m_states.after);
        return hasFailed;
    }

    End endThroughProxy(const CopiedLedger &copy) const
    {
        return endOf(m_deed, QString(copy.location())
                                 .replace(ServerSocket::directoryOf(copy.location()), m_proxy.directory()));
    }

    const Deed m_deed;
    const TestLedger m_fresh;
    MessageProxy m_proxy;
    DeedStates m_states;
    int m_messages = 0;
};

class PostgreSqlFaults : public ::testing::TestWithParam<Trouble>
{
protected:
    void SetUp() override
    {
        if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
            GTEST_SKIP() << reason.toStdString();
        }
        if (!deeds()[GetParam().deed.name]) {
            deeds()[GetParam().deed.name] = std::make_unique<DeedOverAProxy>(GetParam().deed);
        }
    }

    static void TearDownTestSuite() { deeds().clear(); }

    static DeedOverAProxy &deed() { return *deeds()[GetParam().deed.name]; }

private:
    /// What the faults of one deed share: a database is made slowly.
    static std::map<std::string, std::unique_ptr<DeedOverAProxy>> &deeds()
    {
        static std::map<std::string, std::unique_ptr<DeedOverAProxy>> deeds;
        return deeds;
    }
};

} // namespace

TEST_P(PostgreSqlFaults, LeaveALedgerThatAddsUpAndCanBeChangedAfterwards)
{
    const int all = deed().messages();
    const int step = stride(all);
    int points = 0;
    for (int message = 1 + static_cast<int>(GetParam().name.size()) * 7 % step; message <= all;
         message += step) {
        SCOPED_TRACE("message " + std::to_string(message) + " of " + std::to_string(all));
        points += deed().failAtOrBefore(message, GetParam().kind.fault) ? 1 : 0;
        ASSERT_FALSE(HasFailure());
    }
    RecordProperty("points", points);
    EXPECT_GT(points, 0);
}

TEST(PostgreSqlFaultsOfANewLedger, AreToldAtOnceWhereNobodyCanTellLaterWhetherItWasMade)
{
    if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
        GTEST_SKIP() << reason.toStdString();
    }
    const TestLedger home;
    CommitProxy proxy(ServerSocket::directoryOf(home.location()));
    proxy.fail(CommitProxy::Fault::LoseAnswer);
    QElapsedTimer clock;
    clock.start();

    EXPECT_THROW(
        Ledger(home.location().replace(ServerSocket::directoryOf(home.location()), proxy.directory())),
        OutcomeUnknown);

    EXPECT_LT(clock.elapsed(), 5000) << "it has no marks of changes that could be asked for";
}

INSTANTIATE_TEST_SUITE_P(Of, PostgreSqlFaults, ::testing::ValuesIn(troubles()), ByName());

} // namespace TradeModule
