// The file that a ledger on SQLite is.
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/Ledger.h"
#include "trademodule/ledger/ServingLease.h"
#include "trademodule/ledger/Transaction.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace TradeModule {

namespace {

using ::testing::Each;
using ::testing::SizeIs;

/// As long as it lives, new files may be read by everybody, unless who makes them says otherwise.
class GenerousUser
{
public:
    GenerousUser() : m_before(::umask(0)) {}
    ~GenerousUser() { ::umask(m_before); }
    Q_DISABLE_COPY_MOVE(GenerousUser)

private:
    const mode_t m_before;
};

/// As long as it lives this process has the rights of nobody in particular, when it has those of root.
class NobodyInParticular
{
public:
    NobodyInParticular()
    {
        if (m_wasRoot) {
            EXPECT_EQ(become(nobody), 0);
        }
    }
    ~NobodyInParticular()
    {
        if (m_wasRoot) {
            EXPECT_EQ(become(0), 0);
        }
    }
    Q_DISABLE_COPY_MOVE(NobodyInParticular)

private:
    static constexpr uid_t nobody = 65534;

    /// So that root comes back.
    static int become(uid_t user)
    {
#ifdef Q_OS_LINUX
        return ::setresuid(user, user, 0);
#else
        return ::setreuid(user, 0); // root cannot come back otherwise
#endif
    }

    const bool m_wasRoot = ::geteuid() == 0;
};

class SqliteFile : public ::testing::Test
{
protected:
    QString path() const { return m_directory.filePath(QStringLiteral("account.db")); }

    /// Of all files in the folder.
    std::vector<mode_t> modes() const
    {
        std::vector<mode_t> modes;
        for (const QString &name : QDir(m_directory.path()).entryList(QDir::Files | QDir::System)) {
            struct stat status
            {
            };
            ::stat(QFile::encodeName(m_directory.filePath(name)).constData(), &status);
            modes.push_back(status.st_mode & 0777U);
        }
        return modes;
    }

private:
    const GenerousUser m_user;
    QTemporaryDir m_directory;
};

} // namespace

TEST_F(SqliteFile, IsItsOwnersAloneWithAllThatLiesBesideIt)
{
    const Ledger ledger(path());

    EXPECT_THAT(modes(), SizeIs(3)); // write-ahead log and its index, too
    EXPECT_THAT(modes(), Each(0600U));
}

TEST_F(SqliteFile, IsItsOwnersAloneWhereALinkLeadsToIt)
{
    ASSERT_TRUE(QFile::link(path(), path() + QStringLiteral(".link")));
    const Ledger ledger(path() + QStringLiteral(".link"));

    EXPECT_THAT(modes(), Each(0600U));
}

TEST_F(SqliteFile, KeepsThePermissionsThatItsOwnerGaveIt)
{
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    ASSERT_EQ(::chmod(QFile::encodeName(path()).constData(), 0640), 0);

    const Ledger ledger(path());

    EXPECT_THAT(modes(), Each(0640U));
}

TEST_F(SqliteFile, IsServedByOneThroughAnyOfItsNames)
{
    Ledger ledger(path());
    ServingLease lease(ledger.database());
    lease.take();
    ASSERT_TRUE(QFile::link(path(), path() + QStringLiteral(".link")));
    Ledger other(path() + QStringLiteral(".link"));

    EXPECT_THROW(ServingLease(other.database()).take(), LedgerError);
    EXPECT_THAT(modes(), Each(0600U));
}

TEST_F(SqliteFile, IsNotChangedAnyMoreWhenItsWriteAheadLogWasRemoved)
{
    std::optional<Ledger> ledger(std::in_place, path());
    ledger->book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);
    ASSERT_TRUE(QFile::remove(path() + QStringLiteral("-wal")));

    EXPECT_THROW(Transaction{ledger->database()}, LedgerUnavailable);
    EXPECT_EQ(ledger->holding(bank()).quantity(), 100);

    ledger.reset(); // what the log had is in the file now
    EXPECT_EQ(Ledger(path()).holding(bank()).quantity(), 100);
}

TEST_F(SqliteFile, IsNotChangedAnyMoreWhenItsWriteAheadLogWasReplaced)
{
    Ledger ledger(path());
    ledger.book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);
    const QString log = path() + QStringLiteral("-wal");
    ASSERT_TRUE(QFile::rename(log, log + QStringLiteral(".moved")));
    ASSERT_TRUE(QFile::copy(log + QStringLiteral(".moved"), log));

    EXPECT_THROW(Transaction{ledger.database()}, LedgerUnavailable);
}

TEST_F(SqliteFile, IsOpenedAsItWasBeforeWhenTheWriteAheadLogOfAKilledProgramIsMissing)
{
    const QString copy = path() + QStringLiteral(".copy");
    {
        Ledger ledger(path());
        ledger.book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);
        ASSERT_TRUE(QFile::copy(path(), copy)); // without its log, which has the trade
    }

    Ledger ledger(copy);
    EXPECT_EQ(ledger.holding(bank()).quantity(), 0);
    EXPECT_EQ(
        ledger.book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep).added, 1);
}

