// The file that a ledger on SQLite is.
#include "trademodule/Error.h"
#include "trademodule/ledger/Ledger.h"
#include "trademodule/ledger/ServingLease.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

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

} // namespace TradeModule
