// The connection to a ledger's server meets each fault at each message of a change in turn: nothing is
// changed by halves, nothing is told to be done that is not, and the change can be made, once, when the
// server can be reached again.
//
//     TRADE_FAULTS=all ledger_postgresql_test --gtest_filter='*PostgreSqlFaults*'     every message; 7: each
//     seventh
#include "tests/support/ByName.h"
#include "tests/trademodule/support/LedgerDeeds.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "tests/trademodule/support/MessageProxy.h"

#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

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

/// How many messages of a walk are passed over from one that fails to the next; in daily work two fail in
/// all.
int stride(int messages)
{
    const QString wanted = qEnvironmentVariable("TRADE_FAULTS");
    if (wanted == QLatin1String("all")) {
        return 1;
    }
    return wanted.isEmpty() ? std::max(1, messages / 2) : std::max(1, wanted.toInt());
}

/// A copy of a database of the server's, for one fault.
class CopiedLedger
{
public:
    explicit CopiedLedger(const QString &of)
    {
        Database(administration(of)).run(QStringLiteral("CREATE DATABASE copied TEMPLATE ") + databaseOf(of));
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

class PostgreSqlFaults : public ::testing::TestWithParam<Trouble>
{
protected:
    void SetUp() override
    {
        if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
            GTEST_SKIP() << reason.toStdString();
        }
        m_fresh.emplace();
        GetParam().deed.before(m_fresh->location());
        m_proxy.emplace(socketOf(m_fresh->location()));
        const CopiedLedger copy(m_fresh->location());
        m_states.before = contentOf(copy.location());
        m_proxy->failAt(0, GetParam().kind.fault);
        ASSERT_EQ(endOf(GetParam().deed, throughProxy(copy)), End::Done);
        m_messages = m_proxy->messages();
        m_states.after = contentOf(copy.location());
        expectToAddUp(copy.location());
    }

    static QString socketOf(const QString &location)
    {
        return QUrlQuery(QUrl(location)).queryItemValue(QStringLiteral("host"));
    }

    QString throughProxy(const CopiedLedger &copy) const
    {
        return QString(copy.location()).replace(socketOf(copy.location()), m_proxy->directory());
    }

    void failAt(int message)
    {
        const CopiedLedger copy(m_fresh->location());
        m_proxy->failAt(message, GetParam().kind.fault);
        const End end = endOf(GetParam().deed, throughProxy(copy));
        m_points += m_proxy->hasFailed() ? 1 : 0;
        m_proxy->mend();
        if (GetParam().kind.fault == Fault::Delay) {
            EXPECT_EQ(end, End::Done);
        }
        ASSERT_THAT(contentOf(copy.location()), m_states.afterAnEnd(end));
        ASSERT_EQ(endOf(GetParam().deed, throughProxy(copy)), End::Done);
        ASSERT_EQ(contentOf(copy.location()), m_states.after);
    }

    int m_messages = 0; ///< of the deed when nothing fails
    int m_points = 0;

private:
    std::optional<TestLedger> m_fresh;
    std::optional<MessageProxy> m_proxy;
    DeedStates m_states;
};

} // namespace

TEST_P(PostgreSqlFaults, LeaveALedgerThatAddsUpAndCanBeChangedAfterwards)
{
    const int step = stride(m_messages);
    for (int message = 1 + static_cast<int>(GetParam().name.size()) * 7 % step; message <= m_messages;
         message += step) {
        SCOPED_TRACE("message " + std::to_string(message) + " of " + std::to_string(m_messages));
        ASSERT_NO_FATAL_FAILURE(failAt(message));
    }
    RecordProperty("points", m_points);
    EXPECT_GT(m_points, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, PostgreSqlFaults, ::testing::ValuesIn(troubles()), ByName());

} // namespace TradeModule