class SqliteFileToRead : public SqliteFile
{
protected:
    void SetUp() override
    {
        Ledger(path()).book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);
    }

    void TearDown() override { setModes(0600, 0700); }

    void setModes(mode_t ofFile, mode_t ofFolder)
    {
        ASSERT_EQ(::chmod(QFile::encodeName(path()).constData(), ofFile), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), ofFolder), 0);
    }

    void expectReadOnly()
    {
        const NobodyInParticular user;
        Ledger ledger(path());
        EXPECT_TRUE(ledger.isReadOnly());
        EXPECT_EQ(ledger.holding(bank()).quantity(), 100);
        EXPECT_THROW(Transaction{ledger.database()}, LedgerError);
        ServingLease lease(ledger.database());
        EXPECT_NO_THROW(lease.take());
        EXPECT_NO_THROW(lease.beat());
    }
};

TEST_F(SqliteFileToRead, IsReadInAFolderThatMayNotBeWritten)
{
    setModes(0644, 0555);

    expectReadOnly();
}

TEST_F(SqliteFileToRead, IsReadWhenTheFileMayNotBeWritten)
{
    setModes(0444, 0777);

    expectReadOnly();
}

TEST_F(SqliteFileToRead, IsReadAnewWhenSomebodyWithMoreRightsHasWrittenIt)
{
    setModes(0444, 0555);
    std::optional<NobodyInParticular> user(std::in_place);
    Ledger ledger(path());
    ASSERT_EQ(ledger.holding(bank()).quantity(), 100);

    user.reset();
    setModes(0644, 0755);
    Ledger(path()).book(statementOf({fill(Side::Buy, bank(), 20240103, 10, 200)}), Ledger::Mode::Keep);
    setModes(0444, 0555);
    user.emplace();

    EXPECT_EQ(ledger.holding(bank()).quantity(), 300);
}

TEST_F(SqliteFileToRead, HasAnotherStateWhenItsOwnerHasChangedIt)
{
    setModes(0444, 0555);
    std::optional<NobodyInParticular> user(std::in_place);
    Ledger ledger(path());
    const QString before = ledger.database()->state();
    EXPECT_EQ(ledger.database()->state(), before);

    user.reset();
    setModes(0644, 0755);
    Ledger(path()).book(statementOf({fill(Side::Buy, bank(), 20240103, 10, 200)}), Ledger::Mode::Keep);
    setModes(0444, 0555);
    user.emplace();

    EXPECT_NE(ledger.database()->state(), before);
}

TEST_F(SqliteFileToRead, IsChangedFromTheMomentOnThatItMayBe)
{
    setModes(0444, 0555);
    std::optional<NobodyInParticular> user(std::in_place);
    Ledger ledger(path());
    ASSERT_TRUE(ledger.isReadOnly());

    user.reset();
    Ledger(path()).book(statementOf({fill(Side::Buy, bank(), 20240103, 10, 200)}), Ledger::Mode::Keep);
    setModes(0666, 0777);
    user.emplace();
    ASSERT_EQ(ledger.holding(bank()).quantity(), 300); // which has it opened anew

    EXPECT_FALSE(ledger.isReadOnly());
    ledger.book(statementOf({fill(Side::Buy, bank(), 20240104, 10, 100)}), Ledger::Mode::Keep);
    EXPECT_EQ(ledger.holding(bank()).quantity(), 400);
}

TEST_F(SqliteFileToRead, IsRefusedWhileItsNewestChangesCannotBeRead)
{
    setModes(0444, 0555);
    std::optional<NobodyInParticular> user(std::in_place);
    Ledger ledger(path());
    ASSERT_EQ(ledger.holding(bank()).quantity(), 100);

    user.reset();
    setModes(0600, 0755); // what SQLite lays beside it is its owner's alone, too
    std::optional<Ledger> writer(std::in_place, path());
    writer->book(statementOf({fill(Side::Buy, bank(), 20240103, 10, 200)}), Ledger::Mode::Keep);
    ASSERT_EQ(::chmod(QFile::encodeName(path()).constData(), 0444), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0555), 0);
    if (::geteuid() != 0) {
        GTEST_SKIP() << "there is no other user here";
    }
    user.emplace();
    EXPECT_THROW(ledger.holding(bank()), LedgerUnavailable);

    user.reset();
    writer.reset(); // everything is in the file now
    user.emplace();
    EXPECT_EQ(ledger.holding(bank()).quantity(), 300);
}

TEST_F(SqliteFileToRead, IsServedByOneOnly)
{
    setModes(0444, 0555);
    const NobodyInParticular user;
    Ledger ledger(path());
    Ledger other(path());
    ServingLease lease(ledger.database());
    lease.take();

    EXPECT_THROW(ServingLease(other.database()).take(), LedgerError);
}

} // namespace TradeModule
