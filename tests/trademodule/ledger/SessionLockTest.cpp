// What a database user may see and end of the session of another one, who serves the ledger.
#include "trademodule/ledger/SessionLock.h"

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/ledger/ProcessIdentity.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class SessionLockOfAnotherUser : public LedgerFixture
{
protected:
    void SetUp() override
    {
        LedgerFixture::SetUp();
        if (IsSkipped()) {
            return;
        }
        runHere(QStringLiteral("CREATE ROLE %1 LOGIN").arg(m_user));
        QString ofUser = location();
        m_database.emplace(
            ofUser.replace(QStringLiteral("//postgres@"), QStringLiteral("//%1@").arg(m_user)));
        m_owner.emplace(ledger().database());
        ASSERT_TRUE(m_owner->tryTake());
        m_lock.emplace(&*m_database);
        ASSERT_FALSE(m_lock->tryTake());
    }

    void TearDown() override
    {
        m_lock.reset();
        m_owner.reset();
        m_database.reset();
        if (!IsSkipped()) {
            runHere(QStringLiteral("DROP ROLE %1").arg(m_user));
        }
    }

    void allow(const char *role)
    {
        runHere(QStringLiteral("GRANT %1 TO %2").arg(QLatin1String(role), m_user));
    }

    SessionLock &lock() { return *m_lock; }
    std::string hindrance() const { return m_lock->hindrance().toStdString(); }

private:
    void runHere(const QString &sql) { ledger().database()->run(sql); }

    const QString m_user = QStringLiteral("watcher");
    std::optional<Database> m_database;
    std::optional<SessionLock> m_owner;
    std::optional<SessionLock> m_lock;
};

} // namespace

TEST_F(SessionLockOfAnotherUser, NamesTheRightThatIsMissingToSeeIt)
{
    EXPECT_EQ(lock().signOfLife(), QString());
    EXPECT_THAT(hindrance(), HasSubstr("pg_read_all_stats"));

    allow("pg_read_all_stats");

    EXPECT_NE(lock().signOfLife(), QString());
}

TEST_F(SessionLockOfAnotherUser, NamesTheRightThatIsMissingToEndIt)
{
    allow("pg_read_all_stats");
    lock().endOwner({}, lock().signOfLife());

    EXPECT_THAT(hindrance(), HasSubstr("pg_signal_backend"));
    EXPECT_FALSE(lock().tryTake());
}

} // namespace TradeModule
